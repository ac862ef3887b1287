#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "logscript/words.h"

namespace logscript {

/// Where an instruction may stand, as bits.
enum Place : std::uint8_t {
  declarations = 1,  // before the program
  inTable = 2,
  inCode = 4,  // of the program, outside a scan
  inScan = 8,
};
constexpr std::uint8_t anyCode = inCode | inScan;
constexpr std::uint8_t anywhere = declarations | inTable | anyCode;

/// Inputs that an instruction takes up.
enum class Inputs : std::uint8_t { none, singleEnded, differential, pulse, filter };

/// One form of an instruction. Its arguments are letters, one an argument, each explained by
/// argumentKind(); a "*" stands for any number of anything.
struct Instruction {
  std::string_view name;
  std::string_view arguments;
  std::uint8_t places = anyCode;
  Inputs inputs = Inputs::none;
  std::uint8_t inputsPerRepetition =
      0;  // single-ended ones, or channels of a pulse or filter module
};

/// What an argument has to be.
enum class Wanted : std::uint8_t {
  anything,
  value,        // of an expression
  constant,     // a number known before the program runs
  slot,         // a constant
  channel,      // a constant
  destination,  // a variable, an element, an array
  source,       // the same or a value
  array,        // "X()"
  scale,        // a value, "X()" or "X(1)()"
  range,
  thermocouple,
  thermocoupleOrZero,  // 0: volts
  timeUnit,
  timeUnitOrZero,
  dataType,
  truth,  // True, False or a variable
  table,
  text,
  variable,  // its name
};

struct ArgumentKind {
  char letter;
  Wanted wanted;
  std::string_view title;
};
const ArgumentKind& argumentKind(char letter);

/// All forms of all instructions; forms of one name follow each other.
std::span<const Instruction> allInstructions();
/// The forms under an instruction's number. Numbers of instructions follow those of the words.
std::span<const Instruction> instructionForms(NameId id);
std::size_t instructionNameCount();
bool isInstruction(NameId id);

/// Arguments of a statement that opens or closes a block: Scan, SubScan, DataTable (after its
/// name), BeginBurstTrigger, EndBurstTrigger.
const Instruction& blockForm(Word word);

}  // namespace logscript
