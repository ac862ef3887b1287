#include "ui/frm_more_spd_calc.h"

#include "calculators/calculator_texts.h"

namespace ui {

frmMoreSpdCalc::frmMoreSpdCalc(SetupWindow& owner, const ScaledBlock& target)
    : SpeedWindowOf(owner, target, "frmMoreSpdCalc", calculators::title::moreSpeed) {
  build();
}

void frmMoreSpdCalc::addInputs(Form& form) {
  addNumber(form, {"P&ulses:", calculators::help::pulsesPerDistance},
            [this]() -> std::string& { return speed().InPulses; });
  addOptions(
      form, {"&Counted per:", calculators::help::pulsesPerDistance},
      {{"Mile", ""}, {"Kilometer", ""}}, [this] { return static_cast<int>(speed().InSystem); },
      [this](int index) { speed().InSystem = static_cast<std::int16_t>(index); });
  addOutputUnit(form);
}

}  // namespace ui
