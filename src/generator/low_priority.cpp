#include "generator/emitters.h"
#include "model/conditions.h"

namespace generator {
namespace {

using model::PowerOption;
using text::concat;

constexpr double slowScanMicros = 30e6;

/// Which of the slow duties the program has. Battery saver and calibration count slow scans of
/// 30 seconds, so a longer main scan has neither.
struct SlowDuties {
  bool batterySaver = false;
  bool conditionalOff = false;
  bool timeOff = false;
  bool calibration = false;
  bool status = false;
  [[nodiscard]] bool any() const {
    return batterySaver || conditionalOff || timeOff || calibration || status;
  }
};

bool scansSlowerThanDuties(const ProgramPlan& plan) {
  return model::scanMicros(plan.project) > slowScanMicros;
}

SlowDuties dutiesOf(const ProgramPlan& plan) {
  const model::LoggerConfiguration& configuration = plan.project.configuration;
  const bool counts = !scansSlowerThanDuties(plan);
  const bool switchesOff = configuration.monitors(PowerOption::conditionalOff);
  return {counts && configuration.monitors(PowerOption::batterySaver),
          switchesOff && !powerOffLine(configuration).empty(),
          switchesOff && !timePowerOffLine(configuration).empty(),
          counts && configuration.monitors(PowerOption::selfCalibration),
          configuration.monitors(PowerOption::statusMonitor) &&
              !statusMonitorLines(configuration).empty()};
}

void emitStartTime(ProgramText& out, const model::LoggerConfiguration& configuration) {
  const std::pair<int, std::string_view> parts[] = {
      {configuration.TimeOnYear, "'Year"},  {configuration.TimeOnMonth, "'Month"},
      {configuration.TimeOnDay, "'Day"},    {configuration.TimeOnHour, "'Hour"},
      {configuration.TimeOnMin, "'Minute"}, {configuration.TimeOnSec, "'Second"}};
  int i = 0;
  for (const auto& [value, comment] : parts)
    out.commented(concat("StartTime(", ++i, ") = ", value), comment);
}

void emitBatterySaver(ProgramText& out, const model::LoggerConfiguration& configuration) {
  const double trip = configuration.BattTripVolts;
  out.commented("      Battery(TripVolt,0)", "'Battery voltage for battery saver");
  out.commented(concat("      If TripVolt <", trip, " Then CountAvg = CountAvg + 1"),
                "'Below the trip level");
  out.commented(concat("      If TripVolt >=", trip, " Then CountAvg = 0"),
                "'Above the trip level");
  out.commented(concat("      If CountAvg >=5 Then ", batterySaverStatement(configuration)),
                "'Battery saver");
}

void emitSlowScan(ProgramText& out, const ProgramPlan& plan, const SlowDuties& duties,
                  int scanCount) {
  const model::LoggerConfiguration& configuration = plan.project.configuration;
  const bool ownInterval = !scansSlowerThanDuties(plan);
  const double seconds = ownInterval ? 30 : model::scanMicros(plan.project) / 1e6;
  out.commented(
      concat("   Scan(", ownInterval ? "30,Sec" : "PERIOD,P_UNITS", ",0,", scanCount, ")"),
      concat("'Slow scan once every ", text::formatted(seconds, "0.00"), " Secs"));
  out.commented("      CountSlow = CountSlow + 1", "'Count the slow scans");
  if (duties.batterySaver) emitBatterySaver(out, configuration);
  if (duties.conditionalOff)
    out.commented(concat("      ", powerOffLine(configuration)), "'Conditional power off");
  if (duties.timeOff) {
    out.commented("      RealTime(StopTime())", "'Current time");
    out.commented(concat("      ", timePowerOffLine(configuration)), "'Time power off");
  }
  if (duties.calibration)
    out.commented("      If CountSlow Mod 10 = 0 Then Calibrate()", "'Self calibration");
  if (duties.status)
    for (const std::string& line : statusMonitorLines(configuration)) out.append(line);
  out.append("   Next Scan");
}

}  // namespace

void emitLowPriority(ProgramText& out, const ProgramPlan& plan) {
  out.sectionBanner(" LOW PRIORITY ");
  out.append("'BackgroundSequence");
  out.commented("SlowSequence", "'Used for slow measurements");
  out.commented("Dim CountSlow", "'Dimension CountSlow");
  out.commented("Dim TripVolt", "'Dimension TripVolt");
  out.commented("Dim CountAvg", "'Dimension CountAvg");
  out.commented("Dim StopTime(9)", "'Dimension StopTime");
  out.commented("Dim StartTime(6)", "'Dimension StartTime");
  emitStartTime(out, plan.project.configuration);
  emitCanExchangeDeclarations(out, plan);
  const SlowDuties duties = dutiesOf(plan);
  if (!exchangesCanFrames(plan)) {
    if (duties.any()) emitSlowScan(out, plan, duties, 0);
    return;
  }
  out.commented("   Do", "'With CANBUS TxRx, we need multiple,repeating scans");
  emitCanExchange(out, plan);
  if (duties.any()) emitSlowScan(out, plan, duties, 1);
  out.append("   Loop");
}

}  // namespace generator
