#pragma once

#include <array>
#include <cstdint>

#include "model/project.h"
#include "ports/error_reporter.h"
#include "ports/message_service.h"

namespace timing {

/// What the planner makes of one isolated block. Nothing of it is filed.
struct IsolatedPlan {
  bool inUse = false;
  std::int32_t result = -1;            // of the planner; -1: no plan
  std::int32_t filterOrder = -1;       // -1: no plan
  std::int32_t integrationMicros = 0;  // in force: the planned one, or as stored without a plan
  std::int32_t measTimeAvail = -1;
  float cutoffFrequency = -1;   // Hz
  double conversionMicros = 0;  // of its subscan: overheads and samples; 0 without a plan
  double neededScanMicros = 0;  // the main scan that makes room for it

  [[nodiscard]] bool possible() const { return result >= 0; }
};

/// By block number - 1.
using IsolatedPlans = std::array<IsolatedPlan, model::maxBlocks>;

/// The plans of all isolated blocks of a project, each by a planner of its own; shows nothing.
/// Integration, reversal and scans per subscan are those that the blocks share; thermocouple
/// blocks are checked for open couples as they say.
IsolatedPlans isolatedPlans(const model::Project& project);

}  // namespace timing

namespace KGEN_COMMON {

/// Plans all isolated blocks anew after a change of the scan. Messages are shown as they come,
/// and scans per subscan that had to be lowered are stored.
timing::IsolatedPlans PlanIsolatedBlocks(model::Project& project, ports::MessageService& messages,
                                         ports::ErrorReporter& errors);

}  // namespace KGEN_COMMON
