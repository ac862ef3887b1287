#include "text/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace text {
namespace {

constexpr int maxSignificant = 15;

bool isDigitChar(char c) { return c >= '0' && c <= '9'; }

/// A decimal number taken apart: digits d1 d2 d3 ... stand for 0.d1d2d3... x 10^exponent.
struct Decimal {
  bool negative = false;
  std::string digits;  // no leading or trailing zeros; empty for zero
  int exponent = 0;
};

void dropTrailingZeros(std::string& digits) {
  while (!digits.empty() && digits.back() == '0') digits.pop_back();
}

/// Splits "d.ddde+XX" as std::to_chars writes it.
Decimal decimalFromScientific(std::string_view text) {
  Decimal result;
  if (text.front() == '-') {
    result.negative = true;
    text.remove_prefix(1);
  }
  const std::size_t e = text.find('e');
  for (const char c : text.substr(0, e))
    if (isDigitChar(c)) result.digits += c;
  std::string_view exponentText = text.substr(e + 1);
  if (exponentText.front() == '+') exponentText.remove_prefix(1);
  int exponent = 0;
  std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
  dropTrailingZeros(result.digits);
  result.exponent = result.digits.empty() ? 0 : exponent + 1;
  return result;
}

Decimal decimalOf(double value, int significant) {
  std::array<char, 40> buffer{};
  auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                           std::chars_format::scientific)
                 .ptr;
  Decimal shortestForm = decimalFromScientific({buffer.data(), end});
  if (static_cast<int>(shortestForm.digits.size()) <= significant) return shortestForm;
  end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                      std::chars_format::scientific, significant - 1)
            .ptr;
  return decimalFromScientific({buffer.data(), end});
}

void appendPlain(std::string& out, const Decimal& number) {
  const int size = static_cast<int>(number.digits.size());
  if (number.exponent <= 0) {
    out += "0.";
    out.append(static_cast<std::size_t>(-number.exponent), '0');
    out += number.digits;
  } else if (number.exponent >= size) {
    out += number.digits;
    out.append(static_cast<std::size_t>(number.exponent - size), '0');
  } else {
    out.append(number.digits, 0, static_cast<std::size_t>(number.exponent));
    out += '.';
    out.append(number.digits, static_cast<std::size_t>(number.exponent));
  }
}

void appendScientific(std::string& out, const Decimal& number) {
  out += number.digits.front();
  if (number.digits.size() > 1) {
    out += '.';
    out.append(number.digits, 1);
  }
  out += 'E';
  appendShortest(out, static_cast<std::int64_t>(number.exponent - 1));
}

void appendDecimal(std::string& out, const Decimal& number) {
  if (number.digits.empty()) {
    out += '0';
    return;
  }
  if (number.negative) out += '-';
  const int power = number.exponent - 1;
  if (power < -4 || power >= maxSignificant)
    appendScientific(out, number);
  else
    appendPlain(out, number);
}

bool isSmallWhole(double value) { return std::abs(value) < 1e15 && value == std::floor(value); }

/// Rounds to a count of kept digits, halves away from zero.
void roundDigits(Decimal& number, int kept) {
  if (kept >= static_cast<int>(number.digits.size())) return;
  const bool up = kept >= 0 && number.digits[static_cast<std::size_t>(kept)] >= '5';
  number.digits.resize(static_cast<std::size_t>(std::max(kept, 0)));
  if (up) {
    int i = kept - 1;
    while (i >= 0 && number.digits[static_cast<std::size_t>(i)] == '9') --i;
    number.digits.resize(static_cast<std::size_t>(i) + 1);
    if (i >= 0) {
      ++number.digits[static_cast<std::size_t>(i)];
    } else {
      number.digits = "1";
      ++number.exponent;
    }
  }
  dropTrailingZeros(number.digits);
  if (number.digits.empty()) number.exponent = 0;
}

char digitAt(const Decimal& number, int position) {  // 0: first digit after the point
  const int index = number.exponent + position;
  if (index < 0 || index >= static_cast<int>(number.digits.size())) return '0';
  return number.digits[static_cast<std::size_t>(index)];
}

std::string grouped(const std::string& whole) {
  std::string out;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    if (i > 0 && (whole.size() - i) % 3 == 0) out += ',';
    out += whole[i];
  }
  return out;
}

struct Pattern {
  int minWhole = 0;
  bool groups = false;
  int minFraction = 0;
  int maxFraction = 0;
  bool scientific = false;
};

Pattern patternFrom(std::string_view text) {
  Pattern pattern;
  const std::size_t e = text.find('e');
  pattern.scientific = e != std::string_view::npos;
  const std::string_view mantissa = text.substr(0, e);
  const std::size_t point = mantissa.find('.');
  for (const char c : mantissa.substr(0, point)) {
    if (c == '0') ++pattern.minWhole;
    if (c == ',') pattern.groups = true;
  }
  if (point == std::string_view::npos) return pattern;
  const std::string_view fraction = mantissa.substr(point + 1);
  pattern.maxFraction = static_cast<int>(fraction.size());
  const std::size_t lastZero = fraction.rfind('0');
  if (lastZero != std::string_view::npos) pattern.minFraction = static_cast<int>(lastZero) + 1;
  return pattern;
}

std::string formattedPlain(Decimal number, const Pattern& pattern) {
  roundDigits(number, number.exponent + pattern.maxFraction);
  std::string whole;
  for (int i = -number.exponent; i < 0; ++i) whole += digitAt(number, i);
  if (static_cast<int>(whole.size()) < pattern.minWhole)
    whole.insert(0, static_cast<std::size_t>(pattern.minWhole) - whole.size(), '0');
  std::string fraction;
  for (int i = 0; i < pattern.maxFraction; ++i) fraction += digitAt(number, i);
  while (static_cast<int>(fraction.size()) > pattern.minFraction && fraction.back() == '0')
    fraction.pop_back();
  std::string out;
  if (number.negative && !number.digits.empty()) out += '-';
  out += pattern.groups ? grouped(whole) : whole;
  if (pattern.maxFraction > 0 && !fraction.empty()) out += '.' + fraction;
  return out;
}

std::string formattedScientific(Decimal number, const Pattern& pattern) {
  roundDigits(number, pattern.maxFraction + 1);
  const int power = number.digits.empty() ? 0 : number.exponent - 1;
  number.exponent = number.digits.empty() ? 0 : 1;
  std::string out = formattedPlain(number, pattern);
  out += 'e';
  appendShortest(out, static_cast<std::int64_t>(power));
  return out;
}

std::size_t skipDigits(std::string_view text, std::size_t i) {
  while (i < text.size() && isDigitChar(text[i])) ++i;
  return i;
}

std::size_t skipBlanks(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
  return i;
}

std::size_t skipExponent(std::string_view text, std::size_t i) {
  if (i >= text.size() || std::string_view("EeDd").find(text[i]) == std::string_view::npos)
    return i;
  std::size_t j = i + 1;
  if (j < text.size() && (text[j] == '+' || text[j] == '-')) ++j;
  const std::size_t end = skipDigits(text, j);
  return end > j ? end : i;
}

struct NumberSpan {
  std::size_t begin = 0, end = 0;
};

/// Where the number stands in the text; begin == end when there is none.
NumberSpan numberSpan(std::string_view text) {
  const std::size_t begin = skipBlanks(text);
  std::size_t i = begin;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  const std::size_t whole = i;
  i = skipDigits(text, i);
  std::size_t digits = i - whole;
  if (i < text.size() && text[i] == '.') {
    const std::size_t fraction = skipDigits(text, i + 1);
    digits += fraction - (i + 1);
    if (digits > 0) i = fraction;
  }
  if (digits == 0) return {begin, begin};
  return {begin, skipExponent(text, i)};
}

/// The decimal power of a number that from_chars refused, as far as its sign goes.
double decimalPower(std::string_view number) {
  const std::size_t e = std::min(number.find('e'), number.size());
  const std::size_t point = std::min(number.find('.'), e);
  const std::size_t first = number.find_first_of("123456789");
  const double power = e < number.size() ? readNumber(number.substr(e + 1)) : 0;
  return power + static_cast<double>(point) - static_cast<double>(std::min(first, e));
}

/// Values too large or too small for from_chars: the largest, or zero.
double outOfRangeValue(std::string_view number) {
  if (decimalPower(number) < 0) return 0.0;
  constexpr double largest = std::numeric_limits<double>::max();
  return number.front() == '-' ? -largest : largest;
}

}  // namespace

double halfEven(double value) {
  if (!std::isfinite(value)) return value;
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest != 0.5) return rest < 0.5 ? below : below + 1;
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

std::int64_t integerWithin(double value, std::int64_t low, std::int64_t high) {
  const double rounded = halfEven(value);
  if (!(rounded > static_cast<double>(low))) return low;
  if (rounded >= static_cast<double>(high)) return high;
  return static_cast<std::int64_t>(rounded);
}

double readNumber(std::string_view text) {
  const NumberSpan span = numberSpan(text);
  if (span.begin == span.end) return 0;
  std::string number(text.substr(span.begin, span.end - span.begin));
  if (number.front() == '+') number.erase(0, 1);
  for (char& c : number)
    if (c == 'E' || c == 'D' || c == 'd') c = 'e';
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  return result.ec == std::errc::result_out_of_range ? outOfRangeValue(number) : value;
}

bool isNumber(std::string_view text) {
  const NumberSpan span = numberSpan(text);
  if (span.begin == span.end) return false;
  return span.end + skipBlanks(text.substr(span.end)) == text.size();
}

void appendShortest(std::string& out, std::int64_t value) {
  std::array<char, 24> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  out.append(buffer.data(), result.ptr);
}

void appendShortest(std::string& out, double value) {
  if (isSmallWhole(value))
    appendShortest(out, static_cast<std::int64_t>(value));
  else if (std::isfinite(value))
    appendDecimal(out, decimalOf(value, maxSignificant));
  else
    out += '0';
}

std::string shortest(double value) {
  std::string out;
  appendShortest(out, value);
  return out;
}

std::string shortest(std::int64_t value) {
  std::string out;
  appendShortest(out, value);
  return out;
}

std::string shortestSingle(double value) {
  std::string out;
  const auto single = static_cast<float>(value);
  if (std::isfinite(single)) appendDecimal(out, decimalOf(static_cast<double>(single), 7));
  return out.empty() ? shortest(value) : out;
}

void appendGeneral(std::string& out, double value) {
  if (!(value < 0)) out += ' ';
  appendShortest(out, value);
}

void appendGeneral(std::string& out, std::int64_t value) {
  if (value >= 0) out += ' ';
  appendShortest(out, value);
}

std::string formatted(double value, std::string_view patternText) {
  const Pattern pattern = patternFrom(patternText);
  if (!std::isfinite(value)) value = 0;
  const Decimal number = decimalOf(value, maxSignificant);
  return pattern.scientific ? formattedScientific(number, pattern)
                            : formattedPlain(number, pattern);
}

}  // namespace text
