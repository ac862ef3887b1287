#include <gtest/gtest.h>

#include <map>
#include <set>

#include "generator/program_writer.h"
#include "projectfile/project_file.h"
#include "readback/sections.h"
#include "readback/verification.h"
#include "support/demo_project.h"
#include "support/random_case.h"
#include "text/strings.h"

namespace {

using text::concat;

std::string demoProgram() {
  return SAVEDLD::generate(support::demoProject(), support::demoStamp()).text;
}

/// The program after somebody's edits; each text stands in it.
std::string edited(std::initializer_list<std::pair<std::string, std::string>> edits) {
  std::string program = demoProgram();
  for (const auto& [from, to] : edits) {
    const std::size_t at = program.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos) program.replace(at, from.size(), to);
  }
  return program;
}

/// All that is said about a program, without its place.
std::string remarks(const std::string& program) {
  const auto result = readback::verifyProgram(program, support::demoProject());
  std::string out;
  for (const logscript::Finding& error : result.errors) out += concat("error: ", error.text, "\n");
  for (const readback::Difference& difference : result.differences) {
    const std::string line = readback::report(difference, "");
    out += line.substr(line.find(": ") + 2);
  }
  return out;
}

/// Each edit is told once, with the setting that it belongs to.
TEST(Differences, NameWhatWasEditedAndTheSettingOfIt) {
  const struct {
    const char *from, *to, *remark;
  } cases[] = {
      {"Const VINT1 = 40", "Const VINT1 = 250",
       "the constant VINT1 is 250 and 40 is expected ([VOLTAGE BLOCKS] Integration, block 1)"},
      {"VREP1,VRNG1,5,5,", "VREP1,VRNG1,5,6,",
       "the channel (argument 5) of VoltSE is 6 and 5 is expected ([VOLTAGE BLOCKS] block 1)"},
      {"VRNG1,5,5,VSETL1", "VRNG1,5,5,60",
       "the settling time (argument 6) of VoltSE is 60 and 30 is expected ([VOLTAGE BLOCKS] "
       "SettleTime, block 1)"},
      {"MVBlk1(1) = 0.1 ", "MVBlk1(1) = 0.2 ",
       "the value of MVBlk1(1) is 0.2 and 0.1 is expected ([VOLTAGE BLOCKS] AliasMult, block 1, "
       "channel 1)"},
      {"Const INTERVAL1 = 10", "Const INTERVAL1 = 5",
       "the constant INTERVAL1 is 5 and 10 is expected ([TABLE SETUP] OutInt, table 1)"},
      {"DataTable(Table1,True,-1)", "DataTable(Table1,True,500)",
       "the number (argument 2) of DataTable Table1 is 500 and -1 is expected ([TABLE SETUP] "
       "Buffer, table 1)"},
      {"   Average(TREP1,TBlk1(),FP2,MeasDisable)", "",
       "Average(2,TBlk1(),FP2,MeasDisable) is missing before this line ([THERMOCOUPLE BLOCKS] "
       "Table, block 1, table 1)"},
      {"EndTable", "   StdDev(TREP1,TBlk1(),FP2,False)\r\nEndTable",
       "StdDev(2,TBlk1(),FP2,False) is nowhere in the project"},
      {"Flag(3) = False", "Flag(4) = False",
       "the variable is Flag(4) and Flag(3) is expected ([VOLTAGE BLOCKS] ZeroFlag, block 1)"},
      {"Alias VBlk1(1) = Press ", "Alias VBlk1(2) = Press ",
       "the place of Press is VBlk1(2) and VBlk1(1) is expected ([VOLTAGE BLOCKS] AliasName, block "
       "1, channel 1)"},
      {"Public VBlk1(VREP1)", "Dim VBlk1(VREP1)",
       "the declaration of VBlk1 is Dim and Public is expected ([VOLTAGE BLOCKS] Public, block 1)"},
      {"Scan(PERIOD,P_UNITS,0,0)", "Scan(PERIOD,P_UNITS,100,0)",
       "the number (argument 3) of Scan is 100 and 0 is expected ([SCAN SETUP] BufferScans)"},
      {"CallTable Table1", "",
       "CallTable Table1 is missing before this line ([TABLE SETUP] "
       "TableOn, table 1)"},
  };
  EXPECT_EQ(remarks(demoProgram()), "");
  for (const auto& [from, to, remark] : cases)
    EXPECT_EQ(remarks(edited({{from, to}})), concat(remark, "\n")) << from;
}

/// What does not change the meaning is no difference.
TEST(Differences, AreNoneInLayoutAndSpelling) {
  EXPECT_EQ(
      remarks(edited({{"VoltSE(VBlk1(),VREP1,VRNG1,5,5,", "voltse( vblk1() , 2, mV500, 5, 5, "},
                      {"'Scan interval number", "'how often"},
                      {"Const PERIOD = 1 ", "Const PERIOD = 2 - 1 "},
                      {"Next Scan", "NextScan"}})),
      "");
}

TEST(Differences, OfALineWithAnErrorAreLeftToTheChecker) {
  EXPECT_EQ(remarks(edited({{"VoltSE(VBlk1(),VREP1,", "VoltSE(VBlk1(),"}})),
            "error: VoltSE takes 9 arguments, not 8; write destination, repetitions, range, slot, "
            "channel, settling time, integration time, multiplier, offset\n");
  EXPECT_TRUE(remarks("no program at all").starts_with("error: "));
  EXPECT_TRUE(remarks(std::string("\0\1", 2)).starts_with("error: this is no program"));
}

/// The lines of a project file by section.
std::map<std::string, std::string> sectionsOf(const model::Project& project) {
  std::map<std::string, std::string> sections;
  std::string section, line;
  for (const char c : KGEN_GENFILE::fileText(project, {})) {
    if (c != '\n') {
      line += c;
      continue;
    }
    if (line.starts_with('[')) section = text::trimmed(line.substr(0, line.find('\r')));
    sections[section] += concat("\n", line);
    line.clear();
  }
  return sections;
}

/// Keys that a difference may name are those of the project file, where that has the section.
/// Those of conditions stand there behind a word of their own.
TEST(Differences, NameKeysThatTheProjectFileHas) {
  std::set<std::string> strange, sectionsSeen;
  for (unsigned seed = 0; seed < 60; ++seed) {
    const support::RandomCase one = support::randomCase(seed);
    const auto sections = sectionsOf(one.project);
    const readback::Outline outline(one.project, one.stamp.dunmoreHost);
    const readback::Expectation expectation = readback::expectedProgram(outline);
    for (std::uint32_t n = 1; n <= expectation.lines(); ++n) {
      const auto& [setting, keys] = expectation.at(n);
      std::vector<std::string> named = keys;
      named.push_back(setting.key);
      const auto section = sections.find(std::string(setting.section));
      if (section == sections.end()) continue;
      sectionsSeen.insert(section->first);
      for (const std::string& key : named)
        if (section->second.find(key) == std::string::npos)
          strange.insert(concat(setting.section, " ", key));
    }
  }
  EXPECT_EQ(strange, std::set<std::string>{});
  EXPECT_GT(sectionsSeen.size(), 15U);
}

}  // namespace
