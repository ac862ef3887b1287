#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <tuple>

#include "model/channel_plan.h"
#include "model/names.h"
#include "model/pick_list.h"
#include "model/quantity_rules.h"
#include "model/table_rules.h"

namespace model {
namespace {

using enum ModuleKindIndex;
using ports::Message;

std::string titleOf(const std::optional<Message>& message) { return message ? message->title : ""; }

Project newProject(int cpu = 2) {
  Project project;
  KGEN_COMMON::SetAllDefaults(project);
  project.configuration.quantity(ModuleKindIndex::cpu) = static_cast<std::int16_t>(cpu);
  return project;
}

MeasurementBlock& addBlock(Project& project, BlockKind kind, int reps) {
  BlockSet& set = project.set(kind);
  MeasurementBlock& block = set.blocks[static_cast<std::size_t>(set.BlockCount++)];
  block.Reps = static_cast<std::int16_t>(reps);
  fitLists(project);
  return block;
}

TEST(Quantities, EndAtTwelveUserModules) {
  LoggerConfiguration configuration;
  configuration.quantity(analog7121) = 8;
  configuration.quantity(filter7125) = 3;
  constexpr int filterBox = static_cast<int>(filter7125);
  EXPECT_FALSE(complaintAboutTotal(configuration, 0, filterBox, 4));
  EXPECT_FALSE(complaintAboutTotal(configuration, 1, filterBox, 3));
  EXPECT_FALSE(complaintAboutTotal(configuration, 5, futureBox, 1));
  EXPECT_EQ(titleOf(complaintAboutTotal(configuration, 1, filterBox, 4)), "TOO MANY");
  const auto message = complaintAboutTotal(configuration, 0, futureBox, 2);
  ASSERT_TRUE(message);
  EXPECT_EQ(message->text, "Total module count is limited to 12.");
  EXPECT_TRUE(message->beep);
  EXPECT_FALSE(warningAboutFilterPower(filter7125, 3));
  EXPECT_TRUE(warningAboutFilterPower(filter7125, 4));
  EXPECT_FALSE(warningAboutFilterPower(analog7121, 9));
}

TEST(Quantities, TakeOnlyDigitsAndKnownCpus) {
  EXPECT_TRUE(isQuantityKey(cpuBox, '2'));
  EXPECT_FALSE(isQuantityKey(cpuBox, '3'));
  EXPECT_TRUE(isQuantityKey(4, '0'));
  EXPECT_FALSE(isQuantityKey(4, 'x'));
  EXPECT_TRUE(complaintAboutCpu(3));
  EXPECT_FALSE(complaintAboutCpu(2));
  EXPECT_EQ(titleOf(questionAboutCpu(1)), "MEASUREMENTS DISABLED");
  EXPECT_FALSE(questionAboutCpu(2));
}

TEST(Quantities, WarnWhenMeasurementsNeedMore) {
  Project project = newProject();
  project.configuration.quantity(analog7121) = 3;
  project.configuration.quantity(excitation7131) = 3;
  project.configuration.quantity(counter7141) = 2;
  fitLists(project);
  addBlock(project, BlockKind::voltage, 15);  // one channel more than a module has
  EXPECT_FALSE(warningAboutReduction(project, analog7121, 2));
  const auto warning = warningAboutReduction(project, analog7121, 1);
  ASSERT_TRUE(warning);
  EXPECT_TRUE(warning->text.ends_with("\r\nARE YOU SURE YOU WANT TO PROCEED?"));
  EXPECT_FALSE(warningAboutReduction(project, excitation7131, 0));
  project.excitation.channels[4].Include = true;  // the first output of the second module
  EXPECT_EQ(modulesNeeded(project, excitation7131), 2);
  project.ports.groups[2].ports[7].Include = true;
  EXPECT_EQ(modulesNeeded(project, excitation7131), 3);
  EXPECT_FALSE(warningAboutReduction(project, counter7141, 1));
  project.ports.groups[5].ports[0].Include = true;  // lower half of the second 7141/42
  EXPECT_TRUE(warningAboutReduction(project, counter7141, 1));
}

TEST(Tcmux, IsRefusedForTheFirstThingThatIsMissing) {
  Project project = newProject();
  EXPECT_FALSE(complaintAboutTcmux(project, 0));
  EXPECT_EQ(titleOf(complaintAboutTcmux(project, 1)), "NO 7131 MODULES");
  project.configuration.quantity(excitation7131) = 1;
  project.configuration.quantity(analog7121) = 1;
  fitLists(project);
  EXPECT_FALSE(complaintAboutTcmux(project, 7));
  EXPECT_EQ(titleOf(complaintAboutTcmux(project, 8)), "NOT ENOUGH DIGITAL CONTROL CHANNELS");
  project.ports.groups[0].ports[0].Include = true;
  EXPECT_FALSE(complaintAboutTcmux(project, 6));
  EXPECT_EQ(titleOf(complaintAboutTcmux(project, 7)), "NOT ENOUGH DIGITAL CONTROL CHANNELS");
  addBlock(project, BlockKind::voltage, 3);
  EXPECT_EQ(titleOf(complaintAboutTcmux(project, 6)), "NOT ENOUGH DIFFERENTIAL CHANNELS");
  EXPECT_FALSE(complaintAboutTcmux(project, 5));
  addBlock(project, BlockKind::tcmux, 80);  // those that are there already count once
  EXPECT_FALSE(complaintAboutTcmux(project, 5));
  project.set(BlockKind::tcmux).BlockCount = 0;
  addBlock(project, BlockKind::bridge, 8).Style = 2;
  project.configuration.quantity(analog7121) = 2;
  EXPECT_EQ(titleOf(complaintAboutTcmux(project, 1)), "NOT ENOUGH EXCITATION CHANNELS");
}

TEST(ConfigurationDone, RemovesWhatNoLongerFits) {
  Project project = newProject();
  project.configuration.quantity(analog7121) = 2;
  project.configuration.quantity(excitation7131) = 1;
  project.configuration.quantity(counter7141) = 1;
  project.configuration.quantity(filter7125) = 2;
  project.configuration.TCMUXQty = 1;
  project.configuration.SizeCardA = 64;
  project.configuration.TcConfigOpts[0] = 1;
  project.scan.ScanMode = 1;
  project.tables[3].TableLocation = 3;
  addBlock(project, BlockKind::thermocouple, 10);
  addBlock(project, BlockKind::voltage, 4);
  addBlock(project, BlockKind::voltage, 4);
  addBlock(project, BlockKind::bridge, 2);
  addBlock(project, BlockKind::tcmux, 16);
  project.filterSlots[0] = {.BlockCount = 1, .FFTType = 1, .FFTModule = true};
  project.filterSlots[1].BlockCount = 2;
  for (int i = 0; i < 3; ++i) addBlock(project, BlockKind::filter, 1);
  project.ports.groups[1].ports[2].Include = true;  // of the 7141/42

  LoggerConfiguration edited = project.configuration;
  edited.quantity(analog7121) = 1;
  edited.quantity(excitation7131) = 2;
  edited.quantity(filter7125) = 1;
  edited.SizeCardA = 0;
  EXPECT_TRUE(questionAboutTcmuxBlocks(project, edited));
  EXPECT_TRUE(warningAboutBurstCard(project, edited));
  EXPECT_TRUE(questionAboutCard(project.configuration.SizeCardA, edited.SizeCardA));
  EXPECT_FALSE(warningAboutSpectra(project, edited));
  applyConfiguration(project, edited);
  EXPECT_EQ(project.set(BlockKind::tcmux).BlockCount, 0);
  EXPECT_EQ(project.set(BlockKind::bridge).BlockCount, 0);
  EXPECT_EQ(project.set(BlockKind::voltage).BlockCount, 1);
  EXPECT_EQ(project.set(BlockKind::thermocouple).BlockCount, 1);
  EXPECT_EQ(project.filterSlots[1].BlockCount, 0);
  EXPECT_EQ(project.filterSlots[0].BlockCount, 1);
  EXPECT_TRUE(project.ports.groups[2].ports[2].Include);  // still of the 7141/42
  EXPECT_EQ(project.tables[3].TableLocation, 1);
  EXPECT_EQ(project.scan.ScanMode, 0);
  EXPECT_TRUE(channelPlan(project).problems.empty());

  edited.quantity(ModuleKindIndex::cpu) = 1;
  EXPECT_TRUE(warningAboutSpectra(project, edited));
  applyConfiguration(project, edited);
  EXPECT_EQ(project.filterSlots[0].FFTType, 0);
  EXPECT_FALSE(warningAboutSpectra(project, edited));
  const Project before = project;
  applyConfiguration(project, project.configuration);
  EXPECT_EQ(project, before);  // nothing edited, nothing changed
}

/// A project can have more than its modules hold; only a lower count of theirs removes it.
TEST(ConfigurationDone, KeepsWhatHadNoRoomBefore) {
  Project project = newProject();
  for (const BlockKind kind : {BlockKind::voltage, BlockKind::bridge, BlockKind::tcmux,
                               BlockKind::highVoltage, BlockKind::isolated, BlockKind::pulse})
    addBlock(project, kind, 8);
  project.excitation.channels.resize(2);
  project.excitation.channels[1].Include = true;
  project.ports.groups.resize(3);
  project.ports.groups[1].ports[0].Include = true;
  for (const auto& edit : std::initializer_list<std::function<void(LoggerConfiguration&)>>{
           [](LoggerConfiguration& edited) { edited.TcConfigOpts[2] = 50; },
           [](LoggerConfiguration& edited) { edited.quantity(filter7125) = 1; },
           [](LoggerConfiguration& edited) { edited.quantity(ModuleKindIndex::cpu) = 1; }}) {
    LoggerConfiguration edited = project.configuration;
    edit(edited);
    Project done = project;
    EXPECT_FALSE(questionAboutTcmuxBlocks(project, edited));
    applyConfiguration(done, edited);
    done.configuration = project.configuration;
    EXPECT_EQ(done, project);
  }
  LoggerConfiguration more = project.configuration;
  more.quantity(excitation7131) = 2;
  applyConfiguration(project, more);
  EXPECT_TRUE(project.ports.groups[1].ports[0].Include);  // now on the second 7131
  LoggerConfiguration fewer = more;
  fewer.quantity(excitation7131) = 0;
  EXPECT_TRUE(questionAboutTcmuxBlocks(project, fewer));
  applyConfiguration(project, fewer);
  EXPECT_EQ(project.set(BlockKind::tcmux).BlockCount, 0);
  EXPECT_EQ(project.set(BlockKind::bridge).BlockCount, 0);
  EXPECT_EQ(project.set(BlockKind::voltage).BlockCount, 1);
  EXPECT_FALSE(project.excitation.channels[1].Include);
  EXPECT_EQ(project.ports.groups.size(), 1U);
}

TEST(CardSize, IsWholeMbytesOrDecimalGbytes) {
  EXPECT_EQ(cardSizeMbytes("2048", false), 2048);
  EXPECT_EQ(cardSizeMbytes("0.125", true), 128);
  EXPECT_EQ(cardSizeMbytes("2", true), 2048);
  for (const std::string_view text : {"2049", "1.5", "-1", "", "x", "1e3"})
    EXPECT_FALSE(cardSizeMbytes(text, false)) << text;
  for (const std::string_view text : {"2.001", "0.1255", "3"})
    EXPECT_FALSE(cardSizeMbytes(text, true)) << text;
}

TEST(TableNames, FollowTheIntervalOnlyWhenGiven) {
  const std::tuple<const char*, const char*, std::string> cases[] = {
      {"Table3", "VFilt", "VFilt3"}, {"VFilt3", "ffilt", "FFilt3"}, {"FFilt3", "60", "Table3"},
      {"Table3", "10", "Table3"},    {"Fast", "VFilt", "Fast"},     {"Table4", "VFilt", "Table4"}};
  for (const auto& [name, interval, proposed] : cases) {
    OutputTable table;
    table.TableName = name;
    table.OutInt = interval;
    EXPECT_EQ(proposedTableName(table, 3), proposed) << name << " " << interval;
  }
}

TEST(TableNames, AreComparedWithoutRegardToCase) {
  struct Case {
    std::string first, second;
    bool same, similar;
  };
  const Case cases[] = {
      {"Data", "DATA", true, false},        {"DATA01", "data02", false, true},
      {"Pressure", "PRESSUX", false, true}, {"Table3", "Table8", false, false},
      {"Data1", "Data02", false, false},    {"Data012", "Data013", false, true},
      {"AB012", "AB013", false, false},     {"Data", "Data01", false, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.first + " " + c.second);
    Project project = newProject();
    project.tables[2].TableName = c.first;
    project.tables[7].TableName = c.second;
    const auto duplicate = complaintAboutDuplicateNames(project);
    EXPECT_EQ(duplicate.has_value(), c.same);
    if (duplicate) {
      EXPECT_EQ(duplicate->text,
                "The name 'DATA' is already being used for Table 3.\r\n\r\n"
                "EACH TABLE REQUIRES A UNIQUE NAME!");
    }
    EXPECT_EQ(warningsAboutSimilarNames(project).size(), c.similar ? 1U : 0U);
  }
}

TEST(TableNames, NeverBeginWithADigit) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"1abc", "abc"}, {"_x", "x"}, {"1_a", "a"},
      {"a_1", "a_1"},  {"12", ""},  {"abcdefghi", "abcdefgh"}};
  for (const auto& [typed, name] : cases) EXPECT_EQ(typedTableName(typed), name);
  for (const char key : {'a', 'Z', '5', '_', '\b'}) EXPECT_TRUE(isTableNameKey(key));
  for (const char key : {' ', '-', '.', '\xE4'}) EXPECT_FALSE(isTableNameKey(key));
}

TEST(TableInterval, IsClampedByItsUnit) {
  const std::tuple<std::string_view, int, std::string_view> cases[] = {
      {"200000000", 0, "100000000"},
      {"200000000", 1, "200000000"},
      {"1800000001", 3, "1800000000"},
      {"0", 2, "1"},
      {"-5", 2, "1"},
      {"2.5", 2, "2"},
      {"vfilt", 2, "VFilt"}};
  for (const auto& [typed, unit, text] : cases) EXPECT_EQ(clampedInterval(typed, unit), text);
  Project project = newProject();
  project.tables[0].OutInt = "50";
  project.tables[0].OutIntUnits = 1;
  EXPECT_EQ(equivalentScansText(project, project.tables[0]), "20 /Sec");
}

TEST(TableFlags, AreNamedWhenUsedTwice) {
  Project project = newProject();
  project.tables[0].FlagTable = project.tables[1].FlagTable = 3;  // in two tables: fine
  EXPECT_FALSE(questionAboutTableFlags(project));
  project.tables[1].FlagFull = 3;
  const auto question = questionAboutTableFlags(project);
  ASSERT_TRUE(question);
  EXPECT_EQ(question->text,
            "Table 'Table2'  Write Flag and Table 'Table2'  Full Flag both use flag 3.\r\n"
            "The above condition(s) could possibly cause undesirable results.\r\n"
            "PRESS \"YES\" TO LEAVE AS IS OR \"NO\" TO EDIT.");
  EXPECT_FALSE(informationAboutFlag(project, 3));
  project.flags[2].FlagInclude = true;
  project.flags[2].states[0].MeasVar = "A";
  const auto information = informationAboutFlag(project, 3);
  ASSERT_TRUE(information);
  EXPECT_EQ(
      information->text,
      "JUST LETTING YOU KNOW.\r\nFlag(3) was previously enabled in the Flags Setup window.\r\n"
      "The following code will be in the LogScript program:\r\n"
      "If A > 0 Then\r\n   Flag(3) = True\r\nEnd If");
  EXPECT_FALSE(informationAboutFlag(project, 9));
}

TEST(Names, ThatAUserMayGive) {
  for (const std::string_view name : {"", "Inlet", "T_1", "Volt1", "Block", "abcdefghijklmnop"})
    EXPECT_FALSE(complaintAboutAlias(name)) << name;
  for (const std::string_view name :
       {"1st", "_x", "a b", "a-b", "abcdefghijklmnopq", "sample", "TYPET", "vblk1", "FVBlK7Zero",
        "LCTBlk1_2", "TREP12", "INTERVAL8", "ReadPortU9", "Excite_7_1", "Flag3Mark", "battvolt",
        "TriggerCallX", "BRNG1_2", "I"})
    EXPECT_TRUE(complaintAboutAlias(name)) << name;
  EXPECT_FALSE(complaintAboutUnits("Deg_C/min"));
  for (const std::string_view units : {"a b", "\"", "[x]", "abcdefghijklm", "\xC2\xB0/s"})
    EXPECT_TRUE(complaintAboutUnits(units)) << units;
}

TEST(PickList, OffersWhatTheProgramHas) {
  Project project = newProject();
  project.configuration.quantity(analog7121) = 1;
  project.configuration.quantity(excitation7131) = 1;
  project.configuration.quantity(counter7141) = 2;
  addBlock(project, BlockKind::thermocouple, 2).elements[1].AliasName = "Inlet";
  project.calculated.CalcFieldCount = 1;
  fitLists(project);
  project.tables[1].TableOn = true;
  for (const std::size_t p : {1U, 3U, 4U}) {  // lower halves of both, upper half of the second
    project.ports.groups[p].ReadMode = true;
    project.ports.groups[p].ports[0].Include = true;
  }
  using Names = std::vector<std::string>;
  EXPECT_EQ(variableNames(project, channelVariables), (Names{"TBlk1(1)", "Inlet"}));
  EXPECT_EQ(variableNames(project, loggerVariables), (Names{"BattVolt", "BattCurr", "TRef(1)"}));
  EXPECT_EQ(variableNames(project, portVariables), (Names{"ReadPortL", "ReadPortL7", "ReadPortU"}));
  EXPECT_EQ(variableNames(project, calculatedVariables | tableVariables),
            (Names{"CalcField1", "Table2.Record(1,0)", "Table2.TableSize(1,1)"}));
  EXPECT_EQ(variableNames(project).size(), 2U + 3 + 8 + 3 + 1 + 2);
}

}  // namespace
}  // namespace model
