#pragma once

#include <optional>

#include "model/project.h"
#include "verify/check_context.h"

namespace verify {

/// Tables that keep a record each scan and store more than samples. Yes turns it into samples.
std::optional<ports::Message> questionAboutScanRateTables(const model::Project& project);
/// Leaves Sample of everything that these tables store.
void reduceToSamples(model::Project& project);

/// Channels whose multiplier or offset differs from the default of their block. Yes shows them.
std::optional<ports::Message> questionAboutOwnScaling(const model::MeasurementBlock& block);

}  // namespace verify

namespace KGEN_COMMON {

void CheckScanRateTables(model::Project& project, const verify::CheckContext& context,
                         bool& problem);

/// The answer; No when there was nothing to ask.
ports::Answer CheckDefaultScaling(const model::MeasurementBlock& block,
                                  const verify::CheckContext& context);

}  // namespace KGEN_COMMON
