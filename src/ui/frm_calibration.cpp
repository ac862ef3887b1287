#include "ui/frm_calibration.h"

#include "model/time_units.h"
#include "ui/config_panels.h"

namespace ui {
namespace {

constexpr double longestScanMicros = 30e6;

}  // namespace

frmCalibration::frmCalibration(SetupWindow& owner)
    : SetupWindow(owner, {"frmCalibration", "Self Calibration", "self calibration", "frmConfig"}) {
  auto* form = new Form;
  addSwitch(*form, working_, model::PowerOption::selfCalibration);
  form->readout({"When:", "When the logger calibrates itself."}, [this]() -> std::string {
    return model::scanMicros(working_) > longestScanMicros
               ? "Never: a scan of more than 30 seconds leaves no time."
               : "Every tenth slow scan, which is every 5 minutes.";
  });
  form->rowStretch();
  add(*form);
  setContents(form);
  form->setFocus();
  resize(760, 320);
}

std::vector<std::string> frmCalibration::previewNames() const { return {"CountSlow"}; }

}  // namespace ui
