#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

#include "projectfile/project_file.h"

namespace support {

/// Loads every example of a folder and hands over its name and project; answers how many there are.
inline int forExamples(const std::string& folder,
                       const std::function<void(const std::string&, const model::Project&)>& act) {
  int examples = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".GN7") continue;
    model::Project project = KGEN_COMMON::newProject();
    const auto report = KGEN_GENFILE::load(entry.path().string(), project);
    if (report.error) throw std::runtime_error(*report.error);
    act(entry.path().stem().string(), project);
    ++examples;
  }
  return examples;
}

}  // namespace support
