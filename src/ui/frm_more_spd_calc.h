#pragma once

#include "ui/calculator_speed.h"

namespace ui {

/// Speed from the pulses that a transmission gives over a distance.
class frmMoreSpdCalc final : public SpeedWindow {
  Q_OBJECT
 public:
  static constexpr FieldText button = {
      "Speed b&y distance...", "Works out the multiplier of a speed from pulses over a distance."};

  frmMoreSpdCalc(SetupWindow& owner, const ScaledBlock& target);

 protected:
  void addInputs(Form& form) override;
  [[nodiscard]] calculators::Transfer transfer() const override;
  [[nodiscard]] calculators::SpeedScaling scaling() const override;
  [[nodiscard]] calculators::SpeedUnit unit() const override;
  void setUnit(calculators::SpeedUnit unit) override;
  std::string& examplePulses() override { return inputs().moreSpeed.WhatIf; }
  [[nodiscard]] calculators::Result exampleSpeed() const override;
};

}  // namespace ui
