#pragma once

#include "ui/calculator_window.h"

namespace ui {

/// Revolutions per minute from pulses.
class frmRPMCalc final : public CalculatorWindow {
  Q_OBJECT
 public:
  static constexpr FieldText button = {"RPM ca&lculator...",
                                       "Works out the multiplier of revolutions per minute."};

  frmRPMCalc(SetupWindow& owner, const ScaledBlock& target);

 protected:
  void addInputs(Form& form) override;
  void addResults(Form& form) override;
  [[nodiscard]] calculators::Transfer transfer() const override;
};

}  // namespace ui
