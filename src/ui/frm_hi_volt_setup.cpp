#include "ui/frm_hi_volt_setup.h"

#include "ui/frm_calc_mult_off.h"

namespace ui {

frmHiVoltSetup::frmHiVoltSetup(const WindowPorts& ports, QWidget* parent)
    : BlockWindow(ports, {"frmHiVoltSetup", "High Voltage Measurements", "high voltage blocks"},
                  model::BlockKind::highVoltage, parent) {
  build();
}

void frmHiVoltSetup::addFields(Form& form) {
  addReps(form);
  addMeasType(form);
  addRange(form);
  addIntegration(form, model::InputKind::highVoltage7127);
  addSettle(form);
  addReversal(form);
  addScaling(form);
  addCalculator<frmCalcMultOff>(form);
  addUnits(form);
  addZeroAndCalibration(form);
  addStorage(form);
}

}  // namespace ui
