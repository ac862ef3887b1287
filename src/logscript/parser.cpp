#include <algorithm>
#include <initializer_list>

#include "logscript/flow_parser.h"
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

class Parser : private FlowParser {
 public:
  using FlowParser::FlowParser;

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
};

}  // namespace

Program parse(std::string_view text) { return Parser(text).run(); }

}  // namespace logscript
