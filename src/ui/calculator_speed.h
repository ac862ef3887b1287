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

}  // namespace ui
