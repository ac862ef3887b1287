#include "ui/frm_tc_setup.h"

namespace ui {

frmTCSetup::frmTCSetup(const WindowPorts& ports, QWidget* parent)
    : BlockWindow(ports, {"frmTCSetup", "Thermocouple Measurements", "thermocouple blocks"},
                  model::BlockKind::thermocouple, parent) {
  build();
}

void frmTCSetup::addSharedFields(Form& form) {
  addReference(form, model::StoredSource::tcReference, &model::Project::tcReference);
}

void frmTCSetup::addFields(Form& form) {
  addReps(form);
  addMeasType(form);
  addThermocoupleType(form);
  addRange(form, thermocoupleRanges);
  addIntegration(form, model::InputKind::analog7121);
  addSettle(form);
  addReversal(form);
  addOpenSensor(form);
  addTemperatureScale(form);
  addScaling(form);
  addUnits(form);
  addStorage(form);
}

}  // namespace ui
