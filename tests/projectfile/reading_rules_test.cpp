#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "projectfile/project_file.h"
#include "text/strings.h"

namespace {

using KGEN_GENFILE::LoadReport;
using model::BlockKind;
using text::concat;
using namespace std::string_literals;

model::Project newProject() {
  model::Project project;
  KGEN_COMMON::SetAllDefaults(project);
  return project;
}

std::string textOf(const std::vector<double>& values) {
  std::string out;
  for (const double value : values) out += concat(value, ";");
  return out;
}

std::string quantities(const model::Project& project) {
  std::string out;
  for (const int quantity : project.configuration.ModuleQty) out += concat(quantity, " ");
  return out + project.configuration.Version;
}

struct Rule {
  const char* name;
  std::string content;
  std::string (*shown)(const model::Project&);
  std::string expected;
};

std::string operatorOf(const model::Project& p) { return p.configuration.Operator; }
std::string version(const model::Project& p) { return p.configuration.Version; }
std::string reps(const model::Project& p) {
  return concat(p.block(BlockKind::voltage, 1).Reps, " ", p.block(BlockKind::voltage, 2).Reps);
}
std::string blockTime(const model::Project& p) {
  return concat(p.block(BlockKind::voltage, 1).BlockTime);
}
std::string interval(const model::Project& p) { return concat(p.scan.ExecutionTime); }
std::string units(const model::Project& p) { return concat(p.scan.ExecTimeUnits); }
std::string postTrigger(const model::Project& p) { return concat(p.scan.PostTriggerScans); }
std::string buffered(const model::Project& p) { return p.scan.ScanBuffer ? "on" : "off"; }
std::string startVariable(const model::Project& p) {
  return concat(p.tables[2].conditions.TriggerMeasVar(0, 1), "|",
                p.tables[2].conditions.TriggerMeasVar(0, 2), "|",
                p.tables[2].conditions.TriggerMeasVar(0, 10));
}
std::string writeIf(const model::Project& p) {
  return concat(p.tables[0].WriteIf, " ", p.tables[0].conditions.WriteIfMeasVar(1), "|",
                p.tables[0].conditions.WriteIfMeasVar(2));
}
std::string startText(const model::Project& p) {
  return concat(p.tables[0].TrigTable, " ", p.tables[0].conditions.TriggerIndvExpress(0, 1), " ",
                p.tables[0].TrigTabStop);
}
std::string range(const model::Project& p) {
  return concat(p.block(BlockKind::voltage, 1).Range, " ", p.block(BlockKind::voltage, 1).RangeNo);
}

const std::string scan = "[SCAN SETUP]\n";
const std::string config = "[CONFIGURATION]\n";
const std::string voltage = "[VOLTAGE BLOCKS]\n";
const std::string tables = "[TABLE SETUP]\n";

const Rule rules[] = {
    // Lines and sections
    {"CR LF and LF", "[CONFIGURATION]\r\nOperator=A\r\nIDNumber=B\n", operatorOf, "A"},
    {"the last line without its end", config + "Operator=A", operatorOf, "A"},
    {"everything after the first =", config + "Operator=a = b=", operatorOf, "a = b="},
    {"blanks of a text stay", config + "Operator=  A ", operatorOf, "  A "},
    {"Windows-1252 becomes UTF-8", config + "Operator=M\xFCller", operatorOf, "M\xC3\xBCller"},
    {"UTF-8 stays", config + "Operator=M\xC3\xBCller", operatorOf, "M\xC3\xBCller"},
    {"a mark in front", "\xEF\xBB\xBF" + config + "Operator=A", operatorOf, "A"},
    {"a key of the wrong case", config + "operator=A", operatorOf, "Name"},
    {"a key of another section", scan + "Operator=A", operatorOf, "Name"},
    {"an unknown section", scan + "X=1\n[OTHER]\nOperator=A", operatorOf, "Name"},
    {"a header with a blank after it", scan + "X=1\n[CONFIGURATION] \nOperator=A", operatorOf,
     "Name"},
    {"a value with a bracket is a header", config + "IDNumber=1\nOperator=A[1]", operatorOf,
     "Name"},
    {"but not in the line after a header", config + "Operator=A[1]", operatorOf, "A[1]"},
    {"of two headers the second is lost", scan + config + "Operator=A", operatorOf, "Name"},
    {"a section that comes twice", config + "Operator=A\n" + scan + "\n" + config + "Operator=B",
     operatorOf, "B"},
    // Version
    {"a bare version number", "1.5\n" + config, version, "1.5"},
    {"a first line with a point, as a whole", "Version=5.3\n" + config, version, "Version=5.3"},
    {"a version line elsewhere", config + "\n5.3\n", version, "6.0"},
    // Numbers
    {"blanks in front, rubbish behind", scan + "ExecutionTime= \t 2.5x7", interval, "2.5"},
    {"exponents", scan + "ExecutionTime=25D-1", interval, "2.5"},
    {"no number is zero", scan + "ExecutionTime=soon", interval, "0"},
    {"halves to even, 2.5", scan + "ExecTimeUnits=2.5", units, "2"},
    {"halves to even, 3.5", scan + "ExecTimeUnits=3.5", units, "4"},
    {"16 bits saturate", scan + "ExecTimeUnits=99999999999", units, "32767"},
    {"32 bits saturate", scan + "PostTriggerScans=-1E300", postTrigger, "-2147483648"},
    {"any other number is on", scan + "ScanBuffer= 0.25", buffered, "on"},
    {"zero is off", scan + "ScanBuffer=-0.0", buffered, "off"},
    {"milliseconds", voltage + "BlockTime(1)=2.5 mSecs", blockTime, "2500"},
    {"microseconds", voltage + "BlockTime(1)=2.5", blockTime, "2.5"},
    {"milliseconds by their last letters", voltage + "BlockTime(1)=2.5 msecs", blockTime, "2.5"},
    // Indexes
    {"leading zeros, blanks and signs match nothing",
     voltage + "Reps(01)=1\nReps( 1)=2\nReps(+1)=3\nReps(1 )=4\nReps(1)x=5\nReps(2)= 6", reps,
     "0 6"},
    {"indexes out of bounds match nothing", voltage + "Reps(0)=1\nReps(8)=1\nReps(65537)=1", reps,
     "0 0"},
    {"too many and too few indexes", voltage + "Reps(1,1)=1\nReps=1\nReps()=1", reps, "0 0"},
    {"blocks above the count are not in use", voltage + "Reps(2)=5\nReps(1)=4\nBlockCount=1", reps,
     "4 0"},
    {"without a count they are kept", voltage + "Reps(2)=5", reps, "0 5"},
    // Conditions
    {"run-together trigger keys",
     tables + "StartMeasVar(3)=a\nStartMeasVar(32)=b\nStartMeasVar(310)=c", startVariable, "a|b|c"},
    {"and those that are none",
     tables + "StartMeasVar(31)=a\nStartMeasVar(30)=b\nStartMeasVar(311)=c\nStartMeasVar(301)=d",
     startVariable, "||"},
    {"one write-if", tables + "MeasureVar(1)=a\nMeasureVar(1, 1)=b\nWriteIf(1)=1", writeIf, "1 a|"},
    {"two write-ifs",
     tables + "WriteIf(1)=2\nMeasureVar(1)=a\nMeasureVar(1, 1)=b\nMeasureVar(1, 2)=c", writeIf,
     "2 b|c"},
    {"two write-ifs need the blank", tables + "WriteIf(1)=2\nMeasureVar(1,1)=b", writeIf, "2 |"},
    {"an old true", tables + "WriteIf(1)=-1\nMeasureVar(1)=a", writeIf, "1 a|"},
    {"old event texts",
     "5.3\n" + tables + "DataEventCode(1 Start)=x > 1\nDataEventCode(1 Stop)=False", startText,
     "1 x > 1 0"},
    {"event texts today", tables + "DataEventCode(1 Start)=x > 1", startText, "0  0"},
    // Settled at the end
    {"quantities before layout 1.5 move",
     config + "ModuleQty(6)=1\nModuleQty(8)=2\nModuleQty(9)=3\n"
              "ModuleQty(10)=4\n[GN7 VERSION]\nVersion=1.4",
     quantities, "0 1 0 0 0 2 3 4 0 0 1.5"},
    {"without quantities nothing moves", "[GN7 VERSION]\nVersion=1.4", quantities,
     "0 1 0 0 0 0 0 0 0 0 1.4"},
    {"the text of a range rules", voltage + "RangeNo(1)=99\nRange(1)=200 mV", range, "200 mV 60"},
    {"unless it is unknown", voltage + "RangeNo(1)=99\nRange(1)=3 mV", range, "3 mV 99"},
    {"levels arrive in any order",
     voltage + "VoLevelVarOne(1,2,2)=7\nVoLevNumLevels(1,2)=3\nVoLevelVarOne(1,2,9)=1",
     [](const model::Project& p) {
       return textOf(p.block(BlockKind::voltage, 1).processing[1].LevelVarOne);
     },
     "0;7;0;"},
    {"elements take the default of their kind", "[THERMOCOUPLE BLOCKS]\nReps(1)=2",
     [](const model::Project& p) {
       return concat(p.block(BlockKind::thermocouple, 1).elements.at(1).AliasMult);
     },
     "1.8"},
    {"block, table, element against item, value, table",
     voltage +
         "Reps(1)=4\nTable(1,2,3)=8\n[CANBUS ITEMS]\nCanCount=1\nNumVals(1)=4\nTable(1,2,3)=9",
     [](const model::Project& p) {
       return concat(p.block(BlockKind::voltage, 1).elements.at(2).Table[1], " ",
                     p.can.items.at(0).values.at(1).Table[2]);
     },
     "8 9"},
};

TEST(ReadingRules, HoldInEveryOddCase) {
  for (const Rule& rule : rules) {
    SCOPED_TRACE(rule.name);
    model::Project project = newProject();
    const LoadReport report = KGEN_GENFILE::loadText(rule.content, project);
    ASSERT_FALSE(report.error) << *report.error;
    EXPECT_EQ(rule.shown(project), rule.expected);
    EXPECT_TRUE(report.notes.empty());
  }
}

TEST(ReadingRules, ClampCountsAndSaySo) {
  const std::tuple<std::string, std::size_t, const char*> cases[] = {
      {voltage + "Reps(1)= 600", 2, "Reps(1): 600 is outside 0 to 525; 525 is used"},
      {voltage + "BlockCount=-3", 2, "BlockCount: -3 is outside 0 to 7; 0 is used"},
      {"[PULSE BLOCKS]\nBlockCount= 7", 2, "BlockCount: 7 is outside 0 to 6; 6 is used"},
      {tables + "\nTrigTable(2)=11", 3, "TrigTable(2): 11 is outside 0 to 10; 10 is used"},
      {"[CANBUS ITEMS]\nCanCount=1E9", 2, "CanCount: 1E9 is outside 0 to 64; 64 is used"},
      {"[FILTER BLOCKS]\nBlockCount(1)=5\nBlockCount(2)=5\nReps(1)=1", 3,
       "BlockCount(2): 5 is more than the 2 filter blocks left of 7; 2 is used"},
  };
  for (const auto& [content, line, text] : cases) {
    SCOPED_TRACE(content);
    model::Project project = newProject();
    const LoadReport report = KGEN_GENFILE::loadText(content, project);
    EXPECT_EQ(report.notes, (std::vector<KGEN_GENFILE::LineNote>{{line, text}}));
  }
}

TEST(ReadingRules, CountLinesThatNothingTakes) {
  model::Project project = newProject();
  const std::string content = config +
                              "Operator=A\nnothing here\nColour=red\n[OTHER]\nOperator=B\n" + scan +
                              "TotIsoChans=5\nFlagScan(1)=1\n";
  KGEN_GENFILE::LoadOptions options;
  options.listIgnored = true;
  const LoadReport report = KGEN_GENFILE::loadText(content, project, options);
  EXPECT_EQ(report.ignoredLines, 3U);
  EXPECT_EQ(report.ignored, (std::vector<KGEN_GENFILE::LineNote>{
                                {4, "Colour=red"}, {6, "Operator=B"}, {9, "FlagScan(1)=1"}}));
}

TEST(ReadingRules, AbsentKeysKeepTheirValuesButNoSectionMeansNoCanItems) {
  model::Project project = newProject();
  project.configuration.IDNumber = "17";
  project.can.CanCount = 2;
  project.can.CanBaud = 4;
  fitLists(project);
  KGEN_GENFILE::loadText(config + "Operator=A", project);
  EXPECT_EQ(project.configuration.IDNumber, "17");
  EXPECT_EQ(project.can.CanCount, 0);
  EXPECT_TRUE(project.can.items.empty());
  EXPECT_EQ(project.can.CanBaud, 4);
}

TEST(ReadingRules, TheDunmoreHostForcesTheLargerModel) {
  for (const auto& [cpu, forced] : {std::pair{1, true}, {2, false}}) {
    model::Project project = newProject();
    KGEN_GENFILE::LoadOptions options;
    options.dunmoreHost = true;
    const LoadReport report =
        KGEN_GENFILE::loadText(concat(config, "ModuleQty(2)=", cpu), project, options);
    EXPECT_EQ(report.modelForced, forced);
    EXPECT_TRUE(isK700X(project.configuration));
  }
}

TEST(ReadingRules, RefuseWhatIsNoProjectAndLeaveTheOldOne) {
  const std::pair<std::string, const char*> cases[] = {
      {"", "no section and no version line"},
      {"Dear reader. 5 lines\nOperator=A\n", "no section and no version line"},
      {config + "Operator=A\nIDNumber=\0B\n"s, "line 3 holds a NUL byte"},
      {config + "Operator=A\nIDNumber=" + std::string(70'000, 'x') + "\n",
       "line 3 is longer than 65,536 bytes"},
      {config + "Operator=A\n" + std::string(70'000, 'x'), "line 3 is longer than 65,536 bytes"},
  };
  for (const auto& [content, reason] : cases) {
    SCOPED_TRACE(content.substr(0, 40));
    model::Project project = newProject();
    const LoadReport report = KGEN_GENFILE::loadText(content, project);
    ASSERT_TRUE(report.error);
    EXPECT_NE(report.error->find(reason), std::string::npos) << *report.error;
    EXPECT_EQ(project, newProject());
  }
}

class LoadFromDisk : public testing::Test {
 protected:
  LoadFromDisk() {
    std::string name = std::filesystem::temp_directory_path() / "kgen_load.XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder_ = name;
  }
  ~LoadFromDisk() override { std::filesystem::remove_all(folder_); }
  void write(const std::string& name, std::string_view content) {
    std::ofstream(folder_ / name, std::ios::binary) << content;
  }
  std::string errorOf(const std::string& name) {
    return KGEN_GENFILE::load((folder_ / name).string(), project_).error.value_or("");
  }

  std::filesystem::path folder_;  // has a point in its name
  model::Project project_ = newProject();
};

TEST_F(LoadFromDisk, AddsTheExtensionByTheFileName) {
  write("site.GN7", config + "Operator=A");
  write("old.GEN", config + "Operator=B");
  EXPECT_EQ(errorOf("site"), "");
  EXPECT_EQ(project_.configuration.Operator, "A");
  EXPECT_EQ(errorOf("old.GEN"), "");
  EXPECT_EQ(project_.configuration.Operator, "B");
}

TEST_F(LoadFromDisk, JoinsLinesThatPiecesOfTheFileCut) {
  std::string content = config + "Operator=A\r\n" + scan;
  while (content.size() < 400'000)
    content += "Filler=" + std::string(content.size() % 97, 'x') + "\r\n";
  write("long.GN7", content + "\r\n" + config + "IDNumber=" + std::string(60'000, 'y'));
  EXPECT_EQ(errorOf("long"), "");
  EXPECT_EQ(project_.configuration.IDNumber, std::string(60'000, 'y'));
}

TEST_F(LoadFromDisk, SaysWhyAFileCannotBeRead) {
  write("empty.GN7", "");
  EXPECT_NE(errorOf("missing").find("missing.GN7: there is no such file; "), std::string::npos);
  EXPECT_NE(errorOf("empty").find("empty.GN7: the file is empty; "), std::string::npos);
  EXPECT_NE(errorOf("../" + folder_.filename().string()).find(": is a folder; "),
            std::string::npos);
  EXPECT_EQ(project_, newProject());
}

TEST_F(LoadFromDisk, ClearsTheReadOnlyAttribute) {
  namespace fs = std::filesystem;
  write("site.GN7", config);
  fs::permissions(folder_ / "site.GN7", fs::perms::owner_read);
  EXPECT_EQ(errorOf("site"), "");
  EXPECT_NE(fs::status(folder_ / "site.GN7").permissions() & fs::perms::owner_write,
            fs::perms::none);
}

}  // namespace
