#include "ui/frm_rs_calc.h"

#include "calculators/calculator_texts.h"
#include "calculators/sensor_factors.h"

namespace ui {

frmRsCalc::frmRsCalc(SetupWindow& owner, const ScaledBlock& target)
    : CalculatorWindow(owner, target, "frmRsCalc", calculators::title::resistance) {
  build();
}

void frmRsCalc::addInputs(Form& form) {
  addNumber(form, {"&Rf:", calculators::help::resistor, "Ohms"},
            [this]() -> std::string& { return inputs().rs.RsOhms; });
  addOptions(
      form, {"&Output:", calculators::help::outputUnits}, {{"Ohms", ""}, {"kOhms", ""}},
      [this] { return calculators::isInKiloOhms(inputs().rs) ? 1 : 0; },
      [this](int index) { inputs().rs.Units = index == 1 ? "kOhms" : "Ohms"; });
}

void frmRsCalc::addResults(Form& form) {
  addResult(form, {"Multiplier:", calculators::help::transferred},
            [this] { return calculators::resistanceMultiplier(inputs().rs); });
}

calculators::Transfer frmRsCalc::transfer() const { return calculators::transferOf(inputs().rs); }

}  // namespace ui
