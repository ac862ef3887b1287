#include "model/power_rules.h"

#include <gtest/gtest.h>

namespace model {
namespace {

const InstantField& fieldNamed(std::string_view name) {
  for (const InstantField& field : instantFields())
    if (field.name == name) return field;
  throw std::out_of_range(std::string(name));
}

TEST(PowerOffTimes, LeaveOutWhatDoesNotTakePart) {
  LoggerConfiguration c;
  EXPECT_EQ(offInstantText(c), unsetInstant);
  EXPECT_EQ(onInstantText(c), unsetInstant);
  c.TimeOffHour = 6;
  c.TimeOffHourShow = true;
  EXPECT_EQ(offInstantText(c), "---- --- -- 06:--:--");
  c.TimeOffWkDay = 1;
  c.TimeOffWkDayShow = true;
  EXPECT_EQ(offInstantText(c), "---- --- -- Sun 06:--:--");
  c.TimeOffYear = 2027;
  c.TimeOffMonth = 12;
  c.TimeOffDay = 5;
  c.TimeOffYearShow = c.TimeOffMonthShow = c.TimeOffDayShow = c.TimeOffWkDayShow = true;
  c.TimeOffMinShow = c.TimeOffSecShow = true;
  EXPECT_EQ(offInstantText(c), "2027 Dec 05 Sun 06:00:00");
  c.TimeOffMonth = 13;  // as a file may have it
  EXPECT_EQ(offInstantText(c), "2027 --- 05 Sun 06:00:00");
  c.EnableOnTime = true;
  EXPECT_EQ(onInstantText(c), "---- --- -- 00:00:00");
  EXPECT_EQ(showHelp(c, fieldNamed("Year")), "Press to turn off Year.");
  EXPECT_EQ(showHelp({}, fieldNamed("Week Day")), "Press to turn on Week Day.");
}

TEST(PowerOffTimes, EndDaysWithTheirMonth) {
  LoggerConfiguration c;
  c.TimeOffMonthShow = c.TimeOffDayShow = true;
  c.TimeOffDay = 31;
  c.TimeOffMonth = 2;
  EXPECT_EQ(boundsOfOff(c, fieldNamed("Day")).high, 29);
  c.TimeOffYearShow = true;
  for (const auto& [year, days] : {std::pair{2027, 28}, {2028, 29}}) {
    c.TimeOffYear = static_cast<std::int16_t>(year);
    EXPECT_EQ(boundsOfOff(c, fieldNamed("Day")).high, days);
  }
  c.EnableOnTime = true;
  c.TimeOffWkDayShow = true;
  fillInstants(c, {2026, 7, 4, 13, 5, 9});
  EXPECT_EQ(c.TimeOffDay, 29);
  EXPECT_EQ(c.TimeOffWkDay, 1);
  EXPECT_EQ(onInstantText(c), "2026 Jul 04 00:00:00");
  EXPECT_EQ(c.TimeOffHour, 0);
}

TEST(Durations, NameTheirUnit) {
  EXPECT_EQ(durationHelp(2), "Enter a power off duration of from 0 to 999 seconds.");
  EXPECT_EQ(durationHelp(5), "Enter a power off duration of from 0 to 999 days.");
  EXPECT_EQ(retryHelp(true), "Enter a retry interval of from 0 to 99 minutes.");
  EXPECT_EQ(intervalSummary(0, 4), "Interval = None");
  EXPECT_EQ(intervalSummary(1, 4), "Interval = 1 Hours");
  EXPECT_EQ(intervalSummary(2.5, 3), "Interval = 2.5 Minutes");
  for (const auto& [typed, kept] : {std::pair{9.0, 10.5}, {12.34, 12.3}, {99.0, 14.0}})
    EXPECT_EQ(settledTripVolts(typed), kept);
}

TEST(StatusMonitor, TakesCellsAndEndsWithItsLastText) {
  using enum StatusColumn;
  LoggerConfiguration c;
  EXPECT_FALSE(storeStatusCell(c, 2, field, " BattVolt "));
  EXPECT_FALSE(storeStatusCell(c, 2, comparison, "<="));
  EXPECT_FALSE(storeStatusCell(c, 2, assignment, "flag(8)=FALSE"));
  EXPECT_EQ(c.StatusMonCount, 3);
  EXPECT_EQ(c.Status[2], (StatusLine{"BattVolt", " <=", "", "Flag(8) = False"}));
  EXPECT_TRUE(remarkOnStatus(c)->starts_with("Line 3 "));
  for (const auto& [column, wrong] : {std::pair{comparison, "=="},
                                      {comparison, "="},
                                      {assignment, "Flag(9) = True"},
                                      {assignment, "Flag(1)"},
                                      {value, "1 'volt"},
                                      {field, "\"x\""}}) {
    SCOPED_TRACE(wrong);
    const LoggerConfiguration before = c;
    EXPECT_TRUE(storeStatusCell(c, 2, column, wrong));
    EXPECT_EQ(c, before);
  }
  for (const StatusColumn column : {field, comparison, assignment})
    EXPECT_FALSE(storeStatusCell(c, 2, column, ""));
  EXPECT_EQ(c, LoggerConfiguration());
  EXPECT_EQ(statusCell(c, 7, value), "");
}

TEST(StatusMonitor, HasTwentyLines) {
  LoggerConfiguration c;
  const StatusLine line = {"BattVolt", "<", "11.8", "Flag(4) = True"};
  EXPECT_TRUE(addStatusLine(c, {"BattVolt", " <", "", "Flag(4) = True"}));
  for (int i = 0; i < 20; ++i) EXPECT_FALSE(addStatusLine(c, line));
  EXPECT_EQ(c.Status.back(), (StatusLine{"BattVolt", " <", "11.8", "Flag(4) = True"}));
  EXPECT_TRUE(addStatusLine(c, line));
  removeStatusLine(c, 3);
  removeStatusLine(c, 99);
  EXPECT_EQ(c.StatusMonCount, 19);
}

}  // namespace
}  // namespace model
