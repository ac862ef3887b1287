#include <algorithm>
#include <cmath>

#include "generator/emitters.h"
#include "model/conditions.h"

namespace generator {
namespace {

using text::concat;

constexpr std::int64_t mostZeroScans = 100;
constexpr std::int64_t leastZeroScans = 10;
constexpr double zeroSeconds = 10;

std::string inserted(const std::string& text, std::size_t at, std::string_view piece) {
  return text.substr(0, at) + std::string(piece) + text.substr(at);
}

/// The offset argument and all after it give way to offset 0.
std::string withoutOffset(const std::string& text, const std::string& offsets) {
  const std::size_t at = text.find(offsets);
  return at == std::string::npos ? text : text.substr(0, at) + "0)";
}

void emitZeroLine(ProgramText& out, const ProgramPlan& plan, const SourceBlock& block) {
  if (block.letter == 'A') {
    for (const model::MultiplexerPlace& multiplexer : block.place.multiplexers)
      out.line("      ", zeroForm(block, multiplexerInstruction(block, multiplexer)));
    return;
  }
  out.line("      ", zeroForm(block, instruction(plan, block)));
}

bool zeroedIn(const ProgramPlan& plan, const PlannedSubscan& subscan) {
  const auto& blocks = plan.of('F');
  return std::any_of(blocks.begin(), blocks.end(), [&](const SourceBlock& block) {
    return block.zeroed() && plan.subscanOf(block.filterSlot) == &subscan;
  });
}

bool zeroedWithoutSubscan(const ProgramPlan& plan) {
  const auto& blocks = plan.of('F');
  return std::any_of(blocks.begin(), blocks.end(), [&](const SourceBlock& block) {
    return block.zeroed() && plan.subscanOf(block.filterSlot) == nullptr;
  });
}

void emitFilterZero(ProgramText& out, const ProgramPlan& plan, const PlannedSubscan* subscan) {
  for (const SourceBlock& block : plan.of('F'))
    if (block.zeroed() && plan.subscanOf(block.filterSlot) == subscan)
      emitZeroLine(out, plan, block);
  out.append("         Count2 = Count2 + 1");
  out.append("         CallTable Zero_1Ft");
}

void emitFilterZeros(ProgramText& out, const ProgramPlan& plan) {
  if (zeroedWithoutSubscan(plan)) emitFilterZero(out, plan, nullptr);
  for (const PlannedSubscan& subscan : plan.subscans) {
    if (!zeroedIn(plan, subscan)) continue;
    out.line("      SubScan (", subscan.timing.intervalMicros, ",uSec,", subscan.timing.count, ")");
    emitFilterZero(out, plan, &subscan);
    out.append("      NextSubScan");
  }
}

bool anyZeroed(const ProgramPlan& plan, std::string_view letters) {
  bool any = false;
  forBlocks(plan, letters, [&](const SourceBlock& block) { any |= block.zeroed(); });
  return any;
}

void emitZeroScan(ProgramText& out, const ProgramPlan& plan) {
  const ZeroTiming timing = zeroTiming(plan);
  out.code("Scan(PERIOD,P_UNITS,0,", timing.scans, ")")
      .comment("'Scan ", timing.scans, " times. ", text::formatted(timing.seconds, "0.00"),
               " Seconds.");
  const auto zeroLines = [&](std::string_view letters) {
    forBlocks(plan, letters, [&](const SourceBlock& block) {
      if (block.zeroed()) emitZeroLine(out, plan, block);
    });
  };
  zeroLines("V");
  emitFilterZeros(out, plan);
  zeroLines("BAH");
  if (anyZeroed(plan, "I")) {
    out.append("SubScan(0,0,-ISCNPSUB)");
    zeroLines("I");
    out.append("NextSubScan");
  }
  out.code("Count = Count + 1").comment("'Increment Count");
  if (anyZeroed(plan, "VBAHI")) out.code("CallTable Zero_1").comment("'Go up and run Table Zero_1");
  out.code("Next Scan").comment("'Loop up for the next scan");
}

/// Where the average of a block's zero variable is read in the subroutine.
std::string zeroAverage(const SourceBlock& block) {
  switch (block.letter) {
    case 'F':
      return concat("Zero_1Ft.", block.declaredValues(), "Zero_Avg(I,1)");
    case 'I':
      return concat("Zero_1.IBlK", block.number, "Zero_Avg(I,1)");
    case 'B':
      return concat("Zero_1.", block.values(), "ZeroMv_Avg(I,1)");
    default:
      return concat("Zero_1.", block.values(), "Zero_Avg(I,1)");
  }
}

void emitOffsetLoop(ProgramText& out, const SourceBlock& block) {
  if (!block.zeroed()) return;
  out.code("For I = 1 To ", block.constant("REP")).comment("'Do this ", block.number, " times");
  const std::string average = zeroAverage(block);
  if (block.letter == 'B') out.line(block.values(), "ZeroMv(I) = ", average);
  out.line(block.offsets(), "(I) = -", average);
  out.code("Next I").comment("'Do it again");
}

void emitZeroSub(ProgramText& out, const ProgramPlan& plan) {
  if (!plan.anyZeroed()) return;
  out.code("Sub Zero").comment("'Begin zero measure routine");
  out.code("Count = 0").comment("'Set Count to zero");
  out.code("Count2 = 0").comment("'Set Count2 to zero");
  emitZeroScan(out, plan);
  forBlocks(plan, "VFBAHI", [&](const SourceBlock& block) { emitOffsetLoop(out, block); });
  for (const int flag : plan.zeroFlags())
    out.code("Flag(", flag, ") = False").comment("'Reset Flag(", flag, ")");
  out.append("End Sub");
}

std::string orWord(const std::string& expression, std::string_view replacement) {
  return expression.empty() ? std::string(replacement) : expression;
}

void emitTriggerSub(ProgramText& out, const PlannedTable& table) {
  if (!table.hasTriggerSub) return;
  const model::OutputTable& settings = *table.table;
  out.line("Sub TriggerCall", table.name);
  out.line("   bStartTrigger = (", orWord(triggerText(settings, 0, table.name), "True"), ")");
  out.line("   bStopTrigger = (", orWord(triggerText(settings, 1, table.name), "False"), ")");
  out.line("   bWriteIfCall = (", orWord(writeIfText(settings), "True"), ")");
  out.append("End Sub");
}

}  // namespace

ZeroTiming zeroTiming(const ProgramPlan& plan) {
  const double scanSeconds = model::scanMicros(plan.project) / 1e6;
  ZeroTiming timing;
  timing.scans = mostZeroScans;
  if (scanSeconds * static_cast<double>(mostZeroScans) > zeroSeconds)
    timing.scans = std::max(leastZeroScans,
                            text::integerWithin(std::floor(zeroSeconds / scanSeconds), 0, 100));
  timing.seconds = scanSeconds * static_cast<double>(timing.scans);
  std::int64_t countsPerScan = zeroedWithoutSubscan(plan) ? 1 : 0;
  for (const PlannedSubscan& subscan : plan.subscans)
    if (zeroedIn(plan, subscan)) countsPerScan += subscan.timing.count;
  timing.filterCounts = timing.scans * countsPerScan;
  return timing;
}

std::string zeroForm(const SourceBlock& block, const std::string& instruction) {
  const std::string offsets = block.offsets();
  if (block.strain())
    return concat(instruction, "\r\n      StrainCalc(BBlk", block.number, "ZeroUs(),BREP",
                  block.number, ",BBlk", block.number, "ZeroMv(),0,BCODE", block.number, ",GBBlk",
                  block.number, "(),0)");
  if (block.letter == 'F' || block.letter == 'I') {
    const std::size_t at = instruction.find("()");
    return withoutOffset(inserted(instruction, at, "Zero"), offsets);
  }
  const std::string tag = concat("(", block.letter, "Blk");
  const std::size_t afterDigit = instruction.find(tag) + tag.size() + 1;
  return withoutOffset(inserted(instruction, afterDigit, block.letter == 'B' ? "ZeroMv" : "Zero"),
                       offsets);
}

void emitSubroutines(ProgramText& out, const ProgramPlan& plan) {
  out.spacedSectionBanner(" SUBROUTINES ");
  emitZeroSub(out, plan);
  for (const PlannedTable& table : plan.tables) emitTriggerSub(out, table);
}

}  // namespace generator
