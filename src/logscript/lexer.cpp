#include "logscript/lexer.h"

#include <array>
#include <charconv>

#include "text/strings.h"

namespace logscript {
namespace {

enum class Character : std::uint8_t { other, blank, letter, digit, sign };

constexpr auto characters = [] {
  std::array<Character, 256> table = {};
  for (unsigned c = 'a'; c <= 'z'; ++c) table[c] = table[c - 32] = Character::letter;
  for (unsigned c = '0'; c <= '9'; ++c) table[c] = Character::digit;
  table['_'] = Character::letter;
  table[' '] = table['\t'] = table['\r'] = Character::blank;
  for (const char c : std::string_view("+-*/\\^(),.:=<>"))
    table[static_cast<unsigned char>(c)] = Character::sign;
  return table;
}();

Character kindOf(char c) { return characters[static_cast<unsigned char>(c)]; }

bool isDigit(char c) { return kindOf(c) == Character::digit; }

bool continuesName(char c) { return kindOf(c) == Character::letter || isDigit(c) || c == '$'; }

}  // namespace

Token Lexer::token(TokenKind kind, std::size_t begin) const {
  Token result;
  result.kind = kind;
  result.offset = static_cast<std::uint32_t>(begin);
  result.end = static_cast<std::uint32_t>(at_);
  return result;
}

/// Blanks, and a comment up to the end of its line.
void Lexer::passOver() {
  while (at_ < text_.size() && kindOf(text_[at_]) == Character::blank) ++at_;
  if (at_ < text_.size() && text_[at_] == '\'') at_ = std::min(text_.find('\n', at_), text_.size());
}

Token Lexer::next() {
  passOver();
  if (at_ >= text_.size()) return token(TokenKind::endOfText, at_);
  const char c = text_[at_];
  if (c == '\n') {
    ++at_;
    lineStarts_.push_back(static_cast<std::uint32_t>(at_));
    return token(TokenKind::endOfLine, at_ - 1);
  }
  if (kindOf(c) == Character::letter) return name();
  if (isDigit(c) || (c == '.' && isDigit(at(at_ + 1))) || c == '&') return number();
  if (c == '"') return quoted();
  if (kindOf(c) == Character::sign) return symbol();
  ++at_;
  return token(TokenKind::bad, at_ - 1);
}

Token Lexer::name() {
  const std::size_t begin = at_;
  std::uint32_t hash = hashSeed;
  for (; at_ < text_.size() && continuesName(text_[at_]); ++at_) hash = hashed(hash, text_[at_]);
  Token result = token(TokenKind::name, begin);
  result.name = names_.idOf(text_.substr(begin, at_ - begin), hash);
  return result;
}

/// Decimal with fraction and exponent, or "&H" and hexadecimal digits.
Token Lexer::number() {
  const std::size_t begin = at_;
  const char* const last = text_.data() + text_.size();
  double value = 0;
  std::from_chars_result read = {text_.data() + begin, std::errc::invalid_argument};
  if (text_[begin] != '&') {
    read = std::from_chars(text_.data() + begin, last, value);
  } else if (folded(at(begin + 1)) == 'h') {
    std::uint32_t bits = 0;
    read = std::from_chars(text_.data() + begin + 2, last, bits, 16);
    value = bits;
  }
  const bool failed = read.ec == std::errc::invalid_argument;
  at_ = failed ? begin + 1 : static_cast<std::size_t>(read.ptr - text_.data());
  Token result = token(failed ? TokenKind::bad : TokenKind::number, begin);
  result.number = value;
  return result;
}

Token Lexer::quoted() {
  const std::size_t begin = at_;
  at_ = text_.find_first_of("\"\n", begin + 1);
  const bool closed = at_ != std::string_view::npos && text_[at_] == '"';
  at_ = closed ? at_ + 1 : std::min(at_, text_.size());
  return token(closed ? TokenKind::text : TokenKind::bad, begin);
}

Token Lexer::symbol() {
  const std::size_t begin = at_++;
  const char first = text_[begin];
  const char second = at(at_);
  Token result = token(TokenKind::symbol, begin);
  result.symbol = first;
  if (first == '<' && second == '=') result.symbol = lessOrEqual;
  if (first == '>' && second == '=') result.symbol = greaterOrEqual;
  if (first == '<' && second == '>') result.symbol = notEqual;
  if (result.symbol != first) result.end = static_cast<std::uint32_t>(++at_);
  return result;
}

std::string_view Lexer::restOfLine(std::uint32_t from) {
  at_ = std::min(text_.find_first_of("'\r\n", from), text_.size());
  return text::trimmed(text_.substr(from, at_ - from));
}

}  // namespace logscript
