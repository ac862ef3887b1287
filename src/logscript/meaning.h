#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "logscript/program.h"

namespace logscript {

enum class SymbolKind : std::uint8_t { none, constant, variable, alias, table, subroutine };

/// What a name stands for in a program.
struct Symbol {
  static constexpr std::uint8_t unknownDimensions = 255;  // its declaration can't be read

  SymbolKind kind = SymbolKind::none;
  std::uint8_t dimensions = 0;
  bool used = false;
  bool told = false;                                        // that it is not declared
  std::uint32_t offset = 0;                                 // of its declaration
  std::uint32_t statement = 0;                              // that declares it
  std::array<std::int32_t, 3> sizes = {-1, -1, -1};         // -1: not known
  double value = std::numeric_limits<double>::quiet_NaN();  // of a constant
  NameId word = noName;                                     // that a constant stands for
  NameId firstAlias = noName, nextAlias = noName;  // of a variable; of the same one as this alias
};

/// What is known of an expression before the program runs.
struct Fact {
  double value = std::numeric_limits<double>::quiet_NaN();  // not a number: not known
  bool constant = false;
  bool broken = false;  // a fault in it has been told
};

/// The names of a program and the values of its expressions. What is wrong with them goes to the
/// findings.
class Meaning {
 public:
  Meaning(const Program& program, Findings& findings);

  /// Takes in all declarations. Constants and dimensions are worked out on the way.
  void declareAll();
  /// Works out the expressions of a statement.
  void evaluate(const Statement& statement);

  [[nodiscard]] const Node& node(std::uint32_t index) const { return program_.nodes[index]; }
  [[nodiscard]] const Fact& fact(std::uint32_t index) const { return facts_[index]; }
  [[nodiscard]] Symbol& symbol(NameId name) { return symbols_[name]; }
  [[nodiscard]] const std::vector<Symbol>& symbols() const { return symbols_; }
  /// The whole number that a constant expression has.
  [[nodiscard]] std::optional<long> whole(std::uint32_t index) const;
  /// The word of the language that an expression is: a range, a unit, True.
  [[nodiscard]] NameId word(std::uint32_t index) const;
  /// Values from the place that an expression names to the end of its array.
  [[nodiscard]] std::optional<long> valuesFrom(std::uint32_t index) const;

  /// Tells when an expression is no single value. False when it is none.
  bool requireValue(std::uint32_t index);
  /// Tells when an expression can't be given a value.
  void requireElement(std::uint32_t index);
  bool isWritable(std::uint32_t index) const;

  /// The name that a misspelt one is most like, if any; it counts as used.
  NameId closest(NameId name);
  /// "; did you mean 'X'?", or the advice.
  std::string guess(NameId name, std::string_view advice);
  /// The expression as the program has it, for messages.
  [[nodiscard]] std::string shown(std::uint32_t index) const;
  [[nodiscard]] std::string quoted(NameId name) const;
  void tell(Code code, std::uint32_t offset, std::string text);

  /// A loop whose variable runs between two values; it counts only while it is the last word on
  /// the variable.
  struct LoopRange {
    NameId variable;
    double low, high;
    bool certain = true;  // no condition stands between the loop and the statement
  };
  std::vector<LoopRange> loops;

 private:
  void declare(const Statement& statement, SymbolKind kind);
  void declareAlias(const Statement& statement);
  void declaredTwice(const Statement& statement);
  void declareConstant(const Statement& statement);
  void declareVariable(const Statement& statement);
  void work(std::uint32_t index);
  void workName(std::uint32_t index);
  void workSymbol(std::uint32_t index);
  void workIndexed(std::uint32_t index);
  void workArray(std::uint32_t index);
  void workField(std::uint32_t index);
  void workUnary(std::uint32_t index);
  void workBinary(std::uint32_t index);
  void workFunction(std::uint32_t index);
  [[nodiscard]] double result(Operator op, double a, double b) const;
  void checkIndexes(std::uint32_t index, const Symbol& symbol);
  void checkIndex(const Node& node, std::uint32_t argument, long size);
  void undeclared(std::uint32_t index);
  void wrongKind(std::uint32_t index, std::string text);
  bool hasField(const Symbol& table, std::string_view field) const;
  bool isFieldOf(const Statement& output, std::string_view field) const;
  bool namesField(NameId source, std::string_view field) const;
  [[nodiscard]] const LoopRange* rangeOf(std::uint32_t index) const;

  const Program& program_;
  Findings& findings_;
  std::vector<Symbol> symbols_;
  std::vector<Fact> facts_;
  NameId flag_ = noName;
  bool marking_ = true;  // what is named counts as used
  bool declaring_ = false;
};

std::string_view titleOf(SymbolKind kind);  // "a constant"
std::string_view titleOf(WordKind kind);

}  // namespace logscript
