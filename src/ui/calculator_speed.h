#pragma once

#include "calculators/speed.h"
#include "ui/calculator_window.h"

namespace ui {

/// What the speed calculators share: the output unit and the results.
class SpeedWindow : public CalculatorWindow {
  Q_OBJECT
 protected:
  using CalculatorWindow::CalculatorWindow;

  virtual calculators::SpeedScaling scaling() const = 0;
  virtual calculators::SpeedUnit unit() const = 0;
  virtual void setUnit(calculators::SpeedUnit unit) = 0;
  virtual std::string& examplePulses() = 0;
  virtual calculators::Result exampleSpeed() const = 0;

  void addOutputUnit(Form& form);
  void addResults(Form& form) override;

 private:
  void addDistances(Form& form);
};

/// A speed calculator of the inputs that the project keeps in one place.
template <auto Place, auto ExamplePulses>
class SpeedWindowOf : public SpeedWindow {
 protected:
  using SpeedWindow::SpeedWindow;

  [[nodiscard]] auto& speed() { return inputs().*Place; }
  [[nodiscard]] const auto& speed() const { return inputs().*Place; }
  [[nodiscard]] calculators::SpeedScaling scaling() const override {
    return calculators::speedScaling(speed());
  }
  [[nodiscard]] calculators::SpeedUnit unit() const override {
    return calculators::speedUnit(speed());
  }
  void setUnit(calculators::SpeedUnit unit) override { calculators::setSpeedUnit(speed(), unit); }
  std::string& examplePulses() override { return speed().*ExamplePulses; }
  [[nodiscard]] calculators::Result exampleSpeed() const override {
    return calculators::speedAtExample(speed());
  }
  [[nodiscard]] calculators::Transfer transfer() const override {
    return calculators::transferOf(speed());
  }
};

}  // namespace ui
