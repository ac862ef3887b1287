#include "generator/emitters.h"

namespace generator {
namespace {

using text::concat;

std::string blockComment(const SourceBlock& block, std::string_view text) {
  return concat("'Block", block.number, text);
}

/// "VBlk1(VREP1)" for the array of the given name.
std::string sized(const SourceBlock& block, std::string_view name) {
  return concat(name, "(", block.constant("REP"), ")");
}

void emitBridgeArrays(ProgramText& out, const SourceBlock& block) {
  const std::string name = block.values();
  const auto array = [&](const std::string& arrayName, std::string_view comment) {
    out.code("Dim ", sized(block, arrayName)).comment(blockComment(block, comment));
  };
  if (block.strain()) {
    out.code(scope(block.isPublic), sized(block, name + "mV_V"))
        .comment(blockComment(block, " bridge output"));
    array(block.gaugeFactors(), " dimensioned gauge factor");
  }
  if (block.strain() || block.zeroed()) array(name + "ZeroMv", " zero variable");
  if (block.strain() && block.zeroed()) array(name + "ZeroUs", " zero strain");
}

void emitZeroArray(ProgramText& out, const SourceBlock& block) {
  if (!block.zeroed() || block.letter == 'B') return;
  out.code("Dim ", sized(block, block.declaredValues() + "Zero"))
      .comment(blockComment(block, " zero variable"));
}

void emitCalibrationVariables(ProgramText& out, const SourceBlock& block) {
  if (!block.calibrated) return;
  out.line("Public ", block.constant("CalMode"));
  out.line("Public ", sized(block, block.constant("KnownVar")));
  out.line("Public ", block.constant("CalReps"));
  if (!block.zeroed()) out.line("Public ", block.constant("ZeroMode"));
  if (block.strain()) out.line("Public ", sized(block, block.gaugeFactors() + "Raw"));
}

void emitUnits(ProgramText& out, const SourceBlock& block) {
  if (block.units.empty()) return;
  out.code("Units ", block.values(), " = ", block.units)
      .comment(blockComment(block, concat(" default units (", block.units, ")")));
}

void emitLevels(ProgramText& out, const SourceBlock& block, const std::vector<double>& levels,
                int array) {
  out.code("Dim ", block.declaredValues(), "LC", array, "(", levels.size(), ")")
      .comment(blockComment(block, concat(" level crossing array ", array)));
  std::string data = "Data ";
  for (std::size_t i = 0; i < levels.size(); ++i) data += concat(i == 0 ? "" : ",", levels[i]);
  out.code(data).comment(blockComment(block, concat(" data for array ", array)));
}

}  // namespace

void emitCrossingArrays(ProgramText& out, const SourceBlock& block) {
  if (!block.crossing.used()) return;
  emitLevels(out, block, block.crossing.levels, 1);
  emitLevels(out, block, block.crossing.tests, 2);
  for (const std::size_t element : block.crossing.elements)
    out.code("Dim ", block.crossingSource(element), "(2)")
        .comment(blockComment(block, " source for level crossing"));
}

void emitBlockArrays(ProgramText& out, const SourceBlock& block) {
  out.code(scope(block.isPublic), sized(block, block.values()))
      .comment(blockComment(block, " dimensioned source"));
  out.code("Dim ", sized(block, block.multipliers()))
      .comment(blockComment(block, " dimensioned multiplier"));
  out.code("Dim ", sized(block, block.offsets()))
      .comment(blockComment(block, " dimensioned offset"));
  if (block.letter == 'B') emitBridgeArrays(out, block);
  emitUnits(out, block);
  emitZeroArray(out, block);
  emitCalibrationVariables(out, block);
  emitCrossingArrays(out, block);
}

}  // namespace generator
