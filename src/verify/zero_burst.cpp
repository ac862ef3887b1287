#include "verify/zero_burst.h"

#include "model/channel_plan.h"
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

constexpr std::string_view title = "ZERO SUBROUTINE WARNING";

/// Kinds that can be zeroed and calibrated on site, as the lists name them.
struct ZeroKind {
  std::string_view name;
  BlockKind kind;
  bool bySlot;
};
constexpr ZeroKind zeroKinds[] = {
    {"Voltage", BlockKind::voltage, false},      {"Filter", BlockKind::filter, true},
    {"Hi Volts", BlockKind::highVoltage, false}, {"Isolated/7128", BlockKind::isolated, true},
    {"Bridge  ", BlockKind::bridge, false},      {"TCMUX", BlockKind::tcmux, false}};

bool isBurst(const model::Project& project) { return project.scan.ScanMode == 1; }

/// Calls visit(kind, number, block) for every block in use of these kinds.
template <class AnyProject, class Visit>
void forEachBlock(AnyProject& project, const Visit& visit) {
  for (const ZeroKind& kind : zeroKinds)
    for (std::size_t n = 1; n <= model::maxBlocks; ++n)
      if (inUse(project, kind.kind, n)) visit(kind, n, project.block(kind.kind, n));
}

std::vector<std::string> zeroFlagLines(const model::Project& project) {
  const model::ChannelPlan plan = channelPlan(project);
  std::vector<std::string> lines;
  forEachBlock(project, [&](const ZeroKind& kind, std::size_t n, const auto& block) {
    if (block.ZeroFlag == 0) return;
    const std::string place =
        kind.bySlot ? concat(" Slot ", plan.of(kind.kind, n).first.slot, ", Block ", n)
                    : concat(" Block ", n);
    lines.push_back(concat(kind.name, place, "  Flag ", block.ZeroFlag));
  });
  return lines;
}

std::vector<std::string> calOnSiteLines(const model::Project& project) {
  std::vector<std::string> lines;
  forEachBlock(project, [&](const ZeroKind& kind, std::size_t n, const auto& block) {
    if (block.CalOnSite) lines.push_back(concat(kind.name, " Block ", n));
  });
  return lines;
}

}  // namespace

std::optional<Message> questionAboutZeroFlags(const model::Project& project) {
  if (!isBurst(project)) return std::nullopt;
  const std::vector<std::string> lines = zeroFlagLines(project);
  if (lines.empty()) return std::nullopt;
  return Message{.title = std::string(title),
                 .text = joinedLines(
                     {"The Program Generator will not allow zero subroutines in conjunction with",
                      "burst mode, as this operation may not achieve the results desired.",
                      "The following blocks have been configured with zero flags:",
                      listedLines(lines), "Proceeding will disable all flags now.  Continue?"}),
                 .icon = Icon::question,
                 .buttons = Buttons::okCancel,
                 .defaultButton = Answer::cancel};
}

void clearZeroFlags(model::Project& project) {
  forEachBlock(project, [](const ZeroKind&, std::size_t, auto& block) { block.ZeroFlag = 0; });
}

std::optional<Message> questionAboutCalOnSite(const model::Project& project) {
  if (!isBurst(project)) return std::nullopt;
  const std::vector<std::string> lines = calOnSiteLines(project);
  if (lines.empty()) return std::nullopt;
  return Message{
      .title = std::string(title),
      .text = joinedLines({"Cal-On-Site previously selected may not give the results desired",
                           "with burst mode. These are selected:", listedLines(lines),
                           "WOULD YOU LIKE THEM DISABLED NOW?"}),
      .icon = Icon::question,
      .buttons = Buttons::yesNoCancel,
      .defaultButton = Answer::no};
}

void clearCalOnSite(model::Project& project) {
  forEachBlock(project, [](const ZeroKind&, std::size_t, auto& block) { block.CalOnSite = false; });
}

}  // namespace verify

namespace KGEN_COMMON {
namespace {

using ports::Answer;

bool refusesToClear(model::Project& project, const verify::CheckContext& context) {
  const auto zero = answerTo(context, verify::questionAboutZeroFlags(project));
  if (zero == Answer::ok) verify::clearZeroFlags(project);
  const auto calibration = answerTo(context, verify::questionAboutCalOnSite(project));
  if (calibration == Answer::yes) verify::clearCalOnSite(project);
  return zero == Answer::cancel || calibration == Answer::cancel;
}

}  // namespace

void VerifyZeroBurst(model::Project& project, const verify::CheckContext& context, bool& problem) {
  problem = true;  // also after a fault
  ranWithoutFault(context, "VerifyZeroBurst", [&] { problem = refusesToClear(project, context); });
}

}  // namespace KGEN_COMMON
