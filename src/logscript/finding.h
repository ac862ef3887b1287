#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace logscript {

enum class Severity : std::uint8_t { error, warning, hint };
std::string_view nameOf(Severity severity);

/// What can be found in a program.
enum class Code : std::uint8_t {
  syntax,
  notText,
  tooDeep,
  tooLong,
  tooMany,
  blockNotClosed,
  closesNothing,
  closedWrongly,
  wrongPlace,
  noProgram,
  undeclaredName,
  declaredTwice,
  reservedName,
  wrongKind,
  unknownInstruction,
  unknownTable,
  unknownField,
  unknownSubroutine,
  argumentCount,
  argumentKind,
  indexCount,
  indexRange,
  flagNumber,
  dataRead,
  slotRange,
  channelTwice,
  zeroDivisor,
  tableNotCalled,
  neverUsed,
};

struct CodeInfo {
  Code code;
  std::string_view name;  // "undeclared-name"
  Severity severity;
};
std::span<const CodeInfo> allCodes();
const CodeInfo& infoOf(Code code);
std::optional<Code> codeNamed(std::string_view name);

struct Finding {
  Code code = Code::syntax;
  std::uint32_t offset = 0;  // into the text of the program
  std::uint32_t line = 0, column = 0;
  std::string text;  // what; what to do
};

/// Findings as they come; after a hundred errors it only says that there are more.
class Findings {
 public:
  void add(Code code, std::uint32_t offset, std::string text);
  [[nodiscard]] bool full() const { return errors_ > limit; }
  [[nodiscard]] bool empty() const { return list_.empty(); }
  [[nodiscard]] bool has(Code code) const;
  /// In the order of the text, with lines and columns.
  std::vector<Finding> sorted(const std::vector<std::uint32_t>& lineStarts) const;

 private:
  static constexpr std::size_t limit = 100;
  std::vector<Finding> list_;
  std::size_t errors_ = 0;
};

/// Line of an offset, from 1.
std::uint32_t lineOf(const std::vector<std::uint32_t>& lineStarts, std::uint32_t offset);

/// "file:line:column: severity: text [code]", the line of the program, and a caret below the place.
std::string report(const Finding& finding, std::string_view file, std::string_view program);
/// The line of the program that a finding is in, cut to what a screen shows.
std::string sourceLine(const Finding& finding, std::string_view program);

}  // namespace logscript
