#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "dbc/database.h"
#include "model/project.h"

namespace dbc {

enum class Fitness {
  ready,
  ifChosen,   // the item can be had, but its values are not always those of the signal
  impossible  // the logger can't receive it
};

/// What a signal of a database would be in a project.
struct Proposal {
  std::size_t message = 0, signal = 0;  // in the database, from 0
  std::string name;                     // of the value in the project
  Fitness fitness = Fitness::ready;
  std::string reason;              // why it is not ready
  std::vector<std::string> notes;  // what is not as in the database
  model::CanItem item;             // not of an impossible one
};

/// Proposals for all signals, in the order of the database. Names and units become such as the
/// project takes, different from all that it has and from each other.
struct Proposals {
  std::int16_t dataIdType = 0;  // 0: 11-bit, 1: 29-bit identifiers; a project has one kind
  std::vector<Proposal> list;
};
Proposals proposalsFor(const Database& database, const model::Project& project);

/// A proposal by "Signal", "Message.Signal" or the name it would have, in any case of letters; the
/// first of several.
const Proposal* proposalNamed(const Proposals& proposals, const Database& database,
                              std::string_view name);

/// Adds items to a project and switches its CAN bus on. What has no room is answered with a line
/// each, by name.
std::vector<std::string> addItems(model::Project& project, const Proposals& proposals,
                                  const std::vector<const Proposal*>& chosen);

}  // namespace dbc
