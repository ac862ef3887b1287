#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "logscript/names.h"

namespace logscript {

enum class TokenKind : std::uint8_t { endOfText, endOfLine, name, number, text, symbol, bad };

/// Signs of two characters are told by a letter.
enum Sign : char { lessOrEqual = 'l', greaterOrEqual = 'g', notEqual = 'n' };

struct Token {
  TokenKind kind = TokenKind::endOfText;
  char symbol = 0;  // + - * / \ ^ ( ) , . : = < > or a Sign
  std::uint32_t offset = 0, end = 0;
  NameId name = noName;
  double number = 0;
};

/// Cuts a program into tokens; comments and blanks are passed over.
class Lexer {
 public:
  Lexer(std::string_view text, Names& names, std::vector<std::uint32_t>& lineStarts)
      : text_(text), names_(names), lineStarts_(lineStarts) {}

  Token next();
  void moveTo(std::uint32_t offset) { at_ = offset; }
  /// The text from an offset of the current line to its comment or end, to which the lexer moves.
  std::string_view restOfLine(std::uint32_t from);

 private:
  void passOver();
  Token name();
  Token number();
  Token quoted();
  Token symbol();
  [[nodiscard]] Token token(TokenKind kind, std::size_t begin) const;
  [[nodiscard]] char at(std::size_t position) const {
    return position < text_.size() ? text_[position] : '\n';
  }

  std::string_view text_;
  Names& names_;
  std::vector<std::uint32_t>& lineStarts_;
  std::size_t at_ = 0;
};

}  // namespace logscript
