#include "verify/save_checks.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <stdexcept>

#include "support/demo_project.h"
#include "support/random_project.h"
#include "support/recorded_ports.h"
#include "verify/duplicate_names.h"
#include "verify/pick_variables.h"

namespace {

using model::BlockKind;
using model::ModuleKindIndex;
using model::Project;
using ports::Answer;
using ports::Buttons;
using ports::Icon;
using ports::Message;
using support::addBlock;
using Titles = std::vector<std::string>;

/// A saved project of the K700X with which nothing is wrong.
Project soundProject() {
  Project project = support::projectWith(
      2, {ModuleKindIndex::analog7121, ModuleKindIndex::analog7121, ModuleKindIndex::excitation7131,
          ModuleKindIndex::filter7125, ModuleKindIndex::isolation7128});
  addBlock(project, BlockKind::voltage, 2, 2).MeasType = "SE";
  project.set(BlockKind::voltage).blocks[0].Reps = 2;
  project.set(BlockKind::voltage).blocks[0].MeasType = "SE";
  fitLists(project);
  project.tables[0].TableOn = true;
  return project;
}

struct Checked {
  Project project;
  bool doNotSave = false, needsUpgrade = false;
  std::vector<Message> shown;
  Titles titles;
  Titles faults;
};

Checked checked(Project project, support::RecordedMessages::Rule rule = {}, unsigned mask = 0) {
  Checked result;
  support::RecordedMessages messages(std::move(rule));
  support::RecordedFaults faults;
  KGEN_COMMON::VerifyBeforeSave(project, {messages, faults, mask}, result.doNotSave,
                                result.needsUpgrade);
  result.project = std::move(project);
  result.shown = messages.shown;
  result.titles = messages.titles();
  result.faults = faults.sources;
  return result;
}

support::RecordedMessages::Rule always(Answer answer) {
  return [answer](const Message&) { return answer; };
}

// What spoils a project.

void duplicate(Project& p) {
  p.block(BlockKind::voltage, 1).elements[0].AliasName = "Press";
  p.block(BlockKind::voltage, 2).elements[1].AliasName = "PRESS";
}
void keyword(Project& p) { p.block(BlockKind::voltage, 1).elements[1].AliasName = "scan"; }
void shortScan(Project& p) {
  p.scan.ExecutionTime = 10;  // 100 us
  p.scan.ExecTimeUnits = 0;
}
void longScan(Project& p) {
  p.scan.ExecutionTime = 1;
  p.scan.ExecTimeUnits = 3;
}
void unevenInterval(Project& p) {
  p.tables[1].TableOn = true;
  p.tables[1].OutInt = "1500";
  p.tables[1].OutIntUnits = 1;
}
void missingVariable(Project& p) {
  p.configuration.EnablePowerOff = true;
  p.configuration.PowerOffMeasVar = "Gone";
}
void sharedFlag(Project& p) {
  p.configuration.StatusMonCount = 1;
  p.configuration.Status = {{"BattVolt", " <", "11", "Flag(3) = True"}};
  p.scan.FlagScan = 3;
}
void zeroInBurst(Project& p) {
  p.scan.ScanMode = 1;
  p.block(BlockKind::voltage, 2).ZeroFlag = 4;
}
void calibrationInBurst(Project& p) {
  p.scan.ScanMode = 1;
  p.block(BlockKind::voltage, 1).CalOnSite = true;
}
void oldConditions(Project& p) {
  p.configuration.Version = "5.3";
  p.tables[6].WriteIf = 1;
}

TEST(VerifyBeforeSave, HearsOfEachProblemAloneAndOfTheAnswer) {
  struct Case {
    const char* name;
    void (*spoil)(Project&);
    Titles titles;
    Answer answer;
    bool doNotSave, needsUpgrade = false;
  };
  const Case cases[] = {
      {"nothing", [](Project&) {}, {}, Answer::no, false},
      {"duplicate", duplicate, {"DUPLICATION FOUND"}, Answer::ok, true},
      {"keyword", keyword, {"ILLEGAL KEYWORD USAGE"}, Answer::ok, true},
      {"short scan", shortScan, {"INCORRECT PROGRAM TIMING"}, Answer::no, true},
      {"short scan, accepted", shortScan, {"INCORRECT PROGRAM TIMING"}, Answer::yes, false},
      {"long scan", longScan, {"SLOW SEQUENCE NOT POSSIBLE"}, Answer::cancel, true},
      {"long scan, accepted", longScan, {"SLOW SEQUENCE NOT POSSIBLE"}, Answer::ok, false},
      {"interval", unevenInterval, {"TIMING PROBLEM"}, Answer::ok, true},
      {"variable", missingVariable, {"INVALID POWER OFF TRIGGER"}, Answer::ok, false},
      {"flags", sharedFlag, {"DUPLICATE FLAGS"}, Answer::no, true},
      {"flags, left", sharedFlag, {"DUPLICATE FLAGS"}, Answer::yes, false},
      {"zero", zeroInBurst, {"ZERO SUBROUTINE WARNING"}, Answer::cancel, true},
      {"zero, cleared", zeroInBurst, {"ZERO SUBROUTINE WARNING"}, Answer::ok, false},
      {"calibration", calibrationInBurst, {"ZERO SUBROUTINE WARNING"}, Answer::cancel, true},
      {"calibration, left", calibrationInBurst, {"ZERO SUBROUTINE WARNING"}, Answer::no, false},
      {"old conditions", oldConditions, {}, Answer::ok, false, true},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    Project project = soundProject();
    one.spoil(project);
    const Checked result = checked(project, always(one.answer));
    EXPECT_EQ(result.titles, one.titles);
    EXPECT_EQ(result.doNotSave, one.doNotSave);
    EXPECT_EQ(result.needsUpgrade, one.needsUpgrade);
    EXPECT_EQ(result.faults, Titles{});
  }
}

TEST(VerifyBeforeSave, ShowsAllOfTheFirstChecksAndTheOthersOnlyWhenTheyPass) {
  Project project = soundProject();
  for (const auto spoil :
       {missingVariable, sharedFlag, zeroInBurst, calibrationInBurst, oldConditions})
    spoil(project);
  const Titles further = {"INVALID POWER OFF TRIGGER", "DUPLICATE FLAGS", "ZERO SUBROUTINE WARNING",
                          "ZERO SUBROUTINE WARNING"};
  const Checked passing = checked(project);
  EXPECT_EQ(passing.titles, further);
  EXPECT_TRUE(passing.needsUpgrade);

  const auto keepFlags = [](const Message& message) {
    return message.title == "DUPLICATE FLAGS" ? Answer::no : message.defaultButton;
  };
  EXPECT_EQ(checked(project, keepFlags).titles, Titles(further.begin(), further.begin() + 2));

  for (const auto spoil : {duplicate, keyword, longScan, unevenInterval}) spoil(project);
  const Checked failing = checked(project);
  EXPECT_EQ(failing.titles, (Titles{"DUPLICATION FOUND", "ILLEGAL KEYWORD USAGE",
                                    "SLOW SEQUENCE NOT POSSIBLE", "TIMING PROBLEM"}));
  EXPECT_TRUE(failing.doNotSave && failing.needsUpgrade);
}

TEST(VerifyBeforeSave, LeavesOutWhatTheUserSwitchedOff) {
  struct Case {
    void (*spoil)(Project&);
    unsigned bit;
  };
  for (const auto& [spoil, bit] :
       {Case{shortScan, 1}, Case{unevenInterval, 2}, Case{longScan, 16}, Case{sharedFlag, 32}}) {
    Project project = soundProject();
    spoil(project);
    EXPECT_FALSE(checked(project, {}, ~bit).titles.empty()) << bit;
    EXPECT_EQ(checked(project, always(Answer::no), bit).titles, Titles{}) << bit;
  }
}

TEST(VerifyBeforeSave, ReportsFaultsAndRefusesTheSave) {
  struct Case {
    void (*spoil)(Project&);
    const char* source;
    bool doNotSave;
  };
  for (const auto& [spoil, source, doNotSave] :
       {Case{longScan, "KGEN_COMMON.VerifyBeforeSave", true},
        Case{missingVariable, "KGEN_COMMON.VerifyPickVar_PowerOff", false},
        Case{zeroInBurst, "KGEN_COMMON.VerifyZeroBurst", true}}) {
    Project project = soundProject();
    spoil(project);
    const Checked result =
        checked(project, [](const Message&) -> Answer { throw std::runtime_error("no screen"); });
    EXPECT_EQ(result.faults, Titles{source});
    EXPECT_EQ(result.doNotSave, doNotSave) << source;
    EXPECT_TRUE(result.project == project);
  }
}

void forEachBlock(Project& project, const std::function<void(model::MeasurementBlock&)>& visit) {
  for (model::BlockSet& set : project.blockSets)
    for (model::MeasurementBlock& block : set.blocks) visit(block);
}

/// Random projects are valid, so names and variables are never complained about, and nothing but
/// zero flags and cal-on-site ever changes, and these only when their box was agreed to.
TEST(VerifyBeforeSave, ChangesARandomProjectOnlyAsAgreed) {
  std::mt19937 random(20260704);
  int asked = 0;
  for (int i = 0; i < 150; ++i) {
    const Project project = support::randomProject(random, {.k700x = i % 3 != 0});
    const auto answer = static_cast<Answer>(i % 4);
    bool zeroAgreed = false;
    bool calibrationAgreed = false;
    Checked result = checked(project, [&](const Message& message) {
      zeroAgreed |= message.buttons == Buttons::okCancel && answer == Answer::ok &&
                    message.title == "ZERO SUBROUTINE WARNING";
      calibrationAgreed |= message.buttons == Buttons::yesNoCancel && answer == Answer::yes;
      return answer;
    });
    for (const std::string& title : result.titles)
      EXPECT_TRUE(title != "DUPLICATION FOUND" && title != "ILLEGAL KEYWORD USAGE") << title;
    support::RecordedMessages messages;
    support::RecordedFaults faults;
    EXPECT_EQ(
        KGEN_COMMON::VerifyPickVars(project, {messages, faults}, verify::PickVarsMode::afterWindow),
        0U)
        << messages.shown.at(0).text;
    asked += zeroAgreed + calibrationAgreed;
    Project expected = project;
    if (zeroAgreed) {
      EXPECT_FALSE(result.project == project);
      forEachBlock(expected, [](auto& block) { block.ZeroFlag = 0; });
      forEachBlock(result.project, [](auto& block) { block.ZeroFlag = 0; });
    }
    if (calibrationAgreed) {
      forEachBlock(expected, [](auto& block) { block.CalOnSite = false; });
      forEachBlock(result.project, [](auto& block) { block.CalOnSite = false; });
    }
    EXPECT_TRUE(result.project == expected);
  }
  EXPECT_GT(asked, 2);
}

TEST(CheckDuplicateNames, TellsEveryUse) {
  Project project =
      support::projectWith(2, {ModuleKindIndex::analog7121, ModuleKindIndex::highVoltage7127,
                               ModuleKindIndex::isolation7128, ModuleKindIndex::counter7141,
                               ModuleKindIndex::filter7125});
  project.configuration.CanBusQty = 1;
  for (const BlockKind kind : model::allBlockKinds) addBlock(project, kind, 1, 1);
  project.filterSlots[0].BlockCount = 1;
  project.can.CanCount = 1;
  project.calculated.CalcFieldCount = 2;
  fitLists(project);
  project.tables[1].TableName = "One";
  for (const BlockKind kind : model::allBlockKinds)
    project.block(kind, 1).elements[0].AliasName = "one";
  project.can.items[0].values[0].AliasName = "ONE";
  project.calculated.fields[1].CalcName = "One";
  EXPECT_EQ(verify::complaintAboutDuplicates(project),
            (Message{.title = "DUPLICATION FOUND",
                     .text = "The following duplicate names were found:\r\n"
                             "\"One\" is used as [ Table2 name ] and [ TBlk(1) alias name ].\r\n"
                             "\"One\" is used as [ Table2 name ] and [ VBlk(1) alias name ].\r\n"
                             "\"One\" is used as [ Table2 name ] and [ HBlk(1) alias name ].\r\n"
                             "\"One\" is used as [ Table2 name ] and [ IBlk(1) alias name ].\r\n"
                             "\"One\" is used as [ Table2 name ] and [ BBlk(1) alias name ].\r\n"
                             "\"One\" is used as [ Table2 name ] and [ PBlk(1) alias name ].\r\n"
                             "\"One\" is used as [ Table2 name ] and [ ABlk(1) alias name ].\r\n"
                             "\"One\" is used as [ Table2 name ] and [ FVBlk(1) alias name ].\r\n"
                             "\"One\" is used as [ Table2 name ] and [ CANBus Item 1 ].\r\n"
                             "\"One\" is used as [ Table2 name ] and [ CalcField 2 ].\r\n"
                             "\r\n"
                             "THIS MUST BE CORRECTED BEFORE SAVING.",
                     .icon = Icon::critical}));
}

TEST(CheckDuplicateNames, ListsKeywordsOnceAndAllOfALongList) {
  Project project = soundProject();
  keyword(project);
  project.block(BlockKind::voltage, 2).elements[0].AliasName = "SCAN";
  project.block(BlockKind::voltage, 2).elements[1].AliasName = "qv40";
  EXPECT_EQ(verify::complaintAboutKeywords(project)->text,
            "The following key words were used:\r\n"
            "\"scan\" is used as Scan.\r\n"
            "\"SCAN\" is used as Scan.\r\n"
            "\"qv40\" is used as QV40.\r\n"
            "THIS MUST BE CORRECTED BEFORE SAVING.");
  addBlock(project, BlockKind::voltage, 2, 24);
  for (model::Element& element : project.block(BlockKind::voltage, 2).elements)
    element.AliasName = "Same";
  const std::string text = verify::complaintAboutDuplicates(project)->text;
  EXPECT_EQ(std::count(text.begin(), text.end(), '['), 2 * 23) << text;
}

TEST(CheckTriggerUpgrade, ReadsTheFirstDigitOfTheVersion) {
  Project project = soundProject();
  oldConditions(project);
  for (const auto& [version, upgrade] :
       {std::pair{"5.9", true}, {"6.0", false}, {"", true}, {"V7", false}, {"none", true}}) {
    project.configuration.Version = version;
    EXPECT_EQ(KGEN_COMMON::CheckTriggerUpgrade(project), upgrade) << version;
  }
  project.tables[6].WriteIf = 0;
  project.configuration.Version = "1.2";
  EXPECT_FALSE(KGEN_COMMON::CheckTriggerUpgrade(project));
  project.tables[0].TrigTable = 1;
  EXPECT_TRUE(KGEN_COMMON::CheckTriggerUpgrade(project));
}

TEST(CheckFloatingGround, ListsDifferentialBlocks) {
  Project project = soundProject();
  EXPECT_EQ(verify::warningAboutFloatingGround(project), std::nullopt);
  addBlock(project, BlockKind::thermocouple, 1, 1);
  addBlock(project, BlockKind::tcmux, 2, 8);
  project.block(BlockKind::tcmux, 1).Reps = 8;
  project.block(BlockKind::tcmux, 1).TCMUXVolts = true;
  project.block(BlockKind::voltage, 2).MeasType = "Diff";
  EXPECT_EQ(verify::warningAboutFloatingGround(project),
            (Message{.title = "FLOATING GROUND WARNING",
                     .text = "The following measurement blocks are NOT automatically\r\n"
                             "referenced to ground in the data logger:\r\n"
                             "Diff Thermocouple block 1.\r\n"
                             "TCMUX Thermocouple block 2.\r\n"
                             "Diff Voltage block 2.\r\n"
                             "If any differential measurements are floating (not referenced\r\n"
                             "to ground) then the low terminal on the 7121/22 module may need to "
                             "be\r\n"
                             "connected to the adjacent ground terminal.\r\n"
                             "SEE WIRING DIAGRAM"}));
  support::RecordedMessages messages;
  support::RecordedFaults faults;
  KGEN_COMMON::CheckFloatingGround(project, {messages, faults, verify::floatingGroundOff});
  EXPECT_TRUE(messages.shown.empty());
}

TEST(SaveQuestions, ComposeTheirTexts) {
  const std::string upgrade =
      "Saving this Generator Project will irreversibly upgrade\r\n"
      "the Trigger and WriteIf conditions so that the project\r\n"
      "can no longer be used in Arvela 5.3.1 or earlier.";
  const std::string rest =
      " recommends that the Generator file should NOT be saved\r\n"
      "due to possible issues in the following areas : \r\n\r\n"
      "Duplicate Names\r\nBad Timing\r\nBad Slow Sequence\r\nInterval Problems\r\n"
      "Bad Status Flags\r\nZero/Burst Problems\r\n\r\nSave it anyway?";
  EXPECT_EQ(verify::questionSaveAnyway({}).text, "The generator" + rest);
  EXPECT_EQ(
      verify::questionSaveAnyway({.dunmoreHost = true, .upgradeToo = true, .sending = true}).text,
      "Program will not be downloaded.\r\n" + upgrade + "\r\nDunmore" + rest);
  EXPECT_EQ(verify::questionUpgrade().text,
            upgrade + "\r\n\r\nDo you want to save the project anyway ?");
}

}  // namespace
