#include "control/program_excerpt.h"

#include <algorithm>

#include "logscript/program.h"
#include "text/strings.h"

namespace control {
namespace {

using logscript::Program;
using logscript::Statement;

bool isNameSign(char c) { return text::isLetter(c) || text::isDigit(c) || c == '_'; }

struct Pattern {
  std::string name;     // in lower case
  bool goesOn = false;  // longer words count as well
  bool whole = false;   // with all of the block that its line opens
};

bool takeEnd(std::string& name, std::string_view end) {
  if (!name.ends_with(end)) return false;
  name.resize(name.size() - end.size());
  return true;
}

std::vector<Pattern> patternsOf(const std::vector<std::string>& names) {
  std::vector<Pattern> patterns;
  for (const std::string& name : names) {
    Pattern pattern{text::lower(text::trimmed(name))};
    pattern.whole = takeEnd(pattern.name, "{}");
    pattern.goesOn = takeEnd(pattern.name, "*");
    if (!pattern.name.empty()) patterns.push_back(std::move(pattern));
  }
  return patterns;
}

/// A line without its comment.
std::string_view codeOf(std::string_view line) {
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') quoted = !quoted;
    if (line[i] == '\'' && !quoted) return line.substr(0, i);
  }
  return line;
}

bool hasWord(std::string_view code, const Pattern& pattern) {
  const std::string& name = pattern.name;
  for (std::size_t at = code.find(name); at != std::string_view::npos;
       at = code.find(name, at + 1)) {
    const std::size_t end = at + name.size();
    const bool begins = at == 0 || !isNameSign(code[at - 1]) || !isNameSign(name.front());
    const bool numberGoesOn =
        end < code.size() && text::isDigit(code[end]) && text::isDigit(name.back());
    const bool ends = end == code.size() || !isNameSign(code[end]) || !isNameSign(name.back()) ||
                      (pattern.goesOn && !numberGoesOn);
    if (begins && ends) return true;
  }
  return false;
}

/// A program with the line, from 0, of each of its statements.
struct Lines {
  explicit Lines(std::string_view text) : program(logscript::parse(text)) {
    ofStatement.reserve(program.statements.size());
    for (const Statement& statement : program.statements)
      ofStatement.push_back(program.line(statement.offset) - 1);
  }

  [[nodiscard]] std::size_t count() const { return program.lineStarts.size(); }
  /// Where the line ends, in the program's text or another one of its length.
  [[nodiscard]] std::size_t endOf(std::size_t line) const {
    return line + 1 < count() ? program.lineStarts[line + 1] : program.text.size();
  }
  [[nodiscard]] std::string_view in(std::string_view text, std::size_t line) const {
    return text.substr(program.lineStarts[line], endOf(line) - program.lineStarts[line]);
  }

  Program program;
  std::vector<std::size_t> ofStatement;
};

/// `lowered` is the program in lower case.
void markLines(const Lines& lines, std::string_view lowered, const Pattern& pattern,
               std::vector<char>& marked) {
  std::size_t line = 0;
  for (std::size_t at = lowered.find(pattern.name); at != std::string_view::npos;
       at = lowered.find(pattern.name, lines.endOf(line))) {
    line = lines.program.line(static_cast<std::uint32_t>(at)) - 1;
    if (hasWord(codeOf(lines.in(lowered, line)), pattern)) marked[line] = 1;
  }
}

/// The line that opens the block around a statement; its own line when there is none. An If of one
/// line is a block around its own statement.
std::size_t openingLine(const Lines& lines, std::size_t statement) {
  const auto& statements = lines.program.statements;
  const std::size_t own = lines.ofStatement[statement];
  for (std::size_t at = statement; statements[at].parent != at;) {
    at = statements[at].parent;
    if (lines.ofStatement[at] != own && !statements[at].implied) return lines.ofStatement[at];
  }
  return own;
}

bool isBranch(const Statement& statement) {
  using enum logscript::StatementKind;
  return statement.kind == elseIf || statement.kind == otherwise || statement.kind == close;
}

/// Of an If that is shown, the lines that tell when its parts run.
void showBranches(const Lines& lines, std::vector<char>& shown) {
  const auto& statements = lines.program.statements;
  for (std::size_t i = 0; i < statements.size(); ++i) {
    const std::size_t parent = statements[i].parent;
    const Statement& block = statements[parent];
    if (block.kind == logscript::StatementKind::ifThen && !block.implied &&
        isBranch(statements[i]) && shown[lines.ofStatement[parent]] != 0)
      shown[lines.ofStatement[i]] = 1;
  }
}

}  // namespace

std::string excerpt(std::string_view program, const std::vector<std::string>& names) {
  const Lines lines(program);
  const std::string lowered = text::lower(program);
  std::vector<char> chosen(lines.count(), 0), openers = chosen;
  for (const Pattern& pattern : patternsOf(names)) {
    markLines(lines, lowered, pattern, chosen);
    if (pattern.whole) markLines(lines, lowered, pattern, openers);
  }
  std::vector<char> shown = chosen;
  for (std::size_t i = 0; i < lines.ofStatement.size(); ++i) {
    const std::size_t own = lines.ofStatement[i], opening = openingLine(lines, i);
    if (chosen[own] != 0) shown[opening] = 1;
    if (openers[opening] != 0) shown[own] = 1;
  }
  showBranches(lines, shown);
  std::string out;
  for (std::size_t line = 0; line < shown.size(); ++line)
    if (shown[line] != 0) out += lines.in(program, line);
  return out;
}

}  // namespace control
