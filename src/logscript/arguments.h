#pragma once

#include <span>

#include "logscript/instructions.h"
#include "logscript/meaning.h"

namespace logscript {

/// Checks the arguments of instructions against the table of instructions.
class Arguments {
 public:
  Arguments(const Program& program, Meaning& meaning) : program_(program), meaning_(meaning) {}

  /// Tables that are named but not declared; before the expressions are worked out.
  void tellUnknownTables(const Statement& statement);
  /// False when something is wrong. The expressions have been worked out.
  bool check(std::span<const Instruction> forms, const Statement& statement);

 private:
  void tellCount(std::span<const Instruction> forms, const Statement& statement);
  bool checkOne(const Instruction& form, const Statement& statement, std::size_t n);
  bool fits(Wanted wanted, std::uint32_t argument);
  bool isTruth(std::uint32_t argument) const;
  bool isWord(std::uint32_t argument, WordKind kind) const;
  bool isWhole(std::uint32_t argument) const;
  bool isZero(std::uint32_t argument) const;
  bool isScale(std::uint32_t argument) const;
  bool checkRange(const Instruction& form, const Statement& statement, std::size_t n);
  bool checkRepetitions(const Instruction& form, const Statement& statement);
  bool checkLevels(const Instruction& form, const Statement& statement);
  bool checkRoom(const Instruction& form, const Statement& statement, std::size_t count,
                 std::size_t array);

  const Program& program_;
  Meaning& meaning_;
};

/// The form with as many arguments as the statement; nullptr when there is none.
const Instruction* formFor(std::span<const Instruction> forms, const Statement& statement);

}  // namespace logscript
