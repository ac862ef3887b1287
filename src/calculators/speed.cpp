#include "calculators/speed.h"

#include <algorithm>
#include <cmath>

#include "text/numbers.h"
#include "text/strings.h"

namespace calculators {
namespace {

constexpr double pi = 3.14159;  // short on purpose: printed sensor tables use it
constexpr double cmOfInch = 2.54;
constexpr double cmOfKm = 100000;
constexpr double inchesOfMile = 63360;

/// LengthOption of the wheel calculator.
enum Length { lengthCm, lengthInches, lengthFeet, lengthMeters, lengthKm, lengthMiles };

SpeedUnit unitOf(int length, bool perMinute) {
  switch (length) {
    case lengthKm:
      return SpeedUnit::kilometersPerHour;
    case lengthMiles:
      return SpeedUnit::milesPerHour;
    default:
      return static_cast<SpeedUnit>(2 * std::clamp<int>(length, lengthCm, lengthMeters) +
                                    (perMinute ? 1 : 0));
  }
}

int lengthOf(SpeedUnit unit) {
  if (unit == SpeedUnit::kilometersPerHour) return lengthKm;
  if (unit == SpeedUnit::milesPerHour) return lengthMiles;
  return static_cast<int>(unit) / 2;
}

bool isPerMinute(SpeedUnit unit) {
  return unit < SpeedUnit::kilometersPerHour && static_cast<int>(unit) % 2 == 1;
}

/// Lengths of OutUnits, English and metric.
constexpr int outLengths[2][3] = {{lengthInches, lengthFeet, lengthMiles},
                                  {lengthCm, lengthMeters, lengthKm}};

double multiplierFor(SpeedUnit unit, double cmPerPulse) {
  const double inchesPerPulse = cmPerPulse / cmOfInch;
  switch (unit) {
    case SpeedUnit::cmPerSecond:
      return cmPerPulse;
    case SpeedUnit::cmPerMinute:
      return 60 * cmPerPulse;
    case SpeedUnit::inchesPerSecond:
      return inchesPerPulse;
    case SpeedUnit::inchesPerMinute:
      return 60 * inchesPerPulse;
    case SpeedUnit::feetPerSecond:
      return inchesPerPulse / 12;
    case SpeedUnit::feetPerMinute:
      return 5 * inchesPerPulse;
    case SpeedUnit::metersPerSecond:
      return cmPerPulse / 100;
    case SpeedUnit::metersPerMinute:
      return 0.6 * cmPerPulse;
    case SpeedUnit::kilometersPerHour:
      return 0.036 * cmPerPulse;
    case SpeedUnit::milesPerHour:
      break;
  }
  return inchesPerPulse * 3600 / inchesOfMile;
}

SpeedScaling scalingFor(double cmPerPulse, SpeedUnit unit) {
  constexpr std::string_view distancePattern = "0.0####";
  constexpr std::string_view pulsesPattern = "#,##0.0#";
  if (!(cmPerPulse > 0) || std::isinf(cmPerPulse)) return {};
  const double inchesPerPulse = cmPerPulse / cmOfInch;
  return {shownAs(cmPerPulse, distancePattern), shownAs(inchesPerPulse, distancePattern),
          shownAs(cmOfKm / cmPerPulse, pulsesPattern),
          shownAs(inchesOfMile / inchesPerPulse, pulsesPattern),
          shownOrScientific(multiplierFor(unit, cmPerPulse), "###0.0#####")};
}

double circumferenceCm(const model::SpeedInputs& inputs) {
  const double size = numberIn(inputs.WheelSize) * (inputs.MKSSpd == english ? cmOfInch : 1);
  if (inputs.SizeOption == asDiameter) return pi * size;
  return inputs.SizeOption == asRadius ? 2 * pi * size : size;
}

double pulsesOfWheelTurn(const model::SpeedInputs& inputs) {
  double pulses = std::max(numberIn(inputs.RevSpeed), 0.0);
  for (const std::string& ratio : inputs.GearRatio)
    if (!text::trimmed(ratio).empty()) pulses *= std::max(numberIn(ratio), 0.0);
  return pulses;
}

Result example(const SpeedScaling& scaling, std::string_view pulsesPerSecond) {
  return shownAs(numberIn(pulsesPerSecond) * numberOf(scaling.multiplier), "###0.0##");
}

}  // namespace

std::string_view nameOf(SpeedUnit unit) { return speedUnitNames[static_cast<std::size_t>(unit)]; }

SpeedUnit speedUnit(const model::SpeedInputs& inputs) {
  return unitOf(inputs.LengthOption, inputs.UseMins != 0);
}

void setSpeedUnit(model::SpeedInputs& inputs, SpeedUnit unit) {
  inputs.LengthOption = static_cast<std::int16_t>(lengthOf(unit));
  inputs.UseMins = isPerMinute(unit) ? 1 : 0;
}

SpeedUnit speedUnit(const model::MoreSpeedInputs& inputs) {
  const int system = inputs.OutSystem == english ? english : metric;
  return unitOf(outLengths[system][std::clamp<int>(inputs.OutUnits, 0, 2)], inputs.UseMins != 0);
}

void setSpeedUnit(model::MoreSpeedInputs& inputs, SpeedUnit unit) {
  for (int system = english; system <= metric; ++system)
    for (int units = 0; units < 3; ++units)
      if (outLengths[system][units] == lengthOf(unit)) {
        inputs.OutSystem = static_cast<std::int16_t>(system);
        inputs.OutUnits = static_cast<std::int16_t>(units);
      }
  inputs.UseMins = isPerMinute(unit) ? 1 : 0;
}

SpeedScaling speedScaling(const model::SpeedInputs& inputs) {
  return scalingFor(circumferenceCm(inputs) / pulsesOfWheelTurn(inputs), speedUnit(inputs));
}

SpeedScaling speedScaling(const model::MoreSpeedInputs& inputs) {
  const double pulses = numberIn(inputs.InPulses);
  const double cmPerPulse =
      inputs.InSystem == english ? inchesOfMile / pulses * cmOfInch : cmOfKm / pulses;
  return scalingFor(cmPerPulse, speedUnit(inputs));
}

Result speedAtExample(const model::SpeedInputs& inputs) {
  return example(speedScaling(inputs), inputs.PulsesSec);
}

Result speedAtExample(const model::MoreSpeedInputs& inputs) {
  return example(speedScaling(inputs), inputs.WhatIf);
}

Transfer transferOf(const model::SpeedInputs& inputs) {
  return {boxText(speedScaling(inputs).multiplier), "", std::string(nameOf(speedUnit(inputs))), ""};
}

Transfer transferOf(const model::MoreSpeedInputs& inputs) {
  return {boxText(speedScaling(inputs).multiplier), "", std::string(nameOf(speedUnit(inputs))), ""};
}

}  // namespace calculators
