#include "text/strings.h"

#include <algorithm>
#include <array>

namespace text {
namespace {

char upperChar(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
char lowerChar(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

template <class F>
std::string mapped(std::string_view text, F f) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(), f);
  return out;
}

/// Windows-1252 characters 0x80 to 0x9F; the five unused codes stand for themselves.
constexpr std::array<char16_t, 32> windows1252Upper = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void appendUtf8(std::string& out, unsigned codePoint) {
  if (codePoint < 0x80) {
    out += static_cast<char>(codePoint);
  } else if (codePoint < 0x800) {
    out += static_cast<char>(0xC0U | (codePoint >> 6U));
    out += static_cast<char>(0x80U | (codePoint & 0x3FU));
  } else {
    out += static_cast<char>(0xE0U | (codePoint >> 12U));
    out += static_cast<char>(0x80U | ((codePoint >> 6U) & 0x3FU));
    out += static_cast<char>(0x80U | (codePoint & 0x3FU));
  }
}

bool isContinuation(unsigned char c) { return (c & 0xC0U) == 0x80; }

/// Length of a well-formed UTF-8 sequence at the start of the bytes; 0 when there is none.
std::size_t sequenceLength(std::string_view bytes) {
  const auto at = [&](std::size_t i) {
    return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : static_cast<unsigned char>(0);
  };
  const unsigned char c = at(0);
  if (c < 0x80) return 1;
  if (c >= 0xC2 && c <= 0xDF) return isContinuation(at(1)) ? 2 : 0;
  if (!isContinuation(at(1)) || !isContinuation(at(2))) return 0;
  if (c >= 0xE0 && c <= 0xEF) {
    if (c == 0xE0 && at(1) < 0xA0) return 0;
    if (c == 0xED && at(1) > 0x9F) return 0;
    return 3;
  }
  if (c < 0xF0 || c > 0xF4 || !isContinuation(at(3))) return 0;
  if (c == 0xF0 && at(1) < 0x90) return 0;
  if (c == 0xF4 && at(1) > 0x8F) return 0;
  return 4;
}

}  // namespace

std::string upper(std::string_view text) { return mapped(text, upperChar); }
std::string lower(std::string_view text) { return mapped(text, lowerChar); }

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return lowerChar(x) == lowerChar(y);
         });
}

bool containsIgnoringCase(std::string_view text, std::string_view part) {
  return std::search(text.begin(), text.end(), part.begin(), part.end(),
                     [](char x, char y) { return lowerChar(x) == lowerChar(y); }) != text.end();
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string padded(std::string_view text, std::size_t width) {
  std::string out(text);
  if (out.size() < width) out.append(width - out.size(), ' ');
  return out;
}

std::string ruled(std::string_view title, std::size_t width, char left, char right) {
  const double half = (static_cast<double>(width) - static_cast<double>(title.size())) / 2;
  const auto count = static_cast<std::size_t>(std::max(halfEven(half), 0.0));
  std::string out(count, left);
  out += title;
  out.append(count, right);
  return out;
}

bool isUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = sequenceLength(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::string asUtf8(std::string_view bytes) {
  if (isUtf8(bytes)) return std::string(bytes);
  std::string out;
  for (const char byte : bytes) {
    const auto c = static_cast<unsigned char>(byte);
    appendUtf8(out, c >= 0x80 && c < 0xA0 ? windows1252Upper[c - 0x80U] : c);
  }
  return out;
}

std::string asAscii(std::string_view utf8) {
  std::string out;
  while (!utf8.empty()) {
    const std::size_t length = std::max<std::size_t>(sequenceLength(utf8), 1);
    const auto c = static_cast<unsigned char>(utf8.front());
    out += c >= 0x20 && c < 0x7F ? utf8.front() : '?';
    utf8.remove_prefix(length);
  }
  return out;
}

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isName(std::string_view text) {
  return !text.empty() && isLetter(text.front()) &&
         std::all_of(text.begin(), text.end(),
                     [](char c) { return isLetter(c) || isDigit(c) || c == '_'; });
}

}  // namespace text
