#pragma once

#include <cstddef>
#include <vector>

#include "model/project.h"
#include "verify/check_context.h"
#include "verify/offered_variables.h"

namespace verify {

/// Variables that settings name and the project no longer offers.
struct MissingVariables {
  std::size_t count = 0;
  std::vector<ports::Message> messages;
};

MissingVariables missingInCalculatedFields(const model::Project& project,
                                           const OfferedVariables& offered);
/// Second variables of level crossings that a table stores.
MissingVariables missingInLevelCrossings(const model::Project& project,
                                         const OfferedVariables& offered);
MissingVariables missingInPowerOff(const model::Project& project, const OfferedVariables& offered);
MissingVariables missingInBurst(const model::Project& project, const OfferedVariables& offered);
/// Start and stop conditions of tables; conditions of ports, flags and analog outputs.
MissingVariables missingInTwoState(const model::Project& project, const OfferedVariables& offered);
MissingVariables missingInWriteIf(const model::Project& project, const OfferedVariables& offered);

/// On what occasion VerifyPickVars runs: silent only counts.
enum class PickVarsMode { silent = 0, afterWindow = 1, beforeSave = 2 };

}  // namespace verify

namespace KGEN_COMMON {

/// All of the following; how many variables are missing. They only inform.
std::size_t VerifyPickVars(const model::Project& project, const verify::CheckContext& context,
                           verify::PickVarsMode mode);

void VerifyPickVar_CalcField(const model::Project& project, const verify::OfferedVariables& offered,
                             const verify::CheckContext& context);
void VerifyPickVar_LevelCross(const model::Project& project,
                              const verify::OfferedVariables& offered,
                              const verify::CheckContext& context);
void VerifyPickVar_PowerOff(const model::Project& project, const verify::OfferedVariables& offered,
                            const verify::CheckContext& context);
void VerifyPickVar_Burst(const model::Project& project, const verify::OfferedVariables& offered,
                         const verify::CheckContext& context);
void VerifyPickVar_TwoState(const model::Project& project, const verify::OfferedVariables& offered,
                            const verify::CheckContext& context);
void VerifyPickVar_WriteIf(const model::Project& project, const verify::OfferedVariables& offered,
                           const verify::CheckContext& context);

}  // namespace KGEN_COMMON
