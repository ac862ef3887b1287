#pragma once

#include <optional>

#include "model/project.h"
#include "verify/check_context.h"

namespace verify {

/// Differential measurements, whose signals float unless they are wired to ground.
std::optional<ports::Message> warningAboutFloatingGround(const model::Project& project);

struct SaveVerdict {
  bool DoNotSave = false;
  bool NeedsUpgrade = false;
};
/// What the save command runs before it asks on its own: all checks, and the floating ground
/// warning when they found nothing.
SaveVerdict checkedForSave(model::Project& project, const CheckContext& context);

/// What the save command knows when checks found a problem that the user did not accept.
struct SaveQuestion {
  bool dunmoreHost = false;
  bool upgradeToo = false;  // saving would also upgrade the conditions
  bool sending = false;     // the program was to be sent; it will only be saved
};
/// Yes saves all the same.
ports::Message questionSaveAnyway(const SaveQuestion& situation);
/// Asked alone when nothing but the upgrade stands in the way. Yes saves.
ports::Message questionUpgrade();

}  // namespace verify

namespace KGEN_COMMON {

/// All checks before a save, in their order. DoNotSave: one found a problem that the user did not
/// accept. NeedsUpgrade: see CheckTriggerUpgrade.
void VerifyBeforeSave(model::Project& project, const verify::CheckContext& context, bool& DoNotSave,
                      bool& NeedsUpgrade);

/// True when a table has conditions and the project comes from a version before 6: saved in
/// today's form it can't go back.
bool CheckTriggerUpgrade(const model::Project& project);

/// A warning only, for a project that is about to be saved without questions.
void CheckFloatingGround(const model::Project& project, const verify::CheckContext& context);

}  // namespace KGEN_COMMON
