#pragma once

#include "ui/condition_sheet.h"
#include "ui/setup_window.h"

namespace ui {

/// The conditions under which an output table keeps a record.
class frmWriteIf final : public SetupWindow {
  Q_OBJECT
 public:
  frmWriteIf(SetupWindow& owner, std::size_t table);

  [[nodiscard]] ConditionSheet& conditions() { return *sheet_; }

 protected:
  bool mayBeDone() override;
  [[nodiscard]] std::vector<std::string> previewNames() const override;

 private:
  [[nodiscard]] model::OutputTable& table() { return working_.tables[number_ - 1]; }
  [[nodiscard]] const model::OutputTable& table() const { return working_.tables[number_ - 1]; }
  ConditionRows rows();
  void addSettings(Form& form);
  [[nodiscard]] std::string words() const;

  std::size_t number_;
  model::OutputTable before_;
  ConditionSheet* sheet_ = nullptr;
};

}  // namespace ui
