#include "model/stored_outputs.h"

#include <algorithm>
#include <functional>

#include "text/strings.h"

namespace model {
namespace {

constexpr int firstHistogramCode = 5;
constexpr int levelCrossingCode = 7;

bool selects(std::uint8_t mask, int code) { return ((mask >> code) & 1U) != 0; }

/// What the histograms of a group are set up with in one table.
struct HistogramTexts {
  std::string_view bins, rainflow, level;
};

std::size_t valuesOf(int code, const HistogramTexts& texts) {
  return KGEN_COMMON::ValuesPerOutput(true, code, texts.bins, texts.rainflow, texts.level);
}

/// Outputs of a group whose elements have the masks given; codes above `lastCode` do not exist
/// for it. Simple processings of every element become one instruction where `wholeAllowed`.
void addOutputs(StoredGroup& group, const std::vector<std::uint8_t>& masks,
                const HistogramTexts& texts, int lastCode, bool wholeAllowed) {
  std::uint8_t any = 0;
  std::uint8_t all = masks.empty() ? 0 : 255;
  for (const std::uint8_t mask : masks) {
    any |= mask;
    all &= mask;
  }
  for (int code = 0; code <= lastCode; ++code) {
    if (!selects(any, code)) continue;
    const std::size_t values = valuesOf(code, texts);
    if (values == 0) continue;  // a histogram without bins
    if (wholeAllowed && code < firstHistogramCode && selects(all, code)) {
      group.outputs.push_back({code, 0, masks.size(), values});
      continue;
    }
    for (std::size_t e = 0; e < masks.size(); ++e)
      if (selects(masks[e], code)) group.outputs.push_back({code, e + 1, 1, values});
  }
}

std::vector<std::uint8_t> masksOf(const std::vector<Element>& elements, std::size_t count,
                                  std::size_t table) {
  std::vector<std::uint8_t> masks(count);
  for (std::size_t e = 0; e < std::min(count, elements.size()); ++e)
    masks[e] = elements[e].Table[table];
  return masks;
}

class Enumerator {
 public:
  Enumerator(const Project& project, const ChannelPlan& plan, std::size_t table)
      : project_(project), plan_(plan), table_(table - 1) {}

  std::vector<StoredGroup> run() {
    addPower(StoredSource::batteryCurrent, 1);
    addPower(StoredSource::batteryVolts, 0);
    addReference(StoredSource::tcmuxReference, project_.tcmuxReference, multiplexerReferences());
    addReference(StoredSource::isolatedReference, project_.isoReference, plan_.isoTcSlots.size());
    addBlocks(BlockKind::thermocouple);
    addReference(StoredSource::tcReference, project_.tcReference, plan_.tcSlots.size());
    for (const BlockKind kind :
         {BlockKind::voltage, BlockKind::filter, BlockKind::bridge, BlockKind::pulse,
          BlockKind::highVoltage, BlockKind::isolated, BlockKind::tcmux})
      addBlocks(kind);
    addCanItems();
    addPorts();
    addCalculatedFields();
    return std::move(groups_);
  }

 private:
  void keep(StoredGroup group) {
    if (!group.outputs.empty()) groups_.push_back(std::move(group));
  }

  void addPower(StoredSource source, std::size_t set) {
    const PowerOutSet& power = project_.powerOut.sets[set];
    StoredGroup group{.source = source, .number = set + 1, .dataType = power.DataResolution};
    addOutputs(
        group, {power.Table[table_]},
        {project_.powerOut.HistogramCode[table_], project_.powerOut.RainHistoCode[table_], ""},
        lastProcessingOf(source), false);
    keep(std::move(group));
  }

  [[nodiscard]] std::size_t multiplexerReferences() const {
    for (std::size_t n = 1; n <= maxBlocks; ++n)
      if (inUse(project_, BlockKind::tcmux, n) && !project_.block(BlockKind::tcmux, n).TCMUXVolts)
        return static_cast<std::size_t>(plan_.multiplexers);
    return 0;
  }

  void addReference(StoredSource source, const ReferenceTemperature& reference, std::size_t count) {
    StoredGroup group{.source = source, .dataType = reference.DataResolution};
    addOutputs(group, std::vector<std::uint8_t>(count, reference.Table[table_]),
               {reference.HistogramCode[table_], reference.RainCode[table_], ""},
               lastProcessingOf(source), true);
    keep(std::move(group));
  }

  void addBlocks(BlockKind kind) {
    for (std::size_t n = 1; n <= infoOf(kind).blockLimit; ++n)
      if (inUse(project_, kind, n)) addBlock(kind, n);
  }

  void addBlock(BlockKind kind, std::size_t number) {
    const MeasurementBlock& block = project_.block(kind, number);
    StoredGroup group{.source = StoredSource::block,
                      .kind = kind,
                      .number = number,
                      .slot = plan_.of(kind, number).first.slot,
                      .fft = kind == BlockKind::filter && isFft(project_, number),
                      .dataType = block.DataResolution};
    const auto masks = masksOf(block.elements, static_cast<std::size_t>(block.Reps), table_);
    const TableProcessing& texts = block.processing[table_];
    if (group.fft)
      addFftOutputs(group, masks);
    else
      addOutputs(group, masks, {texts.HistogramCode, texts.RainHistoCode, texts.LevelCode},
                 levelCrossingCode, fillsItsArray(kind, block));
    keep(std::move(group));
  }

  /// The multiplexer's array is rounded up to whole scans of 8, so a whole-array instruction
  /// would store channels that do not exist.
  static bool fillsItsArray(BlockKind kind, const MeasurementBlock& block) {
    return kind != BlockKind::tcmux || block.Reps % 8 == 0;
  }

  void addFftOutputs(StoredGroup& group, const std::vector<std::uint8_t>& masks) {
    const std::size_t values = KGEN_COMMON::FftValues(project_, group.number);
    for (std::size_t e = 0; e < masks.size(); ++e)
      if (masks[e] != 0) group.outputs.push_back({0, e + 1, 1, values});
  }

  void addCanItems() {
    for (std::size_t k = 0; k < project_.can.items.size(); ++k) {
      const CanItem& item = project_.can.items[k];
      if (!canItemInUse(project_, item) || item.DataStyle == 1) continue;
      StoredGroup group{
          .source = StoredSource::canItem, .number = k + 1, .dataType = item.DataType};
      const TableProcessing& texts = item.processing[table_];
      addOutputs(group, masksOf(item.values, static_cast<std::size_t>(item.NumVals), table_),
                 {texts.HistogramCode, texts.RainHistoCode, texts.LevelCode}, levelCrossingCode,
                 true);
      keep(std::move(group));
    }
  }

  void addPorts() {
    for (std::size_t p = 0; p < project_.ports.groups.size(); ++p) {
      const PortGroup& ports = project_.ports.groups[p];
      if (!isReadGroup(project_, plan_, p + 1)) continue;
      StoredGroup group{.source = StoredSource::port,
                        .number = p + 1,
                        .slot = plan_.portGroups[p].slot,
                        .dataType = ports.DataResolution};
      addOutputs(group, {ports.Table[table_]}, {ports.HistogramCode, "", ""},
                 lastProcessingOf(group.source), false);
      keep(std::move(group));
    }
  }

  void addCalculatedFields() {
    for (std::size_t f = 0; f < project_.calculated.fields.size(); ++f) {
      const CalculatedField& field = project_.calculated.fields[f];
      StoredGroup group{.source = StoredSource::calculatedField,
                        .number = f + 1,
                        .dataType = field.DataResolution};
      addOutputs(group, {field.CalcField[table_]}, {}, lastProcessingOf(group.source), false);
      keep(std::move(group));
    }
  }

  const Project& project_;
  const ChannelPlan& plan_;
  std::size_t table_;
  std::vector<StoredGroup> groups_;
};

std::size_t totalValues(const StoredGroup& group) {
  std::size_t total = 0;
  for (const StoredOutput& output : group.outputs) total += output.count * output.valuesEach;
  return total;
}

}  // namespace

int lastProcessingOf(StoredSource source) {
  switch (source) {
    case StoredSource::block:
    case StoredSource::canItem:
      return levelCrossingCode;
    case StoredSource::tcReference:
    case StoredSource::calculatedField:
      return firstHistogramCode - 1;
    case StoredSource::port:
      return firstHistogramCode;
    default:
      return levelCrossingCode - 1;
  }
}

std::vector<StoredGroup> storedGroups(const Project& project, const ChannelPlan& plan,
                                      std::size_t table) {
  if (table < 1 || table > maxTables) return {};
  return Enumerator(project, plan, table).run();
}

std::int32_t bytesOf(const std::vector<StoredGroup>& groups) {
  std::int64_t total = 0;
  for (const StoredGroup& group : groups)
    total +=
        static_cast<std::int64_t>(totalValues(group)) * KGEN_COMMON::BytesPerValue(group.dataType);
  return static_cast<std::int32_t>(std::min<std::int64_t>(total, 2147483647));
}

bool shownByDisplay(const Project& project, const TableMasks& masks) {
  const auto table = static_cast<std::size_t>(project.QV40);
  return project.QV40 >= 1 && table <= maxTables && project.tables[table - 1].TableOn &&
         masks[table - 1] != 0;
}

bool isReadGroup(const Project& project, const ChannelPlan& plan, std::size_t number) {
  if (number > plan.portGroups.size() || number > project.ports.groups.size()) return false;
  const PortGroup& group = project.ports.groups[number - 1];
  return group.ReadMode && plan.portGroups[number - 1].input &&
         std::any_of(group.ports.begin(), group.ports.end(),
                     [](const Port& port) { return port.Include; });
}

}  // namespace model

namespace KGEN_COMMON {

constexpr std::int64_t largestDimension = 1000;

Dimensions dimensionsIn(std::string_view text) {
  std::vector<std::size_t> found;
  for (std::size_t i = 0; i < text.size() && found.size() < 2; ++i) {
    if (!text::isDigit(text[i])) continue;
    const double number = text::readNumber(text.substr(i));
    found.push_back(static_cast<std::size_t>(text::integerWithin(number, 0, largestDimension)));
    while (i < text.size() && (text::isDigit(text[i]) || text[i] == '.')) ++i;
  }
  Dimensions dimensions;
  if (!found.empty()) dimensions.first = found[0];
  if (found.size() > 1) dimensions.second = found[1];
  return dimensions;
}

std::size_t ValuesPerOutput(bool enabled, int code, std::string_view bins,
                            std::string_view rainflow, std::string_view level) {
  if (!enabled) return 0;
  if (code >= 0 && code <= 4) return 1;
  if (code == 5)
    return static_cast<std::size_t>(text::integerWithin(text::readNumber(bins), 0, 100000));
  if (code != 6 && code != 7) return 0;
  const Dimensions dimensions = dimensionsIn(code == 6 ? rainflow : level);
  return dimensions.first * dimensions.second;
}

int BytesPerValue(std::string_view dataType) {
  if (dataType == "FP2") return 2;
  return dataType == "IEEE4" ? 4 : 0;
}

std::size_t FftValues(const model::Project& project, std::size_t filterBlock) {
  const std::size_t slot = model::filterSlotOf(project, filterBlock);
  if (slot == 0) return 0;
  const model::FilterSlot& filter = project.filterSlots[slot - 1];
  const model::MeasurementBlock& block = project.block(model::BlockKind::filter, filterBlock);
  const int values = filter.FFTType == 1 ? block.IHigh - block.ILow + 1 : filter.FFTLength;
  return static_cast<std::size_t>(std::max(values, 1));
}

void BytesPerRecord(const model::Project& project, std::size_t table, std::int32_t& bytes) {
  bytes = model::bytesOf(model::storedGroups(project, model::channelPlan(project), table));
}

std::size_t FieldsPerRecord(const model::Project& project, std::size_t table) {
  std::size_t total = 0;
  for (const auto& group : model::storedGroups(project, model::channelPlan(project), table))
    total += model::totalValues(group);
  return total;
}

}  // namespace KGEN_COMMON
