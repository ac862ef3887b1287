#include <gtest/gtest.h>

#include "calculators/calculator_texts.h"
#include "calculators/sensitivity.h"
#include "calculators/sensor_factors.h"
#include "calculators/speed.h"
#include "calculators/two_point.h"

namespace calculators {
namespace {

std::string shown(const Result& result) { return result ? result->shown : "nothing"; }

model::TwoPointInputs line(const char* xMin, const char* xMax, const char* yMin, const char* yMax) {
  return {.YMax = yMax, .YMin = yMin, .YOut = "", .XMax = xMax, .XMin = xMin, .Units = "psi"};
}

TEST(TwoPoint, PutsALineThroughBothPoints) {
  const struct {
    model::TwoPointInputs inputs;
    const char *multiplier, *offset;
  } cases[] = {
      {line("4", "20", "0", "100"), "6.25", "-25.0"},
      {line("20", "4", "100", "0"), "6.25", "-25.0"},
      {line("0", "3", "0", "1"), "0.33333", "0.0"},
      {line("0", "1", "0", "999999.5"), "999999.5", "0.0"},
      {line("0", "1", "0", "1000000"), "1.00000e6", "0.0"},
      {line("0", "1000", "0", "1"), "0.001", "0.0"},
      {line("0", "1000", "0", ".999"), "9.99000e-4", "0.0"},
      {line("0", "10", "5", "5"), "0.0", "5.0"},
      {line(" 0 V", "abc", "0", "100"), "nothing", "nothing"},
      {line("7", "7", "0", "100"), "nothing", "nothing"},
  };
  for (const auto& [inputs, multiplier, offset] : cases) {
    SCOPED_TRACE(inputs.XMin + " " + inputs.XMax + " " + inputs.YMin + " " + inputs.YMax);
    EXPECT_EQ(shown(lineThrough(inputs).multiplier), multiplier);
    EXPECT_EQ(shown(lineThrough(inputs).offset), offset);
  }
}

TEST(TwoPoint, KeepsXOfAProbeBetweenTheEnds) {
  const model::TwoPointInputs rising = line("4", "20", "0", "100");
  const model::TwoPointInputs falling = line("20", "4", "0", "100");
  const struct {
    TwoPointProbe probe;
    const char *x, *y;
  } cases[] = {
      {probeAtX(rising, "12"), "12.0", "50.0"},
      {probeAtX(rising, "3"), "4.0", "0.0"},
      {probeAtX(rising, "1e9"), "20.0", "100.0"},
      {probeAtX(falling, "3"), "4.0", "100.0"},
      {probeAtX(falling, "12"), "12.0", "50.0"},
      {probeAtY(rising, "25"), "8.0", "25.0"},
      {probeAtY(rising, "-1"), "4.0", "-1.0"},
      {probeAtY(falling, "101"), "4.0", "101.0"},
      {probeAtY(line("0", "1", "5", "5"), "5"), "nothing", "5.0"},
      {probeAtX(line("1", "1", "0", "5"), "1"), "nothing", "nothing"},
      {probeAtY(line("1", "1", "0", "5"), "1"), "nothing", "nothing"},
  };
  for (const auto& [probe, x, y] : cases) {
    SCOPED_TRACE(std::string(x) + " " + y);
    EXPECT_EQ(shown(probe.x), x);
    EXPECT_EQ(shown(probe.y), y);
  }
}

TEST(Sensitivity, ShowsTheMultiplierInTheFormOfItsSize) {
  const std::pair<const char*, const char*> cases[] = {
      {"1000000", "1000000.0"},   {"999999", "999999.00"},  {"99999.9", "99999.900"},
      {"99999.91", "99999.91"},   {"9999.99", "9999.9900"}, {"9999.995", "9999.995"},
      {"1000", "1000.0000"},      {"999.999", "999.99900"}, {"100", "100.00000"},
      {"99.9999", "99.999900"},   {"10", "10.000000"},      {"9.99999", "9.9999900"},
      {"-2000000", "-2000000.0"}, {"0", "0.0000000"}};
  for (const auto& [capacity, expected] : cases)
    EXPECT_EQ(shown(sensitivityMultiplier({"1", capacity, "", ""})), expected) << capacity;
  EXPECT_EQ(shown(sensitivityMultiplier({"0", "100", "", ""})), "nothing");
}

TEST(Sensitivity, SolvesForOneBoxOfThePanel) {
  const model::SensitivityInputs sensor{"2", "500", "lbs", ""};  // 250 lbs per mV/V
  const struct {
    Unknown unknown;
    SensitivityPanel panel;
    const char* expected;
  } cases[] = {
      {Unknown::excitation, {"", "125", "2.5"}, "5000.0"},
      {Unknown::units, {"5000", "", "2.5"}, "125.0"},
      {Unknown::output, {"5000", "125", ""}, "2.5"},
      {Unknown::excitation, {"", "0", "2.5"}, "ERROR"},
      {Unknown::units, {"none", "1", "2.5"}, "ERROR"},
  };
  for (const auto& [unknown, panel, expected] : cases)
    EXPECT_EQ(solvedFor(unknown, sensor, panel).shown, expected) << formulaOf(unknown);
  for (const model::SensitivityInputs& none :
       {model::SensitivityInputs{"0", "1", "", ""}, model::SensitivityInputs{"1", "0", "", ""}})
    EXPECT_EQ(solvedFor(Unknown::output, none, {"5000", "1", ""}).shown, "ERROR");
}

TEST(Sensitivity, AsksAboutAnExcitationThatTheLoggerCannotGive) {
  EXPECT_FALSE(questionAboutExcitation("5000"));
  EXPECT_FALSE(questionAboutExcitation("-6000"));
  const auto question = questionAboutExcitation("5000.1");
  ASSERT_TRUE(question);
  EXPECT_EQ(question->title, "VALUE TOO LARGE");
  EXPECT_EQ(question->text,
            "Excitation voltage is 5000.1 mV which is greater than the 5000 mV limit of the "
            "logger.\r\nDo you want to go back and edit the values?");
  EXPECT_EQ(question->buttons, ports::Buttons::yesNo);
}

TEST(SensorFactors, GiveMultipliersAndExamples) {
  EXPECT_EQ(shown(resistanceMultiplier({"1250.5", "Ohms"})), "1250.5");
  EXPECT_EQ(shown(resistanceMultiplier({"1250.5", "KOHMS"})), "1.2505");
  EXPECT_EQ(shown(rpmMultiplier({"7", ""})), "8.571429");
  EXPECT_EQ(shown(rpmAtExample({"7", "100"})), "857.143");
  EXPECT_EQ(shown(rpmMultiplier({"0", "1"})), "nothing");
  EXPECT_EQ(shown(rpmAtExample({"none", "1"})), "nothing");
}

/// A multiplier of 0 from an empty box would make every reading 0.
TEST(Calculators, HaveNoResultWithoutTheirNumbers) {
  for (const char* none : {"", "  ", "x", "12 mm"}) {
    SCOPED_TRACE(none);
    model::FlowInputs flow;
    flow.CalFactor = none;
    model::SpeedInputs noWheel, noPulses;
    noWheel.RevSpeed = noPulses.WheelSize = "1";
    noWheel.WheelSize = noPulses.RevSpeed = none;
    model::MoreSpeedInputs more;
    more.InPulses = none;
    for (const Result& result :
         {resistanceMultiplier({none, "Ohms"}), rpmMultiplier({none, ""}), flowMultiplier(flow),
          rpmAtExample({"7", none}), sensitivityMultiplier({"2", none, "", ""}),
          sensitivityMultiplier({none, "2", "", ""}), speedScaling(noWheel).multiplier,
          speedScaling(noPulses).multiplier, speedScaling(more).multiplier,
          lineThrough(line(none, "1", "2", "3")).multiplier,
          lineThrough(line("0", none, "2", "3")).multiplier,
          lineThrough(line("0", "1", none, "3")).multiplier,
          lineThrough(line("0", "1", "2", none)).offset})
      EXPECT_EQ(shown(result), "nothing");
  }
  for (const char* notAbove : {"0", "-100"})
    EXPECT_EQ(shown(resistanceMultiplier({notAbove, "Ohms"})), "nothing");
}

TEST(Sensitivity, HandsOverOnlyWhatIsAnExcitation) {
  const struct {
    const char *typed, *transferred;
    bool refused;
  } cases[] = {{"", "", false},
               {"0", "0", false},
               {" 2500 ", "2500", false},
               {"5000 mV", "", true},
               {"-500", "", true}};
  for (const auto& [typed, transferred, refused] : cases) {
    SCOPED_TRACE(typed);
    EXPECT_EQ(complaintAboutExcitation(typed).has_value(), refused);
    EXPECT_EQ(transferOf({"2", "100", "", ""}, typed).excitation, transferred);
  }
}

TEST(Flow, ConvertsBetweenGallonsAndLiters) {
  const struct {
    model::FlowInputs inputs;
    const char *multiplier, *units;
  } cases[] = {
      {{"2", gallons, gallons, perSecond, ""}, "0.5", "Gals/Sec"},
      {{"2", gallons, liters, perMinute, ""}, "113.562354", "Ltrs/Min"},
      {{"2", liters, gallons, perHour, ""}, "475.509694", "Gals/Hr"},
      {{"2", liters, liters, perHour, ""}, "1,800.0", "Ltrs/Hr"},
      {{"0", gallons, gallons, perSecond, ""}, "nothing", "Gals/Sec"},
      {{"-2", gallons, liters, perSecond, ""}, "nothing", "Ltrs/Sec"},
  };
  for (const auto& [inputs, multiplier, units] : cases) {
    EXPECT_EQ(shown(flowMultiplier(inputs)), multiplier);
    EXPECT_EQ(flowUnits(inputs), units);
  }
  // The boxes of a window get a number they can read: no thousands separators.
  EXPECT_EQ(transferOf(cases[3].inputs), (Transfer{"1800", "", "Ltrs/Hr", ""}));
}

model::SpeedInputs wheel(MeasureSystem system, const char* size, WheelSizeAs as, const char* pulses,
                         std::vector<std::string> gears) {
  model::SpeedInputs inputs;
  inputs.MKSSpd = static_cast<std::int16_t>(system);
  inputs.WheelSize = size;
  inputs.SizeOption = static_cast<std::int16_t>(as);
  inputs.RevSpeed = pulses;
  inputs.GearRatio = std::move(gears);
  return inputs;
}

TEST(Speed, TakesTheDistanceOfAPulseFromWheelAndGears) {
  const struct {
    model::SpeedInputs inputs;
    const char *cm, *inches, *perKm, *perMile;
  } cases[] = {
      {wheel(metric, "200", asCircumference, "10", {}), "20.0", "7.87402", "5,000.0", "8,046.72"},
      {wheel(metric, "100", asDiameter, "1", {"2", "", "5"}), "31.4159", "12.36846", "3,183.1",
       "5,122.71"},
      {wheel(english, "10", asRadius, "4", {"1"}), "39.89819", "15.70795", "2,506.38", "4,033.63"},
      {wheel(metric, "0", asRadius, "4", {}), "nothing", "nothing", "nothing", "nothing"},
      {wheel(metric, "100", asRadius, "", {}), "nothing", "nothing", "nothing", "nothing"},
      {wheel(metric, "100", asRadius, "4", {"0"}), "nothing", "nothing", "nothing", "nothing"},
      {wheel(metric, "100", asRadius, "-4", {"-2"}), "nothing", "nothing", "nothing", "nothing"},
  };
  for (const auto& [inputs, cm, inches, perKm, perMile] : cases) {
    SCOPED_TRACE(inputs.WheelSize + " " + inputs.RevSpeed);
    const SpeedScaling scaling = speedScaling(inputs);
    EXPECT_EQ(shown(scaling.cmPerPulse), cm);
    EXPECT_EQ(shown(scaling.inchesPerPulse), inches);
    EXPECT_EQ(shown(scaling.pulsesPerKm), perKm);
    EXPECT_EQ(shown(scaling.pulsesPerMile), perMile);
  }
}

TEST(Speed, ScalesEveryUnitInBothCalculators) {
  // 1000 pulses/km: 100 cm a pulse, so 1 pulse/s is 1 m/s.
  const std::pair<double, SpeedUnit> units[] = {{100, SpeedUnit::cmPerSecond},
                                                {6000, SpeedUnit::cmPerMinute},
                                                {39.37007874, SpeedUnit::inchesPerSecond},
                                                {2362.204724, SpeedUnit::inchesPerMinute},
                                                {3.280839895, SpeedUnit::feetPerSecond},
                                                {196.8503937, SpeedUnit::feetPerMinute},
                                                {1, SpeedUnit::metersPerSecond},
                                                {60, SpeedUnit::metersPerMinute},
                                                {3.6, SpeedUnit::kilometersPerHour},
                                                {2.236936292, SpeedUnit::milesPerHour}};
  for (const auto& [multiplier, unit] : units) {
    SCOPED_TRACE(nameOf(unit));
    model::SpeedInputs byWheel = wheel(metric, "100", asCircumference, "1", {});
    model::MoreSpeedInputs byDistance;
    byDistance.InSystem = metric;
    byDistance.InPulses = "1000";
    setSpeedUnit(byWheel, unit);
    setSpeedUnit(byDistance, unit);
    EXPECT_EQ(speedUnit(byWheel), unit);
    EXPECT_EQ(speedUnit(byDistance), unit);
    EXPECT_NEAR(numberOf(speedScaling(byWheel).multiplier), multiplier, 1e-6);
    EXPECT_NEAR(numberOf(speedScaling(byDistance).multiplier), multiplier, 1e-6);
  }
  model::MoreSpeedInputs perMile;
  perMile.InPulses = "63360";
  setSpeedUnit(perMile, SpeedUnit::inchesPerSecond);
  perMile.WhatIf = "2.5";
  EXPECT_EQ(shown(speedScaling(perMile).multiplier), "1.0");
  EXPECT_EQ(shown(speedAtExample(perMile)), "2.5");
  perMile.InPulses = "0";
  EXPECT_EQ(speedScaling(perMile), SpeedScaling{});
  EXPECT_EQ(shown(speedAtExample(perMile)), "nothing");
}

TEST(CalculatorTexts, NameTheInputOfTheCallingBlock) {
  using model::BlockKind;
  model::MeasurementBlock half = model::defaultBlock(BlockKind::bridge);
  half.Style = 3;
  model::MeasurementBlock counts = model::defaultBlock(BlockKind::pulse);
  counts.Opt = 0;
  EXPECT_EQ(inputCaption(BlockKind::bridge, model::defaultBlock(BlockKind::bridge)), "Input mV/V");
  EXPECT_EQ(inputCaption(BlockKind::bridge, half), "Input V/V");
  EXPECT_EQ(inputCaption(BlockKind::pulse, counts), "Counts");
  EXPECT_EQ(inputCaption(BlockKind::highVoltage, {}), "Input V");
}

}  // namespace
}  // namespace calculators
