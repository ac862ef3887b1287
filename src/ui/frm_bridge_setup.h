#pragma once

#include "ui/block_window.h"

namespace ui {

/// Bridges and strain gauges on the 7121/22 modules, excited by the 7131.
class frmBridgeSetup final : public BlockWindow {
  Q_OBJECT
 public:
  frmBridgeSetup(const WindowPorts& ports, QWidget* parent);

 protected:
  void addFields(Form& form) override;
  bool mayBeDone() override;

 private:
  void addConfiguration(Form& form);
  void addExcitation(Form& form);
  void addInputReversal(Form& form);
  void addGauge(Form& form);
};

}  // namespace ui
