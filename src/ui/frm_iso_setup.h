#pragma once

#include "ui/block_window.h"
#include "ui/frm_iso_block.h"

namespace ui {

/// Isolated voltages and thermocouples on the 7128 modules, with their digital filter.
class frmIsoSetup final : public BlockWindow {
  Q_OBJECT
 public:
  frmIsoSetup(const WindowPorts& ports, QWidget* parent);

 protected:
  void addFields(Form& form) override;
  void addSharedFields(Form& form) override;
  bool mayBeDone() override;

 private:
  void addFilter(Form& form);
  void addScans(Form& form);
  void chooseIntegration(int choice);
  [[nodiscard]] double settledScans(double scans);
  [[nodiscard]] model::IsolatedSetup& shared() { return working_.isolated; }

  frmIsoBlock* planned_ = nullptr;
};

}  // namespace ui
