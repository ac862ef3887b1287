#include <gtest/gtest.h>

#include <functional>

#include "generator/program_writer.h"
#include "support/demo_project.h"
#include "support/program_reader.h"

namespace {

using model::BlockKind;
using model::ModuleKindIndex;

constexpr std::uint8_t levelCrossing = 1U << 7U;
constexpr std::uint8_t histogram = 1U << 5U;

model::Project measuringProject() {
  model::Project project = support::projectWith(
      2,
      {ModuleKindIndex::adaptor7151, ModuleKindIndex::analog7121, ModuleKindIndex::excitation7131});
  support::addBlock(project, BlockKind::thermocouple, 1, 2);
  support::addBlock(project, BlockKind::voltage, 1, 2);
  project.tables[0].TableOn = true;
  return project;
}

model::MeasurementBlock& volts(model::Project& project) {
  return project.block(BlockKind::voltage, 1);
}

/// Files made by hand hold what no window allows: the program is correct all the same, and a note
/// says what it does instead.
TEST(OddValues, GiveACorrectProgramAndANote) {
  const struct {
    const char* name;
    std::function<void(model::Project&)> make;
    const char* line;  // in the program
    const char* note;  // "" when nothing is lost
  } cases[] = {
      {"range in other letters", [](auto& p) { volts(p).Range = "2 volts"; }, "Const VRNG1 = V2 ",
       "voltage block 1: the range '2 volts'"},
      {"unknown range", [](auto& p) { volts(p).Range = "lots"; }, "Const VRNG1 = mV50C ",
       "the range 'lots'"},
      {"data type", [](auto& p) { volts(p).DataResolution = ","; }, "VoltDiff(VBlk1()",
       "the data type ','"},
      {"input", [](auto& p) { volts(p).MeasType = "it's"; }, "VoltDiff(VBlk1()",
       "the input 'it's'"},
      {"negative time", [](auto& p) { volts(p).SettleTime = -5; }, "Const VSETL1 = 0 ",
       "the settling time '-5'"},
      {"name of a table taken by the fallback of another",
       [](auto& p) {
         p.tables[0].TableName = "Table2";
         p.tables[1].TableName = "Scan";
         p.tables[1].TableOn = true;
         p.tables[1].SingleTrigger = true;
         p.tables[1].TrigTable = 1;
         p.tables[1].conditions.trigger(0, 1).Expression = "VBlk1(1) > 3";
       },
       "Table2_2.Record(1,0) < 1", "the name \"Scan\""},
      {"comment in an expression",
       [](auto& p) {
         p.tables[0].TrigTable = 1;
         p.tables[0].conditions.trigger(0, 1).Expression = "VBlk1(1) > 3 'it is hot";
       },
       "bStartTrigger = (VBlk1(1) > 3)", ""},
      {"histogram without bins",
       [](auto& p) {
         volts(p).elements[0].Table[0] = histogram;
         volts(p).processing[0].HistogramCode = "";
       },
       "EndTable", "a histogram of table 1 has no bins"},
      {"sizes joined by a word",
       [](auto& p) {
         volts(p).elements[0].Table[0] = 1U << 6U;
         volts(p).processing[0].RainHistoCode = "12 x 20,-300,300,5,0";
       },
       ",12,20,-300,300,5,0)", ""},
      {"fewer levels counted than the code has",
       [](auto& p) {
         volts(p).elements[0].Table[0] = levelCrossing;
         volts(p).processing[0].LevelCode = "4,1,0,0";
         volts(p).processing[0].LevNumLevels = 2;
         volts(p).processing[0].LevelVarOne = {1, 2};
       },
       "Data 1,2,0,0", ""},
      {"levels of a table that is off",
       [](auto& p) {
         volts(p).elements[0].Table[1] = levelCrossing;
         p.tables[1].TableOn = true;
         volts(p).processing[0].LevNumLevels = 3;
         volts(p).processing[0].LevelVarOne = {0, 0, 0};
         volts(p).processing[1].LevelCode = "2,1,0,0";
         volts(p).processing[1].LevNumLevels = 2;
         volts(p).processing[1].LevelVarOne = {7, 8};
       },
       "Data 7,8", ""},
      {"forced filter order",  // a time for it is planned
       [](auto& p) {
         p.configuration.quantity(ModuleKindIndex::isolation7128) = 1;
         support::addBlock(p, BlockKind::isolated, 1, 2);
         p.isolated.Integration = -3;
       },
       "Const IINT1 = 333312 ", ""},
      {"analog output beyond the modules",
       [](auto& p) {
         p.excitation.channels.resize(6);
         p.excitation.channels[5].Include = true;
       },
       "EndProg", "excitation channel 6: the logger has only 4 analog outputs"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    model::Project project = measuringProject();
    c.make(project);
    const SAVEDLD::Program program = SAVEDLD::generate(project, support::demoStamp());
    EXPECT_EQ(support::faultList(program.text, support::readProgram(program.text).faults), "");
    EXPECT_NE(program.text.find(c.line), std::string::npos) << program.text;
    std::string notes;
    for (const std::string& note : program.notes) notes += note + "\n";
    EXPECT_EQ(notes.empty(), *c.note == '\0') << notes;
    EXPECT_NE(notes.find(c.note), std::string::npos) << notes;
  }
}

}  // namespace
