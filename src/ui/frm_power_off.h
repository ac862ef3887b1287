#pragma once

#include "model/power_rules.h"
#include "ui/setup_window.h"

namespace ui {

/// What switches the logger off: a measurement, or a time; and when it comes on again.
class frmPowerOff final : public SetupWindow {
  Q_OBJECT
 public:
  explicit frmPowerOff(SetupWindow& owner);

 protected:
  bool mayBeDone() override;
  [[nodiscard]] std::vector<std::string> previewNames() const override;

 private:
  [[nodiscard]] model::LoggerConfiguration& configuration() { return working_.configuration; }
  void addCondition(Form& form);
  void addOffTime(Form& form);
  void addOnTime(Form& form);
  Field& addPart(Form& form, const model::InstantField& field, bool off);
  void addSwitchOf(Form& form, Field& part, const model::InstantField& field);
  void fillInstants();

  model::LoggerConfiguration before_;
};

}  // namespace ui
