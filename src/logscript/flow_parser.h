#pragma once

#include "logscript/structure_parser.h"

namespace logscript {

/// Conditions, loops, and calls.
class FlowParser : protected StructureParser {
 public:
  using StructureParser::StructureParser;

 protected:
  ~FlowParser() = default;

  void ifThen(const Token& word);
  void elseIf(const Token& word);
  void otherwise(const Token& word);
  void doLoop(const Token& word);
  void loop(const Token& word);
  void whileLoop(const Token& word);
  void forLoop(const Token& word);
  void select(const Token& word);
  void caseOf(const Token& word);
  void call(Kind kind, const Token& word, std::string_view what);
  void read(const Token& word);
  void exit(const Token& word);
  void exitBlock(const Token& word, Kind kind);

 private:
  void toIf(const Token& word);
  void loopCondition();
  void endLoopsOf(NameId variable, const Token& word);
  void caseRange();
};

}  // namespace logscript
