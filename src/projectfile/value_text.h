#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace projectfile {

/// Numbers of the file: most are short and whole, which both directions take the short way.
double readDouble(std::string_view text);
/// Rounded half to even; saturates at the limits.
std::int64_t readInteger(std::string_view text, std::int64_t low, std::int64_t high);

void appendDigits(std::string& out, std::int64_t value);

}  // namespace projectfile
