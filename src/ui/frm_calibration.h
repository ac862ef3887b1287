#pragma once

#include "ui/setup_window.h"

namespace ui {

/// Whether the logger calibrates itself, and when it has time to.
class frmCalibration final : public SetupWindow {
  Q_OBJECT
 public:
  explicit frmCalibration(SetupWindow& owner);

 protected:
  [[nodiscard]] std::vector<std::string> previewNames() const override;
};

}  // namespace ui
