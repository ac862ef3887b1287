#include "verify/flag_checks.h"

#include <algorithm>

#include "model/conditions.h"
#include "text/strings.h"
#include "verify/expression_variables.h"
#include "verify/message_lines.h"

namespace verify {
namespace {

using ports::Answer;
using ports::Buttons;
using ports::Message;
using text::concat;

unsigned flagBit(int flag) {
  return flag >= 1 && flag <= static_cast<int>(model::maxFlags) ? 1U << (flag - 1) : 0;
}

template <class Conditions>
unsigned flagsOf(const Conditions& conditions) {
  unsigned flags = 0;
  for (const model::Condition& condition : conditions) flags |= flagsIn(conditionText(condition));
  return flags;
}

/// A place where flags are used: the end of its line, and bit n - 1 for flag n.
struct FlagPlace {
  std::string description;
  unsigned flags = 0;
};

unsigned flagsOfStatusMonitor(const model::LoggerConfiguration& configuration) {
  constexpr std::size_t assignment = 3;
  const auto count = static_cast<std::size_t>(std::max<int>(configuration.StatusMonCount, 0));
  unsigned flags = 0;
  for (std::size_t i = 0; i < std::min(count, configuration.Status.size()); ++i)
    flags |= flagsIn(configuration.Status[i][assignment]);
  return flags;
}

unsigned flagsOfPorts(const model::Project& project) {
  unsigned flags = 0;
  for (const model::PortGroup& group : project.ports.groups)
    for (const model::Port& port : group.ports)
      if (port.Include && !group.ReadMode) flags |= flagsOf(port.conditions);
  return flags;
}

unsigned flagsOfExcitation(const model::Project& project) {
  unsigned flags = 0;
  for (const model::ExcitationChannel& channel : project.excitation.channels)
    if (channel.Include && channel.DynamicStatic == 1) flags |= flagsOf(channel.conditions);
  return flags;
}

/// Those that the flags window sets and those that it tests.
unsigned flagsOfFlagsWindow(const model::Project& project) {
  unsigned flags = 0;
  for (std::size_t f = 0; f < project.flags.size(); ++f)
    if (project.flags[f].FlagInclude)
      flags |= flagBit(static_cast<int>(f) + 1) | flagsOf(project.flags[f].states);
  return flags;
}

unsigned flagsOfBurst(const model::ScanSetup& scan) {
  return scan.ScanMode == 1 ? flagsIn(model::burstTriggerText(scan)) : 0;
}

void addTablePlaces(std::vector<FlagPlace>& places, const model::OutputTable& table, int number) {
  if (!table.TableOn) return;
  const std::string start = concat("Table ", number);
  places.push_back({concat(start, " Control"), flagBit(table.FlagTable)});
  places.push_back({concat(start, " File Mark"), flagBit(table.FlagMark)});
  places.push_back({concat(start, " Full"), flagBit(table.FlagFull)});
  places.push_back({concat(start, " Trigger"),
                    flagsIn(model::triggerText(table, 0)) | flagsIn(model::triggerText(table, 1))});
  places.push_back({concat(start, " Write If"), flagsIn(model::writeIfText(table))});
}

std::vector<FlagPlace> flagPlaces(const model::Project& project) {
  const model::LoggerConfiguration& configuration = project.configuration;
  std::vector<FlagPlace> places = {{"in Ports Setup", flagsOfPorts(project)},
                                   {"in CAO Trigger Setup", flagsOfExcitation(project)},
                                   {"in Flags Setup", flagsOfFlagsWindow(project)},
                                   {"in Scan Burst", flagsOfBurst(project.scan)}};
  for (std::size_t t = 0; t < model::maxTables; ++t)
    addTablePlaces(places, project.tables[t], static_cast<int>(t) + 1);
  const unsigned powerOff =
      configuration.EnablePowerOff ? flagsIn(configuration.PowerOffMeasVar) : 0;
  places.push_back({"in Power Off Trigger", powerOff});
  places.push_back({"in Scan Trigger", flagBit(project.scan.FlagScan)});
  return places;
}

}  // namespace

std::optional<Message> questionAboutDuplicateFlags(const model::Project& project) {
  const unsigned monitored = flagsOfStatusMonitor(project.configuration);
  if (monitored == 0) return std::nullopt;
  const std::vector<FlagPlace> places = flagPlaces(project);
  std::vector<std::string> lines;
  for (int flag = 1; flag <= static_cast<int>(model::maxFlags); ++flag)
    for (const FlagPlace& place : places)
      if ((monitored & place.flags & flagBit(flag)) != 0)
        lines.push_back(concat("Flag(", flag, ") ", place.description));
  if (lines.empty()) return std::nullopt;
  return Message{
      .title = "DUPLICATE FLAGS",
      .text = joinedLines({"The following Flag(s) in Status Monitor were also found in:",
                           listedLines(lines), "PRESS \"YES\" TO LEAVE AS IS OR \"NO\" TO EDIT."}),
      .buttons = Buttons::yesNo,
      .defaultButton = Answer::yes};
}

}  // namespace verify

namespace KGEN_COMMON {

void CheckDuplicateFlags(const model::Project& project, const verify::CheckContext& context,
                         bool& problem) {
  problem = !context.isOff(verify::duplicateFlagsOff) &&
            answerTo(context, verify::questionAboutDuplicateFlags(project)) == ports::Answer::no;
}

}  // namespace KGEN_COMMON
