#pragma once

#include <string>
#include <string_view>

#include "generator/program_writer.h"

namespace control {

/// The program of a project, read and checked before it takes the place of an older one.
struct CheckedProgram {
  SAVEDLD::Program program;
  /// A fault of the program writer itself; such a program must not be written. "" without one.
  std::string fault;
  /// What texts of the project (conditions, expressions) get wrong in the program: the engineer's
  /// to correct, and no reason not to write it. "" when nothing is wrong.
  std::string remark;
};

using ProgramWriter = SAVEDLD::Program (*)(const model::Project&, const model::DocumentStamp&);

/// Makes the program and reads it as the logger's compiler does. `file` is where it would go.
/// Throws SAVEDLD::ProgramTooLong.
CheckedProgram checkedProgram(const model::Project& project, const model::DocumentStamp& stamp,
                              std::string_view file, ProgramWriter write = SAVEDLD::generate);

}  // namespace control
