#pragma once

#include <string_view>
#include <vector>

#include "logscript/program.h"

namespace logscript {

/// Everything found in a program, in the order of its text: faults of its form, then of its
/// meaning.
std::vector<Finding> check(const Program& program);

/// Reads and checks.
std::vector<Finding> check(std::string_view text);

bool hasErrors(const std::vector<Finding>& findings);

}  // namespace logscript
