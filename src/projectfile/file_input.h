#pragma once

#include <string>

#include "projectfile/project_reader.h"

namespace projectfile {

/// Hands a file, or standard input for "-", to the reader piece by piece. What keeps it from being
/// read comes back as "PATH: what; what to do", otherwise an empty text.
std::string readFile(const std::string& path, ProjectReader& reader);

}  // namespace projectfile
