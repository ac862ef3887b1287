#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

/// Programs as lines, for tests that change some of them.
namespace support {

using Lines = std::vector<std::string>;
Lines linesOf(std::string_view program);
std::string joined(const Lines& lines);

/// The line without its comment and the blanks around.
std::string codeOf(const std::string& line);

bool startsWithAny(std::string_view code, std::initializer_list<std::string_view> starts);
bool isNamePart(char c);

/// A call whose last character closes its list of arguments.
bool isCall(const std::string& code);
/// Commas between the arguments of the outermost call.
std::vector<std::size_t> commas(const std::string& code);

}  // namespace support
