#pragma once

#include <array>
#include <string_view>

#include "calculators/result.h"
#include "model/calculator_inputs.h"

/// Speeds from pulses of a wheel or a transmission.
namespace calculators {

/// Output units, in the order of the windows.
enum class SpeedUnit {
  cmPerSecond,
  cmPerMinute,
  inchesPerSecond,
  inchesPerMinute,
  feetPerSecond,
  feetPerMinute,
  metersPerSecond,
  metersPerMinute,
  kilometersPerHour,
  milesPerHour
};
/// "Cm/Sec" to "Mi/Hour", by SpeedUnit.
inline constexpr std::array<std::string_view, 10> speedUnitNames = {
    "Cm/Sec", "Cm/Min", "Ins/Sec", "Ins/Min", "Ft/Sec",
    "Ft/Min", "M/Sec",  "M/Min",   "K/Hour",  "Mi/Hour"};
std::string_view nameOf(SpeedUnit unit);

/// Choices of both calculators, as the project keeps them.
enum MeasureSystem { english = 0, metric = 1 };  // MKSSpd, InSystem, OutSystem
enum WheelSizeAs { asCircumference = 0, asDiameter = 1, asRadius = 2 };  // SizeOption

/// The unit of LengthOption (0 Cm, 1 Ins, 2 Ft, 3 M, 4 K, 5 Mi) and UseMins; K and Mi are per hour.
SpeedUnit speedUnit(const model::SpeedInputs& inputs);
void setSpeedUnit(model::SpeedInputs& inputs, SpeedUnit unit);
/// The same of OutSystem, OutUnits (0 Ins or Cm, 1 Ft or M, 2 Mi or K) and UseMins.
SpeedUnit speedUnit(const model::MoreSpeedInputs& inputs);
void setSpeedUnit(model::MoreSpeedInputs& inputs, SpeedUnit unit);

/// What a pulse stands for; all or nothing.
struct SpeedScaling {
  Result cmPerPulse, inchesPerPulse;
  Result pulsesPerKm, pulsesPerMile;
  Result multiplier;  // of pulses per second
  bool operator==(const SpeedScaling&) const = default;
};
/// From the wheel. Wheel size, pulses and gear ratios have to be above 0; a gear without text
/// counts as 1.
SpeedScaling speedScaling(const model::SpeedInputs& inputs);
/// From pulses per km (metric) or per mile.
SpeedScaling speedScaling(const model::MoreSpeedInputs& inputs);

/// Speed at the example of PulsesSec, or WhatIf, pulses per second.
Result speedAtExample(const model::SpeedInputs& inputs);
Result speedAtExample(const model::MoreSpeedInputs& inputs);

Transfer transferOf(const model::SpeedInputs& inputs);
Transfer transferOf(const model::MoreSpeedInputs& inputs);

}  // namespace calculators
