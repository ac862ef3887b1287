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

std::string_view lineAt(const Program& program, std::size_t line) {
  const std::size_t begin = program.lineStarts[line];
  const std::size_t end =
      line + 1 < program.lineStarts.size() ? program.lineStarts[line + 1] : program.text.size();
  return program.text.substr(begin, end - begin);
}

std::vector<char> linesWith(const Program& program, const std::vector<Pattern>& patterns) {
  std::vector<char> chosen(program.lineStarts.size(), 0);
  for (std::size_t line = 0; line < chosen.size(); ++line) {
    const std::string code = text::lower(codeOf(lineAt(program, line)));
    chosen[line] = std::any_of(patterns.begin(), patterns.end(),
                               [&](const Pattern& pattern) { return hasWord(code, pattern); });
  }
  return chosen;
}

std::size_t lineOf(const Program& program, const Statement& statement) {
  return program.line(statement.offset) - 1;
}

/// The line that opens the block around a statement; its own line when there is none. An If of one
/// line is a block around its own statement.
std::size_t openingLine(const Program& program, const Statement& statement) {
  const std::size_t own = lineOf(program, statement);
  const Statement* at = &statement;
  while (&program.statements[at->parent] != at) {
    at = &program.statements[at->parent];
    if (lineOf(program, *at) != own && !at->implied) return lineOf(program, *at);
  }
  return own;
}

bool isBranch(const Statement& statement) {
  using enum logscript::StatementKind;
  return statement.kind == elseIf || statement.kind == otherwise || statement.kind == close;
}

/// Of an If that is shown, the lines that tell when its parts run.
void showBranches(const Program& program, std::vector<char>& shown) {
  for (const Statement& statement : program.statements) {
    const Statement& block = program.statements[statement.parent];
    if (block.kind == logscript::StatementKind::ifThen && !block.implied && isBranch(statement) &&
        shown[lineOf(program, block)] != 0)
      shown[lineOf(program, statement)] = 1;
  }
}

}  // namespace

std::string excerpt(std::string_view program, const std::vector<std::string>& names) {
  const Program tree = logscript::parse(program);
  std::vector<Pattern> patterns = patternsOf(names);
  const std::vector<char> chosen = linesWith(tree, patterns);
  std::erase_if(patterns, [](const Pattern& pattern) { return !pattern.whole; });
  const std::vector<char> openers = linesWith(tree, patterns);
  std::vector<char> shown = chosen;
  for (const Statement& statement : tree.statements) {
    const std::size_t own = lineOf(tree, statement), opening = openingLine(tree, statement);
    if (chosen[own] != 0) shown[opening] = 1;
    if (openers[opening] != 0) shown[own] = 1;
  }
  showBranches(tree, shown);
  std::string lines;
  for (std::size_t line = 0; line < shown.size(); ++line)
    if (shown[line] != 0) lines += lineAt(tree, line);
  return lines;
}

}  // namespace control
