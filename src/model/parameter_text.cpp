#include "model/parameter_text.h"

#include <algorithm>

#include "model/stored_outputs.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace model {
namespace {

std::vector<std::string_view> partsOf(std::string_view text) {
  std::vector<std::string_view> parts;
  while (!text.empty()) {
    const std::size_t comma = text.find(',');
    parts.push_back(text.substr(0, comma));
    text = comma == std::string_view::npos ? "" : text.substr(comma + 1);
  }
  return parts;
}

/// What stands behind the first two numbers.
std::string_view behindSizes(std::string_view text) {
  std::size_t end = 0;
  for (int size = 1; size <= 2; ++size) {
    end = std::min(text.find_first_of("0123456789", end), text.size());
    end = std::min(text.find_first_not_of("0123456789.", end), text.size());
  }
  return text.substr(std::min(text.find(',', end), text.size()));
}

}  // namespace

std::vector<double> parameters(std::string_view given, std::string_view defaults) {
  const auto own = partsOf(given);
  const auto fallback = partsOf(defaults);
  std::vector<double> numbers;
  for (std::size_t i = 0; i < fallback.size(); ++i)
    numbers.push_back(text::readNumber(i < own.size() ? own[i] : fallback[i]));
  return numbers;
}

std::vector<double> sizedParameters(std::string_view given, std::string_view defaults) {
  const auto sizes = KGEN_COMMON::dimensionsIn(given);
  return parameters(text::concat(sizes.first, ",", sizes.second, behindSizes(given)), defaults);
}

std::string parameterText(const std::vector<double>& numbers) {
  std::string text;
  for (const double each : numbers) text += text::concat(text.empty() ? "" : ",", each);
  return text;
}

}  // namespace model
