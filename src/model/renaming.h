#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/project.h"

/// Names that a user gives, and the settings that refer to them by name.
namespace model {

struct NewName {
  std::string before, after;
  bool operator==(const NewName&) const = default;
};

/// Names that differ between two states of a project: of channels and CAN values (by their array
/// while they have none: "VBlk1(3)"), calculated fields and tables. Told by place; items, fields
/// and filter blocks that stand behind one that came or went keep theirs. A name that another place
/// has taken, or had before, is no new name: what refers to it stays with the name.
std::vector<NewName> newNames(const Project& before, const Project& after);

/// `after` with its references to the names of `before` brought up to date: conditions of tables,
/// ports, flags, outputs, burst and power-off, status lines, second variables of level crossings
/// and calculated expressions.
Project withNewNames(const Project& before, Project after);

/// The project with one name changed, where it is given and wherever it is used. The array form
/// ("VBlk1(3)") as old name gives the channel a name, as new name takes its name away. Case of
/// letters in the old name does not count; an unknown one changes nothing.
Project renamed(const Project& project, std::string_view oldName, std::string_view newName);

/// An expression with other names in it, all at once: whole words, in any case of letters.
std::string withNewNames(std::string_view expression, const std::vector<NewName>& names);

}  // namespace model
