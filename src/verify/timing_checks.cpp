#include "verify/timing_checks.h"

#include <cmath>

#include "model/channel_plan.h"
#include "model/conditions.h"
#include "model/time_units.h"
#include "text/numbers.h"
#include "timing/measurement_times.h"
#include "verify/message_lines.h"

namespace verify {
namespace {

using model::PowerOption;
using ports::Answer;
using ports::Buttons;
using ports::Icon;
using ports::Message;
using text::concat;

bool isWholeMultiple(double interval, double scan) {
  constexpr double tolerance = 1e-9;
  const double quotient = interval / scan;
  const double whole = std::round(quotient);
  return whole >= 1 && std::abs(quotient - whole) < tolerance * quotient;
}

std::string_view titleFor(IntervalCheck caller, double interval, double scan) {
  if (caller != IntervalCheck::executionIntervals) return "TIMING PROBLEM";
  return interval < scan ? "TIMING PROBLEM 1" : "TIMING PROBLEM 2";
}

std::string_view lastLineFor(IntervalCheck caller) {
  return caller == IntervalCheck::executionIntervals
             ? "*** MUST CHECK SCAN INTERVALS FOR OUTPUT TABLES ***"
             : "THIS MUST BE CORRECTED BEFORE EXITING";
}

std::string workableLine(int scans, double scan) {
  constexpr double microsInMilli = 1000;
  return concat(groupedNumber(scans * scan), " uSecs   (",
                text::formatted(scans * scan / microsInMilli, "#,##0.000"), " mSecs)");
}

Message intervalComplaint(IntervalCheck caller, std::size_t table, double interval, double scan) {
  return {
      .title = std::string(titleFor(caller, interval, scan)),
      .text = joinedLines(
          {concat("TABLE ", table, " interval (", groupedNumber(interval),
                  " uSecs) is not evenly divisible by the program scan"),
           concat("rate (", groupedNumber(scan), " uSecs). New records will be added to the table"),
           "only when the table interval is an exact multiple of the scan rate.", "",
           "WORKABLE TABLE INTERVALS ARE:", workableLine(1, scan), workableLine(2, scan),
           workableLine(3, scan), "etc.", lastLineFor(caller)})};
}

}  // namespace

std::optional<Message> questionAboutMeasurementTime(const model::Project& project) {
  const double scan = model::scanMicros(project);
  const double estimate = timing::measurementTimes(project, model::channelPlan(project)).total;
  if (scan >= estimate) return std::nullopt;
  return Message{
      .title = "INCORRECT PROGRAM TIMING",
      .text = joinedLines(
          {"Estimated measurement time is greater than the execution interval.", "",
           concat("Execution interval time  = ", groupedNumber(scan), " uSecs"),
           concat("Estimated total measurement time = ", groupedNumber(estimate), " uSecs"), "",
           "THIS SHOULD BE CORRECTED BEFORE SAVING.", "", "Do you wish to continue?"}),
      .icon = Icon::question,
      .buttons = Buttons::yesNo,
      .defaultButton = Answer::no,
      .beep = true};
}

std::optional<Message> questionAboutSlowSequence(const model::Project& project) {
  constexpr double longestScan = 30e6;  // the slow sequence counts scans of 30 s
  const bool saver = project.configuration.monitors(PowerOption::batterySaver);
  const bool calibration = project.configuration.monitors(PowerOption::selfCalibration);
  if (model::scanMicros(project) <= longestScan || (!saver && !calibration)) return std::nullopt;
  return Message{.title = "SLOW SEQUENCE NOT POSSIBLE",
                 .text = concat("Because the scan interval is greater than 30 seconds, ",
                                saver ? "Battery Saver" : "", saver && calibration ? " and" : "",
                                calibration ? " Self Calibration" : "", " will be disabled."),
                 .icon = Icon::critical,
                 .buttons = Buttons::okCancel,
                 .beep = true};
}

bool isIntervalDriven(const model::OutputTable& table) {
  return table.TableOn && !table.SyncTable && text::isNumber(table.OutInt) &&
         model::triggerText(table, 0).empty();
}

std::vector<Message> complaintsAboutTableIntervals(const model::Project& project,
                                                   IntervalCheck caller) {
  std::vector<Message> complaints;
  if (caller == IntervalCheck::off) return complaints;
  const double scan = model::scanMicros(project);
  for (std::size_t t = 0; t < model::maxTables; ++t) {
    const double interval = KGEN_COMMON::OutputIntervalMicros(project, project.tables[t]);
    if (isIntervalDriven(project.tables[t]) && !isWholeMultiple(interval, scan))
      complaints.push_back(intervalComplaint(caller, t + 1, interval, scan));
  }
  return complaints;
}

}  // namespace verify

namespace KGEN_COMMON {

using ports::Answer;

void CheckMeasTimeVsInterval(const model::Project& project, const verify::CheckContext& context,
                             bool& problem) {
  problem = !context.isOff(verify::timingCheckOff) &&
            answerTo(context, verify::questionAboutMeasurementTime(project)) == Answer::no;
}

void CheckSlowSequence(const model::Project& project, const verify::CheckContext& context,
                       bool& problem) {
  problem = !context.isOff(verify::slowSequenceOff) &&
            answerTo(context, verify::questionAboutSlowSequence(project)) == Answer::cancel;
}

bool CheckTableIntervals(const model::Project& project, const verify::CheckContext& context,
                         verify::IntervalCheck caller) {
  if (context.isOff(verify::tableIntervalCheckOff)) return true;
  const auto complaints = verify::complaintsAboutTableIntervals(project, caller);
  for (const ports::Message& complaint : complaints) context.messages.show(complaint);
  return complaints.empty();
}

}  // namespace KGEN_COMMON
