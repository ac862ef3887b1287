#include "calculators/sensor_factors.h"

#include <algorithm>
#include <array>

#include "text/numbers.h"
#include "text/strings.h"

namespace calculators {
namespace {

constexpr std::string_view multiplierPattern = "###0.0#####";
constexpr std::string_view examplePattern = "###0.0##";
constexpr double litersOfGallon = 3.785411784;

Result example(const Result& multiplier, std::string_view pulsesPerSecond) {
  return shownAs(numberIn(pulsesPerSecond) * numberOf(multiplier), examplePattern);
}

double volumeRatio(const model::FlowInputs& inputs) {
  const bool factorInLiters = inputs.Pulses == liters;
  const bool outputInLiters = inputs.OutSystem == liters;
  if (factorInLiters == outputInLiters) return 1;
  return outputInLiters ? litersOfGallon : 1 / litersOfGallon;
}

std::size_t timeIndex(const model::FlowInputs& inputs) {
  return static_cast<std::size_t>(std::clamp<int>(inputs.OutUnits, perSecond, perHour));
}

}  // namespace

bool isInKiloOhms(const model::ResistanceInputs& inputs) {
  return text::equalsIgnoringCase(text::trimmed(inputs.Units), "kOhms");
}

Result resistanceMultiplier(const model::ResistanceInputs& inputs) {
  const double ohms = numberIn(inputs.RsOhms);
  if (!(ohms > 0)) return std::nullopt;
  return shownAs(isInKiloOhms(inputs) ? ohms / 1000 : ohms, multiplierPattern);
}

Transfer transferOf(const model::ResistanceInputs& inputs) {
  return {boxText(resistanceMultiplier(inputs)), "", isInKiloOhms(inputs) ? "kOhms" : "Ohms", ""};
}

Result rpmMultiplier(const model::RpmInputs& inputs) {
  return shownAs(60 / numberIn(inputs.Pulses), multiplierPattern);
}

Result rpmAtExample(const model::RpmInputs& inputs) {
  return example(rpmMultiplier(inputs), inputs.WhatIf);
}

Transfer transferOf(const model::RpmInputs& inputs) {
  return {boxText(rpmMultiplier(inputs)), "", "RPM", ""};
}

Result flowMultiplier(const model::FlowInputs& inputs) {
  static constexpr std::array<double, 3> secondsOf = {1, 60, 3600};
  const double factor = numberIn(inputs.CalFactor);
  if (!(factor > 0)) return std::nullopt;
  return shownAs(1 / factor * secondsOf[timeIndex(inputs)] * volumeRatio(inputs), "#,##0.0#####");
}

Result flowAtExample(const model::FlowInputs& inputs) {
  return example(flowMultiplier(inputs), inputs.WhatIf);
}

std::string_view flowUnits(const model::FlowInputs& inputs) {
  static constexpr std::array<std::string_view, 6> units = {"Gals/Sec", "Gals/Min", "Gals/Hr",
                                                            "Ltrs/Sec", "Ltrs/Min", "Ltrs/Hr"};
  return units[(inputs.OutSystem == liters ? 3 : 0) + timeIndex(inputs)];
}

Transfer transferOf(const model::FlowInputs& inputs) {
  return {boxText(flowMultiplier(inputs)), "", std::string(flowUnits(inputs)), ""};
}

}  // namespace calculators
