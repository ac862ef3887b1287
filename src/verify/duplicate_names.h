#pragma once

#include <optional>

#include "model/project.h"
#include "verify/check_context.h"

namespace verify {

/// Names of tables, channels, CAN values and calculated fields that are used twice, without
/// regard to case. Settings that are kept but not in use do not count; tables always do.
std::optional<ports::Message> complaintAboutDuplicates(const model::Project& project);

/// Such names that are words of the program language.
std::optional<ports::Message> complaintAboutKeywords(const model::Project& project);

}  // namespace verify

namespace KGEN_COMMON {

void CheckDuplicateNames(const model::Project& project, const verify::CheckContext& context,
                         bool& problem);

}  // namespace KGEN_COMMON
