#include "ui/frm_calc_mult_off.h"

#include "calculators/calculator_texts.h"

namespace ui {
namespace {

bool isFft(const model::Project& project, const ScaledBlock& target) {
  return target.kind == model::BlockKind::filter && model::isFft(project, target.number);
}

}  // namespace

frmCalcMultOff::frmCalcMultOff(SetupWindow& owner, const ScaledBlock& target)
    : TwoPointWindow(owner, target, "frmCalcMultOff",
                     calculators::twoPointTitle(isFft(owner.working(), target)),
                     &model::CalculatorInputs::multOff) {
  build();
}

}  // namespace ui
