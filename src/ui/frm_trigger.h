#pragma once

#include <array>

#include "ui/condition_sheet.h"
#include "ui/setup_window.h"

namespace ui {

/// What starts and stops an output table.
class frmTrigger final : public SetupWindow {
  Q_OBJECT
 public:
  frmTrigger(SetupWindow& owner, std::size_t table);

  /// 0 start, 1 stop.
  [[nodiscard]] ConditionSheet& conditions(int trigger) {
    return *sheets_[static_cast<std::size_t>(trigger)];
  }

 protected:
  bool mayBeDone() override;
  [[nodiscard]] std::vector<std::string> previewNames() const override;

 private:
  [[nodiscard]] model::OutputTable& table() { return working_.tables[number_ - 1]; }
  [[nodiscard]] const model::OutputTable& table() const { return working_.tables[number_ - 1]; }
  QWidget* page(int trigger);
  ConditionRows rowsOf(int trigger);
  [[nodiscard]] int countOf(int trigger) const;
  [[nodiscard]] std::string wordsOf(int trigger) const;
  void addSettings(Form& form);

  std::size_t number_;
  model::OutputTable before_;
  std::array<ConditionSheet*, 2> sheets_ = {};
};

}  // namespace ui
