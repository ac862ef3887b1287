#include "companion/wiring_diagram.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <utility>

#include "can/can_config.h"
#include "companion/document_lines.h"
#include "model/module_terminals.h"
#include "text/strings.h"

namespace MAKEWIRE {
namespace {

using model::BlockKind;
using model::MeasurementBlock;
using model::ModuleKindIndex;
using model::Place;
using text::concat;

constexpr std::string_view floatingNote =
    "Floating differential sources need L connected to the adjacent ground terminal.";

std::string moduleName(const model::LoggerConfiguration& configuration, ModuleKindIndex kind) {
  static constexpr std::array<std::string_view, model::moduleKinds> names = {
      "7101 Power Supply",
      "7103 CPU",
      "7105 A/D",
      "7151 PCMCIA Adaptor",
      "7121/22 Analog Input",
      "7131 Excitation",
      "7141/42 Counter, Timer, I/O",
      "7127 High Voltage",
      "7125 Filtered Analog Input",
      "7128 Isolation/High Common Mode"};
  if (kind == ModuleKindIndex::cpu && isK700X(configuration)) return "7104 CPU";
  return std::string(names[static_cast<std::size_t>(kind)]);
}

using Terminals = std::vector<std::string>;

void addNumbered(Terminals& terminals, std::string_view letters, int count) {
  for (int n = 1; n <= count; ++n) terminals.push_back(concat(letters, n));
}

/// H and L of each input, and what else stands beside them.
Terminals pairs(int count, std::string_view third = "") {
  Terminals terminals;
  for (int n = 1; n <= count; ++n) {
    terminals.push_back(concat("H", n));
    terminals.push_back(concat("L", n));
    if (!third.empty()) terminals.push_back(concat(third, n));
  }
  return terminals;
}

Terminals terminalsOf(ModuleKindIndex kind) {
  Terminals terminals;
  switch (kind) {
    case ModuleKindIndex::analog7121:
      return pairs(model::pairsOf7121);
    case ModuleKindIndex::highVoltage7127:
      return pairs(model::pairsOf7127);
    case ModuleKindIndex::isolation7128:
      return pairs(model::channelsOf7128);
    case ModuleKindIndex::filter7125:
      return pairs(model::channelsOf7125, "EX");
    case ModuleKindIndex::excitation7131:
      addNumbered(terminals, "EX", model::excitationsOf7131);
      addNumbered(terminals, "CAO", model::analogOutputsOf7131);
      addNumbered(terminals, "C", model::controlLinesOf7131);
      break;
    case ModuleKindIndex::counter7141:
      addNumbered(terminals, "D", model::channelsOf7141);
      break;
    default:
      break;
  }
  return terminals;
}

std::string singleEndedTerminal(int channel) {
  return concat(channel % 2 == 1 ? "H" : "L", (channel + 1) / 2);
}

/// "EX3 slot 7": a channel of the excitation terminals, the analog outputs being 9 to 12.
std::string excitationTerminal(int channel) {
  const bool output = channel > model::excitationsOf7131;
  return output ? concat("CAO", channel - model::excitationsOf7131) : concat("EX", channel);
}

std::string rangeText(std::size_t first, std::size_t last) {
  return first == last ? concat(first) : concat(first, "-", last);
}

/// A channel of a block: the cells of its row from BLOCK on.
struct Signal {
  std::string block, alias, units;
};

Signal signalOf(std::string_view tag, const std::vector<model::Element>& elements,
                std::string_view units, std::size_t element) {
  Signal signal{concat(tag, "(", element, ")"), "", std::string(units)};
  if (element > elements.size()) return signal;
  signal.alias = elements[element - 1].AliasName;
  if (!elements[element - 1].AliasUnits.empty()) signal.units = elements[element - 1].AliasUnits;
  return signal;
}

class Builder {
 public:
  Builder(const model::Project& project, const model::ChannelPlan& plan)
      : project_(project), plan_(plan) {}

  WiringDiagram run() {
    makeSlots();
    for (const BlockKind kind : model::allBlockKinds)
      for (std::size_t n = 1; n <= model::infoOf(kind).blockLimit; ++n)
        if (inUse(project_, kind, n)) connectBlock(kind, n);
    connectMultiplexerGroups();
    connectOutputs();
    connectPorts();
    addFloatingNotes();
    if (hasCanInterface(project_)) addCanInterface();
    return std::move(diagram_);
  }

 private:
  [[nodiscard]] const MeasurementBlock& block(BlockKind kind, std::size_t number) const {
    return project_.block(kind, number);
  }

  void makeSlots() {
    for (int slot = 1; slot <= lastSlot; ++slot) {
      const int kind = moduleInSlot(project_.configuration, slot);
      if (kind < 0) continue;
      const auto module = static_cast<ModuleKindIndex>(kind);
      WiringSlot& added =
          diagram_.slots.emplace_back(WiringSlot{slot, moduleName(project_.configuration, module)});
      for (std::string& terminal : terminalsOf(module))
        added.rows.push_back({.slot = slot, .terminal = std::move(terminal)});
    }
  }

  WiringSlot* slotAt(int number) {
    const auto found = std::find_if(diagram_.slots.begin(), diagram_.slots.end(),
                                    [number](const WiringSlot& s) { return s.number == number; });
    return found == diagram_.slots.end() ? nullptr : &*found;
  }

  /// A module that has the terminal in a slot of another kind does not count.
  void connect(ModuleKindIndex kind, int slot, const std::string& terminal, std::string function,
               Signal signal) {
    WiringRow row{slot,
                  terminal,
                  std::move(function),
                  std::move(signal.block),
                  std::move(signal.alias),
                  std::move(signal.units)};
    WiringSlot* target = slotAt(slot);
    if (target == nullptr || moduleInSlot(project_.configuration, slot) != static_cast<int>(kind))
      return leaveUnplaced(std::move(row));
    auto at = std::find_if(target->rows.begin(), target->rows.end(),
                           [&](const WiringRow& r) { return r.terminal == terminal; });
    if (at == target->rows.end()) return leaveUnplaced(std::move(row));
    if (!at->used()) {
      *at = std::move(row);
      return;
    }
    while (at != target->rows.end() && at->terminal == terminal) ++at;
    target->rows.insert(at, std::move(row));
  }

  void leaveUnplaced(WiringRow row) {
    row.slot = 0;
    row.terminal = "-";
    diagram_.unplaced.push_back(std::move(row));
  }

  void connectPair(ModuleKindIndex kind, Place place, std::string_view word,
                   const std::string& remark, const Signal& signal) {
    for (const auto& [letter, sign] : {std::pair("H", " +"), std::pair("L", " -")})
      connect(kind, place.slot, concat(letter, place.channel),
              concat(word, place.channel, sign, remark), signal);
  }

  void connectSingleEnded(ModuleKindIndex kind, Place place, const std::string& remark,
                          const Signal& signal) {
    connect(kind, place.slot, singleEndedTerminal(place.channel),
            concat("SE ", place.channel, remark), signal);
  }

  void connectBlock(BlockKind kind, std::size_t number) {
    if (kind == BlockKind::tcmux) return addMultiplexers(number);
    const auto channels = static_cast<std::size_t>(block(kind, number).Reps);
    const std::string tag = arrayName(project_, kind, number);
    for (std::size_t e = 1; e <= channels; ++e)
      connectElement(kind, number, e,
                     signalOf(tag, block(kind, number).elements, block(kind, number).Units, e));
    if (kind == BlockKind::bridge) connectExcitations(number, tag);
  }

  void connectElement(BlockKind kind, std::size_t number, std::size_t element,
                      const Signal& signal) {
    const Place place = placeOfElement(project_, plan_, kind, number, element);
    const ModuleKindIndex module = model::infoOf(kind).module;
    switch (kind) {
      case BlockKind::bridge:
        return connectBridge(number, element, place, signal);
      case BlockKind::isolated:
        return connectPair(module, place, "Iso ", "", signal);
      case BlockKind::filter:
        connectPair(module, place, "Filt ", "", signal);
        return connectFilterExcitation(number, place);
      case BlockKind::pulse:
        return connect(module, place.slot, concat("D", place.channel),
                       concat("Pulse ", place.channel, " ", block(kind, number).Meas), signal);
      default:
        break;
    }
    if (!isDifferential(block(kind, number))) return connectSingleEnded(module, place, "", signal);
    floatingSlots_.insert(place.slot);
    connectPair(module, place, "Diff ", "", signal);
  }

  void connectFilterExcitation(std::size_t number, Place place) {
    static constexpr std::array<std::string_view, 7> levels = {"",     "2mA", "4mA", "6mA",
                                                               "10mA", "5V",  "10V"};
    const auto code = static_cast<std::size_t>(
        text::integerWithin(block(BlockKind::filter, number).Excite, 0, 6));
    if (code == 0) return;
    connect(ModuleKindIndex::filter7125, place.slot, concat("EX", place.channel),
            concat("Excite ", levels[code]),
            {arrayName(project_, BlockKind::filter, number), "", ""});
  }

  void connectBridge(std::size_t number, std::size_t element, Place place, const Signal& signal) {
    const MeasurementBlock& bridge = block(BlockKind::bridge, number);
    const Place excitation = placeOfBridgeExcitation(project_, plan_, number, element);
    const std::string remark =
        concat(" ", excitationTerminal(excitation.channel), " slot ", excitation.slot);
    const std::string_view instruction = model::bridgeInstruction(bridge.Style);
    const bool singleEnded = isSingleEndedBridge(bridge);
    const int channels = channelsOfBridge(bridge);
    const int perModule = singleEnded ? 2 * model::pairsOf7121 : model::pairsOf7121;
    for (int k = 0; k < channels; ++k) {
      const int index = place.channel - 1 + k;
      const Place at{place.slot + index / perModule, index % perModule + 1};
      if (singleEnded)
        connectSingleEnded(ModuleKindIndex::analog7121, at, remark, signal);
      else
        connectPair(ModuleKindIndex::analog7121, at, "Diff ", remark, signal);
      if (channels > 1) noteBridge(at.slot, number, instruction);
    }
  }

  /// What the two channels of each bridge of a block are for.
  void noteBridge(int slot, std::size_t number, std::string_view instruction) {
    WiringSlot* target = slotAt(slot);
    if (target == nullptr) return;
    std::string note =
        concat("BBlk", number, " (", instruction, "): two channels each",
               instruction == "BrFull6W" ? ", sense wires first, then the output." : ".");
    auto& notes = target->notes;
    if (std::find(notes.begin(), notes.end(), note) == notes.end())
      notes.push_back(std::move(note));
  }

  void connectExcitations(std::size_t number, const std::string& tag) {
    const MeasurementBlock& bridge = block(BlockKind::bridge, number);
    const auto channels = static_cast<std::size_t>(bridge.Reps);
    const auto each = static_cast<std::size_t>(std::max<int>(bridge.ExciteReps, 1));
    for (std::size_t first = 1; first <= channels; first += each) {
      const std::string fed = rangeText(first, std::min(first + each - 1, channels));
      const Place place = placeOfBridgeExcitation(project_, plan_, number, first);
      connect(ModuleKindIndex::excitation7131, place.slot, excitationTerminal(place.channel),
              concat("Excite (", fed, ") ", bridge.Excite, " mV"), {tag, "", ""});
    }
  }

  void addMultiplexers(std::size_t number) {
    for (const model::MultiplexerPlace& place : plan_.of(BlockKind::tcmux, number).multiplexers) {
      addMultiplexer(number, place);
      connectMultiplexer(number, place);
    }
  }

  [[nodiscard]] bool measuresVolts(std::size_t number) const {
    return block(BlockKind::tcmux, number).TCMUXVolts;
  }

  /// Ends of the multiplexer's own wires, and its inputs.
  void addMultiplexer(std::size_t number, const model::MultiplexerPlace& place) {
    WiringDevice device{concat("TCMUX ", place.number), {}};
    const std::string tag = arrayName(project_, BlockKind::tcmux, number);
    const auto wire = [&](std::string terminal, int slot, const std::string& end) {
      device.rows.push_back({0, std::move(terminal), concat("Slot ", slot, " ", end), tag, "", ""});
    };
    wire("COM+", place.common.slot, concat("H", place.common.channel));
    wire("COM-", place.common.slot, concat("L", place.common.channel));
    if (!measuresVolts(number))
      wire("REF", place.reference.slot, singleEndedTerminal(place.reference.channel));
    else
      device.rows.push_back({.terminal = "REF"});
    wire("CLK", place.controlSlot, concat("C", place.clockLine));
    wire("RES", place.controlSlot, concat("C", place.resetLine));
    if (!measuresVolts(number))
      wire("EXC", place.excitation.slot, concat("EX", place.excitation.channel));
    else
      device.rows.push_back({.terminal = "EXC"});
    addInputs(device, number, tag, place);
    diagram_.devices.push_back(std::move(device));
  }

  void addInputs(WiringDevice& device, std::size_t number, const std::string& tag,
                 const model::MultiplexerPlace& place) const {
    const MeasurementBlock& inputs = block(BlockKind::tcmux, number);
    for (int n = 1; n <= model::channelsOfMultiplexer; ++n) {
      WiringRow row{.terminal = concat("IN", n)};
      const std::size_t element = place.firstElement + static_cast<std::size_t>(n) - 1;
      if (element <= static_cast<std::size_t>(inputs.Reps)) {
        Signal signal = signalOf(tag, inputs.elements, inputs.Units, element);
        row.function = inputs.TCMUXVolts ? "Volts" : "Thermocouple";
        row.block = std::move(signal.block);
        row.alias = std::move(signal.alias);
        row.units = std::move(signal.units);
      }
      device.rows.push_back(std::move(row));
    }
  }

  void connectMultiplexer(std::size_t number, const model::MultiplexerPlace& place) {
    const Signal signal{arrayName(project_, BlockKind::tcmux, number), "", ""};
    const std::string name = concat(" TCMUX ", place.number);
    connectPair(ModuleKindIndex::analog7121, place.common, "Diff ", name + " COM", signal);
    if (!measuresVolts(number))
      connectSingleEnded(ModuleKindIndex::analog7121, place.reference, name + " REF", signal);
    connect(ModuleKindIndex::excitation7131, place.controlSlot, concat("C", place.resetLine),
            concat("TCMUX ", place.number, " reset"), signal);
  }

  /// Lines that the multiplexers of a group share.
  struct SharedLines {
    int slot = 0, clock = 0;
    Place excitation;
    std::size_t firstMultiplexer = 0, lastMultiplexer = 0;
    std::size_t firstBlock = 0, lastBlock = 0;
    bool excited = false;
  };

  [[nodiscard]] std::vector<SharedLines> sharedLines() const {
    std::vector<SharedLines> groups;
    for (std::size_t n = 1; n <= model::infoOf(BlockKind::tcmux).blockLimit; ++n) {
      if (!inUse(project_, BlockKind::tcmux, n)) continue;
      for (const model::MultiplexerPlace& place : plan_.of(BlockKind::tcmux, n).multiplexers) {
        const auto number = static_cast<std::size_t>(place.number);
        const bool known = !groups.empty() && groups.back().slot == place.controlSlot &&
                           groups.back().clock == place.clockLine;
        if (!known)
          groups.push_back({place.controlSlot, place.clockLine, place.excitation, number, 0, n});
        groups.back().lastMultiplexer = number;
        groups.back().lastBlock = n;
        groups.back().excited = groups.back().excited || !measuresVolts(n);
      }
    }
    return groups;
  }

  void connectMultiplexerGroups() {
    for (const SharedLines& lines : sharedLines()) {
      const std::string members =
          concat("TCMUX ", rangeText(lines.firstMultiplexer, lines.lastMultiplexer));
      const Signal signal{concat("ABlk", rangeText(lines.firstBlock, lines.lastBlock)), "", ""};
      connect(ModuleKindIndex::excitation7131, lines.slot, concat("C", lines.clock),
              concat(members, " clock"), signal);
      if (lines.excited)
        connect(ModuleKindIndex::excitation7131, lines.excitation.slot,
                concat("EX", lines.excitation.channel), concat(members, " excite"), signal);
    }
  }

  void connectOutputs() {
    for (std::size_t n = 1; n <= project_.excitation.channels.size(); ++n) {
      const model::ExcitationChannel& channel = project_.excitation.channels[n - 1];
      if (!channel.Include) continue;
      const Place place = placeOfExcitation(project_, plan_, n);
      const std::string second =
          channel.DynamicStatic == 1 ? concat("/", channel.State2) : std::string();
      connect(ModuleKindIndex::excitation7131, place.slot, concat("CAO", place.channel),
              concat("Output ", channel.State1, second, " mV"), {concat("CAO(", n, ")"), "", ""});
    }
  }

  void connectPorts() {
    for (std::size_t p = 0; p < project_.ports.groups.size(); ++p)
      for (std::size_t n = 0; n < model::portsPerGroup; ++n)
        if (project_.ports.groups[p].ports[n].Include) connectPort(p, static_cast<int>(n) + 1);
  }

  void connectPort(std::size_t p, int number) {
    const bool known = p < plan_.portGroups.size();
    const model::PortGroupPlace place = known ? plan_.portGroups[p] : model::PortGroupPlace{};
    const int channel = number + (place.upper ? static_cast<int>(model::portsPerGroup) : 0);
    const bool reads = place.input && project_.ports.groups[p].ReadMode;
    connect(place.input ? ModuleKindIndex::counter7141 : ModuleKindIndex::excitation7131,
            place.slot, concat(place.input ? "D" : "C", channel),
            concat("Port ", channel, reads ? " input" : " output"),
            {concat("Ports(", p + 1, ")"), "", ""});
  }

  void addFloatingNotes() {
    for (const int slot : floatingSlots_)
      if (WiringSlot* target = slotAt(slot))
        target->notes.insert(target->notes.begin(), std::string(floatingNote));
  }

  void addCanInterface() {
    can::cCanModule timing;
    const std::string bus = concat("CAN bus ", timing.BaudRateText(project_.can.CanBaud));
    WiringDevice device{"CANIF", {}};
    for (const char* terminal : {"CANH", "CANL"})
      device.rows.push_back(
          {0, terminal, bus, concat("Address ", project_.can.CanAddress), "", ""});
    for (std::size_t k = 1; k <= project_.can.items.size(); ++k)
      if (canItemInUse(project_, project_.can.items[k - 1])) addCanItem(device, k);
    diagram_.devices.push_back(std::move(device));
  }

  void addCanItem(WiringDevice& device, std::size_t number) const {
    const model::CanItem& item = project_.can.items[number - 1];
    const std::string tag = concat("CBlk", number);
    if (item.DataStyle != 0)
      device.rows.push_back({0, "-", concat("Transmit ", item.TxDataId), tag, item.Name, ""});
    if (item.DataStyle == 1) return;
    for (std::size_t v = 1; v <= static_cast<std::size_t>(std::max<int>(item.NumVals, 0)); ++v) {
      Signal signal = signalOf(tag, item.values, item.Units, v);
      device.rows.push_back({0, "-", concat("Receive ", item.DataId), std::move(signal.block),
                             std::move(signal.alias), std::move(signal.units)});
    }
  }

  static constexpr int lastSlot = 3 + static_cast<int>(model::maxUserModules);

  const model::Project& project_;
  const model::ChannelPlan& plan_;
  WiringDiagram diagram_;
  std::set<int> floatingSlots_;
};

void appendRow(std::string& out, const std::array<std::string_view, 5>& cells) {
  static constexpr std::array<std::size_t, 5> columns = {0, 12, 37, 50, 66};
  std::array<std::string_view, 5> shown = cells;
  for (std::string_view& cell : shown)
    if (cell.empty()) cell = "-";
  companion::appendColumns(out, shown, columns);
}

void appendSection(std::string& out, std::string_view title, const std::vector<WiringRow>& rows) {
  out += concat(std::string(companion::lineWidth, '='), "\r\n", title, "\r\n");
  if (rows.empty()) return;
  appendRow(out, {"TERMINAL", "FUNCTION", "BLOCK", "ALIAS", "UNITS"});
  for (const WiringRow& row : rows)
    appendRow(out, {row.terminal, row.function, row.block, row.alias, row.units});
}

}  // namespace

WiringDiagram wiringDiagram(const model::Project& project, const model::ChannelPlan& plan) {
  return Builder(project, plan).run();
}

std::string wiringText(const model::Project& project, const model::DocumentStamp& stamp) {
  const WiringDiagram diagram = wiringDiagram(project, model::channelPlan(project));
  std::string out = companion::documentHeader(project.configuration, stamp, ".WR7");
  for (const WiringSlot& slot : diagram.slots) {
    appendSection(out, concat("SLOT ", slot.number, "  ", slot.module), slot.rows);
    for (const std::string& note : slot.notes) out += concat("NOTE: ", note, "\r\n");
  }
  for (const WiringDevice& device : diagram.devices) appendSection(out, device.name, device.rows);
  if (!diagram.unplaced.empty()) appendSection(out, "WITHOUT A MODULE", diagram.unplaced);
  return out;
}

}  // namespace MAKEWIRE
