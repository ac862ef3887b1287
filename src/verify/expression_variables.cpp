#include "verify/expression_variables.h"

#include <algorithm>

#include "model/expression_names.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace verify {
namespace {

using text::concat;

}  // namespace

std::vector<std::string> variablesIn(std::string_view expression) {
  std::vector<std::string> variables;
  for (model::NameInExpression& found : model::namesIn(expression))
    if (std::find(variables.begin(), variables.end(), found.name) == variables.end())
      variables.push_back(std::move(found.name));
  return variables;
}

unsigned flagsIn(std::string_view expression) {
  constexpr std::string_view word = "Flag(";
  unsigned flags = 0;
  for (const std::string& variable : variablesIn(expression)) {
    if (!text::equalsIgnoringCase(variable.substr(0, word.size()), word)) continue;
    const auto flag = text::integerWithin(text::readNumber(variable.substr(word.size())), 0, 100);
    if (flag >= 1 && flag <= static_cast<std::int64_t>(model::maxFlags)) flags |= 1U << (flag - 1);
  }
  return flags;
}

std::string variableOf(const model::Condition& condition) {
  const std::string_view name = text::trimmed(condition.MeasVar);
  const bool indexed =
      condition.VarIdx > 0 && !name.empty() && name.find('(') == std::string_view::npos;
  return indexed ? concat(name, "(", condition.VarIdx, ")") : std::string(name);
}

}  // namespace verify
