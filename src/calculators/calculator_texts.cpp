#include "calculators/calculator_texts.h"

namespace calculators {
namespace {

std::string_view bridgeCaption(const model::MeasurementBlock& bridge) {
  const bool half = model::bridgeInstruction(bridge.Style).starts_with("BrHalf");
  return half ? "Input V/V" : "Input mV/V";
}

std::string_view temperatureOr(std::string_view caption, bool isTemperature) {
  return isTemperature ? "Input Deg_C" : caption;
}

}  // namespace

std::string_view twoPointTitle(bool forFft) {
  return forFft ? title::twoPointOfFft : title::twoPoint;
}

std::string_view inputCaption(model::BlockKind kind, const model::MeasurementBlock& block) {
  switch (kind) {
    case model::BlockKind::thermocouple:
      return "Input Deg_C";
    case model::BlockKind::highVoltage:
      return "Input V";
    case model::BlockKind::isolated:
      return temperatureOr("Input mV", block.InputType == 1);
    case model::BlockKind::bridge:
      return bridgeCaption(block);
    case model::BlockKind::pulse:
      return block.Opt == 0 ? "Counts" : "Input Hz";
    case model::BlockKind::tcmux:
      return temperatureOr("Input mV", !block.TCMUXVolts);
    case model::BlockKind::voltage:
    case model::BlockKind::filter:
      break;
  }
  return "Input mV";
}

}  // namespace calculators
