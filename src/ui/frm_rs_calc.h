#pragma once

#include "ui/calculator_window.h"

namespace ui {

/// Multiplier of a resistance that is measured against a known resistor.
class frmRsCalc final : public CalculatorWindow {
  Q_OBJECT
 public:
  static constexpr FieldText button = {
      "R&esistance calculator...",
      "Works out the multiplier from the resistor that is measured against."};

  frmRsCalc(SetupWindow& owner, const ScaledBlock& target);

 protected:
  void addInputs(Form& form) override;
  void addResults(Form& form) override;
  [[nodiscard]] calculators::Transfer transfer() const override;
};

}  // namespace ui
