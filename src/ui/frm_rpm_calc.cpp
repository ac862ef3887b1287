#include "ui/frm_rpm_calc.h"

#include "calculators/calculator_texts.h"
#include "calculators/sensor_factors.h"

namespace ui {

frmRPMCalc::frmRPMCalc(SetupWindow& owner, const ScaledBlock& target)
    : CalculatorWindow(owner, target, "frmRPMCalc", calculators::title::rpm) {
  build();
}

void frmRPMCalc::addInputs(Form& form) {
  addNumber(form, {"&Pulses per revolution:", calculators::help::pulsesPerRevolution},
            [this]() -> std::string& { return inputs().rpm.Pulses; });
}

void frmRPMCalc::addResults(Form& form) {
  addResult(form, {"Multiplier:", calculators::help::transferred},
            [this] { return calculators::rpmMultiplier(inputs().rpm); });
  Form& whatIf = form.group("What if");
  addNumber(whatIf, {"P&ulses per second:", calculators::help::examplePulses},
            [this]() -> std::string& { return inputs().rpm.WhatIf; });
  addResult(whatIf, {"That is:", "The speed at these pulses.", "RPM"},
            [this] { return calculators::rpmAtExample(inputs().rpm); });
}

calculators::Transfer frmRPMCalc::transfer() const { return calculators::transferOf(inputs().rpm); }

}  // namespace ui
