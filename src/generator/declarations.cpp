#include <algorithm>

#include "generator/emitters.h"

namespace generator {
namespace {

using text::concat;

/// "Alias VBlk1(2) = name" for a tag such as "VBlk1" and a prefix such as "M$".
void emitAlias(ProgramText& out, std::string_view tag, std::size_t element, std::string_view name) {
  out.code("Alias ", tag, "(", element, ") = ", name)
      .comment("'Assign alias name \"", name, "\" to ", tag, "(", element, ")");
}

void emitChannelNames(ProgramText& out, const SourceBlock& block, std::size_t element) {
  const ProgramChannel& channel = block.channels[element - 1];
  const std::string tag = block.values();
  if (!channel.alias.empty()) {
    emitAlias(out, tag, element, channel.alias);
    if (block.letter != 'T') {
      emitAlias(out, block.multipliers(), element, concat("M$", channel.alias));
      emitAlias(out, block.offsets(), element, concat("O$", channel.alias));
    }
  }
  if (channel.units.empty()) return;
  const std::string name = channel.alias.empty() ? concat(tag, "(", element, ")") : channel.alias;
  out.code("Units ", name, " = ", channel.units)
      .comment("'Assign units \"", channel.units, "\" to ", name);
}

void emitFamilyNames(ProgramText& out, const ProgramPlan& plan, char letter) {
  for (const SourceBlock& block : plan.of(letter))
    for (std::size_t e = 1; e <= block.reps; ++e) emitChannelNames(out, block, e);
  if (letter == 'V') out.append("Dim MeasDisable");
}

void emitFieldNames(ProgramText& out, const ProgramPlan& plan) {
  for (const PlannedField& field : plan.fields) {
    if (field.average > 0)
      out.code("Alias RunAvg(", field.average, ") = ", field.name)
          .comment("'Alias for RunAvg Calculation ", field.average);
    if (!field.units.empty())
      out.code("Units ", field.name, " = ", field.units)
          .comment("'Assign units \"", field.units, "\" to ", field.name);
  }
}

void emitBattery(ProgramText& out, const ProgramPlan& plan) {
  const auto& sets = plan.project.powerOut.sets;
  const auto isPublic = [&](const model::PowerOutSet& set) {
    return set.Public || shownByDisplay(plan.project, set.Table);
  };
  out.code(scope(isPublic(sets[0])), "BattVolt").comment("'Battery voltage");
  out.code("Units BattVolt = Volts").comment("'Battery voltage units");
  out.code(scope(isPublic(sets[1])), "BattCurr").comment("'Battery current");
  out.code("Units BattCurr = mAmps").comment("'Battery current units");
}

void emitReference(ProgramText& out, const ProgramPlan& plan, std::string_view name,
                   std::size_t count, const model::ReferenceTemperature& reference,
                   std::string_view comment) {
  const bool isPublic = reference.Public || shownByDisplay(plan.project, reference.Table);
  if (count > 0) out.code(scope(isPublic), name, "(", count, ")").comment(comment);
}

std::size_t multiplexerReferences(const ProgramPlan& plan) {
  const auto& blocks = plan.of('A');
  const bool any = std::any_of(blocks.begin(), blocks.end(),
                               [](const SourceBlock& block) { return !block.block->TCMUXVolts; });
  return any ? static_cast<std::size_t>(plan.channels.multiplexers) : 0;
}

void emitReferences(ProgramText& out, const ProgramPlan& plan) {
  emitReference(out, plan, "TRef", plan.channels.tcSlots.size(), plan.project.tcReference,
                "'Declare Reference Temp variable");
  emitReference(out, plan, "IsoTRef", plan.channels.isoTcSlots.size(), plan.project.isoReference,
                "'Declare Isolated/7128 Reference Temp variable");
  const std::size_t multiplexers = multiplexerReferences(plan);
  emitReference(out, plan, "TCMUXGRef", multiplexers, plan.project.tcmuxReference,
                "'Declare TCMUX Reference Temp variable");
  if (multiplexers > 0) out.code("Units TCMUXGRef = Deg_C").comment("'TCMUX Reference units");
}

void emitPorts(ProgramText& out, const ProgramPlan& plan) {
  const bool perPort = plan.project.ports.CodeType == 0;
  bool anyWritten = false;
  for (const PlannedPorts& ports : plan.ports) {
    anyWritten |= !ports.reads;
    if (!ports.reads && perPort) continue;
    out.code("Public ", ports.variable)
        .comment("'Declare ", ports.reads ? "ReadPort " : "WritPort ",
                 ports.place.upper ? "(9-16)" : "(1-8)", " variable");
  }
  if (perPort && anyWritten) out.code("Public Port(8)").comment("'Declare Port variable");
}

void emitMarkCounters(ProgramText& out, const ProgramPlan& plan) {
  std::vector<int> flags;
  for (const PlannedTable& table : plan.tables) {
    const int flag = flagNumber(table.table->FlagMark);
    if (flag == 0 || std::find(flags.begin(), flags.end(), flag) != flags.end()) continue;
    flags.push_back(flag);
    out.code("Public Flag", flag, "Mark").comment("'Declare mark table counter variable");
  }
}

void emitExcitations(ProgramText& out, const ProgramPlan& plan) {
  for (const PlannedExcitation& excitation : plan.excitations)
    if (!excitation.variable.empty())
      out.code(scope(plan.project.excitation.ExcitePublic), excitation.variable)
          .comment("'Declare Excitation variable");
}

/// Codes of the calibration kinds, by the names that the field calibration lines use.
void emitCalibration(ProgramText& out, const ProgramPlan& plan) {
  if (!plan.stamp.dunmoreHost) return;
  out.spacedSectionBanner(" FIELD CALIBRATION GLOBAL VARIABLES ");
  out.append("Public CalFileLoaded As Boolean");
  out.append("Public CalStartIdx");
  out.append("Public FieldCalAvgs");
  out.append("Const TwoPointMultOffs = 2");
  if (!plan.anyCalibrated()) return;
  out.append("Const ZeroingCalib = 0");
  out.append("Const CalStrainZero = 10");
  out.append("Const Strain1_4Shunt = 13");
  out.append("Const Strain1_2Shunt = 23");
  out.append("Const StrainFullShunt = 33");
  std::vector<int> flags;
  forBlocks(plan, "VHBAIP", [&](const SourceBlock& block) {
    if (!block.calibrated || !block.zeroed()) return;
    if (std::find(flags.begin(), flags.end(), block.zeroFlag) != flags.end()) return;
    flags.push_back(block.zeroFlag);
    out.line("Public FlagMode", block.zeroFlag);
  });
}

}  // namespace

void emitDeclarations(ProgramText& out, const ProgramPlan& plan) {
  out.spacedSectionBanner(" ALIASES & OTHER VARIABLES ");
  for (const char letter : std::string_view("TVFHIBPAC")) emitFamilyNames(out, plan, letter);
  emitFieldNames(out, plan);
  out.code("Public Flag(8)").comment("'General Purpose Flags");
  out.append("Public ScanFlg1x(8) As Boolean");
  out.append("Public FlagMode");
  emitBattery(out, plan);
  out.code("Dim I").comment("'Declare I as a variable");
  out.code("Dim Count").comment("'Declare Count as a variable");
  out.code("Dim Count2").comment("'Declare Count2 as a variable");
  emitReferences(out, plan);
  emitPorts(out, plan);
  emitMarkCounters(out, plan);
  emitExcitations(out, plan);
  emitCalibration(out, plan);
}

}  // namespace generator
