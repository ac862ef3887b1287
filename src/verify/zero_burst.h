#pragma once

#include <optional>

#include "model/project.h"
#include "verify/check_context.h"

namespace verify {

/// Blocks with a zero flag while scans are taken in bursts. OK clears the flags, Cancel goes back.
std::optional<ports::Message> questionAboutZeroFlags(const model::Project& project);
void clearZeroFlags(model::Project& project);

/// Blocks with cal-on-site in that mode. Yes clears it, No leaves it, Cancel goes back.
std::optional<ports::Message> questionAboutCalOnSite(const model::Project& project);
void clearCalOnSite(model::Project& project);

}  // namespace verify

namespace KGEN_COMMON {

/// Asks both, and clears what the user agrees to.
void VerifyZeroBurst(model::Project& project, const verify::CheckContext& context, bool& problem);

}  // namespace KGEN_COMMON
