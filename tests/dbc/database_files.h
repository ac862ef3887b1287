#pragma once

#include <string>

#include "dbc/database.h"
#include "support/demo_project.h"

namespace dbc {

/// The databases in tests/dbc/files.
inline std::string databaseText(const std::string& name) {
  return support::wholeFile(KGEN_DBC_DIR "/" + name);
}
inline Database databaseFile(const std::string& name) { return read(databaseText(name)); }

}  // namespace dbc
