#include <gtest/gtest.h>

#include <algorithm>

#include "desktop/command_line.h"
#include "desktop/review.h"
#include "desktop/sender.h"
#include "support/examples.h"

namespace {

using desktop::Finding;
using desktop::Weight;
using model::BlockKind;

model::Project exampleProject() {
  model::Project project = KGEN_COMMON::newProject();
  KGEN_GENFILE::load(std::string(KGEN_EXAMPLES_DIR) + "/everything_at_once.GN7", project);
  return project;
}

/// The finding whose text begins so.
const Finding* find(const std::vector<Finding>& findings, std::string_view begin) {
  for (const Finding& finding : findings)
    if (finding.text.starts_with(begin)) return &finding;
  return nullptr;
}

TEST(Findings, NameTheWindowThatAMessageIsAbout) {
  const std::pair<const char*, int> cases[] = {
      {"the measurements need 3 modules of kind 7125, the logger has 1; add modules", 0},
      {"INCORRECT PROGRAM TIMING\nEstimated measurement time", 1},
      {"TIMING PROBLEM\r\nTABLE 2 interval", 2},
      {"\"battery\" is used as [ Table1 name ] and [ VBlk(1) alias name ]", 2},
      {"thermocouple block 3 has more channels than one", 3},
      {"VBlk1(3): the units \"\" hold a character", 4},
      {"high voltage block 2", 5},
      {"isolated block 1", 6},
      {"BBlk(2) alias name", 7},
      {"\"x\" is used as [ FVBlk(1) alias name ]", 8},
      {"not referenced to ground: TCMUX Thermocouple block 2.", 10},
      {"PBlk2: a histogram of table 1 has no bins", 9},
      {"TCMUX block 1 needs", 10},
      {"CAN item 7: the mask", 11},
      {"calculated field 2: the name", 12},
      {"port group 2 has no module", 13},
      {"excitation channel 4: the logger", 15},
      {"nothing that a window has", -1}};
  for (const auto& [text, button] : cases) EXPECT_EQ(desktop::windowNamedIn(text), button) << text;
}

TEST(Findings, TellWhatASaveWouldAsk) {
  model::Project project = exampleProject();
  project.scan.ExecutionTime = 10;  // 100 us
  project.scan.ExecTimeUnits = 0;
  const model::Project before = project;
  const auto findings = desktop::findingsOfChecks(project, 0);
  EXPECT_EQ(project, before);
  const Finding* timing = find(findings, "INCORRECT PROGRAM TIMING: Estimated measurement time");
  ASSERT_NE(timing, nullptr);
  EXPECT_EQ(timing->button, 1);
  EXPECT_EQ(timing->text.find('\n'), std::string::npos);
  EXPECT_EQ(find(desktop::findingsOfChecks(project, 1), "INCORRECT PROGRAM TIMING"), nullptr);
}

/// Hints are on lines that the engineer can't change.
TEST(Findings, OfAProgramNameTheirLine) {
  const SAVEDLD::Program program{
      "Public A, Unused\r\nBeginProg\r\nScan(1,Sec,0,0)\r\nA = B\r\nNextScan\r\nEndProg\r\n",
      6,
      {"table 3: the name \"x y\" is no name of the program language; the program uses Table3"}};
  const auto findings = desktop::findingsOfProgram(program);
  ASSERT_EQ(findings.size(), 2U);
  EXPECT_EQ(findings[0].button, 2);
  EXPECT_EQ(findings[1].weight, Weight::error);
  EXPECT_EQ(findings[1].line, 4);
}

TEST(Review, HasAllThatTheWindowShowsAndNothingAgainstExamples) {
  support::forExamples(KGEN_EXAMPLES_DIR, [](const std::string& name, const auto& project) {
    SCOPED_TRACE(name);
    const desktop::Review review = desktop::reviewOf({project, {}, 0});
    EXPECT_NE(review.program.find("BeginProg"), std::string::npos);
    EXPECT_FALSE(review.tables.empty());
    EXPECT_FALSE(review.wiring.empty());
    for (const Finding& finding : review.findings)
      EXPECT_NE(finding.weight, Weight::error) << finding.text;
    EXPECT_EQ(review.budget.limits[0].cause, "logger");
    double shares = 0;
    for (const auto& share : review.budget.bars[0].segments) shares += share.value;
    EXPECT_DOUBLE_EQ(shares, timing::measurementTimes(project, model::channelPlan(project)).total);
  });
}

TEST(Review, SaysWhyThereIsNoProgram) {
  model::Project project = exampleProject();
  model::MeasurementBlock& block = project.block(BlockKind::voltage, 1);
  block.Reps = 100;
  block.elements.resize(100, block.elements.at(0));
  for (model::OutputTable& table : project.tables) table.TableOn = true;
  for (model::Element& element : block.elements) element.Table.fill(0x1E);
  block.elements.back().Table.fill(0);  // so that each of the others takes a line of its own
  const desktop::Review review = desktop::reviewOf({project, {}, 0});
  const auto tooLong =
      std::find_if(review.findings.begin(), review.findings.end(),
                   [](const Finding& each) { return each.text.find("3000") != std::string::npos; });
  ASSERT_NE(tooLong, review.findings.end());
  EXPECT_EQ(tooLong->weight, Weight::error);
  EXPECT_EQ(review.program.find("BeginProg"), std::string::npos);
}

TEST(CommandLine, TakesFilesAndOptions) {
  EXPECT_EQ(desktop::commandLineFrom({"a.GN7", "--", "-b"}).files, QStringList({"a.GN7", "-b"}));
  EXPECT_TRUE(desktop::commandLineFrom({"x", "--help"}).help);
  EXPECT_TRUE(desktop::commandLineFrom({"-v"}).version);
  EXPECT_EQ(desktop::commandLineFrom({"--nonsense", "-x"}).unknown, "--nonsense");
}

TEST(Sender, PutsTheFileIntoTheCommand) {
  EXPECT_EQ(desktop::sendCommand("load --port \"COM 1\"", "/a b.KX7"),
            QStringList({"load", "--port", "COM 1", "/a b.KX7"}));
  EXPECT_EQ(desktop::sendCommand("load --file=%f -q", "/a b.KX7"),
            QStringList({"load", "--file=/a b.KX7", "-q"}));
}

}  // namespace
