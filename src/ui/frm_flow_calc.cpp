#include "ui/frm_flow_calc.h"

#include "calculators/calculator_texts.h"
#include "calculators/sensor_factors.h"

namespace ui {
namespace {

namespace help = calculators::help;

constexpr int timesOfVolume = 3;

/// The choices that give the n-th output unit.
model::FlowInputs withOutput(model::FlowInputs inputs, int index) {
  inputs.OutSystem = static_cast<std::int16_t>(index / timesOfVolume);
  inputs.OutUnits = static_cast<std::int16_t>(index % timesOfVolume);
  return inputs;
}

}  // namespace

frmFlowCalc::frmFlowCalc(SetupWindow& owner, const ScaledBlock& target)
    : CalculatorWindow(owner, target, "frmFlowCalc", calculators::title::flow) {
  build();
}

void frmFlowCalc::addInputs(Form& form) {
  addNumber(form, {"&Calibration factor:", help::flowFactor},
            [this]() -> std::string& { return inputs().flow.CalFactor; });
  addOptions(
      form, {"&In:", "What the calibration factor counts."},
      {{"Pulses per Gallon", help::pulsesPerGallon}, {"Pulses per Liter", help::pulsesPerLiter}},
      [this] { return static_cast<int>(inputs().flow.Pulses); },
      [this](int index) { inputs().flow.Pulses = static_cast<std::int16_t>(index); });
  addOutput(form);
}

void frmFlowCalc::addOutput(Form& form) {
  std::vector<Option> units;
  units.reserve(2UL * timesOfVolume);
  for (int index = 0; index < 2 * timesOfVolume; ++index)
    units.push_back({calculators::flowUnits(withOutput({}, index)), help::outputUnits});
  addOptions(
      form, {"&Output:", help::outputUnits}, units,
      [this] { return inputs().flow.OutSystem * timesOfVolume + inputs().flow.OutUnits; },
      [this](int index) { inputs().flow = withOutput(inputs().flow, index); });
}

void frmFlowCalc::addResults(Form& form) {
  addResult(form, {"Multiplier:", help::transferred},
            [this] { return calculators::flowMultiplier(inputs().flow); });
  Form& whatIf = form.group("What if");
  addNumber(whatIf, {"&Pulses per second:", help::examplePulses},
            [this]() -> std::string& { return inputs().flow.WhatIf; });
  addResult(whatIf, {"That is:", "The flow at these pulses, in the output unit."},
            [this] { return calculators::flowAtExample(inputs().flow); });
}

calculators::Transfer frmFlowCalc::transfer() const {
  return calculators::transferOf(inputs().flow);
}

}  // namespace ui
