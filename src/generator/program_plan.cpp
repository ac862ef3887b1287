#include "generator/program_plan.h"

#include <algorithm>

#include "generator/name_book.h"
#include "model/can_values.h"
#include "model/conditions.h"
#include "text/strings.h"

namespace generator {
namespace {

using model::BlockKind;
using text::concat;

constexpr std::string_view familyLetters = "TVFBPHIAC";
constexpr std::string_view zeroableLetters = "VFBHIA";
constexpr std::string_view calibratedLetters = "VHBAIP";
constexpr std::string_view burstLetters = "TVBHP";
constexpr int firstHistogramCode = 5;
constexpr int levelCrossingCode = 7;

bool holds(std::string_view letters, char letter) {
  return letters.find(letter) != std::string_view::npos;
}

/// Fills a program plan; each step needs those before it.
class Planning {
 public:
  explicit Planning(ProgramPlan& plan) : plan_(plan), names_(plan.notes) {}

  void run() {
    nameTables();
    planBurst();
    for (const BlockKind kind : model::allBlockKinds) planKind(kind);
    planCanItems();
    planSubscans();
    planTables();
    planFields();
    planPorts();
    planExcitations();
  }

 private:
  [[nodiscard]] const model::Project& project() const { return plan_.project; }

  std::vector<SourceBlock>& family(char letter) {
    return plan_.families[familyLetters.find(letter)];
  }

  void planBurst() {
    if (project().scan.ScanMode == 1) plan_.burstTrigger = burstTriggerText(project().scan);
  }

  void planKind(BlockKind kind) {
    const model::BlockKindInfo& info = model::infoOf(kind);
    for (std::size_t n = 1; n <= info.blockLimit; ++n)
      if (model::inUse(project(), kind, n))
        family(info.letter).push_back(sourceBlock(kind, info.letter, n));
  }

  SourceBlock sourceBlock(BlockKind kind, char letter, std::size_t number) {
    const model::MeasurementBlock& block = project().block(kind, number);
    SourceBlock source;
    source.letter = letter;
    source.number = number;
    source.block = &block;
    source.kind = kind;
    source.place = plan_.channels.of(kind, number);
    if (kind == BlockKind::filter) source.filterSlot = filterSlotOf(project(), number);
    source.fft = kind == BlockKind::filter && isFft(project(), number);
    source.reps = static_cast<std::size_t>(block.Reps);
    source.arraySize = kind == BlockKind::tcmux ? (source.reps + 7) / 8 * 8 : source.reps;
    source.multiplier = block.DefaultMult;
    source.offset = block.DefaultOffset;
    source.dataType = block.DataResolution;
    source.elements = &block.elements;
    source.processing = &block.processing;
    source.isPublic = block.Public;
    source.zeroFlag =
        holds(zeroableLetters, letter) && !source.fft ? flagNumber(block.ZeroFlag) : 0;
    source.calibrated =
        plan_.stamp.dunmoreHost && block.CalOnSite && holds(calibratedLetters, letter);
    source.units = names_.units(block.Units, source.values());
    finish(source, block.CalOnSite);
    return source;
  }

  void planCanItems() {
    for (std::size_t k = 0; k < project().can.items.size(); ++k) {
      const model::CanItem& item = project().can.items[k];
      if (!canItemInUse(project(), item)) continue;
      if (const auto complaint = complaintAboutItem(item, project().can))
        plan_.notes.push_back(concat("CAN item ", k + 1, ": ", *complaint));
      SourceBlock source;
      source.letter = 'C';
      source.number = k + 1;
      source.item = &item;
      source.reps = item.DataStyle == 1 ? 0 : static_cast<std::size_t>(item.NumVals);
      source.arraySize = source.reps;
      source.multiplier = item.Mult;
      source.offset = item.Offset;
      source.dataType = item.DataType;
      source.elements = &item.values;
      source.processing = &item.processing;
      source.isPublic = item.Public;
      source.units = names_.units(item.Units, source.values());
      finish(source, false);
      family('C').push_back(std::move(source));
    }
  }

  /// What follows from the channels of a block.
  void finish(SourceBlock& source, bool calibratedOnSite) {
    source.channels = names_.channelsOf(source);
    source.isPublic = source.isPublic || isShown(source);
    decideArrays(source, calibratedOnSite);
    source.crossing = levelCrossing(source);
    source.burst = isBurst(source);
    noteEmptyHistograms(source);
  }

  [[nodiscard]] bool isShown(const SourceBlock& source) const {
    return std::any_of(
        source.elements->begin(), source.elements->end(),
        [&](const model::Element& element) { return shownByDisplay(project(), element.Table); });
  }

  static void decideArrays(SourceBlock& source, bool calibratedOnSite) {
    const bool bridge = source.letter == 'B';
    source.multiplierArray = calibratedOnSite;
    source.offsetArray = calibratedOnSite || source.zeroed();
    source.gaugeArray = bridge && source.block->GageCode == 2;
    for (std::size_t e = 0; e < std::min(source.reps, source.elements->size()); ++e) {
      const model::Element& element = (*source.elements)[e];
      if (!element.AliasExcept) continue;
      source.multiplierArray |= element.AliasMult != source.multiplier;
      source.offsetArray |= !bridge && element.AliasOffset != source.offset;
      source.gaugeArray |= bridge && element.AliasGFactor != source.block->GageFactor;
    }
    source.gaugeArray |= bridge && calibratedOnSite;
  }

  [[nodiscard]] LevelCrossing levelCrossing(const SourceBlock& source) const {
    LevelCrossing crossing;
    if (source.fft) return crossing;
    std::size_t levels = 1;
    std::size_t tests = 1;
    for (std::size_t e = 0; e < std::min(source.reps, source.elements->size()); ++e) {
      const std::size_t before = crossing.elements.size();
      for (std::size_t t = 0; t < model::maxTables; ++t) {
        if (!project().tables[t].TableOn) continue;
        if ((((*source.elements)[e].Table[t] >> levelCrossingCode) & 1U) == 0) continue;
        if (crossing.elements.size() == before) crossing.elements.push_back(e + 1);
        const auto sizes = KGEN_COMMON::dimensionsIn((*source.processing)[t].LevelCode);
        levels = std::max(levels, sizes.first);
        tests = std::max(tests, sizes.second);
      }
    }
    takeLevels(source, crossing);
    crossing.levels.resize(std::max(levels, crossing.levels.size()));
    crossing.tests.resize(std::max(tests, crossing.tests.size()));
    return crossing;
  }

  /// A block has one set of levels: those of the lowest table that is on and stores a crossing, of
  /// a table that does not when none of those has any.
  void takeLevels(const SourceBlock& source, LevelCrossing& crossing) const {
    const auto stores = [&](std::size_t t) {
      return project().tables[t].TableOn &&
             std::any_of(source.elements->begin(), source.elements->end(),
                         [t](const model::Element& element) {
                           return ((element.Table[t] >> levelCrossingCode) & 1U) != 0;
                         });
    };
    for (const bool storing : {true, false})
      for (std::size_t t = 0; t < model::maxTables; ++t) {
        const model::TableProcessing& table = (*source.processing)[t];
        const bool tests = table.LevNumTests > 0 || !table.LevelMeasName.empty();
        if (stores(t) != storing || (table.LevNumLevels <= 0 && !(storing && tests))) continue;
        crossing.levels = table.LevelVarOne;
        crossing.tests = table.LevelVarTwo;
        crossing.secondVariable = table.LevelMeasName;
        return;
      }
  }

  [[nodiscard]] bool isBurst(const SourceBlock& source) const {
    if (plan_.burstTrigger.empty() || project().scan.BurstTrigger != 1) return false;
    if (!holds(burstLetters, source.letter)) return false;
    const std::string& variable = project().scan.TriggerMeasVar;
    for (std::size_t e = 1; e <= source.reps; ++e) {
      const std::string& alias = source.channels[e - 1].alias;
      if (!alias.empty() && text::equalsIgnoringCase(alias, variable)) return true;
      if (text::equalsIgnoringCase(source.element(e), variable)) return true;
    }
    return false;
  }

  void planSubscans() {
    for (const SourceBlock& block : family('F')) {
      const model::FilterSlot& slot = project().filterSlots[block.filterSlot - 1];
      if (block.fft || slot.FiltNoSubscan) continue;
      const model::FilterSubscan timing = filterSubscan(project(), slot);
      auto found = std::find_if(plan_.subscans.begin(), plan_.subscans.end(),
                                [&](const auto& subscan) { return subscan.timing == timing; });
      if (found == plan_.subscans.end())
        found = plan_.subscans.insert(plan_.subscans.end(), {timing, {}});
      if (found->slots.empty() || found->slots.back() != block.filterSlot)
        found->slots.push_back(block.filterSlot);
    }
  }

  /// Tables at the filter's rate follow the first voltage filter slot.
  [[nodiscard]] bool firstFilterHasSubscan() {
    for (const SourceBlock& block : family('F'))
      if (!block.fft) return !project().filterSlots[block.filterSlot - 1].FiltNoSubscan;
    return false;
  }

  /// Tables have the first choice of names: they are seen outside the program. One without a
  /// usable name gets one that is free.
  void nameTables() {
    for (std::size_t t = 0; t < model::maxTables; ++t)
      if (project().tables[t].TableOn)
        tableNames_[t] = names_.claim(project().tables[t].TableName, concat("table ", t + 1),
                                      concat("Table", t + 1));
    for (std::size_t t = 0; t < model::maxTables; ++t)
      if (project().tables[t].TableOn && tableNames_[t].empty())
        tableNames_[t] = names_.freeName(concat("Table", t + 1));
  }

  void planTables() {
    for (std::size_t t = 1; t <= model::maxTables; ++t) {
      const model::OutputTable& table = project().tables[t - 1];
      if (!table.TableOn) continue;
      plan_.tables.push_back(
          {.number = t,
           .table = &table,
           .name = tableNames_[t - 1],
           .interval = shownInterval(project(), table),
           .groups = storedGroups(project(), plan_.channels, t),
           .hasTriggerSub = hasActiveTrigger(table) || hasActiveWriteIf(table),
           .inSubscan = model::isVoltFilterRate(table.OutInt) && firstFilterHasSubscan()});
    }
  }

  /// Histograms that have no bins are not stored.
  void noteEmptyHistograms(const SourceBlock& source) {
    for (std::size_t t = 0; t < model::maxTables; ++t)
      for (int code = firstHistogramCode; code <= levelCrossingCode && !source.fft; ++code) {
        const model::TableProcessing& texts = (*source.processing)[t];
        const auto selects = [&](const model::Element& e) {
          return ((e.Table[t] >> code) & 1U) != 0;
        };
        if (!project().tables[t].TableOn ||
            std::none_of(source.elements->begin(), source.elements->end(), selects) ||
            KGEN_COMMON::ValuesPerOutput(true, code, texts.HistogramCode, texts.RainHistoCode,
                                         texts.LevelCode) > 0)
          continue;
        plan_.notes.push_back(concat(source.values(), ": a histogram of table ", t + 1,
                                     " has no bins and is left out; set its size"));
      }
  }

  void planFields() {
    for (std::size_t f = 0; f < project().calculated.fields.size(); ++f) {
      const model::CalculatedField& field = project().calculated.fields[f];
      const std::string fallback = concat("CalcField", f + 1);
      const std::string name =
          names_.claim(field.CalcName, concat("calculated field ", f + 1), fallback);
      plan_.fields.push_back(
          {.number = f + 1,
           .field = &field,
           .name = name.empty() ? fallback : name,
           .units = names_.units(field.CalcUnits, concat("calculated field ", f + 1)),
           .average = field.CalcType == 1 ? ++plan_.runningAverages : 0,
           .isPublic = field.Public || shownByDisplay(project(), field.CalcField)});
    }
  }

  void planPorts() {
    const auto& groups = project().ports.groups;
    for (std::size_t p = 0; p < std::min(groups.size(), plan_.channels.portGroups.size()); ++p) {
      const auto& ports = groups[p].ports;
      if (std::none_of(ports.begin(), ports.end(), [](const auto& port) { return port.Include; }))
        continue;
      const model::PortGroupPlace place = plan_.channels.portGroups[p];
      if (groups[p].ReadMode && !place.input) {
        plan_.notes.push_back(concat("port group ", p + 1, ": a 7131 can't read its ports; set ",
                                     "the group to output or use a 7141/42 module"));
        continue;
      }
      plan_.ports.push_back(
          {p + 1, &groups[p], place, groups[p].ReadMode, portVariable(groups[p].ReadMode, place)});
    }
  }

  /// The first module that needs a name has it bare; others add their slot.
  [[nodiscard]] std::string portVariable(bool reads, const model::PortGroupPlace& place) const {
    const std::string bare = concat(reads ? "ReadPort" : "WritPort", place.upper ? "U" : "L");
    const bool taken =
        std::any_of(plan_.ports.begin(), plan_.ports.end(),
                    [&](const PlannedPorts& ports) { return ports.variable == bare; });
    return taken ? concat(bare, place.slot) : bare;
  }

  void planExcitations() {
    for (std::size_t n = 1; n <= project().excitation.channels.size(); ++n) {
      const model::ExcitationChannel& channel = project().excitation.channels[n - 1];
      if (!channel.Include) continue;
      if (plan_.channels.caoOfBridges + static_cast<int>(n) > analogOutputs()) {
        plan_.notes.push_back(concat("excitation channel ", n, ": the logger has only ",
                                     analogOutputs(), " analog outputs, bridges take the first ",
                                     plan_.channels.caoOfBridges, "; add a 7131 or leave it out"));
        continue;
      }
      const model::Place place = placeOfExcitation(project(), plan_.channels, n);
      const bool dynamic = channel.DynamicStatic == 1;
      plan_.excitations.push_back(
          {&channel, place, dynamic ? concat("Excite_", place.slot, "_", place.channel) : ""});
    }
  }

  [[nodiscard]] int analogOutputs() const {
    return 4 * project().configuration.quantity(model::ModuleKindIndex::excitation7131);
  }

  ProgramPlan& plan_;
  NameBook names_;
  std::array<std::string, model::maxTables> tableNames_;
};

}  // namespace

int flagNumber(int flag) { return flag >= 1 && flag <= 8 ? flag : 0; }

ProgramPlan::ProgramPlan(const model::Project& forProject, const model::DocumentStamp& withStamp)
    : project(forProject),
      stamp(withStamp),
      channels(model::channelPlan(forProject)),
      isolated(timing::isolatedPlans(forProject)) {
  Planning(*this).run();
}

const std::vector<SourceBlock>& ProgramPlan::of(char letter) const {
  return families[familyLetters.find(letter)];
}

const PlannedSubscan* ProgramPlan::subscanOf(std::size_t filterSlot) const {
  for (const PlannedSubscan& subscan : subscans)
    if (std::find(subscan.slots.begin(), subscan.slots.end(), filterSlot) != subscan.slots.end())
      return &subscan;
  return nullptr;
}

std::vector<int> ProgramPlan::zeroFlags() const {
  std::vector<int> flags;
  forBlocks(*this, zeroableLetters, [&](const SourceBlock& block) {
    if (block.zeroed()) flags.push_back(block.zeroFlag);
  });
  std::sort(flags.begin(), flags.end());
  flags.erase(std::unique(flags.begin(), flags.end()), flags.end());
  return flags;
}

bool ProgramPlan::anyZeroed() const { return !zeroFlags().empty(); }

bool ProgramPlan::anyCalibrated() const {
  bool any = false;
  forBlocks(*this, calibratedLetters, [&](const SourceBlock& block) { any |= block.calibrated; });
  return any;
}

bool ProgramPlan::measuresBattery(bool current) const {
  const auto option =
      current ? model::PowerOption::batteryCurrent : model::PowerOption::batteryVolts;
  if (project.configuration.monitors(option)) return true;
  const model::TableMasks& masks = project.powerOut.sets[current ? 1 : 0].Table;
  for (const PlannedTable& table : tables)
    if (masks[table.number - 1] != 0) return true;
  const auto expressions = model::allExpressions(project);
  return std::any_of(expressions.begin(), expressions.end(), [&](const std::string& expression) {
    return text::containsIgnoringCase(expression, current ? "BattCurr" : "BattVolt");
  });
}

bool ProgramPlan::burstsWholeScan() const {
  if (burstTrigger.empty()) return false;
  bool any = false;
  forBlocks(*this, burstLetters, [&](const SourceBlock& block) { any |= block.burst; });
  return !any;
}

}  // namespace generator
