#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "logscript/expression_fault.h"
#include "model/project.h"

namespace control {

/// The first fault in an expression of a project: its form, or a variable that the project does not
/// offer, with the one that may be meant.
std::optional<logscript::ExpressionFault> faultIn(std::string_view expression,
                                                  const model::Project& project);

/// The same for a calculated field; a running average is of one variable.
std::optional<logscript::ExpressionFault> faultIn(const model::CalculatedField& field,
                                                  const model::Project& project);

bool isRunningAverage(const model::CalculatedField& field);
/// A running average of too few or too many samples.
std::optional<std::string> complaintAboutSamples(const model::CalculatedField& field);

}  // namespace control
