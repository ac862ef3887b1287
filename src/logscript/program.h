#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "logscript/finding.h"
#include "logscript/names.h"

namespace logscript {

enum class NodeKind : std::uint8_t {
  number,
  text,
  name,        // X
  index,       // X(1,2): an element, or a function with arguments
  wholeArray,  // X()
  arrayFrom,   // X(3)(): the array from an element on
  field,       // Table.Field(1,0)
  unary,
  binary,
};

enum class Operator : std::uint8_t {
  none,
  add,
  subtract,
  multiply,
  divide,
  wholeDivide,
  modulo,
  power,
  equal,
  notEqual,
  less,
  lessOrEqual,
  greater,
  greaterOrEqual,
  conjunction,
  disjunction,
  exclusive,
  negation,
  minus,
};

/// One node of an expression. Operands and arguments stand before their node in Program::nodes, so
/// that a walk over the vector meets them first.
struct Node {
  NodeKind kind = NodeKind::number;
  Operator op = Operator::none;
  std::uint32_t offset = 0;
  NameId name = noName;
  NameId field = noName;
  std::uint32_t first = 0;  // operand; or where the arguments begin in Program::lists
  std::uint32_t count = 0;  // second operand; or how many arguments; or the length of a text
  double number = 0;
};

enum class StatementKind : std::uint8_t {
  constant,   // name; value
  variable,   // name; dimensions
  alias,      // name; element
  units,      // variable, text
  data,       // values
  read,       // element
  dataTable,  // name; trigger, size
  sub,        // name
  beginProg,
  slowSequence,
  scan,       // interval, unit, buffer, count
  subScan,    // interval, unit, count
  burst,      // condition
  doLoop,     // condition, if any
  whileLoop,  // condition
  forLoop,    // name of the variable; first, last, step if any
  ifThen,     // condition
  elseIf,     // condition
  otherwise,
  select,  // value
  caseOf,  // values
  close,   // of the block it stands in; conditions of Loop, counts of EndBurstTrigger
  exitBlock,
  call,       // name of a subroutine
  callTable,  // name
  assign,     // element, value
  invoke,     // name of an instruction or subroutine; arguments
};

/// The word that begins a statement; "=" for what begins with a name.
std::string_view wordOf(StatementKind kind);

/// One statement. A block is a statement whose members follow it up to its end.
struct Statement {
  StatementKind kind = StatementKind::invoke;
  bool isPublic = false, isBoolean = false;  // of a variable
  bool implied = false;                      // opened by a fault, not by the text
  bool faulty = false;                       // a part of its text could not be read
  std::uint32_t offset = 0;
  std::uint32_t nameOffset = 0;
  NameId name = noName;
  std::uint32_t parent = 0;  // index of the block it stands in; its own at the top
  std::uint32_t end = 0;     // one past the last member of a block
  std::uint32_t firstNode = 0, endNode = 0;
  std::uint32_t first = 0, count = 0;  // its expressions, in Program::lists
};

/// A program as a tree. The text has to stay as long as it.
struct Program {
  std::string_view text;
  Names names;
  std::vector<std::uint32_t> lineStarts = {0};
  std::vector<Statement> statements;
  std::vector<Node> nodes;
  std::vector<std::uint32_t> lists;                // of node indexes
  Findings findings;                               // of the reading
  bool impliedTable = false, impliedCode = false;  // the opening line of one is missing
  bool givenUp = false;                            // the tree ends before the text

  [[nodiscard]] std::uint32_t line(std::uint32_t offset) const {
    return lineOf(lineStarts, offset);
  }
  [[nodiscard]] std::size_t lines() const;
  [[nodiscard]] std::span<const std::uint32_t> expressions(const Statement& statement) const {
    return std::span(lists).subspan(statement.first, statement.count);
  }
  [[nodiscard]] std::span<const std::uint32_t> arguments(const Node& node) const {
    return std::span(lists).subspan(node.first, node.count);
  }
  [[nodiscard]] std::string_view spelling(NameId id) const { return names.spelling(id); }
};

/// Lines that a logger takes.
constexpr std::size_t maxLines = 3000;

/// Reads a program. Whatever the text is, reading ends; what is wrong with its form is in findings.
Program parse(std::string_view text);

}  // namespace logscript
