#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "generator/program_writer.h"
#include "model/project.h"

namespace desktop {

enum class Weight { error, warning };

/// One thing to look at in a project, and where.
struct Finding {
  Weight weight = Weight::warning;
  std::string text;     // in one line
  std::string details;  // the whole message
  int line = 0;         // of the program, from 1; 0: none
  int button = -1;      // of the main panel, of the window it belongs to; -1: none
  bool operator==(const Finding&) const = default;
};

/// What the checks before a save would say. They run on a copy and ask nobody.
std::vector<Finding> findingsOfChecks(const model::Project& project, unsigned warningMask);

/// What does not fit into the logger.
std::vector<Finding> findingsOfChannels(const model::Project& project);

/// What the program leaves out or changes, and what its language finds wrong in it.
std::vector<Finding> findingsOfProgram(const SAVEDLD::Program& program);

/// A line that the session noted, for example while it read a project.
Finding findingOfNote(std::string_view line);

/// The button of the window that a text speaks of: "voltage block 2", "Table 3", "VBlk1(2)"; -1
/// when it names none.
int windowNamedIn(std::string_view text);

}  // namespace desktop
