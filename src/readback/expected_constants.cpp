#include <algorithm>

#include "projectfile/rows.h"
#include "readback/sections.h"

namespace readback {
namespace {

using text::concat;

std::string typeWord(int code) {
  return concat("Type",
                std::string_view("TEKJBRSN")[static_cast<std::size_t>(std::clamp(code, 0, 7))]);
}

const model::FilterSlot& slotOf(const Outline& outline, const Source& source) {
  return outline.project.filterSlots[source.filterSlot - 1];
}

std::string range(const Outline&, const Source& source) {
  const bool detects = std::string_view("TVBIA").find(source.letter) != std::string_view::npos;
  return model::rangeKeyword(source.block->Range, detects && source.block->OpenSensDetect);
}

std::string thermocouple(const Outline&, const Source& source) {
  if (source.letter == 'I') return typeWord(source.block->TCType);
  return source.block->TCMUXVolts ? "0" : typeWord(source.block->TypeNo);
}

std::string excitation(const Outline&, const Source& source) {
  return source.letter == 'B' ? concat(source.block->Excite)
                              : concat(text::integerWithin(source.block->Excite, 0, 6));
}

std::string integration(const Outline& outline, const Source& source) {
  return concat(source.letter == 'I' ? outline.isolated[source.number - 1].integrationMicros
                                     : source.block->Integration);
}

std::string pulseInput(const Outline&, const Source& source) {
  if (text::equalsIgnoringCase(source.block->Meas, "LoLev")) return "1";
  return text::equalsIgnoringCase(source.block->Meas, "Switch") ||
                 text::equalsIgnoringCase(source.block->Meas, "SWTCH")
             ? "2"
             : "0";
}

std::string option(const Outline& outline, const Source& source) {
  return concat(source.letter == 'P' ? source.block->Opt : slotOf(outline, source).OverSample);
}

bool measuresOnce(const Source& source) {  // in one range
  return source.letter != 'B' || !hasTwoRanges(*source.block);
}
bool hasType(const Source& source) { return source.letter != 'I' || source.block->InputType == 1; }
bool isSpectrum(const Source& source) { return source.fft; }
bool always(const Source&) { return true; }

struct Row {
  std::string_view suffix, letters, key;
  std::string (*value)(const Outline&, const Source&);
  bool (*there)(const Source&) = always;
};

template <auto Member>
std::string member(const Outline&, const Source& source) {
  return concat(source.block->*Member);
}

/// Constants of measurement blocks, by the letters of the kinds that have them.
constexpr Row rows[] = {
    {"RNG", "TVBHIAF", "Range", range, measuresOnce},
    {"TYPE", "TA", "TypeNo", thermocouple},
    {"TYPE", "I", "TCType", thermocouple, hasType},
    {"REP", "TVBHIPAFC", "Reps",
     [](const Outline&, const Source& source) { return concat(source.size); }},
    {"REV", "I", "ReverseMes",
     [](const Outline& outline, const Source&) {
       return Part(outline.project.isolated.ReverseMes).text;
     }},
    {"CONF", "P", "Meas", pulseInput},
    {"OPT", "P", "Opt", option},
    {"OPT", "F", "OverSample", option},
    {"EXCIT", "BF", "Excite", excitation},
    {"SETL", "TVBHA", "SettleTime", member<&model::MeasurementBlock::SettleTime>},
    {"INT", "TVBHIA", "Integration", integration},
    {"MULT", "TVBHIPAF", "DefaultMult",
     [](const Outline&, const Source& source) { return concat(source.multiplier); }},
    {"MULT", "C", "Mult",
     [](const Outline&, const Source& source) { return concat(source.multiplier); }},
    {"OSET", "TVBHIPAF", "DefaultOffset",
     [](const Outline&, const Source& source) { return concat(source.offset); }},
    {"OSET", "C", "Offset",
     [](const Outline&, const Source& source) { return concat(source.offset); }},
    {"CODE", "B", "Style", member<&model::MeasurementBlock::Style>},
    {"GF", "B", "GageFactor", member<&model::MeasurementBlock::GageFactor>},
    {"FSR", "F", "FiltFFTSampleRate",
     [](const Outline& outline, const Source& source) {
       return concat(slotOf(outline, source).FiltFFTSampleRate);
     },
     isSpectrum},
    {"FLEN", "F", "FFTLength",
     [](const Outline& outline, const Source& source) {
       return concat(std::max<int>(slotOf(outline, source).FFTLength, 1));
     },
     isSpectrum},
    {"TSWIN", "F", "TSWindow", member<&model::MeasurementBlock::TSWindow>, isSpectrum},
    {"SPECT", "F", "SpectOption", member<&model::MeasurementBlock::SpectOption>, isSpectrum},
    {"FREF", "F", "FRef", member<&model::MeasurementBlock::FRef>, isSpectrum},
    {"SBIN", "F", "SBin", member<&model::MeasurementBlock::SBin>, isSpectrum},
    {"ILO", "F", "ILow", member<&model::MeasurementBlock::ILow>, isSpectrum},
    {"IHI", "F", "IHigh",
     [](const Outline&, const Source& source) {
       return concat(std::max(source.block->ILow, source.block->IHigh));
     },
     isSpectrum},
};

bool isOf(const Row& row, const Source& source) {
  return row.letters.find(source.letter) != std::string_view::npos && row.there(source);
}

void expectConstant(Expectation& out, const Setting& setting, std::string_view name,
                    const Part& value) {
  out.line(setting, concat("Const ", name, " = ", value.text));
}

void expectSource(Expectation& out, const Outline& outline, const Source& source) {
  if (source.item && source.reps == 0) return;  // it only transmits
  for (const Row& row : rows)
    if (isOf(row, source))
      expectConstant(out, source.setting(constantOf(source, row.suffix).key),
                     source.constant(row.suffix), row.value(outline, source));
  if (measuresOnce(source)) return;
  const std::string own = range(outline, source);
  const Setting setting = source.setting("Range");
  expectConstant(out, setting, source.constant("RNG") + "_1",
                 source.block->Style == 1 ? "mV5000" : own);
  expectConstant(out, setting, source.constant("RNG") + "_2", own);
}

/// A code that is no unit is taken for seconds.
std::string_view unitWord(int code) {
  const std::string_view word = model::unitKeyword(code);
  return word.empty() ? "Sec" : word;
}

void expectTiming(Expectation& out, const Outline& outline) {
  const model::ScanSetup& scan = outline.project.scan;
  expectConstant(out, scanSetting("ExecutionTime"), "PERIOD",
                 model::trueNumber(scan.ExecutionTime, scan.ExecTimeUnits));
  expectConstant(out, scanSetting("ExecTimeUnits"), "P_UNITS", unitWord(scan.ExecTimeUnits));
  for (const Table& table : outline.tables) {
    const model::ShownInterval& interval = table.interval;
    expectConstant(out, table.setting("OutInt"), concat("INTERVAL", table.number),
                   interval.synchronous ? 0.0 : interval.number);
    expectConstant(out, table.setting("OutIntUnits"), concat("UNITS", table.number),
                   unitWord(interval.unitCode));
  }
}

/// Kinds of field calibration.
void expectCalibrationKinds(Expectation& out, const Outline& outline) {
  static constexpr std::pair<std::string_view, int> kinds[] = {
      {"TwoPointMultOffs", 2}, {"ZeroingCalib", 0},    {"CalStrainZero", 10},
      {"Strain1_4Shunt", 13},  {"Strain1_2Shunt", 23}, {"StrainFullShunt", 33}};
  if (!outline.dunmoreHost) return;
  for (const auto& [name, number] : kinds)
    if (outline.anyCalibrated() || number == 2) expectConstant(out, everyProgram, name, number);
}

}  // namespace

Part constantOf(const Source& source, std::string_view suffix) {
  const auto* row = std::find_if(std::begin(rows), std::end(rows), [&](const Row& candidate) {
    return candidate.suffix == suffix && isOf(candidate, source);
  });
  if (row == std::end(rows)) return {source.constant(suffix)};
  if (source.item && row->suffix == "REP") return {source.constant(suffix), "NumVals"};
  return {source.constant(suffix), source.keyOf(row->key)};
}

void expectConstants(Expectation& out, const Outline& outline) {
  expectTiming(out, outline);
  for (const Source& source : outline.sources) expectSource(out, outline, source);
  const bool anyIsolated = std::any_of(outline.sources.begin(), outline.sources.end(),
                                       [](const Source& source) { return source.letter == 'I'; });
  if (anyIsolated)
    expectConstant(out, {model::infoOf(model::BlockKind::isolated).section, "ScansPerSubScan", ""},
                   "ISCNPSUB", outline.project.isolated.ScansPerSubScan);
  expectCalibrationKinds(out, outline);
  if (!transmittingItems(outline).empty()) expectConstant(out, canSetting(""), "CANDelay", 10);
}

}  // namespace readback
