#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "channels/channel_csv.h"
#include "model/project.h"

namespace channels {

/// A channel that a new project is to measure. What is not told comes from its kind.
struct PlannedChannel {
  model::BlockKind kind = model::BlockKind::voltage;
  std::string name, units;
  std::optional<double> multiplier;
  std::optional<double> offset;  // of bridges the gauge factor
  bool operator==(const PlannedChannel&) const = default;
};

struct PlannedList {
  std::vector<PlannedChannel> channels;
  std::vector<LineText> faults;  // lines that are left out: what is wrong and what to do
};
/// Reads lines of tab-separated cells: kind, name, units, multiplier, offset; the last ones may be
/// missing. A first line that names the columns is passed over.
PlannedList plannedChannelsFrom(std::string_view text);

}  // namespace channels
