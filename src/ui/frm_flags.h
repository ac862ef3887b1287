#pragma once

#include "ui/list_window.h"

namespace ui {

/// Program flags and the conditions that set them.
class frmFlags final : public ListWindow {
  Q_OBJECT
 public:
  frmFlags(const WindowPorts& ports, QWidget* parent);

 protected:
  [[nodiscard]] std::vector<std::string> previewNames() const override;

 private:
  List flagList();
  QWidget* conditions();
  [[nodiscard]] std::size_t rowsShown() const;
  void chooseFirstInUse();
  bool all_ = false;  // also flags beyond the number of the options
};

}  // namespace ui
