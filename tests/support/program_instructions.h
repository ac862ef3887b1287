#pragma once

#include <string_view>
#include <vector>

namespace support {

/// Where a statement stands.
enum Place : unsigned { top = 1, table = 2, sub = 4, body = 8, scan = 16 };

enum class Role { plain, measurement, digital, excitation, output };

/// An instruction of the logger language. One letter an argument:
///   d variable or element that is set        a whole array "X()"
///   c constant number                        n number
///   m number, constant or whole array        e expression
///   r range word   t thermocouple type       u unit of time   z data type
///   b True or False                          T table          * anything
/// An instruction that takes several forms has a row for each.
struct InstructionRow {
  std::string_view name;  // in lower case
  std::string_view arguments;
  unsigned places = scan;
  Role role = Role::plain;
  std::size_t slot = 0;  // measurement: place of the slot argument; the channel follows
  int positions = 1;     // single-ended channels that one channel takes
};

/// The rows of a name (in lower case); none when the language has no such instruction.
std::vector<InstructionRow> instructionsNamed(std::string_view name);

/// Arguments of a function; -1 when the language has no such function.
int argumentsOfFunction(std::string_view name);

/// "range", "type", "unit", "data" or "bool"; "" when it is no word of the language.
std::string_view kindOfWord(std::string_view word);

}  // namespace support
