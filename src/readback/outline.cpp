#include "readback/outline.h"

#include <algorithm>
#include <unordered_set>

#include "model/conditions.h"
#include "model/names.h"
#include "projectfile/rows.h"

namespace readback {
namespace {

using model::BlockKind;
using text::concat;

constexpr unsigned levelCrossing = 7;

bool isOneOf(char letter, std::string_view letters) {
  return letters.find(letter) != std::string_view::npos;
}

bool stores(const model::Element& element, std::size_t table) {
  return ((element.Table[table] >> levelCrossing) & 1U) != 0;
}

/// Names in the order in which programs give them away; each only once.
class NameGiver {
 public:
  std::string take(std::string_view name) {
    const bool usable =
        text::isName(name) && !model::isReservedWord(name) && !model::isGeneratedName(name);
    return usable && taken_.insert(text::lower(name)).second ? std::string(name) : std::string();
  }

  std::string takeLike(const std::string& name) {
    std::string candidate = name;
    for (int n = 2; !taken_.insert(text::lower(candidate)).second; ++n)
      candidate = concat(name, "_", n);
    return candidate;
  }

 private:
  std::unordered_set<std::string> taken_;
};

/// Units that hold a blank, a quote or a bracket are no word of a program.
std::string usableUnits(std::string_view units) {
  const bool usable = std::all_of(units.begin(), units.end(), [](char c) {
    return c > ' ' && c < 0x7F && std::string_view("\"'[]").find(c) == std::string_view::npos;
  });
  return usable ? std::string(units) : std::string();
}

class Outliner {
 public:
  explicit Outliner(Outline& outline) : outline_(outline), project_(outline.project) {}

  void run() {
    if (project_.scan.ScanMode == 1) outline_.burstTrigger = burstTriggerText(project_.scan);
    nameTables();
    for (const BlockKind kind : model::allBlockKinds)
      for (std::size_t n = 1; n <= model::infoOf(kind).blockLimit; ++n)
        if (model::inUse(project_, kind, n)) addBlock(kind, n);
    for (std::size_t k = 0; k < project_.can.items.size(); ++k)
      if (canItemInUse(project_, project_.can.items[k])) addItem(k);
    addSubscans();
    addTables();
    addFields();
    addPorts();
    addOutputs();
  }

 private:
  void nameTables() {
    for (std::size_t t = 0; t < model::maxTables; ++t)
      if (project_.tables[t].TableOn) tableNames_[t] = names_.take(project_.tables[t].TableName);
    for (std::size_t t = 0; t < model::maxTables; ++t)
      if (project_.tables[t].TableOn && tableNames_[t].empty())
        tableNames_[t] = names_.takeLike(concat("Table", t + 1));
  }

  void addBlock(BlockKind kind, std::size_t number) {
    const model::MeasurementBlock& block = project_.block(kind, number);
    Source source;
    source.letter = model::infoOf(kind).letter;
    source.number = number;
    source.kind = kind;
    source.block = &block;
    source.elements = &block.elements;
    source.processing = &block.processing;
    source.place = outline_.channels.of(kind, number);
    if (kind == BlockKind::filter) source.filterSlot = filterSlotOf(project_, number);
    source.fft = kind == BlockKind::filter && isFft(project_, number);
    source.values = model::arrayName(project_, kind, number);
    source.reps = static_cast<std::size_t>(block.Reps);
    source.size = kind == BlockKind::tcmux ? (source.reps + 7) / 8 * 8 : source.reps;
    source.multiplier = block.DefaultMult;
    source.offset = block.DefaultOffset;
    source.units = usableUnits(block.Units);
    source.isPublic = block.Public;
    if (isOneOf(source.letter, "VFBHIA") && !source.fft) source.zeroFlag = flagOf(block.ZeroFlag);
    source.calibrated = outline_.dunmoreHost && block.CalOnSite && isOneOf(source.letter, "VHBAIP");
    add(std::move(source), block.CalOnSite);
  }

  void addItem(std::size_t index) {
    const model::CanItem& item = project_.can.items[index];
    Source source;
    source.letter = 'C';
    source.number = index + 1;
    source.item = &item;
    source.elements = &item.values;
    source.processing = &item.processing;
    source.values = concat("CBlk", index + 1);
    source.reps = source.size = item.DataStyle == 1 ? 0 : static_cast<std::size_t>(item.NumVals);
    source.multiplier = item.Mult;
    source.offset = item.Offset;
    source.units = usableUnits(item.Units);
    source.isPublic = item.Public;
    add(std::move(source), false);
  }

  void add(Source source, bool calibratedOnSite) {
    for (std::size_t e = 1; e <= source.reps; ++e) {
      const model::Element* element = source.settingsOf(e);
      source.names.push_back(element ? names_.take(element->AliasName) : std::string());
      source.channelUnits.push_back(element ? usableUnits(element->AliasUnits) : std::string());
    }
    for (const model::Element& element : *source.elements)
      source.isPublic |= shownByDisplay(project_, element.Table);
    findOwnScaling(source, calibratedOnSite);
    if (!source.fft) findCrossings(source);
    source.burst = isTrigger(source);
    outline_.sources.push_back(std::move(source));
  }

  /// Channels with scaling of their own need arrays.
  static void findOwnScaling(Source& source, bool calibratedOnSite) {
    const bool bridge = source.letter == 'B';
    source.ownMultipliers = calibratedOnSite;
    source.ownOffsets = calibratedOnSite || source.zeroFlag > 0;
    source.ownGauges = bridge && (calibratedOnSite || source.block->GageCode == 2);
    for (std::size_t e = 1; e <= source.reps; ++e) {
      const model::Element* element = source.settingsOf(e);
      if (!element || !element->AliasExcept) continue;
      source.ownMultipliers |= element->AliasMult != source.multiplier;
      source.ownOffsets |= !bridge && element->AliasOffset != source.offset;
      source.ownGauges |= bridge && element->AliasGFactor != source.block->GageFactor;
    }
  }

  void findCrossings(Source& source) const {
    std::size_t levels = 1, tests = 1;
    for (std::size_t e = 1; e <= source.reps; ++e) {
      bool stored = false;
      for (std::size_t t = 0; t < model::maxTables; ++t) {
        const model::Element* element = source.settingsOf(e);
        if (!element || !project_.tables[t].TableOn || !stores(*element, t)) continue;
        stored = true;
        const auto sizes = KGEN_COMMON::dimensionsIn((*source.processing)[t].LevelCode);
        levels = std::max(levels, sizes.first);
        tests = std::max(tests, sizes.second);
      }
      if (stored) source.crossings.push_back(e);
    }
    takeLevels(source);
    source.levels.resize(std::max(levels, source.levels.size()));
    source.tests.resize(std::max(tests, source.tests.size()));
  }

  /// Of the lowest table that stores crossings of the block; when none of those has levels, of the
  /// lowest that has.
  void takeLevels(Source& source) const {
    for (const bool storing : {true, false})
      for (std::size_t t = 0; t < model::maxTables; ++t) {
        const bool storesAny =
            project_.tables[t].TableOn &&
            std::any_of(source.elements->begin(), source.elements->end(),
                        [t](const model::Element& element) { return stores(element, t); });
        const model::TableProcessing& table = (*source.processing)[t];
        const bool tests = table.LevNumTests > 0 || !table.LevelMeasName.empty();
        if (storesAny != storing || (table.LevNumLevels <= 0 && !(storing && tests))) continue;
        source.levels = table.LevelVarOne;
        source.tests = table.LevelVarTwo;
        source.secondVariable = table.LevelMeasName;
        source.levelTable = t + 1;
        return;
      }
  }

  [[nodiscard]] bool isTrigger(const Source& source) const {
    if (outline_.burstTrigger.empty() || project_.scan.BurstTrigger != 1 ||
        !isOneOf(source.letter, "TVBHP"))
      return false;
    const std::string& variable = project_.scan.TriggerMeasVar;
    for (std::size_t e = 1; e <= source.reps; ++e)
      if (text::equalsIgnoringCase(source.element(e), variable) ||
          (!source.names[e - 1].empty() && text::equalsIgnoringCase(source.names[e - 1], variable)))
        return true;
    return false;
  }

  [[nodiscard]] bool hasSubscan(const Source& source) const {
    return !source.fft && !project_.filterSlots[source.filterSlot - 1].FiltNoSubscan;
  }

  void addSubscans() {
    each(outline_, "F", [&](const Source& source) {
      if (!hasSubscan(source)) return;
      const model::FilterSubscan timing =
          filterSubscan(project_, project_.filterSlots[source.filterSlot - 1]);
      auto& all = outline_.subscans;
      auto found = std::find_if(all.begin(), all.end(),
                                [&](const Subscan& subscan) { return subscan.timing == timing; });
      if (found == all.end()) found = all.insert(all.end(), {timing, {}});
      if (found->slots.empty() || found->slots.back() != source.filterSlot)
        found->slots.push_back(source.filterSlot);
    });
  }

  [[nodiscard]] bool firstFilterHasSubscan() const {
    for (const Source& source : outline_.sources)
      if (source.letter == 'F' && !source.fft) return hasSubscan(source);
    return false;
  }

  void addTables() {
    for (std::size_t t = 1; t <= model::maxTables; ++t) {
      const model::OutputTable& table = project_.tables[t - 1];
      if (!table.TableOn) continue;
      outline_.tables.push_back(
          {.number = t,
           .settings = &table,
           .name = tableNames_[t - 1],
           .interval = shownInterval(project_, table),
           .groups = storedGroups(project_, outline_.channels, t),
           .hasSub = hasActiveTrigger(table) || hasActiveWriteIf(table),
           .inSubscan = model::isVoltFilterRate(table.OutInt) && firstFilterHasSubscan()});
    }
  }

  void addFields() {
    std::size_t averages = 0;
    for (std::size_t f = 0; f < project_.calculated.fields.size(); ++f) {
      const model::CalculatedField& field = project_.calculated.fields[f];
      const std::string own = names_.take(field.CalcName);
      outline_.fields.push_back(
          {.number = f + 1,
           .settings = &field,
           .name = own.empty() ? concat("CalcField", f + 1) : own,
           .units = usableUnits(field.CalcUnits),
           .average = field.CalcType == 1 ? ++averages : 0,
           .isPublic = field.Public || shownByDisplay(project_, field.CalcField)});
    }
  }

  void addPorts() {
    const auto& groups = project_.ports.groups;
    for (std::size_t p = 0; p < std::min(groups.size(), outline_.channels.portGroups.size()); ++p) {
      const model::PortGroupPlace place = outline_.channels.portGroups[p];
      const bool included = std::any_of(groups[p].ports.begin(), groups[p].ports.end(),
                                        [](const model::Port& port) { return port.Include; });
      if (!included || (groups[p].ReadMode && !place.input)) continue;
      std::string name =
          concat(groups[p].ReadMode ? "ReadPort" : "WritPort", place.upper ? "U" : "L");
      for (const Ports& before : outline_.ports)
        if (before.variable == name) {
          name += concat(place.slot);
          break;
        }
      outline_.ports.push_back({p + 1, &groups[p], place, name});
    }
  }

  void addOutputs() {
    const int all = 4 * project_.configuration.quantity(model::ModuleKindIndex::excitation7131);
    for (std::size_t n = 1; n <= project_.excitation.channels.size(); ++n) {
      const model::ExcitationChannel& channel = project_.excitation.channels[n - 1];
      if (!channel.Include || outline_.channels.caoOfBridges + static_cast<int>(n) > all) continue;
      const model::Place place = placeOfExcitation(project_, outline_.channels, n);
      outline_.outputs.push_back(
          {n, &channel, place,
           channel.DynamicStatic == 1 ? concat("Excite_", place.slot, "_", place.channel) : ""});
    }
  }

  Outline& outline_;
  const model::Project& project_;
  NameGiver names_;
  std::array<std::string, model::maxTables> tableNames_;
};

/// The section's own key for a setting that other sections call by the given one.
std::string_view keyIn(BlockKind kind, std::string_view key) {
  const auto named = [key](const auto& row) { return row.key == key; };
  const auto settings = projectfile::settingsOf(kind);
  if (std::any_of(settings.begin(), settings.end(), named)) return key;
  const auto known =
      std::find_if(projectfile::blockCatalogue.begin(), projectfile::blockCatalogue.end(), named);
  if (known == projectfile::blockCatalogue.end()) return key;
  for (const auto& row : settings)
    if (row.at == known->at) return row.key;
  return key;
}

}  // namespace

std::string Source::constant(std::string_view suffix) const {
  return concat(letter, suffix, number);
}
std::string Source::multipliers() const { return concat("M", letter, "Blk", number); }
std::string Source::offsets() const { return concat("O", letter, "Blk", number); }
std::string Source::gauges() const { return concat("GBBlk", number); }
std::string Source::element(std::size_t e) const { return concat(values, "(", e, ")"); }
std::string Source::crossing(std::size_t e) const {
  return concat("LC", letter, "Blk", number, "_", e);
}

const model::Element* Source::settingsOf(std::size_t e) const {
  return e >= 1 && e <= elements->size() ? &(*elements)[e - 1] : nullptr;
}

std::string_view Source::keyOf(std::string_view key) const { return item ? key : keyIn(kind, key); }

std::string Source::levelKey(std::string_view key) const {
  return concat(item ? projectfile::canLevelPrefix : model::infoOf(kind).levelPrefix, key);
}

Setting Source::setting(std::string_view key, std::size_t channel) const {
  std::string owner = concat(item ? "item " : "block ", number);
  if (channel > 0) owner += concat(item ? ", value " : ", channel ", channel);
  if (item) return {projectfile::canHeader, std::string(key), std::move(owner)};
  return {model::infoOf(kind).section, std::string(keyOf(key)), std::move(owner)};
}

Setting Table::setting(std::string_view key) const {
  return {projectfile::tableHeader, std::string(key), concat("table ", number)};
}
Setting Field::setting(std::string_view key) const {
  return {projectfile::fieldHeader, std::string(key), concat("field ", number)};
}
Setting Ports::setting(std::string_view key, std::size_t port) const {
  return {projectfile::portHeader, std::string(key),
          port > 0 ? concat("group ", number, ", port ", port) : concat("group ", number)};
}
Setting Output::setting(std::string_view key) const {
  return {projectfile::excitationHeader, std::string(key), concat("channel ", number)};
}

Outline::Outline(const model::Project& forProject, bool dunmore)
    : project(forProject),
      dunmoreHost(dunmore),
      channels(model::channelPlan(forProject)),
      isolated(timing::isolatedPlans(forProject)) {
  Outliner(*this).run();
}

bool Outline::anyZeroed(std::string_view letters) const {
  return std::any_of(sources.begin(), sources.end(), [letters](const Source& source) {
    return source.zeroFlag > 0 && isOneOf(source.letter, letters);
  });
}

bool Outline::anyCalibrated() const {
  return std::any_of(sources.begin(), sources.end(),
                     [](const Source& source) { return source.calibrated; });
}

const Subscan* Outline::subscanOf(std::size_t filterSlot) const {
  for (const Subscan& subscan : subscans)
    if (std::find(subscan.slots.begin(), subscan.slots.end(), filterSlot) != subscan.slots.end())
      return &subscan;
  return nullptr;
}

int flagOf(int number) { return number >= 1 && number <= 8 ? number : 0; }

Setting scanSetting(std::string_view key) {
  return {projectfile::scanHeader, std::string(key), ""};
}
Setting configurationSetting(std::string_view key) {
  return {projectfile::configurationHeader, std::string(key), ""};
}
Setting canSetting(std::string_view key) { return {projectfile::canHeader, std::string(key), ""}; }

}  // namespace readback
