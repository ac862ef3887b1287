#include "ui/frm_spd_calc.h"

#include <QHeaderView>

#include "calculators/calculator_texts.h"
#include "model/limits.h"
#include "text/strings.h"

namespace ui {

frmSpdCalc::frmSpdCalc(SetupWindow& owner, const ScaledBlock& target)
    : SpeedWindowOf(owner, target, "frmSpdCalc", calculators::title::speed) {
  build();
}

void frmSpdCalc::addInputs(Form& form) {
  addNumber(form, {"Pulses per &revolution:", calculators::help::pulsesPerShaftTurn},
            [this]() -> std::string& { return speed().RevSpeed; });
  addGears(form);
  addWheel(form);
  addOutputUnit(form);
}

void frmSpdCalc::addWheel(Form& form) {
  addNumber(form, {"&Wheel size:", calculators::help::wheelSize},
            [this]() -> std::string& { return speed().WheelSize; });
  addOptions(
      form, {"&Size is:", calculators::help::wheelSize},
      {{"Circumference", ""}, {"Diameter", ""}, {"Radius", ""}},
      [this] { return static_cast<int>(speed().SizeOption); },
      [this](int index) { speed().SizeOption = static_cast<std::int16_t>(index); });
  addOptions(
      form, {"&Measured in:", "The unit of the wheel size."}, {{"Inches", ""}, {"Centimeters", ""}},
      [this] { return static_cast<int>(speed().MKSSpd); },
      [this](int index) { speed().MKSSpd = static_cast<std::int16_t>(index); });
}

void frmSpdCalc::addGears(Form& form) {
  SheetColumn turns{
      "Turns", qstring(calculators::help::gearTurns),
      [this](std::size_t row) {
        const auto& ratios = speed().GearRatio;
        return row < ratios.size() ? ratios[row] : std::string();
      },
      [this](std::size_t row, std::string_view cell) { return storeGear(row, cell), Complaint(); }};
  gears_.setColumns({turns}, [] { return model::maxGears; });
  auto* view = new SheetView(gears_, this);
  view->horizontalHeader()->setStretchLastSection(true);
  view->setMaximumHeight(4 * view->verticalHeader()->defaultSectionSize() +
                         view->horizontalHeader()->sizeHint().height());
  form.custom({"&Gear boxes:", calculators::help::gearTurns}, view);
  add(gears_);
}

/// Gears behind the last one that has turns are none.
void frmSpdCalc::storeGear(std::size_t gear, std::string_view turns) {
  auto& ratios = speed().GearRatio;
  if (ratios.size() <= gear) ratios.resize(gear + 1);
  ratios[gear] = text::trimmed(turns);
  while (!ratios.empty() && ratios.back().empty()) ratios.pop_back();
}

}  // namespace ui
