#pragma once

#include <string>
#include <vector>

#include "logscript/lexer.h"
#include "logscript/program.h"

namespace logscript {

/// Ends the reading of a line; what is wrong with it has been said.
struct LineFault {};

/// Reads expressions token by token into a program. Recursion is bounded.
class ExpressionParser {
 public:
  explicit ExpressionParser(std::string_view text);
  ExpressionParser(const ExpressionParser&) = delete;
  ExpressionParser& operator=(const ExpressionParser&) = delete;

 protected:
  ~ExpressionParser() = default;

  void advance() { token_ = lexer_.next(); }
  [[nodiscard]] bool at(TokenKind kind) const { return token_.kind == kind; }
  [[nodiscard]] bool atSymbol(char symbol) const {
    return token_.kind == TokenKind::symbol && token_.symbol == symbol;
  }
  [[nodiscard]] bool atWord(Word word) const {
    return token_.kind == TokenKind::name && token_.name == idOf(word);
  }
  bool take(char symbol);
  void expect(char symbol, std::string_view where);
  [[nodiscard]] bool atEndOfStatement() const;

  /// The token as the text has it, for messages.
  [[nodiscard]] std::string shown(const Token& token) const;
  [[noreturn]] void fail(const Token& at, std::string text);

  std::uint32_t expression(int leastBinding = 0);
  /// What a name stands for, its arguments and field included; the name has been taken.
  std::uint32_t reference(const Token& name);
  /// Expressions with commas between them up to ")", which is taken; appended to the scratch.
  void argumentList();

  std::uint32_t add(const Node& node);

  Program program_;
  Lexer lexer_;
  Token token_;
  std::vector<std::uint32_t> scratch_;  // arguments whose list isn't complete
  int depth_ = 0;                       // of the expression

 private:
  std::uint32_t primary();
  std::uint32_t unary(Operator op, int binding);
  std::uint32_t parenthesised();
  void takeArguments(Node& node);
  void takeField(Node& node);
};

}  // namespace logscript
