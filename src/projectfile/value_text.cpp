#include "projectfile/value_text.h"

#include <algorithm>

#include "text/numbers.h"

namespace projectfile {
namespace {

constexpr std::size_t shortDigits = 9;  // fit into 32 bits

struct ShortNumber {
  std::int32_t value = 0;
  bool read = false;
};

/// Blanks, a sign if negative, up to nine digits, and nothing else.
ShortNumber readShort(std::string_view text) {
  const char* p = text.data();
  const char* const end = p + text.size();
  while (p != end && *p == ' ') ++p;
  const bool negative = p != end && *p == '-';
  if (negative) ++p;
  if (p == end || static_cast<std::size_t>(end - p) > shortDigits) return {};
  std::int32_t value = 0;
  for (; p != end; ++p) {
    if (*p < '0' || *p > '9') return {};
    value = value * 10 + (*p - '0');
  }
  return {negative ? -value : value, true};
}

}  // namespace

double readDouble(std::string_view text) {
  const ShortNumber number = readShort(text);
  return number.read ? number.value : text::readNumber(text);
}

std::int64_t readInteger(std::string_view text, std::int64_t low, std::int64_t high) {
  const ShortNumber number = readShort(text);
  if (number.read) return std::clamp<std::int64_t>(number.value, low, high);
  return text::integerWithin(text::readNumber(text), low, high);
}

void appendDigits(std::string& out, std::int64_t value) {
  if (value < 0 || value > 999) return text::appendShortest(out, value);
  char digits[3];
  std::size_t count = 0;
  if (value >= 100) digits[count++] = static_cast<char>('0' + value / 100);
  if (value >= 10) digits[count++] = static_cast<char>('0' + value / 10 % 10);
  digits[count++] = static_cast<char>('0' + value % 10);
  out.append(digits, count);
}

}  // namespace projectfile
