#include "timing/execution_interval.h"

#include <algorithm>
#include <cmath>

#include "model/quantity_rules.h"
#include "model/stored_outputs.h"
#include "model/table_space.h"
#include "model/time_units.h"
#include "text/numbers.h"
#include "text/strings.h"
#include "timing/measurement_times.h"

namespace timing {
namespace {

using model::BlockKind;
using text::concat;
using Complaint = std::optional<std::string>;

constexpr std::int64_t bytesPerValue = 4;
constexpr std::int64_t bytesPerScan = 8;

std::string micros(double value) { return text::formatted(value, "###,##0.###"); }

bool hasIsolatedBlocks(const model::Project& project) {
  for (std::size_t n = 1; n <= model::maxBlocks; ++n)
    if (model::inUse(project, BlockKind::isolated, n)) return true;
  return false;
}

bool isBurst(const model::Project& project) { return project.scan.ScanMode == 1; }

std::int64_t scansBuffered(const model::Project& project) {
  const model::ScanSetup& scan = project.scan;
  const bool buffers = isBurst(project) || scan.ScanBuffer;
  const std::int64_t burst = buffers ? std::max<std::int64_t>(scan.ScanBufferSize, 0) : 0;
  if (!model::isK700X(project.configuration)) return burst;
  return std::max<std::int64_t>(scan.BufferScans, isBurst(project) ? burst : 0);
}

std::int64_t valuesOfScan(const model::Project& project) {
  std::size_t values = 0;
  for (const BlockKind kind : model::allBlockKinds)
    for (std::size_t n = 1; n <= model::maxBlocks; ++n) {
      if (!model::inUse(project, kind, n)) continue;
      const bool fft = kind == BlockKind::filter && model::isFft(project, n);
      values += static_cast<std::size_t>(project.block(kind, n).Reps) *
                (fft ? KGEN_COMMON::FftValues(project, n) : 1);
    }
  for (const model::CanItem& item : project.can.items)
    if (model::canItemInUse(project, item)) values += item.values.size();
  return static_cast<std::int64_t>(values);
}

Complaint complaintAboutRange(const model::Project& project) {
  const double scan = model::scanMicros(project);
  if (!(scan >= shortestScanMicros))
    return concat("The scan interval is ", micros(scan), " uSec; the shortest is ",
                  micros(shortestScanMicros), " uSec.");
  if (scan > longestScanMicros) return "The scan interval is longer than 1 hour.";
  if (scan > longestIsolatedScanMicros && hasIsolatedBlocks(project))
    return "The scan interval is longer than 30 minutes, the most with isolated measurements.";
  return {};
}

Complaint complaintAboutWholeNumber(const model::Project& project) {
  const double number = project.scan.ExecutionTime;
  if (number == std::floor(number)) return {};
  return concat("The scan interval of ", number,
                " is not a whole number; choose a smaller unit of time.");
}

Complaint complaintAboutFilters(const model::Project& project) {
  const auto scan = std::llround(model::scanMicros(project));
  for (const FilterScan& filter : filterScans(project))
    if (filter.subscans && scan % filter.subscanMicros != 0)
      return concat("The scan interval of ", micros(static_cast<double>(scan)),
                    " uSec is not a multiple of the ",
                    micros(static_cast<double>(filter.subscanMicros)),
                    " uSec between the samples of 7125 module ", filter.filterSlot, ".");
  return {};
}

Complaint complaintAboutBuffer(const model::Project& project) {
  if (isBurst(project) && scansBuffered(project) < 1)
    return "A burst scan needs a buffer of at least 1 scan.";
  const model::Medium medium = model::bufferMediumOf(project.scan);
  const double room = model::capacityOf(project.configuration, medium);
  const auto bytes = static_cast<double>(bufferBytes(project));
  if (bytes <= room) return {};
  return concat("The scan buffer takes ", micros(bytes), " bytes; ", model::nameOf(medium),
                " holds ", micros(room), ". Buffer fewer scans.");
}

}  // namespace

std::vector<FilterScan> filterScans(const model::Project& project) {
  std::vector<FilterScan> scans;
  for (std::size_t n = 1; n <= model::maxBlocks; ++n) {
    if (!model::inUse(project, BlockKind::filter, n) || model::isFft(project, n)) continue;
    const std::size_t slot = model::filterSlotOf(project, n);
    const model::FilterSlot& settings = project.filterSlots[slot - 1];
    if (!(settings.FiltFreqNum > 0) || (!scans.empty() && scans.back().filterSlot == slot))
      continue;
    scans.push_back(
        {slot, model::filterSubscan(project, settings).intervalMicros, !settings.FiltNoSubscan});
  }
  return scans;
}

double minimumFilterScanMicros(const model::Project& project) {
  std::int64_t least = 0;
  for (const FilterScan& filter : filterScans(project))
    least = std::max(least, filter.subscanMicros);
  return static_cast<double>(least);
}

std::int64_t bufferBytes(const model::Project& project) {
  return scansBuffered(project) * (bytesPerValue * valuesOfScan(project) + bytesPerScan);
}

std::optional<std::string> complaintAboutScan(const model::Project& project) {
  for (const auto check : {complaintAboutRange, complaintAboutWholeNumber, complaintAboutFilters,
                           complaintAboutBuffer})
    if (auto complaint = check(project)) return complaint;
  return {};
}

std::optional<std::string> complaintAboutBurst(const model::Project& project) {
  if (model::allowsBurst(project.configuration)) return {};
  return "A burst scan needs a 7104 CPU, or a 7103 CPU with a static RAM card.";
}

std::optional<std::string> warningAboutEstimate(const model::Project& project,
                                                const model::ChannelPlan& plan) {
  const double total = measurementTimes(project, plan).total;
  if (total <= model::scanMicros(project)) return {};
  return concat("The measurements take ", micros(total), " uSec by estimate, longer than the ",
                micros(model::scanMicros(project)), " uSec of a scan.");
}

}  // namespace timing
