#pragma once

#include "ui/calculator_two_point.h"

namespace ui {

/// Multiplier and offset of a sensor with a straight line.
class frmCalcMultOff final : public TwoPointWindow {
  Q_OBJECT
 public:
  static constexpr FieldText button = {
      "&X-Y calculator...", "Works out multiplier and offset from two points of a line."};

  frmCalcMultOff(SetupWindow& owner, const ScaledBlock& target);
};

}  // namespace ui
