#pragma once

#include <cstddef>
#include <optional>

#include "model/project.h"
#include "ports/message_service.h"

/// Room for blocks and their channels, given the modules and everything else in the project.
namespace model {

/// Channels (Reps) that block `number` (from 1) of a kind can have: that many, and every smaller
/// number, fit beside all else. The block's own settings count (input type, bridge configuration,
/// excitation); its present Reps do not. A block above the block count counts as added; a filter
/// block needs a filter slot that holds its number.
std::size_t freeChannelsFor(const Project& project, BlockKind kind, std::size_t number);

/// Inputs of a filter slot (from 1) that its blocks leave.
std::size_t freeChannelsOfFilterSlot(const Project& project, std::size_t slot);

/// A block with more channels than fit: "Not enough channels: 3 free."
std::optional<ports::Message> complaintAboutReps(const Project& project, BlockKind kind,
                                                 std::size_t number);
/// A module that a kind needs and the logger lacks.
std::optional<ports::Message> complaintAboutModules(const Project& project, BlockKind kind);
/// What keeps a kind from having one block more: a module that is missing, or the limit of blocks.
std::optional<ports::Message> complaintAboutNewBlock(const Project& project, BlockKind kind);

/// "Please add a 7131 module first."
ports::Message complaintAboutMissingModule(std::string_view module);
/// The module without which CAN items have no place.
std::optional<ports::Message> complaintAboutCan(const Project& project);

}  // namespace model
