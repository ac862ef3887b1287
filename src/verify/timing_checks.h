#pragma once

#include <optional>
#include <vector>

#include "model/project.h"
#include "verify/check_context.h"

namespace verify {

/// The measurements of a scan take longer than the scan. No goes back.
std::optional<ports::Message> questionAboutMeasurementTime(const model::Project& project);

/// The scan is too long for what runs in the slow sequence: that will be left out. Cancel goes
/// back.
std::optional<ports::Message> questionAboutSlowSequence(const model::Project& project);

/// The table keeps its records by its own interval: on, not each scan or at the rate of a filter,
/// not started by a condition.
bool isIntervalDriven(const model::OutputTable& table);

/// Who asks about the intervals of the tables: that decides titles and last lines.
enum class IntervalCheck { off, beforeSave, executionIntervals };

/// Intervals of interval-driven tables that are no whole number of scans, a message for each.
std::vector<ports::Message> complaintsAboutTableIntervals(
    const model::Project& project, IntervalCheck caller = IntervalCheck::beforeSave);

}  // namespace verify

namespace KGEN_COMMON {

void CheckMeasTimeVsInterval(const model::Project& project, const verify::CheckContext& context,
                             bool& problem);
void CheckSlowSequence(const model::Project& project, const verify::CheckContext& context,
                       bool& problem);
/// True when all is well.
bool CheckTableIntervals(const model::Project& project, const verify::CheckContext& context,
                         verify::IntervalCheck caller = verify::IntervalCheck::beforeSave);

}  // namespace KGEN_COMMON
