#include "verify/window_checks.h"

#include <algorithm>

#include "model/channel_plan.h"
#include "model/stored_outputs.h"
#include "model/time_units.h"
#include "text/strings.h"
#include "verify/message_lines.h"

namespace verify {
namespace {

using model::BlockKind;
using ports::Answer;
using ports::Buttons;
using ports::Icon;
using ports::Message;
using text::concat;

constexpr std::uint8_t sampleOnly = 1;

bool storesMoreThanSamples(const std::vector<model::StoredGroup>& groups) {
  return std::any_of(groups.begin(), groups.end(), [](const model::StoredGroup& group) {
    return std::any_of(group.outputs.begin(), group.outputs.end(),
                       [](const model::StoredOutput& output) { return output.code != 0; });
  });
}

/// Numbers of the tables that the question is about.
std::vector<std::size_t> tablesToReduce(const model::Project& project) {
  const double scan = model::scanMicros(project);
  const model::ChannelPlan plan = channelPlan(project);
  std::vector<std::size_t> tables;
  for (std::size_t t = 1; t <= model::maxTables; ++t) {
    const model::OutputTable& table = project.tables[t - 1];
    if (table.TableOn && shownInterval(project, table).micros == scan &&
        storesMoreThanSamples(storedGroups(project, plan, t)))
      tables.push_back(t);
  }
  return tables;
}

void reduce(model::TableMasks& masks, std::size_t table) {
  std::uint8_t& mask = masks[table - 1];
  if (mask != 0) mask = sampleOnly;
}

void reduce(std::vector<model::Element>& elements, std::size_t table) {
  for (model::Element& element : elements) reduce(element.Table, table);
}

void reduceTable(model::Project& project, std::size_t table) {
  for (const BlockKind kind : model::allBlockKinds)
    for (std::size_t n = 1; n <= model::infoOf(kind).blockLimit; ++n)
      if (inUse(project, kind, n)) reduce(project.block(kind, n).elements, table);
  for (model::CanItem& item : project.can.items) reduce(item.values, table);
  for (model::PowerOutSet& set : project.powerOut.sets) reduce(set.Table, table);
  for (model::ReferenceTemperature* reference :
       {&project.tcReference, &project.isoReference, &project.tcmuxReference})
    reduce(reference->Table, table);
  for (model::PortGroup& group : project.ports.groups) reduce(group.Table, table);
  for (model::CalculatedField& field : project.calculated.fields) reduce(field.CalcField, table);
}

}  // namespace

std::optional<Message> questionAboutScanRateTables(const model::Project& project) {
  std::vector<std::string> lines;
  for (const std::size_t table : tablesToReduce(project))
    lines.push_back(concat("Table #", table, " - '", project.tables[table - 1].TableName, "'"));
  if (lines.empty()) return std::nullopt;
  return Message{
      .title = "OUTPUT TABLES",
      .text = joinedLines(
          {"The following tables have their intervals equal to the system scan interval.  ",
           "They also have previously been configured for output processing instructions ",
           "that assume that multiple scans occur between output table writes.",
           "(For example, Averages, Min/Max, Histograms, etc.)",
           "If you proceed, these output processing configurations will be removed",
           "in the associated measurement blocks, and replaced with the Sample",
           "output instruction.  Proceed?", listedLines(lines)}),
      .icon = Icon::question,
      .buttons = Buttons::yesNo,
      .defaultButton = Answer::no};
}

void reduceToSamples(model::Project& project) {
  for (const std::size_t table : tablesToReduce(project)) reduceTable(project, table);
}

std::optional<Message> questionAboutOwnScaling(const model::MeasurementBlock& block) {
  const model::Scaling shared = scalingOf(block);
  const bool hasOffset = block.Type.empty();  // channels of bridges have a gauge factor
  const bool allAlike =
      std::all_of(block.elements.begin(), block.elements.end(), [&](const auto& element) {
        const model::Scaling own = scalingOf(element, shared);
        return own.multiplier == shared.multiplier && (!hasOffset || own.offset == shared.offset);
      });
  if (allAlike) return std::nullopt;
  return Message{.title = "DEFAULT SCALING CHANGED",
                 .text = joinedLines(
                     {"Individual multipliers and offsets are not all the same as the defaults.",
                      "", "WOULD YOU LIKE TO EXAMINE SCALARS NOW?"}),
                 .icon = Icon::question,
                 .buttons = Buttons::yesNo,
                 .defaultButton = Answer::yes};
}

}  // namespace verify

namespace KGEN_COMMON {

using ports::Answer;

void CheckScanRateTables(model::Project& project, const verify::CheckContext& context,
                         bool& problem) {
  const auto answer = answerTo(context, verify::questionAboutScanRateTables(project));
  if (answer == Answer::yes) verify::reduceToSamples(project);
  problem = answer == Answer::no;
}

Answer CheckDefaultScaling(const model::MeasurementBlock& block,
                           const verify::CheckContext& context) {
  return answerTo(context, verify::questionAboutOwnScaling(block)).value_or(Answer::no);
}

}  // namespace KGEN_COMMON
