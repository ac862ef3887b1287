#pragma once

#include <array>
#include <string>

#include "model/calculated_field.h"
#include "model/calculator_inputs.h"
#include "model/can_setup.h"
#include "model/io_setup.h"
#include "model/logger_configuration.h"
#include "model/measurement_block.h"
#include "model/output_table.h"
#include "model/scan_setup.h"

namespace model {

/// What the user's settings put into a new project.
struct DefaultSettings {
  double DefaultScanInterval = 1;
  std::int16_t DefaultScanIntervalUnits = 2;
  std::int16_t DefaultDataType = 0;  // 0 as the kind has it, 1 "IEEE4" for all
  std::int16_t DefaultIntegrationCode = 2;
  std::int16_t DefaultInputType = 0;  // 0 "Diff", 1 "SE": 7121/22 and 7127 inputs
  bool DefaultTableAutoSize = true;
  std::int32_t DefaultTableNumRecs = 1000;
  bool operator==(const DefaultSettings&) const = default;
};

/// Everything that the user described for one logger program: a value to copy and compare.
/// A new project is made by KGEN_COMMON::SetAllDefaults.
struct Project {
  LoggerConfiguration configuration;
  ScanSetup scan;
  std::int16_t QV40 = 0;  // the table whose variables the display shows, 0: none
  std::array<OutputTable, maxTables> tables;
  PowerOutTables powerOut;
  ReferenceTemperature tcmuxReference;
  ReferenceTemperature tcReference;
  ReferenceTemperature isoReference;
  std::array<BlockSet, blockKinds> blockSets;  // by BlockKind
  IsolatedSetup isolated;
  std::array<FilterSlot, maxUserModules> filterSlots;
  PortSetup ports;
  std::array<FlagControl, maxFlags> flags;
  ExcitationSetup excitation;
  CanSetup can;
  CalculatorInputs calculators;
  CalculatedFields calculated;

  [[nodiscard]] BlockSet& set(BlockKind kind) { return blockSets[static_cast<std::size_t>(kind)]; }
  [[nodiscard]] const BlockSet& set(BlockKind kind) const {
    return blockSets[static_cast<std::size_t>(kind)];
  }
  /// Block number 1 to maxBlocks of a kind.
  [[nodiscard]] MeasurementBlock& block(BlockKind kind, std::size_t number) {
    return set(kind).blocks.at(number - 1);
  }
  [[nodiscard]] const MeasurementBlock& block(BlockKind kind, std::size_t number) const {
    return set(kind).blocks.at(number - 1);
  }
  bool operator==(const Project&) const = default;
};

/// Highest block number of a kind that can be in use: BlockCount, or of filter blocks the sum
/// over the filter slots, never more than the kind holds.
std::size_t blockCount(const Project& project, BlockKind kind);

/// A block is in use when it has channels and its number is within the block count. A 7103 CPU
/// has no isolated and no multiplexer blocks: those are kept but not in use.
bool inUse(const Project& project, BlockKind kind, std::size_t number);

/// The filter slot (1 = first 7125 module) that holds filter block `number`; 0 when none does.
std::size_t filterSlotOf(const Project& project, std::size_t number);
bool isFft(const Project& project, std::size_t filterBlock);

/// The variable that holds a block's values in the program: "TBlk1", "FVBlk2", "FFBlk3".
std::string arrayName(const Project& project, BlockKind kind, std::size_t number);

/// The logger has a CAN interface; without one the CAN items are kept but not in use.
bool hasCanInterface(const Project& project);
/// Enabled items of a logger with CAN interface; transmit items need the 7104 CPU.
bool canItemInUse(const Project& project, const CanItem& item);

/// Brings lists to the lengths that counts and modules ask for: channels of blocks and CAN items,
/// status lines, levels, calculated fields; port groups and excitation channels only grow.
void fitLists(Project& project);

}  // namespace model

namespace KGEN_COMMON {

/// Makes the project a new one. newProject() gives it without a copy: a project fills many pages
/// of memory, and touching those takes longer than most of what is done with it.
model::Project newProject(const model::DefaultSettings& settings = {});
void SetAllDefaults(model::Project& project, const model::DefaultSettings& settings = {});

}  // namespace KGEN_COMMON
