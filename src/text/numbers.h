#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Numbers as text and back. The decimal point is always "."; no locale is ever asked.
namespace text {

/// Nearest whole number, ties to even. Infinite and not-a-number values come back unchanged.
double halfEven(double value);

/// Nearest whole number within low..high, ties to even; saturates, not-a-number gives low.
std::int64_t integerWithin(double value, std::int64_t low, std::int64_t high);

/// The number at the start of a text: blanks and tabs, sign, digits, fraction, exponent (E or D);
/// what follows is ignored and nothing readable is 0.
double readNumber(std::string_view text);

/// True when the whole text, blanks aside, is one number that readNumber understands.
bool isNumber(std::string_view text);

/// Fewest digits, at most 15 significant, that read back to the same value; no exponent between
/// 1E-4 and 1E15, whole numbers without a point, "0.5" with its zero.
void appendShortest(std::string& out, double value);
void appendShortest(std::string& out, std::int64_t value);
std::string shortest(double value);
std::string shortest(std::int64_t value);

/// Like shortest with at most 7 significant digits: a value kept in single precision.
std::string shortestSingle(double value);

/// The project file's form of a number: one blank before a value that is not negative.
void appendGeneral(std::string& out, double value);
void appendGeneral(std::string& out, std::int64_t value);

/// A number through a display pattern: "0" forces a digit, "#" shows one that is needed, a comma
/// groups thousands, an "e-##" tail asks for the scientific form. Halves round away from zero on
/// the shortest decimal form.
std::string formatted(double value, std::string_view pattern);

}  // namespace text
