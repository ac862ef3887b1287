#include "ui/frm_tcmux_setup.h"

#include "text/strings.h"

namespace ui {

frmTCMUXSetup::frmTCMUXSetup(const WindowPorts& ports, QWidget* parent)
    : BlockWindow(ports, {"frmTCMUXSetup", "TCMUX Measurements", "TCMUX blocks"},
                  model::BlockKind::tcmux, parent) {
  build();
}

void frmTCMUXSetup::addSharedFields(Form& form) {
  addReference(form, model::StoredSource::tcmuxReference, &model::Project::tcmuxReference);
}

void frmTCMUXSetup::addFields(Form& form) {
  addReps(form);
  form.check({"Measure &volts", "The multiplexer carries voltages, no thermocouples."},
             [this]() -> bool& { return block().TCMUXVolts; });
  const auto noVolts = [this]() -> std::string {
    return block().TCMUXVolts ? "The multiplexer measures volts." : "";
  };
  addThermocoupleType(form).closedWhen(noVolts);
  addRange(form, thermocoupleRanges);
  addIntegration(form, model::InputKind::analog7121);
  addSettle(form);
  addReversal(form);
  addOpenSensor(form).closedWhen(noVolts);
  addTemperatureScale(form).closedWhen(noVolts);
  addScaling(form);
  addUnits(form);
  addZeroAndCalibration(form);
  addStorage(form);
}

/// The inputs of a multiplexer are its own, not those of the module.
std::string frmTCMUXSetup::placeOfChannel(std::size_t channel) const {
  const auto& multiplexers = plan().of(kind(), number()).multiplexers;
  for (auto each = multiplexers.rbegin(); each != multiplexers.rend(); ++each)
    if (channel >= each->firstElement)
      return text::concat("Mux ", each->number, " : ", channel - each->firstElement + 1);
  return "";
}

}  // namespace ui
