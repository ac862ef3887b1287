#pragma once

#include <string_view>

/// Names that a user gives: aliases, tables, calculated fields.
namespace model {

/// A word of the program language, without regard to case.
bool isReservedWord(std::string_view name);

/// A name, or the form of one, that generated programs use themselves: "VBlk1", "TREP2", "Flag".
bool isGeneratedName(std::string_view name);

}  // namespace model
