#include "pictures/axis.h"

#include <algorithm>
#include <cmath>

#include "pictures/numbers.h"

namespace pictures {
namespace {

constexpr double tiniest = 1e-290;  // steps far below still are numbers
constexpr double closest = 1e-9;    // the least length of an axis against the size of its ends

double niceStep(double length, int mostSteps) {
  const double raw = length / std::max(mostSteps, 1);
  const double power = std::pow(10.0, std::floor(std::log10(raw)));
  for (const double factor : {1.0, 2.0, 5.0})
    if (raw <= factor * power * (1.0 + closest)) return factor * power;
  return 10.0 * power;
}

}  // namespace

double Axis::fraction(double value) const {
  constexpr double beyond = 4.0;
  return std::clamp((bounded(value) - low) / (high - low), -beyond, 1.0 + beyond);
}

QList<double> Axis::ticks() const {
  constexpr int most = 100;
  const double slack = step * 1e-6;
  QList<double> ticks;
  const double first = std::ceil((low - slack) / step);
  for (int i = 0; i < most && (first + i) * step <= high + slack; ++i)
    ticks.append((first + i) * step + 0.0);
  return ticks;
}

QString Axis::text(double tick) const {
  const double largest = std::max(std::abs(low), std::abs(high));
  if (largest >= 1e7 || step < 1e-5) {
    const double digits = std::floor(std::log10(largest)) - std::floor(std::log10(step)) + 1.0;
    return QString::number(tick, 'g', static_cast<int>(std::clamp(digits, 1.0, 12.0)));
  }
  const double decimals = std::max(0.0, -std::floor(std::log10(step) + closest));
  return QString::number(tick, 'f', static_cast<int>(decimals));
}

Axis axisBetween(double low, double high, int mostSteps) {
  low = bounded(low);
  high = bounded(high);
  if (high < low) std::swap(low, high);
  const double size = std::max(std::abs(low), std::abs(high));
  if (high - low < std::max(size * closest, tiniest)) {
    const double margin = size < tiniest ? 1.0 : size * 0.1;
    low -= margin;
    high += margin;
  }
  return {low, high, niceStep(high - low, mostSteps)};
}

Axis niceAxis(double low, double high, int mostSteps) {
  Axis axis = axisBetween(low, high, mostSteps);
  axis.low = std::floor(axis.low / axis.step + closest) * axis.step;
  axis.high = std::ceil(axis.high / axis.step - closest) * axis.step;
  return axis;
}

}  // namespace pictures
