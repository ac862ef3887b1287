#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "support/program_layout.h"
#include "support/program_tokens.h"

namespace support {

enum class SymbolKind { constant, variable, alias, table, subroutine };

/// A name that the program declares.
struct Symbol {
  SymbolKind kind = SymbolKind::variable;
  std::vector<std::size_t> dimensions = {};
  std::optional<double> number = {};                // of a constant
  std::string target = {};                          // of an alias: the variable
  std::string word = {};                            // of a constant: "mv50c"
  std::map<std::string, std::size_t> columns = {};  // of a table: field name and its values
};

/// An expression, as far as arguments ask for it.
struct Value {
  const Symbol* symbol = nullptr;  // the expression is this one name
  std::string name;                // of the symbol
  std::vector<std::optional<double>> indexes;
  bool whole = false;  // "X()"
  std::optional<double> number;
  std::string word;
};

/// Elements of the whole variable.
std::size_t elementsOf(const Symbol& symbol);

/// What is known while a line is read.
struct Scope {
  std::map<std::string, Symbol> symbols = {};     // by name in lower case
  std::map<std::string, double> loopBounds = {};  // highest value of loop variables
  std::vector<Fault>& faults;
  int line = 0;
  std::map<std::string, int> uses = {};  // variables and the line of their first use
  std::set<std::string> settings = {};   // variables that get a value

  void fault(const std::string& text) const { faults.push_back({line, text}); }
  Symbol* find(const std::string& name);
  /// The variable behind an alias, or the name itself.
  std::string variableOf(const std::string& name);
  void set(const std::string& name) { settings.insert(variableOf(name)); }
};

/// Reads the tokens of one line from left to right; what does not fit becomes a fault.
class ExpressionReader {
 public:
  ExpressionReader(Scope& scope, std::vector<Token> tokens)
      : scope_(scope), tokens_(std::move(tokens)) {}

  [[nodiscard]] const Token& peek() const { return tokens_[next_]; }
  [[nodiscard]] bool atEnd() const { return peek().kind == TokenKind::end; }
  [[nodiscard]] bool at(std::string_view text) const {
    return peek().kind != TokenKind::text && peek().text == text;
  }
  Token take();
  bool takeIf(std::string_view text);
  void expect(std::string_view text);
  void skipLine() { next_ = tokens_.size() - 1; }

  Value expression();
  /// Expressions in parentheses, separated by commas.
  std::vector<Value> arguments();
  /// A variable, an element of it or an alias that can be set. Aliases and units may name a row
  /// of an array by its first index alone.
  Value reference(bool rowAllowed = false);

 private:
  Value operand();
  Value named(const std::string& name);
  Value variable(const std::string& name, const Symbol& symbol, bool rowAllowed = false);
  Value tableColumn(const std::string& name, const Symbol& table);
  void checkIndexes(const Value& value, bool rowAllowed);

  Scope& scope_;
  std::vector<Token> tokens_;
  std::size_t next_ = 0;
};

}  // namespace support
