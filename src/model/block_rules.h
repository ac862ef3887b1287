#pragma once

#include <optional>
#include <string_view>

#include "model/free_channels.h"
#include "model/project.h"
#include "ports/message_service.h"

/// What the numbers of blocks, their modules and outputs may be.
namespace model {

/// What a number may be, and what an arrow key adds.
struct FieldBounds {
  double low = 0;
  double high = 0;
  double step = 1;
  bool operator==(const FieldBounds&) const = default;
};

/// Numbers that a kind's window edits, named like their keys.
enum class BlockField {
  Reps,
  Integration,
  SettleTime,
  ZeroFlag,
  ExciteReps,
  Excite,
  GageFactor,
  Style,
  Opt,
  ILow,
  IHigh,
};

bool hasField(BlockKind kind, BlockField field);
/// All 0 when the kind does not have the field. Where a bound depends on the block (Reps,
/// ExciteReps, ILow, IHigh) this is the widest one.
FieldBounds boundsOf(BlockKind kind, BlockField field);
/// The same for one block (from 1), with what fits and what its other fields allow.
FieldBounds boundsIn(const Project& project, BlockKind kind, std::size_t number, BlockField field);

/// Numbers that all isolated blocks share, and those of a filter slot, an analog output, a
/// running average and the scans of a status monitor have one home here as well.
inline constexpr FieldBounds isolatedIntegrationBounds = {96, 10'000'000, 96};  // us
inline constexpr FieldBounds isolatedOrderBounds = {1, 5, 1};                   // kept negative
inline constexpr FieldBounds scansPerSubScanBounds = {1, 32767, 1};
inline constexpr FieldBounds filterRateBounds = {1, 10'000, 1};       // samples a second
inline constexpr FieldBounds fftLengthBounds = {32, 8192, 1};         // powers of two
inline constexpr FieldBounds outputStateBounds = {-5000, 5000, 100};  // mV
inline constexpr FieldBounds outputDelayBounds = {0, 1'000'000, 10};  // us
inline constexpr FieldBounds averagedSamplesBounds = {2, 1000, 1};

/// The first thing about a block in use that its window would refuse: channels that do not fit, a
/// number out of its bounds, a range that the kind does not have, a name or units that can't be.
std::optional<ports::Message> firstProblemOfBlock(const Project& project, BlockKind kind,
                                                  std::size_t number);

/// "'7' is not possible: the settling time is a number from 0 to 1000000."
ports::Message complaintAboutNumber(std::string_view name, double value, const FieldBounds& bounds);

}  // namespace model
