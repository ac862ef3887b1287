#include <algorithm>
#include <initializer_list>

#include "logscript/block_parser.h"
#include "logscript/instructions.h"
#include "text/strings.h"

namespace logscript {
namespace {

using text::concat;
using Kind = StatementKind;

/// Words that are a whole statement, closers above all: worth a guess when one is misspelt.
constexpr Word standingAlone[] = {
    Word::BeginProg, Word::Do,           Word::Else,     Word::EndIf,    Word::EndProg,
    Word::EndSelect, Word::EndSub,       Word::EndTable, Word::ExitDo,   Word::ExitFor,
    Word::ExitScan,  Word::ExitSub,      Word::Loop,     Word::NextScan, Word::NextSubScan,
    Word::Next,      Word::SlowSequence, Word::Wend};

/// Words of blocks that have arguments.
constexpr Word withArguments[] = {Word::Scan, Word::SubScan, Word::DataTable,
                                  Word::BeginBurstTrigger, Word::EndBurstTrigger};

class Parser : private BlockParser {
 public:
  using BlockParser::BlockParser;

  Program run() {
    if (program_.text.find('\0') != std::string_view::npos) return refuseBinary();
    if (program_.text.starts_with("\xEF\xBB\xBF")) lexer_.moveTo(3);
    advance();
    while (!at(TokenKind::endOfText) && !program_.givenUp) item();
    if (!program_.givenUp) finish();
    while (!open_.empty()) pop();
    return std::move(program_);
  }

 private:
  Program refuseBinary() {
    program_.findings.add(Code::notText, 0,
                          "this is no program: it holds bytes that no text has; name a program");
    program_.givenUp = true;
    return std::move(program_);
  }

  void item() {
    if (at(TokenKind::endOfLine)) endLine();
    if (at(TokenKind::endOfLine) || atSymbol(':')) return advance();
    try {
      statement();
    } catch (const LineFault&) {
      recoverFrom();
    }
    if (program_.findings.full()) program_.givenUp = true;
  }

  /// Passes over the rest of a faulty line. What it declares or opens is there all the same, so
  /// that its fault is told once.
  void recoverFrom() {
    const bool pending = pending_;
    bool endsWithThen = false;
    for (; !at(TokenKind::endOfLine) && !at(TokenKind::endOfText); advance())
      endsWithThen = atWord(Word::Then);
    scratch_.clear();
    depth_ = 0;
    pending_ = false;
    if (!pending) return;
    draft_.faulty = true;
    const bool declares = draft_.kind == Kind::constant || draft_.kind == Kind::variable ||
                          draft_.kind == Kind::alias;
    if (declares && draft_.name != noName) appendDraft();
    if (opens(draft_.kind) && (draft_.kind != Kind::ifThen || endsWithThen))
      push(draft_.kind, appendDraft());
  }

  void finish() {
    endLine();
    closeAll(nullptr);
    if (!begun_ && !program_.impliedCode)
      fault(Code::noProgram, static_cast<std::uint32_t>(program_.text.size()),
            "there is no BeginProg; write BeginProg before the statements of the program and "
            "EndProg after them");
    program_.givenUp = program_.lines() > 2 * maxLines;  // no program that could be shortened
    if (program_.lines() > maxLines)
      fault(Code::tooLong, program_.lineStarts[maxLines],
            concat("the program has ", program_.lines(), " lines and a logger takes ", maxLines,
                   "; shorten it"));
  }

  // Reading.

  void statement() {
    pending_ = false;
    if (!at(TokenKind::name))
      fail(token_, concat(shown(token_),
                          " begins no statement; write a word of the language or a "
                          "name, or begin a comment with \"'\""));
    const Token word = token_;
    advance();
    word.name < keywordCount ? keyword(static_cast<Word>(word.name), word) : named(word);
  }

  void keyword(Word which, const Token& word) {
    switch (which) {
      case Word::Const:
        return constants(word);
      case Word::Public:
      case Word::Dim:
        return variables(word, which == Word::Public);
      case Word::Alias:
        return alias(word);
      case Word::Units:
        return units(word);
      case Word::Data:
        return data(word);
      case Word::DataTable:
        return dataTable(word);
      case Word::Sub:
        return subroutine(word);
      case Word::BeginProg:
        return beginProgram(word);
      default:
        return statementOfCode(which, word);
    }
  }

  void statementOfCode(Word which, const Token& word) {
    switch (which) {
      case Word::EndTable:
        return closer(Kind::dataTable, word, "EndTable", "DataTable");
      case Word::EndSub:
        return closer(Kind::sub, word, "End Sub", "Sub");
      case Word::EndProg:
        return closer(Kind::beginProg, word, "EndProg", "BeginProg");
      case Word::End:
        return end(word);
      case Word::SlowSequence:
        return slowSequence(word);
      case Word::Scan:
        return bracket(Kind::scan, word);
      case Word::SubScan:
        return bracket(Kind::subScan, word);
      case Word::BeginBurstTrigger:
        return bracket(Kind::burst, word);
      case Word::EndBurstTrigger:
        return endBurst(word);
      case Word::NextScan:
        return closer(Kind::scan, word, "NextScan", "Scan");
      case Word::NextSubScan:
        return closer(Kind::subScan, word, "NextSubScan", "SubScan");
      case Word::Next:
        return next(word);
      default:
        return flow(which, word);
    }
  }

  void flow(Word which, const Token& word) {
    switch (which) {
      case Word::If:
        return ifThen(word);
      case Word::ElseIf:
        return elseIf(word);
      case Word::Else:
        return otherwise(word);
      case Word::EndIf:
        return closer(Kind::ifThen, word, "End If", "If");
      case Word::Do:
        return doLoop(word);
      case Word::Loop:
        return loop(word);
      case Word::While:
        return whileLoop(word);
      case Word::Wend:
        return closer(Kind::whileLoop, word, "Wend", "While");
      case Word::For:
        return forLoop(word);
      case Word::Select:
        return select(word);
      case Word::Case:
        return caseOf(word);
      case Word::EndSelect:
        return closer(Kind::select, word, "End Select", "Select Case");
      default:
        return calls(which, word);
    }
  }

  void calls(Word which, const Token& word) {
    switch (which) {
      case Word::Call:
        return call(Kind::call, word, "subroutine");
      case Word::CallTable:
        return call(Kind::callTable, word, "table");
      case Word::Read:
        return read(word);
      case Word::Exit:
        return exit(word);
      case Word::ExitScan:
        return exitBlock(word, Kind::scan);
      case Word::ExitDo:
        return exitBlock(word, Kind::doLoop);
      case Word::ExitFor:
        return exitBlock(word, Kind::forLoop);
      case Word::ExitSub:
        return exitBlock(word, Kind::sub);
      default:
        fail(word, concat(shown(word), " begins no statement; write what goes before it"));
    }
  }

  // Declarations.

  void constants(const Token& word) {
    declarationPlace(word);
    do {
      start(Kind::constant, word);
      takeName("constant");
      expect('=', "Const");
      root(expression());
      appendDraft();
    } while (take(','));
    endStatement();
  }

  void variables(const Token& word, bool isPublic) {
    declarationPlace(word);
    do {
      start(Kind::variable, word);
      draft_.isPublic = isPublic;
      takeName("variable");
      if (take('(')) argumentList();
      if (atWord(Word::As)) type();
      appendDraft();
    } while (take(','));
    endStatement();
  }

  void type() {
    advance();
    if (!atWord(Word::Boolean))
      fail(token_, concat("a variable is a number or 'As Boolean', not ", shown(token_),
                          "; write Boolean or leave As away"));
    draft_.isBoolean = true;
    advance();
  }

  void alias(const Token& word) {
    declarationPlace(word);
    start(Kind::alias, word);
    root(element("Alias"));
    expect('=', "Alias");
    takeName("alias");
    endStatement();
    appendDraft();
  }

  void units(const Token& word) {
    declarationPlace(word);
    start(Kind::units, word);
    root(element("Units"));
    if (!atSymbol('=')) expect('=', "Units");
    const std::string_view unit = lexer_.restOfLine(token_.end);
    advance();
    if (unit.empty()) fail(token_, "the unit is missing after '='; write it there");
    Node node;
    node.kind = NodeKind::text;
    node.first = node.offset = static_cast<std::uint32_t>(unit.data() - program_.text.data());
    node.count = static_cast<std::uint32_t>(unit.size());
    root(add(node));
    appendDraft();
  }

  std::uint32_t element(std::string_view where) {
    const Token name = token_;
    if (!at(TokenKind::name) || token_.name < keywordCount)
      fail(token_, concat(where, " wants the name of a variable before ", shown(token_),
                          "; write it there"));
    advance();
    return reference(name);
  }

  void data(const Token& word) {
    declarationPlace(word);
    start(Kind::data, word);
    do root(expression());
    while (take(','));
    endStatement();
    appendDraft();
  }

  // Tables, subroutines, the program.

  void dataTable(const Token& word) {
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

  void subroutine(const Token& word) {
    closeAll(&word);
    start(Kind::sub, word);
    takeName("subroutine");
    push(Kind::sub, appendDraft());
    endStatement();
  }

  void beginProgram(const Token& word) {
    closeAll(&word);
    if (begun_)
      fault(Code::wrongPlace, word.offset,
            "a second BeginProg; remove it: a program begins and ends once");
    begun_ = true;
    start(Kind::beginProg, word);
    push(Kind::beginProg, appendDraft());
    endStatement();
  }

  void slowSequence(const Token& word) {
    codePlace(word);
    if (open_.front().kind == Kind::sub && !open_.front().implied)
      fault(Code::wrongPlace, word.offset,
            "SlowSequence stands in a subroutine; move it to the end of the program");
    closeDownTo(1, &word);
    start(Kind::slowSequence, word);
    endStatement();
    appendDraft();
  }

  void closer(Kind kind, const Token& word, std::string_view closing, std::string_view opening) {
    start(Kind::close, word);
    closeKind(kind, word, closing, opening);
  }

  void end(const Token& word) {
    struct Closer {
      Word word;
      Kind kind;
      std::string_view closing, opening;
    };
    static constexpr Closer closers[] = {{Word::Sub, Kind::sub, "End Sub", "Sub"},
                                         {Word::If, Kind::ifThen, "End If", "If"},
                                         {Word::Select, Kind::select, "End Select", "Select Case"}};
    if (at(TokenKind::name)) {
      for (const Closer& which : closers) {
        const std::string_view spelling = program_.spelling(idOf(which.word));
        const std::size_t distance = distanceBetween(program_.spelling(token_.name), spelling, 1);
        if (distance > 1) continue;
        if (distance > 0) misspelt(token_, spelling, Code::syntax);
        advance();
        return closer(which.kind, word, which.closing, which.opening);
      }
    }
    fail(token_, concat("'End' ends nothing before ", shown(token_),
                        "; write End Sub, End If or End Select"));
  }

  // Scans, subscans and burst triggers: brackets that don't hold their own kind.

  void bracket(Kind kind, const Token& word) {
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

  void endBurst(const Token& word) {
    start(Kind::close, word);
    expect('(', "EndBurstTrigger");
    argumentList();
    closeKind(Kind::burst, word, "EndBurstTrigger", "BeginBurstTrigger");
  }

  void next(const Token& word) {
    start(Kind::close, word);
    const Token name = token_;
    if (!at(TokenKind::name)) return closeFor(word, name);
    advance();
    if (name.name == idOf(Word::Scan)) return closeKind(Kind::scan, word, "Next Scan", "Scan");
    if (name.name == idOf(Word::SubScan))
      return closeKind(Kind::subScan, word, "Next SubScan", "SubScan");
    closeFor(word, name);
  }

  void closeFor(const Token& word, const Token& variable) {
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

  // Conditions and loops.

  void ifThen(const Token& word) {
    codePlace(word);
    start(Kind::ifThen, word);
    root(expression());
    expectWord(Word::Then, "If");
    push(Kind::ifThen, appendDraft(), !atEndOfStatement());
  }

  /// The If that a part of one belongs to; one is implied when there is none.
  void toIf(const Token& word) {
    const std::size_t index = innermost(Kind::ifThen);
    if (index != open_.size()) return closeDownTo(index + 1, &word);
    codePlace(word);
    closesNothing(word, shown(word), "If");
    imply(Kind::ifThen, word);
  }

  void elseIf(const Token& word) {
    toIf(word);
    start(Kind::elseIf, word);
    root(expression());
    expectWord(Word::Then, "ElseIf");
    appendDraft();
  }

  void otherwise(const Token& word) {
    toIf(word);
    start(Kind::otherwise, word);
    appendDraft();
  }

  void loopCondition() {
    if (!atWord(Word::Until) && !atWord(Word::While)) return;
    advance();
    root(expression());
  }

  void doLoop(const Token& word) {
    codePlace(word);
    start(Kind::doLoop, word);
    loopCondition();
    push(Kind::doLoop, appendDraft());
    endStatement();
  }

  void loop(const Token& word) {
    start(Kind::close, word);
    loopCondition();
    closeKind(Kind::doLoop, word, "Loop", "Do");
  }

  void whileLoop(const Token& word) {
    codePlace(word);
    start(Kind::whileLoop, word);
    root(expression());
    push(Kind::whileLoop, appendDraft());
    endStatement();
  }

  void forLoop(const Token& word) {
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
  void endLoopsOf(NameId variable, const Token& word) {
    const std::size_t index = innermost([&](const Open& open) {
      return open.kind == Kind::forLoop && program_.statements[open.statement].name == variable;
    });
    closeDownTo(index, &word);
  }

  void select(const Token& word) {
    codePlace(word);
    start(Kind::select, word);
    expectWord(Word::Case, "Select");
    root(expression());
    push(Kind::select, appendDraft());
    endStatement();
  }

  void caseOf(const Token& word) {
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

  void caseRange() {
    root(expression());
    if (!atWord(Word::To)) return;
    advance();
    root(expression());
  }

  // Calls and the rest.

  void call(Kind kind, const Token& word, std::string_view what) {
    codePlace(word);
    start(kind, word);
    takeName(what);
    if (take('(')) expect(')', program_.spelling(word.name));
    endStatement();
    appendDraft();
  }

  void read(const Token& word) {
    codePlace(word);
    start(Kind::read, word);
    root(element("Read"));
    endStatement();
    appendDraft();
  }

  void exit(const Token& word) {
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

  void exitBlock(const Token& word, Kind kind) {
    if (!isOpen(kind) && !(open_.empty() ? false : open_.front().implied))
      fault(Code::wrongPlace, word.offset,
            concat(shown(word),
                   " leaves no block: it stands in none of its kind; move or remove it"));
    start(Kind::exitBlock, word);
    endStatement();
    appendDraft();
  }

  void named(const Token& word) {
    if (isInstruction(word.name) && !atSymbol('=')) return instruction(word);
    if (atSymbol('=')) return assignment(word);
    if (atSymbol('(') || atSymbol('.')) return withParenthesis(word);
    if (atEndOfStatement() || atWord(Word::Else)) return alone(word);
    recover(word);
  }

  void instruction(const Token& word) {
    instructionPlace(word);
    start(Kind::invoke, word);
    draft_.name = word.name;
    if (take('(') && !take(')')) argumentList();
    endStatement();
    appendDraft();
  }

  void assignment(const Token& word) {
    codePlace(word);
    start(Kind::assign, word);
    root(reference(word));
    expect('=', "the assignment");
    root(expression());
    endStatement();
    appendDraft();
  }

  /// An assignment to an element, or a call by name.
  void withParenthesis(const Token& word) {
    if (assignmentFollows()) return assignment(word);
    for (const Word which : withArguments) {
      const std::string_view spelling = program_.spelling(idOf(which));
      if (!isMisspelling(word, spelling)) continue;
      misspelt(word, spelling, Code::unknownInstruction);
      return keyword(which, asWord(word, which));
    }
    codePlaceUnlessTable(word);
    start(Kind::invoke, word);
    draft_.name = word.name;
    if (!take('(')) fail(token_, concat(shown(word), " is no statement; assign it with '='"));
    if (!take(')')) argumentList();
    endStatement();
    appendDraft();
  }

  /// An unknown instruction may well be meant for the table that it stands in.
  void codePlaceUnlessTable(const Token& word) {
    if (!inTableBlock()) codePlace(word);
  }

  /// Looks past the parentheses for "=".
  [[nodiscard]] bool assignmentFollows() const {
    int depth = 0;
    for (std::size_t i = token_.offset; i < program_.text.size(); ++i) {
      const char c = program_.text[i];
      if (c == '\n' || c == '\'' || (c == ':' && depth == 0)) return false;
      if (c == '=' && depth == 0) return true;
      depth += c == '(' ? 1 : c == ')' ? -1 : 0;
    }
    return false;
  }

  void alone(const Token& word) {
    for (const Word which : standingAlone) {
      const std::string_view spelling = program_.spelling(idOf(which));
      if (!isMisspelling(word, spelling) || isSubroutine(word)) continue;
      misspelt(word, spelling, Code::syntax);
      return keyword(which, asWord(word, which));
    }
    codePlaceUnlessTable(word);
    start(Kind::invoke, word);
    draft_.name = word.name;
    endStatement();
    appendDraft();
  }

  /// True when a Sub of that name stands anywhere.
  [[nodiscard]] bool isSubroutine(const Token& word) const {
    const std::string_view name = program_.spelling(word.name);
    std::string_view rest = program_.text;
    for (std::size_t i = rest.find("Sub "); i != std::string_view::npos; i = rest.find("Sub ")) {
      rest = rest.substr(i + 4);
      if (text::equalsIgnoringCase(rest.substr(0, name.size()), name)) return true;
    }
    return false;
  }

  [[nodiscard]] bool isMisspelling(const Token& word, std::string_view spelling) const {
    const std::size_t limit = tolerance(spelling.size());
    return distanceBetween(program_.spelling(word.name), spelling, limit) <= limit;
  }

  static Token asWord(const Token& word, Word which) {
    Token result = word;
    result.name = idOf(which);
    return result;
  }

  void misspelt(const Token& word, std::string_view spelling, Code code) {
    fault(code, word.offset,
          concat(shown(word), " is no word of the language; did you mean ", spelling, "?"));
  }

  /// A name, and then another or a number: some word of the language is misspelt.
  void recover(const Token& word) {
    NameId best = noName;
    std::size_t least = 3;
    for (NameId id = 0; id < keywordCount; ++id) {
      const std::string_view spelling = program_.spelling(id);
      const std::size_t limit = std::max<std::size_t>(tolerance(spelling.size()), 1);
      const std::size_t distance = distanceBetween(program_.spelling(word.name), spelling, limit);
      if (distance > limit || distance >= least) continue;
      least = distance;
      best = id;
    }
    if (best == noName)
      fail(word, concat(shown(word), " begins no statement: ", shown(token_),
                        " can't follow it; write a word of the language"));
    misspelt(word, program_.spelling(best), Code::syntax);
    keyword(static_cast<Word>(best), asWord(word, static_cast<Word>(best)));
  }

  bool begun_ = false;
};

}  // namespace

std::size_t Program::lines() const {
  const bool lastIsEmpty = lineStarts.back() == text.size();
  return lineStarts.size() - (lastIsEmpty ? 1 : 0);
}

Program parse(std::string_view text) { return Parser(text).run(); }

}  // namespace logscript
