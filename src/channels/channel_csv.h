#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "channels/cells.h"
#include "model/project.h"

namespace channels {

struct ImportReport {
  std::vector<LineText> faults;   // what is wrong and what to do; at most mostFaults of them
  std::vector<LineText> changes;  // "voltage 2(14) alias: "Old" -> "New""
};

/// One row a channel of every block: kind, block, element, alias, units, multiplier, offset (the
/// gauge factor of bridges), own scaling, and the processings stored in each of the eight tables.
std::string csvText(const model::Project& project);

/// The first line of the text names the columns that tell channels apart.
bool isChannelTable(std::string_view text);

/// Takes such rows into the project, also with tabs in place of the commas. Columns are known by
/// their names, in any order; kind, block and element are needed, a column or row that is left out
/// keeps what the project has. With any fault the project stays as it was.
ImportReport importCsv(std::string_view csv, model::Project& project);

}  // namespace channels
