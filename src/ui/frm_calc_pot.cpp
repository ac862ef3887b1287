#include "ui/frm_calc_pot.h"

#include "calculators/calculator_texts.h"

namespace ui {

frmCalcPot::frmCalcPot(SetupWindow& owner, const ScaledBlock& target)
    : TwoPointWindow(owner, target, "frmCalcPot", calculators::title::potentiometer,
                     &model::CalculatorInputs::pot) {
  build();
}

}  // namespace ui
