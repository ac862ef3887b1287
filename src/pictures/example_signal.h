#pragma once

#include <QList>

/// A made-up measurement, and what histograms find in one.
namespace pictures {

/// A slow and a fast oscillation, always the same, just between the two values (which may be
/// exchanged). At least two points.
QList<double> exampleSignal(int points, double low, double high);

/// Samples in each of the bins between low and high; the last one holds samples equal to high.
/// Samples outside or that are no numbers count nowhere. The limits are numbers as `bounded` gives.
QList<int> binCounts(const QList<double>& signal, int bins, double low, double high);

/// A swing and back: its middle, its height from valley to peak, and 1 for a closed cycle or 0.5
/// for a half one.
struct Cycle {
  double mean = 0.0;
  double amplitude = 0.0;
  double count = 1.0;
};
/// Rainflow cycles of a signal of numbers; what does not close counts as halves.
QList<Cycle> rainflowCycles(const QList<double>& signal);

/// Where a signal crosses a level on its way up (or down): indexes of the first samples beyond it.
/// After one crossing the signal must first come back by more than the hysteresis.
QList<int> crossingsOf(const QList<double>& signal, double level, double hysteresis, bool falling);

}  // namespace pictures
