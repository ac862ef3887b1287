#include "generator/emitters.h"
#include "model/conditions.h"

namespace generator {
namespace {

using model::PowerOption;

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
    out.code("StartTime(", ++i, ") = ", value).comment(comment);
}

void emitBatterySaver(ProgramText& out, const model::LoggerConfiguration& configuration) {
  const double trip = configuration.BattTripVolts;
  out.code("      Battery(TripVolt,0)").comment("'Battery voltage for battery saver");
  out.code("      If TripVolt <", trip, " Then CountAvg = CountAvg + 1")
      .comment("'Below the trip level");
  out.code("      If TripVolt >=", trip, " Then CountAvg = 0").comment("'Above the trip level");
  out.code("      If CountAvg >=5 Then ", batterySaverStatement(configuration))
      .comment("'Battery saver");
}

void emitSlowScan(ProgramText& out, const ProgramPlan& plan, const SlowDuties& duties,
                  int scanCount) {
  const model::LoggerConfiguration& configuration = plan.project.configuration;
  const bool ownInterval = !scansSlowerThanDuties(plan);
  const double seconds = ownInterval ? 30 : model::scanMicros(plan.project) / 1e6;
  out.code("   Scan(", ownInterval ? "30,Sec" : "PERIOD,P_UNITS", ",0,", scanCount, ")")
      .comment("'Slow scan once every ", text::formatted(seconds, "0.00"), " Secs");
  out.code("      CountSlow = CountSlow + 1").comment("'Count the slow scans");
  if (duties.batterySaver) emitBatterySaver(out, configuration);
  if (duties.conditionalOff)
    out.code("      ", powerOffLine(configuration)).comment("'Conditional power off");
  if (duties.timeOff) {
    out.code("      RealTime(StopTime())").comment("'Current time");
    out.code("      ", timePowerOffLine(configuration)).comment("'Time power off");
  }
  if (duties.calibration)
    out.code("      If CountSlow Mod 10 = 0 Then Calibrate()").comment("'Self calibration");
  if (duties.status)
    for (const std::string& line : statusMonitorLines(configuration)) out.append(line);
  out.append("   Next Scan");
}

}  // namespace

void emitLowPriority(ProgramText& out, const ProgramPlan& plan) {
  out.sectionBanner(" LOW PRIORITY ");
  out.append("'BackgroundSequence");
  out.code("SlowSequence").comment("'Used for slow measurements");
  out.code("Dim CountSlow").comment("'Dimension CountSlow");
  out.code("Dim TripVolt").comment("'Dimension TripVolt");
  out.code("Dim CountAvg").comment("'Dimension CountAvg");
  out.code("Dim StopTime(9)").comment("'Dimension StopTime");
  out.code("Dim StartTime(6)").comment("'Dimension StartTime");
  emitStartTime(out, plan.project.configuration);
  emitCanExchangeDeclarations(out, plan);
  const SlowDuties duties = dutiesOf(plan);
  if (!exchangesCanFrames(plan)) {
    if (duties.any()) emitSlowScan(out, plan, duties, 0);
    return;
  }
  out.code("   Do").comment("'With CANBUS TxRx, we need multiple,repeating scans");
  emitCanExchange(out, plan);
  if (duties.any()) emitSlowScan(out, plan, duties, 1);
  out.append("   Loop");
}

}  // namespace generator
