#include "control/summary.h"

#include <gtest/gtest.h>

#include <sstream>

#include "projectfile/project_file.h"
#include "support/demo_project.h"
#include "support/examples.h"
#include "support/random_project.h"
#include "text/strings.h"

namespace control {
namespace {

using model::BlockKind;
using model::ModuleKindIndex;
using text::concat;

std::string summaryOf(const model::Project& project, const SummaryHeading& heading) {
  const model::ChannelPlan plan = model::channelPlan(project);
  return summaryText(project, plan, timing::measurementTimes(project, plan), heading);
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

TEST(Summary, OfTheExamplesIsAsBefore) {
  const int examples = support::forExamples(KGEN_EXAMPLES_DIR, [](const std::string& name,
                                                                  const model::Project& project) {
    SCOPED_TRACE(name);
    const std::string summary = summaryOf(project, {.name = name});
    EXPECT_TRUE(summary == support::wholeFile(concat(KGEN_GOLDEN_DIR, "/summary/", name, ".txt")))
        << summary;
  });
  EXPECT_GE(examples, 10);
}

/// Adds up the times between a group's header and its total, and compares.
void expectTimesAddUp(const std::vector<std::string>& lines) {
  double sum = 0;
  double total = 0;
  for (const std::string& line : lines) {
    if (line.empty()) continue;
    if (line.ends_with("(uSec)")) continue;
    const std::size_t blank = line.rfind(' ');
    const double time = text::readNumber(line.substr(blank + 1));
    if (line.find(" Time =") != std::string::npos && line.find("RefTemp") == std::string::npos) {
      const bool battery = line.find("Main Battery") != std::string::npos;
      EXPECT_TRUE(battery || std::abs(time - sum) < 0.02) << line << " against " << sum;
      if (line.find("Isolated") == std::string::npos) total += time;
      sum = 0;
    } else if (line.size() == 60) {
      sum += time;
    }
  }
  const double shortest = text::readNumber(lines.back().substr(lines.back().rfind(' ') + 1));
  EXPECT_GE(shortest + 1e-6, total);
}

TEST(Summary, TimesEndAtColumnSixtyAndAddUp) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const model::Project project = support::randomProject(random, {.k700x = seed % 4 != 0});
    const std::vector<std::string> lines = linesOf(summaryOf(project, {.name = "x"}));
    bool inGroup = false;
    std::vector<std::string> timed;
    for (const std::string& line : lines) {
      inGroup = inGroup || line.ends_with("(uSec)") || line.find("Main Battery") != line.npos;
      if (!inGroup) continue;
      timed.push_back(line);
      if (line.empty() || line.ends_with("(uSec)")) continue;
      EXPECT_EQ(line.size(), 60U) << line;
    }
    expectTimesAddUp(timed);
    if (HasFailure()) return;
  }
}

TEST(Summary, CellsBeginUnderTheirHeaders) {
  model::Project project =
      support::projectWith(2, {ModuleKindIndex::analog7121, ModuleKindIndex::excitation7131,
                               ModuleKindIndex::counter7141, ModuleKindIndex::highVoltage7127,
                               ModuleKindIndex::filter7125, ModuleKindIndex::isolation7128});
  project.configuration.CanBusQty = 1;
  support::addBlock(project, BlockKind::thermocouple, 1, 2).TypeNo = 2;
  model::MeasurementBlock& volts = support::addBlock(project, BlockKind::voltage, 1, 3);
  volts.MeasType = "SE";
  volts.Range = "2 Volts";
  volts.DefaultMult = 0.0333333333;
  volts.DefaultOffset = -1234567.25;
  support::addBlock(project, BlockKind::highVoltage, 1, 1).Range = "5000 mV";
  support::addBlock(project, BlockKind::isolated, 1, 1).InputType = 1;
  support::addBlock(project, BlockKind::bridge, 1, 1).Excite = 2500;
  support::addBlock(project, BlockKind::pulse, 1, 1).Opt = 500;
  project.filterSlots[0].BlockCount = 1;
  support::addBlock(project, BlockKind::filter, 1, 1).Excite = 5;
  project.can.CanCount = 1;
  project.can.items.resize(1);
  project.can.items[0].DataId = "&H1FFFFFFF";
  project.excitation.channels.resize(4);
  project.excitation.channels[3].Include = true;
  project.excitation.channels[3].State1 = 5000;
  project.ports.groups.resize(3);
  for (const std::size_t port : {0, 1, 2, 5}) project.ports.groups[2].ports[port].Include = true;
  project.flags[2].FlagInclude = true;
  fitLists(project);
  const std::string summary = summaryOf(project, {.name = "x", .programLines = 812});
  for (const char* row : {
           " Program Lines: 812\n",
           "\n THERMO    Reps  Rng  Meas   Unit Type        (uSec)\n"
           " TBlk1     2     50mV Diff   F    K ",
           "\n VOLTS     Reps  Rng  Meas   Mult   Offset    (uSec)\n"
           " VBlk1     3       2V SE     0.0333 -1234567 ",
           "\n HI VOLTS  Reps  Rng  Meas   Mult   Offset    (uSec)\n"
           " HBlk1     1   5000mV Diff   1      0 ",
           "\n ISOLATED 9 Reps  Rng   Mult/Deg Offset/Type (uSec)\n"
           " IBlk1      1       2V  mVolts   T ",
           "\n BRIDGES   Reps  Rng  Ex mv   Mult   Offset   (uSec)\n"
           " BBlk1     1    200mV 2500    1      0 ",
           "\n PULSES  Reps Type  Option   Mult   Offset  (uSec)\n"
           " PBlk1   1   HiLev  500ms    1      0 ",
           "\n FILTER  Reps  Rng  Excite  Mult   Offset   (uSec)\n"
           " FVBlk1  1   5000mV  5V     1      0 ",
           "\n CAN       Reps  Data ID     Mult   Offset    (uSec)\n"
           " CBlk1     1     &H1FFFFFFF  1      0 ",
           "\n CAO OUTPUT     State 1   State 2             (uSec)\n"
           " Slot 5 CAO4    5000      - ",
           "\n PORTS     Slot  Port          Write  Read    (uSec)\n"
           " Group 3   6     9-11,14       Yes    - ",
           "\n FLAGS          State 1   State 2            (uSec)\n"
           " Flag(3)        True      False ",
       })
    EXPECT_NE(summary.find(row), std::string::npos) << row << "\nin\n" << summary;
}

}  // namespace
}  // namespace control
