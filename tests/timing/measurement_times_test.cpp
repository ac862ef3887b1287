#include "timing/measurement_times.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <numeric>

#include "model/time_units.h"
#include "projectfile/project_file.h"
#include "support/random_project.h"
#include "timing/execution_interval.h"
#include "timing/isolated_plan.h"
#include "timing/recorder.h"

namespace timing_test {
namespace {

using model::BlockKind;
using model::ModuleKindIndex;
using timing::TimeGroup;

model::Project roomyProject() {
  model::Project project = KGEN_COMMON::newProject();
  auto& configuration = project.configuration;
  configuration.quantity(ModuleKindIndex::cpu) = 2;
  for (const auto kind : {ModuleKindIndex::analog7121, ModuleKindIndex::excitation7131,
                          ModuleKindIndex::counter7141, ModuleKindIndex::highVoltage7127,
                          ModuleKindIndex::filter7125, ModuleKindIndex::isolation7128})
    configuration.quantity(kind) = 2;
  configuration.CanBusQty = 1;
  return project;
}

model::MeasurementBlock& addBlock(model::Project& project, BlockKind kind, std::int16_t reps) {
  model::BlockSet& set = project.set(kind);
  model::MeasurementBlock& block = set.blocks.at(static_cast<std::size_t>(set.BlockCount));
  ++set.BlockCount;
  block.Reps = reps;
  if (kind == BlockKind::filter) ++project.filterSlots[0].BlockCount;
  model::fitLists(project);
  return block;
}

void setScan(model::Project& project, double number, std::int16_t unit) {
  project.scan.ExecutionTime = number;
  project.scan.ExecTimeUnits = unit;
}

timing::MeasurementTimes timesOf(const model::Project& project) {
  return timing::measurementTimes(project, model::channelPlan(project));
}

void setUpAnalog(model::Project& project) {
  addBlock(project, BlockKind::thermocouple, 4);  // (40 + 30) x 2 + 10
  auto& single = addBlock(project, BlockKind::thermocouple, 3);
  single.MeasType = "SE";   // no reversal
  single.Range = "500 mV";  // no open-sensor detection
  addBlock(project, BlockKind::voltage, 2);
  addBlock(project, BlockKind::highVoltage, 5);  // 70 x 2
  addBlock(project, BlockKind::tcmux, 20);       // two multiplexers
  auto& volts = addBlock(project, BlockKind::tcmux, 8);
  volts.TCMUXVolts = true;                                     // without a reference
  addBlock(project, BlockKind::bridge, 2).ReverseMes = false;  // 70
  auto& full = addBlock(project, BlockKind::bridge, 1);
  full.Style = 1;  // six wires, both reversals, open sensors: 70 x 8 + 10
  full.RevExcite = full.RevOutput = full.OpenSensDetect = true;
  addBlock(project, BlockKind::bridge, 1).Style = 2;  // single-ended: 70
}

void setUpOthers(model::Project& project) {
  addBlock(project, BlockKind::pulse, 6);
  setScan(project, 50, 1);
  project.filterSlots[0].FiltFreqNum = 200;  // 10 subscans
  addBlock(project, BlockKind::filter, 3);
  project.can.CanCount = 2;
  model::fitLists(project);
  project.can.items[0].NumVals = 4;
  project.can.items[1].Enabled = false;
  project.excitation.channels[1].Include = true;
  project.excitation.channels[1].Delay = 503;
  project.ports.groups[0].ports[3].Include = true;
  project.ports.groups[2].ports[0].Include = true;
  project.flags[0].FlagInclude = true;
  project.configuration.MonitorPower[0] = project.configuration.MonitorPower[1] = true;
  model::fitLists(project);
}

TEST(MeasurementTimes, AddUpByHand) {
  model::Project project = roomyProject();
  setUpAnalog(project);
  setUpOthers(project);
  const auto times = timesOf(project);
  const std::pair<TimeGroup, double> groups[] = {
      {TimeGroup::thermocouple, 4 * 150 + 3 * 70 + 70},  // one module's reference
      {TimeGroup::voltage, 2 * 150},
      {TimeGroup::highVoltage, 5 * 140},
      {TimeGroup::tcmux, 28 * 150 + 2 * 70},
      {TimeGroup::bridge, 2 * 70 + 570 + 70},
      {TimeGroup::pulse, 60},
      {TimeGroup::filter, 3 * 15 * 10},
      {TimeGroup::can, 240},
      {TimeGroup::cao, 533},
      {TimeGroup::port, 40},
      {TimeGroup::flag, 0},
  };
  double sum = 30 + 20;
  for (const auto& [group, micros] : groups) {
    EXPECT_EQ(times.of(group), micros) << static_cast<int>(group);
    sum += micros;
  }
  EXPECT_EQ(times.total, sum);
  EXPECT_EQ(times.total, 8'373);
  EXPECT_EQ(times.shortestScan, 8'380);
  project.filterSlots[0].FiltNoSubscan = true;
  EXPECT_EQ(timesOf(project).of(TimeGroup::filter), 45);
  project.filterSlots[0].FFTModule = true;
  EXPECT_EQ(timesOf(project).of(TimeGroup::filter), 45);
}

TEST(MeasurementTimes, TheShortestScanIsLongEnoughForLoggerAndFilters) {
  model::Project project = roomyProject();
  EXPECT_EQ(timesOf(project).shortestScan, 100);
  addBlock(project, BlockKind::filter, 1);
  project.filterSlots[0].FiltFreqNum = 8'000;
  EXPECT_EQ(timesOf(project).shortestScan, 120'000);  // 8,000 times in a scan of 1 second
  setScan(project, 100, 0);
  EXPECT_EQ(timesOf(project).shortestScan, 125);
  EXPECT_EQ(timing::minimumFilterScanMicros(project), 125);
}

TEST(MeasurementTimes, PartsAgreeWithTotalsOnRandomProjects) {
  std::mt19937 random(7);
  for (int round = 0; round < 60; ++round) {
    const model::Project project =
        support::randomProject(random, {.k700x = round % 3 != 0, .fullness = 20 + round});
    const auto times = timesOf(project);
    double blocks = times.moduleReference + times.multiplexerReference;
    double isolated = 0;
    for (const BlockKind kind : model::allBlockKinds)
      for (const double time : times.blocks[static_cast<std::size_t>(kind)])
        (kind == BlockKind::isolated ? isolated : blocks) += time;
    for (const auto* list : {&times.canItems, &times.caoChannels, &times.portGroups})
      blocks = std::accumulate(list->begin(), list->end(), blocks);
    const double totals = std::accumulate(times.totals.begin(), times.totals.end(), 0.0);
    EXPECT_NEAR(blocks, totals, 1e-6);
    EXPECT_NEAR(totals + times.batteryVolts + times.batteryCurrent, times.total, 1e-6);
    EXPECT_NEAR(std::accumulate(times.isolatedSlots.begin(), times.isolatedSlots.end(), 0.0),
                isolated, 1e-6);
    EXPECT_GE(times.shortestScan, times.total);
    for (const timing::ScanLimit& limit : timing::scanLimits(project, model::channelPlan(project)))
      EXPECT_FALSE(limit.cause.empty());
  }
}

TEST(IsolatedPlans, EachBlockHasAPlannerOfItsOwn) {
  model::Project project = roomyProject();
  setScan(project, 10, 1);
  project.isolated.Integration = 1'000;
  addBlock(project, BlockKind::isolated, 6);
  auto& couples = addBlock(project, BlockKind::isolated, 2);
  couples.InputType = 1;
  couples.OpenSensDetect = true;
  addBlock(project, BlockKind::isolated, 1).OpenSensDetect = true;  // no thermocouples
  const auto plans = timing::isolatedPlans(project);
  EXPECT_EQ(plans[0].integrationMicros, 960);
  EXPECT_EQ(plans[0].measTimeAvail, 8'680);
  EXPECT_EQ(plans[0].conversionMicros, 1'320 + 46 * 96);
  EXPECT_EQ(plans[1].measTimeAvail, 7'160);
  EXPECT_EQ(plans[2].measTimeAvail, 8'680);
  EXPECT_FALSE(plans[3].inUse || plans[3].possible());
  const auto slots = timesOf(project).isolatedSlots;
  EXPECT_EQ(slots[0], plans[0].conversionMicros);
  EXPECT_EQ(slots[1], plans[1].conversionMicros + plans[2].conversionMicros);

  project.isolated.Integration = -5;
  project.isolated.ReverseMes = true;
  for (const timing::IsolatedPlan& plan : timing::isolatedPlans(project)) {
    if (!plan.inUse) continue;
    EXPECT_EQ(plan.result, plan.integrationMicros);
    EXPECT_LE(plan.conversionMicros, 10'000);
  }
  setScan(project, 1, 1);  // no plan: what is stored stays in force
  EXPECT_EQ(timing::isolatedPlans(project)[0].integrationMicros, -5);
  EXPECT_EQ(timing::isolatedPlans(project)[0].neededScanMicros, (576 + 1'740) * 2);
}

TEST(IsolatedPlans, ThePassShowsMessagesAndStoresWhatItLowered) {
  model::Project project = roomyProject();
  addBlock(project, BlockKind::isolated, 6);
  addBlock(project, BlockKind::isolated, 2);
  project.isolated.ScansPerSubScan = 2'000;
  Recorder recorder;
  const auto plans = KGEN_COMMON::PlanIsolatedBlocks(project, recorder, recorder);
  EXPECT_EQ(project.isolated.ScansPerSubScan, 1'800);
  EXPECT_EQ(recorder.messages.size(), 1U);  // the second block finds it lowered
  EXPECT_TRUE(plans[0].possible() && plans[1].possible());

  setScan(project, 31, 3);
  EXPECT_FALSE(KGEN_COMMON::PlanIsolatedBlocks(project, recorder, recorder)[0].possible());
  ASSERT_EQ(recorder.messages.size(), 2U);
  EXPECT_TRUE(recorder.messages[1].text.ends_with("scan rate is 1."));
  EXPECT_EQ(project.isolated.ScansPerSubScan, 1);

  setScan(project, 10, 0);  // too short for each of the blocks
  KGEN_COMMON::PlanIsolatedBlocks(project, recorder, recorder);
  EXPECT_EQ(recorder.messages.size(), 4U);
  project.configuration.quantity(ModuleKindIndex::cpu) = 1;  // not in use on that CPU
  KGEN_COMMON::PlanIsolatedBlocks(project, recorder, recorder);
  EXPECT_EQ(recorder.messages.size(), 4U);
}

TEST(ExecutionInterval, TellsTheFirstThingThatIsWrong) {
  struct {
    double number;
    std::int16_t unit;
    void (*change)(model::Project&);
    const char* complaint;  // part of it; "" for none
  } const cases[] = {
      {10, 0, [](model::Project&) {}, ""},
      {9, 0, [](model::Project&) {}, "is 90 uSec; the shortest is 100 uSec."},
      {1, 4, [](model::Project&) {}, ""},
      {61, 3, [](model::Project&) {}, "longer than 1 hour"},
      {31, 3, [](model::Project& p) { addBlock(p, BlockKind::isolated, 1); }, "30 minutes"},
      {1.5, 2, [](model::Project&) {}, "1.5 is not a whole number"},
      {25, 1, [](model::Project& p) { addBlock(p, BlockKind::filter, 1); },
       "25,000 uSec is not a multiple of the 10,000 uSec between the samples of 7125 module 1"},
      {25, 1,
       [](model::Project& p) {
         addBlock(p, BlockKind::filter, 1);
         p.filterSlots[0].FiltNoSubscan = true;
       },
       ""},
      {1, 2, [](model::Project& p) { p.scan.ScanMode = 1; }, "at least 1 scan"},
      {1, 2,
       [](model::Project& p) {
         addBlock(p, BlockKind::voltage, 28);
         p.scan.ScanMode = 1;
         p.scan.ScanBufferSize = 32'767;
       },
       ""},
      {1, 2,
       [](model::Project& p) {
         addBlock(p, BlockKind::voltage, 28);
         addBlock(p, BlockKind::pulse, 16);
         p.scan.ScanMode = 1;
         p.scan.ScanBufferSize = 32'767;
       },
       "takes 6,029,128 bytes; CPU S-Ram holds 4,000,000"},
  };
  for (const auto& each : cases) {
    model::Project project = roomyProject();
    setScan(project, each.number, each.unit);
    each.change(project);
    const std::string complaint = timing::complaintAboutScan(project).value_or("");
    EXPECT_EQ(complaint.empty(), std::string(each.complaint).empty()) << complaint;
    EXPECT_NE(complaint.find(each.complaint), std::string::npos) << complaint;
  }
}

TEST(ExecutionInterval, ExamplesKeepToTheirLimits) {
  for (const auto& file : std::filesystem::directory_iterator(KGEN_EXAMPLES_DIR)) {
    if (file.path().extension() != ".GN7") continue;
    SCOPED_TRACE(file.path());
    model::Project project = KGEN_COMMON::newProject();
    ASSERT_FALSE(KGEN_GENFILE::loadInPlace(file.path().string(), project, {}).error);
    EXPECT_EQ(timing::complaintAboutScan(project), std::nullopt);
    const model::ChannelPlan plan = model::channelPlan(project);
    EXPECT_EQ(timing::warningAboutEstimate(project, plan), std::nullopt);
    for (const timing::ScanLimit& limit : timing::scanLimits(project, plan)) {
      if (limit.mostMicros == timing::longestSlowSequenceScanMicros) continue;  // may be exceeded
      EXPECT_GE(model::scanMicros(project), limit.leastMicros) << limit.cause;
      EXPECT_TRUE(limit.mostMicros == 0 || model::scanMicros(project) <= limit.mostMicros);
    }
  }
}

}  // namespace
}  // namespace timing_test
