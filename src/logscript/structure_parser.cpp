#include "logscript/structure_parser.h"

#include "text/strings.h"

namespace logscript {

using text::concat;

void StructureParser::dataTable(const Token& word) {
  closeAll(&word);
  start(Kind::dataTable, word);
  expect('(', "DataTable");
  takeName("table");
  if (take(','))
    argumentList();
  else
    expect(')', "DataTable");
  push(Kind::dataTable, appendDraft());
  endStatement();
}

void StructureParser::subroutine(const Token& word) {
  closeAll(&word);
  start(Kind::sub, word);
  takeName("subroutine");
  push(Kind::sub, appendDraft());
  endStatement();
}

void StructureParser::beginProgram(const Token& word) {
  closeAll(&word);
  if (begun_)
    fault(Code::wrongPlace, word.offset,
          "a second BeginProg; remove it: a program begins and ends once");
  begun_ = true;
  start(Kind::beginProg, word);
  push(Kind::beginProg, appendDraft());
  endStatement();
}

void StructureParser::slowSequence(const Token& word) {
  codePlace(word);
  if (open_.front().kind == Kind::sub && !open_.front().implied)
    fault(Code::wrongPlace, word.offset,
          "SlowSequence stands in a subroutine; move it to the end of the program");
  closeDownTo(1, &word);
  start(Kind::slowSequence, word);
  endStatement();
  appendDraft();
}

void StructureParser::closer(Kind kind, const Token& word, std::string_view closing,
                             std::string_view opening) {
  start(Kind::close, word);
  closeKind(kind, word, closing, opening);
}

void StructureParser::bracket(Kind kind, const Token& word) {
  codePlace(word);
  if (kind != Kind::scan && open_.front().kind == Kind::beginProg && !isOpen(Kind::scan)) {
    fault(Code::wrongPlace, word.offset,
          concat(shown(word), " stands outside a scan; put it between Scan and Next Scan"));
    imply(Kind::scan, word);
  }
  closeDownTo(innermost(kind), &word);
  start(kind, word);
  expect('(', program_.spelling(word.name));
  argumentList();
  push(kind, appendDraft());
  endStatement();
}

void StructureParser::endBurst(const Token& word) {
  start(Kind::close, word);
  expect('(', "EndBurstTrigger");
  argumentList();
  closeKind(Kind::burst, word, "EndBurstTrigger", "BeginBurstTrigger");
}

void StructureParser::next(const Token& word) {
  start(Kind::close, word);
  const Token name = token_;
  if (!at(TokenKind::name)) return closeFor(word, name);
  advance();
  if (name.name == idOf(Word::Scan)) return closeKind(Kind::scan, word, "Next Scan", "Scan");
  if (name.name == idOf(Word::SubScan))
    return closeKind(Kind::subScan, word, "Next SubScan", "SubScan");
  closeFor(word, name);
}

void StructureParser::closeFor(const Token& word, const Token& variable) {
  const auto isFor = [](const Open& open) { return open.kind == Kind::forLoop; };
  std::size_t index = innermost([&](const Open& open) {
    return isFor(open) &&
           (variable.name == noName || program_.statements[open.statement].name == variable.name);
  });
  if (index == open_.size() && variable.name != noName) {
    index = innermost(isFor);
    if (index != open_.size()) {
      fault(Code::closedWrongly, variable.offset,
            concat("Next ", program_.spelling(variable.name), " closes ", opening(open_[index]),
                   " of line ", program_.line(program_.statements[open_[index].statement].offset),
                   "; write ", closing(open_[index])));
    }
  }
  if (index == open_.size()) closesNothing(word, "Next", "For");
  close(index, word);
  endStatement();
}

}  // namespace logscript
