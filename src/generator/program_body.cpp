#include "generator/emitters.h"

namespace generator {
namespace {

std::string_view bufferPlace(const model::ScanSetup& scan) {
  if (scan.ScanMode != 1) return ", non-burst";
  switch (scan.PamBuffer) {
    case 1:
      return ", burst to PAM card A, ";
    case 2:
      return ", burst to PAM card B, ";
    default:
      return ", burst to CPU S-RAM, ";
  }
}

std::int64_t bufferedScans(const model::Project& project) {
  const model::ScanSetup& scan = project.scan;
  if (isK700X(project.configuration)) return scan.BufferScans;
  return scan.ScanBuffer || scan.ScanMode == 1 ? scan.ScanBufferSize : 0;
}

void emitMainScanLine(ProgramText& out, const model::Project& project) {
  const model::ScanSetup& scan = project.scan;
  const std::int64_t count = scan.ScanMode == 1 ? scan.PostTriggerScans : 0;
  const double number = model::trueNumber(scan.ExecutionTime, scan.ExecTimeUnits);
  out.code("   Scan(PERIOD,P_UNITS,", bufferedScans(project), ",", count, ")")
      .comment("'Scan once every ", text::formatted(number, "0.00"), " ",
               commentUnits(scan.ExecTimeUnits), bufferPlace(scan));
}

void emitScanFlags(ProgramText& out) {
  out.append("   For I = 1 To 8");
  out.append("      ScanFlg1x(I) = True");
  out.append("   Next I");
}

void emitBattery(ProgramText& out, const ProgramPlan& plan) {
  if (plan.measuresBattery(false))
    out.code("      Battery(BattVolt,0)").comment("'Battery voltage measurement");
  if (plan.measuresBattery(true))
    out.code("      Battery(BattCurr,1)").comment("'Battery current measurement");
}

void emitCalculatedFields(ProgramText& out, const ProgramPlan& plan) {
  for (const PlannedField& field : plan.fields) {
    const std::string& expression = field.field->CalcExpress;
    if (expression.empty()) continue;
    if (field.average > 0)
      out.line("      AvgRun(RunAvg(", field.average, "), 1,", expression, ",",
               field.field->CalcAvg, ")");
    else
      out.line("      ", field.name, " = ", expression);
  }
}

void emitScanBody(ProgramText& out, const ProgramPlan& plan) {
  emitBattery(out, plan);
  emitControls(out, plan);
  emitMeasurements(out, plan);
  emitFilterMeasurements(out, plan);
  emitCanReception(out, plan);
  emitFieldCalibration(out, plan);
  emitCalculatedFields(out, plan);
  emitTableLogic(out, plan);
}

void emitEnd(ProgramText& out, const ProgramPlan& plan) {
  out.code("   Next Scan").comment("'Loop up for the next scan");
  if (const int flag = flagNumber(plan.project.scan.FlagScan))
    out.code("Flag(", flag, ") = False").comment("'Set Flag(", flag, ") back to false");
  out.code("Loop").comment("'Loop up to allow scan on flag");
  emitLowPriority(out, plan);
  out.code("EndProg").comment("'Program ends here");
  out.append("'***** Program End *****");
}

}  // namespace

void emitProgramBody(ProgramText& out, const ProgramPlan& plan) {
  out.spacedSectionBanner(" PROGRAM ");
  out.code("BeginProg").comment("'Program begins here");
  out.append("'MainSequence");
  out.code("QV40(Flag,200)").comment("'QV40 displays public vars every 200 mSecs");
  emitInitialisation(out, plan);
  emitCanPreliminaries(out, plan);
  out.hyphenBanner("Main Scan");
  emitScanFlags(out);
  emitCalibrationSetup(out, plan);
  emitMainScanLine(out, plan.project);
  emitScanBody(out, plan);
  emitEnd(out, plan);
}

}  // namespace generator
