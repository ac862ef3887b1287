#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "model/project.h"

namespace channels {

/// Something about one line of the CSV text, counted from 1.
struct LineText {
  std::size_t line = 0;
  std::string text;
  bool operator==(const LineText&) const = default;
};

struct ImportReport {
  std::vector<LineText> faults;   // what is wrong and what to do; at most mostFaults of them
  std::vector<LineText> changes;  // "voltage 2(14) alias: "Old" -> "New""
};
constexpr std::size_t mostFaults = 1000;

/// One row a channel of every block: kind, block, element, alias, units, multiplier, offset (the
/// gauge factor of bridges), own scaling, and the processings stored in each of the eight tables.
std::string csvText(const model::Project& project);

/// Takes such rows into the project. Columns are known by their names, in any order; kind, block
/// and element are needed, a column or row that is left out keeps what the project has. With any
/// fault the project stays as it was.
ImportReport importCsv(std::string_view csv, model::Project& project);

}  // namespace channels
