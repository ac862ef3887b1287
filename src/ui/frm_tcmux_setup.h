#pragma once

#include "ui/block_window.h"

namespace ui {

/// Thermocouples or voltages on TCMUX multiplexers.
class frmTCMUXSetup final : public BlockWindow {
  Q_OBJECT
 public:
  frmTCMUXSetup(const WindowPorts& ports, QWidget* parent);

 protected:
  void addFields(Form& form) override;
  [[nodiscard]] std::string placeOfChannel(std::size_t channel) const override;
  void addSharedFields(Form& form) override;
};

}  // namespace ui
