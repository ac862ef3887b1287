#include <algorithm>

#include "generator/emitters.h"
#include "model/conditions.h"
#include "model/parameter_text.h"

namespace generator {
namespace {

using model::StoredSource;
using text::concat;

constexpr std::array<std::string_view, 8> processingNames = {
    "Sample ", "Maximum",   "Minimum",  "Average",
    "StdDev ", "Histogram", "RainFlow", "LevelCrossing"};
constexpr std::array<std::string_view, 8> commentTails = {
    ",Enabled", ",Time of Max", ",Time of Min", "", "", "", "", ""};

enum Code { maximum = 1, minimum = 2, histogram = 5, rainFlow = 6 };

void emitCanCheckTable(ProgramText& out) {
  out.append("'-------------------------- CANChk Table ------------------------");
  out.append("DataTable(CANChk,True,5)");
  out.append("Sample(1,CanAddress,FP2) : FieldNames(\"Can_Address\")");
  out.append("Sample(1,CanQuanta,FP2) : FieldNames(\"Can_Quanta\")");
  out.append("Sample(1,CanSeg1,FP2) : FieldNames(\"Can_Seg1\")");
  out.append("Sample(1,CanSeg2,FP2) : FieldNames(\"Can_Seg2\")");
  out.append("Sample(1,CanSwitchTx,IEEE4)");
  out.append("Sample(1,CanSwitchRx,IEEE4)");
  out.append("Sample(1,CanIfSig,IEEE4)");
  out.append("Sample(1,CanIfVer,IEEE4)");
  out.append("EndTable");
}

std::string joined(std::initializer_list<double> numbers) {
  std::string out;
  for (const double number : numbers) out += concat(",", number);
  return out;
}

/// What the instructions of one group name: the arrays, the constant of their size, the texts.
struct GroupNames {
  const SourceBlock* block = nullptr;  // of measurement blocks and CAN items
  std::string array;                   // with "()" for the whole group, or a plain variable
  std::string count;
  bool indexed = true;  // elements are "name(i)"
  std::string_view comment = "' Reps,Source,Res";
  std::string_view disable = "MeasDisable";
  std::string_view bins, rainflow, level;  // parameter texts of the histograms
};

class TableEmitter {
 public:
  TableEmitter(ProgramText& out, const ProgramPlan& plan, const PlannedTable& table)
      : out_(out), plan_(plan), table_(table) {}

  void emit() {
    emitHead();
    emitInterval();
    emitDataEvent();
    emitStorage();
    for (const model::StoredGroup& group : table_.groups) emitGroup(group);
    out_.append("EndTable");
  }

 private:
  [[nodiscard]] const model::OutputTable& settings() const { return *table_.table; }
  [[nodiscard]] bool onCard() const { return settings().TableLocation == 3; }
  [[nodiscard]] bool inFlash() const { return settings().TableLocation == 2; }
  [[nodiscard]] std::string size() const { return text::formatted(settings().Buffer, "###0"); }

  void emitHead() {
    const bool automatic = isAutoSized(settings()) || onCard();
    out_.hyphenBanner(concat(" Table ", table_.number));
    out_.code("DataTable(", table_.name, ",True,", automatic ? "-1" : size(), ")")
        .comment("'Trigger, ", automatic ? "auto size" : concat(size(), " records"));
  }

  void emitInterval() {
    const model::ShownInterval& interval = table_.interval;
    const int lapses = settings().CalcTime ? 10 : 0;
    std::string arguments = concat("INTERVAL", table_.number, ",UNITS", table_.number, ",");
    if (interval.synchronous)
      arguments = "0,0,";
    else if (interval.micros == model::scanMicros(plan_.project))
      arguments = "PERIOD,P_UNITS,";
    const std::string shown =
        interval.synchronous
            ? "Synchronous"
            : concat(text::formatted(interval.number, "0.00"), commentUnits(interval.unitCode));
    out_.code("   DataInterval(0,", arguments, lapses, ")")
        .comment("'", shown, " interval, ", lapses, " lapses",
                 isAutoSized(settings()) ? ", autosize" : "");
  }

  void emitDataEvent() {
    if (!hasActiveTrigger(settings())) return;
    const bool starts = !triggerText(settings(), 0).empty();
    const bool stops = !triggerText(settings(), 1).empty();
    out_.code("   DataEvent(", settings().PreTriggerScans, ",", starts ? "bStartTrigger" : "True",
              ",", stops ? "bStopTrigger" : "False", ",", settings().AftTriggerScans, ")")
        .comment("'PreTrigger,Start,Stop,PostTrigger");
  }

  void emitStorage() {
    if (onCard()) return emitCard();
    const bool automatic = isAutoSized(settings());
    if (inFlash())
      out_.code("   FlashOut(", automatic ? "-1" : size(), ")")
          .comment("'Use Flash memory, ", automatic ? "auto size." : concat(size(), " records."));
    if (settings().FillStop) out_.code("   FillStop").comment("'Fill the buffer and stop");
  }

  void emitCard() {
    const bool automatic = isAutoSized(settings());
    const std::string sizeArgument = automatic ? "-1" : size();
    const std::string sizeText = automatic ? ", size Auto" : concat(", size ", size());
    const std::string_view stop = settings().FillStop ? "1," : "0,";
    if (plan_.project.configuration.quantity(model::ModuleKindIndex::adaptor7151) == 0) {
      out_.code("   CardOut(", stop, sizeArgument, ")").comment("'PC card ", sizeText);
      return;
    }
    static constexpr std::array<std::string_view, 3> cards = {"Auto", "A", "B"};
    const auto card = static_cast<std::size_t>(std::clamp<int>(settings().PamCard, 0, 2));
    out_.code("   PamOut(4,", card, ",", stop, sizeArgument, ")")
        .comment("'PAM card ", cards[card], sizeText);
  }

  void emitGroup(const model::StoredGroup& group) {
    const std::string banner = bannerOf(group);
    if (banner != banner_) out_.subBanner(banner);
    banner_ = banner;
    const GroupNames names = namesOf(group);
    for (const model::StoredOutput& output : group.outputs)
      group.fft ? emitSpectrum(group, names, output) : emitOutput(group, names, output);
  }

  static std::string bannerOf(const model::StoredGroup& group) {
    switch (group.source) {
      case StoredSource::batteryCurrent:
      case StoredSource::batteryVolts:
        return " Logger Power ";
      case StoredSource::tcmuxReference:
        return " TCMUX Ref Temp ";
      case StoredSource::isolatedReference:
        return " 7128 Ref Temp ";
      case StoredSource::tcReference:
        return " 7121 TC Ref Temp ";
      case StoredSource::canItem:
        return " Canbus items ";
      case StoredSource::port:
        return " Ports ";
      case StoredSource::calculatedField:
        return " Calculated Fields ";
      case StoredSource::block:
        break;
    }
    return blockBanner(group);
  }

  static std::string blockBanner(const model::StoredGroup& group) {
    switch (group.kind) {
      case model::BlockKind::thermocouple:
        return " Thermocouple Blocks ";
      case model::BlockKind::voltage:
        return " Voltage Blocks ";
      case model::BlockKind::filter:
        return concat(group.fft ? " FFT " : " Filter ", "Blocks Slot ", group.slot);
      case model::BlockKind::bridge:
        return " Bridge Blocks ";
      case model::BlockKind::pulse:
        return concat(" Pulse/Freq Blocks Slot ", group.slot);
      case model::BlockKind::highVoltage:
        return " High Voltage Blocks ";
      case model::BlockKind::isolated:
        return concat(" Isolated Blocks Slot ", group.slot);
      case model::BlockKind::tcmux:
        break;
    }
    return " TCMUX Blocks ";
  }

  [[nodiscard]] const SourceBlock& sourceOf(const model::StoredGroup& group) const {
    const bool can = group.source == StoredSource::canItem;
    const auto& blocks = plan_.of(can ? 'C' : model::infoOf(group.kind).letter);
    return *std::find_if(blocks.begin(), blocks.end(),
                         [&](const SourceBlock& block) { return block.number == group.number; });
  }

  [[nodiscard]] GroupNames namesOf(const model::StoredGroup& group) const {
    switch (group.source) {
      case StoredSource::block:
      case StoredSource::canItem:
        return blockNames(sourceOf(group));
      case StoredSource::tcmuxReference:
        return referenceNames("TCMUXGRef", plan_.project.tcmuxReference);
      case StoredSource::isolatedReference:
        return referenceNames("IsoTRef", plan_.project.isoReference);
      case StoredSource::tcReference: {
        GroupNames names = referenceNames("TRef", plan_.project.tcReference);
        names.comment = "'Reps,Source,Data Type";
        return names;
      }
      default:
        return variableNames(group);
    }
  }

  [[nodiscard]] GroupNames blockNames(const SourceBlock& block) const {
    const model::TableProcessing& texts = (*block.processing)[table_.number - 1];
    const bool always = block.letter == 'F' || block.letter == 'C';
    return {.block = &block,
            .array = block.declaredValues(),
            .count = block.constant("REP"),
            .disable = always ? "False" : "MeasDisable",
            .bins = texts.HistogramCode,
            .rainflow = texts.RainHistoCode,
            .level = texts.LevelCode};
  }

  [[nodiscard]] GroupNames referenceNames(std::string_view array,
                                          const model::ReferenceTemperature& reference) const {
    GroupNames names;
    names.array = array;
    names.bins = reference.HistogramCode[table_.number - 1];
    names.rainflow = reference.RainCode[table_.number - 1];
    return names;
  }

  /// Single variables: battery, ports, calculated fields.
  [[nodiscard]] GroupNames variableNames(const model::StoredGroup& group) const {
    GroupNames names;
    names.indexed = false;
    names.bins = plan_.project.powerOut.HistogramCode[table_.number - 1];
    names.rainflow = plan_.project.powerOut.RainHistoCode[table_.number - 1];
    switch (group.source) {
      case StoredSource::batteryCurrent:
        names.array = "BattCurr";
        break;
      case StoredSource::batteryVolts:
        names.array = "BattVolt";
        break;
      case StoredSource::port:
        names.array = portsOf(group.number).variable;
        names.bins = portsOf(group.number).group->HistogramCode;
        break;
      default:
        names.array = plan_.fields[group.number - 1].name;
    }
    return names;
  }

  [[nodiscard]] const PlannedPorts& portsOf(std::size_t number) const {
    return *std::find_if(plan_.ports.begin(), plan_.ports.end(),
                         [number](const PlannedPorts& ports) { return ports.number == number; });
  }

  void emitOutput(const model::StoredGroup& group, const GroupNames& names,
                  const model::StoredOutput& output) {
    const auto code = static_cast<std::size_t>(output.code);
    out_.code("   ", processingNames[code], "(",
              output.code < histogram ? simpleArguments(group, names, output)
                                      : histogramArguments(group, names, output),
              ")")
        .comment(names.comment, commentTails[code]);
  }

  static std::string elementName(const GroupNames& names, std::size_t element) {
    return names.indexed ? concat(names.array, "(", element, ")") : names.array;
  }

  static std::string simpleArguments(const model::StoredGroup& group, const GroupNames& names,
                                     const model::StoredOutput& output) {
    const bool extreme = output.code == maximum || output.code == minimum;
    const std::string tail =
        concat(",", group.dataType, ",", names.disable, extreme ? ",False" : "");
    if (output.element > 0) return concat("1,", elementName(names, output.element), tail);
    const std::string count = names.count.empty() ? concat(output.count) : names.count;
    return concat(count, ",", names.array, "()", tail);
  }

  static std::string histogramArguments(const model::StoredGroup& group, const GroupNames& names,
                                        const model::StoredOutput& output) {
    const model::TableProcessing defaults;
    const std::string tail = concat(",", group.dataType, ",", names.disable);
    const std::string source = elementName(names, output.element);
    if (output.code == histogram) {
      const auto p = model::parameters(names.bins, defaults.HistogramCode);
      return concat(source, tail, ",", output.valuesEach, joined({p[3], p[1], p[2]}));
    }
    if (output.code == rainFlow) {
      const auto sizes = KGEN_COMMON::dimensionsIn(names.rainflow);
      const auto p = model::sizedParameters(names.rainflow, defaults.RainHistoCode);
      return concat(source, tail, ",", sizes.first, ",", sizes.second,
                    joined({p[2], p[3], p[4], p[5]}));
    }
    const auto sizes = KGEN_COMMON::dimensionsIn(names.level);
    const auto p = model::sizedParameters(names.level, defaults.LevelCode);
    return concat(names.block->crossingSource(output.element), "()", tail, ",", sizes.first, ",",
                  sizes.second, ",", names.array, "LC1(),", names.array, "LC2()",
                  joined({p[2], p[3]}));
  }

  void emitSpectrum(const model::StoredGroup& group, const GroupNames& names,
                    const model::StoredOutput& output) {
    out_.code("   FFTSample(", names.array, "(", output.element, ",1,1),", output.valuesEach, ",",
              group.dataType, ",True)")
        .comment("'1 Rep,Source,Res,Enabled");
  }

  ProgramText& out_;
  const ProgramPlan& plan_;
  const PlannedTable& table_;
  std::string banner_;
};

void emitZeroAverage(ProgramText& out, const SourceBlock& block) {
  if (!block.zeroed()) return;
  const std::string name = block.declaredValues();
  std::string source = name + "Zero()";
  std::string fields;
  if (block.letter == 'B') source = name + "ZeroMv()";
  if (block.strain()) {
    source = name + "mV_V()";
    fields = concat(" : FieldNames(\"", name, "ZeroMv_Avg\")");
  }
  out.code("   Average(", block.constant("REP"), ",", source, ",IEEE4,False)", fields)
      .comment("' Reps,Source,Res");
}

/// A table of one record that averages what the zero subroutine measures.
void emitZeroTable(ProgramText& out, const ProgramPlan& plan, std::string_view name,
                   const std::string& trigger, std::string_view letters) {
  bool any = false;
  forBlocks(plan, letters, [&](const SourceBlock& block) { any |= block.zeroed(); });
  if (!any) return;
  out.code("DataTable(", name, ",", trigger, ",1)").comment("'Trigger, 1 records");
  forBlocks(plan, letters, [&](const SourceBlock& block) { emitZeroAverage(out, block); });
  out.append("EndTable");
}

void emitZeroTables(ProgramText& out, const ProgramPlan& plan) {
  if (!plan.anyZeroed()) return;
  const ZeroTiming timing = zeroTiming(plan);
  out.append("");
  out.hyphenBanner(" Zero Tables ");
  emitZeroTable(out, plan, "Zero_1", concat("Count = ", timing.scans), "VBAHI");
  emitZeroTable(out, plan, "Zero_1Ft", concat("Count2 = ", timing.filterCounts), "F");
}

}  // namespace

void emitOutputSection(ProgramText& out, const ProgramPlan& plan) {
  out.spacedSectionBanner(" OUTPUT SECTION ");
  bool first = true;
  const auto separate = [&] {
    if (!first) out.append("");
    first = false;
  };
  if (hasCanInterface(plan.project)) {
    separate();
    emitCanCheckTable(out);
  }
  for (const PlannedTable& table : plan.tables) {
    separate();
    TableEmitter(out, plan, table).emit();
  }
  emitZeroTables(out, plan);
}

}  // namespace generator
