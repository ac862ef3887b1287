#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "model/project.h"

namespace ui {

/// What tables store as histogram, rainflow or level crossing, and where the project keeps the
/// parameters of that. Tables count from 0.
struct ProcessingTarget {
  std::function<std::vector<std::uint8_t>(const model::Project& project, std::size_t table)> masks;
  std::function<std::string&(model::Project&project, std::size_t table)> histogram, rainflow;
  /// Levels, of blocks and CAN items.
  std::function<model::TableProcessing&(model::Project& project, std::size_t table)> levels;
  std::string_view shared = {};  // who else has the parameters
};

ProcessingTarget processingOfBlock(model::BlockKind kind, std::size_t number);  // from 1
ProcessingTarget processingOfItem(std::size_t item);                            // from 0
ProcessingTarget processingOfBattery();
ProcessingTarget processingOfReference(model::ReferenceTemperature model::Project::*reference);
ProcessingTarget processingOfPorts(std::size_t group);  // from 0

/// How many of its channels a table that is on stores with a processing code.
std::size_t channelsStored(const ProcessingTarget& target, const model::Project& project,
                           std::size_t table, int code);

}  // namespace ui
