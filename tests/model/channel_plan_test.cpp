#include "model/channel_plan.h"

#include <gtest/gtest.h>

#include <random>

namespace model {
namespace {

using enum BlockKind;

Project logger(std::initializer_list<std::pair<ModuleKindIndex, int>> modules, int cpu = 2) {
  Project project;
  KGEN_COMMON::SetAllDefaults(project);
  project.configuration.quantity(ModuleKindIndex::cpu) = static_cast<std::int16_t>(cpu);
  for (const auto& [kind, count] : modules)
    project.configuration.quantity(kind) = static_cast<std::int16_t>(count);
  return project;
}

MeasurementBlock& add(Project& project, BlockKind kind, int reps, std::string type = "Diff") {
  BlockSet& set = project.set(kind);
  MeasurementBlock& block = set.blocks[static_cast<std::size_t>(set.BlockCount++)];
  block.Reps = static_cast<std::int16_t>(reps);
  block.MeasType = std::move(type);
  block.elements.resize(static_cast<std::size_t>(reps));
  return block;
}

TEST(Slots, FillInTheOrderOfModuleKinds) {
  const Project project = logger({{ModuleKindIndex::isolation7128, 2},
                                  {ModuleKindIndex::adaptor7151, 1},
                                  {ModuleKindIndex::analog7121, 7},
                                  {ModuleKindIndex::filter7125, 2}});
  const int kinds[] = {-1, 0, 1, 2, 3, 4, 4, 4, 4, 4, 4, 4, 8, 8, 9, 9, -1};
  for (int slot = 0; slot <= 16; ++slot)
    EXPECT_EQ(moduleInSlot(project.configuration, slot), kinds[slot]) << slot;
  EXPECT_EQ(firstSlot(project.configuration, ModuleKindIndex::isolation7128), 14);
}

TEST(AnalogChannels, RunOnFromBlockToBlock) {
  Project project = logger({{ModuleKindIndex::adaptor7151, 1}, {ModuleKindIndex::analog7121, 2}});
  project.configuration.quantity(ModuleKindIndex::excitation7131) = 1;
  add(project, thermocouple, 3);              // positions 0 to 5
  add(project, voltage, 5, "SE");             // 6 to 10
  add(project, voltage, 2);                   // 12 to 15
  add(project, bridge, 2).Style = 1;          // six wires, 16 to 23
  add(project, bridge, 3, "SE").Style = 3;    // three wires, 24 to 29
  add(project, bridge, 1, "Diff").Style = 2;  // half bridge: single-ended, 30
  project.block(bridge, 2).ExciteReps = 2;
  project.block(bridge, 3).CheckCAO = true;
  const ChannelPlan plan = channelPlan(project);
  EXPECT_EQ(plan.of(thermocouple, 1).first, (Place{5, 1}));
  EXPECT_EQ(plan.of(thermocouple, 1).reference, 1);
  EXPECT_EQ(plan.of(voltage, 1).first, (Place{5, 7}));
  EXPECT_EQ(plan.of(voltage, 2).first, (Place{5, 7}));
  EXPECT_EQ(plan.of(bridge, 1).first, (Place{5, 9}));
  EXPECT_EQ(plan.of(bridge, 2).first, (Place{5, 25}));
  EXPECT_EQ(plan.of(bridge, 3).first, (Place{6, 3}));
  EXPECT_EQ(plan.of(bridge, 1).excitation, (Place{7, 1}));
  EXPECT_EQ(plan.of(bridge, 2).excitation, (Place{7, 3}));
  EXPECT_EQ(plan.of(bridge, 3).excitation, (Place{7, 9}));
  EXPECT_EQ(placeOfElement(project, plan, bridge, 2, 3), (Place{6, 1}));
  EXPECT_EQ(placeOfElement(project, plan, bridge, 1, 2), (Place{5, 11}));
  EXPECT_EQ(placeOfExcitation(project, plan, 1), (Place{7, 2}));
  EXPECT_EQ(plan.totals.TotAnalogChans, 16);
  EXPECT_EQ(plan.totals.TotExcitChans, 4);
  EXPECT_EQ(plan.free.differential, 12);
  EXPECT_EQ(plan.free.excitation, 4);
  EXPECT_EQ(plan.free.cao, 3);
  EXPECT_TRUE(plan.problems.empty());
}

TEST(AnalogChannels, FollowTheRunningPositionForAnyBlocks) {
  std::mt19937 random(3);
  for (int round = 0; round < 200; ++round) {
    Project project = logger({{ModuleKindIndex::analog7121, 12}});
    int position = 0;
    std::vector<Place> expected;
    for (int b = 0; b < 7; ++b) {
      const bool differential = random() % 2 == 0;
      const int reps = static_cast<int>(random() % 20) + 1;
      add(project, voltage, reps, differential ? "diff" : "se");
      const int width = differential ? 2 : 1;
      if (differential && position % 2 == 1) ++position;
      const int channel = position / width + 1;
      const int perModule = 28 / width;
      const int wrapped = channel % perModule == 0 ? perModule : channel % perModule;
      expected.push_back({4 + (channel - 1) / perModule, wrapped});
      position += reps * width;
    }
    const ChannelPlan plan = channelPlan(project);
    for (std::size_t b = 0; b < expected.size(); ++b)
      EXPECT_EQ(plan.of(voltage, b + 1).first, expected[b]);
    EXPECT_EQ(plan.free.differential, (12 * 28 - position) / 2);
  }
}

TEST(AnalogChannels, BeginOnAModuleEachWithoutAutomaticChannels) {
  Project project = logger({{ModuleKindIndex::analog7121, 2}, {ModuleKindIndex::filter7125, 1}});
  project.configuration.AutoChan = false;
  add(project, thermocouple, 2);
  add(project, voltage, 2, "SE");
  const ChannelPlan plan = channelPlan(project);
  EXPECT_EQ(plan.of(voltage, 1).first, (Place{5, 1}));
  EXPECT_EQ(plan.free.differential, 13);
  add(project, voltage, 1);
  EXPECT_EQ(channelPlan(project).problems.size(), 1U);
}

TEST(Multiplexers, ShareClockAndExcitationInGroupsOfSeven) {
  Project project =
      logger({{ModuleKindIndex::analog7121, 2}, {ModuleKindIndex::excitation7131, 2}});
  add(project, tcmux, 16 * 7);
  add(project, tcmux, 20);  // two more, the last one scans 8
  const ChannelPlan plan = channelPlan(project);
  ASSERT_EQ(plan.multiplexers, 9);
  const auto& first = plan.of(tcmux, 1).multiplexers;
  const auto& second = plan.of(tcmux, 2).multiplexers;
  EXPECT_EQ(first[0].common, (Place{4, 1}));
  EXPECT_EQ(first[0].reference, (Place{4, 3}));
  EXPECT_EQ(first[6].common, (Place{4, 13}));
  EXPECT_EQ(first[6].clockLine, 1);
  EXPECT_EQ(first[6].resetLine, 8);
  EXPECT_EQ(first[6].controlSlot, 6);
  EXPECT_EQ(first[6].excitation, (Place{6, 1}));
  EXPECT_EQ(second[0].common, (Place{5, 1}));
  EXPECT_EQ(second[0].controlSlot, 7);
  EXPECT_EQ(second[0].clockLine, 1);
  EXPECT_EQ(second[0].resetLine, 2);
  EXPECT_EQ(second[0].excitation, (Place{6, 2}));
  EXPECT_EQ(second[1].resetLine, 3);
  EXPECT_EQ(second[1].firstElement, 17U);
  EXPECT_EQ(second[0].channels, 16);
  EXPECT_EQ(second[1].channels, 8);
  EXPECT_EQ(plan.free.differential, 10);
  EXPECT_EQ(plan.free.control, 5);
  EXPECT_TRUE(plan.problems.empty());
  project.configuration.quantity(ModuleKindIndex::cpu) = 1;  // measures no multiplexers
  EXPECT_EQ(channelPlan(project).multiplexers, 0);
}

TEST(ModuleBlocks, StayWithinOneModule) {
  Project project = logger({{ModuleKindIndex::counter7141, 2},
                            {ModuleKindIndex::highVoltage7127, 1},
                            {ModuleKindIndex::filter7125, 2},
                            {ModuleKindIndex::isolation7128, 2}});
  for (const int reps : {10, 4, 3}) add(project, pulse, reps);
  add(project, highVoltage, 3, "SE");
  add(project, highVoltage, 2);
  add(project, isolated, 4);
  add(project, isolated, 3).InputType = 1;
  project.filterSlots[0].BlockCount = 2;
  project.filterSlots[1].BlockCount = 1;
  for (const int reps : {2, 3, 6}) add(project, filter, reps);
  const ChannelPlan plan = channelPlan(project);
  EXPECT_EQ(plan.of(pulse, 2).first, (Place{4, 11}));
  EXPECT_EQ(plan.of(pulse, 3).first, (Place{5, 1}));
  EXPECT_EQ(plan.of(highVoltage, 2).first, (Place{6, 3}));
  EXPECT_EQ(plan.of(filter, 2).first, (Place{7, 3}));
  EXPECT_EQ(plan.of(filter, 3).first, (Place{8, 1}));
  EXPECT_EQ(plan.of(isolated, 2).first, (Place{10, 1}));
  EXPECT_EQ(plan.of(isolated, 2).reference, 1);
  EXPECT_EQ(plan.isoTcSlots, std::vector{10});
  EXPECT_EQ(plan.totals.TotFiltChans, 11);
  EXPECT_EQ(plan.free.counters, 32 - 17);
  EXPECT_TRUE(plan.problems.empty());
  project.block(isolated, 1).Reps = 7;
  EXPECT_FALSE(channelPlan(project).problems.empty());
}

}  // namespace
}  // namespace model
