#include "model/conditions.h"

#include <gtest/gtest.h>

namespace model {
namespace {

Condition condition(std::string variable, int code, int index, double value, std::string other = "",
                    std::string expression = "") {
  return {std::move(variable),
          static_cast<std::int16_t>(code),
          static_cast<std::int16_t>(index),
          value,
          std::move(other),
          std::move(expression)};
}

TEST(Conditions, ReadAsTheProgramLanguage) {
  const std::pair<Condition, std::string_view> cases[] = {
      {condition("VBlk1", 2, 3, 100), "VBlk1(3) > 100"},
      {condition("VBlk1(3)", 0, 3, -0.5), "VBlk1(3) < -0.5"},
      {condition("Press", 5, 0, 1, "Limit"), "Press <> Limit"},
      {condition("Press", 1, 0, 1, "", " A > B "), "A > B"},
      {condition("Flag", 4, 3, -1), "Flag(3) = True"},
      {condition("Flag(8)", 4, 0, 0), "Flag(8) = False"},
      {condition("Flag", 4, 9, -1), ""},  // the logger has eight flags
      {condition("FlagMode", 4, 0, 1), "FlagMode = 1"},
      {condition("Press", -1, 0, 1), ""},
      {condition("Press", 6, 0, 1), ""},
      {condition("", 2, 0, 1), ""},
  };
  for (const auto& [input, text] : cases) EXPECT_EQ(conditionText(input), text);
  EXPECT_EQ(operatorText(6), "??");
}

OutputTable tableWithConditions() {
  OutputTable table;
  table.TableName = "Event";
  table.TrigTable = 3;
  table.conditions.trigger(0, 1) = condition("A", 2, 0, 90.1);
  table.conditions.trigger(0, 2) = condition("", 2, 0, 0);  // incomplete
  table.conditions.trigger(0, 3) = condition("Flag", 4, 5, -1);
  table.conditions.logic(0, 1) = "Or";
  return table;
}

TEST(Triggers, JoinCompleteConditionsByTheirLogic) {
  OutputTable table = tableWithConditions();
  EXPECT_EQ(triggerText(table, 0), "A > 90.1 Or Flag(5) = True");
  table.conditions.logic(0, 1) = "And";
  table.SingleTrigger = true;
  EXPECT_EQ(triggerText(table, 0), "A > 90.1 And Flag(5) = True And Event.Record(1,0) < 1");
  table.conditions.logic(0, 1) = "Or";  // And binds before Or
  EXPECT_EQ(triggerText(table, 0), "(A > 90.1 Or Flag(5) = True) And Event.Record(1,0) < 1");
  EXPECT_EQ(triggerText(table, 1), "");
  table.conditions.trigger(1, 1) = condition("B", 0, 0, 1.0 / 3);
  table.TrigTabStop = -1;  // as many as start conditions
  EXPECT_EQ(triggerText(table, 1), "B < 0.3333333");
  table.DisableTrigger = true;
  EXPECT_FALSE(hasActiveTrigger(table));
}

TEST(WriteIf, FollowsTheGrouping) {
  OutputTable table;
  table.WriteIf = 3;
  table.conditions.writeIf(1) = condition("A", 2, 0, 1);
  table.conditions.writeIf(2) = condition("B", 0, 0, 2);
  table.conditions.writeIf(3) = condition("", 2, 0, 0, "", "Flag(3)=True Or X>=2");
  const std::string spaced = "Flag(3) =True Or X>=2";
  const std::pair<std::string_view, std::string> cases[] = {
      {"", "A > 1 And B < 2 And " + spaced},
      {"1 And (2 Or 3)", "A > 1 And (B < 2 Or (" + spaced + "))"},
      {"not 2 or 1", "Not B < 2 Or A > 1"},
      {"1 And 4", "A > 1 And B < 2 And " + spaced},  // there is no fourth
  };
  for (const auto& [grouping, text] : cases) {
    table.GroupWriteIf = grouping;
    EXPECT_EQ(writeIfText(table), text);
  }
  for (const std::string_view bad : {"1 2", "(1", "1)", "1 And", "0", "1 Xor 2", "1 And11"})
    EXPECT_FALSE(isWriteIfGrouping(bad, 2)) << bad;
  EXPECT_TRUE(isWriteIfGrouping("Not(1)And 2", 2));
  EXPECT_FALSE(isWriteIfGrouping(std::string(100'000, '('), 2));
  table.DisableWriteIf = true;
  EXPECT_FALSE(hasActiveWriteIf(table));
}

TEST(WriteIf, TakesARemovedConditionOutOfTheGrouping) {
  const std::tuple<std::string, int, std::string> cases[] = {
      {"1 And (2 Or 3)", 3, "1 And 2"},
      {"1 And (2 Or 3)", 1, "(1 Or 2)"},
      {"1 And (2 Or 3)", 2, "1 And 2"},
      {"3 Or 1", 2, "2 Or 1"},
      {"1 Or 2 And 3", 2, "1 Or 2"},
      {"1 And 2 Or 3", 2, "1 Or 2"},
      {"1 Or 2 And 3", 3, "1 Or 2"},
      {"Not (2 Or (1)) And 3", 2, "Not (1) And 2"},
      {"1 Or Not (Not 2 And 2)", 2, "1"},
      {"2", 2, ""},
      {"1 Xor 3", 1, ""},
      {"", 1, ""}};
  for (const auto& [grouping, condition, left] : cases) {
    SCOPED_TRACE(grouping + " without " + std::to_string(condition));
    OutputTable table;
    table.WriteIf = 3;
    for (int c = 1; c <= 3; ++c) table.conditions.writeIf(c).MeasVar = std::to_string(c);
    table.GroupWriteIf = grouping;
    EXPECT_EQ(removeWriteIf(table, condition), !left.empty() || grouping.empty());
    EXPECT_EQ(table.GroupWriteIf, left);
    EXPECT_EQ(table.WriteIf, 2);
    EXPECT_EQ(table.conditions.writeIf(2).MeasVar, condition == 3 ? "2" : "3");
    EXPECT_EQ(table.conditions.writeIf(3), Condition());
  }
}

TEST(WriteIf, SaysWhyAGroupingCannotBeUsed) {
  OutputTable table;
  table.WriteIf = 2;
  table.conditions.writeIf(1) = condition("A", 2, 0, 1);
  const std::pair<std::string_view, bool> cases[] = {
      {"", true}, {"1", true}, {"1 And 2", false}, {"1 And 3", false}, {"(1", false}};
  for (const auto& [grouping, usable] : cases) {  // the second condition is not complete
    table.GroupWriteIf = grouping;
    EXPECT_EQ(!complaintAboutGrouping(table), usable) << grouping;
  }
}

TEST(Triggers, AreToldInTheProjectFile) {
  OutputTable table = tableWithConditions();
  storeDataEvent(table);
  EXPECT_EQ(table.DataEventStart, "A > 90.1 Or Flag(5) = True");
  EXPECT_EQ(table.DataEventStop, "False");
  EXPECT_EQ(table.DataEventCode, 1);
  table.AftTriggerScans = 10;
  storeDataEvent(table);
  EXPECT_EQ(table.DataEventCode, 2);
  table.TrigTable = 0;  // a text that stays would come back as a condition
  storeDataEvent(table);
  EXPECT_EQ(table.DataEventStart + table.DataEventStop, "");
  EXPECT_EQ(table.DataEventCode, 0);
}

TEST(BurstTrigger, IsAConditionOrAFlag) {
  ScanSetup scan;
  scan.TriggerMeasVar = "VBlk1(1)";
  scan.TriggerValue = 5;
  EXPECT_EQ(burstTriggerText(scan), "");
  scan.BurstTrigger = 1;
  EXPECT_EQ(burstTriggerText(scan), "VBlk1(1) > 5");
  scan.TrigExpression = "A > B";
  EXPECT_EQ(burstTriggerText(scan), "A > B");
  scan = ScanSetup{};
  scan.BurstTrigger = 2;
  scan.TriggerMeasVar = "Flag(2)";
  EXPECT_EQ(burstTriggerText(scan), "Flag(2) = True");
}

TEST(PowerOff, StatementsHaveOneThen) {
  LoggerConfiguration c;
  c.PowerOffMeasVar = "BattVolt";
  c.PowerOffCompare = 0;
  c.PowerOffValue = 11.5;
  c.PowerOffPOTime = 10;
  c.PowerOnMins = 3;
  EXPECT_EQ(powerOffLine(c), "");
  c.EnablePowerOff = true;
  EXPECT_EQ(powerOffLine(c), "If BattVolt <11.5 Then PowerOff (0,10,Min)");
  c.EnableOnTime = true;
  EXPECT_EQ(powerOffLine(c), "If BattVolt <11.5 Then PowerOff (StartTime(),10,Min)");
  c.EnableOnTime = false;
  c.RemainPOOff = true;
  EXPECT_EQ(powerOffLine(c), "If BattVolt <11.5 Then PowerOff (0,0,0)");

  EXPECT_EQ(batterySaverStatement(c), "PowerOff (0,1,Hr)");
  c.BattRetryMins = true;
  EXPECT_EQ(batterySaverStatement(c), "PowerOff (0,1,Min)");
  c.LowBattRetry = false;
  c.PowerOffTime = 2;
  c.PowerOffMins = 5;
  EXPECT_EQ(batterySaverStatement(c), "PowerOff (0,2,Day)");
  c.RemainOff = true;
  EXPECT_EQ(batterySaverStatement(c), "PowerOff (0,0,0)");
  c.RemainOff = false;

  c.EnableTime = true;
  EXPECT_EQ(timePowerOffLine(c), "");
  c.TimeOffHourShow = c.TimeOffWkDayShow = true;
  c.TimeOffHour = 18;
  c.TimeOffWkDay = 1;
  EXPECT_EQ(timePowerOffLine(c), "If StopTime(4) = 18 And StopTime(8) = 1 Then PowerOff (0,2,Day)");
  c.EnableOnTime = true;
  EXPECT_EQ(timePowerOffLine(c),
            "If StopTime(4) = 18 And StopTime(8) = 1 Then PowerOff (StartTime(),0,0)");
}

TEST(StatusMonitor, WritesThreeLinesForEachCompleteLine) {
  LoggerConfiguration c;
  c.StatusMonCount = 3;
  c.Status = {{"BattVolt", " <", "11.8", "Flag(4) = True"},
              {"", " <", "1", "Flag(1) = True"},
              {"A", " <", "1", "Flag(9) = True"}};
  EXPECT_EQ(statusMonitorLines(c), (std::vector<std::string>{" If BattVolt <11.8 Then",
                                                             "       Flag(4) = True", "  End If"}));
}

TEST(FlagLines, SetTheFlagAndItsOpposite) {
  Project project;
  FlagControl& flag = project.flags[1];
  flag.FlagOn = false;
  flag.states[1] = condition("B", 0, 0, 2);
  EXPECT_TRUE(flagLines(project, 2).empty());
  flag.FlagInclude = true;
  const auto codes = [&] {
    std::string text;
    for (const CommentedLine& line : flagLines(project, 2)) text += line.code + "\n";
    return text;
  };
  EXPECT_EQ(codes(), "If B < 2 Then\nFlag(2) = True\nEnd If\n");
  flag.states[0] = condition("A", 2, 0, 1);
  EXPECT_EQ(codes(), "If A > 1 Then\nFlag(2) = False\nElseIf B < 2 Then\nFlag(2) = True\nEnd If\n");
  EXPECT_EQ(flagLines(project, 2)[1].comment, "'Flag(2) if test condition is true");
}

}  // namespace
}  // namespace model
