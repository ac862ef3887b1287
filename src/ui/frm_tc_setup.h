#pragma once

#include "ui/block_window.h"

namespace ui {

/// Thermocouples on the 7121/22 modules.
class frmTCSetup final : public BlockWindow {
  Q_OBJECT
 public:
  frmTCSetup(const WindowPorts& ports, QWidget* parent);

 protected:
  void addFields(Form& form) override;
  void addSharedFields(Form& form) override;
};

}  // namespace ui
