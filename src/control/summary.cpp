#include "control/summary.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "model/stored_outputs.h"
#include "model/time_units.h"
#include "text/strings.h"

namespace control {
namespace {

using model::BlockKind;
using model::MeasurementBlock;
using text::concat;
using timing::TimeGroup;

constexpr std::size_t timeColumn = 60;   // times end here
constexpr std::size_t labelColumn = 11;  // of lines below a header, counted from 0

/// Pieces of one line at columns counted from 0. A piece whose place is taken follows after a
/// blank.
class Line {
 public:
  Line& at(std::size_t column, std::string_view piece) {
    if (!text_.empty()) column = std::max(column, text_.size() + 1);
    text_.resize(std::max(column, text_.size()), ' ');
    text_ += piece;
    return *this;
  }
  /// The piece ends just before the column.
  Line& before(std::size_t column, std::string_view piece) {
    return at(column > piece.size() ? column - piece.size() : 0, piece);
  }
  Line& time(double micros) { return before(timeColumn, text::formatted(micros, "0.##")); }
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  std::string text_;
};

/// The number in at most so many characters, with as many digits as fit.
std::string fitted(double value, std::size_t width) {
  static constexpr std::array<std::string_view, 6> patterns = {"0.#####", "0.####", "0.###",
                                                               "0.##",    "0.#",    "0"};
  std::string exact = text::shortestSingle(value);
  if (exact.size() <= width) return exact;
  for (const std::string_view pattern : patterns) {
    std::string rounded = text::formatted(value, pattern);
    if (rounded.size() <= width && std::abs(value) >= 0.001) return rounded;
  }
  return text::formatted(value, "0.#e-##");
}

/// "50mV", "2V"
std::string shortRange(std::string_view range) {
  const std::size_t blank = std::min(range.find(' '), range.size());
  const std::string_view unit = range.substr(blank);
  return concat(range.substr(0, blank), unit == " Volts" ? "V" : text::trimmed(unit));
}

std::string shortUnits(std::string_view units) {
  static constexpr std::pair<std::string_view, std::string_view> scales[] = {
      {"Deg_C", "C"}, {"Deg_F", "F"}, {"Kelvin", "K"}, {"Rankine", "R"}};
  for (const auto& [name, letter] : scales)
    if (text::equalsIgnoringCase(name, units)) return std::string(letter);
  return std::string(units);
}

std::string thermocoupleLetter(int type) {
  constexpr std::string_view letters = "TEKJBRSN";
  return type >= 0 && type < 8 ? std::string(1, letters[static_cast<std::size_t>(type)]) : "??";
}

std::string_view filterExcitation(double code) {
  static constexpr std::array<std::string_view, 7> levels = {"Off ", "2mA ", "4mA ", "6mA ",
                                                             "10mA", " 5V ", "10V "};
  return levels[static_cast<std::size_t>(text::integerWithin(code, 0, 6))];
}

std::string pulseOption(int option) {
  if (option == 0) return "Counts";
  return option == 1 ? "Hz" : concat(option, "ms");
}

/// "1-4,7"
std::string portList(const model::PortGroup& group, int firstPort) {
  std::string list;
  for (std::size_t n = 0; n < model::portsPerGroup; ++n) {
    if (!group.ports[n].Include) continue;
    std::size_t last = n;
    while (last + 1 < model::portsPerGroup && group.ports[last + 1].Include) ++last;
    list += concat(list.empty() ? "" : ",", firstPort + static_cast<int>(n));
    if (last > n) list += concat("-", firstPort + static_cast<int>(last));
    n = last;
  }
  return list;
}

/// The header of a group; its words say where the columns of the rows below begin.
class Header {
 public:
  explicit Header(std::string text) : text_(std::move(text)) {}
  [[nodiscard]] std::size_t of(std::string_view word) const { return text_.find(word); }
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  std::string text_;
};

class Summary {
 public:
  Summary(const model::Project& project, const model::ChannelPlan& plan,
          const timing::MeasurementTimes& times, const SummaryHeading& heading)
      : project_(project), plan_(plan), times_(times), heading_(heading) {}

  std::string run() {
    emitHeading();
    for (std::size_t t = 1; t <= model::maxTables; ++t)
      if (project_.tables[t - 1].TableOn) emitTable(t);
    emitTemperatures(BlockKind::thermocouple);
    emitVoltages();
    emitIsolated();
    emitBridges();
    emitPulses();
    emitTemperatures(BlockKind::tcmux);
    emitFilters();
    emitCan();
    emitOutputs();
    emitPorts();
    emitFlags();
    emitTotals();
    return std::move(out_);
  }

 private:
  void emit(const Line& line) { out_ += line.text() + '\n'; }
  void emit(std::string_view line) { (out_ += line) += '\n'; }
  void emitLabelled(std::string_view label, double micros) {
    emit(Line().at(labelColumn, label).time(micros));
  }
  void emitTotal(std::string_view label, TimeGroup group) { emitLabelled(label, times_.of(group)); }
  void open(const Header& header) {
    emit("");
    emit(header.text());
  }

  void emitHeading() {
    const bool k700x = isK700X(project_.configuration);
    emit(concat(" Program Name: ", heading_.name));
    emit(concat(" ", "KGENOCX", " Version: ", heading_.version));
    emit(concat(" ", "K700", k700x ? "X" : "",
                " OS Version Compatibility: ", k700x ? "05-15-08" : "10-22-02", " or later"));
    emit(concat(" Last Saved: ", project_.configuration.PCTime));
    if (heading_.programLines) emit(concat(" Program Lines: ", *heading_.programLines));
    const model::ScanSetup& scan = project_.scan;
    emit(concat(scan.ScanMode == 1 ? " Burst Scan Interval = " : " Scan Interval = ",
                model::trueNumber(scan.ExecutionTime, scan.ExecTimeUnits), " ",
                KGEN_COMMON::TimeUnitName(scan.ExecTimeUnits, false)));
  }

  void emitTable(std::size_t number) {
    const model::OutputTable& table = project_.tables[number - 1];
    const model::ShownInterval interval = shownInterval(project_, table);
    std::int32_t bytes = 0;
    KGEN_COMMON::BytesPerRecord(project_, number, bytes);
    emit("");
    emit(Line()
             .at(0, concat(" Table ", number))
             .at(labelColumn, concat("Output Interval = ", interval.number, " ",
                                     KGEN_COMMON::TimeUnitName(interval.unitCode, false))));
    const auto detail = [&](const std::string& text) { emit(Line().at(labelColumn, text)); };
    detail(concat("Fields per Record = ", KGEN_COMMON::FieldsPerRecord(project_, number)));
    detail(concat("Bytes per Record = ", text::formatted(bytes, "#,##0")));
    detail(isAutoSized(table) ? "Auto Size" : concat("Record Count = ", table.Buffer));
  }

  /// Numbers of the blocks of a kind that are in use.
  [[nodiscard]] std::vector<std::size_t> blocksOf(BlockKind kind) const {
    std::vector<std::size_t> numbers;
    for (std::size_t n = 1; n <= model::infoOf(kind).blockLimit; ++n)
      if (inUse(project_, kind, n)) numbers.push_back(n);
    return numbers;
  }

  [[nodiscard]] double timeOf(BlockKind kind, std::size_t number) const {
    return times_.blocks[static_cast<std::size_t>(kind)][number - 1];
  }

  /// A block's line up to its range.
  Line blockLine(const Header& header, BlockKind kind, std::size_t number) const {
    const MeasurementBlock& block = project_.block(kind, number);
    Line line;
    line.at(1, arrayName(project_, kind, number)).at(header.of("Reps"), concat(block.Reps));
    const std::size_t range = header.of("Rng");
    if (range != std::string::npos) line.before(range + 4, shortRange(block.Range));
    return line;
  }

  static void addScaling(Line& line, const Header& header, double multiplier, double offset) {
    line.at(header.of("Mult"), fitted(multiplier, 6)).at(header.of("Offset"), fitted(offset, 8));
  }

  void emitTemperatures(BlockKind kind) {
    const bool multiplexed = kind == BlockKind::tcmux;
    const Header header(multiplexed ? " TCMUX     Reps  Rng  Meas   Unit Type        (uSec)"
                                    : " THERMO    Reps  Rng  Meas   Unit Type        (uSec)");
    const std::vector<std::size_t> numbers = blocksOf(kind);
    if (numbers.empty()) return;
    open(header);
    for (const std::size_t n : numbers) {
      const MeasurementBlock& block = project_.block(kind, n);
      const bool volts = multiplexed && block.TCMUXVolts;
      emit(blockLine(header, kind, n)
               .at(header.of("Meas"), block.MeasType)
               .at(header.of("Unit"), shortUnits(block.Units))
               .at(header.of("Type"), volts ? "Volts" : thermocoupleLetter(block.TypeNo))
               .time(timeOf(kind, n)));
    }
    if (multiplexed) {
      if (times_.multiplexerReference > 0)
        emitLabelled("TCMUX RefTemp Time = ", times_.multiplexerReference);
      return emitTotal("Total TCMUX Time =", TimeGroup::tcmux);
    }
    emitLabelled("Module RefTemp Time = ", times_.moduleReference);
    emitTotal("Total Thermocouple Time =", TimeGroup::thermocouple);
  }

  void emitVoltages() {
    emitVoltages(BlockKind::voltage, Header(" VOLTS     Reps  Rng  Meas   Mult   Offset    (uSec)"),
                 "Total Voltage Time =", TimeGroup::voltage);
    emitVoltages(BlockKind::highVoltage,
                 Header(" HI VOLTS  Reps  Rng  Meas   Mult   Offset    (uSec)"),
                 "Total Hi Voltage Time =", TimeGroup::highVoltage);
  }

  void emitVoltages(BlockKind kind, const Header& header, std::string_view label, TimeGroup group) {
    const std::vector<std::size_t> numbers = blocksOf(kind);
    if (numbers.empty()) return;
    open(header);
    for (const std::size_t n : numbers) {
      const MeasurementBlock& block = project_.block(kind, n);
      Line line = blockLine(header, kind, n).at(header.of("Meas"), block.MeasType);
      addScaling(line, header, block.DefaultMult, block.DefaultOffset);
      emit(line.time(timeOf(kind, n)));
    }
    emitTotal(label, group);
  }

  void emitIsolated() {
    const std::vector<std::size_t> numbers = blocksOf(BlockKind::isolated);
    int slot = 0;
    for (auto at = numbers.begin(); at != numbers.end();) {
      slot = slotOf(*at);
      const auto end =
          std::find_if(at, numbers.end(), [&](std::size_t n) { return slotOf(n) != slot; });
      emitIsolatedSlot(slot, {at, end});
      at = end;
    }
  }

  [[nodiscard]] int slotOf(std::size_t isolatedBlock) const {
    return plan_.of(BlockKind::isolated, isolatedBlock).first.slot;
  }

  void emitIsolatedSlot(int slot, const std::vector<std::size_t>& numbers) {
    const Header header(concat(" ISOLATED ", slot, " Reps  Rng   Mult/Deg Offset/Type (uSec)"));
    open(header);
    double total = 0;
    for (const std::size_t n : numbers) {
      const MeasurementBlock& block = project_.block(BlockKind::isolated, n);
      Line line = blockLine(header, BlockKind::isolated, n);
      if (block.InputType == 1)
        line.at(header.of("Mult"), shortUnits(block.Units))
            .at(header.of("Offset"), thermocoupleLetter(block.TCType));
      else
        addScaling(line, header, block.DefaultMult, block.DefaultOffset);
      emit(line.time(timeOf(BlockKind::isolated, n)));
      total += timeOf(BlockKind::isolated, n);
    }
    emitLabelled(concat("Total Slot ", slot, " Isolated Time ="), total);
  }

  void emitBridges() {
    const Header header(" BRIDGES   Reps  Rng  Ex mv   Mult   Offset   (uSec)");
    const std::vector<std::size_t> numbers = blocksOf(BlockKind::bridge);
    if (numbers.empty()) return;
    open(header);
    for (const std::size_t n : numbers) {
      const MeasurementBlock& block = project_.block(BlockKind::bridge, n);
      Line line =
          blockLine(header, BlockKind::bridge, n).at(header.of("Ex mv"), fitted(block.Excite, 7));
      addScaling(line, header, block.DefaultMult, block.DefaultOffset);
      emit(line.time(timeOf(BlockKind::bridge, n)));
    }
    emitTotal("Total Bridge Time =", TimeGroup::bridge);
  }

  void emitPulses() {
    const Header header(concat(" PULSES ", " Reps Type  Option   Mult   Offset  (uSec)"));
    const std::vector<std::size_t> numbers = blocksOf(BlockKind::pulse);
    if (numbers.empty()) return;
    open(header);
    for (const std::size_t n : numbers) {
      const MeasurementBlock& block = project_.block(BlockKind::pulse, n);
      Line line = blockLine(header, BlockKind::pulse, n)
                      .at(header.of("Type") - 1, block.Meas)
                      .at(header.of("Option"), pulseOption(block.Opt));
      addScaling(line, header, block.DefaultMult, block.DefaultOffset);
      emit(line.time(timeOf(BlockKind::pulse, n)));
    }
    emitTotal(" Pulse Time =", TimeGroup::pulse);
  }

  void emitFilters() {
    std::array<std::vector<std::size_t>, 2> numbers;
    for (const std::size_t n : blocksOf(BlockKind::filter))
      numbers[isFft(project_, n) ? 1 : 0].push_back(n);
    if (numbers[0].empty() && numbers[1].empty()) return;
    emitFilters(" FILTER ", numbers[0]);
    emitFilters(" FFT    ", numbers[1]);
    emitTotal("Total Filter Time =", TimeGroup::filter);
  }

  void emitFilters(std::string_view title, const std::vector<std::size_t>& numbers) {
    const Header header(concat(title, " Reps  Rng  Excite  Mult   Offset   (uSec)"));
    if (numbers.empty()) return;
    open(header);
    for (const std::size_t n : numbers) {
      const MeasurementBlock& block = project_.block(BlockKind::filter, n);
      Line line = blockLine(header, BlockKind::filter, n)
                      .at(header.of("Excite"), filterExcitation(block.Excite));
      addScaling(line, header, block.DefaultMult, block.DefaultOffset);
      emit(line.time(timeOf(BlockKind::filter, n)));
    }
  }

  void emitCan() {
    const Header header(" CAN       Reps  Data ID     Mult   Offset    (uSec)");
    bool any = false;
    for (std::size_t k = 0; k < project_.can.items.size(); ++k) {
      const model::CanItem& item = project_.can.items[k];
      if (!canItemInUse(project_, item)) continue;
      if (!std::exchange(any, true)) open(header);
      Line line;
      line.at(1, concat("CBlk", k + 1))
          .at(header.of("Reps"), concat(item.NumVals))
          .at(header.of("Data ID"), item.DataStyle == 1 ? item.TxDataId : item.DataId);
      addScaling(line, header, item.Mult, item.Offset);
      emit(line.time(times_.canItems[k]));
    }
    if (any) emitTotal("Total Canbus Time =", TimeGroup::can);
  }

  void emitOutputs() {
    const Header header(" CAO OUTPUT     State 1   State 2             (uSec)");
    bool any = false;
    for (std::size_t n = 1; n <= project_.excitation.channels.size(); ++n) {
      const model::ExcitationChannel& channel = project_.excitation.channels[n - 1];
      if (!channel.Include) continue;
      if (!std::exchange(any, true)) open(header);
      const model::Place place = placeOfExcitation(project_, plan_, n);
      emit(Line()
               .at(1, concat("Slot ", place.slot, " CAO", place.channel))
               .at(header.of("State 1"), concat(channel.State1))
               .at(header.of("State 2"), channel.DynamicStatic == 1 ? concat(channel.State2) : "-")
               .time(times_.caoChannels[n - 1]));
    }
    if (any) emitTotal(" Total CAO Output Time =", TimeGroup::cao);
  }

  void emitPorts() {
    const Header header(" PORTS     Slot  Port          Write  Read    (uSec)");
    bool any = false;
    for (std::size_t p = 0; p < project_.ports.groups.size(); ++p) {
      const model::PortGroup& group = project_.ports.groups[p];
      const bool placed = p < plan_.portGroups.size();
      const std::string ports = portList(group, placed && plan_.portGroups[p].upper ? 9 : 1);
      if (ports.empty()) continue;
      if (!std::exchange(any, true)) open(header);
      emit(Line()
               .at(1, concat("Group ", p + 1))
               .at(header.of("Slot"), placed ? concat(plan_.portGroups[p].slot) : "-")
               .at(header.of("Port "), ports)
               .at(header.of("Write"), group.ReadMode ? "-" : "Yes")
               .at(header.of("Read"), group.ReadMode ? "Yes" : "-")
               .time(times_.portGroups[p]));
    }
    if (any) emitTotal("Total Port Time =", TimeGroup::port);
  }

  void emitFlags() {
    const Header header(" FLAGS          State 1   State 2            (uSec)");
    bool any = false;
    for (std::size_t f = 1; f <= model::maxFlags; ++f) {
      const model::FlagControl& flag = project_.flags[f - 1];
      if (!flag.FlagInclude) continue;
      if (!std::exchange(any, true)) open(header);
      emit(Line()
               .at(1, concat("Flag(", f, ")"))
               .at(header.of("State 1"), flag.FlagOn ? "True" : "False")
               .at(header.of("State 2"), flag.FlagOn ? "False" : "True")
               .time(0));
    }
    if (any) emitTotal("Total Flag Time =", TimeGroup::flag);
  }

  void emitTotals() {
    emit("");
    emitLabelled("Main Battery Volts Time =", times_.batteryVolts);
    emitLabelled("Main Battery Current Time =", times_.batteryCurrent);
    emit("");
    emitLabelled("Shortest Possible Scan Time (uSec) =", times_.shortestScan);
  }

  const model::Project& project_;
  const model::ChannelPlan& plan_;
  const timing::MeasurementTimes& times_;
  const SummaryHeading& heading_;
  std::string out_;
};

}  // namespace

std::string summaryText(const model::Project& project, const model::ChannelPlan& plan,
                        const timing::MeasurementTimes& times, const SummaryHeading& heading) {
  return Summary(project, plan, times, heading).run();
}

}  // namespace control
