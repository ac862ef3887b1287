#include "disk_files.h"

#include "failure.h"

namespace kgen {

std::string readAll(const std::string& path) {
  try {
    return platform::readAll(path);
  } catch (const ports::FileError& error) {
    throw Failure(inputUnreadable, error.what());
  }
}

}  // namespace kgen
