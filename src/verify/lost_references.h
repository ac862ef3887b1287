#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/project.h"
#include "ports/message_service.h"

namespace verify {

/// What uses variables that an edit took away, as measurements of removed modules.
struct LostReferences {
  std::vector<std::string> settings;  // "Flag 3, state 1: VBlk1(3) > 100"
  model::Project project;             // without them
};
/// Conditions, calculated fields and second variables of level crossings in `after` that use what
/// `before` offered and `after` does not.
LostReferences lostReferences(const model::Project& before, model::Project after);

/// Yes removes the settings with their variables. Nothing to ask when there are none.
std::optional<ports::Message> questionAboutLostReferences(const std::vector<std::string>& settings);

}  // namespace verify
