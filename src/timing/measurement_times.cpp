#include "timing/measurement_times.h"

#include <algorithm>
#include <cmath>

#include "model/time_units.h"
#include "text/numbers.h"
#include "text/strings.h"
#include "timing/execution_interval.h"
#include "timing/isolated_plan.h"

namespace timing {
namespace {

using model::BlockKind;
using model::MeasurementBlock;
using model::ModuleKindIndex;

constexpr double openSensorMicros = 10;
constexpr double referenceSettleMicros = 30;
constexpr double defaultReferenceIntegration = 40;
constexpr double multiplexerReferenceMicros = 70;
constexpr double pulseMicros = 10;
constexpr double filterMicros = 15;
constexpr double canItemMicros = 200;
constexpr double canValueMicros = 10;
constexpr double analogOutputMicros = 30;
constexpr double portGroupMicros = 20;
constexpr double batteryVoltsMicros = 30;
constexpr double batteryCurrentMicros = 20;

double notNegative(double micros) { return std::max(micros, 0.0); }

double factor(bool doubled) { return doubled ? 2 : 1; }

double settledMicros(const MeasurementBlock& block) {
  return notNegative(block.Integration) + notNegative(block.SettleTime);
}

double analogMicros(const MeasurementBlock& block) {
  const bool detects = block.OpenSensDetect && (block.Range == "50 mV" || block.Range == "200 mV");
  return settledMicros(block) * factor(block.ReverseMes && model::isDifferential(block)) +
         (detects ? openSensorMicros : 0);
}

/// Half bridges with two and three wires are measured single-ended: nothing to reverse.
double bridgeMicros(const MeasurementBlock& bridge) {
  const bool singleEnded = isSingleEndedBridge(bridge);
  const bool twice = channelsOfBridge(bridge) == 2;
  return settledMicros(bridge) * factor(!singleEnded && (bridge.ReverseMes || bridge.RevOutput)) *
             factor(bridge.RevExcite) * factor(twice) +
         (bridge.OpenSensDetect ? openSensorMicros : 0);
}

/// How often a filter block is measured in one scan.
double measurementsOfFilter(const model::Project& project, std::size_t number) {
  const model::FilterSlot& slot = project.filterSlots[model::filterSlotOf(project, number) - 1];
  if (slot.FFTModule || slot.FiltNoSubscan) return 1;
  return static_cast<double>(model::filterSubscan(project, slot).count);
}

double channelMicros(const model::Project& project, BlockKind kind, std::size_t number) {
  switch (kind) {
    case BlockKind::bridge:
      return bridgeMicros(project.block(kind, number));
    case BlockKind::pulse:
      return pulseMicros;
    case BlockKind::filter:
      return filterMicros * measurementsOfFilter(project, number);
    default:
      return analogMicros(project.block(kind, number));
  }
}

TimeGroup groupOf(BlockKind kind) {
  switch (kind) {
    case BlockKind::thermocouple:
      return TimeGroup::thermocouple;
    case BlockKind::voltage:
      return TimeGroup::voltage;
    case BlockKind::highVoltage:
      return TimeGroup::highVoltage;
    case BlockKind::bridge:
      return TimeGroup::bridge;
    case BlockKind::pulse:
      return TimeGroup::pulse;
    case BlockKind::filter:
      return TimeGroup::filter;
    default:
      return TimeGroup::tcmux;
  }
}

class Estimate {
 public:
  Estimate(const model::Project& project, const model::ChannelPlan& plan)
      : project_(project), plan_(plan) {}

  MeasurementTimes run() {
    for (const BlockKind kind : model::allBlockKinds)
      for (std::size_t n = 1; n <= model::maxBlocks; ++n)
        if (model::inUse(project_, kind, n)) addBlock(kind, n);
    addReferences();
    addCan();
    addAnalogOutputs();
    addPorts();
    addBattery();
    times_.total = times_.batteryVolts + times_.batteryCurrent;
    for (const double group : times_.totals) times_.total += group;
    times_.shortestScan = shortestScan();
    return std::move(times_);
  }

 private:
  double& total(TimeGroup group) { return times_.totals[static_cast<std::size_t>(group)]; }

  void addBlock(BlockKind kind, std::size_t number) {
    double& time = times_.blocks[static_cast<std::size_t>(kind)][number - 1];
    if (kind == BlockKind::isolated) {
      time = isolated_[number - 1].conversionMicros;
      addToSlot(number, time);
      return;
    }
    time = channelMicros(project_, kind, number) * project_.block(kind, number).Reps;
    total(groupOf(kind)) += time;
  }

  void addToSlot(std::size_t number, double micros) {
    const int module = plan_.of(BlockKind::isolated, number).first.slot -
                       model::firstSlot(project_.configuration, ModuleKindIndex::isolation7128);
    if (module >= 0 && module < static_cast<int>(times_.isolatedSlots.size()))
      times_.isolatedSlots[static_cast<std::size_t>(module)] += micros;
  }

  void addReferences() {
    const int configured = project_.configuration.TcConfigOpts[2];
    const double integration = configured == 0 ? defaultReferenceIntegration : configured;
    times_.moduleReference = static_cast<double>(plan_.tcSlots.size()) *
                             (notNegative(integration) + referenceSettleMicros);
    total(TimeGroup::thermocouple) += times_.moduleReference;
    for (std::size_t n = 1; n <= model::maxBlocks; ++n)
      if (model::inUse(project_, BlockKind::tcmux, n) &&
          !project_.block(BlockKind::tcmux, n).TCMUXVolts)
        times_.multiplexerReference +=
            multiplexerReferenceMicros *
            static_cast<double>(plan_.of(BlockKind::tcmux, n).multiplexers.size());
    total(TimeGroup::tcmux) += times_.multiplexerReference;
  }

  void addCan() {
    for (const model::CanItem& item : project_.can.items) {
      const bool used = model::canItemInUse(project_, item);
      times_.canItems.push_back(
          used ? canItemMicros + canValueMicros * static_cast<double>(item.values.size()) : 0);
      total(TimeGroup::can) += times_.canItems.back();
    }
  }

  void addAnalogOutputs() {
    for (const model::ExcitationChannel& channel : project_.excitation.channels) {
      times_.caoChannels.push_back(channel.Include ? analogOutputMicros + notNegative(channel.Delay)
                                                   : 0);
      total(TimeGroup::cao) += times_.caoChannels.back();
    }
  }

  void addPorts() {
    for (std::size_t p = 0; p < project_.ports.groups.size(); ++p) {
      times_.portGroups.push_back(isPortGroupInUse(p) ? portGroupMicros : 0);
      total(TimeGroup::port) += times_.portGroups.back();
    }
  }

  /// As in the program: the group has a module, which can do what the group is set to.
  [[nodiscard]] bool isPortGroupInUse(std::size_t p) const {
    const model::PortGroup& group = project_.ports.groups[p];
    if (p >= plan_.portGroups.size()) return false;
    if (group.ReadMode && !plan_.portGroups[p].input) return false;
    return std::any_of(group.ports.begin(), group.ports.end(),
                       [](const model::Port& port) { return port.Include; });
  }

  void addBattery() {
    if (project_.configuration.monitors(model::PowerOption::batteryVolts))
      times_.batteryVolts = batteryVoltsMicros;
    if (project_.configuration.monitors(model::PowerOption::batteryCurrent))
      times_.batteryCurrent = batteryCurrentMicros;
  }

  [[nodiscard]] double shortestScan() const {
    return std::max(
        {std::ceil(times_.total / 10) * 10, shortestScanMicros, minimumFilterScanMicros(project_)});
  }

  const model::Project& project_;
  const model::ChannelPlan& plan_;
  IsolatedPlans isolated_ = isolatedPlans(project_);
  MeasurementTimes times_;
};

/// The scan that gives every isolated block in use the subscan it needs; 0 without such blocks.
double isolatedScanMicros(const model::Project& project) {
  double least = 0;
  for (const IsolatedPlan& block : isolatedPlans(project))
    if (block.inUse) least = std::max(least, block.neededScanMicros);
  return least;
}

void addFilterLimits(const model::Project& project, std::vector<ScanLimit>& limits) {
  const int first = model::firstSlot(project.configuration, ModuleKindIndex::filter7125);
  for (const FilterScan& filter : filterScans(project))
    limits.push_back({text::concat("filter slot ", first + static_cast<int>(filter.filterSlot) - 1),
                      static_cast<double>(filter.subscanMicros)});
}

bool usesSlowSequence(const model::LoggerConfiguration& configuration) {
  return configuration.monitors(model::PowerOption::batterySaver) ||
         configuration.monitors(model::PowerOption::selfCalibration);
}

}  // namespace

MeasurementTimes measurementTimes(const model::Project& project, const model::ChannelPlan& plan) {
  return Estimate(project, plan).run();
}

std::string_view nameOf(TimeGroup group) {
  static constexpr std::array<std::string_view, timeGroups> names = {
      "Thermocouple", "Voltage", "High voltage", "Bridge", "Pulse", "TCMUX",
      "Filter",       "CAN",     "CAO outputs",  "Ports",  "Flags"};
  return names[static_cast<std::size_t>(group)];
}

std::vector<ScanLimit> scanLimits(const model::Project& project, const model::ChannelPlan& plan) {
  std::vector<ScanLimit> limits = {{"logger", shortestScanMicros, longestScanMicros}};
  limits.push_back({"measurements", measurementTimes(project, plan).total});
  addFilterLimits(project, limits);
  if (const double least = isolatedScanMicros(project); least > 0)
    limits.push_back({"isolated subscan", least, longestIsolatedScanMicros});
  if (usesSlowSequence(project.configuration))
    limits.push_back({"battery saver and self calibration", 0, longestSlowSequenceScanMicros});
  return limits;
}

}  // namespace timing
