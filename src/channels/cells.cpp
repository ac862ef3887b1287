#include "channels/cells.h"

#include <cmath>
#include <limits>

#include "text/numbers.h"
#include "text/strings.h"

namespace channels {

std::optional<std::string> storeNumber(std::string_view cell, double& value) {
  const double number = text::readNumber(cell);
  if (!text::isNumber(cell) || std::abs(number) >= std::numeric_limits<double>::max())
    return text::concat("'", cell, "' is no number; write it with a decimal point");
  value = number;
  return std::nullopt;
}

std::optional<std::string> storeYesNo(std::string_view cell, bool& value) {
  const auto isOneOf = [cell](std::initializer_list<std::string_view> words) {
    for (const std::string_view word : words)
      if (text::equalsIgnoringCase(cell, word)) return true;
    return false;
  };
  const bool yes = isOneOf({"yes", "true", "on", "1"});
  if (!yes && !isOneOf({"no", "false", "off", "0"}))
    return text::concat("'", cell, "' is neither yes nor no; write one of them");
  value = yes;
  return std::nullopt;
}

void addFault(std::vector<LineText>& faults, std::size_t line, std::string text) {
  if (faults.size() + 1 == mostFaults) text = "further faults are not listed; mend these first";
  if (faults.size() < mostFaults) faults.push_back({line, std::move(text)});
}

}  // namespace channels
