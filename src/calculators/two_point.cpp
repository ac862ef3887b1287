#include "calculators/two_point.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace calculators {
namespace {

constexpr std::string_view pattern = "0.0####";

struct Points {
  double xMin, xMax, yMin, yMax;
};

Points pointsOf(const model::TwoPointInputs& inputs) {
  return {numberIn(inputs.XMin), numberIn(inputs.XMax), numberIn(inputs.YMin),
          numberIn(inputs.YMax)};
}

/// Not a finite number when both X are the same.
double slopeOf(const Points& points) {
  return (points.yMax - points.yMin) / (points.xMax - points.xMin);
}

/// a + b, without the rest that rounding leaves where they cancel: an offset of -1E-16 is none.
double sumOf(double a, double b) {
  constexpr double rounding = 8 * std::numeric_limits<double>::epsilon();
  const double sum = a + b;
  return std::abs(sum) <= rounding * std::abs(a) ? 0 : sum;
}

double withinEnds(double x, const Points& points) {
  const auto [low, high] = std::minmax(points.xMin, points.xMax);
  return std::clamp(x, low, high);
}

}  // namespace

TwoPointLine lineThrough(const model::TwoPointInputs& inputs) {
  const Points points = pointsOf(inputs);
  const double slope = slopeOf(points);
  return {shownOrScientific(slope, pattern),
          shownOrScientific(sumOf(points.yMax, -slope * points.xMax), pattern)};
}

TwoPointProbe probeAtX(const model::TwoPointInputs& inputs, std::string_view x) {
  const Points points = pointsOf(inputs);
  const double slope = slopeOf(points);
  if (!std::isfinite(slope)) return {};
  const double taken = withinEnds(numberIn(x), points);
  return {shownOrScientific(taken, pattern),
          shownOrScientific(sumOf((taken - points.xMin) * slope, points.yMin), pattern)};
}

TwoPointProbe probeAtY(const model::TwoPointInputs& inputs, std::string_view y) {
  const Points points = pointsOf(inputs);
  const double slope = slopeOf(points);
  if (!std::isfinite(slope)) return {};
  const double entered = numberIn(y);
  TwoPointProbe probe{std::nullopt, shownOrScientific(entered, pattern)};
  if (slope != 0)
    probe.x = shownOrScientific(
        withinEnds(sumOf((entered - points.yMin) / slope, points.xMin), points), pattern);
  return probe;
}

Transfer transferOf(const model::TwoPointInputs& inputs) {
  const TwoPointLine line = lineThrough(inputs);
  return {boxText(line.multiplier), boxText(line.offset), inputs.Units, ""};
}

}  // namespace calculators
