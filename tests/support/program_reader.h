#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/program_layout.h"

/// An independent reader of logger programs: whether a text is a correct program.
namespace support {

/// What one record of a data table holds.
struct TableRecord {
  std::string name;  // in lower case
  std::size_t values = 0;
  std::size_t bytes = 0;
};

struct ProgramReading {
  std::vector<Fault> faults;
  std::vector<TableRecord> tables;  // in the order of the program
};

ProgramReading readProgram(std::string_view text);

/// One line a fault, with the line of the program; "" when there is none.
std::string faultList(std::string_view text, const std::vector<Fault>& faults);

}  // namespace support
