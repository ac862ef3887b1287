#include "model/stored_outputs.h"

#include <gtest/gtest.h>

namespace model {
namespace {

Project projectWithVoltages(int reps) {
  Project project;
  KGEN_COMMON::SetAllDefaults(project);
  project.configuration.quantity(ModuleKindIndex::analog7121) = 1;
  project.set(BlockKind::voltage).BlockCount = 1;
  project.block(BlockKind::voltage, 1).Reps = static_cast<std::int16_t>(reps);
  fitLists(project);
  return project;
}

std::int32_t bytesOf(const Project& project, std::size_t table) {
  std::int32_t bytes = 0;
  KGEN_COMMON::BytesPerRecord(project, table, bytes);
  return bytes;
}

constexpr std::uint8_t sample = 1, average = 8, histogram = 32, rainflow = 64, crossing = 128;

TEST(ValuesPerOutput, CountsBinsAndDimensions) {
  using KGEN_COMMON::ValuesPerOutput;
  EXPECT_EQ(ValuesPerOutput(false, 0, "", "", ""), 0U);
  for (int code = 0; code <= 4; ++code) EXPECT_EQ(ValuesPerOutput(true, code, "", "", ""), 1U);
  EXPECT_EQ(ValuesPerOutput(true, 5, "12,0,100,0", "", ""), 12U);
  EXPECT_EQ(ValuesPerOutput(true, 5, "-3", "", ""), 0U);
  const std::pair<std::string_view, std::size_t> dimensions[] = {
      {"10,5,0,0", 50}, {"10 x 5", 50}, {"10 by 5", 50}, {"7", 7}, {"", 1}, {"n=4", 4}};
  for (const auto& [text, values] : dimensions) {
    EXPECT_EQ(ValuesPerOutput(true, 6, "", text, ""), values) << text;
    EXPECT_EQ(ValuesPerOutput(true, 7, "", "", text), values) << text;
  }
  for (const int code : {-1, 8}) EXPECT_EQ(ValuesPerOutput(true, code, "1", "1", "1"), 0U);
}

TEST(RecordSize, SumsEveryProcessingOfEveryChannel) {
  Project project = projectWithVoltages(3);
  MeasurementBlock& block = project.block(BlockKind::voltage, 1);
  EXPECT_EQ(bytesOf(project, 2), 0);
  for (Element& element : block.elements) element.Table[1] = sample | average;
  EXPECT_EQ(bytesOf(project, 2), 12);
  EXPECT_EQ(bytesOf(project, 1), 0);
  block.elements[2].Table[1] = crossing | rainflow | histogram;
  block.processing[1].LevelCode = "10,5,0,0";
  block.processing[1].RainHistoCode = "2,3,0,1,0,0";
  block.processing[1].HistogramCode = "4,0,1,0";
  EXPECT_EQ(bytesOf(project, 2), (4 + 50 + 6 + 4) * 2);
  EXPECT_EQ(KGEN_COMMON::FieldsPerRecord(project, 2), 64U);
  block.DataResolution = "ieee4";
  EXPECT_EQ(bytesOf(project, 2), 0);
  block.DataResolution = "IEEE4";
  block.Reps = 2;
  fitLists(project);
  EXPECT_EQ(bytesOf(project, 2), 16);
}

TEST(StoredGroups, AreWholeWhereEveryChannelIsStored) {
  Project project = projectWithVoltages(2);
  auto& elements = project.block(BlockKind::voltage, 1).elements;
  elements[0].Table[0] = sample | average;
  elements[1].Table[0] = average;
  const auto groups = storedGroups(project, channelPlan(project), 1);
  ASSERT_EQ(groups.size(), 1U);
  const auto& outputs = groups[0].outputs;
  ASSERT_EQ(outputs.size(), 2U);
  EXPECT_EQ(outputs[0].code, 0);
  EXPECT_EQ(outputs[0].element, 1U);
  EXPECT_EQ(outputs[1].code, 3);
  EXPECT_EQ(outputs[1].element, 0U);
  EXPECT_EQ(outputs[1].count, 2U);
}

TEST(StoredGroups, StandInTheOrderOfTheRecord) {
  Project project = projectWithVoltages(1);
  project.configuration.quantity(ModuleKindIndex::cpu) = 2;
  project.configuration.CanBusQty = 1;
  project.block(BlockKind::voltage, 1).elements[0].Table[0] = sample;
  project.set(BlockKind::thermocouple).BlockCount = 1;
  project.block(BlockKind::thermocouple, 1).Reps = 1;
  project.can.CanCount = 2;
  project.calculated.CalcFieldCount = 1;
  fitLists(project);
  project.block(BlockKind::thermocouple, 1).elements[0].Table[0] = sample;
  project.tcReference.Table[0] = sample;
  for (PowerOutSet& set : project.powerOut.sets) set.Table[0] = sample;
  for (CanItem& item : project.can.items) item.values[0].Table[0] = sample;
  project.can.items[0].DataStyle = 1;  // only sends
  project.calculated.fields[0].CalcField[0] = sample;
  std::vector<StoredSource> sources;
  for (const StoredGroup& group : storedGroups(project, channelPlan(project), 1))
    sources.push_back(group.source);
  EXPECT_EQ(sources,
            (std::vector{StoredSource::batteryCurrent, StoredSource::batteryVolts,
                         StoredSource::block, StoredSource::tcReference, StoredSource::block,
                         StoredSource::canItem, StoredSource::calculatedField}));
  EXPECT_EQ(bytesOf(project, 1), 2 * 6 + 4);
}

TEST(FftOutputs, StoreBinsOrTheTimeSeries) {
  Project project;
  KGEN_COMMON::SetAllDefaults(project);
  project.configuration.quantity(ModuleKindIndex::filter7125) = 1;
  project.filterSlots[0] = {.BlockCount = 1, .FFTType = 1, .FFTLength = 256, .FFTModule = true};
  MeasurementBlock& block = project.block(BlockKind::filter, 1);
  block.Reps = 2;
  block.ILow = 11;
  block.IHigh = 20;
  fitLists(project);
  block.elements[1].Table[0] = sample;
  EXPECT_EQ(bytesOf(project, 1), 40);
  project.filterSlots[0].FFTType = 0;
  EXPECT_EQ(bytesOf(project, 1), 1024);
}

}  // namespace
}  // namespace model
