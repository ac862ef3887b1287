#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "model/document_stamp.h"
#include "model/project.h"

/// The program writer: from a project to the text of a logger program.
namespace SAVEDLD {

constexpr int maxProgramLines = 3000;

/// The program would need more lines than the logger takes. Nothing has been written.
class ProgramTooLong : public std::out_of_range {
 public:
  using std::out_of_range::out_of_range;
};

struct Program {
  std::string text;                // lines end in CR LF
  int lines = 0;                   // of the line buffer
  std::vector<std::string> notes;  // what the program leaves out or changes, for the user
};

/// The whole program, in memory. The same project and stamp give the same bytes.
/// Throws ProgramTooLong.
Program generate(const model::Project& project, const model::DocumentStamp& stamp);

}  // namespace SAVEDLD
