#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/channel_plan.h"
#include "model/project.h"

/// What the main scan interval must keep to, in microseconds, and the words for what it breaks.
namespace timing {

inline constexpr double shortestScanMicros = 100;
inline constexpr double longestScanMicros = 3'600'000'000;          // 1 hour
inline constexpr double longestIsolatedScanMicros = 1'800'000'000;  // 30 minutes
/// Above it the low-priority sequence has no time for battery saver and self calibration.
inline constexpr double longestSlowSequenceScanMicros = 30'000'000;

/// The rate of a 7125 module with voltage filters in use.
struct FilterScan {
  std::size_t filterSlot = 0;      // from 1: the n-th 7125 module
  std::int64_t subscanMicros = 0;  // between its samples
  bool subscans = true;            // off: measured once a scan, which then need not be a multiple
};
std::vector<FilterScan> filterScans(const model::Project& project);

/// The shortest scan that the 7125 modules in use allow; 0 without them.
double minimumFilterScanMicros(const model::Project& project);

/// Bytes of the scan buffer: each scan keeps its values, of 4 bytes, and 8 bytes more.
std::int64_t bufferBytes(const model::Project& project);

/// What is wrong with the scan interval or the burst buffer: range, whole number of the unit,
/// filter subscans, buffer. The first fault counts.
std::optional<std::string> complaintAboutScan(const model::Project& project);

/// Why the logger can't scan in bursts.
std::optional<std::string> complaintAboutBurst(const model::Project& project);

/// The measurements take longer than the scan by estimate.
std::optional<std::string> warningAboutEstimate(const model::Project& project,
                                                const model::ChannelPlan& plan);

}  // namespace timing
