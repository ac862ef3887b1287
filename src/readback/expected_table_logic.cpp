#include <algorithm>

#include "readback/sections.h"

namespace readback {
namespace {

using text::concat;

constexpr unsigned levelCrossing = 7;

void expectFileMarks(Expectation& out, const Outline& outline) {
  std::vector<const Table*> firsts;  // of each flag
  for (const Table& table : outline.tables) {
    const int mark = flagOf(table.settings->FlagMark), write = flagOf(table.settings->FlagTable);
    if (mark == 0) continue;
    const Setting setting = table.setting("FlagMark");
    const std::string counter = concat("Flag", mark, "Mark");
    out.line(setting, concat("If ", write > 0 ? concat("Flag(", write, ") And ") : std::string(),
                             "Flag(", mark, ") Then"));
    out.line(setting, concat("FileMark(", table.name, ")"));
    out.line(setting, concat(counter, " = ", counter, " + 1"));
    out.line(setting, "End If");
    if (std::none_of(firsts.begin(), firsts.end(), [mark](const Table* first) {
          return flagOf(first->settings->FlagMark) == mark;
        }))
      firsts.push_back(&table);
  }
  for (const Table* table : firsts)
    out.line(table->setting("FlagMark"),
             concat("Flag(", flagOf(table->settings->FlagMark), ") = False"));
}

void expectTableFull(Expectation& out, const Outline& outline) {
  for (const Table& table : outline.tables)
    if (const int flag = flagOf(table.settings->FlagFull))
      out.line(table.setting("FlagFull"),
               concat("Flag(", flag, ") = IIF(", table.name, ".Record(1,0) >= ", table.name,
                      ".TableSize(1,1),True,False)"));
}

/// A level crossing reads its channel and, where it has one, a second variable.
void expectCrossingSource(Expectation& out, const Source& source, std::size_t e) {
  const std::string pair = source.crossing(e);
  out.assign(source.setting("Table", e), pair + "(1)", source.element(e));
  if (!source.secondVariable.empty())
    out.assign(source.setting(source.levelKey("LevelMeasName"), e), pair + "(2)",
               source.secondVariable);
}

}  // namespace

void expectCrossingSources(Expectation& out, const Outline& outline, bool inSubscan) {
  each(outline, "TVFBPHIAC", [&](const Source& source) {
    for (const std::size_t e : source.crossings) {
      const model::Element& element = *source.settingsOf(e);
      const bool stored =
          std::any_of(outline.tables.begin(), outline.tables.end(), [&](const Table& table) {
            return table.inSubscan == inSubscan &&
                   ((element.Table[table.number - 1] >> levelCrossing) & 1U) != 0;
          });
      if (stored) expectCrossingSource(out, source, e);
    }
  });
}

void expectTableCall(Expectation& out, const Table& table) {
  const int flag = flagOf(table.settings->FlagTable);
  const Setting setting = table.setting(flag > 0 ? "FlagTable" : "TableOn");
  const std::string flagTest = flag > 0 ? concat("Flag(", flag, ")") : "";
  if (!table.hasSub)
    return out.line(setting, concat(flag > 0 ? concat("If ", flagTest, " Then ") : std::string(),
                                    "CallTable ", table.name));
  const std::string test =
      concat("If bWriteIfCall", flag > 0 ? concat(" And ", flagTest) : std::string(), " Then");
  out.line(setting, concat("Call TriggerCall", table.name));
  if (!table.inSubscan) return out.line(setting, concat(test, " CallTable ", table.name));
  out.line(setting, test);
  out.line(setting, concat("CallTable ", table.name));
  out.line(setting, "MeasDisable = 1");
  out.line(setting, "EndIf");
}

void expectTableLogic(Expectation& out, const Outline& outline) {
  expectCrossingSources(out, outline, false);
  expectFileMarks(out, outline);
  expectTableFull(out, outline);
  for (const Table& table : outline.tables)
    if (!table.inSubscan) expectTableCall(out, table);
}

}  // namespace readback
