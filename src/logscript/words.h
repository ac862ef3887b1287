#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace logscript {

/// Number of a name within one program; names that differ only in case share it. The words of the
/// language have the lowest numbers, the same in every program.
using NameId = std::uint32_t;
constexpr NameId noName = 0xFFFFFFFF;

/// Words that the parser knows, in the order of their numbers.
enum class Word : NameId {
  Alias,
  And,
  As,
  BeginBurstTrigger,
  BeginProg,
  Boolean,
  Call,
  CallTable,
  Case,
  Const,
  Data,
  DataTable,
  Dim,
  Do,
  Else,
  ElseIf,
  End,
  EndBurstTrigger,
  EndIf,
  EndProg,
  EndSelect,
  EndSub,
  EndTable,
  Exit,
  ExitDo,
  ExitFor,
  ExitScan,
  ExitSub,
  For,
  If,
  Loop,
  Mod,
  Next,
  NextScan,
  NextSubScan,
  Not,
  Or,
  Public,
  Read,
  Scan,
  Select,
  SlowSequence,
  Step,
  Sub,
  SubScan,
  Then,
  To,
  Units,
  Until,
  Wend,
  While,
  Xor,
};
constexpr NameId keywordCount = static_cast<NameId>(Word::Xor) + 1;
constexpr NameId idOf(Word word) { return static_cast<NameId>(word); }

/// What a name is to the language.
enum class WordKind : std::uint8_t {
  name,  // none of its words
  keyword,
  instruction,
  function,
  boolean,
  timeUnit,
  dataType,
  range,
  thermocouple,
  reserved,  // taken, without a meaning of its own here
};

struct WordRow {
  std::string_view word;
  WordKind kind;
  std::uint8_t arguments;  // of a function
};

/// Every word but the instructions, those of the parser first.
std::size_t wordCount();
const WordRow& wordRow(std::size_t index);

}  // namespace logscript
