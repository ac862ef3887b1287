#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace support {

enum class TokenKind { name, number, text, sign, end };

struct Token {
  TokenKind kind = TokenKind::end;
  std::string text;  // names in lower case: the language does not tell cases apart
  double number = 0;
};

/// The tokens of a line of code, the last one being the end. Characters that the language does
/// not know become signs of their own.
std::vector<Token> tokensOf(std::string_view code);

std::string lowerCase(std::string_view text);

}  // namespace support
