#include <algorithm>

#include "model/conditions.h"
#include "projectfile/rows.h"
#include "readback/sections.h"

namespace readback {
namespace {

using model::PowerOption;
using text::concat;

void expectSlots(Expectation& out, const Outline& outline) {
  using model::ModuleKindIndex;
  static constexpr std::pair<ModuleKindIndex, int> modules[] = {
      {ModuleKindIndex::analog7121, 7121},  {ModuleKindIndex::excitation7131, 7131},
      {ModuleKindIndex::counter7141, 7141}, {ModuleKindIndex::highVoltage7127, 7127},
      {ModuleKindIndex::filter7125, 7125},  {ModuleKindIndex::isolation7128, 7128}};
  std::vector<Part> slots;
  for (const auto& [kind, name] : modules)
    for (int i = 0; i < outline.project.configuration.quantity(kind); ++i) slots.emplace_back(name);
  if (isK700X(outline.project.configuration) && !slots.empty())
    out.call(configurationSetting("ModuleQty"), "SlotConfigure", slots);
}

void expectTriggerSub(Expectation& out, const Table& table) {
  if (!table.hasSub) return;
  const auto expect = [&](std::string_view flag, const std::string& condition,
                          std::string_view otherwise, std::string_view key) {
    out.line(table.setting(key),
             concat(flag, " = (", condition.empty() ? std::string(otherwise) : condition, ")"));
  };
  out.line(table.setting("TableName"), concat("Sub TriggerCall", table.name));
  expect("bStartTrigger", triggerText(*table.settings, 0, table.name), "True", "TrigTable");
  expect("bStopTrigger", triggerText(*table.settings, 1, table.name), "False", "TrigTabStop");
  expect("bWriteIfCall", writeIfText(*table.settings), "True", "WriteIf");
  out.line(table.setting("TableName"), "End Sub");
}

// Before the scan.

void expectDefaults(Expectation& out, const Source& source) {
  if (source.reps == 0) return;
  const std::string reps = constantOf(source, "REP").key;
  out.line(source.setting(reps), concat("For I = 1 To ", source.constant("REP")), {{}, reps});
  const auto assign = [&](const std::string& array, const Part& value) {
    out.assign(source.setting(value.key), array + "(I)", value);
  };
  assign(source.multipliers(), constantOf(source, "MULT"));
  assign(source.offsets(), constantOf(source, "OSET"));
  if (source.strain()) assign(source.gauges(), constantOf(source, "GF"));
  out.line(source.setting(reps), "Next I");
}

/// Channels whose scaling is not that of their block.
void expectOwnScaling(Expectation& out, const Source& source, std::size_t e) {
  const model::Element* own = source.settingsOf(e);
  if (!own || !own->AliasExcept) return;
  const auto assign = [&](const std::string& array, double value, std::string_view key) {
    out.assign(source.setting(key, e), concat(array, "(", e, ")"), value);
  };
  if (own->AliasMult != source.multiplier)
    assign(source.multipliers(), own->AliasMult, "AliasMult");
  if (source.letter != 'B' && own->AliasOffset != source.offset)
    assign(source.offsets(), own->AliasOffset, "AliasOffset");
  if (source.strain() && own->AliasGFactor != source.block->GageFactor)
    assign(source.gauges(), own->AliasGFactor, "AliasGFactor");
}

void expectLevelReads(Expectation& out, const Source& source) {
  if (source.crossings.empty()) return;
  const auto read = [&](std::string_view suffix, std::size_t size) {
    const std::string array = concat(source.values, suffix);
    const Setting setting = source.setting(source.levelKey("LevelCode"));
    out.line(setting, concat("For I = 1 To ", size));
    out.line(setting, concat("Read ", array, "(I)"));
    out.line(setting, "Next I");
  };
  read("LC1", source.levels.size());
  read("LC2", source.tests.size());
}

void expectCalibrationSetup(Expectation& out, const Outline& outline) {
  constexpr double fastScan = 100'000;  // us
  if (!outline.dunmoreHost) return;
  each(outline, "VBHAIPF", [&](const Source& source) {
    if (!source.calibrated && source.letter != 'F') return;
    const Setting setting = source.setting("CalOnSite");
    out.assign(setting, source.constant("CalReps"), constantOf(source, "REP"));
    if (!source.strain()) return;
    out.line(setting, concat("For I = 1 To ", source.constant("REP")));
    out.assign(setting, source.gauges() + "Raw(I)", source.gauges() + "(I)");
    out.line(setting, "Next I");
  });
  out.assign(everyProgram, "CalFileLoaded", outline.anyCalibrated() ? "LoadFieldCal(1)" : "False");
  out.assign(scanSetting("ExecutionTime"), "FieldCalAvgs",
             model::scanMicros(outline.project) <= fastScan ? 20 : 1);
  out.assign(everyProgram, "CalStartIdx", 1);
}

// The scan.

void expectBattery(Expectation& out, const Outline& outline) {
  for (const bool current : {false, true}) {
    const std::string variable = current ? "BattCurr" : "BattVolt";
    const auto& masks = outline.project.powerOut.sets[current ? 1 : 0].Table;
    bool wanted = outline.project.configuration.monitors(current ? PowerOption::batteryCurrent
                                                                 : PowerOption::batteryVolts);
    for (const Table& table : outline.tables) wanted |= masks[table.number - 1] != 0;
    for (const std::string& expression : model::allExpressions(outline.project))
      wanted |= text::containsIgnoringCase(expression, variable);
    if (wanted)
      out.call(configurationSetting("MonitorPower"), "Battery", {{variable}, {current ? 1 : 0}});
  }
}

std::string_view shuntOf(const Source& source) {
  if (source.block->Style == 5) return "Strain1_4Shunt";
  return source.block->Style == 6 ? "Strain1_2Shunt" : "StrainFullShunt";
}

/// Calibration of one block: to known values, then to zero.
void expectCalibration(Expectation& out, const Source& source) {
  const Setting setting = source.setting("CalOnSite");
  const std::string mode = source.constant("CalMode"), reps = source.constant("CalReps"),
                    known = source.constant("KnownVar") + "()", values = source.values + "()",
                    zero = source.zeroFlag > 0 ? concat("FlagMode", source.zeroFlag)
                                               : source.constant("ZeroMode");
  if (source.strain()) {
    out.call(setting, "FieldCalStrain",
             {{shuntOf(source), "Style"},
              {values},
              {1},
              {source.gauges() + "()"},
              {0},
              {mode},
              {known},
              {"CalStartIdx"},
              {"FieldCalAvgs"},
              {source.gauges() + "Raw()"},
              {0}});
    out.call(setting, "FieldCalStrain",
             {{"CalStrainZero"},
              {source.values + "mV_V()"},
              {reps},
              {0},
              {source.values + "ZeroMv()"},
              {zero},
              {0},
              {"CalStartIdx"},
              {"FieldCalAvgs"},
              {0}});
    return;
  }
  out.call(setting, "FieldCal",
           {{"TwoPointMultOffs"},
            {values},
            {1},
            {source.multipliers() + "()"},
            {source.offsets() + "()"},
            {mode},
            {known},
            {"CalStartIdx"},
            {"FieldCalAvgs"}});
  out.call(setting, "FieldCal",
           {{"ZeroingCalib"},
            {values},
            {reps},
            {0},
            {source.offsets() + "()"},
            {zero},
            {0},
            {"CalStartIdx"},
            {"FieldCalAvgs"}});
}

void expectFields(Expectation& out, const Outline& outline) {
  for (const Field& field : outline.fields) {
    const std::string& expression = field.settings->CalcExpress;
    if (expression.empty()) continue;
    const Setting setting = field.setting("CalcExpress");
    if (field.average > 0)
      out.line(setting,
               concat("AvgRun(RunAvg(", field.average, "),1,", expression, ",",
                      field.settings->CalcAvg, ")"),
               {{}, {}, {}, "CalcAvg"});
    else
      out.assign(setting, field.name, expression);
  }
}

void expectScan(Expectation& out, const Outline& outline) {
  const model::ScanSetup& scan = outline.project.scan;
  const bool burst = scan.ScanMode == 1;
  out.call(scanSetting("ExecutionTime"), "Scan",
           {{"PERIOD"},
            {"P_UNITS", "ExecTimeUnits"},
            {bufferedScans(outline.project),
             isK700X(outline.project.configuration) ? "BufferScans" : "ScanBufferSize"},
            {burst ? scan.PostTriggerScans : 0, "PostTriggerScans"}});
  expectBattery(out, outline);
  expectControls(out, outline);
  expectMeasurements(out, outline);
  expectCanReception(out, outline);
  each(outline, "VHBAIP", [&](const Source& source) {
    if (source.calibrated) expectCalibration(out, source);
  });
  expectFields(out, outline);
  expectTableLogic(out, outline);
  out.line(everyProgram, "Next Scan");
}

// The program.

void expectStart(Expectation& out, const Outline& outline) {
  out.line(everyProgram, "QV40(Flag,200)");
  expectInitialisation(out, outline);
  out.line(everyProgram, "Do");
  if (const int flag = flagOf(outline.project.scan.FlagScan))
    out.line(scanSetting("FlagScan"), concat("Do Until Flag(", flag, "): Loop"));
  out.line(everyProgram, "PulseCountReset()");
  expectCanSetup(out, outline);
  out.line(everyProgram, "For I = 1 To 8");
  out.line(everyProgram, "ScanFlg1x(I) = True");
  out.line(everyProgram, "Next I");
  expectCalibrationSetup(out, outline);
}

void expectEnd(Expectation& out, const Outline& outline) {
  if (const int flag = flagOf(outline.project.scan.FlagScan))
    out.line(scanSetting("FlagScan"), concat("Flag(", flag, ") = False"));
  out.line(everyProgram, "Loop");
  expectLowPriority(out, outline);
  out.line(everyProgram, "EndProg");
}

}  // namespace

std::int64_t bufferedScans(const model::Project& project) {
  const model::ScanSetup& scan = project.scan;
  if (isK700X(project.configuration)) return scan.BufferScans;
  return scan.ScanBuffer || scan.ScanMode == 1 ? scan.ScanBufferSize : 0;
}

void expectInitialisation(Expectation& out, const Outline& outline) {
  each(outline, "TVFBPHIAC", [&](const Source& source) { expectDefaults(out, source); });
  each(outline, "TVFBPCHIA", [&](const Source& source) {
    for (std::size_t e = 1; e <= source.reps; ++e) expectOwnScaling(out, source, e);
  });
  each(outline, "TVBHIPAFC", [&](const Source& source) { expectLevelReads(out, source); });
}

Expectation expectedProgram(const Outline& outline) {
  Expectation out;
  expectSlots(out, outline);
  expectConstants(out, outline);
  expectVariables(out, outline);
  expectTables(out, outline);
  expectZeroSub(out, outline);
  for (const Table& table : outline.tables) expectTriggerSub(out, table);
  out.line(everyProgram, "BeginProg");
  expectStart(out, outline);
  expectScan(out, outline);
  expectEnd(out, outline);
  return out;
}

}  // namespace readback
