#include <algorithm>

#include "projectfile/rows.h"
#include "readback/sections.h"

namespace readback {
namespace {

using text::concat;

/// What an instruction measures: a whole block, or in a burst one channel of it (from 1); for
/// zeroing into another array and without offset.
struct Shot {
  std::size_t channel = 0;
  bool zeroing = false;

  [[nodiscard]] std::string index() const {
    return channel == 0 ? "()" : concat("(", channel, ")");
  }
};

class Measuring {
 public:
  Measuring(Expectation& out, const Outline& outline) : out_(out), outline_(outline) {}

  void expect() {
    const bool whole = burstsWhole();
    if (whole) burstBegins();
    thermocouples();
    for (const char letter : std::string_view("VBH")) blocks(letter);
    each(outline_, "P",
         [&](const Source& source) { source.burst ? burst(source) : plain(source); });
    multiplexers();
    if (whole) burstEnds();
    isolated();
    filters();
  }

  void zero(const Source& source) {
    const Shot shot{0, true};
    if (source.letter == 'A') return multiplexed(source, shot);
    measure(source, shot);
    if (source.strain())
      out_.call(source.setting("ZeroFlag"), "StrainCalc",
                {{source.values + "ZeroUs()"},
                 constantOf(source, "REP"),
                 {source.values + "ZeroMv()"},
                 {0},
                 constantOf(source, "CODE"),
                 {source.gauges() + "()", "GageFactor"},
                 {0}});
  }

 private:
  using Parts = std::vector<Part>;

  static void add(Parts& parts, std::initializer_list<Part> more) {
    parts.insert(parts.end(), more);
  }

  // Bursts.

  [[nodiscard]] bool burstsWhole() const {
    return !outline_.burstTrigger.empty() &&
           std::none_of(outline_.sources.begin(), outline_.sources.end(),
                        [](const Source& source) { return source.burst; });
  }
  void burstBegins() {
    out_.line(scanSetting("TriggerMeasVar"),
              concat("BeginBurstTrigger(", outline_.burstTrigger, ")"));
  }
  void burstEnds() {
    const model::ScanSetup& scan = outline_.project.scan;
    out_.call(
        scanSetting("ScanMode"), "EndBurstTrigger",
        {{scan.ScanBufferSize, "ScanBufferSize"}, {scan.PostTriggerScans, "PostTriggerScans"}});
  }

  void burst(const Source& source) {
    burstBegins();
    for (std::size_t e = 1; e <= source.reps; ++e) {
      measure(source, {e});
      if (source.strain()) strainCalc(source, {e});
    }
    burstEnds();
    zeroTest(source);
  }

  void plain(const Source& source) {
    measure(source, {});
    if (source.strain()) strainCalc(source, {});
    zeroTest(source);
  }

  void blocks(char letter) {
    each(outline_, std::string_view(&letter, 1), [&](const Source& source) {
      if (!source.burst) plain(source);
    });
    each(outline_, std::string_view(&letter, 1), [&](const Source& source) {
      if (source.burst) burst(source);
    });
  }

  void zeroTest(const Source& source) {
    if (source.zeroFlag > 0)
      out_.line(source.setting("ZeroFlag"), concat("If Flag(", source.zeroFlag, ") Then Zero"));
  }

  void strainCalc(const Source& source, const Shot& shot) {
    out_.call(source.setting("Style"), "StrainCalc",
              {{source.values + shot.index()},
               repetitions(source, shot),
               {source.values + "mV_V" + shot.index()},
               {source.values + "ZeroMv" + shot.index()},
               {0},
               constantOf(source, "CODE"),
               source.ownGauges ? Part(source.gauges() + shot.index(), "GageFactor")
                                : constantOf(source, "GF"),
               {0}});
  }

  // One instruction.

  void measure(const Source& source, const Shot& shot) {
    Parts parts = {{destination(source, shot)}, repetitions(source, shot)};
    ranges(source, parts);
    const model::Place place = shot.channel == 0
                                   ? source.place.first
                                   : placeOfElement(outline_.project, outline_.channels,
                                                    source.kind, source.number, shot.channel);
    add(parts, {{place.slot}, {place.channel}});
    details(source, shot, place, parts);
    scaling(source, shot, parts);
    out_.call(source.setting(""), nameOf(source), parts);
  }

  static std::string nameOf(const Source& source) {
    switch (source.letter) {
      case 'T':
        return concat("TC", source.block->MeasType);
      case 'B':
        return std::string(model::bridgeInstruction(source.block->Style));
      case 'P':
        return "PulseCount";
      case 'F':
        return source.fft ? "FFTFilt" : "VoltFilt";
      case 'I':
        return concat(source.block->InputType == 1 ? "TC" : "Volt", source.block->MeasType);
      default:
        return concat("Volt", source.block->MeasType);
    }
  }

  static std::string destination(const Source& source, const Shot& shot) {
    std::string array = source.values;
    if (source.strain())
      array += "mV_V";
    else if (shot.zeroing)
      array += source.letter == 'B' ? "ZeroMv" : "Zero";
    return array + shot.index();
  }

  static Part repetitions(const Source& source, const Shot& shot) {
    return shot.channel == 0 ? constantOf(source, "REP") : Part(1);
  }

  static void ranges(const Source& source, Parts& parts) {
    if (source.letter == 'P') return;
    if (source.letter != 'B' || !hasTwoRanges(*source.block))
      return parts.push_back(constantOf(source, "RNG"));
    const std::string range = source.constant("RNG");
    add(parts, {{range + "_1", "Range"}, {range + "_2", "Range"}});
  }

  void details(const Source& source, const Shot& shot, const model::Place& place, Parts& parts) {
    switch (source.letter) {
      case 'P':
        return add(parts, {constantOf(source, "CONF"), constantOf(source, "OPT")});
      case 'F':
        return filterDetails(source, parts);
      case 'I':
        return isolatedDetails(source, parts);
      case 'B':
        bridgeDetails(source, shot, parts);
        break;
      case 'T':
        add(parts, {constantOf(source, "TYPE"), {reference(place.slot)}});
        [[fallthrough]];
      default:
        if (isDifferential(*source.block))
          parts.emplace_back(source.block->ReverseMes, source.keyOf("ReverseMes"));
    }
    add(parts, {constantOf(source, "SETL"), constantOf(source, "INT")});
  }

  [[nodiscard]] std::string reference(int slot) const {
    const auto& slots = outline_.channels.tcSlots;
    return concat("TRef(", std::find(slots.begin(), slots.end(), slot) - slots.begin() + 1, ")");
  }

  void bridgeDetails(const Source& source, const Shot& shot, Parts& parts) const {
    const model::MeasurementBlock& block = *source.block;
    const model::Place excitation = placeOfBridgeExcitation(
        outline_.project, outline_.channels, source.number, std::max<std::size_t>(shot.channel, 1));
    add(parts, {{excitation.slot},
                {excitation.channel},
                {shot.channel == 0 ? block.ExciteReps : std::int16_t{1}, "ExciteReps"},
                constantOf(source, "EXCIT"),
                {block.RevExcite, "RevExcite"},
                {block.ReverseMes || block.RevOutput, "ReverseMes"}});
  }

  static void isolatedDetails(const Source& source, Parts& parts) {
    if (source.block->InputType == 1)
      add(parts, {constantOf(source, "TYPE"), {concat("IsoTRef(", source.place.reference, ")")}});
    add(parts, {constantOf(source, "REV"), {0}, constantOf(source, "INT")});
  }

  static void filterDetails(const Source& source, Parts& parts) {
    add(parts, {constantOf(source, "OPT"), constantOf(source, "EXCIT")});
    if (!source.fft) return;
    for (const std::string_view suffix :
         {"FSR", "FLEN", "TSWIN", "SPECT", "FREF", "SBIN", "ILO", "IHI"})
      parts.push_back(constantOf(source, suffix));
  }

  /// Multiplier and offset: arrays where channels differ. What is zeroed has no offset yet.
  static void scaling(const Source& source, const Shot& shot, Parts& parts) {
    if (source.strain()) return add(parts, {{1}, {0}});
    scale(source, shot.index(), shot.zeroing, parts);
  }

  static void scale(const Source& source, const std::string& index, bool zeroing, Parts& parts) {
    const Part multiplier = constantOf(source, "MULT"), offset = constantOf(source, "OSET");
    parts.push_back(source.ownMultipliers ? Part(source.multipliers() + index, multiplier.key)
                                          : multiplier);
    if (zeroing) return parts.push_back(0);
    parts.push_back(source.ownMultipliers || source.ownOffsets
                        ? Part(source.offsets() + index, offset.key)
                        : offset);
  }

  // Kinds with something of their own.

  void thermocouples() {
    const auto& slots = outline_.channels.tcSlots;
    const bool any = std::any_of(outline_.sources.begin(), outline_.sources.end(),
                                 [](const Source& source) { return source.letter == 'T'; });
    if (!any) return;
    const int configured = outline_.project.configuration.TcConfigOpts[2];
    out_.call(configurationSetting(""), "ModuleTemp",
              {{"TRef()"},
               {slots.size()},
               {slots.front()},
               {configured == 0 ? 40 : configured, "TcConfigOpts"}});
    blocks('T');
  }

  void multiplexers() {
    each(outline_, "A", [&](const Source& source) {
      multiplexed(source, {});
      zeroTest(source);
    });
  }

  /// The reference is measured once; zeroing uses what the scan measured.
  void multiplexed(const Source& source, const Shot& shot) {
    for (const model::MultiplexerPlace& place : source.place.multiplexers) {
      if (!source.block->TCMUXVolts && !shot.zeroing) multiplexerReference(place);
      const std::string first = concat("(", place.firstElement, ")");
      const int left = static_cast<int>(source.reps) - static_cast<int>(place.firstElement) + 1;
      Parts parts = {
          {concat(source.values, shot.zeroing ? "Zero" : "", first)},
          {std::min(left, place.channels), "Reps"},
          constantOf(source, "RNG"),
          {place.common.slot},
          {place.common.channel},
          {place.controlSlot},
          {place.clockLine},
          {place.resetLine},
          constantOf(source, "TYPE"),
          {source.block->TCMUXVolts ? "0" : concat("TCMUXGRef(", place.number, ")"), "TCMUXVolts"},
          {source.block->ReverseMes, "ReverseMes"},
          {place.channels},
          constantOf(source, "SETL"),
          constantOf(source, "INT")};
      scale(source, first + "()", shot.zeroing, parts);
      out_.call(source.setting(""), "TCMUX", parts);
    }
  }

  void multiplexerReference(const model::MultiplexerPlace& place) {
    const std::string reference = concat("TCMUXGRef(", place.number, ")");
    const Setting setting{projectfile::tcmuxReferenceHeader, "", ""};
    out_.call(setting, "BrHalf",
              {{reference},
               {1},
               {"mV5000"},
               {place.reference.slot},
               {place.reference.channel},
               {place.excitation.slot},
               {place.excitation.channel},
               {1},
               {5000},
               {false},
               {false},
               {30},
               {40},
               {1},
               {0}});
    out_.call(setting, "PRT", {{reference}, {1}, {reference}, {1}, {0}});
  }

  void isolated() {
    bool any = false;
    each(outline_, "I", [&](const Source& source) {
      if (!any) {
        out_.line({model::infoOf(source.kind).section, "ScansPerSubScan", ""},
                  "SubScan(0,0,-ISCNPSUB)");
        isolatedReferences();
      }
      any = true;
      plain(source);
    });
    if (any) out_.line(everyProgram, "NextSubScan");
  }

  /// One instruction where the modules stand side by side.
  void isolatedReferences() {
    const auto& slots = outline_.channels.isoTcSlots;
    const Setting setting{projectfile::isoReferenceHeader, "", ""};
    if (slots.empty()) return;
    if (slots.back() - slots.front() + 1 == static_cast<int>(slots.size()))
      return out_.call(setting, "ModuleTemp",
                       {{"IsoTRef()"}, {slots.size()}, {slots.front()}, {50}});
    for (std::size_t k = 1; k <= slots.size(); ++k)
      out_.call(setting, "ModuleTemp", {{concat("IsoTRef(", k, ")")}, {1}, {slots[k - 1]}, {50}});
  }

  void filterSlot(std::size_t slot) {
    each(outline_, "F", [&](const Source& source) {
      if (source.filterSlot == slot) plain(source);
    });
  }

  void filters() {
    std::size_t slot = 0;
    each(outline_, "F", [&](const Source& source) {
      if (source.filterSlot != slot && !outline_.subscanOf(source.filterSlot))
        filterSlot(source.filterSlot);
      slot = source.filterSlot;
    });
    for (const Subscan& subscan : outline_.subscans) filterSubscan(subscan);
  }

  /// Tables at the rate of the filter are called in the first subscan. What a triggered one
  /// disables there is enabled again for the tables of the scan.
  void filterSubscan(const Subscan& subscan) {
    const bool first = &subscan == &outline_.subscans.front();
    const std::string_view section = model::infoOf(model::BlockKind::filter).section;
    bool disables = false;
    out_.line({section, "FiltFreqNum", ""}, concat("SubScan(", subscan.timing.intervalMicros,
                                                   ",uSec,", subscan.timing.count, ")"));
    out_.line(everyProgram, "MeasDisable = 0");
    for (const std::size_t slot : subscan.slots) filterSlot(slot);
    if (first) expectCrossingSources(out_, outline_, true);
    for (const Table& table : outline_.tables) {
      if (!first || !table.inSubscan) continue;
      expectTableCall(out_, table);
      disables |= table.hasSub;
    }
    out_.line(everyProgram, "NextSubScan");
    if (disables) out_.line(everyProgram, "MeasDisable = 0");
  }

  Expectation& out_;
  const Outline& outline_;
};

bool isZeroedIn(const Outline& outline, const Subscan* subscan) {
  return std::any_of(outline.sources.begin(), outline.sources.end(), [&](const Source& source) {
    return source.letter == 'F' && source.zeroFlag > 0 &&
           outline.subscanOf(source.filterSlot) == subscan;
  });
}

void expectFilterZero(Expectation& out, const Outline& outline, const Subscan* subscan) {
  if (!isZeroedIn(outline, subscan)) return;
  if (subscan)
    out.line(
        {model::infoOf(model::BlockKind::filter).section, "FiltFreqNum", ""},
        concat("SubScan(", subscan->timing.intervalMicros, ",uSec,", subscan->timing.count, ")"));
  each(outline, "F", [&](const Source& source) {
    if (source.zeroFlag > 0 && outline.subscanOf(source.filterSlot) == subscan)
      Measuring(out, outline).zero(source);
  });
  out.line(everyProgram, "Count2 = Count2 + 1");
  out.line(everyProgram, "CallTable Zero_1Ft");
  if (subscan) out.line(everyProgram, "NextSubScan");
}

void expectZeroScan(Expectation& out, const Outline& outline) {
  const auto zero = [&](std::string_view letters) {
    each(outline, letters, [&](const Source& source) {
      if (source.zeroFlag > 0) Measuring(out, outline).zero(source);
    });
  };
  out.call(scanSetting("ExecutionTime"), "Scan",
           {{"PERIOD"}, {"P_UNITS", "ExecTimeUnits"}, {0}, {zeroCounts(outline).scans}});
  zero("V");
  expectFilterZero(out, outline, nullptr);
  for (const Subscan& subscan : outline.subscans) expectFilterZero(out, outline, &subscan);
  zero("BAH");
  if (outline.anyZeroed("I")) {
    out.line({model::infoOf(model::BlockKind::isolated).section, "ScansPerSubScan", ""},
             "SubScan(0,0,-ISCNPSUB)");
    zero("I");
    out.line(everyProgram, "NextSubScan");
  }
  out.line(everyProgram, "Count = Count + 1");
  if (outline.anyZeroed("VBAHI")) out.line(everyProgram, "CallTable Zero_1");
  out.line(everyProgram, "Next Scan");
}

/// The average that the zero table keeps becomes the offset.
void expectOffsets(Expectation& out, const Source& source) {
  if (source.zeroFlag == 0) return;
  const Setting setting = source.setting("ZeroFlag");
  const std::string zero = source.values + (source.letter == 'B' ? "ZeroMv" : "Zero");
  const std::string average =
      concat(source.letter == 'F' ? "Zero_1Ft." : "Zero_1.", zero, "_Avg(I,1)");
  out.line(setting, concat("For I = 1 To ", source.constant("REP")),
           {{}, constantOf(source, "REP").key});
  if (source.letter == 'B') out.assign(setting, zero + "(I)", average);
  out.assign(setting, source.offsets() + "(I)", "-" + average);
  out.line(setting, "Next I");
}

}  // namespace

ZeroCounts zeroCounts(const Outline& outline) {
  constexpr double longest = 10;  // seconds
  const double seconds = model::scanMicros(outline.project) / 1e6;
  ZeroCounts counts{100, 0};
  if (seconds * 100 > longest)
    counts.scans = std::max<std::int64_t>(
        10, text::integerWithin(static_cast<double>(static_cast<std::int64_t>(longest / seconds)),
                                0, 100));
  std::int64_t perScan = isZeroedIn(outline, nullptr) ? 1 : 0;
  for (const Subscan& subscan : outline.subscans)
    if (isZeroedIn(outline, &subscan)) perScan += subscan.timing.count;
  counts.filter = counts.scans * perScan;
  return counts;
}

void expectMeasurements(Expectation& out, const Outline& outline) {
  Measuring(out, outline).expect();
}

void expectZeroSub(Expectation& out, const Outline& outline) {
  if (!outline.anyZeroed()) return;
  out.line(everyProgram, "Sub Zero");
  out.line(everyProgram, "Count = 0");
  out.line(everyProgram, "Count2 = 0");
  expectZeroScan(out, outline);
  each(outline, "VFBAHI", [&](const Source& source) { expectOffsets(out, source); });
  for (int flag = 1; flag <= 8; ++flag)
    for (const Source& source : outline.sources)
      if (source.zeroFlag == flag) {
        out.line(source.setting("ZeroFlag"), concat("Flag(", flag, ") = False"));
        break;
      }
  out.line(everyProgram, "End Sub");
}

}  // namespace readback
