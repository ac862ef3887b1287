#include <gtest/gtest.h>

#include <functional>

#include "support/demo_project.h"
#include "support/recorded_ports.h"
#include "verify/expression_variables.h"
#include "verify/flag_checks.h"
#include "verify/pick_variables.h"
#include "verify/timing_checks.h"
#include "verify/window_checks.h"
#include "verify/zero_burst.h"

namespace {

using model::BlockKind;
using model::Condition;
using model::ModuleKindIndex;
using model::Project;
using ports::Answer;
using ports::Buttons;
using ports::Icon;
using ports::Message;
using support::addBlock;
using Names = std::vector<std::string>;

Project loggerProject() {
  Project project =
      support::projectWith(2, {ModuleKindIndex::analog7121, ModuleKindIndex::excitation7131,
                               ModuleKindIndex::filter7125, ModuleKindIndex::isolation7128});
  addBlock(project, BlockKind::voltage, 1, 3).elements[1].AliasName = "Press";
  project.tables[0].TableOn = true;
  return project;
}

Condition on(const char* variable) {
  Condition condition;
  condition.MeasVar = variable;
  return condition;
}

/// Runs one test body on a context whose boxes are answered alike.
struct Bench {
  explicit Bench(Answer answer) : messages([answer](const Message&) { return answer; }) {}
  support::RecordedMessages messages;
  support::RecordedFaults faults;
  verify::CheckContext context{messages, faults};
};

TEST(CheckMeasTimeVsInterval, NamesBothTimes) {
  Project project = loggerProject();
  project.configuration.MonitorPower = {};
  project.block(BlockKind::voltage, 1).Integration = 20000;
  project.block(BlockKind::voltage, 1).SettleTime = 0;
  project.block(BlockKind::voltage, 1).ReverseMes = false;
  project.block(BlockKind::voltage, 1).OpenSensDetect = false;
  project.scan.ExecutionTime = 60;
  project.scan.ExecTimeUnits = 1;
  EXPECT_EQ(verify::questionAboutMeasurementTime(project), std::nullopt);  // takes 60 ms
  project.scan.ExecutionTime = 59;
  EXPECT_EQ(verify::questionAboutMeasurementTime(project),
            (Message{.title = "INCORRECT PROGRAM TIMING",
                     .text = "Estimated measurement time is greater than the execution "
                             "interval.\r\n\r\n"
                             "Execution interval time  = 59,000 uSecs\r\n"
                             "Estimated total measurement time = 60,000 uSecs\r\n\r\n"
                             "THIS SHOULD BE CORRECTED BEFORE SAVING.\r\n\r\n"
                             "Do you wish to continue?",
                     .icon = Icon::question,
                     .buttons = Buttons::yesNo,
                     .defaultButton = Answer::no,
                     .beep = true}));
}

TEST(CheckSlowSequence, BeginsAboveThirtySeconds) {
  struct Case {
    double seconds;
    bool saver, calibration;
    const char* list;
  };
  for (const Case& one :
       {Case{30, true, true, nullptr},
        Case{30.000001, true, true, "Battery Saver and Self Calibration"},
        Case{31, true, false, "Battery Saver"}, Case{31, false, true, " Self Calibration"},
        Case{31, false, false, nullptr}}) {
    Project project = loggerProject();
    project.scan.ExecutionTime = one.seconds;
    project.configuration.MonitorPower = {false, false, false, one.saver, one.calibration, false};
    const auto message = verify::questionAboutSlowSequence(project);
    ASSERT_EQ(message.has_value(), one.list != nullptr) << one.seconds;
    if (message) {
      EXPECT_EQ(*message, (Message{.title = "SLOW SEQUENCE NOT POSSIBLE",
                                   .text = std::string("Because the scan interval is greater than "
                                                       "30 seconds, ") +
                                           one.list + " will be disabled.",
                                   .icon = Icon::critical,
                                   .buttons = Buttons::okCancel,
                                   .beep = true}));
    }
  }
}

TEST(CheckTableIntervals, ListsWorkableIntervals) {
  Project project = loggerProject();
  project.tables[2].TableOn = true;
  project.tables[2].OutInt = "1500";
  project.tables[2].OutIntUnits = 1;
  const std::string text =
      "TABLE 3 interval (1,500,000 uSecs) is not evenly divisible by the program scan\r\n"
      "rate (1,000,000 uSecs). New records will be added to the table\r\n"
      "only when the table interval is an exact multiple of the scan rate.\r\n\r\n"
      "WORKABLE TABLE INTERVALS ARE:\r\n"
      "1,000,000 uSecs   (1,000.000 mSecs)\r\n"
      "2,000,000 uSecs   (2,000.000 mSecs)\r\n"
      "3,000,000 uSecs   (3,000.000 mSecs)\r\n"
      "etc.\r\n";
  const auto before = verify::complaintsAboutTableIntervals(project);
  ASSERT_EQ(before.size(), 1U);
  EXPECT_EQ(before[0].title, "TIMING PROBLEM");
  EXPECT_EQ(before[0].text, text + "THIS MUST BE CORRECTED BEFORE EXITING");
  const auto window =
      verify::complaintsAboutTableIntervals(project, verify::IntervalCheck::executionIntervals);
  EXPECT_EQ(window[0].title, "TIMING PROBLEM 2");
  EXPECT_EQ(window[0].text, text + "*** MUST CHECK SCAN INTERVALS FOR OUTPUT TABLES ***");
  EXPECT_TRUE(verify::complaintsAboutTableIntervals(project, verify::IntervalCheck::off).empty());
}

TEST(CheckTableIntervals, AsksOnlyTablesThatFollowTheirInterval) {
  struct Case {
    const char* name;
    std::function<void(model::OutputTable&)> change;
    std::size_t complaints;
  };
  const Case cases[] = {
      {"half a scan", [](auto& t) { t.OutInt = "500"; }, 1},
      {"whole scans", [](auto& t) { t.OutInt = "7000"; }, 0},
      {"zero counts as one", [](auto& t) { t.OutInt = "0"; }, 1},
      {"off", [](auto& t) { t.TableOn = false; }, 0},
      {"each scan", [](auto& t) { t.SyncTable = true; }, 0},
      {"at the filter's rate", [](auto& t) { t.OutInt = "vfilt"; }, 0},
      {"started", [](auto& t) { t.TrigTable = 1, t.conditions.trigger(0, 1) = on("Press"); }, 0},
      {"start disabled",
       [](auto& t) {
         t.TrigTable = 1, t.conditions.trigger(0, 1) = on("Press"), t.DisableTrigger = true;
       },
       1},
      {"only stopped", [](auto& t) { t.TrigTabStop = 1, t.conditions.trigger(1, 1) = on("Press"); },
       1},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    Project project = loggerProject();
    project.tables[0].OutInt = "1500";
    project.tables[0].OutIntUnits = 1;
    one.change(project.tables[0]);
    EXPECT_EQ(verify::complaintsAboutTableIntervals(project).size(), one.complaints);
    const auto window =
        verify::complaintsAboutTableIntervals(project, verify::IntervalCheck::executionIntervals);
    if (!window.empty()) {
      const bool isShort = project.tables[0].OutInt != "1500";
      EXPECT_EQ(window[0].title, isShort ? "TIMING PROBLEM 1" : "TIMING PROBLEM 2");
    }
  }
}

TEST(ExpressionVariables, AreTheNamesThatAreNoWordsOfTheLanguage) {
  const std::pair<const char*, Names> cases[] = {
      {"Sqr(Press)*2 + 1.5E-3 - &HFF", {"Press"}},
      {"Press > 3 And Not Flag( 2 ) Or PRESS", {"Press", "Flag(2)", "PRESS"}},
      {"IIF(Data.Record(1, 0) >= Data.TableSize(1,1),True,False)",
       {"Data.Record(1,0)", "Data.TableSize(1,1)"}},
      {"VBlk1(i+1) + VBlk1(2)", {"VBlk1()", "i", "VBlk1(2)"}},
      {"x1 = \"y z\" 'w", {"x1"}},
      {"a(", {"a()"}},
      {"\"open", {}},
      {"", {}},
  };
  for (const auto& [expression, names] : cases)
    EXPECT_EQ(verify::variablesIn(expression), names) << expression;
  EXPECT_EQ(verify::flagsIn("flag(1) And Flag(8) Or Flag(9)"), 0x81U);
}

TEST(VerifyPickVars, NamesWhatIsMissingWhereItIsUsed) {
  struct Case {
    std::function<void(Project&)> spoil;
    const char* title;
    const char* text;
  };
  const auto withField = [](const char* expression) {
    return [expression](Project& p) {
      p.calculated.CalcFieldCount = 1;
      p.calculated.fields.resize(1);
      p.calculated.fields[0].CalcName = "Sum";
      p.calculated.fields[0].CalcExpress = expression;
    };
  };
  const Case cases[] = {
      {withField("Press + Gone(1)"), "INVALID CALCULATED FIELD",
       "The variable(s) used in the following expressions are no longer available:\r\n"
       "Gone(1) - used in expression Press + Gone(1) (Sum)\r\n"
       "GO CHECK \"CALCULATED FIELDS\" NOW!"},
      {withField(""), "INVALID CALCULATED FIELD",
       "The variable(s) used in the following expressions are no longer available:\r\n"
       "## MISSING ## - used in expression  (Sum)\r\n"
       "GO CHECK \"CALCULATED FIELDS\" NOW!"},
      {[](Project& p) {
         model::MeasurementBlock& block = p.block(BlockKind::voltage, 1);
         block.elements[0].Table[0] = 128;
         block.processing[0].NumDims = 2;
         block.processing[0].LevelMeasName = "press";
       },
       "INVALID LEVEL CROSSING 2ND DIMENSION",
       "The following variables, configured as Level Crossing Histogram 2nd dimension variables, "
       "\r\nare no longer available for use:\r\n'press', Voltage Block 1, Table 1"},
      {[](Project& p) {
         p.configuration.EnablePowerOff = true;
         p.configuration.PowerOffMeasVar = "VBlk1(4)";
       },
       "INVALID POWER OFF TRIGGER",
       "Variable VBlk1(4) used in Power Off trigger is no longer available."},
      {[](Project& p) {
         p.scan.ScanMode = 1;
         p.scan.BurstTrigger = 1;
       },
       "INVALID BURST TRIGGER", "Variable ## MISSING ## for Burst Trigger is no longer available."},
      {[](Project& p) {
         p.tables[0].TrigTable = 1;
         p.tables[0].TrigTabStop = -1;
         p.tables[0].conditions.trigger(0, 1) = on("Press");
         p.tables[0].conditions.trigger(1, 1) = on("Gone");
       },
       " INVALID TRIGGERED TABLE\"",
       "STOP Trigger ( Table 1: Gone ) for table 1 is no longer available."},
      {[](Project& p) {
         p.ports.groups[0].ports[2].Include = true;
         p.ports.groups[0].ports[2].conditions[3] = on("Gone");
         p.flags[4].FlagInclude = true;
         p.flags[4].states[0].Expression = "Lost > 1";
         p.excitation.channels[1].Include = true;
         p.excitation.channels[1].DynamicStatic = 1;
         p.excitation.channels[1].conditions[1] = on("VBlk7(1)");
       },
       "INVALID TRIGGER CONDITION",
       "START Trigger ( Slot 5 I/O Port 3: Gone ) for State 4 is no longer available.\r\n"
       "START Trigger ( Flag 5: Lost ) for State 1 is no longer available.\r\n"
       "STOP Trigger ( Slot 5 CAO Port 2: VBlk7(1) ) for State 2 is no longer available."},
      {[](Project& p) {
         p.tables[0].WriteIf = 2;
         p.tables[0].conditions.writeIf(1) = on("Press");
         p.tables[0].conditions.writeIf(2) = on("Gone");
         p.tables[0].conditions.writeIf(2).Value = 2.5;
       },
       "INVALID WRITE IF TRIGGER",
       "The following variables, used in conditional CallTable statements, are no longer "
       "available:\r\nVariable Gone,  Table #1 (Gone > 2.5)"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.title);
    Project project = loggerProject();
    one.spoil(project);
    Bench bench(Answer::ok);
    const std::size_t count =
        KGEN_COMMON::VerifyPickVars(project, bench.context, verify::PickVarsMode::silent);
    EXPECT_TRUE(bench.messages.shown.empty());
    EXPECT_GE(count, 1U);
    EXPECT_EQ(KGEN_COMMON::VerifyPickVars(project, bench.context, verify::PickVarsMode::beforeSave),
              count);
    ASSERT_EQ(bench.messages.titles(), Names{one.title});
    EXPECT_EQ(bench.messages.shown[0].text, one.text);
  }
}

TEST(CheckDuplicateFlags, FindsEveryReuse) {
  Project project = loggerProject();
  project.configuration.StatusMonCount = 2;
  project.configuration.Status = {{"BattVolt", " <", "11", " flag(2)=True"},
                                  {"BattVolt", " <", "10", "Flag(5) = False"},
                                  {"beyond", " <", "1", "Flag(7) = True"}};
  EXPECT_EQ(verify::questionAboutDuplicateFlags(project), std::nullopt);
  const auto useIn = [](Condition& condition) {
    condition = on("Flag");
    condition.VarIdx = 2;
  };
  project.ports.groups[0].ports[0].Include = true;
  useIn(project.ports.groups[0].ports[0].conditions[0]);
  project.excitation.channels[0].Include = true;
  project.excitation.channels[0].DynamicStatic = 1;
  useIn(project.excitation.channels[0].conditions[1]);
  project.flags[1].FlagInclude = true;
  project.scan.ScanMode = 1;
  project.scan.BurstTrigger = 2;
  project.scan.TriggerMeasVar = "Flag(2)";
  for (const std::size_t t : {std::size_t{0}, std::size_t{4}}) {  // table 5 is off
    model::OutputTable& table = project.tables[t];
    table.FlagTable = table.FlagMark = table.FlagFull = 2;
    table.TrigTabStop = table.WriteIf = 1;
    useIn(table.conditions.trigger(1, 1));
    table.conditions.writeIf(1).Expression = "Press > 1 Or Flag(2)";
  }
  project.configuration.EnablePowerOff = true;
  project.configuration.PowerOffMeasVar = "Flag(2)";
  project.scan.FlagScan = 5;
  EXPECT_EQ(verify::questionAboutDuplicateFlags(project),
            (Message{.title = "DUPLICATE FLAGS",
                     .text = "The following Flag(s) in Status Monitor were also found in:\r\n"
                             "Flag(2) in Ports Setup\r\n"
                             "Flag(2) in CAO Trigger Setup\r\n"
                             "Flag(2) in Flags Setup\r\n"
                             "Flag(2) in Scan Burst\r\n"
                             "Flag(2) Table 1 Control\r\n"
                             "Flag(2) Table 1 File Mark\r\n"
                             "Flag(2) Table 1 Full\r\n"
                             "Flag(2) Table 1 Trigger\r\n"
                             "Flag(2) Table 1 Write If\r\n"
                             "Flag(2) in Power Off Trigger\r\n"
                             "Flag(5) in Scan Trigger\r\n"
                             "PRESS \"YES\" TO LEAVE AS IS OR \"NO\" TO EDIT.",
                     .icon = Icon::exclamation,
                     .buttons = Buttons::yesNo,
                     .defaultButton = Answer::yes}));
}

Project zeroProject() {
  Project project =
      support::projectWith(2, {ModuleKindIndex::analog7121, ModuleKindIndex::highVoltage7127,
                               ModuleKindIndex::filter7125, ModuleKindIndex::filter7125,
                               ModuleKindIndex::isolation7128});
  for (const BlockKind kind : {BlockKind::voltage, BlockKind::highVoltage, BlockKind::isolated,
                               BlockKind::bridge, BlockKind::tcmux, BlockKind::filter})
    addBlock(project, kind, 2, 1).ZeroFlag = 6;
  project.filterSlots[0].BlockCount = project.filterSlots[1].BlockCount = 1;
  project.block(BlockKind::bridge, 2).CalOnSite = project.block(BlockKind::filter, 2).CalOnSite =
      true;
  project.scan.ScanMode = 1;
  return project;
}

TEST(VerifyZeroBurst, ListsAndClearsAllAtOnce) {
  Project project = zeroProject();
  EXPECT_EQ(verify::questionAboutZeroFlags(project)->text,
            "The Program Generator will not allow zero subroutines in conjunction with\r\n"
            "burst mode, as this operation may not achieve the results desired.\r\n"
            "The following blocks have been configured with zero flags:\r\n"
            "Voltage Block 2  Flag 6\r\n"
            "Filter Slot 7, Block 2  Flag 6\r\n"
            "Hi Volts Block 2  Flag 6\r\n"
            "Isolated/7128 Slot 8, Block 2  Flag 6\r\n"
            "Bridge   Block 2  Flag 6\r\n"
            "TCMUX Block 2  Flag 6\r\n"
            "Proceeding will disable all flags now.  Continue?");
  EXPECT_EQ(verify::questionAboutCalOnSite(project)->text,
            "Cal-On-Site previously selected may not give the results desired\r\n"
            "with burst mode. These are selected:\r\n"
            "Filter Block 2\r\n"
            "Bridge   Block 2\r\n"
            "WOULD YOU LIKE THEM DISABLED NOW?");
  Bench bench(Answer::ok);  // and no to the second
  bool problem = true;
  KGEN_COMMON::VerifyZeroBurst(project, bench.context, problem);
  EXPECT_FALSE(problem);
  EXPECT_EQ(bench.messages.shown.size(), 2U);
  EXPECT_EQ(verify::questionAboutZeroFlags(project), std::nullopt);
  EXPECT_NE(verify::questionAboutCalOnSite(project), std::nullopt);
  Bench yes(Answer::yes);
  KGEN_COMMON::VerifyZeroBurst(project, yes.context, problem);
  EXPECT_EQ(verify::questionAboutCalOnSite(project), std::nullopt);
  project = zeroProject();
  project.scan.ScanMode = 0;
  KGEN_COMMON::VerifyZeroBurst(project, yes.context, problem);
  EXPECT_EQ(yes.messages.shown.size(), 1U);
}

TEST(CheckScanRateTables, LeavesSamplesWhenAgreed) {
  Project project = loggerProject();
  project.tables[1].TableOn = true;
  for (const std::size_t t : {std::size_t{0}, std::size_t{1}, std::size_t{2}}) {
    project.tables[t].OutInt = t == 1 ? "2" : "1";
    project.tables[t].OutIntUnits = 2;
    project.block(BlockKind::voltage, 1).elements[0].Table[t] = 0b1001;
    project.block(BlockKind::voltage, 1).elements[2].Table[t] = 0b1000;
  }
  const Project before = project;
  bool problem = false;
  Bench no(Answer::no);
  KGEN_COMMON::CheckScanRateTables(project, no.context, problem);
  EXPECT_TRUE(problem);
  EXPECT_TRUE(project == before);
  ASSERT_EQ(no.messages.shown.size(), 1U);
  EXPECT_EQ(no.messages.shown[0].title, "OUTPUT TABLES");
  EXPECT_EQ(no.messages.shown[0].text,
            "The following tables have their intervals equal to the system scan interval.  \r\n"
            "They also have previously been configured for output processing instructions \r\n"
            "that assume that multiple scans occur between output table writes.\r\n"
            "(For example, Averages, Min/Max, Histograms, etc.)\r\n"
            "If you proceed, these output processing configurations will be removed\r\n"
            "in the associated measurement blocks, and replaced with the Sample\r\n"
            "output instruction.  Proceed?\r\n"
            "Table #1 - '" +
                project.tables[0].TableName + "'");
  Bench yes(Answer::yes);
  KGEN_COMMON::CheckScanRateTables(project, yes.context, problem);
  EXPECT_FALSE(problem);
  Project expected = before;
  expected.block(BlockKind::voltage, 1).elements[0].Table[0] = 1;
  expected.block(BlockKind::voltage, 1).elements[2].Table[0] = 1;
  EXPECT_TRUE(project == expected);
  KGEN_COMMON::CheckScanRateTables(project, yes.context, problem);
  EXPECT_EQ(yes.messages.shown.size(), 1U);
}

TEST(CheckDefaultScaling, AsksOnlyAboutOwnScalingThatDiffers) {
  Project project = loggerProject();
  model::MeasurementBlock& block = project.block(BlockKind::voltage, 1);
  Bench bench(Answer::yes);
  block.elements[0].AliasMult = 3;  // not its own: the block's counts
  EXPECT_EQ(KGEN_COMMON::CheckDefaultScaling(block, bench.context), Answer::no);
  EXPECT_TRUE(bench.messages.shown.empty());
  block.elements[0].AliasExcept = true;
  EXPECT_EQ(KGEN_COMMON::CheckDefaultScaling(block, bench.context), Answer::yes);
  EXPECT_EQ(bench.messages.shown.at(0).text,
            "Individual multipliers and offsets are not all the same as the defaults.\r\n\r\n"
            "WOULD YOU LIKE TO EXAMINE SCALARS NOW?");
  EXPECT_EQ(bench.messages.shown.at(0).title, "DEFAULT SCALING CHANGED");
}

}  // namespace
