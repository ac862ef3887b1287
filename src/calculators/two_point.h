#pragma once

#include <string_view>

#include "calculators/result.h"
#include "model/calculator_inputs.h"

namespace calculators {

/// The line through (XMin, YMin) and (XMax, YMax); nothing when XMin and XMax are the same. For
/// the X-Y calculator and the one of potentiometers.
struct TwoPointLine {
  Result multiplier, offset;
  bool operator==(const TwoPointLine&) const = default;
};
TwoPointLine lineThrough(const model::TwoPointInputs& inputs);

/// A point of the line. X never leaves XMin..XMax: an X outside is replaced by the nearer end.
struct TwoPointProbe {
  Result x, y;
  bool operator==(const TwoPointProbe&) const = default;
};
TwoPointProbe probeAtX(const model::TwoPointInputs& inputs, std::string_view x);
/// Y stays as entered; a level line has no X for it.
TwoPointProbe probeAtY(const model::TwoPointInputs& inputs, std::string_view y);

Transfer transferOf(const model::TwoPointInputs& inputs);

}  // namespace calculators
