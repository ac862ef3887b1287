#include "logscript/block_parser.h"

#include <algorithm>

#include "logscript/instructions.h"
#include "text/strings.h"

namespace logscript {

using text::concat;

namespace {

constexpr std::size_t maxBlocks = 100;

}  // namespace

bool BlockParser::opens(Kind kind) {
  switch (kind) {
    case Kind::dataTable:
    case Kind::sub:
    case Kind::beginProg:
    case Kind::scan:
    case Kind::subScan:
    case Kind::burst:
    case Kind::doLoop:
    case Kind::whileLoop:
    case Kind::forLoop:
    case Kind::ifThen:
    case Kind::select:
      return true;
    default:
      return false;
  }
}

bool BlockParser::isTopBlock(Kind kind) {
  return kind == Kind::dataTable || kind == Kind::sub || kind == Kind::beginProg;
}

void BlockParser::fault(Code code, std::uint32_t offset, std::string text) {
  program_.findings.add(code, offset, std::move(text));
}

bool BlockParser::inTableBlock() const {
  return !open_.empty() && open_.front().kind == Kind::dataTable;
}

bool BlockParser::isOpen(Kind kind) const {
  return std::any_of(open_.begin(), open_.end(), [kind](const Open& o) { return o.kind == kind; });
}

void BlockParser::push(Kind kind, std::uint32_t statement, bool oneLine) {
  if (open_.size() >= maxBlocks) {
    fault(Code::tooDeep, program_.statements[statement].offset,
          concat("blocks are nested more than ", maxBlocks,
                 " levels deep; move inner ones to subroutines"));
    program_.givenUp = true;
    return;
  }
  open_.push_back({kind, statement, oneLine});
}

void BlockParser::pop() {
  program_.statements[open_.back().statement].end =
      static_cast<std::uint32_t>(program_.statements.size());
  open_.pop_back();
}

/// Opens a block whose opening line is missing; that has been reported.
void BlockParser::imply(Kind kind, const Token& word) {
  Statement block;
  block.kind = kind;
  block.implied = true;
  block.offset = block.nameOffset = word.offset;
  push(kind, append(block));
  open_.back().implied = true;
}

std::string BlockParser::nameWith(std::string_view word, const Open& open) const {
  const NameId name = program_.statements[open.statement].name;
  return name == noName ? std::string(word) : concat(word, " ", program_.spelling(name));
}

std::string BlockParser::opening(const Open& open) const {
  return nameWith(wordOf(open.kind), open);
}

std::string BlockParser::closing(const Open& open) const {
  switch (open.kind) {
    case Kind::dataTable:
      return "EndTable";
    case Kind::sub:
      return "End Sub";
    case Kind::beginProg:
      return "EndProg";
    case Kind::scan:
      return "Next Scan";
    case Kind::subScan:
      return "NextSubScan";
    case Kind::burst:
      return "EndBurstTrigger";
    case Kind::doLoop:
      return "Loop";
    case Kind::whileLoop:
      return "Wend";
    case Kind::forLoop:
      return nameWith("Next", open);
    case Kind::select:
      return "End Select";
    default:
      return "End If";
  }
}

/// Ends the innermost block before a token that it cannot hold, or before the end of the text.
void BlockParser::endUnclosed(const Token* before) {
  const Open& open = open_.back();
  if (!open.implied && !open.oneLine)
    fault(
        Code::blockNotClosed, program_.statements[open.statement].offset,
        concat(opening(open), " is not closed; write ", closing(open),
               before ? concat(" before line ", program_.line(before->offset), ", ", shown(*before))
                      : std::string(" before the end of the program")));
  pop();
}

void BlockParser::closeDownTo(std::size_t keep, const Token* before) {
  while (open_.size() > keep) endUnclosed(before);
}

/// An If of one line ends with it, and so does what was opened in it.
void BlockParser::endLine() {
  const auto first =
      std::find_if(open_.begin(), open_.end(), [](const Open& open) { return open.oneLine; });
  if (first != open_.end()) closeDownTo(static_cast<std::size_t>(first - open_.begin()), &token_);
}

std::size_t BlockParser::innermost(Kind kind) const {
  const bool top = isTopBlock(kind);
  return innermost([&](const Open& o) { return o.kind == kind || (top && o.implied); }, top);
}

void BlockParser::closesNothing(const Token& word, std::string_view closer,
                                std::string_view opener) {
  fault(Code::closesNothing, word.offset,
        concat(closer, " closes nothing: no ", opener, " is open here; write ", opener,
               " before it or remove it"));
}

/// A closing line with what was read of it.
void BlockParser::close(std::size_t index, const Token& word) {
  if (index == open_.size()) return;
  closeDownTo(index + 1, &word);
  appendDraft();
  pop();
}

void BlockParser::closeKind(Kind kind, const Token& word, std::string_view closer,
                            std::string_view opener) {
  const std::size_t index = innermost(kind);
  if (index == open_.size()) closesNothing(word, closer, opener);
  close(index, word);
  endStatement();
}

void BlockParser::start(Kind kind, const Token& word) {
  draft_ = {};
  pending_ = true;
  draft_.kind = kind;
  draft_.offset = draft_.nameOffset = word.offset;
  draft_.firstNode = static_cast<std::uint32_t>(program_.nodes.size());
  scratch_.clear();
}

std::uint32_t BlockParser::append(Statement& statement) {
  const auto index = static_cast<std::uint32_t>(program_.statements.size());
  statement.parent = open_.empty() ? index : open_.back().statement;
  statement.end = index + 1;
  statement.endNode = static_cast<std::uint32_t>(program_.nodes.size());
  if (!scratch_.empty()) {
    statement.first = static_cast<std::uint32_t>(program_.lists.size());
    statement.count = static_cast<std::uint32_t>(scratch_.size());
    program_.lists.insert(program_.lists.end(), scratch_.begin(), scratch_.end());
    scratch_.clear();
  }
  program_.statements.push_back(statement);
  return index;
}

std::uint32_t BlockParser::appendDraft() {
  pending_ = false;
  return append(draft_);
}

void BlockParser::endStatement() {
  if (atEndOfStatement() || (atWord(Word::Else) && !open_.empty() && open_.back().oneLine)) return;
  fail(token_, concat(shown(token_),
                      " is too much here; end the statement before it, or separate two with ':'"));
}

void BlockParser::takeName(std::string_view what) {
  if (!at(TokenKind::name) || token_.name < keywordCount) {
    if (at(TokenKind::name))
      fault(Code::reservedName, token_.offset,
            concat("'", program_.spelling(token_.name),
                   "' is a word of the language; choose another name for the ", what));
    else
      fault(Code::syntax, token_.offset,
            concat("the name of the ", what, " is missing before ", shown(token_),
                   "; write it there"));
    throw LineFault{};
  }
  draft_.name = token_.name;
  draft_.nameOffset = token_.offset;
  advance();
}

void BlockParser::expectWord(Word word, std::string_view where) {
  if (atWord(word)) return advance();
  const std::string_view spelling = program_.spelling(idOf(word));
  fault(Code::syntax, token_.offset,
        concat(spelling, " is missing before ", shown(token_), " in ", where, "; write it there"));
  const bool misspelt = at(TokenKind::name) && token_.name >= keywordCount &&
                        distanceBetween(program_.spelling(token_.name), spelling, 2) <= 2;
  if (misspelt) advance();
}

void BlockParser::declarationPlace(const Token& word) {
  if (inTableBlock()) closeAll(&word);
  if (open_.size() > 1)
    fault(Code::wrongPlace, word.offset,
          concat(shown(word), " stands inside ", opening(open_.back()),
                 "; declare before the program begins"));
}

void BlockParser::codePlace(const Token& word) {
  if (open_.empty()) {
    program_.impliedCode = true;
    fault(Code::wrongPlace, word.offset,
          concat(shown(word),
                 " stands outside the program and its subroutines; write it after BeginProg, or "
                 "put the missing Sub or BeginProg before it"));
    imply(Kind::sub, word);
  } else if (inTableBlock()) {
    notInTable(word);
  }
}

void BlockParser::notInTable(const Token& word) {
  if (open_.front().told) return;
  open_.front().told = true;
  fault(Code::wrongPlace, word.offset,
        concat(shown(word), " can't stand in ", opening(open_.front()),
               "; close the table with EndTable before it"));
}

void BlockParser::instructionPlace(const Token& word) {
  const std::uint8_t places = instructionForms(word.name).front().places;
  if (open_.empty()) return placeAtTop(word, places);
  if (inTableBlock()) return (places & inTable) != 0 ? void() : notInTable(word);
  if ((places & anyCode) == 0) {
    const bool output = (places & inTable) != 0;
    fault(Code::wrongPlace, word.offset,
          concat(shown(word), " can't stand in the program; move it ",
                 output ? "between DataTable and EndTable" : "before the program begins"));
  } else if (open_.front().kind == Kind::beginProg && (places & inCode) == 0 &&
             !isOpen(Kind::scan)) {
    fault(Code::wrongPlace, word.offset,
          concat(shown(word), " stands outside a scan; put it between Scan and Next Scan"));
    imply(Kind::scan, word);
  }
}

void BlockParser::placeAtTop(const Token& word, std::uint8_t places) {
  if ((places & declarations) != 0) return;
  if ((places & anyCode) != 0) return codePlace(word);
  program_.impliedTable = true;
  fault(Code::wrongPlace, word.offset,
        concat(shown(word), " stands outside a table; put DataTable before it"));
  imply(Kind::dataTable, word);
}

}  // namespace logscript
