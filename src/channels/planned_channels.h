#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "channels/cells.h"
#include "model/project.h"

namespace channels {

/// A channel that a new project is to measure. What is not told comes from its kind.
struct PlannedChannel {
  model::BlockKind kind = model::BlockKind::voltage;
  std::string name, units;
  std::optional<double> multiplier;
  std::optional<double> offset;  // of bridges the gauge factor
  std::array<std::optional<std::uint8_t>, model::maxTables> tables = {};  // processings stored
  bool operator==(const PlannedChannel&) const = default;
};

struct PlannedList {
  std::vector<PlannedChannel> channels;
  std::vector<LineText> faults;  // lines that are left out: what is wrong and what to do
};
/// Reads lines of cells with tabs or commas between them: kind, name, units, multiplier, offset;
/// the last ones may be missing. A first line that names columns says which there are: "name",
/// "gauge factor" and those of the channel table, in any order. Blocks and elements are passed
/// over, since a new project numbers its channels anew.
PlannedList plannedChannelsFrom(std::string_view text);

}  // namespace channels
