#include "model/table_space.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "model/channel_plan.h"
#include "model/stored_outputs.h"
#include "model/time_units.h"
#include "text/strings.h"

namespace model {
namespace {

constexpr double bytesPerMbyte = 1'048'576;
constexpr int inFlash = 2;
constexpr int onCard = 3;
constexpr int cardBCode = 2;  // of tables and of the scan buffer

std::int32_t recordBytes(const Project& project, const ChannelPlan& plan, std::size_t number) {
  cOutputTable record;
  record.setRecord(bytesOf(storedGroups(project, plan, number)),
                   !project.tables[number - 1].CalcTime);
  return record.RecordBytes();
}

std::int64_t recordsThatFit(double bytes, std::int32_t bytesEach) {
  return bytesEach > 0 ? static_cast<std::int64_t>(std::floor(bytes / bytesEach)) : 0;
}

MediumSpace& spaceOf(SpacePlan& plan, Medium medium) {
  return plan.media[static_cast<std::size_t>(medium)];
}

void addTable(SpacePlan& plan, std::size_t index, const OutputTable& table) {
  TableSpace& space = plan.tables[index];
  if (!isAutoSized(table)) {
    space.records = table.Buffer;
    space.bytes = static_cast<double>(table.Buffer) * space.recordBytes;
  }
  if (space.on) spaceOf(plan, space.medium).tables += space.bytes;
}

/// Tables of automatic size get what is left, those that are on in equal shares.
void shareTheRest(SpacePlan& plan, const Project& project, Medium medium) {
  const auto takesPart = [&](std::size_t t) {
    return plan.tables[t].medium == medium && plan.tables[t].on && isAutoSized(project.tables[t]);
  };
  double sharers = 0;
  for (std::size_t t = 0; t < maxTables; ++t) sharers += takesPart(t) ? 1 : 0;
  MediumSpace& space = spaceOf(plan, medium);
  const double share = std::floor(std::max(space.free() - space.tables, 0.0) / sharers);
  for (std::size_t t = 0; t < maxTables; ++t) {
    if (!takesPart(t)) continue;
    plan.tables[t].bytes = share;
    plan.tables[t].records = recordsThatFit(share, plan.tables[t].recordBytes);
    space.tables += share;
  }
}

}  // namespace

std::string_view nameOf(Medium medium) {
  static constexpr std::array<std::string_view, allMedia.size()> names = {
      "PAM card B", "PAM card A", "CPU Flash", "CPU S-Ram"};
  return names[static_cast<std::size_t>(medium)];
}

double capacityOf(const LoggerConfiguration& configuration, Medium medium) {
  const bool large = isK700X(configuration);
  switch (medium) {
    case Medium::cardB:
      return 0;
    case Medium::cardA:
      return std::max(configuration.SizeCardA, 0.0) * bytesPerMbyte;
    case Medium::flash:
      return large ? 2'000'000 : 500'000;
    case Medium::sRam:
      break;
  }
  return large ? 4'000'000 : 1'000'000;
}

Medium mediumOf(const OutputTable& table) {
  if (table.TableLocation == inFlash) return Medium::flash;
  if (table.TableLocation != onCard) return Medium::sRam;
  return table.PamCard == cardBCode ? Medium::cardB : Medium::cardA;
}

Medium bufferMediumOf(const ScanSetup& scan) {
  if (scan.PamBuffer == cardBCode) return Medium::cardB;
  return scan.PamBuffer == 1 ? Medium::cardA : Medium::sRam;
}

double MediumSpace::free() const { return std::max(capacity - burstBuffer, 0.0); }

std::optional<std::string> complaintAboutTimeOf(const SpacePlan& plan, std::size_t table) {
  if (plan.tables.at(table - 1).intervalMicros > 0) return std::nullopt;
  return "the table has no interval, since there is no such filter; choose an interval, or enter "
         "records";
}

std::optional<std::int32_t> recordsIn(double seconds, const SpacePlan& plan, std::size_t table) {
  const TableSpace& space = plan.tables.at(table - 1);
  if (!(space.intervalMicros > 0)) return std::nullopt;
  const double records = std::floor(seconds * 1e6 / space.intervalMicros);
  const bool fits = records * space.recordBytes <= plan.of(space.medium).free() &&
                    records <= std::numeric_limits<std::int32_t>::max();
  if (!fits) return std::nullopt;
  return static_cast<std::int32_t>(records);
}

std::string tableLabel(const OutputTable& table) {
  return text::concat("TABLE ", text::upper(table.TableName));
}

std::string bytesText(double bytes) {
  return text::concat(text::formatted(bytes, "#,##0"), " bytes");
}

std::string burstBufferText(const MediumSpace& space) {
  return text::concat(text::formatted(space.burstBuffer, "#,##0"), " bytes used for Burst Buffer.");
}

std::string timeEntryHelp(std::string_view unit) {
  return text::concat("Enter the number of ", unit, " desired.");
}

}  // namespace model

namespace KGEN_COMMON {

model::SpacePlan CalcTableRecs(const model::Project& project, std::int64_t scanBufferBytes) {
  model::SpacePlan plan;
  for (const model::Medium medium : model::allMedia)
    model::spaceOf(plan, medium).capacity = capacityOf(project.configuration, medium);
  model::spaceOf(plan, bufferMediumOf(project.scan)).burstBuffer =
      static_cast<double>(scanBufferBytes);
  const model::ChannelPlan channels = channelPlan(project);
  for (std::size_t t = 0; t < model::maxTables; ++t) {
    const model::OutputTable& table = project.tables[t];
    plan.tables[t] = {.on = table.TableOn,
                      .medium = mediumOf(table),
                      .recordBytes = model::recordBytes(project, channels, t + 1),
                      .intervalMicros = recordMicros(project, table)};
    model::addTable(plan, t, table);
  }
  for (const model::Medium medium : model::allMedia) model::shareTheRest(plan, project, medium);
  return plan;
}

}  // namespace KGEN_COMMON
