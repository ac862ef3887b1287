#include <algorithm>

#include "generator/emitters.h"

namespace generator {
namespace {

using text::concat;

constexpr std::string_view thermocoupleTypes = "TEKJBRSN";

std::string typeWord(int code) {
  const auto index = static_cast<std::size_t>(std::clamp(code, 0, 7));
  return concat("Type", thermocoupleTypes[index]);
}

/// Writes the constants of one block: name, value, and what the comment says.
class BlockConstants {
 public:
  BlockConstants(ProgramText& out, const SourceBlock& block)
      : out_(out), block_(block), comment_(concat("'Block", block.number)) {}

  template <class Value>
  void add(std::string_view suffix, const Value& value, std::string_view comment) {
    out_.code("Const ", block_.constant(suffix), " = ", value).comment(comment_, comment);
  }

  void range(bool openSensor) {
    add("RNG", model::rangeKeyword(block_.block->Range, openSensor), " measurement range ");
  }
  void repetitions() { add("REP", block_.arraySize, " repetitions"); }
  void settling() { add("SETL", block_.block->SettleTime, " settling time (usecs)"); }
  void integration(std::int32_t micros) { add("INT", micros, " integration time (usecs)"); }
  void scaling() {
    add("MULT", block_.multiplier, " default multiplier");
    add("OSET", block_.offset, " default offset");
  }

 private:
  ProgramText& out_;
  const SourceBlock& block_;
  std::string comment_;
};

void addThermocouple(BlockConstants& constants, const SourceBlock& block) {
  constants.range(block.block->OpenSensDetect);
  constants.add("TYPE", typeWord(block.block->TypeNo), "thermocouple type ");
  constants.repetitions();
  constants.settling();
  constants.integration(block.block->Integration);
  constants.scaling();
}

void addVoltage(BlockConstants& constants, const SourceBlock& block) {
  constants.range(block.letter == 'V' && block.block->OpenSensDetect);
  constants.repetitions();
  constants.settling();
  constants.integration(block.block->Integration);
  constants.scaling();
}

void addBridge(ProgramText& out, BlockConstants& constants, const SourceBlock& block) {
  const model::MeasurementBlock& bridge = *block.block;
  if (hasTwoRanges(bridge)) {  // six wires: what the sense wires see, then the output
    const std::string range = model::rangeKeyword(bridge.Range, bridge.OpenSensDetect);
    const std::string first = bridge.Style == 1 ? "mV5000" : range;
    const std::string name = block.constant("RNG");
    const std::string comment = concat("'Block", block.number, " measurement range ");
    out.code("Const ", name, "_1 = ", first).comment(comment);
    out.code("Const ", name, "_2 = ", range).comment(comment);
  } else {
    constants.range(bridge.OpenSensDetect);
  }
  constants.repetitions();
  constants.add("EXCIT", bridge.Excite, " excitation (mV)");
  constants.settling();
  constants.integration(bridge.Integration);
  constants.scaling();
  out.code("Const BCODE", block.number, " = ", bridge.Style)
      .comment("'Block", block.number, " bridge configuration code");
  out.code("Const BGF", block.number, " = ", bridge.GageFactor)
      .comment("'Block", block.number, " gauge factor");
}

void addPulse(BlockConstants& constants, const SourceBlock& block) {
  constants.repetitions();
  constants.add("CONF", pulseInputCode(*block.block), " input configuration");
  constants.add("OPT", block.block->Opt, " option");
  constants.scaling();
}

void addIsolated(BlockConstants& constants, const SourceBlock& block, const ProgramPlan& plan) {
  constants.range(block.block->OpenSensDetect);
  if (block.block->InputType == 1)
    constants.add("TYPE", typeWord(block.block->TCType), "thermocouple type ");
  constants.repetitions();
  constants.add("REV", word(plan.project.isolated.ReverseMes), " reverse input");
  constants.integration(plan.isolated[block.number - 1].integrationMicros);
  constants.scaling();
}

void addMultiplexer(BlockConstants& constants, const SourceBlock& block) {
  constants.range(block.block->OpenSensDetect);
  if (block.block->TCMUXVolts)
    constants.add("TYPE", 0, "thermocouple type (volts)");
  else
    constants.add("TYPE", typeWord(block.block->TypeNo), "thermocouple type ");
  constants.repetitions();
  constants.settling();
  constants.integration(block.block->Integration);
  constants.scaling();
}

struct FamilySection {
  char letter;
  std::string_view banner;
  std::string_view blockTitle;  // the block's number follows
};

constexpr FamilySection familySections[] = {
    {'T', " THERMOCOUPLE CONSTANTS ", " Temp Block "},
    {'V', " VOLTAGE CONSTANTS ", " Volt Block "},
    {'B', " BRIDGE CONSTANTS ", " Bridge Block "},
    {'H', " HIGH VOLTAGE CONSTANTS ", " High Volt Block "},
    {'I', " ISOLATED CONSTANTS ", " Isolated Block "},
    {'P', " PULSE CONSTANTS ", " Pulse/Freq Block "},
    {'A', " TCMUX CONSTANTS ", " TCMUX Block "},
};

void emitBlockConstants(ProgramText& out, const ProgramPlan& plan, const SourceBlock& block) {
  BlockConstants constants(out, block);
  switch (block.letter) {
    case 'T':
      return addThermocouple(constants, block);
    case 'B':
      return addBridge(out, constants, block);
    case 'P':
      return addPulse(constants, block);
    case 'I':
      return addIsolated(constants, block, plan);
    case 'A':
      return addMultiplexer(constants, block);
    default:
      return addVoltage(constants, block);
  }
}

void emitFamily(ProgramText& out, const ProgramPlan& plan, const FamilySection& section) {
  if (plan.of(section.letter).empty()) return;
  out.spacedSectionBanner(section.banner);
  if (section.letter == 'I')
    out.code("Const ISCNPSUB = ", plan.project.isolated.ScansPerSubScan)
        .comment("'Main scans per isolated subscan");
  for (const SourceBlock& block : plan.of(section.letter)) {
    out.subBanner(concat(section.blockTitle, block.number));
    emitBlockConstants(out, plan, block);
    emitBlockArrays(out, block);
  }
}

/// A unit code that stands for no unit still needs a word in the program.
std::string_view unitWord(int unitCode) {
  const std::string_view keyword = model::unitKeyword(unitCode);
  return keyword.empty() ? "Sec" : keyword;
}

void emitTiming(ProgramText& out, const ProgramPlan& plan) {
  const model::ScanSetup& scan = plan.project.scan;
  const std::string_view keyword = unitWord(scan.ExecTimeUnits);
  out.code("Const PERIOD = ", model::trueNumber(scan.ExecutionTime, scan.ExecTimeUnits))
      .comment("'Scan interval number");
  out.code("Const P_UNITS = ", keyword).comment("'Scan interval units (", keyword, ")");
  for (const PlannedTable& table : plan.tables) {
    const model::ShownInterval& interval = table.interval;
    out.code("Const INTERVAL", table.number, " = ", interval.synchronous ? 0.0 : interval.number)
        .comment("'Table ", table.number, " interval number");
    out.code("Const UNITS", table.number, " = ", unitWord(interval.unitCode))
        .comment("'Table ", table.number, " interval units ");
  }
  out.append("Dim bStartTrigger As Boolean");
  out.append("Dim bStopTrigger As Boolean");
  out.append("Dim bWriteIfCall As Boolean");
}

void emitCalculatedFields(ProgramText& out, const ProgramPlan& plan) {
  if (plan.fields.empty()) return;
  out.spacedSectionBanner(" CALC FIELD CONSTANTS ");
  if (plan.runningAverages > 0) {
    const bool anyPublic =
        std::any_of(plan.fields.begin(), plan.fields.end(),
                    [](const PlannedField& field) { return field.average > 0 && field.isPublic; });
    out.code(scope(anyPublic), "RunAvg(", plan.runningAverages, ")")
        .comment("'Dimension running averages");
  }
  for (const PlannedField& field : plan.fields)
    if (field.average == 0)
      out.code(scope(field.isPublic), field.name).comment("'Calculated field ", field.number);
}

}  // namespace

void emitConstants(ProgramText& out, const ProgramPlan& plan) {
  out.spacedSectionBanner(" TIMING CONSTANTS ");
  emitTiming(out, plan);
  for (const FamilySection& section : familySections) emitFamily(out, plan, section);
  emitCalculatedFields(out, plan);
  emitFilterConstants(out, plan);
  emitCanDeclarations(out, plan);
}

}  // namespace generator
