#pragma once

#include "ui/block_window.h"

namespace ui {

/// Counts and frequencies on the 7141/42 modules.
class frmPulseSetup final : public BlockWindow {
  Q_OBJECT
 public:
  frmPulseSetup(const WindowPorts& ports, QWidget* parent);

 protected:
  void addFields(Form& form) override;

 private:
  void addResult(Form& form);
};

}  // namespace ui
