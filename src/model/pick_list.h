#pragma once

#include <string>
#include <vector>

#include "model/project.h"

namespace model {

/// Which variables a pick list offers: bits of UserVarListTypes.
enum VariableTypes : unsigned {
  channelVariables = 1,
  loggerVariables = 2,  // battery and reference temperatures
  flagVariables = 4,
  portVariables = 8,
  canVariables = 16,
  calculatedVariables = 32,
  tableVariables = 64,
  allVariables = 127
};

/// Names of the variables that expressions can use, in the order of the pick list.
std::vector<std::string> variableNames(const Project& project, unsigned types = allVariables);

}  // namespace model
