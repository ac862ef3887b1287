#include "support/random_project.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "model/channel_plan.h"
#include "model/time_units.h"
#include "text/strings.h"

namespace support {
namespace {

using model::BlockKind;
using model::Condition;
using model::ModuleKindIndex;
using text::concat;

constexpr BlockKind zeroable[] = {BlockKind::voltage,     BlockKind::bridge,   BlockKind::tcmux,
                                  BlockKind::highVoltage, BlockKind::isolated, BlockKind::filter};

bool isZeroable(BlockKind kind) {
  return std::find(std::begin(zeroable), std::end(zeroable), kind) != std::end(zeroable);
}

/// A variable that conditions can test: "Press17" or "VBlk1(3)", with array and index apart.
struct Variable {
  std::string name, array;
  std::int16_t index = 0;
};

class Maker {
 public:
  Maker(std::mt19937& random, const RandomOptions& options) : random_(random), options_(options) {}

  model::Project run() {
    KGEN_COMMON::SetAllDefaults(project_);
    makeConfiguration();
    makeScan();
    for (const BlockKind kind : model::allBlockKinds) makeBlocks(kind);
    makeCan();
    fitLists(project_);
    trimToHardware();
    collectVariables();
    makeReferences();
    makePorts();
    makeExcitation();
    makeCalculatedFields();
    makeTables();
    makeLevelVariables();
    makeFlags();
    makePower();
    makeCalculators();
    dropSettingsWithoutBlocks();
    fitLists(project_);
    return std::move(project_);
  }

 private:
  // Dice.

  int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  std::int16_t small(int low, int high) { return static_cast<std::int16_t>(between(low, high)); }
  bool chance(int percent) { return between(1, 100) <= percent; }
  bool likely() { return chance(options_.fullness); }
  double decimal(int low, int high) { return between(low * 100, high * 100) / 100.0; }
  template <class List>
  auto oneOf(const List& list) {
    return list[static_cast<std::size_t>(between(0, static_cast<int>(std::size(list)) - 1))];
  }
  std::string word(std::initializer_list<const char*> words) {
    return *(words.begin() + between(0, static_cast<int>(words.size()) - 1));
  }

  std::string freshName() {
    return concat(word({"Press", "Temp", "Flow", "Load_", "Axle", "Strain", "q", "Zone_x"}),
                  ++names_);
  }
  std::string units() {
    return word({"psi", "Deg_F", "m/s^2", "kg", "Hz", "uStrain", "%", "l/min"});
  }
  std::string dataType() { return word({"FP2", "IEEE4"}); }

  /// Processings up to a code, usually none.
  std::uint8_t mask(int lastCode) {
    if (!chance(30)) return 0;
    return static_cast<std::uint8_t>(between(1, (1 << (lastCode + 1)) - 1) & between(0, 255));
  }
  std::string histogramCode() {
    return concat(between(1, 30), ",", between(-50, 0), ",", between(1, 100), ",", between(0, 1));
  }
  std::string rainCode() {
    return concat(between(1, 10), ",", between(1, 20), ",", between(-50, 0), ",", between(1, 100),
                  ",", decimal(0, 5), ",", between(0, 1));
  }

  // The logger.

  void makeConfiguration() {
    auto& c = project_.configuration;
    c.Operator = word({"Name", "A. Smith, test = 4", ""});
    c.IDNumber = word({"Number", "4711"});
    c.quantity(ModuleKindIndex::cpu) = options_.k700x ? 2 : 1;
    for (auto kind = static_cast<std::size_t>(ModuleKindIndex::adaptor7151);
         kind < model::moduleKinds; ++kind)
      c.ModuleQty[kind] = chance(70) ? 1 : 0;
    c.quantity(ModuleKindIndex::analog7121) = small(1, 3);
    c.quantity(ModuleKindIndex::excitation7131) = small(0, 2);
    if (chance(30)) ++c.quantity(ModuleKindIndex::counter7141);
    if (chance(30)) ++c.quantity(ModuleKindIndex::filter7125);
    c.CanBusQty = likely() ? 1 : 0;
    c.SizeCardA = chance(50) ? 512 : 0;
    c.AutoChan = chance(90);
    for (std::int16_t& option : c.TcConfigOpts) option = small(0, 1);
    c.TcConfigOpts[2] = static_cast<std::int16_t>(10 * between(0, 20));
  }

  void makeScan() {
    struct Interval {
      double time;
      std::int16_t units;
    };
    static constexpr Interval intervals[] = {{1, 2},    {100, 1}, {500, 1}, {10, 2},
                                             {5000, 0}, {1, 3},   {40, 2},  {1, 4}};
    const Interval interval = oneOf(intervals);
    project_.scan.ExecutionTime = interval.time;
    project_.scan.ExecTimeUnits = interval.units;
    project_.scan.BufferScans = between(0, 200);
    project_.scan.FlagScan = chance(30) ? small(1, 8) : std::int16_t{0};
    project_.scan.ScanBuffer = chance(20);
    project_.scan.ScanBufferSize = small(0, 100);
    project_.scan.PamBuffer = small(0, 2);
  }

  // Blocks.

  void makeBlocks(BlockKind kind) {
    const int modules = project_.configuration.quantity(infoOf(kind).module);
    if (modules == 0 || !likely()) return;
    if (kind == BlockKind::filter) return makeFilterBlocks(modules);
    const int count = between(1, chance(20) ? 5 : 2);
    for (int n = 1; n <= count; ++n)
      if (n == count || chance(85)) makeBlock(kind, static_cast<std::size_t>(n));
    project_.set(kind).BlockCount = static_cast<std::int16_t>(count);
    if (kind == BlockKind::isolated) makeIsolatedSetup();
  }

  void makeIsolatedSetup() {
    project_.isolated.Integration = 96 * between(1, 20);
    project_.isolated.ReverseMes = chance(50);
    project_.isolated.ScansPerSubScan = small(1, 5);
  }

  void makeFilterBlocks(int modules) {
    std::size_t next = 1;
    for (int s = 0; s < modules && next <= model::maxBlocks; ++s) {
      model::FilterSlot& slot = project_.filterSlots[static_cast<std::size_t>(s)];
      makeFilterSlot(slot);
      slot.BlockCount = small(1, std::min(2, static_cast<int>(model::maxBlocks - next) + 1));
      for (int b = 0; b < slot.BlockCount; ++b) {
        makeBlock(BlockKind::filter, next++);
        if (slot.FFTModule) limitSpectrum(project_.block(BlockKind::filter, next - 1), slot);
      }
    }
  }

  void makeFilterSlot(model::FilterSlot& slot) {
    slot.OverSample = small(0, 4);
    slot.FFTModule = chance(40);
    slot.FFTType = options_.k700x ? small(0, 1) : std::int16_t{0};
    slot.FFTLength = static_cast<std::int16_t>(32 << between(0, 8));
    slot.FiltFFTSampleRate = 1000 * between(1, 20);
    static constexpr int rates[] = {10, 20, 50, 100, 200, 500};
    std::vector<int> whole;  // rates that measure a whole number of times in a scan
    for (const int rate : rates)
      if (std::fmod(scanMicros(project_), 1e6 / rate) == 0) whole.push_back(rate);
    slot.FiltNoSubscan = whole.empty() || chance(20);
    slot.FiltFreqNum = whole.empty() ? 100 : oneOf(whole);
  }

  void limitSpectrum(model::MeasurementBlock& block, const model::FilterSlot& slot) {
    block.TSWindow = small(0, 3);
    block.SpectOption = small(0, 4);
    block.FRef = between(0, 100);
    block.SBin = small(0, 3);
    block.ILow = small(1, 4);
    block.IHigh = small(4, std::min(slot.FFTLength / 2, 512));
  }

  void makeBlock(BlockKind kind, std::size_t number) {
    model::MeasurementBlock& block = project_.block(kind, number);
    const bool spans = infoOf(kind).module == ModuleKindIndex::analog7121;
    block.Reps = small(1, spans && chance(10) ? 20 : 3);
    block.Public = chance(50);
    block.DataResolution = dataType();
    block.Units = units();
    block.DefaultMult = chance(50) ? 1 : decimal(1, 20);
    block.DefaultOffset = chance(50) ? 0 : decimal(-20, 20);
    if (kind != BlockKind::filter) block.BlockTime = between(0, 5000) / 2.0;
    makeRange(kind, block);
    if (kind != BlockKind::thermocouple) block.CalOnSite = chance(25);
    if (isZeroable(kind) && chance(30)) block.ZeroFlag = small(1, 8);
    makeTiming(kind, block);
    makeOwn(kind, block);
    makeProcessing(block);
    fitLists(project_);
    for (model::Element& element : block.elements) makeElement(kind, block, element);
  }

  void makeRange(BlockKind kind, model::MeasurementBlock& block) {
    const auto& ranges = rangesOf(kind);
    if (ranges.empty()) return;
    const bool temperature = kind == BlockKind::thermocouple || kind == BlockKind::tcmux;
    block.Range = temperature ? ranges[static_cast<std::size_t>(between(0, 1))] : oneOf(ranges);
    block.RangeNo = rangeCode(kind, block.Range);
  }

  void makeTiming(BlockKind kind, model::MeasurementBlock& block) {
    if (kind == BlockKind::pulse || kind == BlockKind::filter || kind == BlockKind::isolated)
      return;
    block.IntegrationRange = small(0, 2);
    const int times[] = {20000, 16670, 10 * between(1, 100)};
    block.Integration = times[block.IntegrationRange];
    block.SettleTime = 10 * between(0, 100);
    block.ReverseMes = chance(50);
    if (kind != BlockKind::tcmux && chance(50)) block.MeasType = "SE";
    if (kind != BlockKind::highVoltage) block.OpenSensDetect = chance(50);
  }

  void makeOwn(BlockKind kind, model::MeasurementBlock& block) {
    switch (kind) {
      case BlockKind::thermocouple:
        block.TypeNo = small(0, 7);
        break;
      case BlockKind::tcmux:
        block.TypeNo = small(0, 7);
        block.Reps = small(1, 40);
        block.TCMUXVolts = chance(20);
        break;
      case BlockKind::bridge:
        return makeBridge(block);
      case BlockKind::isolated:
        block.InputType = small(0, 1);
        block.TCType = small(0, 7);
        block.OpenSensDetect = chance(30);
        break;
      case BlockKind::pulse:
        block.Meas = word({"HiLev", "LoLev", "Switch"});
        block.Opt = chance(50) ? small(0, 1) : small(2, 1000);
        break;
      case BlockKind::filter:
        block.Excite = between(0, 6);
        break;
      default:
        break;
    }
  }

  void makeBridge(model::MeasurementBlock& block) {
    block.Style = small(0, 7);
    block.Type = model::bridgeInstruction(block.Style);
    block.MeasType = block.Style == 2 || block.Style == 3 ? "SE" : "Diff";
    block.ExciteReps = small(1, block.Reps);
    block.Excite = between(0, 50) * 100;
    block.CheckCAO = chance(30);
    block.RevExcite = chance(50);
    block.RevOutput = chance(50);
    block.GageFactor = decimal(1, 3);
    block.GageCode = small(1, 2);
  }

  /// Level crossing is set up once for a block and filed for every table.
  void makeProcessing(model::MeasurementBlock& block) {
    const int levels = between(1, 5);
    const int tests = chance(50) ? 1 : between(2, 4);
    for (model::TableProcessing& table : block.processing) {
      table.HistogramCode = histogramCode();
      table.RainHistoCode = rainCode();
      table.LevelCode = concat(levels, ",", tests, ",0.5,", between(0, 1));
      table.LevNumLevels = static_cast<std::int16_t>(levels);
      table.LevNumTests = static_cast<std::int16_t>(tests);
      table.NumDims = tests > 1 ? 2 : 1;
      for (int k = 0; k < levels; ++k) table.LevelVarOne.push_back(10 * k + 0.5);
      for (int k = 0; k < tests; ++k) table.LevelVarTwo.push_back(5 * k);
    }
  }

  void makeElement(BlockKind kind, const model::MeasurementBlock& block, model::Element& element) {
    if (chance(30)) element.AliasName = freshName();
    if (chance(30)) element.AliasUnits = units();
    element.AliasExcept = chance(25);
    element.AliasMult = element.AliasExcept ? decimal(-3, 3) : block.DefaultMult;
    if (kind == BlockKind::bridge)
      element.AliasGFactor = element.AliasExcept ? decimal(1, 3) : 2;
    else
      element.AliasOffset = element.AliasExcept ? decimal(-9, 9) : 0;
    for (std::uint8_t& table : element.Table) table = mask(7);
  }

  // CAN.

  void makeCan() {
    if (project_.configuration.CanBusQty == 0 || !likely()) return;
    model::CanSetup& can = project_.can;
    can.CanBusEnabled = chance(50);
    can.CanDataIDType = small(0, 1);
    can.CanEnableTransmit = chance(50);
    can.CanNaNOldData = chance(50);
    can.CanCount = small(1, 4);
    can.items.resize(static_cast<std::size_t>(can.CanCount));
    for (model::CanItem& item : can.items) makeCanItem(item);
  }

  void makeCanItem(model::CanItem& item) {
    item.Name = concat("Item ", ++names_);
    item.Description = word({"", "engine speed", "oil = hot"});
    item.DataStyle = small(0, 2);
    item.Enabled = chance(85);
    item.ItemMessageType = item.DataStyle == 1 ? small(7, 12) : small(1, 4);
    item.NumBits = small(1, 16);
    item.NumVals = small(1, 64 / item.NumBits > 4 ? 4 : 64 / item.NumBits);
    item.StartBit = small(1, 65 - item.NumBits * item.NumVals);
    const int largest = project_.can.CanDataIDType == 0 ? 2047 : 536870911;
    item.DataId = concat(between(0, largest));
    item.TxDataId = concat(between(0, largest));
    item.TxDataFrame = word({"&H0201000000000000", "&HFFFFFFFFFFFFFFFF"});
    item.RxDataMatch = word({"&HXXXXXXXXXXXXXXXX", "&HXX41XXXXXXXXXXXX"});
    item.RxDataMask = word({"0", "&HFFFFFFFFFFFFFFFF"});
    item.RxTimeout = between(0, 500);
    item.Mult = decimal(-2, 2);
    item.Offset = decimal(-40, 40);
    item.Units = units();
    item.DataType = dataType();
    item.Public = chance(50);
    item.values.resize(static_cast<std::size_t>(item.NumVals));
    for (model::Element& value : item.values) {
      if (chance(40)) value.AliasName = freshName();
      if (chance(40)) value.AliasUnits = units();
      value.AliasExcept = chance(20);
      if (value.AliasExcept) value.AliasMult = decimal(-3, 3);
      if (value.AliasExcept) value.AliasOffset = decimal(-3, 3);
      for (std::uint8_t& table : value.Table) table = mask(4);
    }
  }

  // What fits.

  void trimToHardware() {
    while (!channelPlan(project_).problems.empty()) {
      const BlockKind kind = oneOf(model::allBlockKinds);
      if (kind != BlockKind::filter)
        dropLastBlock(kind);
      else if (chance(5))
        dropFilterBlocks();
    }
  }

  void dropLastBlock(BlockKind kind) {
    model::BlockSet& set = project_.set(kind);
    std::size_t last = blockCount(project_, kind);
    if (last == 0) return;
    set.blocks[last - 1] = model::defaultBlock(kind);
    while (last > 0 && set.blocks[last - 1].Reps == 0) --last;
    set.BlockCount = static_cast<std::int16_t>(last);
  }

  /// The file holds what a kind shares only beside its blocks.
  void dropSettingsWithoutBlocks() {
    if (blockCount(project_, BlockKind::isolated) == 0) project_.isolated = {};
    if (blockCount(project_, BlockKind::filter) == 0) project_.filterSlots = {};
  }

  void dropFilterBlocks() {
    for (model::FilterSlot& slot : project_.filterSlots) slot.BlockCount = 0;
    project_.set(BlockKind::filter).blocks.fill(model::defaultBlock(BlockKind::filter));
  }

  // Variables.

  void collectVariables() {
    for (const BlockKind kind : model::allBlockKinds)
      for (std::size_t n = 1; n <= infoOf(kind).blockLimit; ++n)
        if (inUse(project_, kind, n) && !(kind == BlockKind::filter && isFft(project_, n)))
          addVariables(
              concat(kind == BlockKind::filter ? "FV" : std::string(1, infoOf(kind).letter), "Blk",
                     n),
              project_.block(kind, n).elements);
    for (std::size_t k = 0; k < project_.can.items.size(); ++k) {
      const model::CanItem& item = project_.can.items[k];
      if (canItemInUse(project_, item) && item.DataStyle != 1)
        addVariables(concat("CBlk", k + 1), item.values);
    }
  }

  void addVariables(const std::string& array, const std::vector<model::Element>& elements) {
    for (std::size_t e = 0; e < elements.size(); ++e) {
      const std::string& alias = elements[e].AliasName;
      const auto index = static_cast<std::int16_t>(e + 1);
      variables_.push_back({alias.empty() ? concat(array, "(", index, ")") : alias, array, index});
    }
  }

  /// A name as the windows offer it.
  std::string variable() {
    if (variables_.empty() || chance(10)) return "BattVolt";
    return oneOf(variables_).name;
  }

  /// A condition whose variable and index are apart only where the file keeps them so.
  Condition condition(bool keepsIndex) {
    Condition condition;
    condition.Compare = small(0, 5);
    condition.Value = decimal(-100, 100);
    const int form = between(1, 10);
    if (form == 1) {
      condition.Expression =
          concat(variable(), " > ", between(1, 9), " Or Flag(", between(1, 8), ")");
    } else if (form == 2) {
      condition.MeasVar = concat("Flag(", between(1, 8), ")");
      condition.Compare = 4;
      condition.Value = chance(50) ? -1 : 0;
    } else if (keepsIndex && form <= 5 && !variables_.empty()) {
      const Variable chosen = oneOf(variables_);
      condition.MeasVar = chosen.array;
      condition.VarIdx = chosen.index;
      if (form == 3) condition.Varb = variable();
    } else {
      condition.MeasVar = variable();
    }
    return condition;
  }

  // Ports, excitation, flags.

  std::set<std::pair<int, int>> usedDigitalChannels() {
    std::set<std::pair<int, int>> used;
    const model::ChannelPlan plan = channelPlan(project_);
    for (std::size_t n = 1; n <= model::maxPulseBlocks; ++n)
      for (int e = 0;
           inUse(project_, BlockKind::pulse, n) && e < project_.block(BlockKind::pulse, n).Reps;
           ++e)
        used.insert({plan.of(BlockKind::pulse, n).first.slot,
                     plan.of(BlockKind::pulse, n).first.channel + e});
    for (std::size_t n = 1; n <= model::maxBlocks; ++n)
      for (const model::MultiplexerPlace& place : plan.of(BlockKind::tcmux, n).multiplexers) {
        used.insert({place.controlSlot, place.clockLine});
        used.insert({place.controlSlot, place.resetLine});
      }
    return used;
  }

  void makePorts() {
    const auto used = usedDigitalChannels();
    const auto places = channelPlan(project_).portGroups;
    if (places.empty() || !likely()) return;
    bool included = false;
    for (std::size_t p = 0; p < places.size(); ++p) {
      model::PortGroup& group = project_.ports.groups[p];
      group.ReadMode = places[p].input && chance(60);
      for (std::size_t n = 0; n < model::portsPerGroup; ++n) {
        const int channel = static_cast<int>(n) + (places[p].upper ? 9 : 1);
        if (used.count({places[p].slot, channel}) == 0 && chance(50)) {
          makePort(group, group.ports[n], n);
          included = true;
        }
      }
    }
    if (!included) project_.ports.groups.assign(places.size(), {});
    if (included) makePortGroups();
  }

  void makePort(model::PortGroup& group, model::Port& port, std::size_t index) {
    port.Include = true;
    if (group.ReadMode) {
      port.BinaryMask = chance(50) ? static_cast<std::int16_t>(1 << index) : std::int16_t{0};
      return;
    }
    port.Polarity = small(0, 1);
    for (Condition& one : port.conditions)
      if (chance(40)) one = condition(false);
  }

  void makePortGroups() {
    project_.ports.CodeType = small(0, 1);
    for (model::PortGroup& group : project_.ports.groups) {
      group.Public = chance(50);
      group.ByteMode = chance(50);
      if (!group.ReadMode) continue;
      group.HistogramCode = histogramCode();
      for (std::uint8_t& table : group.Table) table = mask(5);
    }
  }

  void makeExcitation() {
    const model::ChannelPlan plan = channelPlan(project_);
    const int last =
        4 * project_.configuration.quantity(ModuleKindIndex::excitation7131) - plan.caoOfBridges;
    project_.excitation.ExcitePublic = chance(50);
    for (int n = 0; n < last; ++n) {
      model::ExcitationChannel& channel = project_.excitation.channels[static_cast<std::size_t>(n)];
      channel.Include = chance(40);
      channel.DynamicStatic = small(0, 1);
      channel.State1 = between(-5000, 5000);
      channel.State2 = between(-5000, 5000);
      channel.Delay = chance(50) ? 0 : 100 * between(1, 100);
      for (Condition& one : channel.conditions) one = condition(false);
    }
  }

  void makeFlags() {
    if (!likely()) return;
    for (model::FlagControl& flag : project_.flags) {
      flag.FlagInclude = chance(40);
      flag.FlagOn = chance(50);
      for (Condition& state : flag.states)
        if (chance(80)) state = condition(false);
    }
    const bool used = std::any_of(project_.flags.begin(), project_.flags.end(),
                                  [](const auto& flag) { return flag.FlagInclude; });
    if (!used) project_.flags = {};
  }

  // Tables and what they store.

  void makeReferences() {
    if (blockCount(project_, BlockKind::tcmux) > 0) makeReference(project_.tcmuxReference, true);
    if (blockCount(project_, BlockKind::thermocouple) > 0)
      makeReference(project_.tcReference, false);
    if (blockCount(project_, BlockKind::isolated) > 0) makeReference(project_.isoReference, true);
  }

  void makeReference(model::ReferenceTemperature& reference, bool histograms) {
    reference.DataResolution = dataType();
    reference.Public = chance(50);
    for (std::size_t t = 0; t < model::maxTables; ++t) {
      reference.Table[t] = mask(histograms ? 6 : 4);
      if (!histograms) continue;
      reference.HistogramCode[t] = histogramCode();
      reference.RainCode[t] = rainCode();
    }
  }

  void makeCalculatedFields() {
    if (!likely()) return;
    auto& calculated = project_.calculated;
    calculated.CalcFieldCount = small(1, 4);
    calculated.fields.resize(static_cast<std::size_t>(calculated.CalcFieldCount));
    for (model::CalculatedField& field : calculated.fields) {
      field.Public = chance(50);
      field.DataResolution = dataType();
      for (std::uint8_t& table : field.CalcField) table = mask(4);
      field.CalcName = freshName();
      field.CalcUnits = chance(50) ? units() : "";
      field.CalcType = small(0, 1);
      field.CalcExpress =
          field.CalcType == 1 ? variable() : concat("Sqr(", variable(), ")*2 + ", decimal(0, 9));
      field.CalcAvg = field.CalcType == 1 ? small(2, 50) : std::int16_t{0};
    }
  }

  void makeTables() {
    project_.QV40 = small(0, 8);
    for (std::size_t t = 0; t < model::maxTables; ++t) makeTable(project_.tables[t], t);
    for (model::PowerOutSet& set : project_.powerOut.sets) {
      set.Public = chance(50);
      set.DataResolution = dataType();
      for (std::size_t t = 0; t < model::maxTables; ++t)
        if (project_.tables[t].TableOn) set.Table[t] = mask(6);
    }
    for (std::size_t t = 0; t < model::maxTables; ++t) {
      project_.powerOut.HistogramCode[t] = histogramCode();
      project_.powerOut.RainHistoCode[t] = rainCode();
    }
  }

  void makeTable(model::OutputTable& table, std::size_t index) {
    table.TableOn = likely();
    table.OutInt = concat(between(0, 60));
    table.OutIntUnits = small(0, 5);
    if (chance(40)) table.TableName = concat(word({"Ev", "Fast", "slow_"}), index + 1);
    if (chance(40) && model::voltFilterMicros(project_) > 0) table.OutInt = "VFilt";
    if (chance(30) && model::fftFilterMicros(project_) > 0) table.OutInt = "FFilt";
    table.Buffer = between(-1, 100000);
    table.AutoSize = chance(50);
    table.SyncTable = chance(20);
    table.FillStop = chance(30);
    table.TableLocation = small(1, project_.configuration.SizeCardA > 0 ? 3 : 2);
    table.PamCard = small(0, 1);
    table.CalcTime = chance(70);
    table.FlagTable = chance(25) ? small(1, 8) : std::int16_t{0};
    table.FlagMark = chance(25) ? small(1, 8) : std::int16_t{0};
    table.FlagFull = chance(25) ? small(1, 8) : std::int16_t{0};
    if (chance(35)) makeTrigger(table);
    if (chance(35)) makeWriteIf(table);
  }

  void makeTrigger(model::OutputTable& table) {
    table.TrigTable = small(1, 3);
    table.TrigTabStop = small(0, 2);
    table.DataEventCode = small(0, 2);
    table.PreTriggerScans = between(0, 100);
    table.AftTriggerScans = between(0, 100);
    table.SingleTrigger = chance(30);
    table.DisableTrigger = chance(15);
    for (int trigger = 0; trigger < 2; ++trigger)
      for (int c = 1; c <= (trigger == 0 ? table.TrigTable : table.TrigTabStop); ++c) {
        table.conditions.trigger(trigger, c) = condition(true);
        table.conditions.TriggerLogic(trigger, c, word({"And", "Or"}));
      }
  }

  void makeWriteIf(model::OutputTable& table) {
    table.WriteIf = small(1, 3);
    table.DisableWriteIf = chance(15);
    for (int c = 1; c <= table.WriteIf; ++c) table.conditions.writeIf(c) = condition(true);
    if (table.WriteIf == 3) table.GroupWriteIf = word({"", "1 And (2 Or 3)", "Not 1 Or 2 And 3"});
  }

  void makeLevelVariables() {
    for (const BlockKind kind : model::allBlockKinds)
      for (std::size_t n = 1; n <= model::maxBlocks; ++n) {
        model::MeasurementBlock& block = project_.block(kind, n);
        if (block.Reps == 0) continue;
        const std::string second = block.processing[0].NumDims > 1 ? variable() : "";
        for (model::TableProcessing& table : block.processing) table.LevelMeasName = second;
      }
  }

  // Power and the rest.

  void makePower() {
    auto& c = project_.configuration;
    for (bool& option : c.MonitorPower) option = chance(50);
    c.EnablePowerOff = chance(50);
    c.PowerOffMeasVar = c.EnablePowerOff ? variable() : "";
    c.PowerOffCompare = small(0, 3);
    c.PowerOffValue = decimal(0, 20);
    c.PowerOffTime = between(0, 99);
    c.PowerOffPOTime = between(0, 99);
    c.PowerOffMins = small(2, 5);
    c.PowerOnMins = small(2, 5);
    c.PowerOffLine = "";
    c.RemainOff = chance(30);
    c.RemainPOOff = chance(30);
    c.DefaultBattVolt = chance(50);
    c.BattTripVolts = c.DefaultBattVolt ? 11.5 : between(105, 140) / 10.0;
    c.LowBattRetry = chance(50);
    c.RetryInterval = between(0, 99);
    c.BattRetryMins = chance(50);
    c.EnableTime = chance(50);
    c.EnableOnTime = chance(50);
    c.TimeOffHourShow = c.TimeOffWkDayShow = chance(70);
    c.TimeOffHour = small(0, 23);
    c.TimeOffWkDay = small(1, 7);
    c.TimeOnYear = small(2000, 2099);
    makeStatusLines();
    if (chance(30)) makeBurst();
  }

  void makeStatusLines() {
    auto& c = project_.configuration;
    c.StatusMonCount = small(0, 3);
    for (int i = 0; i < c.StatusMonCount; ++i)
      c.Status.push_back({"BattVolt", word({" >", " >=", " <", " <=", " <>"}),
                          concat(decimal(0, 20)), concat("Flag(", between(1, 8), ") = True")});
  }

  void makeBurst() {
    project_.scan.ScanMode = 1;
    project_.scan.BurstTrigger = small(0, 2);
    project_.scan.PostTriggerScans = between(1, 1000);
    project_.scan.TriggerValue = decimal(0, 10);
    project_.scan.TriggerMeasVar = variable();
    if (project_.scan.BurstTrigger == 2) project_.scan.TriggerMeasVar = "Flag(2)";
  }

  void makeCalculators() {
    project_.calculators.speed.RevSpeed = "12.5";
    project_.calculators.speed.GearRatio = {"3.42", "2.1"};
    project_.calculators.pot.Units = "mm";
    project_.calculators.flow.Pulses = small(0, 4);
  }

  std::mt19937& random_;
  RandomOptions options_;
  model::Project project_;
  std::vector<Variable> variables_;
  int names_ = 0;
};

}  // namespace

model::Project randomProject(std::mt19937& random, const RandomOptions& options) {
  return Maker(random, options).run();
}

}  // namespace support
