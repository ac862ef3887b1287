#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "channels/cells.h"
#include "model/project.h"

namespace channels {

/// Name and description of an item are for people: any text that a project file can hold.
std::optional<std::string> complaintAboutItemText(std::string_view text);

/// Messages as lines of tab-separated cells below a line that names the columns: name, id, type,
/// start, bits, values, multiplier, offset, units, description. What a program makes of an item
/// besides, the names and tables of its values above all, is not in the list.
std::string canListText(const std::vector<model::CanItem>& items);

struct CanList {
  std::vector<model::CanItem> items;
  std::vector<LineText> faults;  // lines that are left out: what is wrong and what to do
};
/// Reads such lines. The columns may stand in any order and some may be missing; without a line
/// that names them they are those above. Types of 7 and more make transmit items. The setup says
/// how long identifiers are and how many items are there already.
CanList canItemsFrom(std::string_view text, const model::CanSetup& can);

}  // namespace channels
