#include "calculators/result.h"

#include <cmath>
#include <limits>

#include "text/numbers.h"

namespace calculators {
namespace {

constexpr std::string_view scientificPattern = "0.####0e-##";

bool needsScientific(double number) {
  const double size = std::abs(number);
  return size >= 1'000'000 || (size > 0 && size < 0.001);
}

}  // namespace

Result shownAs(double number, std::string_view pattern) {
  if (!std::isfinite(number)) return std::nullopt;
  return ShownNumber{number, text::formatted(number, pattern)};
}

Result shownOrScientific(double number, std::string_view pattern) {
  return shownAs(number, needsScientific(number) ? scientificPattern : pattern);
}

double numberIn(std::string_view box) {
  return text::isNumber(box) ? text::readNumber(box) : std::numeric_limits<double>::quiet_NaN();
}

double numberOf(const Result& result) {
  return result ? result->number : std::numeric_limits<double>::quiet_NaN();
}

std::string boxText(const Result& result) { return result ? text::shortest(result->number) : ""; }

}  // namespace calculators
