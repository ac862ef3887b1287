#pragma once

#include "ui/block_window.h"

namespace ui {

/// Voltages up to 60 V on the 7127 modules.
class frmHiVoltSetup final : public BlockWindow {
  Q_OBJECT
 public:
  frmHiVoltSetup(const WindowPorts& ports, QWidget* parent);

 protected:
  void addFields(Form& form) override;
};

}  // namespace ui
