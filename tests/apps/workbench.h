#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "model/project.h"

namespace apps_test {

struct Outcome {
  int code = 0;
  std::string out, err;
};

/// A folder of its own for one test, in which the built kgen runs.
class Workbench {
 public:
  Workbench();
  ~Workbench();
  Workbench(const Workbench&) = delete;
  Workbench& operator=(const Workbench&) = delete;

  /// Runs kgen with arguments as a shell reads them; a redirection may stand among them.
  [[nodiscard]] Outcome kgen(std::string_view arguments, std::string_view variables = {}) const;
  /// The same for a whole shell line, in which $KGEN is the program.
  [[nodiscard]] Outcome shell(std::string_view line) const;

  void write(std::string_view name, std::string_view content) const;
  void write(std::string_view name, const model::Project& project) const;
  [[nodiscard]] std::string read(std::string_view name) const;
  [[nodiscard]] model::Project project(std::string_view name) const;
  [[nodiscard]] std::vector<std::string> files() const;
  [[nodiscard]] std::filesystem::path path(std::string_view name) const { return folder_ / name; }

 private:
  std::filesystem::path folder_;
  std::filesystem::path outputs_;
};

/// A 7104 logger with two 7121 and one 7131: a thermocouple block of 4, a voltage block of 3 and a
/// bridge block of 2 channels.
model::Project smallProject();

/// A project whose program has more lines than a logger takes.
model::Project endlessProject();

}  // namespace apps_test
