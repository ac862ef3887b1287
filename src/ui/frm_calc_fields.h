#pragma once

#include <QComboBox>

#include "ui/setup_window.h"

namespace ui {

/// Values that are computed each scan: expressions and running averages.
class frmCalcFields final : public SetupWindow {
  Q_OBJECT
 public:
  frmCalcFields(const WindowPorts& ports, QWidget* parent);
  void addField();
  void removeField();

 protected:
  bool mayBeDone() override;
  [[nodiscard]] std::vector<std::string> previewNames() const override;

 private:
  std::vector<SheetColumn> columns();
  QWidget* buttons();
  void insertVariable();
  [[nodiscard]] model::CalculatedField& at(std::size_t row) {
    return working_.calculated.fields[row];
  }
  [[nodiscard]] std::string stateOf(std::size_t row) const;

  SheetModel sheet_;
  SheetView* view_;
  QComboBox* variables_;
};

}  // namespace ui
