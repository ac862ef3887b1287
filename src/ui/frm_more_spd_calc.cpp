#include "ui/frm_more_spd_calc.h"

#include "calculators/calculator_texts.h"

namespace ui {

frmMoreSpdCalc::frmMoreSpdCalc(SetupWindow& owner, const ScaledBlock& target)
    : SpeedWindow(owner, target, "frmMoreSpdCalc", calculators::title::moreSpeed) {
  build();
}

void frmMoreSpdCalc::addInputs(Form& form) {
  addNumber(form, {"P&ulses:", calculators::help::pulsesPerDistance},
            [this]() -> std::string& { return inputs().moreSpeed.InPulses; });
  addOptions(
      form, {"&Counted per:", calculators::help::pulsesPerDistance},
      {{"Mile", ""}, {"Kilometer", ""}},
      [this] { return static_cast<int>(inputs().moreSpeed.InSystem); },
      [this](int index) { inputs().moreSpeed.InSystem = static_cast<std::int16_t>(index); });
  addOutputUnit(form);
}

calculators::SpeedScaling frmMoreSpdCalc::scaling() const {
  return calculators::speedScaling(inputs().moreSpeed);
}

calculators::SpeedUnit frmMoreSpdCalc::unit() const {
  return calculators::speedUnit(inputs().moreSpeed);
}

void frmMoreSpdCalc::setUnit(calculators::SpeedUnit unit) {
  calculators::setSpeedUnit(inputs().moreSpeed, unit);
}

calculators::Result frmMoreSpdCalc::exampleSpeed() const {
  return calculators::speedAtExample(inputs().moreSpeed);
}

calculators::Transfer frmMoreSpdCalc::transfer() const {
  return calculators::transferOf(inputs().moreSpeed);
}

}  // namespace ui
