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
  SheetColumn samplesColumn();
  static void setType(model::CalculatedField& field, std::size_t type);
  [[nodiscard]] std::string stateOf(std::size_t row) const;
  /// Words, what stands `between`, and the expression with the place of the fault.
  [[nodiscard]] Complaint complaintAbout(std::size_t row, std::string_view between) const;
  void nameAnew();
  void offerVariables();

  model::Project named_;  // the working copy with references to the names that it gives now
  QStringList offered_;
  SheetModel sheet_;
  SheetView* view_;
  QComboBox* variables_;
};

}  // namespace ui
