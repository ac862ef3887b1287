#pragma once

#include "ui/block_window.h"

namespace ui {

/// Voltages on the 7121/22 modules.
class frmVoltSetup final : public BlockWindow {
  Q_OBJECT
 public:
  frmVoltSetup(const WindowPorts& ports, QWidget* parent);

 protected:
  void addFields(Form& form) override;
};

}  // namespace ui
