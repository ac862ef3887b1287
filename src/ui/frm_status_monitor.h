#pragma once

#include "model/power_rules.h"
#include "ui/setup_window.h"

namespace ui {

/// Lines that set flags by the state of the logger, as a sheet and with a row to enter one.
class frmStatusMonitor final : public SetupWindow {
  Q_OBJECT
 public:
  explicit frmStatusMonitor(SetupWindow& owner);

 protected:
  bool mayBeDone() override;

 private:
  [[nodiscard]] model::LoggerConfiguration& configuration() { return working_.configuration; }
  QWidget* entry();
  QWidget* lineSheet();
  QWidget* code();
  std::vector<SheetColumn> columns();
  SheetColumn column(model::StatusColumn which, const char* title, std::string_view help);
  std::string& entered(model::StatusColumn which) {
    return entry_[static_cast<std::size_t>(which)];
  }
  [[nodiscard]] std::vector<std::string> statusFields() const;
  void addLine();
  Complaint storeEntry();
  void removeLine();

  model::StatusLine entry_;
  std::string addedField_;  // stays in its box for the next line
  SheetModel lines_;
  SheetView* view_ = nullptr;
};

}  // namespace ui
