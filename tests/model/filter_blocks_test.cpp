#include "model/filter_blocks.h"

#include <gtest/gtest.h>

namespace {

using model::BlockKind;
using model::Project;

/// Two modules with voltage filters and one with FFT; blocks are told apart by their channels.
Project threeModules() {
  Project project = KGEN_COMMON::newProject();
  project.configuration.quantity(model::ModuleKindIndex::filter7125) = 3;
  const std::int16_t counts[] = {2, 1, 1};
  for (std::size_t s = 0; s < 3; ++s) project.filterSlots[s].BlockCount = counts[s];
  project.filterSlots[2].FFTModule = true;
  for (std::int16_t n = 1; n <= 4; ++n) project.block(BlockKind::filter, n).Reps = n;
  return project;
}

std::vector<int> channelsOf(const Project& project) {
  std::vector<int> channels;
  for (std::size_t n = 1; n <= model::blockCount(project, BlockKind::filter); ++n)
    channels.push_back(project.block(BlockKind::filter, n).Reps);
  return channels;
}

TEST(FilterBlocks, ComeAndGoWithinTheirSlot) {
  for (const auto& [slot, number, channels] :
       {std::tuple{1, 3, std::vector{1, 2, 0, 3, 4}}, std::tuple{2, 4, std::vector{1, 2, 3, 0, 4}},
        std::tuple{3, 5, std::vector{1, 2, 3, 4, 0}}}) {
    SCOPED_TRACE(slot);
    const Project before = threeModules();
    Project project = before;
    const auto at = static_cast<std::size_t>(slot);
    ASSERT_EQ(model::addFilterBlock(project, at), static_cast<std::size_t>(number));
    EXPECT_EQ(channelsOf(project), channels);
    EXPECT_EQ(model::filterSlotOf(project, static_cast<std::size_t>(number)), at);
    EXPECT_TRUE(model::isFft(project, 5));
    model::removeFilterBlock(project, static_cast<std::size_t>(number));
    EXPECT_EQ(project, before);
  }
}

TEST(FilterBlocks, TheFirstOneOfASlotComesBehindThoseOfEarlierSlots) {
  Project project = threeModules();
  model::removeFilterBlock(project, 3);  // the second slot has none then
  EXPECT_EQ(channelsOf(project), (std::vector{1, 2, 4}));
  EXPECT_EQ(model::addFilterBlock(project, 2), 3U);
  EXPECT_EQ(channelsOf(project), (std::vector{1, 2, 0, 4}));
}

TEST(FilterBlocks, NeedAModuleAndRoom) {
  Project project = threeModules();
  EXPECT_EQ(model::complaintAboutNewFilterBlock(project, 3), std::nullopt);
  EXPECT_EQ(model::complaintAboutNewFilterBlock(project, 4)->title, "NO MODULE");
  project.filterSlots[0].BlockCount = 5;
  EXPECT_EQ(model::complaintAboutNewFilterBlock(project, 3)->title, "TOO MANY");
}

TEST(FilterBlocks, LengthsOfFftArePowersOfTwo) {
  for (const auto& [samples, length] :
       {std::pair{1.0, 32}, {32, 32}, {300, 256}, {400, 512}, {8192, 8192}, {1e6, 8192}})
    EXPECT_EQ(model::nearestFftLength(samples), length) << samples;
  Project project = threeModules();
  model::MeasurementBlock& spectrum = project.block(BlockKind::filter, 4);
  spectrum.ILow = 200;
  spectrum.IHigh = 500;
  model::setFftLength(project, 3, 256);
  EXPECT_EQ(spectrum.IHigh, 128);
  EXPECT_EQ(spectrum.ILow, 128);
  EXPECT_EQ(project.block(BlockKind::filter, 3).IHigh, 512);  // of another slot
}

}  // namespace
