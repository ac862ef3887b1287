#include "model/table_rules.h"

#include <algorithm>
#include <array>

#include "model/conditions.h"
#include "model/time_units.h"
#include "text/strings.h"

namespace model {
namespace {

using ports::Answer;
using ports::Buttons;
using ports::Icon;
using ports::Message;
using text::concat;

constexpr std::string_view lineBreak = "\r\n";
constexpr std::size_t collectedLength = 6;  // of a name; the collector adds two digits

/// The name without the two digits at its end; the whole name when it has no such end.
std::string_view stemBeforeTwoDigits(std::string_view name) {
  constexpr std::size_t digits = 2;
  const std::size_t end = name.find_last_not_of("0123456789");
  const std::size_t stem = end == std::string_view::npos ? 0 : end + 1;
  return name.size() == stem + digits ? name.substr(0, stem) : name;
}

bool haveNumberedStem(std::string_view a, std::string_view b) {
  const std::string_view stem = stemBeforeTwoDigits(a);
  return stem.size() < a.size() && stemBeforeTwoDigits(b).size() < b.size() &&
         text::equalsIgnoringCase(stem, stemBeforeTwoDigits(b));
}

bool areSimilar(std::string_view a, std::string_view b) {
  if (text::equalsIgnoringCase(a, b)) return false;
  return text::equalsIgnoringCase(a.substr(0, collectedLength), b.substr(0, collectedLength)) ||
         haveNumberedStem(a, b);
}

Message similarNames(const Project& project, std::size_t first, std::size_t second) {
  return {.title = "SIMILAR TABLE NAMES",
          .text = concat("The first 6 characters in Table ", first, " (",
                         project.tables[first - 1].TableName, ") and Table ", second, " (",
                         project.tables[second - 1].TableName,
                         ") are the same.\r\n"
                         "While this is legal, it will cause problems when collecting data.\r\n"
                         "The collection process uses the first 6 characters of the table\r\n"
                         "name plus 2 digits for the output file name.\r\n"
                         "YOU SHOULD USE A DIFFERENT NAME.")};
}

/// A table's flags in pairs, with the words that the message has for them.
std::string duplicateFlagLines(const OutputTable& table) {
  struct Use {
    std::string_view name;
    std::int16_t flag;
  };
  const std::array<Use, 3> uses = {{{"'  Write Flag ", table.FlagTable},
                                    {"'  Mark Flag ", table.FlagMark},
                                    {"'  Full Flag ", table.FlagFull}}};
  std::string lines;
  for (std::size_t i = 0; i < uses.size(); ++i)
    for (std::size_t j = i + 1; j < uses.size(); ++j)
      if (uses[i].flag != 0 && uses[i].flag == uses[j].flag)
        lines += concat("Table '", table.TableName, uses[i].name, "and Table '", table.TableName,
                        uses[j].name, "both use flag ", uses[i].flag, ".", lineBreak);
  return lines;
}

}  // namespace

bool isTableNameKey(char key) {
  return text::isLetter(key) || text::isDigit(key) || key == '_' || key == '\b';
}

std::string typedTableName(std::string_view name) {
  const std::size_t first = name.find_first_not_of("0123456789_");
  return std::string(first == std::string_view::npos ? "" : name.substr(first, maxTableNameLength));
}

std::optional<Message> complaintAboutDuplicateNames(const Project& project) {
  for (std::size_t later = 2; later <= maxTables; ++later)
    for (std::size_t number = 1; number < later; ++number) {
      const std::string& name = project.tables[later - 1].TableName;
      if (!text::equalsIgnoringCase(name, project.tables[number - 1].TableName)) continue;
      return Message{
          .title = "DUPLICATE TABLE NAME",
          .text = concat("The name '", name, "' is already being used for Table ", number,
                         ".\r\n\r\n"
                         "EACH TABLE REQUIRES A UNIQUE NAME!"),
          .icon = Icon::critical};
    }
  return std::nullopt;
}

std::vector<Message> warningsAboutSimilarNames(const Project& project) {
  std::vector<Message> warnings;
  for (std::size_t later = 2; later <= maxTables; ++later)
    for (std::size_t number = 1; number < later; ++number) {
      if (!areSimilar(project.tables[number - 1].TableName, project.tables[later - 1].TableName))
        continue;
      warnings.push_back(similarNames(project, number, later));
      break;
    }
  return warnings;
}

std::string clampedInterval(std::string_view interval, int unitCode) {
  constexpr std::int64_t largestOfFirstUnit = 100'000'000;
  constexpr std::int64_t largest = 1'800'000'000;
  if (isVoltFilterRate(interval)) return "VFilt";
  if (isFftFilterRate(interval)) return "FFilt";
  return concat(std::min(intervalNumber(interval), unitCode == 0 ? largestOfFirstUnit : largest));
}

std::optional<Message> questionAboutTableFlags(const Project& project) {
  std::string lines;
  for (const OutputTable& table : project.tables) lines += duplicateFlagLines(table);
  if (lines.empty()) return std::nullopt;
  return Message{
      .title = "DUPLICATE FLAGS",
      .text = concat(lines,
                     "The above condition(s) could possibly cause undesirable results.\r\n"
                     "PRESS \"YES\" TO LEAVE AS IS OR \"NO\" TO EDIT."),
      .buttons = Buttons::yesNo,
      .defaultButton = Answer::yes};
}

std::optional<Message> informationAboutFlag(const Project& project, int flag) {
  if (flag < 1 || flag > static_cast<int>(maxFlags)) return std::nullopt;
  if (!project.flags[static_cast<std::size_t>(flag - 1)].FlagInclude) return std::nullopt;
  std::string text = concat("JUST LETTING YOU KNOW.\r\nFlag(", flag,
                            ") was previously enabled in the Flags Setup window.\r\n"
                            "The following code will be in the LogScript program:");
  for (const CommentedLine& line : flagLines(project, static_cast<std::size_t>(flag))) {
    const bool assigns = line.code.starts_with("Flag(");
    text += concat(lineBreak, assigns ? "   " : "", line.code);
  }
  return Message{.title = "FLAG INFORMATION", .text = std::move(text), .icon = Icon::none};
}

std::string givenTableName(std::string_view interval, std::size_t table) {
  if (isVoltFilterRate(interval)) return concat("VFilt", table);
  return concat(isFftFilterRate(interval) ? "FFilt" : "Table", table);
}

std::string proposedTableName(const OutputTable& settings, std::size_t table) {
  for (const std::string_view interval : {"VFilt", "FFilt", ""})
    if (settings.TableName == givenTableName(interval, table))
      return givenTableName(settings.OutInt, table);
  return settings.TableName;
}

std::string equivalentScansLabel(const OutputTable& table) {
  return concat("The number of equivalent scans per second for ", table.TableName, ".");
}

std::string equivalentScansText(const Project& project, const OutputTable& table) {
  const double micros = recordMicros(project, table);
  return micros > 0 ? concat(1e6 / micros, " /Sec") : "";
}

Message tableTimeMessage(const Project& project) {
  return {.title = "TABLE TIME", .text = KGEN_COMMON::timeToFillText(project), .icon = Icon::none};
}

Message complaintAboutTableTime() {
  return {.title = "TABLE TIME TOO LONG",
          .text = "The time entered needs more memory than is available."};
}

Message questionAboutTableEdits() {
  return {.title = "OUTPUT TABLES",
          .text =
              "Edits were made to one or more table configurations.  Save changes before "
              "exiting screen?",
          .icon = Icon::question,
          .buttons = Buttons::yesNo,
          .defaultButton = Answer::yes};
}

}  // namespace model
