#include "control/condition_cells.h"

#include <cmath>

#include "control/field_expression.h"
#include "model/conditions.h"
#include "text/strings.h"
#include "verify/offered_variables.h"

namespace control {
namespace {

using model::Condition;
using text::concat;
using Complaint = std::optional<std::string>;

constexpr int comparisonCount = 6;
constexpr std::int16_t equalsCode = 4;
constexpr double trueValue = -1;

std::optional<double> truthOf(std::string_view text) {
  if (text::equalsIgnoringCase(text, "True")) return trueValue;
  if (text::equalsIgnoringCase(text, "False")) return 0;
  return std::nullopt;
}

bool comparesTruth(const Condition& condition) {
  return model::testsFlag(condition) && condition.Compare >= equalsCode;
}

Complaint complaintAboutVariable(std::string_view name, const model::Project& project) {
  const verify::OfferedVariables offered(project);
  if (name.empty() || offered.has(name) || offered.hasArray(name)) return {};
  if (const auto fault = faultIn(name, project)) return fault->text;
  return concat("'", name, "' is no variable; pick one from the list");
}

Complaint storeVariable(std::string_view name, Condition& condition,
                        const model::Project& project) {
  if (auto complaint = complaintAboutVariable(name, project)) return complaint;
  const bool newFlag = name != condition.MeasVar && !model::testsFlag(condition);
  condition.MeasVar = name;
  if (!newFlag || !model::testsFlag(condition) || condition.Compare >= equalsCode) return {};
  condition.Compare = equalsCode;
  condition.Value = trueValue;
  return {};
}

Complaint storeIndex(std::string_view text, Condition& condition) {
  const double index = text::readNumber(text);
  const bool whole = text.empty() || (text::isNumber(text) && index == std::floor(index));
  if (!whole || index < 0 || index > static_cast<double>(model::maxElements))
    return concat("'", text, "' is no element; enter a whole number from 1 to ", model::maxElements,
                  ", or nothing");
  condition.VarIdx = static_cast<std::int16_t>(index);
  return {};
}

Complaint storeComparison(std::string_view text, Condition& condition) {
  if (text.empty()) {
    condition.Compare = Condition{}.Compare;
    return {};
  }
  for (int code = 0; code < comparisonCount; ++code) {
    if (text != text::trimmed(model::operatorText(code))) continue;
    condition.Compare = static_cast<std::int16_t>(code);
    return {};
  }
  return concat("'", text, "' is no comparison; pick one from the list");
}

Complaint storeValue(std::string_view text, Condition& condition, const model::Project& project) {
  const std::optional<double> truth = truthOf(text);
  if (truth || text.empty() || text::isNumber(text)) {
    condition.Value = truth.value_or(text::readNumber(text));
    condition.Varb.clear();
    return {};
  }
  if (auto complaint = complaintAboutVariable(text, project)) return complaint;
  condition.Varb = text;
  return {};
}

Complaint storeExpression(std::string_view text, Condition& condition,
                          const model::Project& project) {
  if (!text.empty())
    if (const auto fault = faultIn(text, project)) return fault->text;
  condition.Expression = text;
  return {};
}

}  // namespace

std::string cellText(ConditionCell cell, const Condition& condition) {
  switch (cell) {
    case ConditionCell::variable:
      return condition.MeasVar;
    case ConditionCell::index:
      return condition.VarIdx == 0 ? "" : concat(condition.VarIdx);
    case ConditionCell::compare:
      return std::string(text::trimmed(model::operatorText(condition.Compare)));
    case ConditionCell::value:
      if (!condition.Varb.empty()) return condition.Varb;
      if (comparesTruth(condition)) return condition.Value != 0 ? "True" : "False";
      return text::shortest(condition.Value);
    case ConditionCell::expression:
      break;
  }
  return condition.Expression;
}

Complaint storeCell(ConditionCell cell, std::string_view text, Condition& condition,
                    const model::Project& project) {
  text = text::trimmed(text);
  switch (cell) {
    case ConditionCell::variable:
      return storeVariable(text, condition, project);
    case ConditionCell::index:
      return storeIndex(text, condition);
    case ConditionCell::compare:
      return storeComparison(text, condition);
    case ConditionCell::value:
      return storeValue(text, condition, project);
    case ConditionCell::expression:
      break;
  }
  return storeExpression(text, condition, project);
}

std::optional<std::string> complaintAboutStateCondition(const Condition& condition) {
  if (condition.VarIdx == 0 && condition.Varb.empty()) return std::nullopt;
  Condition whole = condition;
  whole.Expression.clear();
  const std::string text = model::conditionText(whole);
  return concat(
      "only a number can stand here; write ",
      text.empty() ? concat("the comparison with ", condition.Varb) : concat("'", text, "'"),
      " as free expression");
}

std::vector<std::string> comparisons() {
  std::vector<std::string> texts;
  texts.reserve(comparisonCount);
  for (int code = 0; code < comparisonCount; ++code)
    texts.emplace_back(text::trimmed(model::operatorText(code)));
  return texts;
}

}  // namespace control
