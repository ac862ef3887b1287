#pragma once

#include <string>
#include <vector>

#include "logscript/program.h"

namespace logscript {

/// What one instruction of a scan takes by estimate.
struct InstructionTime {
  std::string name;  // in capitals
  double micros = 0;
};

/// The measurements of one scan, or of a subroutine that is no scan of its own. Isolated modules
/// convert by themselves: what stands in their subscans takes no time of the scan.
struct ScanTimes {
  bool inSubroutine = false;
  std::vector<InstructionTime> instructions;
};

/// For a program without errors: its scans in the order of the text.
std::vector<ScanTimes> scanTimes(const Program& program);

}  // namespace logscript
