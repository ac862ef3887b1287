#include "model/block_rules.h"

#include <gtest/gtest.h>

#include <random>

#include "model/channel_plan.h"
#include "model/free_channels.h"
#include "support/demo_project.h"
#include "support/random_project.h"

namespace model {
namespace {

using enum BlockKind;
using Module = ModuleKindIndex;

std::string textOf(const std::optional<ports::Message>& message) {
  return message ? message->title + ": " + message->text : "";
}

TEST(FreeChannels, FollowModulesAndTheOtherBlocks) {
  Project project = support::projectWith(2, {Module::analog7121, Module::excitation7131});
  EXPECT_EQ(freeChannelsFor(project, thermocouple, 1), 14U);
  support::addBlock(project, voltage, 1, 5).MeasType = "SE";
  EXPECT_EQ(freeChannelsFor(project, thermocouple, 1), 11U);  // 28 - 5 = 23 positions
  EXPECT_EQ(freeChannelsFor(project, voltage, 1), 28U);       // its own present ones count as free
  EXPECT_EQ(freeChannelsFor(project, voltage, 8), 0U);
  EXPECT_EQ(freeChannelsFor(project, highVoltage, 1), 0U);
  MeasurementBlock& bridge = support::addBlock(project, BlockKind::bridge, 1, 1);
  EXPECT_EQ(freeChannelsFor(project, BlockKind::bridge, 1), 8U);  // excitations
  bridge.ExciteReps = 4;
  EXPECT_EQ(freeChannelsFor(project, BlockKind::bridge, 1), 11U);
  bridge.Style = 1;  // six wires: two pairs each
  EXPECT_EQ(freeChannelsFor(project, BlockKind::bridge, 1), 5U);
  bridge.CheckCAO = true;
  bridge.ExciteReps = 1;
  EXPECT_EQ(freeChannelsFor(project, BlockKind::bridge, 1), 4U);
  project.excitation.channels.resize(4);
  project.excitation.channels[1].Include = true;  // takes the output behind those of bridges
  EXPECT_EQ(freeChannelsFor(project, BlockKind::bridge, 1), 2U);
  project.configuration.AutoChan = false;  // each block on a module of its own
  EXPECT_EQ(freeChannelsFor(project, BlockKind::bridge, 1), 0U);
}

TEST(FreeChannels, OfModulesThatBlocksDoNotSpan) {
  Project project = support::projectWith(
      2, {Module::counter7141, Module::counter7141, Module::filter7125, Module::isolation7128});
  fitLists(project);
  support::addBlock(project, pulse, 1, 10);
  EXPECT_EQ(freeChannelsFor(project, pulse, 2), 16U);  // on the second module
  EXPECT_EQ(freeChannelsFor(project, pulse, 7), 0U);
  project.ports.groups[1].ports[7].Include = true;  // channel 16 of the first
  EXPECT_EQ(freeChannelsFor(project, pulse, 1), 15U);
  EXPECT_EQ(freeChannelsFor(project, isolated, 1), 6U);
  EXPECT_EQ(freeChannelsFor(project, filter, 1), 0U);  // no slot has such a block yet
  project.filterSlots[0].BlockCount = 2;
  project.block(filter, 1).Reps = 4;
  EXPECT_EQ(freeChannelsFor(project, filter, 2), 2U);
  EXPECT_EQ(freeChannelsOfFilterSlot(project, 1), 2U);
  EXPECT_EQ(freeChannelsOfFilterSlot(project, 2), 0U);  // no such module
  project.configuration.quantity(Module::cpu) = 1;
  EXPECT_EQ(freeChannelsFor(project, isolated, 1), 0U);
}

TEST(FreeChannels, OfMultiplexersFollowThoseOfTheLogger) {
  Project project = support::projectWith(2, {Module::analog7121, Module::excitation7131});
  EXPECT_EQ(textOf(complaintAboutNewBlock(project, tcmux)),
            "NO MODULE: Please add a TCMUX module first.");
  project.configuration.TCMUXQty = 3;
  EXPECT_FALSE(complaintAboutNewBlock(project, tcmux));
  EXPECT_EQ(freeChannelsFor(project, tcmux, 1), 48U);
  support::addBlock(project, tcmux, 1, 17);  // two of them
  EXPECT_EQ(freeChannelsFor(project, tcmux, 2), 16U);
  fitLists(project);
  project.ports.groups[0].ports[3].Include = true;  // the control line of the third
  EXPECT_EQ(freeChannelsFor(project, tcmux, 2), 0U);
}

TEST(FreeChannels, NeverTurnAwayABlockThatFits) {
  std::mt19937 random(7);
  for (int i = 0; i < 60; ++i) {
    Project project = support::randomProject(random);
    ASSERT_TRUE(channelPlan(project).problems.empty());
    project.configuration.TCMUXQty = 100;
    for (const BlockKind kind : allBlockKinds)
      for (std::size_t n = 1; n <= blockCount(project, kind); ++n) {
        if (!inUse(project, kind, n)) continue;
        const std::size_t most = freeChannelsFor(project, kind, n);
        EXPECT_LE(static_cast<std::size_t>(project.block(kind, n).Reps), most)
            << infoOf(kind).name << n;
        Project fuller = project;
        fuller.block(kind, n).Reps = static_cast<std::int16_t>(most);
        EXPECT_TRUE(channelPlan(fuller).problems.empty()) << infoOf(kind).name << n;
        if (most == maxElements) continue;
        ++fuller.block(kind, n).Reps;
        EXPECT_EQ(textOf(complaintAboutReps(fuller, kind, n)),
                  "NOT ENOUGH CHANNELS: Not enough channels: " + std::to_string(most) + " free.");
      }
  }
}

TEST(NewBlocks, NeedTheirModulesAndANumber) {
  Project project = support::projectWith(1, {Module::analog7121});
  const std::pair<BlockKind, std::string> cases[] = {
      {thermocouple, ""},
      {bridge, "NO MODULE: Please add a 7131 module first."},
      {pulse, "NO MODULE: Please add a 7141/42 module first."},
      {highVoltage, "NO MODULE: Please add a 7127 module first."},
      {isolated, "NO MODULE: Please add a 7104 CPU module first."}};
  for (const auto& [kind, text] : cases)
    EXPECT_EQ(textOf(complaintAboutNewBlock(project, kind)), text);
  project.set(voltage).BlockCount = 7;
  EXPECT_EQ(textOf(complaintAboutNewBlock(project, voltage)),
            "TOO MANY: The limit of 7 blocks is reached.");
  project.configuration.quantity(Module::counter7141) = 1;
  project.set(pulse).BlockCount = 6;
  EXPECT_EQ(textOf(complaintAboutNewBlock(project, pulse)),
            "TOO MANY: The limit of 6 blocks is reached.");
  EXPECT_EQ(textOf(complaintAboutCan(project)), "NO MODULE: Please add a CANIF module first.");
}

TEST(BlockBounds, DependOnKindAndBlock) {
  EXPECT_EQ(boundsOf(voltage, BlockField::SettleTime), (FieldBounds{0, 1'000'000, 10}));
  EXPECT_FALSE(hasField(pulse, BlockField::SettleTime));
  EXPECT_FALSE(hasField(thermocouple, BlockField::ZeroFlag));
  Project project = support::projectWith(2, {Module::filter7125});
  project.filterSlots[0] = {.BlockCount = 1, .FFTType = 1, .FFTLength = 256, .FFTModule = true};
  MeasurementBlock& block = support::addBlock(project, filter, 1, 2);
  block.ILow = 10;
  block.IHigh = 100;
  EXPECT_EQ(boundsIn(project, filter, 1, BlockField::Reps), (FieldBounds{0, 6, 1}));
  EXPECT_EQ(boundsIn(project, filter, 1, BlockField::ILow), (FieldBounds{1, 100, 1}));
  EXPECT_EQ(boundsIn(project, filter, 1, BlockField::IHigh), (FieldBounds{10, 128, 1}));
  EXPECT_FALSE(firstProblemOfBlock(project, filter, 1));
  block.IHigh = 129;
  EXPECT_EQ(textOf(firstProblemOfBlock(project, filter, 1)),
            "OUT OF RANGE: '129' is not possible: the last bin is a number from 10 to 128.");
  project.filterSlots[0].FFTType = 0;  // no bins
  EXPECT_FALSE(firstProblemOfBlock(project, filter, 1));
}

TEST(BlockProblems, AreToldOneByOne) {
  Project project = support::projectWith(2, {Module::analog7121, Module::excitation7131});
  MeasurementBlock& block = support::addBlock(project, bridge, 1, 9);
  const auto problem = [&] { return textOf(firstProblemOfBlock(project, bridge, 1)); };
  EXPECT_EQ(problem(), "NOT ENOUGH CHANNELS: Not enough channels: 8 free.");
  block.ExciteReps = 10;
  EXPECT_TRUE(problem().find("from 1 to 9") != std::string::npos) << problem();
  block.ExciteReps = 9;
  EXPECT_EQ(problem(), "");
  block.Style = 5;
  block.GageFactor = 0;
  EXPECT_TRUE(problem().starts_with("OUT OF RANGE: '0' is not possible: the gauge factor"));
  block.Style = 0;  // measures no strain
  block.Range = "3 mV";
  EXPECT_TRUE(problem().starts_with("WRONG RANGE: '3 mV'")) << problem();
  block.Range = "50 mV";
  block.elements[2].AliasName = "Sample";
  EXPECT_TRUE(problem().starts_with("WRONG NAME: 'Sample'")) << problem();
  project.set(bridge).BlockCount = 0;
  EXPECT_EQ(problem(), "");
}

TEST(BlockProblems, AreNoneInARandomProjectThatIsValid) {
  std::mt19937 random(11);
  for (int i = 0; i < 60; ++i) {
    Project project = support::randomProject(random);
    project.configuration.TCMUXQty = 100;
    for (const BlockKind kind : allBlockKinds)
      for (std::size_t n = 1; n <= blockCount(project, kind); ++n)
        EXPECT_EQ(textOf(firstProblemOfBlock(project, kind, n)), "") << infoOf(kind).name << n;
  }
}

}  // namespace
}  // namespace model
