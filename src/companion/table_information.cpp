#include "companion/table_information.h"

#include <algorithm>
#include <array>
#include <vector>

#include "companion/document_lines.h"
#include "model/channel_plan.h"
#include "model/conditions.h"
#include "model/stored_outputs.h"
#include "model/time_units.h"
#include "text/strings.h"

namespace companion {
namespace {

using model::StoredSource;
using text::concat;

constexpr std::array<std::string_view, 8> processingNames = {
    "Sample ", "Maximum", "Minimum", "Average", "Std Dev", "Histgrm", "Rainflo", "LevelCr"};
constexpr std::array<std::string_view, 8> nameSuffixes = {"",     "_Max", "_Min", "_Avg",
                                                          "_Std", "_Hst", "_RFH", "_LCr"};

/// One element that a group can store: its name without suffix, alias and units.
struct FieldSource {
  std::string name, alias, units;
};

std::string blockTitle(const model::StoredGroup& group) {
  switch (group.kind) {
    case model::BlockKind::thermocouple:
      return concat(" Thermocouple Block ", group.number, " ");
    case model::BlockKind::voltage:
      return concat(" Voltage Block ", group.number, " ");
    case model::BlockKind::filter:
      return concat(" Filter Block ", group.number, " Slot ", group.slot, " ");
    case model::BlockKind::bridge:
      return concat(" Bridge Block ", group.number, " ");
    case model::BlockKind::pulse:
      return concat(" Pulse Block ", group.number, ", Slot ", group.slot, " ");
    case model::BlockKind::highVoltage:
      return concat(" High Voltage Block ", group.number, " ");
    case model::BlockKind::isolated:
      return concat(" Isolated Measurement Block ", group.number, ", Slot ", group.slot, " ");
    case model::BlockKind::tcmux:
      break;
  }
  return concat(" TCMUX Block ", group.number, " ");
}

class Writer {
 public:
  Writer(const model::Project& project, const model::DocumentStamp& stamp)
      : project_(project), stamp_(stamp), plan_(model::channelPlan(project)) {}

  std::string run() {
    out_ = documentHeader(project_.configuration, stamp_, ".TI7");
    for (std::size_t t = 1; t <= model::maxTables; ++t)
      if (project_.tables[t - 1].TableOn) emitTable(t);
    return std::move(out_);
  }

 private:
  template <class... Pieces>
  void line(const Pieces&... pieces) {
    (text::appendPiece(out_, pieces), ...);
    out_ += "\r\n";
  }

  void emitTable(std::size_t number) {
    const model::OutputTable& table = project_.tables[number - 1];
    line("");
    line(std::string(lineWidth, '='));
    line("TABLE #", number, "      = ", table.TableName);
    line("Location      = ", locationText(table));
    line("Interval      = ", intervalText(table));
    emitBuffer(table);
    const auto groups = storedGroups(project_, plan_, number);
    emitRecordSize(groups, table);
    line("Fill and Stop = ", table.FillStop ? "True" : "False");
    line("Sync Table    = ", table.SyncTable ? "True" : "False");
    line("Control Flag  = ", flagName(table.FlagTable));
    line("Mark Flag     = ", flagName(table.FlagMark));
    line("Full Flag     = ", flagName(table.FlagFull));
    line("");
    line("FIELD NO--------RES----MEAS------FIELD------------ALIAS---------------UNITS-------");
    fieldNumber_ = 0;
    for (const model::StoredGroup& group : groups) emitGroup(group);
    banner(concat("- End Table ", number, " "));
  }

  static std::string locationText(const model::OutputTable& table) {
    static constexpr std::array<std::string_view, 3> cards = {"either", "A", "B"};
    if (table.TableLocation == 2) return "Flash Memory in CPU";
    if (table.TableLocation != 3) return "SRAM in CPU";
    const auto card = static_cast<std::size_t>(std::clamp<int>(table.PamCard, 0, 2));
    return concat("PAM Card ", cards[card]);
  }

  [[nodiscard]] std::string intervalText(const model::OutputTable& table) const {
    const auto named = [](double number, int unitCode) {
      return concat(number, "(", KGEN_COMMON::TimeUnitName(unitCode, true), ")");
    };
    const model::ScanSetup& scan = project_.scan;
    if (table.SyncTable)
      return concat(
          named(model::trueNumber(scan.ExecutionTime, scan.ExecTimeUnits), scan.ExecTimeUnits),
          " Synchronous");
    const model::ShownInterval interval = shownInterval(project_, table);
    return named(interval.number, interval.unitCode);
  }

  void emitBuffer(const model::OutputTable& table) {
    if (isAutoSized(table)) return line("Buffer Size   = Auto Size");
    line("Buffer Size   = ", text::formatted(table.Buffer, "#,##0"), " Records");
    const model::Duration fill = model::durationFrom(secondsToFill(project_, table));
    line("Time to Fill  = ", fill.days, " Days, ", fill.hours, " Hours, ", fill.minutes, " Mins, ",
         text::formatted(fill.seconds, "#0.0###0"), " Secs");
  }

  void emitRecordSize(const std::vector<model::StoredGroup>& groups,
                      const model::OutputTable& table) {
    model::cOutputTable record;
    record.setRecord(bytesOf(groups), !table.CalcTime);
    line("Record Size   = ", text::formatted(record.RecordBytes(), "#,##0"), " Bytes");
  }

  static std::string flagName(int flag) {
    return flag >= 1 && flag <= 8 ? concat("Flag(", flag, ")") : "None";
  }

  void banner(const std::string& title) {
    std::string rule = text::ruled(title, lineWidth, '-', '-') + "--";
    rule.resize(lineWidth);
    line(rule);
  }

  void emitGroup(const model::StoredGroup& group) {
    banner(titleOf(group));
    const std::vector<FieldSource> sources = sourcesOf(group);
    for (const model::StoredOutput& output : group.outputs) {
      if (output.element > 0) {
        emitField(group, output, sources[output.element - 1]);
        continue;
      }
      for (std::size_t e = 0; e < output.count; ++e) emitField(group, output, sources[e]);
    }
  }

  [[nodiscard]] std::vector<FieldSource> sourcesOf(const model::StoredGroup& group) const {
    switch (group.source) {
      case StoredSource::block: {
        const model::MeasurementBlock& block = project_.block(group.kind, group.number);
        return elementSources(arrayName(project_, group.kind, group.number),
                              static_cast<std::size_t>(block.Reps), block.elements, block.Units);
      }
      case StoredSource::canItem: {
        const model::CanItem& item = project_.can.items[group.number - 1];
        return elementSources(concat("CBlk", group.number), static_cast<std::size_t>(item.NumVals),
                              item.values, item.Units);
      }
      case StoredSource::tcmuxReference:
        return references(" - TCMUXRef", static_cast<std::size_t>(plan_.multiplexers));
      case StoredSource::isolatedReference:
        return references(" - IsoTRef", plan_.isoTcSlots.size());
      case StoredSource::tcReference:
        return references(" - TRef", plan_.tcSlots.size());
      default:
        return {variableSource(group)};
    }
  }

  static std::vector<FieldSource> elementSources(const std::string& tag, std::size_t count,
                                                 const std::vector<model::Element>& elements,
                                                 const std::string& units) {
    static const model::Element unnamed;
    std::vector<FieldSource> sources;
    sources.reserve(count);
    for (std::size_t e = 0; e < count; ++e) {
      const model::Element& element = e < elements.size() ? elements[e] : unnamed;
      sources.push_back({concat(tag, "(", e + 1, ")"), element.AliasName,
                         element.AliasUnits.empty() ? units : element.AliasUnits});
    }
    return sources;
  }

  static std::vector<FieldSource> references(std::string_view name, std::size_t count) {
    std::vector<FieldSource> sources;
    for (std::size_t k = 1; k <= count; ++k)
      sources.push_back({concat(name, "(", k, ")"), "", "Deg_C"});
    return sources;
  }

  [[nodiscard]] FieldSource variableSource(const model::StoredGroup& group) const {
    switch (group.source) {
      case StoredSource::batteryCurrent:
        return {" - BattCurr", "", "mAmps"};
      case StoredSource::batteryVolts:
        return {" - BattVolt", "", "Volts"};
      case StoredSource::port:
        return {concat(" - ReadPort", plan_.portGroups[group.number - 1].upper ? "U" : "L"), "",
                ""};
      default: {
        const model::CalculatedField& field = project_.calculated.fields[group.number - 1];
        const std::string name =
            field.CalcName.empty() ? concat("CalcField", group.number) : field.CalcName;
        return {name, "", field.CalcUnits};
      }
    }
  }

  /// Outputs of several values are one row: numbers "12-21" and the count in the name.
  void emitField(const model::StoredGroup& group, const model::StoredOutput& output,
                 const FieldSource& source) {
    if (output.valuesEach == 0) return;
    const std::size_t first = fieldNumber_ + 1;
    fieldNumber_ += output.valuesEach;
    const bool many = output.valuesEach != 1;
    const auto code = static_cast<std::size_t>(output.code);
    std::string name = source.name + std::string(group.fft ? "_FTS" : nameSuffixes[code]);
    if (many || group.fft || output.code >= 5) name += concat("(", output.valuesEach, ")");
    const std::string number = many ? concat(first, "-", fieldNumber_) : concat(first);
    row({number, group.dataType, processingNames[code], name, source.alias, source.units});
  }

  void row(const std::array<std::string_view, 6>& cells) {
    static constexpr std::array<std::size_t, 6> columns = {0, 16, 23, 33, 50, 70};
    appendColumns(out_, cells, columns, lineWidth);
  }

  const model::Project& project_;
  const model::DocumentStamp& stamp_;
  model::ChannelPlan plan_;
  std::string out_;
  std::size_t fieldNumber_ = 0;
};

}  // namespace

std::string titleOf(const model::StoredGroup& group) {
  switch (group.source) {
    case StoredSource::batteryCurrent:
      return " Logger Current ";
    case StoredSource::batteryVolts:
      return " Logger Volts ";
    case StoredSource::tcmuxReference:
      return " TCMUX Reference ";
    case StoredSource::isolatedReference:
      return " Isolated Reference ";
    case StoredSource::tcReference:
      return " TC Reference ";
    case StoredSource::canItem:
      return concat(" CANBus Item ", group.number, " ");
    case StoredSource::port:
      return concat(" Port Slot ", group.slot, " ");
    case StoredSource::calculatedField:
      return concat(" Calculated Field ", group.number, " ");
    case StoredSource::block:
      break;
  }
  return blockTitle(group);
}

std::string tableInformation(const model::Project& project, const model::DocumentStamp& stamp) {
  return Writer(project, stamp).run();
}

}  // namespace companion
