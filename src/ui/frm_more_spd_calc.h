#pragma once

#include "ui/calculator_speed.h"

namespace ui {

/// Speed from the pulses that a transmission gives over a distance.
class frmMoreSpdCalc final
    : public SpeedWindowOf<&model::CalculatorInputs::moreSpeed, &model::MoreSpeedInputs::WhatIf> {
  Q_OBJECT
 public:
  static constexpr FieldText button = {
      "Speed b&y distance...", "Works out the multiplier of a speed from pulses over a distance."};

  frmMoreSpdCalc(SetupWindow& owner, const ScaledBlock& target);

 protected:
  void addInputs(Form& form) override;
};

}  // namespace ui
