#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Scaling calculators: multipliers and offsets from sensor data. Each is a set of functions over
/// the inputs that the project keeps; boxes are read like any number, so no text is refused.
namespace calculators {

/// A number as computed, and as a window shows it.
struct ShownNumber {
  double number = 0;
  std::string shown;
  bool operator==(const ShownNumber&) const = default;
};

/// Nothing when the inputs give no number.
using Result = std::optional<ShownNumber>;

Result shownAs(double number, std::string_view pattern);
/// The same in scientific form from a million up and below a thousandth.
Result shownOrScientific(double number, std::string_view pattern);

/// The number in a box; a box that is empty or holds none is not-a-number too.
double numberIn(std::string_view box);

/// The number of a result; nothing computed is not-a-number, which spoils what is built on it.
double numberOf(const Result& result);

/// What Done puts into the boxes of the calling window, as if typed there; "" leaves a box alone.
struct Transfer {
  std::string multiplier, offset, units, excitation;
  bool operator==(const Transfer&) const = default;
};

/// A number in all its digits, as a box takes it; "" for nothing.
std::string boxText(const Result& result);

}  // namespace calculators
