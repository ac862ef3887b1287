#pragma once

#include "calculators/sensitivity.h"
#include "ui/calculator_window.h"

namespace ui {

/// Multiplier of a bridge sensor from its calibration sheet, and a look at what excitation, units
/// and sensor output go together.
class frmCalcmVPerVolt final : public CalculatorWindow {
  Q_OBJECT
 public:
  static constexpr FieldText button = {
      "mV/V ca&lculator...", "Works out the multiplier from the calibration sheet of the sensor."};

  frmCalcmVPerVolt(SetupWindow& owner, const ScaledBlock& target);

 protected:
  void addInputs(Form& form) override;
  void addResults(Form& form) override;
  [[nodiscard]] calculators::Transfer transfer() const override;
  bool mayBeDone() override;

 private:
  using Place = std::function<std::string&()>;
  void addUnknown(Form& form, const FieldText& text, calculators::Unknown unknown,
                  const Place& place);
  void solve(calculators::Unknown unknown, const Place& place);
  [[nodiscard]] bool isExcitationEdited() const;

  std::string excitation_, units_;  // boxes of the panel that no project keeps
  std::string excitationBefore_;
  std::string_view formula_;
};

}  // namespace ui
