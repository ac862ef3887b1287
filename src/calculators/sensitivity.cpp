#include "calculators/sensitivity.h"

#include <array>
#include <cmath>
#include <utility>

#include "text/numbers.h"
#include "text/strings.h"

namespace calculators {
namespace {

constexpr double largestExcitationMv = 5000;
constexpr std::string_view panelPattern = "###0.0###";

/// Eight significant digits or so, whatever the size.
std::string_view multiplierPattern(double multiplier) {
  static constexpr std::pair<double, std::string_view> patterns[] = {
      {999999, "######0.0"},  {99999.9, "#####0.00"}, {9999.99, "####0.000"},
      {999.999, "###0.0000"}, {99.9999, "##0.00000"}, {9.99999, "#0.000000"}};
  for (const auto& [above, pattern] : patterns)
    if (std::abs(multiplier) > above) return pattern;
  return "0.0000000";
}

double solved(Unknown unknown, double m, const SensitivityPanel& panel) {
  const double e = numberIn(panel.excitation);
  const double u = numberIn(panel.units);
  const double v = numberIn(panel.output);
  switch (unknown) {
    case Unknown::excitation:
      return v / u * m * 1000;
    case Unknown::units:
      return v / (e / 1000) * m;
    case Unknown::output:
      break;
  }
  return u * (e / 1000) / m;
}

}  // namespace

Result sensitivityMultiplier(const model::SensitivityInputs& inputs) {
  const double multiplier = numberIn(inputs.FullScale) / numberIn(inputs.mVPerV);
  return shownAs(multiplier, multiplierPattern(multiplier));
}

std::string_view formulaOf(Unknown unknown) {
  static constexpr std::array<std::string_view, 3> formulas = {
      "E = V / U * M * 1000", "U = V / (E / 1000) * M", "V = U * (E / 1000) / M"};
  return formulas[static_cast<std::size_t>(unknown)];
}

Solution solvedFor(Unknown unknown, const model::SensitivityInputs& inputs,
                   const SensitivityPanel& panel) {
  const double multiplier = numberOf(sensitivityMultiplier(inputs));
  Result value = shownAs(solved(unknown, multiplier, panel), panelPattern);
  std::string shown = value ? value->shown : "ERROR";
  return {std::move(value), std::move(shown)};
}

Result shownExcitation(std::string_view excitation) {
  return shownAs(text::readNumber(excitation), panelPattern);
}

std::optional<std::string> complaintAboutExcitation(std::string_view excitation) {
  if (text::trimmed(excitation).empty()) return std::nullopt;
  if (!text::isNumber(excitation))
    return text::concat("'", excitation, "' is no number; enter mV without their unit.");
  if (text::readNumber(excitation) >= 0) return std::nullopt;
  return "The excitation can't be negative; enter 0 to 5000 mV.";
}

std::optional<ports::Message> questionAboutExcitation(std::string_view excitation) {
  if (!(text::readNumber(excitation) > largestExcitationMv)) return std::nullopt;
  return ports::Message{
      .title = "VALUE TOO LARGE",
      .text = text::concat("Excitation voltage is ", excitation,
                           " mV which is greater than the 5000 mV limit of the logger.\r\n"
                           "Do you want to go back and edit the values?"),
      .icon = ports::Icon::exclamation,
      .buttons = ports::Buttons::yesNo,
      .defaultButton = ports::Answer::yes};
}

Transfer transferOf(const model::SensitivityInputs& inputs, std::string_view excitation) {
  const bool given = text::isNumber(excitation) && !complaintAboutExcitation(excitation);
  return {boxText(sensitivityMultiplier(inputs)), "", inputs.Units,
          given ? std::string(text::trimmed(excitation)) : ""};
}

}  // namespace calculators
