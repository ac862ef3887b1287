#pragma once

#include <optional>

#include "model/project.h"
#include "verify/check_context.h"

namespace verify {

/// Flags of the status monitor's lines that are used elsewhere too. Yes leaves them, No goes back.
std::optional<ports::Message> questionAboutDuplicateFlags(const model::Project& project);

}  // namespace verify

namespace KGEN_COMMON {

void CheckDuplicateFlags(const model::Project& project, const verify::CheckContext& context,
                         bool& problem);

}  // namespace KGEN_COMMON
