#include "ui/processing_target.h"

namespace ui {
namespace {

using model::Project;
using model::TableProcessing;

std::vector<std::uint8_t> masksOf(const std::vector<model::Element>& elements, std::size_t table) {
  std::vector<std::uint8_t> masks;
  masks.reserve(elements.size());
  for (const model::Element& each : elements) masks.push_back(each.Table[table]);
  return masks;
}

/// Of something that has all three, for each table.
ProcessingTarget processingIn(
    const std::function<TableProcessing&(Project& project, std::size_t table)>& processing) {
  ProcessingTarget target;
  target.histogram = [processing](Project& project, std::size_t table) -> std::string& {
    return processing(project, table).HistogramCode;
  };
  target.rainflow = [processing](Project& project, std::size_t table) -> std::string& {
    return processing(project, table).RainHistoCode;
  };
  target.levels = processing;
  return target;
}

}  // namespace

ProcessingTarget processingOfBlock(model::BlockKind kind, std::size_t number) {
  ProcessingTarget target =
      processingIn([kind, number](Project& project, std::size_t table) -> TableProcessing& {
        return project.block(kind, number).processing[table];
      });
  target.masks = [kind, number](const Project& project, std::size_t table) {
    return masksOf(project.block(kind, number).elements, table);
  };
  return target;
}

ProcessingTarget processingOfItem(std::size_t item) {
  ProcessingTarget target =
      processingIn([item](Project& project, std::size_t table) -> TableProcessing& {
        return project.can.items.at(item).processing[table];
      });
  target.masks = [item](const Project& project, std::size_t table) {
    const auto& items = project.can.items;
    return item < items.size() ? masksOf(items[item].values, table) : std::vector<std::uint8_t>();
  };
  return target;
}

ProcessingTarget processingOfBattery() {
  ProcessingTarget target;
  target.masks = [](const Project& project, std::size_t table) {
    std::vector<std::uint8_t> masks;
    for (const model::PowerOutSet& set : project.powerOut.sets) masks.push_back(set.Table[table]);
    return masks;
  };
  target.histogram = [](Project& project, std::size_t table) -> std::string& {
    return project.powerOut.HistogramCode[table];
  };
  target.rainflow = [](Project& project, std::size_t table) -> std::string& {
    return project.powerOut.RainHistoCode[table];
  };
  target.shared = "Voltage and current of the battery have the same.";
  return target;
}

ProcessingTarget processingOfReference(model::ReferenceTemperature Project::*reference) {
  ProcessingTarget target;
  target.masks = [reference](const Project& project, std::size_t table) {
    return std::vector<std::uint8_t>{(project.*reference).Table[table]};
  };
  target.histogram = [reference](Project& project, std::size_t table) -> std::string& {
    return (project.*reference).HistogramCode[table];
  };
  target.rainflow = [reference](Project& project, std::size_t table) -> std::string& {
    return (project.*reference).RainCode[table];
  };
  return target;
}

ProcessingTarget processingOfPorts(std::size_t group) {
  ProcessingTarget target;
  target.masks = [group](const Project& project, std::size_t table) {
    const auto& groups = project.ports.groups;
    if (group >= groups.size() || !groups[group].ReadMode) return std::vector<std::uint8_t>();
    return std::vector<std::uint8_t>{groups[group].Table[table]};
  };
  target.histogram = [group](Project& project, std::size_t) -> std::string& {
    return project.ports.groups.at(group).HistogramCode;
  };
  target.shared = "All tables have the same.";
  return target;
}

std::size_t channelsStored(const ProcessingTarget& target, const Project& project,
                           std::size_t table, int code) {
  if (!project.tables[table].TableOn) return 0;
  std::size_t channels = 0;
  for (const std::uint8_t mask : target.masks(project, table))
    if ((mask >> code & 1) != 0) ++channels;
  return channels;
}

}  // namespace ui
