#include <algorithm>

#include "generator/emitters.h"

namespace generator {
namespace {

using text::concat;

/// Multiplier and offset arguments: arrays where channels differ, else the block's constants.
/// A burst measures channel by channel and passes the element (from 1); 0 is the whole block.
std::string scaling(const SourceBlock& block, std::size_t element = 0) {
  const std::string index = element == 0 ? "()" : concat("(", element, ")");
  if (block.strain()) return ",1,0)";
  if (block.multiplierArray)
    return concat(",", block.multipliers(), index, ",", block.offsets(), index, ")");
  const std::string multiplier = concat(",", block.constant("MULT"));
  if (block.offsetArray) return concat(multiplier, ",", block.offsets(), index, ")");
  return concat(multiplier, ",", block.constant("OSET"), ")");
}

/// What is measured at once: the whole block, or one channel of it.
struct Target {
  std::string destination;  // "VBlk1()" or "VBlk1(2)"
  std::string repetitions;  // "VREP1" or "1"
  model::Place place;
  std::size_t element = 0;
};

Target wholeBlock(const SourceBlock& block, std::string_view suffix = "") {
  return {concat(block.values(), suffix, "()"), block.constant("REP"), block.place.first, 0};
}

std::string voltage(const SourceBlock& block, const Target& target) {
  const bool differential = isDifferential(*block.block);
  return concat("Volt", block.block->MeasType, "(", target.destination, ",", target.repetitions,
                ",", block.constant("RNG"), ",", target.place.slot, ",", target.place.channel,
                differential ? concat(",", word(block.block->ReverseMes)) : std::string(), ",",
                block.constant("SETL"), ",", block.constant("INT"), scaling(block, target.element));
}

std::string thermocouple(const ProgramPlan& plan, const SourceBlock& block, const Target& target) {
  const bool differential = isDifferential(*block.block);
  const auto& slots = plan.channels.tcSlots;
  const auto reference = std::find(slots.begin(), slots.end(), target.place.slot) - slots.begin();
  return concat("TC", differential ? "DIFF" : "SE", "(", target.destination, ",",
                target.repetitions, ",", block.constant("RNG"), ",", target.place.slot, ",",
                target.place.channel, ",", block.constant("TYPE"), ",TRef(", reference + 1, ")",
                differential ? concat(",", word(block.block->ReverseMes)) : std::string(), ",",
                block.constant("SETL"), ",", block.constant("INT"), scaling(block, target.element));
}

std::string bridgeRange(const SourceBlock& block) {
  const std::string range = block.constant("RNG");
  return hasTwoRanges(*block.block) ? concat(range, "_1,", range, "_2") : range;
}

std::string bridge(const ProgramPlan& plan, const SourceBlock& block, const Target& target) {
  const model::MeasurementBlock& settings = *block.block;
  const std::size_t element = std::max<std::size_t>(target.element, 1);
  const model::Place excitation =
      placeOfBridgeExcitation(plan.project, plan.channels, block.number, element);
  return concat(model::bridgeInstruction(settings.Style), "(", target.destination, ",",
                target.repetitions, ",", bridgeRange(block), ",", target.place.slot, ",",
                target.place.channel, ",", excitation.slot, ",", excitation.channel, ",",
                target.element == 0 ? settings.ExciteReps : std::int16_t{1}, ",",
                block.constant("EXCIT"), ",", word(settings.RevExcite), ",",
                word(settings.ReverseMes || settings.RevOutput), ",", block.constant("SETL"), ",",
                block.constant("INT"), scaling(block, target.element));
}

std::string pulse(const SourceBlock& block, const Target& target) {
  return concat("PulseCount(", target.destination, ",", target.repetitions, ",", target.place.slot,
                ",", target.place.channel, ",", block.constant("CONF"), ",", block.constant("OPT"),
                scaling(block, target.element));
}

std::string isolated(const SourceBlock& block) {
  const bool thermo = block.block->InputType == 1;
  const std::string thermocoupleArguments =
      thermo ? concat(",", block.constant("TYPE"), ",IsoTRef(", block.place.reference, ")") : "";
  return concat(thermo ? "TC" : "Volt", block.block->MeasType, "(", block.values(), "(),",
                block.constant("REP"), ",", block.constant("RNG"), ",", block.place.first.slot, ",",
                block.place.first.channel, thermocoupleArguments, ",", block.constant("REV"), ",0,",
                block.constant("INT"), scaling(block));
}

std::string filter(const SourceBlock& block) {
  std::string spectrum;
  if (block.fft)
    for (const std::string_view suffix :
         {"FSR", "FLEN", "TSWIN", "SPECT", "FREF", "SBIN", "ILO", "IHI"})
      spectrum += concat(",", block.constant(suffix));
  return concat(block.fft ? "FFTFilt(" : "VoltFilt(", block.values(), "(),", block.constant("REP"),
                ",", block.constant("RNG"), ",", block.place.first.slot, ",",
                block.place.first.channel, ",", block.constant("OPT"), ",", block.constant("EXCIT"),
                spectrum, scaling(block));
}

std::string measured(const ProgramPlan& plan, const SourceBlock& block, const Target& target) {
  switch (block.letter) {
    case 'T':
      return thermocouple(plan, block, target);
    case 'B':
      return bridge(plan, block, target);
    case 'P':
      return pulse(block, target);
    default:
      return voltage(block, target);
  }
}

void emitZeroTest(ProgramText& out, const SourceBlock& block) {
  if (block.zeroed())
    out.code("      If Flag(", block.zeroFlag, ") Then Zero").comment("'Go do Zero subroutine");
}

void emitStrainCalc(ProgramText& out, const SourceBlock& block, std::size_t element) {
  const std::string index = element == 0 ? "()" : concat("(", element, ")");
  const std::string name = block.values();
  out.line("      StrainCalc(", name, index, ",",
           element == 0 ? block.constant("REP") : std::string("1"), ",", name, "mV_V", index, ",",
           name, "ZeroMv", index, ",0,BCODE", block.number, ",",
           block.gaugeArray ? block.gaugeFactors() + index : concat("BGF", block.number), ",0)",
           " 'Strain calculation");
}

void emitMeasurement(ProgramText& out, const ProgramPlan& plan, const SourceBlock& block) {
  out.line("      ", instruction(plan, block), block.strain() ? " 'Strain" : "");
  if (block.strain()) emitStrainCalc(out, block, 0);
  emitZeroTest(out, block);
}

/// "- LoLev" and so on: pulse blocks name their input in the burst comments.
std::string burstSuffix(const SourceBlock& block) {
  if (block.letter != 'P') return "";
  static constexpr std::array<std::string_view, 3> suffixes = {" - HiLev", " - LoLev", " - Switch"};
  return std::string(suffixes[static_cast<std::size_t>(pulseInputCode(*block.block))]);
}

void emitBurstBegin(ProgramText& out, const ProgramPlan& plan, std::string_view suffix) {
  out.fixedBanner(" Burst Trigger ", 25);
  out.code("      BeginBurstTrigger(", plan.burstTrigger, ")").comment("'Begin burst scan", suffix);
}

void emitBurstEnd(ProgramText& out, const ProgramPlan& plan, std::string_view suffix) {
  const model::ScanSetup& scan = plan.project.scan;
  out.code("      EndBurstTrigger(", scan.ScanBufferSize, ",", scan.PostTriggerScans, ")")
      .comment("'Stop scan ", scan.PostTriggerScans, " scans after trigger", suffix);
}

void emitBurst(ProgramText& out, const ProgramPlan& plan, const SourceBlock& block) {
  const std::string suffix = burstSuffix(block);
  emitBurstBegin(out, plan, suffix);
  const std::string_view array = block.strain() ? "mV_V" : "";
  for (std::size_t e = 1; e <= block.reps; ++e) {
    const Target target{concat(block.values(), array, "(", e, ")"), "1",
                        placeOfElement(plan.project, plan.channels, block.kind, block.number, e),
                        e};
    out.line("      ", measured(plan, block, target), block.strain() ? " 'Strain" : "");
    if (block.strain()) emitStrainCalc(out, block, e);
  }
  emitBurstEnd(out, plan, suffix);
  emitZeroTest(out, block);
}

void emitBlocks(ProgramText& out, const ProgramPlan& plan, char letter) {
  for (const SourceBlock& block : plan.of(letter))
    if (!block.burst) emitMeasurement(out, plan, block);
  for (const SourceBlock& block : plan.of(letter))
    if (block.burst) emitBurst(out, plan, block);
}

void emitThermocouples(ProgramText& out, const ProgramPlan& plan) {
  if (plan.of('T').empty()) return;
  out.bodyBanner(" Temp Blocks ");
  const int configured = plan.project.configuration.TcConfigOpts[2];
  const auto& slots = plan.channels.tcSlots;
  out.code("      ModuleTemp(TRef(),", slots.size(), ",", slots.front(), ",",
           configured == 0 ? 40 : configured, ")")
      .comment("'RefTemp,CardCount,StartCard,Integrate");
  emitBlocks(out, plan, 'T');
}

void emitFamily(ProgramText& out, const ProgramPlan& plan, char letter, std::string_view banner) {
  if (plan.of(letter).empty()) return;
  out.bodyBanner(banner);
  emitBlocks(out, plan, letter);
}

void emitPulses(ProgramText& out, const ProgramPlan& plan) {
  int slot = 0;
  for (const SourceBlock& block : plan.of('P')) {
    if (block.place.first.slot != slot)
      out.bodyBanner(concat(" Pulse/Freq Blocks Slot ", block.place.first.slot));
    slot = block.place.first.slot;
    if (block.burst)
      emitBurst(out, plan, block);
    else
      emitMeasurement(out, plan, block);
  }
}

void emitMultiplexerReference(ProgramText& out, const model::MultiplexerPlace& multiplexer) {
  const std::string reference = concat("TCMUXGRef(", multiplexer.number, ")");
  out.code("      BrHalf(", reference, ",1,mV5000,", multiplexer.reference.slot, ",",
           multiplexer.reference.channel, ",", multiplexer.excitation.slot, ",",
           multiplexer.excitation.channel, ",1,5000,False,False,30,40,1,0)")
      .comment("'TCMUX reference ratio");
  out.code("      PRT(", reference, ",1,", reference, ",1,0)")
      .comment("'TCMUX reference temperature");
}

void emitMultiplexers(ProgramText& out, const ProgramPlan& plan) {
  if (plan.of('A').empty()) return;
  out.bodyBanner(" TCMUX Blocks ");
  for (const SourceBlock& block : plan.of('A')) {
    for (const model::MultiplexerPlace& multiplexer : block.place.multiplexers) {
      if (!block.block->TCMUXVolts) emitMultiplexerReference(out, multiplexer);
      out.line("      ", multiplexerInstruction(block, multiplexer));
    }
    emitZeroTest(out, block);
  }
}

/// One instruction when the modules stand side by side, else one a module.
void emitIsolatedReferences(ProgramText& out, const ProgramPlan& plan) {
  const auto& slots = plan.channels.isoTcSlots;
  if (slots.empty()) return;
  constexpr std::string_view comment = "'RefTempVar,ModuleCount,StartModule,IntegrationTime";
  out.bodyBanner(" Reference Temperature Measurement for 7128/Isolated Modules ");
  if (slots.back() - slots.front() + 1 == static_cast<int>(slots.size())) {
    out.code("      ModuleTemp(IsoTRef(),", slots.size(), ",", slots.front(), ",50)")
        .comment(comment);
    return;
  }
  for (std::size_t k = 1; k <= slots.size(); ++k)
    out.code("      ModuleTemp(IsoTRef(", k, "),1,", slots[k - 1], ",50)").comment(comment);
}

void emitIsolated(ProgramText& out, const ProgramPlan& plan) {
  if (plan.of('I').empty()) return;
  out.bodyBanner(" Single/Shared 'slow' Subscan for 7128/Isolated Modules ");
  out.append("      SubScan(0,0,-ISCNPSUB)");
  emitIsolatedReferences(out, plan);
  for (const SourceBlock& block : plan.of('I')) emitMeasurement(out, plan, block);
  out.append("      NextSubScan");
}

void emitFilterSlot(ProgramText& out, const ProgramPlan& plan, std::size_t slot) {
  bool first = true;
  for (const SourceBlock& block : plan.of('F')) {
    if (block.filterSlot != slot) continue;
    if (first)
      out.bodyBanner(
          concat(block.fft ? " FFT " : " Filter ", "Blocks Slot ", block.place.first.slot));
    first = false;
    emitMeasurement(out, plan, block);
  }
}

/// A triggered table at the rate of the filter disables what is measured after its record; that
/// must not last into the tables of the scan.
bool disablesMeasurements(const ProgramPlan& plan) {
  return std::any_of(plan.tables.begin(), plan.tables.end(), [](const PlannedTable& table) {
    return table.inSubscan && table.hasTriggerSub;
  });
}

void emitSubscan(ProgramText& out, const ProgramPlan& plan, const PlannedSubscan& subscan) {
  const bool carriesTables = &subscan == &plan.subscans.front();
  out.code("      SubScan (", subscan.timing.intervalMicros, ",uSec,", subscan.timing.count, ")")
      .comment("      'VoltFilt SubScan");
  out.append("      MeasDisable = 0");
  for (const std::size_t slot : subscan.slots) emitFilterSlot(out, plan, slot);
  if (carriesTables) {
    emitCrossingSources(out, plan, true);
    for (const PlannedTable& table : plan.tables)
      if (table.inSubscan) emitTableCall(out, table);
  }
  out.append("      NextSubScan");
  if (carriesTables && disablesMeasurements(plan)) out.append("      MeasDisable = 0");
}

}  // namespace

std::string instruction(const ProgramPlan& plan, const SourceBlock& block) {
  if (block.letter == 'F') return filter(block);
  if (block.letter == 'I') return isolated(block);
  return measured(plan, block, wholeBlock(block, block.strain() ? "mV_V" : ""));
}

std::string multiplexerInstruction(const SourceBlock& block,
                                   const model::MultiplexerPlace& multiplexer) {
  const std::string index = concat("(", multiplexer.firstElement, ")");
  std::string scale = concat(block.constant("MULT"), ",", block.constant("OSET"), ")");
  if (block.multiplierArray)
    scale = concat(block.multipliers(), index, "(),", block.offsets(), index, "())");
  else if (block.offsetArray)
    scale = concat(block.constant("MULT"), ",", block.offsets(), index, "())");
  const std::string reference =
      block.block->TCMUXVolts ? "0" : concat("TCMUXGRef(", multiplexer.number, ")");
  const int channelsLeft =
      static_cast<int>(block.reps) - static_cast<int>(multiplexer.firstElement) + 1;
  return concat("TCMUX(", block.values(), index, ",", std::min(channelsLeft, multiplexer.channels),
                ",", block.constant("RNG"), ",", multiplexer.common.slot, ",",
                multiplexer.common.channel, ",", multiplexer.controlSlot, ",",
                multiplexer.clockLine, ",", multiplexer.resetLine, ",", block.constant("TYPE"), ",",
                reference, ",", word(block.block->ReverseMes), ",", multiplexer.channels, ",",
                block.constant("SETL"), ",", block.constant("INT"), ",", scale);
}

void emitMeasurements(ProgramText& out, const ProgramPlan& plan) {
  if (plan.burstsWholeScan()) emitBurstBegin(out, plan, "");
  emitThermocouples(out, plan);
  emitFamily(out, plan, 'V', " Volt Blocks ");
  emitFamily(out, plan, 'B', " Bridge Blocks ");
  emitFamily(out, plan, 'H', " High Volt Blocks ");
  emitPulses(out, plan);
  emitMultiplexers(out, plan);
  if (plan.burstsWholeScan()) emitBurstEnd(out, plan, "");
  emitIsolated(out, plan);
}

void emitFilterMeasurements(ProgramText& out, const ProgramPlan& plan) {
  std::size_t slot = 0;
  for (const SourceBlock& block : plan.of('F')) {
    if (block.filterSlot != slot && plan.subscanOf(block.filterSlot) == nullptr)
      emitFilterSlot(out, plan, block.filterSlot);
    slot = block.filterSlot;
  }
  for (const PlannedSubscan& subscan : plan.subscans) emitSubscan(out, plan, subscan);
}

}  // namespace generator
