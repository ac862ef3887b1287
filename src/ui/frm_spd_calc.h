#pragma once

#include "ui/calculator_speed.h"

namespace ui {

/// Speed from the pulses of a shaft that drives a wheel.
class frmSpdCalc final
    : public SpeedWindowOf<&model::CalculatorInputs::speed, &model::SpeedInputs::PulsesSec> {
  Q_OBJECT
 public:
  static constexpr FieldText button = {"Sp&eed calculator...",
                                       "Works out the multiplier of a speed from gears and wheel."};

  frmSpdCalc(SetupWindow& owner, const ScaledBlock& target);

 protected:
  void addInputs(Form& form) override;

 private:
  void addWheel(Form& form);
  void addGears(Form& form);
  void storeGear(std::size_t gear, std::string_view turns);

  SheetModel gears_;
};

}  // namespace ui
