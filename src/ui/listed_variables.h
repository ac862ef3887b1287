#pragma once

#include <string>
#include <vector>

#include "model/pick_list.h"
#include "ui/window_ports.h"

namespace ui {

/// The kinds of variables that lists offer, as the options say: bits of model::VariableTypes.
inline unsigned listedTypes(const WindowPorts& ports) {
  return static_cast<unsigned>(ports.session.settings().UserVarListTypes);
}

/// The names of a project that lists offer.
inline std::vector<std::string> listedVariables(const WindowPorts& ports,
                                                const model::Project& project) {
  return model::variableNames(project, listedTypes(ports));
}

}  // namespace ui
