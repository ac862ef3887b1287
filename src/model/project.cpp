#include "model/project.h"

#include <algorithm>

#include "model/table_rules.h"
#include "text/strings.h"

namespace model {
namespace {

std::size_t sizeFor(std::int16_t count, std::size_t limit) {
  return std::min(static_cast<std::size_t>(std::max<std::int16_t>(count, 0)), limit);
}

template <class T>
void growTo(std::vector<T>& list, std::size_t size) {
  if (list.size() < size) list.resize(size);
}

void fitLevels(std::array<TableProcessing, maxTables>& processing) {
  for (TableProcessing& table : processing) {
    table.LevelVarOne.resize(sizeFor(table.LevNumLevels, maxLevels));
    table.LevelVarTwo.resize(sizeFor(table.LevNumTests, maxLevels));
  }
}

void fitBlocks(Project& project) {
  for (const BlockKind kind : allBlockKinds) {
    const Element fresh = defaultElement(kind);
    for (MeasurementBlock& block : project.set(kind).blocks) {
      block.elements.resize(sizeFor(block.Reps, maxElements), fresh);
      fitLevels(block.processing);
    }
  }
}

void fitCan(CanSetup& can) {
  can.items.resize(sizeFor(can.CanCount, maxCanItems));
  for (CanItem& item : can.items) {
    item.values.resize(sizeFor(item.NumVals, maxCanValues));
    fitLevels(item.processing);
  }
}

std::size_t portGroupCount(const LoggerConfiguration& configuration) {
  const int groups = configuration.quantity(ModuleKindIndex::excitation7131) +
                     2 * configuration.quantity(ModuleKindIndex::counter7141);
  return std::min(static_cast<std::size_t>(std::max(groups, 0)), maxPortGroups);
}

std::size_t excitationChannelCount(const LoggerConfiguration& configuration) {
  const int channels = 4 * configuration.quantity(ModuleKindIndex::excitation7131);
  return std::min(static_cast<std::size_t>(std::max(channels, 0)), maxExcitationChannels);
}

std::size_t filterBlockCount(const Project& project) {
  std::size_t total = 0;
  for (const FilterSlot& slot : project.filterSlots)
    total += static_cast<std::size_t>(std::max<std::int16_t>(slot.BlockCount, 0));
  return std::min(total, maxBlocks);
}

}  // namespace

PowerOutTables::PowerOutTables() {
  const TableProcessing defaults;
  HistogramCode.fill(defaults.HistogramCode);
  RainHistoCode.fill(defaults.RainHistoCode);
}

std::size_t blockCount(const Project& project, BlockKind kind) {
  if (kind == BlockKind::filter) return filterBlockCount(project);
  return sizeFor(project.set(kind).BlockCount, infoOf(kind).blockLimit);
}

bool inUse(const Project& project, BlockKind kind, std::size_t number) {
  const bool needsK700X = kind == BlockKind::isolated || kind == BlockKind::tcmux;
  if (needsK700X && !isK700X(project.configuration)) return false;
  return number >= 1 && number <= blockCount(project, kind) && project.block(kind, number).Reps > 0;
}

std::size_t filterSlotOf(const Project& project, std::size_t number) {
  std::size_t last = 0;
  for (std::size_t s = 0; s < project.filterSlots.size(); ++s) {
    last += sizeFor(project.filterSlots[s].BlockCount, maxBlocks);
    if (number <= last) return s + 1;
  }
  return 0;
}

bool isFft(const Project& project, std::size_t filterBlock) {
  const std::size_t slot = filterSlotOf(project, filterBlock);
  return slot > 0 && project.filterSlots[slot - 1].FFTModule;
}

std::string arrayName(const Project& project, BlockKind kind, std::size_t number) {
  if (kind == BlockKind::filter)
    return text::concat(isFft(project, number) ? "FFBlk" : "FVBlk", number);
  return text::concat(infoOf(kind).letter, "Blk", number);
}

bool hasCanInterface(const Project& project) {
  return project.configuration.CanBusQty > 0 || project.can.CanBusEnabled;
}

bool canItemInUse(const Project& project, const CanItem& item) {
  const bool sends = item.DataStyle != 0;
  return hasCanInterface(project) && item.Enabled && (!sends || isK700X(project.configuration));
}

void fitLists(Project& project) {
  project.configuration.Status.resize(
      sizeFor(project.configuration.StatusMonCount, maxStatusLines));
  fitBlocks(project);
  fitCan(project.can);
  growTo(project.ports.groups, portGroupCount(project.configuration));
  growTo(project.excitation.channels, excitationChannelCount(project.configuration));
  project.calculated.fields.resize(sizeFor(project.calculated.CalcFieldCount, maxCalculatedFields));
}

}  // namespace model

namespace KGEN_COMMON {
namespace {

model::MeasurementBlock defaultBlock(model::BlockKind kind,
                                     const model::DefaultSettings& settings) {
  using model::BlockKind;
  model::MeasurementBlock block = model::defaultBlock(kind, settings.DefaultIntegrationCode);
  const bool eitherInput = kind == BlockKind::thermocouple || kind == BlockKind::voltage ||
                           kind == BlockKind::highVoltage;
  if (eitherInput && settings.DefaultInputType == 1) block.MeasType = "SE";
  if (settings.DefaultDataType == 1) block.DataResolution = "IEEE4";
  return block;
}

}  // namespace

model::Project newProject(const model::DefaultSettings& settings) {
  model::Project project;
  project.scan.ExecutionTime = settings.DefaultScanInterval;
  project.scan.ExecTimeUnits = settings.DefaultScanIntervalUnits;
  for (std::size_t i = 0; i < model::maxTables; ++i) {
    project.tables[i].TableName = model::givenTableName("", i + 1);
    project.tables[i].AutoSize = settings.DefaultTableAutoSize;
    project.tables[i].Buffer = settings.DefaultTableNumRecs;
  }
  for (const model::BlockKind kind : model::allBlockKinds)
    project.set(kind).blocks.fill(defaultBlock(kind, settings));
  return project;
}

void SetAllDefaults(model::Project& project, const model::DefaultSettings& settings) {
  project = newProject(settings);
}

}  // namespace KGEN_COMMON
