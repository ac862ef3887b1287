#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/project.h"

namespace model {

/// A copy of the project in which settings that no window allows, from files made by hand, have
/// values that a program can carry; each adds a note. std::nullopt when there is nothing to mend,
/// which is the usual case.
std::optional<Project> repaired(const Project& project, std::vector<std::string>& notes);

}  // namespace model
