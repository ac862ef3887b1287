#include "support/program_tokens.h"

#include <cctype>
#include <cstdlib>

namespace support {
namespace {

bool isDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool beginsName(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }
bool isNamePart(char c) { return beginsName(c) || isDigit(c) || c == '_' || c == '$'; }

class Lexer {
 public:
  explicit Lexer(std::string_view code) : rest_(code) {}

  std::vector<Token> run() {
    std::vector<Token> tokens;
    while (skipBlanks()) tokens.push_back(next());
    tokens.emplace_back();
    return tokens;
  }

 private:
  bool skipBlanks() {
    while (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
    return !rest_.empty();
  }

  std::string take(std::size_t length) {
    std::string taken(rest_.substr(0, length));
    rest_.remove_prefix(taken.size());
    return taken;
  }

  Token next() {
    const char c = rest_.front();
    if (beginsName(c)) return name();
    if (isDigit(c)) return number();
    if (c == '"') return {TokenKind::text, take(rest_.find('"', 1) + 1)};
    const std::string_view two = rest_.substr(0, 2);
    return {TokenKind::sign, take(two == "<=" || two == ">=" || two == "<>" ? 2 : 1)};
  }

  Token name() {
    std::size_t length = 1;
    while (length < rest_.size() && isNamePart(rest_[length])) ++length;
    return {TokenKind::name, lowerCase(take(length))};
  }

  Token number() {
    std::size_t length = 1;
    while (length < rest_.size() && (isDigit(rest_[length]) || rest_[length] == '.')) ++length;
    if (length < rest_.size() && rest_[length] == 'E') {
      ++length;
      while (length < rest_.size() && (isDigit(rest_[length]) || rest_[length] == '-')) ++length;
    }
    const std::string digits = take(length);
    return {TokenKind::number, digits, std::strtod(digits.c_str(), nullptr)};
  }

  std::string_view rest_;
};

}  // namespace

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower;
}

std::vector<Token> tokensOf(std::string_view code) { return Lexer(code).run(); }

}  // namespace support
