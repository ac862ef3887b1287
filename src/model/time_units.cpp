#include "model/time_units.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "text/strings.h"

namespace model {
namespace {

struct TimeUnit {
  std::string_view longName, shortName, keyword;
  double micros;
};

// Intervals with the first unit count tens of microseconds.
constexpr std::array<TimeUnit, 6> timeUnits = {{{"microsecond", "uSec", "uSec", 10},
                                                {"millisecond", "mSec", "mSec", 1e3},
                                                {"second", "Sec", "Sec", 1e6},
                                                {"minute", "Min", "Min", 60e6},
                                                {"hour", "Hour", "Hr", 3600e6},
                                                {"day", "Day", "Day", 86400e6}}};

const TimeUnit& unitOf(int code) {
  static constexpr TimeUnit unknown = {"", "", "", 0};
  return code >= 0 && code < static_cast<int>(timeUnits.size())
             ? timeUnits[static_cast<std::size_t>(code)]
             : unknown;
}

constexpr std::int64_t largestInterval = std::numeric_limits<std::int32_t>::max();
constexpr auto most = static_cast<std::int64_t>(1e15);

std::int64_t wholeMicros(double micros) { return text::integerWithin(micros, 0, most); }

/// The first filter slot that measures with (without) spectra; nullptr when there is none.
const FilterSlot* firstSlotInUse(const Project& project, bool fft) {
  for (std::size_t n = 1; n <= maxBlocks; ++n)
    if (inUse(project, BlockKind::filter, n) && isFft(project, n) == fft)
      return &project.filterSlots[filterSlotOf(project, n) - 1];
  return nullptr;
}

ShownInterval atFilterRate(double micros) {
  const auto whole = static_cast<double>(wholeMicros(micros));
  return {.number = whole, .micros = whole};
}

std::string fillText(const Duration& time) {
  return text::concat(time.days, " Days, ", time.hours, " Hours, ", time.minutes, " Mins, ",
                      text::formatted(time.seconds, "#0.0##"), " Secs");
}

}  // namespace

std::string_view unitKeyword(int code) { return unitOf(code).keyword; }

double microsFrom(double value, int unitCode) { return value * unitOf(unitCode).micros; }

double scanMicros(const Project& project) {
  return microsFrom(project.scan.ExecutionTime, project.scan.ExecTimeUnits);
}

double trueNumber(double value, int unitCode) { return unitCode == 0 ? value * 10 : value; }

bool isVoltFilterRate(std::string_view interval) {
  return text::equalsIgnoringCase(text::trimmed(interval), "VFilt");
}

bool isFftFilterRate(std::string_view interval) {
  return text::equalsIgnoringCase(text::trimmed(interval), "FFilt");
}

FilterSubscan filterSubscan(const Project& project, const FilterSlot& slot) {
  const double scan = scanMicros(project);
  if (!(slot.FiltFreqNum > 0)) return {std::max<std::int64_t>(wholeMicros(scan), 1), 1};
  const std::int64_t interval = std::max<std::int64_t>(wholeMicros(1e6 / slot.FiltFreqNum), 1);
  const std::int64_t count = wholeMicros(scan / static_cast<double>(interval));
  return {interval, std::max<std::int64_t>(count, 1)};
}

double voltFilterMicros(const Project& project) {
  const FilterSlot* slot = firstSlotInUse(project, false);
  return slot && slot->FiltFreqNum > 0 ? 1e6 / slot->FiltFreqNum : 0;
}

double fftFilterMicros(const Project& project) {
  const FilterSlot* slot = firstSlotInUse(project, true);
  return slot && slot->FiltFFTSampleRate > 0 ? 1e6 / slot->FiltFFTSampleRate * slot->FFTLength : 0;
}

std::int64_t intervalNumber(std::string_view interval) {
  return text::integerWithin(text::readNumber(interval), 1, largestInterval);
}

ShownInterval shownInterval(const Project& project, const OutputTable& table) {
  const ScanSetup& scan = project.scan;
  if (table.SyncTable)
    return {true, trueNumber(scan.ExecutionTime, scan.ExecTimeUnits), scan.ExecTimeUnits,
            scanMicros(project)};
  if (isVoltFilterRate(table.OutInt)) return atFilterRate(voltFilterMicros(project));
  if (isFftFilterRate(table.OutInt)) return atFilterRate(fftFilterMicros(project));
  const auto number = static_cast<double>(intervalNumber(table.OutInt));
  return {false, trueNumber(number, table.OutIntUnits), table.OutIntUnits,
          microsFrom(number, table.OutIntUnits)};
}

Duration durationFrom(double seconds) {
  Duration time;
  time.days = static_cast<std::int64_t>(std::floor(std::clamp(seconds, 0.0, 1e15) / 86400));
  double rest = std::clamp(seconds, 0.0, 1e15) - static_cast<double>(time.days) * 86400;
  time.hours = static_cast<std::int64_t>(std::floor(rest / 3600));
  rest -= static_cast<double>(time.hours) * 3600;
  time.minutes = static_cast<std::int64_t>(std::floor(rest / 60));
  time.seconds = rest - static_cast<double>(time.minutes) * 60;
  return time;
}

double recordMicros(const Project& project, const OutputTable& table) {
  return table.SyncTable ? scanMicros(project) : KGEN_COMMON::OutputIntervalMicros(project, table);
}

double secondsToFill(const Project& project, const OutputTable& table) {
  return recordMicros(project, table) / 1e6 * table.Buffer;
}

bool isAutoSized(const OutputTable& table) { return table.AutoSize || table.Buffer < 0; }

}  // namespace model

namespace KGEN_COMMON {

std::string TimeUnitName(int code, bool longName) {
  const model::TimeUnit& unit = model::unitOf(code);
  return std::string(longName ? unit.longName : unit.shortName);
}

double OutputIntervalMicros(const model::Project& project, const model::OutputTable& table) {
  if (model::isVoltFilterRate(table.OutInt)) return model::voltFilterMicros(project);
  if (model::isFftFilterRate(table.OutInt)) return model::fftFilterMicros(project);
  return model::microsFrom(static_cast<double>(model::intervalNumber(table.OutInt)),
                           table.OutIntUnits);
}

std::string timeToFillText(const model::Project& project) {
  std::string out;
  for (std::size_t t = 0; t < model::maxTables; ++t) {
    const model::OutputTable& table = project.tables[t];
    if (!table.TableOn) continue;
    out += text::concat("Table ", t + 1, " Time To Fill:\r\n");
    out += model::isAutoSized(table)
               ? "Buffer Size   = Auto Size"
               : model::fillText(model::durationFrom(model::secondsToFill(project, table)));
    out += "\r\n";
  }
  return out;
}

std::string ProcessingDescription(const model::Project& project, int code, std::size_t table) {
  const std::string& name = project.tables.at(table - 1).TableName;
  const bool known = code >= 0 && code < static_cast<int>(model::processingTexts.size());
  return text::concat(known ? model::processingTexts[static_cast<std::size_t>(code)] : "",
                      " each time table ", name, " outputs a record.");
}

}  // namespace KGEN_COMMON
