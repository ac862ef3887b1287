#pragma once

#include "ui/calculator_two_point.h"

namespace ui {

/// Multiplier and offset of a potentiometer.
class frmCalcPot final : public TwoPointWindow {
  Q_OBJECT
 public:
  static constexpr FieldText button = {
      "Potentiometer calculator...",
      "Works out multiplier and offset of a potentiometer from its two ends."};

  frmCalcPot(SetupWindow& owner, const ScaledBlock& target);
};

}  // namespace ui
