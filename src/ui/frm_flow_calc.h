#pragma once

#include "ui/calculator_window.h"

namespace ui {

/// Volume per time from the pulses of a flow sensor.
class frmFlowCalc final : public CalculatorWindow {
  Q_OBJECT
 public:
  static constexpr FieldText button = {
      "Flo&w calculator...", "Works out the multiplier of a flow from the factor of its sensor."};

  frmFlowCalc(SetupWindow& owner, const ScaledBlock& target);

 protected:
  void addInputs(Form& form) override;
  void addResults(Form& form) override;
  [[nodiscard]] calculators::Transfer transfer() const override;

 private:
  void addOutput(Form& form);
};

}  // namespace ui
