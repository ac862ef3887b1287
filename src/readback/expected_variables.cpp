#include <algorithm>
#include <utility>

#include "projectfile/rows.h"
#include "readback/sections.h"

namespace readback {
namespace {

using text::concat;

std::string_view scope(bool isPublic) { return isPublic ? "Public " : "Dim "; }

/// Variables of one block or CAN item.
class SourceVariables {
 public:
  SourceVariables(Expectation& out, const Outline& outline, const Source& source)
      : out_(out), outline_(outline), source_(source) {}

  void expect() {
    source_.fft ? spectrum() : array(source_.isPublic, source_.values);
    const bool filter = source_.letter == 'F';
    array(filter, source_.multipliers());
    array(filter, source_.offsets());
    if (source_.letter == 'B') bridge();
    if (!source_.units.empty()) units(source_.values, source_.units, source_.setting("Units"));
    if (source_.zeroFlag > 0 && source_.letter != 'B') zero(source_.values + "Zero");
    if (source_.calibrated || (filter && outline_.dunmoreHost)) calibration();
    if (!source_.crossings.empty()) crossings();
  }

  void expectNames() {
    for (std::size_t e = 1; e <= source_.reps; ++e) {
      const std::string& name = source_.names[e - 1];
      const std::string& unit = source_.channelUnits[e - 1];
      if (!name.empty()) names(e, name);
      if (!unit.empty())
        units(name.empty() ? source_.element(e) : name, unit, source_.setting("AliasUnits", e));
    }
  }

 private:
  void array(bool isPublic, const std::string& name) {
    declare(isPublic, name, source_.setting("Public"));
  }
  void zero(const std::string& name) { declare(false, name, source_.setting("ZeroFlag")); }

  void declare(bool isPublic, const std::string& name, const Setting& setting) {
    out_.line(setting, concat(scope(isPublic), name, "(", source_.constant("REP"), ")"),
              {constantOf(source_, "REP").key});
  }

  void spectrum() {
    const bool series = outline_.project.filterSlots[source_.filterSlot - 1].FFTType != 1;
    const std::string values =
        series ? source_.constant("FLEN")
               : concat(source_.constant("IHI"), "-", source_.constant("ILO"), "+1");
    out_.line(source_.setting("Public"),
              concat(scope(source_.isPublic), source_.values, "(", source_.constant("REP"), ",",
                     values, ",2)"),
              {"Reps", series ? "FFTLength" : "IHigh"});
  }

  void bridge() {
    if (source_.strain()) {
      array(source_.isPublic, source_.values + "mV_V");
      array(false, source_.gauges());
    }
    if (source_.strain() || source_.zeroFlag > 0) zero(source_.values + "ZeroMv");
    if (source_.strain() && source_.zeroFlag > 0) zero(source_.values + "ZeroUs");
  }

  void units(const std::string& name, const std::string& unit, const Setting& setting) {
    out_.line(setting, concat("Units ", name, " = ", unit));
  }

  void calibration() {
    const Setting setting = source_.setting("CalOnSite");
    out_.line(setting, concat("Public ", source_.constant("CalMode")));
    declare(true, source_.constant("KnownVar"), setting);
    out_.line(setting, concat("Public ", source_.constant("CalReps")));
    if (source_.letter != 'F' && source_.zeroFlag == 0)
      out_.line(setting, concat("Public ", source_.constant("ZeroMode")));
    if (source_.strain()) declare(true, source_.gauges() + "Raw", setting);
  }

  void crossings() {
    levels(source_.levels, "LC1", "LevelVarOne");
    levels(source_.tests, "LC2", "LevelVarTwo");
    for (const std::size_t e : source_.crossings)
      out_.line(source_.setting("Table", e), concat("Dim ", source_.crossing(e), "(2)"));
  }

  void levels(const std::vector<double>& values, std::string_view array, std::string_view key) {
    Setting setting = source_.setting(source_.levelKey(key));
    setting.owner += concat(", table ", std::max<std::size_t>(source_.levelTable, 1));
    out_.line(setting, concat("Dim ", source_.values, array, "(", values.size(), ")"));
    std::string data;
    for (const double value : values) data += concat(data.empty() ? "Data " : ",", value);
    out_.line(setting, data);
  }

  void names(std::size_t e, const std::string& name) {
    const Setting setting = source_.setting("AliasName", e);
    out_.line(setting, concat("Alias ", source_.element(e), " = ", name));
    if (source_.letter == 'T') return;
    out_.line(setting, concat("Alias ", source_.multipliers(), "(", e, ") = M$", name));
    out_.line(setting, concat("Alias ", source_.offsets(), "(", e, ") = O$", name));
  }

  Expectation& out_;
  const Outline& outline_;
  const Source& source_;
};

void expectFields(Expectation& out, const Outline& outline) {
  std::size_t averages = 0;
  bool isPublic = false;
  for (const Field& field : outline.fields) {
    if (field.average == 0) {
      out.line(field.setting("Public"), concat(scope(field.isPublic), field.name));
      continue;
    }
    ++averages;
    isPublic |= field.isPublic;
  }
  if (averages > 0)
    out.line({projectfile::fieldHeader, "CalcType", ""},
             concat(scope(isPublic), "RunAvg(", averages, ")"));
  for (const Field& field : outline.fields) {
    if (field.average > 0)
      out.line(field.setting("CalcName"),
               concat("Alias RunAvg(", field.average, ") = ", field.name));
    if (!field.units.empty())
      out.line(field.setting("CalcUnits"), concat("Units ", field.name, " = ", field.units));
  }
}

void expectFixed(Expectation& out, const Outline& outline) {
  for (const std::string_view line :
       {"Dim bStartTrigger As Boolean", "Dim bStopTrigger As Boolean",
        "Dim bWriteIfCall As Boolean", "Dim MeasDisable", "Public Flag(8)",
        "Public ScanFlg1x(8) As Boolean", "Public FlagMode", "Units BattVolt = Volts",
        "Units BattCurr = mAmps", "Dim I", "Dim Count", "Dim Count2", "Dim CountSlow",
        "Dim TripVolt", "Dim CountAvg", "Dim StopTime(9)", "Dim StartTime(6)"})
    out.line(everyProgram, line);
  if (!hasCanInterface(outline.project)) return;
  for (const std::string_view name :
       {"CanAddress", "CanQuanta", "CanSeg1", "CanSeg2", "CanSwitchTx", "CanSwitchRx",
        "CanIfInfo(8)", "CanIfSig", "CanIfVer"})
    out.line(canSetting("CanBusEnabled"), concat("Dim ", name));
}

void expectBattery(Expectation& out, const Outline& outline) {
  for (const std::size_t set : {0U, 1U}) {
    const model::PowerOutSet& power = outline.project.powerOut.sets[set];
    const bool isPublic = power.Public || shownByDisplay(outline.project, power.Table);
    out.line({projectfile::powerOutHeader, set == 0 ? "Public1" : "Public2", ""},
             concat(scope(isPublic), set == 0 ? "BattVolt" : "BattCurr"));
  }
}

void expectReferences(Expectation& out, const Outline& outline) {
  const auto expect = [&](std::string_view section, std::string_view name, std::size_t count,
                          const model::ReferenceTemperature& reference) {
    const bool isPublic = reference.Public || shownByDisplay(outline.project, reference.Table);
    if (count > 0)
      out.line({section, "Public", ""}, concat(scope(isPublic), name, "(", count, ")"));
  };
  const model::Project& project = outline.project;
  expect(projectfile::tcReferenceHeader, "TRef", outline.channels.tcSlots.size(),
         project.tcReference);
  expect(projectfile::isoReferenceHeader, "IsoTRef", outline.channels.isoTcSlots.size(),
         project.isoReference);
  const bool any = std::any_of(outline.sources.begin(), outline.sources.end(), [](const Source& s) {
    return s.letter == 'A' && !s.block->TCMUXVolts;
  });
  if (!any) return;
  expect(projectfile::tcmuxReferenceHeader, "TCMUXGRef",
         static_cast<std::size_t>(outline.channels.multiplexers), project.tcmuxReference);
  out.line({projectfile::tcmuxReferenceHeader, "", ""}, "Units TCMUXGRef = Deg_C");
}

void expectPorts(Expectation& out, const Outline& outline) {
  const bool onePortEach = outline.project.ports.CodeType == 0;
  bool anyWritten = false;
  for (const Ports& ports : outline.ports) {
    const bool reads = ports.settings->ReadMode;
    anyWritten |= !reads;
    if (reads || !onePortEach)
      out.line(ports.setting("ReadMode"), concat("Public ", ports.variable));
  }
  if (onePortEach && anyWritten)
    out.line({projectfile::portHeader, "CodeType", ""}, "Public Port(8)");
  for (const Output& output : outline.outputs)
    if (!output.variable.empty())
      out.line({projectfile::excitationHeader, "ExcitePublic", ""},
               concat(scope(outline.project.excitation.ExcitePublic), output.variable));
}

/// Each flag once: the counters of table marks and the modes of calibrated zero flags.
void expectFlagVariables(Expectation& out, const Outline& outline) {
  std::array<bool, model::maxFlags + 1> marks = {}, modes = {};
  for (const Table& table : outline.tables) {
    const int flag = flagOf(table.settings->FlagMark);
    if (flag == 0 || std::exchange(marks[static_cast<std::size_t>(flag)], true)) continue;
    out.line(table.setting("FlagMark"), concat("Public Flag", flag, "Mark"));
  }
  for (const Source& source : outline.sources)
    if (source.calibrated && source.zeroFlag > 0 &&
        !std::exchange(modes[static_cast<std::size_t>(source.zeroFlag)], true))
      out.line(source.setting("ZeroFlag"), concat("Public FlagMode", source.zeroFlag));
}

}  // namespace

void expectVariables(Expectation& out, const Outline& outline) {
  expectFixed(out, outline);
  each(outline, "TVBHIPAFC", [&](const Source& source) {  // the order of the level data
    if (source.item && source.reps == 0) return;
    SourceVariables(out, outline, source).expect();
  });
  each(outline, "TVFHIBPAC",
       [&](const Source& source) { SourceVariables(out, outline, source).expectNames(); });
  expectFields(out, outline);
  expectBattery(out, outline);
  expectReferences(out, outline);
  expectPorts(out, outline);
  expectFlagVariables(out, outline);
  if (outline.dunmoreHost)
    for (const std::string_view line :
         {"Public CalFileLoaded As Boolean", "Public CalStartIdx", "Public FieldCalAvgs"})
      out.line(everyProgram, line);
  const std::size_t sent = transmittingItems(outline).size();
  if (sent == 0) return;
  for (const std::string& line : {std::string("Dim idx"), concat("Dim NumRxReads(", sent, ")"),
                                  std::string("Public ByteTx(8)"), std::string("Public ByteRx(8)")})
    out.line({projectfile::canHeader, "DataStyle", ""}, line);
}

}  // namespace readback
