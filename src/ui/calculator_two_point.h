#pragma once

#include "ui/calculator_window.h"

namespace ui {

/// Multiplier and offset from two points of a line, and a look at any other point of it.
class TwoPointWindow : public CalculatorWindow {
  Q_OBJECT
 protected:
  TwoPointWindow(SetupWindow& owner, const ScaledBlock& target, const QString& name,
                 std::string_view title, model::TwoPointInputs model::CalculatorInputs::*inputs);

  void addInputs(Form& form) override;
  void addResults(Form& form) override;
  [[nodiscard]] calculators::Transfer transfer() const override;

 private:
  [[nodiscard]] model::TwoPointInputs& points() { return inputs().*points_; }
  [[nodiscard]] const model::TwoPointInputs& points() const { return inputs().*points_; }
  void probeX();
  void keepXWithinEnds();
  void probeY();
  void followY();

  model::TwoPointInputs model::CalculatorInputs::*points_;
  std::string x_;       // the what-if X, as entered or computed
  std::string yOfX_;    // the what-if Y that belongs to it
  bool fromX_ = false;  // X was entered last
};

}  // namespace ui
