#include "model/conditions.h"
#include "readback/sections.h"

namespace readback {
namespace {

using model::PowerOption;
using text::concat;

constexpr double slowScan = 30e6;  // us

void expectStartTime(Expectation& out, const model::LoggerConfiguration& configuration) {
  const std::pair<int, std::string_view> parts[] = {
      {configuration.TimeOnYear, "TimeOnYear"}, {configuration.TimeOnMonth, "TimeOnMonth"},
      {configuration.TimeOnDay, "TimeOnDay"},   {configuration.TimeOnHour, "TimeOnHour"},
      {configuration.TimeOnMin, "TimeOnMin"},   {configuration.TimeOnSec, "TimeOnSec"}};
  int i = 0;
  for (const auto& [value, key] : parts)
    out.assign(configurationSetting(key), concat("StartTime(", ++i, ")"), value);
}

void expectBatterySaver(Expectation& out, const model::LoggerConfiguration& configuration) {
  const Setting setting = configurationSetting("BattTripVolts");
  const double trip = configuration.BattTripVolts;
  out.line(setting, "Battery(TripVolt,0)");
  out.line(setting, concat("If TripVolt < ", trip, " Then CountAvg = CountAvg + 1"));
  out.line(setting, concat("If TripVolt >= ", trip, " Then CountAvg = 0"));
  out.line(configurationSetting(configuration.LowBattRetry ? "RetryInterval" : "PowerOffTime"),
           concat("If CountAvg >= 5 Then ", batterySaverStatement(configuration)));
}

/// What the slow scan does. Battery saver and calibration count scans of 30 seconds.
class SlowScan {
 public:
  explicit SlowScan(const Outline& outline)
      : configuration_(outline.project.configuration),
        countsScans_(model::scanMicros(outline.project) <= slowScan) {
    if (on(PowerOption::conditionalOff)) {
      off_ = powerOffLine(configuration_);
      timedOff_ = timePowerOffLine(configuration_);
    }
    if (on(PowerOption::statusMonitor)) status_ = statusMonitorLines(configuration_);
    saves_ = countsScans_ && on(PowerOption::batterySaver);
    calibrates_ = countsScans_ && on(PowerOption::selfCalibration);
  }

  void expect(Expectation& out, int times) const {
    if (!saves_ && !calibrates_ && off_.empty() && timedOff_.empty() && status_.empty()) return;
    out.line(configurationSetting("MonitorPower"),
             concat("Scan(", countsScans_ ? "30,Sec" : "PERIOD,P_UNITS", ",0,", times, ")"));
    out.line(configurationSetting("MonitorPower"), "CountSlow = CountSlow + 1");
    if (saves_) expectBatterySaver(out, configuration_);
    if (!off_.empty()) out.line(configurationSetting("PowerOffMeasVar"), off_);
    if (!timedOff_.empty()) {
      out.line(configurationSetting("EnableTime"), "RealTime(StopTime())");
      out.line(configurationSetting("EnableTime"), timedOff_);
    }
    if (calibrates_)
      out.line(configurationSetting("MonitorPower"), "If CountSlow Mod 10 = 0 Then Calibrate()");
    for (const std::string& line : status_) out.line(configurationSetting("Status"), line);
    out.line(configurationSetting("MonitorPower"), "Next Scan");
  }

 private:
  [[nodiscard]] bool on(PowerOption option) const { return configuration_.monitors(option); }

  const model::LoggerConfiguration& configuration_;
  bool countsScans_;
  bool saves_ = false, calibrates_ = false;
  std::string off_, timedOff_;
  std::vector<std::string> status_;
};

}  // namespace

void expectLowPriority(Expectation& out, const Outline& outline) {
  const bool exchanges = !transmittingItems(outline).empty();
  out.line(everyProgram, "SlowSequence");
  expectStartTime(out, outline.project.configuration);
  expectCanExchangeSetup(out, outline);
  if (!exchanges) return SlowScan(outline).expect(out, 0);
  out.line(everyProgram, "Do");
  expectCanExchange(out, outline);
  SlowScan(outline).expect(out, 1);
  out.line(everyProgram, "Loop");
}

}  // namespace readback
