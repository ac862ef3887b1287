#include "verify/offered_variables.h"

#include "model/conditions.h"
#include "model/pick_list.h"
#include "text/numbers.h"
#include "text/strings.h"
#include "verify/expression_variables.h"

namespace verify {
namespace {

using model::BlockKind;
using text::concat;

constexpr std::string_view computedIndex = "()";

}  // namespace

OfferedVariables::OfferedVariables(const model::Project& project)
    : list_(model::variableNames(project)), names_(list_.begin(), list_.end()) {
  for (const std::string& name : list_) {
    const std::size_t bracket = name.find('(');
    if (bracket != std::string::npos) arrays_.insert(std::string_view(name).substr(0, bracket));
  }
  addArrays(project);
}

void OfferedVariables::addArrays(const model::Project& project) {
  for (const BlockKind kind : model::allBlockKinds)
    for (std::size_t n = 1; n <= model::infoOf(kind).blockLimit; ++n) {
      const bool filter = kind == BlockKind::filter;
      if (!inUse(project, kind, n) || (filter && isFft(project, n))) continue;
      const std::string letter = filter ? "FV" : std::string(1, model::infoOf(kind).letter);
      channels_[concat(letter, "Blk", n)] = project.block(kind, n).elements.size();
    }
  for (std::size_t k = 0; k < project.can.items.size(); ++k) {
    const model::CanItem& item = project.can.items[k];
    if (item.DataStyle != 1 && canItemInUse(project, item))
      channels_[concat("CBlk", k + 1)] = item.values.size();
  }
}

bool OfferedVariables::has(std::string_view name) const {
  if (names_.contains(name)) return true;
  const std::size_t bracket = name.find('(');
  if (bracket == std::string_view::npos || !name.ends_with(')')) return false;
  const auto array = channels_.find(std::string(name.substr(0, bracket)));
  if (array == channels_.end()) return false;
  const double index = text::readNumber(name.substr(bracket + 1));
  return index >= 1 && index <= static_cast<double>(array->second);
}

bool OfferedVariables::hasArray(std::string_view name) const {
  return arrays_.contains(name) || channels_.contains(std::string(name));
}

bool OfferedVariables::isOffered(const std::string& variable) const {
  std::string_view array = variable;
  if (array.ends_with(computedIndex)) array.remove_suffix(computedIndex.size());
  return has(variable) || hasArray(array);
}

std::vector<std::string> OfferedVariables::missingIn(std::string_view expression) const {
  std::vector<std::string> variables = variablesIn(expression);
  std::erase_if(variables, [this](const std::string& variable) { return isOffered(variable); });
  return variables;
}

std::vector<std::string> OfferedVariables::missingName(std::string_view name) const {
  if (has(name)) return {};
  return {std::string(name.empty() ? noName : name)};
}

std::vector<std::string> OfferedVariables::missingIn(const model::Condition& condition) const {
  if (!text::trimmed(condition.Expression).empty()) return missingIn(condition.Expression);
  std::vector<std::string> missing = missingName(variableOf(condition));
  const std::string_view other = text::trimmed(condition.Varb);
  if (other.empty() || text::isNumber(other)) return missing;
  for (std::string& name : missingName(other)) missing.push_back(std::move(name));
  return missing;
}

}  // namespace verify
