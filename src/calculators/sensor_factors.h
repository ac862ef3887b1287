#pragma once

#include "calculators/result.h"
#include "model/calculator_inputs.h"

/// Calculators with one factor of the sensor: resistance, revolutions, flow.
namespace calculators {

/// Ohms, or thousands of them when Units is "kOhms", from a ratio to the resistor Rf.
Result resistanceMultiplier(const model::ResistanceInputs& inputs);
bool isInKiloOhms(const model::ResistanceInputs& inputs);
Transfer transferOf(const model::ResistanceInputs& inputs);

/// Revolutions per minute from pulses per second.
Result rpmMultiplier(const model::RpmInputs& inputs);
/// At the example of WhatIf pulses per second.
Result rpmAtExample(const model::RpmInputs& inputs);
Transfer transferOf(const model::RpmInputs& inputs);

/// Choices of the flow calculator, as the project keeps them.
enum FlowVolume { gallons = 0, liters = 1 };  // Pulses (of the factor) and OutSystem
enum FlowTime { perSecond = 0, perMinute = 1, perHour = 2 };  // OutUnits

/// Volume per time from pulses per second; nothing unless the factor is above 0.
Result flowMultiplier(const model::FlowInputs& inputs);
/// At the example of WhatIf pulses per second.
Result flowAtExample(const model::FlowInputs& inputs);
/// "Gals/Sec" to "Ltrs/Hr".
std::string_view flowUnits(const model::FlowInputs& inputs);
Transfer transferOf(const model::FlowInputs& inputs);

}  // namespace calculators
