#include <algorithm>

#include "generator/emitters.h"

namespace generator {
namespace {

using text::concat;

void emitDefaultLoop(ProgramText& out, const SourceBlock& block) {
  if (block.reps == 0) return;
  const auto assign = [&](const std::string& array, const std::string& constant, double value,
                          std::string_view what) {
    out.code(array, "(I) = ", constant)
        .comment("'Assign default ", what, " (", value, ") to ", array);
  };
  out.code("For I = 1 To ", block.constant("REP"))
      .comment("'Do the following to all of ", block.values());
  assign(block.multipliers(), block.constant("MULT"), block.multiplier, "multiplier");
  assign(block.offsets(), block.constant("OSET"), block.offset, "offset");
  if (block.strain())
    assign(block.gaugeFactors(), concat("BGF", block.number), block.block->GageFactor,
           "gauge factor");
  out.code("Next I").comment("'Repeat above until finished");
}

/// Calls f(array, value, what it is) for each part of a channel's own scaling that differs from the
/// block's.
template <class F>
void forExceptions(const SourceBlock& block, std::size_t element, F f) {
  if (element > block.elements->size()) return;
  const model::Element& own = (*block.elements)[element - 1];
  if (!own.AliasExcept) return;
  if (own.AliasMult != block.multiplier) f(block.multipliers(), own.AliasMult, "multiplier");
  if (block.letter != 'B' && own.AliasOffset != block.offset)
    f(block.offsets(), own.AliasOffset, "offset");
  if (block.strain() && own.AliasGFactor != block.block->GageFactor)
    f(block.gaugeFactors(), own.AliasGFactor, "gauge factor");
}

/// What the comment calls a channel: CAN items by their name.
std::string exceptionTarget(const SourceBlock& block, std::size_t element) {
  if (block.letter == 'C' && !block.item->Name.empty())
    return concat(text::asAscii(block.item->Name), "(", element, ")");
  return block.element(element);
}

void emitExceptions(ProgramText& out, const ProgramPlan& plan) {
  bool first = true;
  forBlocks(plan, "TVFBPCHIA", [&](const SourceBlock& block) {
    for (std::size_t e = 1; e <= block.reps; ++e)
      forExceptions(block, e, [&](const std::string& array, double value, std::string_view what) {
        if (first) out.bodyBanner(" exception multipliers and offsets ");
        first = false;
        out.code(array, "(", e, ") = ", value)
            .comment("'Exception ", what, " for ", exceptionTarget(block, e), " alias \"",
                     block.channels[e - 1].alias, "\"");
      });
  });
}

void emitReadLoop(ProgramText& out, const std::string& array, std::size_t size) {
  out.code("For I = 1 To ", size).comment("'Do all of ", array);
  out.code("Read ", array, "(I)").comment("'Read data into ", array);
  out.append("Next I");
}

/// In the order in which the constants section wrote the data.
void emitLevelReads(ProgramText& out, const ProgramPlan& plan) {
  forBlocks(plan, "TVBHIPAFC", [&](const SourceBlock& block) {
    if (!block.crossing.used()) return;
    emitReadLoop(out, block.declaredValues() + "LC1", block.crossing.levels.size());
    emitReadLoop(out, block.declaredValues() + "LC2", block.crossing.tests.size());
  });
}

void emitStartWait(ProgramText& out, const ProgramPlan& plan) {
  out.code("Do").comment("'Loop to allow scan on flag repeat");
  if (const int flag = flagNumber(plan.project.scan.FlagScan))
    out.code("Do Until Flag(", flag, "): Loop").comment("'Loop Until Flag(", flag, ") is pressed");
  out.code("PulseCountReset()").comment("'Reset Pulse Counter");
}

}  // namespace

void emitInitialisation(ProgramText& out, const ProgramPlan& plan) {
  forBlocks(plan, "TVFBPHIAC", [&](const SourceBlock& block) { emitDefaultLoop(out, block); });
  emitExceptions(out, plan);
  emitLevelReads(out, plan);
  emitStartWait(out, plan);
}

}  // namespace generator
