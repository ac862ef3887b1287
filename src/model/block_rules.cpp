#include "model/block_rules.h"

#include <algorithm>

#include "model/module_terminals.h"
#include "model/names.h"
#include "text/strings.h"

namespace model {
namespace {

using ports::Message;
using text::concat;

/// One number of some kinds, told by their letters.
struct FieldRow {
  BlockField field;
  std::string_view kinds;
  std::string_view name;
  FieldBounds bounds;
  double (*valueIn)(const MeasurementBlock&);
};

template <auto member>
double valueOf(const MeasurementBlock& block) {
  return static_cast<double>(block.*member);
}

constexpr auto mostReps = static_cast<double>(maxElements);
constexpr double longestFft = fftLengthBounds.high / 2;

constexpr FieldRow rows[] = {
    {BlockField::Reps,
     "TVHBA",
     "number of channels",
     {0, mostReps, 1},
     valueOf<&MeasurementBlock::Reps>},
    {BlockField::Reps,
     "IF",
     "number of channels",
     {0, channelsOf7128, 1},
     valueOf<&MeasurementBlock::Reps>},
    {BlockField::Reps,
     "P",
     "number of channels",
     {0, channelsOf7141, 1},
     valueOf<&MeasurementBlock::Reps>},
    {BlockField::Integration,
     "TVHBA",
     "integration time",
     {10, 1'000'000, 10},
     valueOf<&MeasurementBlock::Integration>},
    {BlockField::SettleTime,
     "TVHBA",
     "settling time",
     {0, 1'000'000, 10},
     valueOf<&MeasurementBlock::SettleTime>},
    {BlockField::ZeroFlag,
     "VHIBFA",
     "zero flag",
     {0, maxFlags, 1},
     valueOf<&MeasurementBlock::ZeroFlag>},
    {BlockField::ExciteReps,
     "B",
     "number of channels that an excitation feeds",
     {1, mostReps, 1},
     valueOf<&MeasurementBlock::ExciteReps>},
    {BlockField::Excite, "B", "excitation", {0, 5000, 100}, valueOf<&MeasurementBlock::Excite>},
    {BlockField::Excite, "F", "excitation code", {0, 6, 1}, valueOf<&MeasurementBlock::Excite>},
    {BlockField::GageFactor,
     "B",
     "gauge factor",
     {1E-6, 1E6, 0.01},
     valueOf<&MeasurementBlock::GageFactor>},
    {BlockField::Style, "B", "bridge configuration", {0, 7, 1}, valueOf<&MeasurementBlock::Style>},
    {BlockField::Opt, "P", "pulse option", {0, 32767, 1}, valueOf<&MeasurementBlock::Opt>},
    {BlockField::ILow, "F", "first bin", {1, longestFft, 1}, valueOf<&MeasurementBlock::ILow>},
    {BlockField::IHigh, "F", "last bin", {1, longestFft, 1}, valueOf<&MeasurementBlock::IHigh>},
};

bool belongs(const FieldRow& row, BlockKind kind) {
  return row.kinds.find(infoOf(kind).letter) != std::string_view::npos;
}

const FieldRow* rowOf(BlockKind kind, BlockField field) {
  const auto* const found = std::find_if(std::begin(rows), std::end(rows), [&](const auto& row) {
    return row.field == field && belongs(row, kind);
  });
  return found == std::end(rows) ? nullptr : found;
}

/// Bins count where a block has some, the integration time where it isn't a whole power cycle.
bool matters(const Project& project, BlockKind kind, std::size_t number, BlockField field) {
  if (field == BlockField::Integration) return project.block(kind, number).IntegrationRange == 2;
  if (field == BlockField::GageFactor) return isStrain(project.block(kind, number));
  if (field != BlockField::ILow && field != BlockField::IHigh) return true;
  const std::size_t slot = filterSlotOf(project, number);
  return slot > 0 && project.filterSlots[slot - 1].FFTModule &&
         project.filterSlots[slot - 1].FFTType == 1;
}

double binsOf(const Project& project, std::size_t number) {
  const std::size_t slot = filterSlotOf(project, number);
  return slot == 0 ? longestFft : project.filterSlots[slot - 1].FFTLength / 2.0;
}

std::optional<Message> numberProblem(const Project& project, BlockKind kind, std::size_t number) {
  for (const FieldRow& row : rows) {
    if (!belongs(row, kind) || row.field == BlockField::Reps) continue;
    if (!matters(project, kind, number, row.field)) continue;
    const double value = row.valueIn(project.block(kind, number));
    const FieldBounds bounds = boundsIn(project, kind, number, row.field);
    if (!(value >= bounds.low && value <= bounds.high))
      return complaintAboutNumber(row.name, value, bounds);
  }
  return std::nullopt;
}

std::optional<Message> rangeProblem(BlockKind kind, const MeasurementBlock& block) {
  const auto& ranges = rangesOf(kind);
  if (ranges.empty() || std::find(ranges.begin(), ranges.end(), block.Range) != ranges.end())
    return std::nullopt;
  return Message{.title = "WRONG RANGE",
                 .text = concat("'", block.Range, "' is not a range of ", infoOf(kind).name,
                                " blocks; choose one from the list.")};
}

std::optional<Message> nameProblem(const MeasurementBlock& block) {
  std::optional<std::string> complaint = complaintAboutUnits(block.Units);
  for (const Element& element : block.elements) {
    if (!complaint) complaint = complaintAboutAlias(element.AliasName);
    if (!complaint) complaint = complaintAboutUnits(element.AliasUnits);
  }
  if (!complaint) return std::nullopt;
  return Message{.title = "WRONG NAME", .text = *complaint};
}

}  // namespace

bool hasField(BlockKind kind, BlockField field) { return rowOf(kind, field) != nullptr; }

FieldBounds boundsOf(BlockKind kind, BlockField field) {
  const FieldRow* row = rowOf(kind, field);
  return row == nullptr ? FieldBounds{0, 0, 0} : row->bounds;
}

FieldBounds boundsIn(const Project& project, BlockKind kind, std::size_t number, BlockField field) {
  FieldBounds bounds = boundsOf(kind, field);
  if (!hasField(kind, field)) return bounds;
  const MeasurementBlock& block = project.block(kind, number);
  if (field == BlockField::Reps)
    bounds.high = static_cast<double>(freeChannelsFor(project, kind, number));
  if (field == BlockField::ExciteReps) bounds.high = std::max<double>(block.Reps, 1);
  if (field == BlockField::ILow)
    bounds.high = std::clamp<double>(block.IHigh, 1, binsOf(project, number));
  if (field == BlockField::IHigh) {
    bounds.high = binsOf(project, number);
    bounds.low = std::clamp<double>(block.ILow, 1, bounds.high);
  }
  return bounds;
}

std::optional<Message> firstProblemOfBlock(const Project& project, BlockKind kind,
                                           std::size_t number) {
  if (!inUse(project, kind, number)) return std::nullopt;
  const MeasurementBlock& block = project.block(kind, number);
  if (auto problem = complaintAboutReps(project, kind, number)) return problem;
  if (auto problem = numberProblem(project, kind, number)) return problem;
  if (auto problem = rangeProblem(kind, block)) return problem;
  return nameProblem(block);
}

Message complaintAboutNumber(std::string_view name, double value, const FieldBounds& bounds) {
  return {.title = "OUT OF RANGE",
          .text = concat("'", value, "' is not possible: the ", name, " is a number from ",
                         bounds.low, " to ", bounds.high, ".")};
}

}  // namespace model
