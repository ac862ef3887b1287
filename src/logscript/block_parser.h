#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "logscript/expression_parser.h"

namespace logscript {

/// Keeps the blocks of a program while it is read: what is open, what a line closes, where a
/// statement may stand. A block that is not closed or not opened is told once, and what follows is
/// read as if it were.
class BlockParser : protected ExpressionParser {
 public:
  using ExpressionParser::ExpressionParser;

 protected:
  using Kind = StatementKind;

  /// A block whose closing line has not come yet.
  struct Open {
    Kind kind;
    std::uint32_t statement;
    bool oneLine = false;  // of an If: ends with its line
    bool implied = false;  // its opening line is missing
    bool told = false;     // a statement that doesn't belong in it has been reported
  };

  ~BlockParser() = default;

  void fault(Code code, std::uint32_t offset, std::string text);

  // Blocks.
  static bool opens(Kind kind);
  static bool isTopBlock(Kind kind);
  [[nodiscard]] bool inTableBlock() const;
  [[nodiscard]] bool isOpen(Kind kind) const;
  void push(Kind kind, std::uint32_t statement, bool oneLine = false);
  void pop();
  void imply(Kind kind, const Token& word);
  [[nodiscard]] std::string nameWith(std::string_view word, const Open& open) const;
  [[nodiscard]] std::string opening(const Open& open) const;
  [[nodiscard]] std::string closing(const Open& open) const;
  void endUnclosed(const Token* before);
  void closeDownTo(std::size_t keep, const Token* before);
  void closeAll(const Token* before) { closeDownTo(0, before); }
  void endLine();
  /// Index of the innermost open block that a test takes; open_.size() when there is none. Only a
  /// closer of a whole table, subroutine or program looks further than the statements of one.
  template <class Test>
  std::size_t innermost(Test test, bool topBlock = false) const {
    for (std::size_t i = open_.size(); i-- > 0;)
      if (isTopBlock(open_[i].kind) == topBlock && test(open_[i])) return i;
    return open_.size();
  }
  [[nodiscard]] std::size_t innermost(Kind kind) const;
  void closesNothing(const Token& word, std::string_view closer, std::string_view opener);
  void close(std::size_t index, const Token& word);
  void closeKind(Kind kind, const Token& word, std::string_view closer, std::string_view opener);

  // The statement being read.
  void start(Kind kind, const Token& word);
  std::uint32_t append(Statement& statement);
  std::uint32_t appendDraft();
  void root(std::uint32_t node) { scratch_.push_back(node); }
  void endStatement();
  void takeName(std::string_view what);
  void expectWord(Word word, std::string_view where);

  // Where statements may stand.
  void declarationPlace(const Token& word);
  void codePlace(const Token& word);
  void notInTable(const Token& word);
  void instructionPlace(const Token& word);
  void placeAtTop(const Token& word, std::uint8_t places);

  std::vector<Open> open_;
  Statement draft_;
  bool pending_ = false;  // the draft is not in the program yet
};

}  // namespace logscript
