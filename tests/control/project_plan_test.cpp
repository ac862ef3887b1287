#include "control/project_plan.h"

#include <gtest/gtest.h>

#include <random>

#include "channels/channel_csv.h"
#include "generator/program_writer.h"
#include "logscript/check.h"
#include "support/demo_project.h"
#include "support/project_findings.h"
#include "text/strings.h"

namespace control {
namespace {

using model::BlockKind;
using support::findingsOf;
using text::concat;
using Texts = std::vector<std::string>;

Texts textsOf(const std::vector<PlanNote>& notes) {
  Texts texts;
  for (const PlanNote& note : notes) texts.push_back(note.text);
  return texts;
}

ProjectPlan randomPlan(std::mt19937& random) {
  const auto below = [&random](int limit) {
    return std::uniform_int_distribution<int>(0, limit - 1)(random);
  };
  ProjectPlan plan;
  plan.cpu = static_cast<std::int16_t>(1 + below(2));
  plan.scanUnits = static_cast<std::int16_t>(below(5));
  plan.scan = below(3) == 0 ? 2.5 : 1 + below(100);
  for (std::size_t m = 3; m < plan.modules.size(); ++m)
    if (below(4) == 0) plan.modules[m] = static_cast<std::int16_t>(below(3));
  for (std::size_t& count : plan.channels)
    count = below(3) == 0 ? static_cast<std::size_t>(below(18)) : 0;
  for (int i = below(20); i > 0; --i) {
    channels::PlannedChannel channel;
    channel.kind = model::allBlockKinds[static_cast<std::size_t>(below(8))];
    if (below(2) == 0) channel.name = concat("Ch_", i % 15);  // some twice
    if (below(2) == 0) channel.units = "bar";
    if (below(3) == 0) channel.multiplier = 1 + below(3);
    if (below(3) == 0) channel.offset = 1 + below(3);
    plan.list.push_back(channel);
  }
  for (int i = below(9); i > 0; --i)
    plan.tables.push_back({below(2) == 0 ? concat("Ch_", i) : "", concat(below(50)),
                           static_cast<std::int16_t>(below(6)),
                           static_cast<std::uint8_t>(below(256))});
  return plan;
}

TEST(ProjectPlans, GiveProjectsThatCheckClean) {
  std::mt19937 random(41);
  int possible = 0;
  for (int i = 0; i < 400; ++i) {
    const PlannedProject planned = projectFrom(randomPlan(random));
    if (!planned.obstacles.empty()) continue;
    ++possible;
    EXPECT_EQ(findingsOf(planned.project), Texts()) << "plan " << i;
    if (i % 20 != 0) continue;
    const std::string program = SAVEDLD::generate(planned.project, support::demoStamp()).text;
    for (const logscript::Finding& finding : logscript::check(program))
      EXPECT_NE(infoOf(finding.code).severity, logscript::Severity::error) << finding.text;
  }
  EXPECT_GT(possible, 250);
}

TEST(ProjectPlans, CountModulesAndBlocks) {
  ProjectPlan plan;
  plan.channels[static_cast<std::size_t>(BlockKind::thermocouple)] = 20;
  plan.channels[static_cast<std::size_t>(BlockKind::bridge)] = 9;
  plan.channels[static_cast<std::size_t>(BlockKind::tcmux)] = 40;
  plan.channels[static_cast<std::size_t>(BlockKind::filter)] = 7;
  const PlannedProject planned = projectFrom(plan);
  EXPECT_EQ(textsOf(planned.obstacles), Texts());
  const model::LoggerConfiguration& configuration = planned.project.configuration;
  EXPECT_TRUE(isK700X(configuration));
  EXPECT_EQ(configuration.TCMUXQty, 3);
  EXPECT_EQ(configuration.quantity(model::ModuleKindIndex::analog7121), 3);  // 20 + 9 + 6 pairs
  EXPECT_EQ(configuration.quantity(model::ModuleKindIndex::excitation7131), 2);
  EXPECT_EQ(configuration.quantity(model::ModuleKindIndex::filter7125), 2);
  EXPECT_EQ(planned.project.block(BlockKind::filter, 2).Reps, 1);
  EXPECT_EQ(textsOf(planned.remarks),
            Texts{"the CPU is the 7104, which isolated and TCMUX channels need"});

  plan.channels[static_cast<std::size_t>(BlockKind::isolated)] = 50;
  plan.tables.resize(9);
  EXPECT_EQ(textsOf(projectFrom(plan).obstacles),
            (Texts{"9 tables are more than the 8 of a logger; leave some out",
                   "50 isolated channels are more than 7 blocks hold; leave 8 out",
                   "the logger needs 14 modules, and a logger has room for 12; leave some out"}));
}

TEST(ProjectPlans, TakeTheListOfChannels) {
  const channels::PlannedList list = channels::plannedChannelsFrom(
      "Kind\tName\tUnits\tMultiplier\tOffset\r\n"
      "Voltage\tInlet\tbar\t0.5\t-1\r\n"
      "voltage\tOutlet\tbar\t2\r\n"
      "voltage\t\tmVolts\r\n"
      "bridge\tBeam\tuStrain\t\t2.1\r\n"
      "\r\n"
      "voltmeter\tX\r\n"
      "voltage\tScan\r\n"
      "voltage\tINLET\r\n"
      "voltage\tA\tm s\r\n"
      "voltage\tA\tm\t1,5\r\n"
      "voltage\tA\tm\t1\t2\t3\r\n");
  std::string faults;
  for (const channels::LineText& fault : list.faults)
    faults += concat(fault.line, " ", fault.text.substr(0, 12), ", ");
  EXPECT_EQ(
      faults,
      "7 'voltmeter' , 8 'Scan' is a , 9 'INLET' is t, 10 'm s' are no, 11 '1,5' is no , 12 6 "
      "cells wher, ");
  ProjectPlan plan;
  plan.list = list.channels;
  plan.channels[static_cast<std::size_t>(BlockKind::voltage)] = 2;  // the list has more
  plan.tables = {{"Fast", "10", 2, 8 + 2}};
  const PlannedProject planned = projectFrom(plan);
  EXPECT_EQ(textsOf(planned.remarks), Texts());
  const model::MeasurementBlock& voltages = planned.project.block(BlockKind::voltage, 1);
  ASSERT_EQ(voltages.elements.size(), 3U);
  EXPECT_EQ(voltages.Units, "bar");
  EXPECT_EQ(voltages.DefaultMult, 0.5);
  EXPECT_FALSE(voltages.elements[0].AliasExcept);
  EXPECT_EQ(voltages.elements[1].AliasName, "Outlet");
  EXPECT_TRUE(voltages.elements[1].AliasExcept);
  EXPECT_EQ(voltages.elements[1].AliasMult, 2);
  EXPECT_EQ(voltages.elements[1].AliasOffset, -1);
  EXPECT_EQ(voltages.elements[2].AliasUnits, "mVolts");
  EXPECT_EQ(voltages.elements[2].Table[0], 8 + 2);
  EXPECT_EQ(planned.project.block(BlockKind::bridge, 1).GageFactor, 2.1);
  EXPECT_EQ(planned.project.tables[0].TableName, "Fast");
  EXPECT_EQ(planned.project.tables[0].OutInt, "10");
}

TEST(ProjectPlans, LengthenIntervalsThatDoNotFit) {
  ProjectPlan plan;
  plan.scan = 1;
  plan.scanUnits = 1;  // ms
  plan.channels[static_cast<std::size_t>(BlockKind::thermocouple)] = 28;
  plan.tables = {{"", "12", 1, 1}, {"", "1", 3, 1}};
  const PlannedProject planned = projectFrom(plan);
  EXPECT_EQ(textsOf(planned.remarks),
            (Texts{"the scan interval is 5 mSec, which the measurements need",
                   "the interval of table 1 is 15 mSec, a multiple of the scan interval"}));
  EXPECT_EQ(planned.project.tables[0].OutInt, "15");

  plan.scan = 2.5;
  plan.scanUnits = 2;
  plan.channels[static_cast<std::size_t>(BlockKind::filter)] = 1;
  const model::Project half = projectFrom(plan).project;
  EXPECT_EQ(half.scan.ExecutionTime, 2500);
  EXPECT_EQ(half.scan.ExecTimeUnits, 1);
  plan.scan = 1;
  plan.scanUnits = 3;  // a minute
  const PlannedProject slow = projectFrom(plan);
  EXPECT_FALSE(slow.project.configuration.monitors(model::PowerOption::batterySaver));
  EXPECT_EQ(findingsOf(slow.project), Texts());
}

TEST(ProjectPlans, TakeTheChannelTableOfAnotherProject) {
  const model::Project before = support::demoProject();
  const auto list = channels::plannedChannelsFrom(channels::csvText(before));
  EXPECT_TRUE(list.faults.empty());
  std::size_t count = 0;
  for (const BlockKind kind : model::allBlockKinds)
    for (std::size_t n = 1; n <= blockCount(before, kind); ++n)
      count += before.block(kind, n).elements.size();
  EXPECT_EQ(list.channels.size(), count);

  ProjectPlan plan;
  plan.list = channels::plannedChannelsFrom(
                  "element,kind,alias,multiplier,own scaling,table2,colour\n"
                  "1,voltage,\"Inlet\",2,yes,sample+level crossing,red\n"
                  "2,voltage,Outlet,3,no,,\n")
                  .channels;
  plan.tables = {{}, {"Slow", "1", 4, 8}};
  const PlannedProject planned = projectFrom(plan);
  const auto& elements = planned.project.block(BlockKind::voltage, 1).elements;
  ASSERT_EQ(elements.size(), 2U);
  EXPECT_EQ(elements[0].AliasMult, 2);
  EXPECT_EQ(elements[1].AliasMult, 2);  // as the block, which is like its first channel
  EXPECT_EQ(elements[0].Table[0], 8);
  EXPECT_EQ(elements[0].Table[1], 1);
  EXPECT_EQ(elements[1].Table[1], 0);
  EXPECT_EQ(planned.remarks,
            (std::vector<PlanNote>{
                {PlanStep::list,
                 "level crossings are left out: their levels are set up with the block"}}));
}

TEST(ProjectPlans, KeepModulesThatAreThere) {
  ProjectPlan plan;
  plan.modules[static_cast<std::size_t>(model::ModuleKindIndex::analog7121)] = 1;
  plan.modules[static_cast<std::size_t>(model::ModuleKindIndex::isolation7128)] = 2;
  plan.channels[static_cast<std::size_t>(BlockKind::voltage)] = 20;
  const PlannedProject planned = projectFrom(plan);
  EXPECT_EQ(planned.project.configuration.quantity(model::ModuleKindIndex::analog7121), 2);
  EXPECT_EQ(planned.project.configuration.quantity(model::ModuleKindIndex::isolation7128), 2);
  EXPECT_EQ(textsOf(planned.remarks),
            (Texts{"the CPU is the 7104, which isolated and TCMUX channels need",
                   "the channels need 2 modules 7121/22 in place of 1"}));
}

}  // namespace
}  // namespace control
