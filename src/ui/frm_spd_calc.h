#pragma once

#include "ui/calculator_speed.h"

namespace ui {

/// Speed from the pulses of a shaft that drives a wheel.
class frmSpdCalc final : public SpeedWindow {
  Q_OBJECT
 public:
  static constexpr FieldText button = {"Sp&eed calculator...",
                                       "Works out the multiplier of a speed from gears and wheel."};

  frmSpdCalc(SetupWindow& owner, const ScaledBlock& target);

 protected:
  void addInputs(Form& form) override;
  [[nodiscard]] calculators::Transfer transfer() const override;
  [[nodiscard]] calculators::SpeedScaling scaling() const override;
  [[nodiscard]] calculators::SpeedUnit unit() const override;
  void setUnit(calculators::SpeedUnit unit) override;
  std::string& examplePulses() override { return inputs().speed.PulsesSec; }
  [[nodiscard]] calculators::Result exampleSpeed() const override;

 private:
  void addWheel(Form& form);
  void addGears(Form& form);
  void storeGear(std::size_t gear, std::string_view turns);

  SheetModel gears_;
};

}  // namespace ui
