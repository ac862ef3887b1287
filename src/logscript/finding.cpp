#include "logscript/finding.h"

#include <algorithm>

#include "text/strings.h"

namespace logscript {
namespace {

using text::concat;

constexpr CodeInfo codes[] = {
    {Code::syntax, "syntax", Severity::error},
    {Code::notText, "not-text", Severity::error},
    {Code::tooDeep, "too-deep", Severity::error},
    {Code::tooLong, "too-long", Severity::error},
    {Code::tooMany, "too-many", Severity::error},
    {Code::blockNotClosed, "block-not-closed", Severity::error},
    {Code::closesNothing, "closes-nothing", Severity::error},
    {Code::closedWrongly, "closed-wrongly", Severity::error},
    {Code::wrongPlace, "wrong-place", Severity::error},
    {Code::noProgram, "no-program", Severity::error},
    {Code::undeclaredName, "undeclared-name", Severity::error},
    {Code::declaredTwice, "declared-twice", Severity::error},
    {Code::reservedName, "reserved-name", Severity::error},
    {Code::wrongKind, "wrong-kind", Severity::error},
    {Code::unknownInstruction, "unknown-instruction", Severity::error},
    {Code::unknownTable, "unknown-table", Severity::error},
    {Code::unknownField, "unknown-field", Severity::error},
    {Code::unknownSubroutine, "unknown-subroutine", Severity::error},
    {Code::argumentCount, "argument-count", Severity::error},
    {Code::argumentKind, "argument-kind", Severity::error},
    {Code::indexCount, "index-count", Severity::error},
    {Code::indexRange, "index-range", Severity::error},
    {Code::flagNumber, "flag-number", Severity::error},
    {Code::dataRead, "data-read", Severity::error},
    {Code::slotRange, "slot-range", Severity::error},
    {Code::channelTwice, "channel-twice", Severity::error},
    {Code::zeroDivisor, "zero-divisor", Severity::error},
    {Code::tableNotCalled, "table-not-called", Severity::warning},
    {Code::neverUsed, "never-used", Severity::hint},
};

constexpr std::size_t shownWidth = 110;

std::string_view lineAt(std::string_view program, std::uint32_t offset, std::uint32_t column) {
  const std::size_t start = offset - (column - 1);
  const std::string_view rest = program.substr(std::min(start, program.size()));
  std::string_view line = rest.substr(0, rest.find('\n'));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

/// The first character of the line to show, so that the place is on the screen.
std::size_t shownFrom(const Finding& finding) {
  return finding.column > shownWidth - 10 ? finding.column - shownWidth / 2 : 0;
}

std::string printable(std::string_view line) {
  std::string shown = text::asUtf8(line);
  for (char& c : shown)
    if (static_cast<unsigned char>(c) < 32 && c != '\t') c = '?';
  return shown;
}

}  // namespace

std::string_view nameOf(Severity severity) {
  switch (severity) {
    case Severity::error:
      return "error";
    case Severity::warning:
      return "warning";
    case Severity::hint:
      break;
  }
  return "hint";
}

std::span<const CodeInfo> allCodes() { return codes; }

const CodeInfo& infoOf(Code code) { return codes[static_cast<std::size_t>(code)]; }

std::optional<Code> codeNamed(std::string_view name) {
  for (const CodeInfo& info : codes)
    if (text::equalsIgnoringCase(info.name, name)) return info.code;
  return {};
}

void Findings::add(Code code, std::uint32_t offset, std::string text) {
  if (infoOf(code).severity == Severity::error && ++errors_ > limit) {
    if (errors_ == limit + 1)
      list_.push_back({Code::tooMany, offset, 0, 0,
                       concat("more than ", limit, " faults; correct those above and try again")});
    return;
  }
  list_.push_back({code, offset, 0, 0, std::move(text)});
}

bool Findings::has(Code code) const {
  return std::any_of(list_.begin(), list_.end(),
                     [code](const Finding& finding) { return finding.code == code; });
}

std::vector<Finding> Findings::sorted(const std::vector<std::uint32_t>& lineStarts) const {
  std::vector<Finding> result = list_;
  std::stable_sort(result.begin(), result.end(),
                   [](const Finding& a, const Finding& b) { return a.offset < b.offset; });
  for (Finding& finding : result) {
    finding.line = lineOf(lineStarts, finding.offset);
    finding.column = finding.offset - lineStarts[finding.line - 1] + 1;
  }
  return result;
}

std::uint32_t lineOf(const std::vector<std::uint32_t>& lineStarts, std::uint32_t offset) {
  const auto after = std::upper_bound(lineStarts.begin(), lineStarts.end(), offset);
  return static_cast<std::uint32_t>(after - lineStarts.begin());
}

std::string sourceLine(const Finding& finding, std::string_view program) {
  const std::string_view line = lineAt(program, finding.offset, finding.column);
  return printable(line.substr(std::min(shownFrom(finding), line.size()), shownWidth));
}

std::string report(const Finding& finding, std::string_view file, std::string_view program) {
  const CodeInfo& info = infoOf(finding.code);
  std::string out = concat(file, ":", finding.line, ":", finding.column, ": ",
                           nameOf(info.severity), ": ", finding.text, " [", info.name, "]\n");
  const std::string_view line = lineAt(program, finding.offset, finding.column);
  out += concat("  ", sourceLine(finding, program), "\n  ");
  for (std::size_t i = shownFrom(finding); i + 1 < finding.column && i < line.size(); ++i)
    if ((line[i] & 0xC0) != 0x80) out += line[i] == '\t' ? '\t' : ' ';
  return out += "^\n";
}

}  // namespace logscript
