#include "model/data_objects.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "model/output_table.h"

namespace model {
namespace {

TEST(IntegrationStepping, FollowsModeAndInput) {
  struct Case {
    int mode;
    InputKind input;
    std::int32_t from;
    int step;
    std::int32_t to;
  };
  using enum InputKind;
  const Case cases[] = {
      {1, analog7121, 250, 1, 500},    {1, analog7121, 500, -1, 200},
      {1, analog7121, 200, -1, 100},   {1, analog7121, 240, 1, 250},
      {1, analog7121, 600, -1, 10},    {1, analog7121, 1'000'000, 1, 1'000'000},
      {1, analog7121, 1500, -1, 1000}, {0, analog7121, 10, -1, 10},
      {0, analog7121, 40, 1, 50},      {-1, highVoltage7127, 40, -1, 30},
      {0, isolated7128, 960, 1, 1056}, {0, isolated7128, 96, -1, 96},
      {0, isolated7128, -3, 1, 96},    {1, isolated7128, 10'000'000, 1, 10'000'000},
      {1, isolated7128, 600, -1, 96},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.from);
    cAnalogConfig analog;
    analog.SetMode(static_cast<std::int16_t>(c.mode), 0);
    analog.setInput(c.input, BlockKind::voltage);
    ASSERT_TRUE(analog.IntegTime(c.from));
    const std::int32_t from = analog.IntegTime();
    EXPECT_EQ(analog.IntegIncDec(c.step), c.to) << from;
    EXPECT_EQ(analog.IntegTime(), c.to);
  }
}

TEST(IntegrationTime, IsWhatCodeAndModuleAllow) {
  struct Case {
    int code;
    std::int32_t typed, stored;
    InputKind input;
    bool accepted;
  };
  using enum InputKind;
  const Case cases[] = {
      {0, 96, 20000, isolated7128, true},    {1, -5, 16670, analog7121, true},
      {2, 47, 40, analog7121, true},         {2, 9, 0, unset, true},
      {2, -10, 40, highVoltage7127, false},  {2, 1000, 960, isolated7128, true},
      {2, -5, -5, isolated7128, true},       {2, 20000, 19968, isolated7128Stepped, true},
      {2, 5, 96, isolated7128Stepped, true}, {2, -1, 40, isolated7128Stepped, false},
  };
  for (const Case& c : cases) {
    cAnalogConfig analog;
    analog.IntegTime(40);
    analog.setInput(c.input, BlockKind::voltage);
    if (c.code != 2) analog.IntegCode(static_cast<std::int16_t>(c.code));
    EXPECT_EQ(analog.IntegTime(c.typed), c.accepted) << c.typed;
    EXPECT_EQ(analog.IntegTime(), c.stored) << c.typed;
  }
}

TEST(MeasurementTime, DoublesForReversalAndAddsTheOpenSensorCheck) {
  cKGenData object;
  object.SetMode(DataObjectType::voltage, 1, 0);
  object.Reps(3);
  cAnalogConfig& analog = *object.Analog();
  analog.ReverseMes(true);
  analog.OpenSensDetect(true);
  EXPECT_EQ(object.MeasTime(), 150);
  EXPECT_EQ(object.BlockTime(), 450);
  analog.RangeIndex(3);  // 2 Volts: no open-sensor detection
  EXPECT_EQ(object.MeasTime(), 140);
  analog.MeasureType(1);  // single-ended: no reversal
  EXPECT_EQ(object.MeasTime(), 70);
  EXPECT_EQ(analog.SettleIncDec(-1), 20);
  EXPECT_EQ(object.MeasTime(), 60);
}

TEST(TemperatureScale, SetsTheScalingOnlyWhenItChanges) {
  MeasurementBlock block = defaultBlock(BlockKind::thermocouple);
  block.DefaultMult = 1.23456789012;
  const auto object = dataObjectOf(block, BlockKind::thermocouple, 2);
  MeasurementBlock written = block;
  writeScaling(*object, written);
  EXPECT_EQ(written, block);  // nothing edited
  int changes = 0;
  object->onChange = [&] { ++changes; };
  const auto clone = object->Clone();  // has configuration and scaling of its own
  object->Analog()->TempScale(2);
  object->Analog()->TempScale(2);
  EXPECT_EQ(changes, 1);
  writeScaling(*object, written);
  EXPECT_EQ(written.DefaultMult, 1.0);
  EXPECT_EQ(written.DefaultOffset, 273.16);
  object->Analog()->TempScale(3);
  writeScaling(*object, written);
  EXPECT_EQ(written.DefaultMult, 1.8);
  EXPECT_EQ(written.DefaultOffset, 491.72);
  EXPECT_EQ(clone->Offset(), 32);
  clone->Analog()->TempScale(1);
  EXPECT_EQ(clone->Offset(), 32);
  EXPECT_EQ(changes, 2);
}

TEST(ScalingSteps, MoveTheSecondDigit) {
  cKGenData object;
  const std::tuple<double, int, float> cases[] = {
      {1, 1, 1.1F}, {1, -1, 0.9F}, {0, 1, 0.1F}, {-250, 1, -240}, {0.0123, 1, 0.0133F}};
  for (const auto& [from, step, to] : cases) {
    object.Multiplier(from);
    EXPECT_EQ(object.MultIncDec(step), to);
  }
}

TEST(DataObject, OwnsTheConfigurationOfItsType) {
  cKGenData object;
  for (std::int16_t type = 0; type <= 15; ++type) {
    object.SetMode(static_cast<DataObjectType>(type), 1, 1);
    const bool analog =
        std::string_view("\2\3\4\6\10\11").find(static_cast<char>(type)) != std::string_view::npos;
    EXPECT_EQ(object.Analog() != nullptr, analog) << type;
    EXPECT_EQ(object.hasCanConfig(), type == 11) << type;
  }
  object.SetMode(DataObjectType::filter, 2, 3);
  EXPECT_EQ(object.DefaultName(), "FVBlk2(3)");
  object.SetMode(DataObjectType::thermocouple, 1, 0);
  EXPECT_EQ(object.DefaultName(), "TBlk1");
  object.DataTypeCode(2);
  EXPECT_EQ(object.DataTypeString(), "??");
  object.storedIn({0, 0, 4});
  EXPECT_EQ(object.FirstTableUsed(), 3);
}

TEST(OutputTableConditions, RefuseOtherIndexes) {
  cOutputTable table;
  const cOutputTable untouched;
  for (const auto& [trigger, condition] : {std::pair{-1, 1}, {2, 1}, {0, 0}, {1, 11}}) {
    EXPECT_THROW(table.TriggerMeasVar(trigger, condition, "x"), std::out_of_range);
    EXPECT_THROW((void)table.TriggerValue(trigger, condition), std::out_of_range);
    EXPECT_THROW(table.TriggerLogic(trigger, condition, "Or"), std::out_of_range);
  }
  for (const int condition : {0, 11})
    EXPECT_THROW(table.WriteIfValue(condition, 1), std::out_of_range);
  EXPECT_EQ(table, untouched);
  table.TriggerValue(1, 10, 0.1);
  EXPECT_EQ(table.TriggerValue(1, 10), 0.1F);
  EXPECT_EQ(table.trigger(1, 10).Value, 0.1);
  EXPECT_EQ(table.RecordBytes(), 0);
  table.setRecord(8, true);
  EXPECT_EQ(table.RecordBytes(), 20);
}

}  // namespace
}  // namespace model
