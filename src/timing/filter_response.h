#pragma once

#include <cstddef>
#include <vector>

/// The frequency response of an isolated block's filter as plain numbers, ready for a plot: an
/// order-N filter is N equal moving averages one after the other.
namespace timing {

/// |sinc(f / f0)|^N: 1 at 0 Hz, 0 at every multiple of the first zero f0.
double filterMagnitude(double hertz, double firstZeroHertz, int order);

/// Where the filter lets half the power through (-3 dB), as a part of the first zero.
double cutoffRatio(int order);

struct ResponsePoint {
  double hertz = 0;
  double magnitude = 1;
  double decibels = 0;  // never below lowestDecibels
};
constexpr double lowestDecibels = -120;

/// Points at equal steps from 0 Hz to the highest frequency, both included; at least two.
std::vector<ResponsePoint> filterResponse(double firstZeroHertz, int order, double highestHertz,
                                          std::size_t points);

}  // namespace timing
