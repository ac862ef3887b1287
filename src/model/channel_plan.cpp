#include "model/channel_plan.h"

#include <algorithm>

#include "model/module_terminals.h"
#include "text/strings.h"

namespace model {
namespace {

constexpr int firstUserSlot = 4;
constexpr int multiplexersOfGroup = 7;

int divisionUp(int value, int divisor) { return (value + divisor - 1) / divisor; }
int multipleUp(int value, int divisor) { return divisionUp(value, divisor) * divisor; }

/// The channels of one module kind as one row of positions from 0, module after module.
class Row {
 public:
  Row(int firstModuleSlot, int channelsPerModule, bool spansModules, bool automatic)
      : slot_(firstModuleSlot),
        perModule_(channelsPerModule),
        spans_(spansModules),
        automatic_(automatic) {}

  /// Takes room for a block and returns its first position.
  int take(int channels, bool differential) {
    if (!automatic_) position_ = multipleUp(position_, perModule_);
    if (differential) position_ = multipleUp(position_, 2);
    if (!spans_ && position_ % perModule_ + channels > perModule_)
      position_ = multipleUp(position_, perModule_);
    const int first = position_;
    position_ += channels;
    return first;
  }

  [[nodiscard]] Place singleEnded(int position) const {
    return {slot_ + position / perModule_, position % perModule_ + 1};
  }
  [[nodiscard]] Place differential(int position) const {
    return {slot_ + position / perModule_, position % perModule_ / 2 + 1};
  }
  [[nodiscard]] int used() const { return position_; }
  [[nodiscard]] int modulesNeeded() const { return divisionUp(position_, perModule_); }

 private:
  int slot_;
  int perModule_;
  bool spans_;
  bool automatic_;
  int position_ = 0;
};

/// Single-ended positions that one channel of a block takes on 7121/22 and 7127 modules.
struct ChannelWidth {
  bool differential = true;
  int positions = 2;
};

ChannelWidth widthOf(BlockKind kind, const MeasurementBlock& block) {
  if (kind != BlockKind::bridge) {
    const bool differential = isDifferential(block);
    return {differential, differential ? 2 : 1};
  }
  const bool differential = !isSingleEndedBridge(block);
  return {differential, channelsOfBridge(block) * (differential ? 2 : 1)};
}

class Planner {
 public:
  explicit Planner(const Project& project) : project_(project) {}

  ChannelPlan run() {
    placeAnalogBlocks();
    placeMultiplexers();
    finishAnalogRow();
    placeModuleBlocks(BlockKind::highVoltage, channelsOf7127, plan_.totals.TotHVChans);
    placeModuleBlocks(BlockKind::isolated, channelsOf7128, plan_.totals.TotIsoChans);
    placeModuleBlocks(BlockKind::pulse, channelsOf7141, pulseChannels_);
    placeFilterBlocks();
    placePorts();
    finishReferences();
    finishTotals();
    markIdleBlocks();
    return std::move(plan_);
  }

 private:
  /// Blocks that only a 7104 can measure: kept, but left out of everything.
  void markIdleBlocks() {
    if (isK700X(configuration())) return;
    for (const BlockKind kind : {BlockKind::isolated, BlockKind::tcmux})
      for (std::size_t n = 1; n <= blockCount(project_, kind); ++n)
        if (project_.block(kind, n).Reps > 0)
          plan_.problems.push_back(text::concat(infoOf(kind).name, " block ", n,
                                                " needs the 7104 CPU and is left out; choose that "
                                                "CPU or remove the block"));
  }

  [[nodiscard]] const LoggerConfiguration& configuration() const { return project_.configuration; }
  [[nodiscard]] int quantity(ModuleKindIndex kind) const { return configuration().quantity(kind); }
  [[nodiscard]] int first(ModuleKindIndex kind) const { return firstSlot(configuration(), kind); }
  BlockPlace& at(BlockKind kind, std::size_t number) {
    return plan_.blocks[static_cast<std::size_t>(kind)][number - 1];
  }

  template <class F>
  void forBlocksInUse(BlockKind kind, F f) {
    for (std::size_t n = 1; n <= infoOf(kind).blockLimit; ++n)
      if (inUse(project_, kind, n)) f(n, project_.block(kind, n));
  }

  void placeAnalogBlocks() {
    for (const BlockKind kind : {BlockKind::thermocouple, BlockKind::voltage, BlockKind::bridge})
      forBlocksInUse(kind, [&](std::size_t n, const MeasurementBlock& block) {
        placeAnalogBlock(kind, n, block);
      });
  }

  void placeAnalogBlock(BlockKind kind, std::size_t n, const MeasurementBlock& block) {
    const ChannelWidth width = widthOf(kind, block);
    const int position = analog_.take(block.Reps * width.positions, width.differential);
    at(kind, n).first =
        width.differential ? analog_.differential(position) : analog_.singleEnded(position);
    if (!width.differential)
      plan_.totals.SEChannelCount[static_cast<std::size_t>(kind)] += block.Reps * width.positions;
    if (kind == BlockKind::thermocouple) noteReferenceSlots(plan_.tcSlots, position, block, width);
    if (kind == BlockKind::bridge) placeExcitation(n, block);
  }

  void noteReferenceSlots(std::vector<int>& slots, int position, const MeasurementBlock& block,
                          const ChannelWidth& width) const {
    const int lastPosition = position + block.Reps * width.positions - 1;
    for (int slot = analog_.singleEnded(position).slot;
         slot <= analog_.singleEnded(lastPosition).slot; ++slot)
      if (std::find(slots.begin(), slots.end(), slot) == slots.end()) slots.push_back(slot);
  }

  void placeExcitation(std::size_t n, const MeasurementBlock& bridge) {
    const int channels = divisionUp(bridge.Reps, std::max<int>(bridge.ExciteReps, 1));
    int& used = bridge.CheckCAO ? plan_.caoOfBridges : switchedUsed_;
    const int perModule = bridge.CheckCAO ? analogOutputsOf7131 : excitationsOf7131;
    const int offset = bridge.CheckCAO ? excitationsOf7131 : 0;
    at(BlockKind::bridge, n).excitation = {
        first(ModuleKindIndex::excitation7131) + used / perModule, offset + used % perModule + 1};
    used += channels;
  }

  void placeMultiplexers() {
    plan_.totals.ExciteSwitched = switchedUsed_;
    plan_.totals.ExciteCAO = plan_.caoOfBridges;
    forBlocksInUse(BlockKind::tcmux, [&](std::size_t n, const MeasurementBlock& block) {
      const int count = divisionUp(block.Reps, channelsOfMultiplexer);
      const int position = analog_.take(count * 4, true);
      BlockPlace& place = at(BlockKind::tcmux, n);
      place.first = analog_.differential(position);
      for (int m = 0; m < count; ++m)
        place.multiplexers.push_back(multiplexer(position + 4 * m, m, block));
    });
    plan_.multiplexers = multiplexersPlaced_;
  }

  MultiplexerPlace multiplexer(int position, int indexInBlock, const MeasurementBlock& block) {
    if (multiplexersPlaced_ % multiplexersOfGroup == 0) beginGroup();
    const int channelsLeft = block.Reps - indexInBlock * channelsOfMultiplexer;
    const int resetLine = controlUsed_++;
    return {.number = ++multiplexersPlaced_,
            .firstElement = static_cast<std::size_t>(indexInBlock) * channelsOfMultiplexer + 1,
            .channels = channelsLeft <= 8 ? 8 : channelsOfMultiplexer,
            .common = analog_.differential(position),
            .reference = analog_.singleEnded(position + 2),
            .excitation = groupExcitation_,
            .controlSlot = control(clockLine_).slot,
            .clockLine = control(clockLine_).channel,
            .resetLine = control(resetLine).channel};
  }

  void beginGroup() {
    clockLine_ = controlUsed_++;
    groupExcitation_ = {first(ModuleKindIndex::excitation7131) + switchedUsed_ / excitationsOf7131,
                        switchedUsed_ % excitationsOf7131 + 1};
    ++switchedUsed_;
  }

  [[nodiscard]] Place control(int line) const {
    return {first(ModuleKindIndex::excitation7131) + line / controlLinesOf7131,
            line % controlLinesOf7131 + 1};
  }

  void finishAnalogRow() {
    complainOfModules(ModuleKindIndex::analog7121, analog_.modulesNeeded());
    complainOfModules(ModuleKindIndex::excitation7131,
                      std::max({divisionUp(switchedUsed_, excitationsOf7131),
                                divisionUp(controlUsed_, controlLinesOf7131),
                                divisionUp(plan_.caoOfBridges, analogOutputsOf7131)}));
  }

  void complainOfModules(ModuleKindIndex kind, int needed) {
    if (needed <= quantity(kind)) return;
    plan_.problems.push_back(text::concat("the measurements need ", needed, " modules of kind ",
                                          moduleName(kind), ", the logger has ", quantity(kind),
                                          "; add modules or remove channels"));
  }

  void placeModuleBlocks(BlockKind kind, int perModule, int& channelsInUse) {
    Row row(first(infoOf(kind).module), perModule, false, configuration().AutoChan);
    const bool analog = kind == BlockKind::highVoltage;
    forBlocksInUse(kind, [&](std::size_t n, const MeasurementBlock& block) {
      const ChannelWidth width = analog ? widthOf(kind, block) : ChannelWidth{false, 1};
      complainOfReps(kind, n, block.Reps * width.positions, perModule);
      const int position = row.take(block.Reps * width.positions, width.differential);
      at(kind, n).first =
          width.differential ? row.differential(position) : row.singleEnded(position);
      channelsInUse += block.Reps;
    });
    complainOfModules(infoOf(kind).module, row.modulesNeeded());
  }

  void complainOfReps(BlockKind kind, std::size_t n, int channels, int perModule) {
    if (channels <= perModule) return;
    plan_.problems.push_back(
        text::concat(infoOf(kind).name, " block ", n, " has more channels than one ",
                     moduleName(infoOf(kind).module), " module; split it into several blocks"));
  }

  void placeFilterBlocks() {
    std::array<int, maxUserModules> used = {};
    forBlocksInUse(BlockKind::filter, [&](std::size_t n, const MeasurementBlock& block) {
      const std::size_t slot = filterSlotOf(project_, n);
      int& position = used[slot - 1];
      at(BlockKind::filter, n).first = {
          first(ModuleKindIndex::filter7125) + static_cast<int>(slot) - 1, position + 1};
      position += block.Reps;
      plan_.totals.TotFiltChans += block.Reps;
      complainOfReps(BlockKind::filter, n, position, channelsOf7125);
      complainOfModules(ModuleKindIndex::filter7125, static_cast<int>(slot));
    });
  }

  void placePorts() {
    for (int i = 0; i < quantity(ModuleKindIndex::excitation7131); ++i)
      plan_.portGroups.push_back({first(ModuleKindIndex::excitation7131) + i, false, false});
    for (int i = 0; i < quantity(ModuleKindIndex::counter7141); ++i)
      for (const bool upper : {false, true})
        plan_.portGroups.push_back({first(ModuleKindIndex::counter7141) + i, upper, true});
    for (std::size_t p = 0; p < project_.ports.groups.size(); ++p) countPorts(p);
  }

  void countPorts(std::size_t p) {
    const auto& ports = project_.ports.groups[p].ports;
    const auto included = static_cast<int>(
        std::count_if(ports.begin(), ports.end(), [](const Port& port) { return port.Include; }));
    if (included == 0) return;
    if (p >= plan_.portGroups.size())
      plan_.problems.push_back(
          text::concat("port group ", p + 1, " has no module; add a 7131 or 7141/42 module"));
    else if (plan_.portGroups[p].input)
      counterPorts_ += included;
    else
      controlPorts_ += included;
    if (p < plan_.portGroups.size()) complainOfTakenPorts(p);
  }

  /// A pulse input, or a control line of a multiplexer, can't be a port as well.
  void complainOfTakenPorts(std::size_t p) {
    const PortGroupPlace& place = plan_.portGroups[p];
    for (std::size_t n = 0; n < portsPerGroup; ++n) {
      if (!project_.ports.groups[p].ports[n].Include) continue;
      const int channel = static_cast<int>(n) + 1 + (place.upper ? 8 : 0);
      if (place.input ? isPulseInput({place.slot, channel}) : isControlLine(place.slot, channel))
        plan_.problems.push_back(
            text::concat("port ", channel, " of slot ", place.slot, " is in use as ",
                         place.input ? "a pulse input" : "a control line of a multiplexer",
                         "; choose another port"));
    }
  }

  [[nodiscard]] bool isPulseInput(const Place& port) const {
    for (std::size_t n = 1; n <= maxPulseBlocks; ++n) {
      if (!inUse(project_, BlockKind::pulse, n)) continue;
      const Place first = plan_.of(BlockKind::pulse, n).first;
      const int last = first.channel + project_.block(BlockKind::pulse, n).Reps - 1;
      if (port.slot == first.slot && port.channel >= first.channel && port.channel <= last)
        return true;
    }
    return false;
  }

  [[nodiscard]] bool isControlLine(int slot, int line) const {
    return (slot - first(ModuleKindIndex::excitation7131)) * controlLinesOf7131 + line <=
           controlUsed_;
  }

  void finishReferences() {
    forBlocksInUse(BlockKind::thermocouple, [&](std::size_t n, const MeasurementBlock&) {
      setReference(plan_.tcSlots, at(BlockKind::thermocouple, n));
    });
    forBlocksInUse(BlockKind::isolated, [&](std::size_t n, const MeasurementBlock& block) {
      if (block.InputType != 1) return;
      const int slot = at(BlockKind::isolated, n).first.slot;
      if (plan_.isoTcSlots.empty() || plan_.isoTcSlots.back() != slot)
        plan_.isoTcSlots.push_back(slot);
      setReference(plan_.isoTcSlots, at(BlockKind::isolated, n));
    });
  }

  static void setReference(const std::vector<int>& slots, BlockPlace& place) {
    const auto found = std::find(slots.begin(), slots.end(), place.first.slot);
    place.reference = static_cast<int>(found - slots.begin()) + 1;
  }

  void finishTotals() {
    const auto& channels = project_.excitation.channels;
    const auto windowOutputs = static_cast<int>(
        std::count_if(channels.begin(), channels.end(),
                      [](const ExcitationChannel& channel) { return channel.Include; }));
    plan_.totals.TotAnalogChans = divisionUp(analog_.used(), 2);
    plan_.totals.TotExcitChans = switchedUsed_;
    plan_.totals.TotCAOChans = plan_.caoOfBridges + windowOutputs;
    const int q5 = quantity(ModuleKindIndex::excitation7131);
    plan_.free.differential =
        (channelsOf7121 * quantity(ModuleKindIndex::analog7121) - analog_.used()) / 2;
    plan_.free.excitation = excitationsOf7131 * q5 - switchedUsed_;
    plan_.free.cao = analogOutputsOf7131 * q5 - plan_.totals.TotCAOChans;
    plan_.free.control = controlLinesOf7131 * q5 - controlPorts_ - controlUsed_;
    plan_.free.counters =
        channelsOf7141 * quantity(ModuleKindIndex::counter7141) - pulseChannels_ - counterPorts_;
  }

  const Project& project_;
  ChannelPlan plan_;
  Row analog_{first(ModuleKindIndex::analog7121), channelsOf7121, true, configuration().AutoChan};
  int switchedUsed_ = 0;
  int controlUsed_ = 0;
  int multiplexersPlaced_ = 0;
  int clockLine_ = 0;
  Place groupExcitation_;
  int pulseChannels_ = 0;
  int counterPorts_ = 0;
  int controlPorts_ = 0;
};

int channelsPerModule(BlockKind kind) {
  switch (kind) {
    case BlockKind::highVoltage:
      return channelsOf7127;
    case BlockKind::isolated:
      return channelsOf7128;
    case BlockKind::filter:
      return channelsOf7125;
    case BlockKind::pulse:
      return channelsOf7141;
    default:
      return channelsOf7121;
  }
}

bool hasPairs(BlockKind kind) {
  return kind != BlockKind::isolated && kind != BlockKind::filter && kind != BlockKind::pulse;
}

}  // namespace

ChannelPlan channelPlan(const Project& project) { return Planner(project).run(); }

int firstSlot(const LoggerConfiguration& configuration, ModuleKindIndex kind) {
  const auto index = static_cast<int>(kind);
  const auto firstUserKind = static_cast<int>(ModuleKindIndex::adaptor7151);
  if (index < firstUserKind) return index + 1;
  int slot = firstUserSlot;
  for (int k = firstUserKind; k < index; ++k)
    slot += std::max<int>(configuration.ModuleQty[static_cast<std::size_t>(k)], 0);
  return slot;
}

int moduleInSlot(const LoggerConfiguration& configuration, int slot) {
  if (slot < 1) return -1;
  if (slot < firstUserSlot) return slot - 1;
  int last = firstUserSlot - 1;
  for (auto k = static_cast<std::size_t>(ModuleKindIndex::adaptor7151); k < moduleKinds; ++k) {
    last += std::max<int>(configuration.ModuleQty[k], 0);
    if (slot <= last) return static_cast<int>(k);
  }
  return -1;
}

std::string_view moduleNameInSlot(const LoggerConfiguration& configuration, int slot) {
  const int kind = moduleInSlot(configuration, slot);
  if (kind < 0) return "None";
  const bool isCpu = kind == static_cast<int>(ModuleKindIndex::cpu);
  if (isCpu && isK700X(configuration)) return "7104";
  return moduleName(static_cast<ModuleKindIndex>(kind));
}

Place placeOfElement(const Project& project, const ChannelPlan& plan, BlockKind kind,
                     std::size_t number, std::size_t element) {
  const Place first = plan.of(kind, number).first;
  const MeasurementBlock& block = project.block(kind, number);
  const ChannelWidth width = hasPairs(kind) ? widthOf(kind, block) : ChannelWidth{false, 1};
  const int perModule = channelsPerModule(kind) / (width.differential ? 2 : 1);
  const int step = width.positions / (width.differential ? 2 : 1);
  const int index = first.channel - 1 + static_cast<int>(element - 1) * step;
  return {first.slot + index / perModule, index % perModule + 1};
}

Place placeOfExcitation(const Project& project, const ChannelPlan& plan, std::size_t channel) {
  const int index = plan.caoOfBridges + static_cast<int>(channel) - 1;
  return {firstSlot(project.configuration, ModuleKindIndex::excitation7131) +
              index / analogOutputsOf7131,
          index % analogOutputsOf7131 + 1};
}

Place placeOfBridgeExcitation(const Project& project, const ChannelPlan& plan, std::size_t number,
                              std::size_t element) {
  const MeasurementBlock& bridge = project.block(BlockKind::bridge, number);
  const Place first = plan.of(BlockKind::bridge, number).excitation;
  const int lines = bridge.CheckCAO ? analogOutputsOf7131 : excitationsOf7131;
  const int base = bridge.CheckCAO ? excitationsOf7131 : 0;
  const int step = (static_cast<int>(element) - 1) / std::max<int>(bridge.ExciteReps, 1);
  const int index = first.channel - base - 1 + step;
  return {first.slot + index / lines, base + index % lines + 1};
}

}  // namespace model
