#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Names that a user gives: aliases, tables, calculated fields.
namespace model {

/// A word of the program language, without regard to case.
bool isReservedWord(std::string_view name);

/// The reserved word that the name is, in the spelling of the language; "" when it is none.
std::string_view reservedWordFor(std::string_view name);

/// A name, or the form of one, that generated programs use themselves: "VBlk1", "TREP2", "Flag".
bool isGeneratedName(std::string_view name);

/// What keeps a text from being the name of a channel, a CAN value or a calculated field; an
/// empty text is fine: no name. Whether another one has the name is not asked here.
std::optional<std::string> complaintAboutAlias(std::string_view name);

/// What keeps a text from being the units of a channel.
std::optional<std::string> complaintAboutUnits(std::string_view units);

}  // namespace model
