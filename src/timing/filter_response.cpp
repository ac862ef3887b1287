#include "timing/filter_response.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace timing {
namespace {

/// Exactly 0 at whole numbers, where the sine of a rounded multiple of pi is not.
double sinc(double x) {
  if (x == 0) return 1;
  if (x == std::floor(x)) return 0;
  return std::sin(std::numbers::pi * x) / (std::numbers::pi * x);
}

double decibels(double magnitude) {
  return magnitude > 0 ? std::max(20 * std::log10(magnitude), lowestDecibels) : lowestDecibels;
}

}  // namespace

double filterMagnitude(double hertz, double firstZeroHertz, int order) {
  return std::pow(std::abs(sinc(hertz / firstZeroHertz)), order);
}

double cutoffRatio(int order) {
  double low = 0;
  double high = 1;
  for (int halvings = 0; halvings < 60; ++halvings) {  // beyond the precision of a double
    const double middle = (low + high) / 2;
    (filterMagnitude(middle, 1, order) > std::numbers::sqrt2 / 2 ? low : high) = middle;
  }
  return low;
}

std::vector<ResponsePoint> filterResponse(double firstZeroHertz, int order, double highestHertz,
                                          std::size_t points) {
  std::vector<ResponsePoint> response(std::max<std::size_t>(points, 2));
  const double step = highestHertz / static_cast<double>(response.size() - 1);
  for (std::size_t i = 0; i < response.size(); ++i) {
    response[i].hertz = step * static_cast<double>(i);
    response[i].magnitude = filterMagnitude(response[i].hertz, firstZeroHertz, order);
    response[i].decibels = decibels(response[i].magnitude);
  }
  return response;
}

}  // namespace timing
