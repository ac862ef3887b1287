#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

/// Texts of messages: lines with CR LF between them.
namespace verify {

std::string joinedLines(std::initializer_list<std::string_view> lines);

/// A list inside a message. All of it: who shows the message cuts what is too long.
std::string listedLines(const std::vector<std::string>& lines);

/// A whole number of microseconds with its thousands apart.
std::string groupedNumber(double micros);

}  // namespace verify
