#include "model/filter_blocks.h"

#include <algorithm>
#include <cmath>

#include "model/block_rules.h"
#include "model/free_channels.h"

namespace model {
namespace {

std::int16_t countOf(std::size_t blocks) { return static_cast<std::int16_t>(blocks); }

/// Blocks of the slots 1 to `slot`.
std::size_t blocksUpTo(const Project& project, std::size_t slot) {
  std::size_t last = 0;
  for (std::size_t n = 1; n <= blockCount(project, BlockKind::filter); ++n)
    if (filterSlotOf(project, n) <= slot) last = n;
  return last;
}

}  // namespace

std::optional<ports::Message> complaintAboutNewFilterBlock(const Project& project,
                                                           std::size_t slot) {
  if (auto complaint = complaintAboutNewBlock(project, BlockKind::filter)) return complaint;
  const int modules = project.configuration.quantity(ModuleKindIndex::filter7125);
  if (static_cast<int>(slot) <= modules) return std::nullopt;
  return complaintAboutMissingModule(moduleName(ModuleKindIndex::filter7125));
}

std::size_t addFilterBlock(Project& project, std::size_t slot) {
  const std::size_t number = blocksUpTo(project, slot) + 1;
  auto& blocks = project.set(BlockKind::filter).blocks;
  const auto place = blocks.begin() + static_cast<std::ptrdiff_t>(number - 1);
  std::rotate(place, blocks.end() - 1, blocks.end());
  *place = defaultBlock(BlockKind::filter);
  ++project.filterSlots.at(slot - 1).BlockCount;
  return number;
}

void removeFilterBlock(Project& project, std::size_t number) {
  const std::size_t slot = filterSlotOf(project, number);
  if (slot == 0) return;
  auto& blocks = project.set(BlockKind::filter).blocks;
  const auto place = blocks.begin() + static_cast<std::ptrdiff_t>(number - 1);
  *place = defaultBlock(BlockKind::filter);
  std::rotate(place, place + 1, blocks.end());
  --project.filterSlots[slot - 1].BlockCount;
}

std::int16_t nearestFftLength(double samples) {
  const double wanted = std::clamp(samples, fftLengthBounds.low, fftLengthBounds.high);
  return countOf(std::size_t{1} << std::lround(std::log2(wanted)));
}

void setFftLength(Project& project, std::size_t slot, std::int16_t samples) {
  project.filterSlots.at(slot - 1).FFTLength = samples;
  const auto last = static_cast<std::int16_t>(std::max(samples / 2, 1));
  for (std::size_t n = 1; n <= blockCount(project, BlockKind::filter); ++n) {
    if (filterSlotOf(project, n) != slot) continue;
    MeasurementBlock& block = project.block(BlockKind::filter, n);
    block.IHigh = std::min(block.IHigh, last);
    block.ILow = std::min(block.ILow, block.IHigh);
  }
}

}  // namespace model
