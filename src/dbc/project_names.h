#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "model/project.h"

namespace dbc {

/// Makes names for a project out of those of a database.
class ProjectNames {
 public:
  explicit ProjectNames(const model::Project& project);

  /// A name that the project takes and has nowhere yet; it has it from now on.
  std::string nameFor(std::string_view wanted);

 private:
  [[nodiscard]] bool isFree(const std::string& name) const;
  void take(std::string_view name);

  std::unordered_set<std::string> taken_;                 // in lower case
  std::unordered_map<std::string, std::size_t> numbers_;  // the last one tried behind a stem
};

/// Units that the project takes: "Deg_C" for a degree sign and C, "_" for blanks, 12 at most.
std::string unitsFor(std::string_view units);

/// A text that a project file takes, on one line.
std::string textFor(std::string_view text);

}  // namespace dbc
