#include <algorithm>

#include "generator/emitters.h"

namespace generator {
namespace {

using text::concat;

constexpr double fastScanMicros = 100'000;

/// The variable that starts a zero calibration: of the block's flag, or of the block itself.
std::string zeroMode(const SourceBlock& block) {
  return block.zeroed() ? concat("FlagMode", block.zeroFlag) : block.constant("ZeroMode");
}

void emitTwoPoint(ProgramText& out, const SourceBlock& block) {
  out.line("      FieldCal(TwoPointMultOffs,", block.values(), "(),1,", block.multipliers(), "(),",
           block.offsets(), "(),", block.constant("CalMode"), ",", block.constant("KnownVar"),
           "(),CalStartIdx,FieldCalAvgs)");
  out.line("      FieldCal(ZeroingCalib,", block.values(), "(),", block.constant("CalReps"), ",0,",
           block.offsets(), "(),", zeroMode(block), ",0,CalStartIdx,FieldCalAvgs)");
}

std::string_view shuntKind(const SourceBlock& block) {
  switch (block.block->Style) {
    case 5:
      return "Strain1_4Shunt";
    case 6:
      return "Strain1_2Shunt";
    default:
      return "StrainFullShunt";
  }
}

void emitStrain(ProgramText& out, const SourceBlock& block) {
  const std::string name = block.values();
  out.line("      FieldCalStrain(", shuntKind(block), ",", name, "(),1,", block.gaugeFactors(),
           "(),0,", block.constant("CalMode"), ",", block.constant("KnownVar"),
           "(),CalStartIdx,FieldCalAvgs,", block.gaugeFactors(), "Raw(),0)");
  out.line("      FieldCalStrain(CalStrainZero,", name, "mV_V(),", block.constant("CalReps"), ",0,",
           name, "ZeroMv(),", zeroMode(block), ",0,CalStartIdx,FieldCalAvgs,0)");
}

void emitSetup(ProgramText& out, const SourceBlock& block) {
  out.line("   ", block.constant("CalReps"), " = ", block.constant("REP"));
  if (!block.strain()) return;
  out.line("   For I = 1 To ", block.constant("REP"));
  out.line("      ", block.gaugeFactors(), "Raw(I) = ", block.gaugeFactors(), "(I)");
  out.append("   Next I");
}

}  // namespace

void emitCalibrationSetup(ProgramText& out, const ProgramPlan& plan) {
  if (!plan.stamp.dunmoreHost) return;
  forBlocks(plan, "VBHAIP", [&](const SourceBlock& block) {
    if (block.calibrated) emitSetup(out, block);
  });
  forBlocks(plan, "F", [&](const SourceBlock& block) { emitSetup(out, block); });
  out.line("   CalFileLoaded = ", plan.anyCalibrated() ? "LoadFieldCal(1)" : "false");
  out.line("   FieldCalAvgs = ", model::scanMicros(plan.project) <= fastScanMicros ? 20 : 1);
  out.append("   CalStartIdx = 1");
}

void emitFieldCalibration(ProgramText& out, const ProgramPlan& plan) {
  forBlocks(plan, "VHBAIP", [&](const SourceBlock& block) {
    if (!block.calibrated) return;
    block.strain() ? emitStrain(out, block) : emitTwoPoint(out, block);
  });
}

}  // namespace generator
