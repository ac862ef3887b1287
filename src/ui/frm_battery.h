#pragma once

#include "ui/setup_window.h"

namespace ui {

enum class Battery { volts, current };

/// How a measurement of the main battery is stored: its data type and what each table keeps.
class frmBattery final : public SetupWindow {
  Q_OBJECT
 public:
  frmBattery(SetupWindow& owner, Battery battery);

 protected:
  [[nodiscard]] std::vector<std::string> previewNames() const override;

 private:
  [[nodiscard]] model::PowerOutSet& set() { return working_.powerOut.sets.at(number_); }
  void addFields(Form& form);
  QWidget* tableSheet();
  std::vector<SheetColumn> columns();
  /// The tables that are on, by their index.
  [[nodiscard]] std::vector<std::size_t> tablesOn() const;

  std::size_t number_;
  SheetModel tables_;
};

}  // namespace ui
