#pragma once

#include "logscript/block_parser.h"

namespace logscript {

/// Declarations, which stand before the program begins.
class DeclarationParser : protected BlockParser {
 public:
  using BlockParser::BlockParser;

 protected:
  ~DeclarationParser() = default;

  void constants(const Token& word);
  void variables(const Token& word, bool isPublic);
  void alias(const Token& word);
  void units(const Token& word);
  std::uint32_t element(std::string_view where);
  void data(const Token& word);

 private:
  void type();
};

}  // namespace logscript
