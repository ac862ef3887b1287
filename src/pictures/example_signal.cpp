#include "pictures/example_signal.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace pictures {
namespace {

QList<double> turningPoints(const QList<double>& signal) {
  QList<double> turns;
  for (const double value : signal) {
    if (!turns.isEmpty() && value == turns.last()) continue;
    const qsizetype n = turns.size();
    if (n > 1 && (turns[n - 1] > turns[n - 2]) == (value > turns[n - 1])) turns.removeLast();
    turns.append(value);
  }
  return turns;
}

Cycle cycleBetween(double one, double other, double count) {
  return {one / 2 + other / 2, std::abs(one - other), count};
}

/// Takes the inner swing of the last three turns, if the last one closes it.
bool takeClosed(QList<double>& open, QList<Cycle>& cycles) {
  const qsizetype n = open.size();
  if (n < 3 || std::abs(open[n - 1] - open[n - 2]) < std::abs(open[n - 2] - open[n - 3]))
    return false;
  const bool atStart = n == 3;
  cycles.append(cycleBetween(open[n - 3], open[n - 2], atStart ? 0.5 : 1.0));
  open.remove(n - 3, atStart ? 1 : 2);
  return true;
}

}  // namespace

QList<double> exampleSignal(int points, double low, double high) {
  const int count = std::max(points, 2);
  QList<double> signal;
  for (int i = 0; i < count; ++i) {
    const double t = 2 * std::numbers::pi * i / (count - 1);
    signal.append(std::sin(1.3 * t) + 0.55 * std::sin(5.1 * t + 1) +
                  0.4 * std::sin(13.7 * t) * std::sin(0.7 * t + 0.4));
  }
  const auto [least, most] = std::minmax_element(signal.begin(), signal.end());
  const double bottom = *least, length = *most - *least;
  for (double& value : signal) value = std::lerp(low, high, (value - bottom) / length);
  return signal;
}

QList<int> binCounts(const QList<double>& signal, int bins, double low, double high) {
  QList<int> counts(std::max(bins, 0), 0);
  if (!(high > low)) return counts;
  for (const double value : signal) {
    if (!(value >= low && value <= high) || bins < 1) continue;
    const double place = (value - low) / (high - low) * bins;
    ++counts[std::min(static_cast<int>(place), bins - 1)];
  }
  return counts;
}

QList<Cycle> rainflowCycles(const QList<double>& signal) {
  QList<Cycle> cycles;
  QList<double> open;
  for (const double turn : turningPoints(signal)) {
    open.append(turn);
    while (takeClosed(open, cycles)) {
    }
  }
  for (qsizetype i = 1; i < open.size(); ++i)
    cycles.append(cycleBetween(open[i - 1], open[i], 0.5));
  return cycles;
}

QList<int> crossingsOf(const QList<double>& signal, double level, double hysteresis, bool falling) {
  const double sign = falling ? -1 : 1;
  const double back = std::isfinite(hysteresis) ? std::max(hysteresis, 0.0) : 0.0;
  QList<int> crossings;
  bool armed = false;
  for (int i = 0; i < signal.size(); ++i) {
    const double above = sign * (signal[i] - level);
    if (armed && above >= 0) crossings.append(i);
    if (above >= 0) armed = false;
    if (above < 0 && above < -back) armed = true;
  }
  return crossings;
}

}  // namespace pictures
