#pragma once

#include "logscript/declaration_parser.h"

namespace logscript {

/// What a program is made of: tables, subroutines, the program itself, and in it scans, subscans
/// and burst triggers, which don't hold their own kind.
class StructureParser : protected DeclarationParser {
 public:
  using DeclarationParser::DeclarationParser;

 protected:
  ~StructureParser() = default;

  void dataTable(const Token& word);
  void subroutine(const Token& word);
  void beginProgram(const Token& word);
  void slowSequence(const Token& word);
  void closer(Kind kind, const Token& word, std::string_view closing, std::string_view opening);
  void bracket(Kind kind, const Token& word);
  void endBurst(const Token& word);
  void next(const Token& word);

  bool begun_ = false;

 private:
  void closeFor(const Token& word, const Token& variable);
};

}  // namespace logscript
