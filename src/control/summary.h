#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "model/channel_plan.h"
#include "model/document_stamp.h"
#include "model/project.h"
#include "timing/measurement_times.h"

namespace control {

/// What the summary says beside the project.
struct SummaryHeading {
  std::string name;  // of the program
  std::string version{model::generatorVersion};
  std::optional<std::size_t> programLines = std::nullopt;  // of the last program that was made
};

/// The text of the main panel's summary: project, tables, then each kind of measurement with its
/// time. Times end at column 60. Lines end in LF.
std::string summaryText(const model::Project& project, const model::ChannelPlan& plan,
                        const timing::MeasurementTimes& times, const SummaryHeading& heading);

}  // namespace control
