#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "text/numbers.h"

namespace projectfile {

/// A number of at most nine digits, behind blanks and a "-" if negative, and nothing else.
struct ShortNumber {
  std::int32_t value = 0;
  bool read = false;
};

inline ShortNumber readShort(std::string_view text) {
  constexpr std::ptrdiff_t shortDigits = 9;  // fit into 32 bits
  const char* p = text.data();
  const char* const end = p + text.size();
  while (p != end && *p == ' ') ++p;
  const bool negative = p != end && *p == '-';
  if (negative) ++p;
  if (p == end || end - p > shortDigits) return {};
  std::int32_t value = 0;
  for (; p != end; ++p) {
    if (*p < '0' || *p > '9') return {};
    value = value * 10 + (*p - '0');
  }
  return {negative ? -value : value, true};
}

/// Numbers of the file: most are short, which is the quick way.
inline double readDouble(std::string_view text) {
  const ShortNumber number = readShort(text);
  return number.read ? number.value : text::readNumber(text);
}

/// Rounded half to even; saturates at the limits.
inline std::int64_t readInteger(std::string_view text, std::int64_t low, std::int64_t high) {
  const ShortNumber number = readShort(text);
  if (number.read) return std::clamp<std::int64_t>(number.value, low, high);
  return text::integerWithin(text::readNumber(text), low, high);
}

/// Puts the digits of a number below 1000 at the end of a text; returns the new end.
inline char* putDigits(char* end, unsigned value) {
  if (value >= 100) *end++ = static_cast<char>('0' + value / 100);
  if (value >= 10) *end++ = static_cast<char>('0' + value / 10 % 10);
  *end++ = static_cast<char>('0' + value % 10);
  return end;
}

inline void appendDigits(std::string& out, std::int64_t value) {
  if (value < 0 || value > 999) return text::appendShortest(out, value);
  std::array<char, 3> digits;
  const char* const end = putDigits(digits.data(), static_cast<unsigned>(value));
  out.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

}  // namespace projectfile
