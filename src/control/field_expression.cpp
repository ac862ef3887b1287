#include "control/field_expression.h"

#include <algorithm>

#include "model/block_rules.h"
#include "model/expression_names.h"
#include "model/pick_list.h"
#include "text/strings.h"
#include "verify/offered_variables.h"

namespace control {
namespace {

using logscript::ExpressionFault;
using model::NameInExpression;
using text::concat;

/// "; did you mean 'Press'?", or that the lists of the window have what there is.
std::string advice(const NameInExpression& found, const model::Project& project) {
  const std::vector<std::string> variables = model::variableNames(project);
  std::vector<std::string_view> names(variables.begin(), variables.end());
  std::string_view name = found.name;
  std::string_view meant = logscript::closestName(name, names);
  const bool hasIndex = name.find('(') != std::string_view::npos;
  if (meant.empty() && hasIndex) {
    name = name.substr(0, found.stem);
    meant = logscript::closestName(name, logscript::functionNames());
  }
  if (meant.empty()) return "; pick one from the list";
  return concat("; did you mean '", meant, "'?");
}

ExpressionFault unknownName(const NameInExpression& found, const model::Project& project) {
  const bool computed = found.name.ends_with("()");  // its list holds an expression
  const std::string shown = computed ? found.name.substr(0, found.name.size() - 2) : found.name;
  return {found.offset, found.length,
          concat("there is no ", computed ? "function or array" : "variable", " '", shown, "'",
                 advice(found, project))};
}

}  // namespace

std::optional<ExpressionFault> faultIn(std::string_view expression, const model::Project& project) {
  if (auto fault = logscript::faultInForm(expression)) return fault;
  const verify::OfferedVariables offered(project);
  for (const NameInExpression& found : model::namesIn(expression))
    if (!offered.missingIn(expression.substr(found.offset, found.length)).empty())
      return unknownName(found, project);
  return std::nullopt;
}

std::optional<ExpressionFault> faultIn(const model::CalculatedField& field,
                                       const model::Project& project) {
  if (auto fault = faultIn(field.CalcExpress, project)) return fault;
  if (!isRunningAverage(field)) return std::nullopt;
  const std::string_view source = text::trimmed(field.CalcExpress);
  const std::vector<NameInExpression> names = model::namesIn(source);
  if (names.size() == 1 && names.front().length == source.size()) return std::nullopt;
  return ExpressionFault{0, field.CalcExpress.size(),
                         "a running average is of one variable; pick one from the list, or compute "
                         "the expression in a field of its own"};
}

bool isRunningAverage(const model::CalculatedField& field) {
  constexpr int runningAverage = 1;
  return field.CalcType == runningAverage;
}

std::optional<std::string> complaintAboutSamples(const model::CalculatedField& field) {
  const auto& [least, most, step] = model::averagedSamplesBounds;
  if (!isRunningAverage(field) || (field.CalcAvg >= least && field.CalcAvg <= most))
    return std::nullopt;
  return concat("a running average of ", field.CalcAvg, " samples is none; write ", least, " to ",
                most);
}

}  // namespace control
