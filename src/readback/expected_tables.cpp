#include <algorithm>

#include "model/conditions.h"
#include "projectfile/rows.h"
#include "readback/sections.h"

namespace readback {
namespace {

using model::StoredSource;
using text::concat;

enum Code { sample, maximum, minimum, average, deviation, histogram, rainFlow, levelCrossing };
constexpr std::array<std::string_view, 8> instructions = {
    "Sample", "Maximum", "Minimum", "Average", "StdDev", "Histogram", "RainFlow", "LevelCrossing"};

/// Number `index` of a text such as "10,0,100,0"; where it has none, that of the default text.
double parameter(std::string_view given, std::string_view defaults, std::size_t index) {
  for (const std::string_view whole : {given, defaults}) {
    std::string_view rest = whole;
    for (std::size_t i = 0; i < index && !rest.empty(); ++i) {
      const std::size_t comma = rest.find(',');
      rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
    }
    if (!rest.empty() || (index == 0 && !whole.empty()))
      return text::readNumber(rest.substr(0, rest.find(',')));
  }
  return 0;
}

/// The part of a text behind its two sizes, "10,5,0" or "10 x 5,0", with two places for them.
std::string behindSizes(std::string_view text) {
  std::size_t at = 0;
  for (int size = 0; size < 2; ++size) {
    at = std::min(text.find_first_of("0123456789", at), text.size());
    at = std::min(text.find_first_not_of("0123456789.", at), text.size());
  }
  at = std::min(text.find(',', at), text.size());
  return concat("0,0", text.substr(at));
}

/// What the instructions of a stored group name.
struct Named {
  const Source* source = nullptr;  // of blocks and CAN items
  std::string array;
  bool indexed = true;
  std::string_view disable = "MeasDisable";
  std::string_view bins, rain, level;  // texts of the histograms
  Setting setting;
  std::string_view typeKey = "DataResolution", rainKey = "RainHistoCode";
};

class TableLines {
 public:
  TableLines(Expectation& out, const Outline& outline, const Table& table)
      : out_(out), outline_(outline), table_(table), settings_(*table.settings) {}

  void expect() {
    out_.line(table_.setting("TableName"),
              concat("DataTable(", table_.name, ",True,", onCard() ? "-1" : records(), ")"),
              {{}, "Buffer"});
    interval();
    event();
    storage();
    for (const model::StoredGroup& group : table_.groups) stored(group);
    out_.line(table_.setting("TableName"), "EndTable");
  }

 private:
  [[nodiscard]] bool onCard() const { return settings_.TableLocation == 3; }
  [[nodiscard]] std::string records() const {
    return isAutoSized(settings_) ? "-1" : concat(settings_.Buffer);
  }

  /// A table as fast as the scan names the interval of that.
  void interval() {
    const model::ShownInterval& shown = table_.interval;
    std::array<std::string, 2> every = {concat("INTERVAL", table_.number),
                                        concat("UNITS", table_.number)};
    if (shown.micros == model::scanMicros(outline_.project)) every = {"PERIOD", "P_UNITS"};
    if (shown.synchronous) every = {"0", "0"};
    out_.call(
        table_.setting("OutInt"), "DataInterval",
        {{0}, {every[0]}, {every[1], "OutIntUnits"}, {settings_.CalcTime ? 10 : 0, "CalcTime"}});
  }

  void event() {
    if (!hasActiveTrigger(settings_)) return;
    const bool starts = !triggerText(settings_, 0).empty();
    const bool stops = !triggerText(settings_, 1).empty();
    out_.call(table_.setting("TrigTable"), "DataEvent",
              {{settings_.PreTriggerScans, "PreTriggerScans"},
               {starts ? "bStartTrigger" : "True", "TrigTable"},
               {stops ? "bStopTrigger" : "False", "TrigTabStop"},
               {settings_.AftTriggerScans, "AftTriggerScans"}});
  }

  void storage() {
    if (onCard()) return card();
    if (settings_.TableLocation == 2)
      out_.call(table_.setting("TableLocation"), "FlashOut", {{records(), "Buffer"}});
    if (settings_.FillStop) out_.line(table_.setting("FillStop"), "FillStop");
  }

  void card() {
    const Setting setting = table_.setting("TableLocation");
    const Part stop(settings_.FillStop ? 1 : 0, "FillStop"), size(records(), "Buffer");
    if (outline_.project.configuration.quantity(model::ModuleKindIndex::adaptor7151) == 0)
      return out_.call(setting, "CardOut", {stop, size});
    constexpr std::array<std::string_view, 3> slots = {"0", "1", "2"};
    const auto slot = static_cast<std::size_t>(std::clamp<int>(settings_.PamCard, 0, 2));
    out_.call(setting, "PamOut", {{4}, {slots[slot], "PamCard"}, stop, size});
  }

  void stored(const model::StoredGroup& group) {
    const Named named = namesOf(group);
    for (const model::StoredOutput& output : group.outputs)
      if (group.fft)
        spectrum(group, named, output);
      else
        output.code < histogram ? simple(group, named, output) : binned(group, named, output);
  }

  [[nodiscard]] Named namesOf(const model::StoredGroup& group) const {
    const model::Project& project = outline_.project;
    switch (group.source) {
      case StoredSource::block:
      case StoredSource::canItem:
        return ofSource(group);
      case StoredSource::tcmuxReference:
        return reference("TCMUXGRef", projectfile::tcmuxReferenceHeader, project.tcmuxReference);
      case StoredSource::isolatedReference:
        return reference("IsoTRef", projectfile::isoReferenceHeader, project.isoReference);
      case StoredSource::tcReference:
        return reference("TRef", projectfile::tcReferenceHeader, project.tcReference);
      default:
        return ofVariable(group);
    }
  }

  [[nodiscard]] Named ofSource(const model::StoredGroup& group) const {
    const bool can = group.source == StoredSource::canItem;
    const char letter = can ? 'C' : model::infoOf(group.kind).letter;
    const auto source = std::find_if(
        outline_.sources.begin(), outline_.sources.end(),
        [&](const Source& each) { return each.letter == letter && each.number == group.number; });
    const model::TableProcessing& texts = (*source->processing)[table_.number - 1];
    Named named;
    named.source = &*source;
    named.array = source->values;
    if (can || letter == 'F') named.disable = "False";
    named.bins = texts.HistogramCode;
    named.rain = texts.RainHistoCode;
    named.level = texts.LevelCode;
    named.typeKey = can ? "DataType" : source->keyOf("DataResolution");
    return named;
  }

  [[nodiscard]] Named reference(std::string_view array, std::string_view section,
                                const model::ReferenceTemperature& settings) const {
    Named named;
    named.array = array;
    named.bins = settings.HistogramCode[table_.number - 1];
    named.rain = settings.RainCode[table_.number - 1];
    named.rainKey = "RainCode";
    named.setting = {section, "Table", concat("table ", table_.number)};
    return named;
  }

  [[nodiscard]] Named ofVariable(const model::StoredGroup& group) const {
    const model::PowerOutTables& power = outline_.project.powerOut;
    Named named;
    named.indexed = false;
    named.bins = power.HistogramCode[table_.number - 1];
    named.rain = power.RainHistoCode[table_.number - 1];
    if (group.source == StoredSource::port) {
      const auto ports =
          std::find_if(outline_.ports.begin(), outline_.ports.end(),
                       [&](const Ports& each) { return each.number == group.number; });
      named.array = ports->variable;
      named.bins = ports->settings->HistogramCode;
      named.setting = ports->setting("Table");
    } else if (group.source == StoredSource::calculatedField) {
      named.array = outline_.fields[group.number - 1].name;
      named.setting = outline_.fields[group.number - 1].setting("CalcField");
    } else {
      const bool volts = group.source == StoredSource::batteryVolts;
      named.array = volts ? "BattVolt" : "BattCurr";
      named.typeKey = volts ? "DataResolution1" : "DataResolution2";
      named.setting = {projectfile::powerOutHeader, "Table", volts ? "set 1" : "set 2"};
    }
    return named;
  }

  [[nodiscard]] Setting settingOf(const Named& named, const model::StoredOutput& output) const {
    if (!named.source) return named.setting;
    Setting setting = named.source->setting("Table", output.element);
    setting.owner += concat(", table ", table_.number);
    return setting;
  }

  static std::string elementOf(const Named& named, std::size_t element) {
    return named.indexed ? concat(named.array, "(", element, ")") : named.array;
  }

  void simple(const model::StoredGroup& group, const Named& named,
              const model::StoredOutput& output) {
    const bool whole = output.element == 0;
    std::vector<Part> parts = {
        {whole && named.source ? named.source->constant("REP")
                               : concat(whole ? output.count : std::size_t{1}),
         whole && named.source ? constantOf(*named.source, "REP").key : std::string()},
        {whole ? named.array + "()" : elementOf(named, output.element)},
        {group.dataType, named.typeKey},
        {named.disable}};
    if (output.code == maximum || output.code == minimum) parts.emplace_back(false);
    out_.call(settingOf(named, output), instructions[static_cast<std::size_t>(output.code)], parts);
  }

  void binned(const model::StoredGroup& group, const Named& named,
              const model::StoredOutput& output) {
    const model::TableProcessing usual;
    std::vector<Part> parts = {
        {elementOf(named, output.element)}, {group.dataType, named.typeKey}, {named.disable}};
    const auto numbers = [&](std::string_view text, std::string_view defaults,
                             std::initializer_list<std::size_t> indexes, std::string_view key) {
      for (const std::size_t index : indexes)
        parts.emplace_back(parameter(text, defaults, index), key);
    };
    const auto sizes = [&](std::string_view text, std::string_view key) {
      const auto dimensions = KGEN_COMMON::dimensionsIn(text);
      parts.emplace_back(dimensions.first, key);
      parts.emplace_back(dimensions.second, key);
    };
    if (output.code == histogram) {
      parts.emplace_back(output.valuesEach, "HistogramCode");
      numbers(named.bins, usual.HistogramCode, {3, 1, 2}, "HistogramCode");
    } else if (output.code == rainFlow) {
      sizes(named.rain, named.rainKey);
      numbers(behindSizes(named.rain), usual.RainHistoCode, {2, 3, 4, 5}, named.rainKey);
    } else {
      parts.front() = {named.source->crossing(output.element) + "()"};
      const std::string key = named.source->levelKey("LevelCode");
      sizes(named.level, key);
      parts.emplace_back(named.array + "LC1()");
      parts.emplace_back(named.array + "LC2()");
      numbers(behindSizes(named.level), usual.LevelCode, {2, 3}, key);
    }
    out_.call(settingOf(named, output), instructions[static_cast<std::size_t>(output.code)], parts);
  }

  void spectrum(const model::StoredGroup& group, const Named& named,
                const model::StoredOutput& output) {
    out_.call(settingOf(named, output), "FFTSample",
              {{concat(named.array, "(", output.element, ",1,1)")},
               {output.valuesEach, "IHigh"},
               {group.dataType, named.typeKey},
               {true}});
  }

  Expectation& out_;
  const Outline& outline_;
  const Table& table_;
  const model::OutputTable& settings_;
};

void expectCanCheck(Expectation& out, const Outline& outline) {
  if (!hasCanInterface(outline.project)) return;
  const Setting setting = canSetting("CanBusEnabled");
  for (const std::string_view line :
       {"DataTable(CANChk,True,5)", "Sample(1,CanAddress,FP2) : FieldNames(\"Can_Address\")",
        "Sample(1,CanQuanta,FP2) : FieldNames(\"Can_Quanta\")",
        "Sample(1,CanSeg1,FP2) : FieldNames(\"Can_Seg1\")",
        "Sample(1,CanSeg2,FP2) : FieldNames(\"Can_Seg2\")", "Sample(1,CanSwitchTx,IEEE4)",
        "Sample(1,CanSwitchRx,IEEE4)", "Sample(1,CanIfSig,IEEE4)", "Sample(1,CanIfVer,IEEE4)",
        "EndTable"})
    out.line(setting, line);
}

void expectZeroAverage(Expectation& out, const Source& source) {
  std::string array = source.values + (source.letter == 'B' ? "ZeroMv" : "Zero");
  std::string fields;
  if (source.strain()) {
    fields = concat(" : FieldNames(\"", array, "_Avg\")");
    array = source.values + "mV_V";
  }
  out.line(source.setting("ZeroFlag"),
           concat("Average(", source.constant("REP"), ",", array, "(),IEEE4,False)", fields));
}

void expectZeroTable(Expectation& out, const Outline& outline, std::string_view name,
                     const std::string& trigger, std::string_view letters) {
  if (!outline.anyZeroed(letters)) return;
  out.line(scanSetting("ExecutionTime"), concat("DataTable(", name, ",", trigger, ",1)"));
  each(outline, letters, [&](const Source& source) {
    if (source.zeroFlag > 0) expectZeroAverage(out, source);
  });
  out.line(everyProgram, "EndTable");
}

}  // namespace

void expectTables(Expectation& out, const Outline& outline) {
  expectCanCheck(out, outline);
  for (const Table& table : outline.tables) TableLines(out, outline, table).expect();
  const ZeroCounts counts = zeroCounts(outline);
  expectZeroTable(out, outline, "Zero_1", concat("Count = ", counts.scans), "VBAHI");
  expectZeroTable(out, outline, "Zero_1Ft", concat("Count2 = ", counts.filter), "F");
}

}  // namespace readback
