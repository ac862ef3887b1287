#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/project.h"

/// A condition as a row of cells with texts.
namespace control {

enum class ConditionCell { variable, index, compare, value, expression };

/// The value reads True or False where a flag is compared, and is the other variable's name where
/// there is one.
std::string cellText(ConditionCell cell, const model::Condition& condition);

/// Stores a text in the condition, or says what is wrong with it. Variables must be offered by the
/// project. A flag as variable is compared with True unless it was compared already.
std::optional<std::string> storeCell(ConditionCell cell, std::string_view text,
                                     model::Condition& condition, const model::Project& project);

/// Conditions of flags, ports and outputs compare one variable with a number: the project file
/// keeps no index and no second variable of theirs. Says what to write in place of these.
std::optional<std::string> complaintAboutStateCondition(const model::Condition& condition);

/// ">", ">=" and so on: all comparisons.
std::vector<std::string> comparisons();

}  // namespace control
