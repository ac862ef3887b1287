#pragma once

#include "platform/disk_files.h"

namespace kgen {

using platform::DiskFiles;
using platform::isDevice;

/// Whole content of a file, "-" being standard input. Throws Failure.
std::string readAll(const std::string& path);

}  // namespace kgen
