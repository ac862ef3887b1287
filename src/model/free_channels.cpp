#include "model/free_channels.h"

#include <algorithm>
#include <string>
#include <vector>

#include "model/channel_plan.h"
#include "model/module_terminals.h"
#include "text/strings.h"

namespace model {
namespace {

using ports::Message;
using text::concat;

/// What the modules can't give. The plan does not know the analog outputs of the excitation window
/// and the multiplexers that the logger has.
struct Shortage {
  std::vector<std::string> problems;
  int outputs = 0;
  int multiplexers = 0;

  [[nodiscard]] bool isNoneBeside(const Shortage& before) const {
    const auto isOld = [&](const std::string& problem) {
      const auto& old = before.problems;
      return std::find(old.begin(), old.end(), problem) != old.end();
    };
    return outputs <= before.outputs && multiplexers <= before.multiplexers &&
           std::all_of(problems.begin(), problems.end(), isOld);
  }
};

int lastOutputOfWindow(const Project& project) {
  const auto& channels = project.excitation.channels;
  const auto last = std::find_if(channels.rbegin(), channels.rend(),
                                 [](const ExcitationChannel& channel) { return channel.Include; });
  return static_cast<int>(channels.rend() - last);
}

Shortage shortageOf(const Project& project) {
  ChannelPlan plan = channelPlan(project);
  const LoggerConfiguration& configuration = project.configuration;
  const int outputs = analogOutputsOf7131 * configuration.quantity(ModuleKindIndex::excitation7131);
  return {.problems = std::move(plan.problems),
          .outputs = std::max(plan.caoOfBridges + lastOutputOfWindow(project) - outputs, 0),
          .multiplexers = std::max(plan.multiplexers - configuration.TCMUXQty, 0)};
}

/// The project as far as channels go, with the block in use: no names, no texts of tables.
Project withBlock(const Project& project, BlockKind kind, std::size_t number) {
  Project trial;
  trial.configuration.ModuleQty = project.configuration.ModuleQty;
  trial.configuration.TCMUXQty = project.configuration.TCMUXQty;
  trial.configuration.AutoChan = project.configuration.AutoChan;
  for (const BlockKind each : allBlockKinds) {
    trial.set(each).BlockCount = project.set(each).BlockCount;
    for (std::size_t n = 1; n <= blockCount(project, each) || (each == kind && n <= number); ++n) {
      trial.block(each, n) = project.block(each, n);
      trial.block(each, n).elements.clear();
    }
  }
  auto& count = trial.set(kind).BlockCount;
  count = std::max(count, static_cast<std::int16_t>(number));
  trial.filterSlots = project.filterSlots;
  trial.ports = project.ports;
  trial.excitation = project.excitation;
  return trial;
}

bool has(const Project& project, ModuleKindIndex module) {
  return project.configuration.quantity(module) > 0;
}

/// The first module that a kind needs and the logger lacks; "" when there is none.
std::string_view missingModule(const Project& project, BlockKind kind) {
  const bool needsK700X = kind == BlockKind::isolated || kind == BlockKind::tcmux;
  if (needsK700X && !isK700X(project.configuration)) return "7104 CPU";
  if (!has(project, infoOf(kind).module)) return moduleName(infoOf(kind).module);
  const bool isExcited = kind == BlockKind::bridge || kind == BlockKind::tcmux;
  if (isExcited && !has(project, ModuleKindIndex::excitation7131))
    return moduleName(ModuleKindIndex::excitation7131);
  if (kind == BlockKind::tcmux && project.configuration.TCMUXQty <= 0) return "TCMUX";
  return "";
}

std::optional<Message> missing(bool is, std::string_view module) {
  return is ? std::optional(complaintAboutMissingModule(module)) : std::nullopt;
}

}  // namespace

std::size_t freeChannelsFor(const Project& project, BlockKind kind, std::size_t number) {
  if (number < 1 || number > infoOf(kind).blockLimit) return 0;
  if (kind == BlockKind::filter && filterSlotOf(project, number) == 0) return 0;
  Project trial = withBlock(project, kind, number);
  std::int16_t& reps = trial.block(kind, number).Reps;
  reps = 0;
  const Shortage before = shortageOf(trial);
  for (reps = 1; static_cast<std::size_t>(reps) <= maxElements; ++reps)
    if (!shortageOf(trial).isNoneBeside(before)) break;
  return static_cast<std::size_t>(reps - 1);
}

std::size_t freeChannelsOfFilterSlot(const Project& project, std::size_t slot) {
  int used = 0;
  for (std::size_t n = 1; n <= blockCount(project, BlockKind::filter); ++n)
    if (filterSlotOf(project, n) == slot) used += project.block(BlockKind::filter, n).Reps;
  const int modules = project.configuration.quantity(ModuleKindIndex::filter7125);
  return static_cast<int>(slot) > modules
             ? 0
             : static_cast<std::size_t>(std::max(channelsOf7125 - used, 0));
}

std::optional<Message> complaintAboutReps(const Project& project, BlockKind kind,
                                          std::size_t number) {
  const std::size_t most = freeChannelsFor(project, kind, number);
  if (project.block(kind, number).Reps <= static_cast<int>(most)) return std::nullopt;
  return Message{.title = "NOT ENOUGH CHANNELS",
                 .text = concat("Not enough channels: ", most, " free.")};
}

std::optional<Message> complaintAboutModules(const Project& project, BlockKind kind) {
  const std::string_view module = missingModule(project, kind);
  return missing(!module.empty(), module);
}

std::optional<Message> complaintAboutNewBlock(const Project& project, BlockKind kind) {
  if (auto complaint = complaintAboutModules(project, kind)) return complaint;
  const std::size_t limit = infoOf(kind).blockLimit;
  if (blockCount(project, kind) < limit) return std::nullopt;
  return Message{.title = "TOO MANY",
                 .text = concat("The limit of ", limit, " blocks is reached.")};
}

Message complaintAboutMissingModule(std::string_view module) {
  return {.title = "NO MODULE", .text = concat("Please add a ", module, " module first.")};
}

std::optional<Message> complaintAboutCan(const Project& project) {
  return missing(!hasCanInterface(project), "CANIF");
}

}  // namespace model
