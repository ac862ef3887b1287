#include "ui/calculator_speed.h"

#include "calculators/calculator_texts.h"

namespace ui {

namespace help = calculators::help;
namespace caption = calculators::caption;
using calculators::SpeedScaling;
using calculators::SpeedUnit;

void SpeedWindow::addOutputUnit(Form& form) {
  std::vector<Option> units;
  units.reserve(std::size(calculators::speedUnitNames));
  for (const std::string_view name : calculators::speedUnitNames)
    units.push_back({name, help::outputUnits});
  addOptions(
      form, {"&Output:", help::outputUnits}, units, [this] { return static_cast<int>(unit()); },
      [this](int index) { setUnit(static_cast<SpeedUnit>(index)); });
}

void SpeedWindow::addDistances(Form& form) {
  const auto add = [this, &form](std::string_view label, std::string_view words,
                                 calculators::Result SpeedScaling::*member, std::string_view unit) {
    addResult(form, {label, words, unit}, [this, member] { return scaling().*member; });
  };
  add("Distance, metric:", "The distance of a pulse.", &SpeedScaling::cmPerPulse,
      caption::cmPerPulse);
  add("Distance, English:", "The distance of a pulse.", &SpeedScaling::inchesPerPulse,
      caption::inchesPerPulse);
  add("Count, metric:", "Pulses of a kilometer.", &SpeedScaling::pulsesPerKm, caption::pulsesPerKm);
  add("Count, English:", "Pulses of a mile.", &SpeedScaling::pulsesPerMile, caption::pulsesPerMile);
}

void SpeedWindow::addResults(Form& form) {
  addDistances(form);
  addResult(form, {"Multiplier:", help::transferred}, [this] { return scaling().multiplier; });
  Form& whatIf = form.group("What if");
  addNumber(whatIf, {"&Pulses per second:", help::examplePulses},
            [this]() -> std::string& { return examplePulses(); });
  whatIf.readout({"That is:", "The speed at these pulses."}, [this] {
    const calculators::Result speed = exampleSpeed();
    return speed ? speed->shown + " " + std::string(calculators::nameOf(unit())) : "-";
  });
}

}  // namespace ui
