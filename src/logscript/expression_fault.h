#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logscript {

/// What is wrong at a place of an expression; what to do.
struct ExpressionFault {
  std::size_t offset = 0, length = 0;  // in bytes; length 0: at this place something is missing
  std::string text;
  bool operator==(const ExpressionFault&) const = default;
};

/// The first fault in the form of one expression: signs, parentheses, functions and their
/// arguments. Whether its variables exist is not asked.
std::optional<ExpressionFault> faultInForm(std::string_view expression);

/// The functions that an expression can use.
std::vector<std::string_view> functionNames();

/// The name that a misspelt one is most like; "" when none is like it. Names with other digits are
/// other names, no misspellings.
std::string_view closestName(std::string_view name, const std::vector<std::string_view>& names);

}  // namespace logscript
