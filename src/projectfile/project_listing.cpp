#include "projectfile/project_listing.h"

#include <algorithm>

#include "model/channel_plan.h"
#include "projectfile/project_writer.h"
#include "projectfile/rows.h"

namespace projectfile {
namespace {

using model::BlockKind;
using text::JsonWriter;

void writeValue(JsonWriter& json, const ValueRef& value) {
  if (auto* const text = std::get_if<std::string*>(&value))
    json.value(**text);
  else if (auto* const number = std::get_if<double*>(&value))
    json.value(**number);
  else if (auto* const flag = std::get_if<bool*>(&value))
    json.value(**flag);
  else if (auto* const small = std::get_if<std::int16_t*>(&value))
    json.value(std::int64_t{**small});
  else if (auto* const large = std::get_if<std::int32_t*>(&value))
    json.value(std::int64_t{**large});
  else if (auto* const mask = std::get_if<std::uint8_t*>(&value))
    json.value(std::int64_t{**mask});
}

template <class Rows, class Owner>
void members(JsonWriter& json, const Rows& rows, const Owner& owner, std::string_view prefix = "") {
  for (const auto& row : rows) {
    if (prefix.empty())
      json.key(row.key);
    else
      json.key(std::string(prefix).append(row.key));
    writeValue(json, peek<Owner>(row, owner));
  }
}

/// A list of plain values under the key of a row.
template <class Rows, class List>
void valueList(JsonWriter& json, const Rows& rows, const List& list, std::string_view prefix = "") {
  json.key(std::string(prefix).append(rows[0].key));
  json.openArray();
  for (const auto& value : list) writeValue(json, peek<typename List::value_type>(rows[0], value));
  json.closeArray();
}

/// A list of objects, each of which `content` fills. A number, from 1, comes first.
template <class List, class Content>
void objectList(JsonWriter& json, std::string_view key, const List& list, Content&& content) {
  json.key(key);
  json.openArray();
  std::int64_t number = 0;
  for (const auto& item : list) {
    json.openObject();
    json.member("number", ++number);
    content(item);
    json.closeObject();
  }
  json.closeArray();
}

template <class Content>
void object(JsonWriter& json, std::string_view key, Content&& content) {
  json.key(key);
  json.openObject();
  content();
  json.closeObject();
}

void writeConfiguration(JsonWriter& json, const model::LoggerConfiguration& configuration) {
  object(json, "version", [&] { members(json, versionRows, configuration); });
  object(json, "configuration", [&] {
    members(json, identityRows, configuration);
    valueList(json, quantityRow, configuration.ModuleQty);
    members(json, extraModuleRows, configuration);
    valueList(json, monitorRow, configuration.MonitorPower);
    valueList(json, optionRow, configuration.TcConfigOpts);
    members(json, powerRows, configuration);
    json.key(statusRow[0].key);
    json.openArray();
    for (const model::StatusLine& line : configuration.Status) {
      json.openArray();
      for (const std::string& text : line) json.value(text);
      json.closeArray();
    }
    json.closeArray();
  });
}

void writeTriggers(JsonWriter& json, const model::OutputTable& table, int trigger,
                   std::string_view key, std::string_view prefix, std::int16_t count) {
  json.key(key);
  json.openArray();
  const int shown = std::clamp<int>(count, 0, model::maxConditions);
  for (int c = 1; c <= shown; ++c) {
    json.openObject();
    const model::Condition& condition = table.conditions.trigger(trigger, c);
    members(json, triggerRows, condition, prefix);
    members(json, logicRow, table.conditions.TriggerLogic(trigger, c), prefix);
    members(json, triggerExpressionRow, condition, prefix);
    json.closeObject();
  }
  json.closeArray();
}

void writeTable(JsonWriter& json, const model::OutputTable& table) {
  members(json, tableRows, table);
  writeTriggers(json, table, 0, "startConditions", "Start", table.TrigTable);
  members(json, stopCountRow, table);
  writeTriggers(json, table, 1, "stopConditions", "Stop",
                table.TrigTabStop < 0 ? table.TrigTable : table.TrigTabStop);
  json.member("DataEventCode Start", table.DataEventStart);
  json.member("DataEventCode Stop", table.DataEventStop);
  members(json, tableEventRows, table);
  json.key("writeIfConditions");
  json.openArray();
  const int shown = std::clamp<int>(table.WriteIf, 0, model::maxConditions);
  for (int c = 1; c <= shown; ++c) {
    json.openObject();
    members(json, writeIfRows, table.conditions.writeIf(c));
    json.closeObject();
  }
  json.closeArray();
  members(json, tableEndRows, table);
}

void writePowerOut(JsonWriter& json, const model::PowerOutTables& power) {
  object(json, "powerOut", [&] {
    objectList(json, "sets", power.sets, [&](const model::PowerOutSet& set) {
      members(json, powerSetRows, set);
      valueList(json, maskRow, set.Table);
    });
    valueList(json, histogramRow, power.HistogramCode);
    valueList(json, rainHistogramRow, power.RainHistoCode);
  });
}

void writeReference(JsonWriter& json, std::string_view key,
                    const model::ReferenceTemperature& reference) {
  object(json, key, [&] {
    members(json, referenceRows, reference);
    valueList(json, maskRow, reference.Table);
    valueList(json, histogramRow, reference.HistogramCode);
    valueList(json, rainRow, reference.RainCode);
  });
}

void writeProcessing(JsonWriter& json, const model::TableProcessing& table,
                     std::string_view prefix) {
  members(json, processingRows, table);
  members(json, levelRows, table, prefix);
  valueList(json, firstLevelRow, table.LevelVarOne, prefix);
  members(json, testCountRow, table, prefix);
  valueList(json, secondLevelRow, table.LevelVarTwo, prefix);
  members(json, dimensionRow, table, prefix);
}

void writeElements(JsonWriter& json, std::string_view key,
                   std::span<const Row<model::Element>> rows,
                   const std::vector<model::Element>& elements) {
  json.key(key);
  json.openArray();
  for (const model::Element& element : elements) {
    json.openObject();
    members(json, rows, element);
    valueList(json, maskRow, element.Table);
    json.closeObject();
  }
  json.closeArray();
}

void writeBlock(JsonWriter& json, BlockKind kind, const model::MeasurementBlock& block) {
  members(json, settingsOf(kind), block);
  objectList(json, "tables", block.processing, [&](const model::TableProcessing& table) {
    writeProcessing(json, table, model::infoOf(kind).levelPrefix);
  });
  writeElements(json, "elements", aliasesOf(kind), block.elements);
}

constexpr std::string_view jsonName(BlockKind kind) {
  switch (kind) {
    case BlockKind::thermocouple:
      return "thermocouple";
    case BlockKind::voltage:
      return "voltage";
    case BlockKind::highVoltage:
      return "highVoltage";
    case BlockKind::isolated:
      return "isolated";
    case BlockKind::bridge:
      return "bridge";
    case BlockKind::pulse:
      return "pulse";
    case BlockKind::filter:
      return "filter";
    case BlockKind::tcmux:
      return "tcmux";
  }
  return {};
}

void writeKind(JsonWriter& json, const model::Project& project, BlockKind kind,
               const model::ChannelTotals& totals) {
  const std::size_t count = model::blockCount(project, kind);
  json.member(blockCountRow[0].key, static_cast<std::int64_t>(count));
  const std::int32_t singleEnded = totals.SEChannelCount[static_cast<std::size_t>(kind)];
  if (countsSingleEnded(kind)) members(json, singleEndedRow, singleEnded);
  if (kind == BlockKind::bridge) members(json, bridgeTotalRows, totals);
  if (kind == BlockKind::isolated) members(json, isolatedRows, project.isolated);
  if (kind == BlockKind::filter)
    objectList(json, "slots", project.filterSlots, [&](const model::FilterSlot& slot) {
      members(json, slotCountRow, slot);
      members(json, slotRows, slot);
    });
  const std::span blocks(project.set(kind).blocks.data(), count);
  objectList(json, "blocks", blocks,
             [&](const model::MeasurementBlock& block) { writeBlock(json, kind, block); });
}

void writePorts(JsonWriter& json, const model::PortSetup& ports) {
  object(json, "ports", [&] {
    members(json, portSetupRows, ports);
    objectList(json, "groups", ports.groups, [&](const model::PortGroup& group) {
      members(json, portGroupRows, group);
      objectList(json, "ports", group.ports, [&](const model::Port& port) {
        members(json, portIncludeRow, port);
        members(json, portPolarityRow, port);
        members(json, portWeightRow, port);
        objectList(json, "conditions", port.conditions, [&](const model::Condition& condition) {
          members(json, portConditionRows, condition);
        });
      });
      members(json, histogramRow, group.HistogramCode);
      valueList(json, maskRow, group.Table);
    });
  });
}

void writeExcitation(JsonWriter& json, const model::ExcitationSetup& excitation) {
  object(json, "excitation", [&] {
    members(json, excitationRows, excitation);
    objectList(json, "channels", excitation.channels, [&](const auto& channel) {
      members(json, excitationChannelRows, channel);
      members(json, excitationConditionRows, channel.conditions[0], "Excite1");
      members(json, excitationConditionRows, channel.conditions[1], "Excite2");
    });
  });
}

void writeCan(JsonWriter& json, const model::CanSetup& can) {
  object(json, "can", [&] {
    members(json, canRows, can);
    objectList(json, "items", can.items, [&](const model::CanItem& item) {
      members(json, canItemRows, item);
      objectList(json, "tables", item.processing, [&](const model::TableProcessing& table) {
        writeProcessing(json, table, canLevelPrefix);
      });
      writeElements(json, "values", elementRows, item.values);
    });
  });
}

void writeCalculators(JsonWriter& json, const model::CalculatorInputs& inputs) {
  object(json, "calculators", [&] {
    object(json, "speed", [&] {
      members(json, speedRows, inputs.speed);
      valueList(json, gearRow, inputs.speed.GearRatio);
    });
    object(json, "multOff", [&] { members(json, twoPointRows, inputs.multOff); });
    object(json, "mvPerVolt", [&] { members(json, sensitivityRows, inputs.mvPerVolt); });
    object(json, "pot", [&] { members(json, twoPointRows, inputs.pot); });
    object(json, "rs", [&] { members(json, resistanceRows, inputs.rs); });
    object(json, "rpm", [&] { members(json, rpmRows, inputs.rpm); });
    object(json, "moreSpeed", [&] { members(json, moreSpeedRows, inputs.moreSpeed); });
    object(json, "flow", [&] { members(json, flowRows, inputs.flow); });
  });
}

void writeCalculatedFields(JsonWriter& json, const model::CalculatedFields& calculated) {
  object(json, "calculatedFields", [&] {
    members(json, fieldCountRow, calculated);
    objectList(json, "fields", calculated.fields, [&](const model::CalculatedField& field) {
      members(json, fieldDefinitionRows, field);
      members(json, fieldRows, field);
      valueList(json, fieldMaskRow, field.CalcField);
    });
  });
}

}  // namespace

void writeJson(const model::Project& project, text::JsonWriter& json) {
  const model::ChannelTotals totals = model::channelPlan(project).totals;
  json.openObject();
  writeConfiguration(json, project.configuration);
  object(json, "scan", [&] {
    members(json, scanRows, project.scan);
    members(json, totalRows, totals);
    members(json, scanEndRows, project.scan);
  });
  members(json, displayRow, project);
  objectList(json, "tables", project.tables,
             [&](const model::OutputTable& table) { writeTable(json, table); });
  writePowerOut(json, project.powerOut);
  object(json, "references", [&] {
    writeReference(json, "tcmux", project.tcmuxReference);
    writeReference(json, "thermocouple", project.tcReference);
    writeReference(json, "isolated", project.isoReference);
  });
  object(json, "blocks", [&] {
    for (const BlockKind kind : model::allBlockKinds)
      object(json, jsonName(kind), [&] { writeKind(json, project, kind, totals); });
  });
  writePorts(json, project.ports);
  objectList(json, "flags", project.flags, [&](const model::FlagControl& flag) {
    members(json, flagRows, flag);
    members(json, flagConditionRows, flag.states[0], "State1");
    members(json, flagConditionRows, flag.states[1], "State2");
  });
  writeExcitation(json, project.excitation);
  writeCan(json, project.can);
  writeCalculators(json, project.calculators);
  writeCalculatedFields(json, project.calculated);
  json.closeObject();
}

std::string textListing(const model::Project& project) {
  const model::LoggerConfiguration& configuration = project.configuration;
  return sectionsText(project, {configuration.VersionLastSaved, configuration.PCTime},
                      listingStyle);
}

}  // namespace projectfile
