#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "model/channel_plan.h"
#include "model/project.h"

namespace timing {

/// The groups that make up the estimate, in the order of the summary; isolated modules convert by
/// themselves and are not in the sum.
enum class TimeGroup {
  thermocouple,
  voltage,
  highVoltage,
  bridge,
  pulse,
  tcmux,
  filter,
  can,
  cao,
  port,
  flag
};
constexpr std::size_t timeGroups = 11;
/// "High voltage"
std::string_view nameOf(TimeGroup group);

/// What the measurements of one scan take by estimate, in microseconds.
struct MeasurementTimes {
  /// By BlockKind and block number - 1; 0 for a block not in use. Isolated: of its own subscan.
  std::array<std::array<double, model::maxBlocks>, model::blockKinds> blocks = {};
  double moduleReference = 0;       // 7121 reference temperatures, in the thermocouple total
  double multiplexerReference = 0;  // in the TCMUX total
  std::vector<double> canItems;     // by item - 1
  std::vector<double> caoChannels;  // of the excitation window, by channel - 1
  std::vector<double> portGroups;   // by group - 1
  std::array<double, timeGroups> totals = {};
  std::array<double, model::maxUserModules> isolatedSlots = {};  // by 7128 module - 1
  double batteryVolts = 0;
  double batteryCurrent = 0;
  double total = 0;         // totals and battery: what a scan must hold
  double shortestScan = 0;  // whole tens, or what the filters need; at least 100

  [[nodiscard]] double of(TimeGroup group) const { return totals[static_cast<std::size_t>(group)]; }
};

MeasurementTimes measurementTimes(const model::Project& project, const model::ChannelPlan& plan);

/// A limit on the scan interval, for windows and reports: what asks for it, and how long.
struct ScanLimit {
  std::string cause;  // "measurements", "filter slot 7", "isolated subscan", ...
  double leastMicros = 0;
  double mostMicros = 0;  // 0: none
};
/// Every limit that the project puts on its scan interval.
std::vector<ScanLimit> scanLimits(const model::Project& project, const model::ChannelPlan& plan);

}  // namespace timing
