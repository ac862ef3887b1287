#include "logscript/flow_parser.h"

#include "text/strings.h"

namespace logscript {

using text::concat;

void FlowParser::ifThen(const Token& word) {
  codePlace(word);
  start(Kind::ifThen, word);
  root(expression());
  expectWord(Word::Then, "If");
  push(Kind::ifThen, appendDraft(), !atEndOfStatement());
}

/// The If that a part of one belongs to; one is implied when there is none.
void FlowParser::toIf(const Token& word) {
  const std::size_t index = innermost(Kind::ifThen);
  if (index != open_.size()) return closeDownTo(index + 1, &word);
  codePlace(word);
  closesNothing(word, shown(word), "If");
  imply(Kind::ifThen, word);
}

void FlowParser::elseIf(const Token& word) {
  toIf(word);
  start(Kind::elseIf, word);
  root(expression());
  expectWord(Word::Then, "ElseIf");
  appendDraft();
}

void FlowParser::otherwise(const Token& word) {
  toIf(word);
  start(Kind::otherwise, word);
  appendDraft();
}

void FlowParser::loopCondition() {
  if (!atWord(Word::Until) && !atWord(Word::While)) return;
  advance();
  root(expression());
}

void FlowParser::doLoop(const Token& word) {
  codePlace(word);
  start(Kind::doLoop, word);
  loopCondition();
  push(Kind::doLoop, appendDraft());
  endStatement();
}

void FlowParser::loop(const Token& word) {
  start(Kind::close, word);
  loopCondition();
  closeKind(Kind::doLoop, word, "Loop", "Do");
}

void FlowParser::whileLoop(const Token& word) {
  codePlace(word);
  start(Kind::whileLoop, word);
  root(expression());
  push(Kind::whileLoop, appendDraft());
  endStatement();
}

void FlowParser::forLoop(const Token& word) {
  codePlace(word);
  start(Kind::forLoop, word);
  takeName("variable of the loop");
  expect('=', "For");
  root(expression());
  expectWord(Word::To, "For");
  root(expression());
  if (atWord(Word::Step)) {
    advance();
    root(expression());
  }
  endLoopsOf(draft_.name, word);
  push(Kind::forLoop, appendDraft());
  endStatement();
}

/// A loop over a variable that another open loop counts: the other one should have ended.
void FlowParser::endLoopsOf(NameId variable, const Token& word) {
  const std::size_t index = innermost([&](const Open& open) {
    return open.kind == Kind::forLoop && program_.statements[open.statement].name == variable;
  });
  closeDownTo(index, &word);
}

void FlowParser::select(const Token& word) {
  codePlace(word);
  start(Kind::select, word);
  expectWord(Word::Case, "Select");
  root(expression());
  push(Kind::select, appendDraft());
  endStatement();
}

void FlowParser::caseOf(const Token& word) {
  const std::size_t index = innermost(Kind::select);
  if (index == open_.size()) closesNothing(word, "Case", "Select Case");
  if (index != open_.size()) closeDownTo(index + 1, &word);
  start(Kind::caseOf, word);
  if (atWord(Word::Else)) {
    advance();
  } else {
    do caseRange();
    while (take(','));
  }
  endStatement();
  appendDraft();
}

void FlowParser::caseRange() {
  root(expression());
  if (!atWord(Word::To)) return;
  advance();
  root(expression());
}

void FlowParser::call(Kind kind, const Token& word, std::string_view what) {
  codePlace(word);
  start(kind, word);
  takeName(what);
  if (take('(')) expect(')', program_.spelling(word.name));
  endStatement();
  appendDraft();
}

void FlowParser::read(const Token& word) {
  codePlace(word);
  start(Kind::read, word);
  root(element("Read"));
  endStatement();
  appendDraft();
}

void FlowParser::exit(const Token& word) {
  static constexpr std::pair<Word, Kind> blocks[] = {{Word::For, Kind::forLoop},
                                                     {Word::Do, Kind::doLoop},
                                                     {Word::Scan, Kind::scan},
                                                     {Word::Sub, Kind::sub}};
  for (const auto& [which, kind] : blocks) {
    if (!atWord(which)) continue;
    advance();
    return exitBlock(word, kind);
  }
  fail(token_, concat("'Exit' leaves nothing before ", shown(token_),
                      "; write Exit For, Exit Do, Exit Sub or ExitScan"));
}

void FlowParser::exitBlock(const Token& word, Kind kind) {
  if (!isOpen(kind) && !(open_.empty() ? false : open_.front().implied))
    fault(
        Code::wrongPlace, word.offset,
        concat(shown(word), " leaves no block: it stands in none of its kind; move or remove it"));
  start(Kind::exitBlock, word);
  endStatement();
  appendDraft();
}

}  // namespace logscript
