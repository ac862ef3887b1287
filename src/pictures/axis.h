#pragma once

#include <QList>
#include <QString>

namespace pictures {

/// A linear axis: low < high, ticks at whole multiples of the step.
struct Axis {
  double low = 0.0;
  double high = 1.0;
  double step = 0.2;

  /// Place of a value on the axis, 0 at low and 1 at high. Far values end at a few lengths beyond,
  /// so that they can always be drawn; what is no number counts as 0.
  [[nodiscard]] double fraction(double value) const;
  [[nodiscard]] QList<double> ticks() const;
  [[nodiscard]] QString text(double tick) const;
};

/// An axis between just these ends. Ends that can't make an axis (not a number, infinite, equal,
/// exchanged, too close for a computer's numbers) are mended.
Axis axisBetween(double low, double high, int mostSteps);
/// The same, widened so that both ends are ticks.
Axis niceAxis(double low, double high, int mostSteps);

}  // namespace pictures
