#pragma once

#include "ui/list_window.h"

namespace ui {

/// Continuous analog outputs of the 7131 modules.
class frmExcite final : public ListWindow {
  Q_OBJECT
 public:
  frmExcite(const WindowPorts& ports, QWidget* parent);

 protected:
  [[nodiscard]] std::vector<std::string> previewNames() const override;

 private:
  List outputs();
  QWidget* conditions();
  [[nodiscard]] model::ExcitationChannel& at(std::size_t row);
};

}  // namespace ui
