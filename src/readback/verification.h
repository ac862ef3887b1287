#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "logscript/finding.h"
#include "model/project.h"
#include "readback/expectation.h"

namespace readback {

/// One place where a program and a project disagree.
struct Difference {
  std::uint32_t line = 0, column = 0;  // of the program, from 1
  std::string text;                    // what differs
  std::string is, expected;            // "" where there is nothing
  Setting setting;                     // of the project
};

/// What a program, read on its own, says otherwise than the project.
struct Verification {
  std::vector<logscript::Finding> errors;  // but for those that the project's own texts make
  std::vector<Difference> differences;     // in the order of the program

  [[nodiscard]] bool equal() const { return errors.empty() && differences.empty(); }
};

/// Reads the program back and compares it with the project.
Verification verifyProgram(std::string_view program, const model::Project& project,
                           bool dunmoreHost = false);

/// "[VOLTAGE BLOCKS] Integration, block 2"
std::string nameOf(const Setting& setting);

/// "FILE:LINE:COLUMN: what is different ([SECTION] Key, owner)"
std::string report(const Difference& difference, std::string_view file);

}  // namespace readback
