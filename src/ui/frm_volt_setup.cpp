#include "ui/frm_volt_setup.h"

#include "ui/frm_calc_mult_off.h"
#include "ui/frm_rs_calc.h"

namespace ui {

frmVoltSetup::frmVoltSetup(const WindowPorts& ports, QWidget* parent)
    : BlockWindow(ports, {"frmVoltSetup", "Voltage Measurements", "voltage blocks"},
                  model::BlockKind::voltage, parent) {
  build();
}

void frmVoltSetup::addFields(Form& form) {
  addReps(form);
  addMeasType(form);
  addRange(form);
  addIntegration(form, model::InputKind::analog7121);
  addSettle(form);
  addReversal(form);
  addOpenSensor(form);
  addScaling(form);
  addCalculator<frmCalcMultOff>(form);
  addCalculator<frmRsCalc>(form);
  addUnits(form);
  addZeroAndCalibration(form);
  addStorage(form);
}

}  // namespace ui
