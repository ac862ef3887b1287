#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The last inputs of the scaling calculators: texts as typed, choices as indexes from 0.
namespace model {

struct SpeedInputs {
  std::int16_t MKSSpd = 0;
  std::string RevSpeed;
  std::string WheelSize;
  std::string PulsesSec;
  std::int16_t SizeOption = 0;
  std::int16_t LengthOption = 0;
  std::int16_t UseMins = 0;
  std::vector<std::string> GearRatio;
  bool operator==(const SpeedInputs&) const = default;
};

struct TwoPointInputs {
  std::string YMax, YMin, YOut, XMax, XMin, Units;
  bool operator==(const TwoPointInputs&) const = default;
};

struct SensitivityInputs {
  std::string mVPerV, FullScale, Units, mVOut;
  bool operator==(const SensitivityInputs&) const = default;
};

struct ResistanceInputs {
  std::string RsOhms, Units;
  bool operator==(const ResistanceInputs&) const = default;
};

struct RpmInputs {
  std::string Pulses, WhatIf;
  bool operator==(const RpmInputs&) const = default;
};

struct MoreSpeedInputs {
  std::int16_t InSystem = 0, InUnits = 0, OutSystem = 0, OutUnits = 0, UseMins = 0;
  std::string InPulses, WhatIf;
  bool operator==(const MoreSpeedInputs&) const = default;
};

struct FlowInputs {
  std::string CalFactor;
  std::int16_t Pulses = 0, OutSystem = 0, OutUnits = 0;
  std::string WhatIf;
  bool operator==(const FlowInputs&) const = default;
};

struct CalculatorInputs {
  SpeedInputs speed;
  TwoPointInputs multOff;
  SensitivityInputs mvPerVolt;
  TwoPointInputs pot;
  ResistanceInputs rs;
  RpmInputs rpm;
  MoreSpeedInputs moreSpeed;
  FlowInputs flow;
  bool operator==(const CalculatorInputs&) const = default;
};

}  // namespace model
