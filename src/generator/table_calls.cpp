#include <algorithm>

#include "generator/emitters.h"
#include "model/conditions.h"

namespace generator {
namespace {

using text::concat;

constexpr int levelCrossingCode = 7;

/// Channels of a block whose level crossings tables of the one or the other kind store.
bool storesCrossing(const ProgramPlan& plan, const SourceBlock& block, std::size_t element,
                    bool inSubscan) {
  const model::Element& own = (*block.elements)[element - 1];
  return std::any_of(plan.tables.begin(), plan.tables.end(), [&](const PlannedTable& table) {
    return table.inSubscan == inSubscan &&
           ((own.Table[table.number - 1] >> levelCrossingCode) & 1U) != 0;
  });
}

void emitCrossingSource(ProgramText& out, const SourceBlock& block, std::size_t element) {
  const std::string source = block.crossingSource(element);
  out.code("      ", source, "(1) = ", block.element(element))
      .comment("'1st source dimension for LC", block.letter, "Blk");
  if (!block.crossing.secondVariable.empty())
    out.line("      ", source, "(2) = ", block.crossing.secondVariable);
}

void emitFileMarks(ProgramText& out, const ProgramPlan& plan) {
  std::vector<int> flags;
  for (const PlannedTable& table : plan.tables) {
    const int mark = flagNumber(table.table->FlagMark);
    const int write = flagNumber(table.table->FlagTable);
    if (mark == 0) continue;
    if (flags.empty()) out.fixedBanner(" File Mark Logic ", 25);
    const std::string writeTest = write > 0 ? concat("Flag(", write, ") And ") : "";
    const std::string counter = concat("Flag", mark, "Mark");
    out.code("      If ", writeTest, "Flag(", mark, ") Then").comment("'Test if flags are on");
    out.code("         FileMark(", table.name, ")")
        .comment("'Place a file mark in table ", table.name);
    out.code("         ", counter, " = ", counter, " + 1").comment("'Increment the mark counter");
    out.code("      End If").comment("'Test finished");
    if (std::find(flags.begin(), flags.end(), mark) == flags.end()) flags.push_back(mark);
  }
  for (const int flag : flags)
    out.code("      Flag(", flag, ") = False").comment("'Set Flag(", flag, ") back to False");
}

void emitTableFull(ProgramText& out, const ProgramPlan& plan) {
  bool first = true;
  for (const PlannedTable& table : plan.tables) {
    const int flag = flagNumber(table.table->FlagFull);
    if (flag == 0) continue;
    if (first) out.fixedBanner(" Table Full Logic ", 24);
    first = false;
    const std::string& name = table.name;
    out.line("      'Test if table ", name, " record count is equal or greater than table size");
    out.line("      Flag(", flag, ") = IIF(", name, ".Record(1,0) >= ", name,
             ".TableSize(1,1),True,False)");
  }
}

void emitTableControl(ProgramText& out, const ProgramPlan& plan) {
  bool first = true;
  for (const PlannedTable& table : plan.tables) {
    if (table.inSubscan) continue;
    if (first) out.fixedBanner(" Output Table Control ", 22);
    first = false;
    emitTableCall(out, table);
  }
}

void emitSubscanTriggerCall(ProgramText& out, const std::string& name,
                            const std::string& flagTest) {
  out.line("         Call TriggerCall", name);
  out.line("         If bWriteIfCall", flagTest, " Then");
  out.line("            CallTable ", name);
  out.append("            MeasDisable = 1");
  out.append("         EndIf");
}

}  // namespace

void emitCrossingSources(ProgramText& out, const ProgramPlan& plan, bool inSubscan) {
  forBlocks(plan, "TVFBPHIAC", [&](const SourceBlock& block) {
    for (const std::size_t element : block.crossing.elements)
      if (storesCrossing(plan, block, element, inSubscan)) emitCrossingSource(out, block, element);
  });
}

void emitTableCall(ProgramText& out, const PlannedTable& table) {
  const std::string& name = table.name;
  const int flag = flagNumber(table.table->FlagTable);
  const std::string_view indent = table.inSubscan ? "         " : "      ";
  const std::string flagTest = flag > 0 ? concat(" And Flag(", flag, ")") : "";
  if (table.hasTriggerSub && table.inSubscan) return emitSubscanTriggerCall(out, name, flagTest);
  if (table.hasTriggerSub) {
    out.line(indent, "Call TriggerCall", name);
    out.line(indent, "If bWriteIfCall", flagTest, " Then CallTable ", name);
  } else if (flag > 0) {
    out.line(indent, "If Flag(", flag, ") Then CallTable ", name);
  } else {
    out.line(indent, "CallTable ", name);
  }
}

void emitTableLogic(ProgramText& out, const ProgramPlan& plan) {
  emitCrossingSources(out, plan, false);
  emitFileMarks(out, plan);
  emitTableFull(out, plan);
  emitTableControl(out, plan);
}

}  // namespace generator
