#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "calculators/result.h"
#include "model/calculator_inputs.h"
#include "ports/message_service.h"

namespace calculators {

/// Units per mV/V of a bridge sensor: rated capacity by full-scale output.
Result sensitivityMultiplier(const model::SensitivityInputs& inputs);

/// The boxes of the "what if" panel: excitation in mV, units, sensor output in mV.
struct SensitivityPanel {
  std::string excitation, units, output;
};
enum class Unknown { excitation, units, output };

/// "E = V / U * M * 1000" and so on.
std::string_view formulaOf(Unknown unknown);

struct Solution {
  Result value;
  std::string shown;  // "ERROR" when there is no value
};
/// Solves for one box of the panel from the two others and the multiplier.
Solution solvedFor(Unknown unknown, const model::SensitivityInputs& inputs,
                   const SensitivityPanel& panel);

/// An excitation in mV as the panel shows it.
Result shownExcitation(std::string_view excitation);

/// Why a text can't be an excitation in mV; an empty one leaves that of the block.
std::optional<std::string> complaintAboutExcitation(std::string_view excitation);
/// An excitation, as its box shows it, above what the logger gives. Yes goes back to the window.
std::optional<ports::Message> questionAboutExcitation(std::string_view excitation);

Transfer transferOf(const model::SensitivityInputs& inputs, std::string_view excitation);

}  // namespace calculators
