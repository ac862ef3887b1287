#pragma once

#include <random>

#include "model/project.h"

namespace support {

struct RandomOptions {
  bool k700x = true;
  int fullness = 50;  // percent: how likely each optional part is
};

/// A valid project with something of everything: it fits its modules, its names are legal and
/// unique, conditions name variables that exist, and only what the project file stores is set.
model::Project randomProject(std::mt19937& random, const RandomOptions& options = {});

}  // namespace support
