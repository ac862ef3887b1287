#include "verify/save_checks.h"

#include <algorithm>

#include "text/strings.h"
#include "verify/duplicate_names.h"
#include "verify/flag_checks.h"
#include "verify/message_lines.h"
#include "verify/pick_variables.h"
#include "verify/timing_checks.h"
#include "verify/zero_burst.h"

namespace verify {
namespace {

using model::BlockKind;
using ports::Answer;
using ports::Buttons;
using ports::Message;
using text::concat;

constexpr std::string_view upgradeLines =
    "Saving this Generator Project will irreversibly upgrade\r\n"
    "the Trigger and WriteIf conditions so that the project\r\n"
    "can no longer be used in Arvela 5.3.1 or earlier.";

template <class Floats>
void addBlocks(std::vector<std::string>& lines, const model::Project& project, BlockKind kind,
               std::string_view name, const Floats& floats) {
  for (std::size_t n = 1; n <= model::infoOf(kind).blockLimit; ++n)
    if (inUse(project, kind, n) && floats(project.block(kind, n)))
      lines.push_back(concat(name, " block ", n, "."));
}

std::vector<std::string> floatingBlocks(const model::Project& project) {
  const auto measuresCouples = [](const auto& block) { return !block.TCMUXVolts; };
  std::vector<std::string> lines;
  addBlocks(lines, project, BlockKind::thermocouple, "Diff Thermocouple", model::isDifferential);
  addBlocks(lines, project, BlockKind::tcmux, "TCMUX Thermocouple", measuresCouples);
  addBlocks(lines, project, BlockKind::voltage, "Diff Voltage", model::isDifferential);
  return lines;
}

bool hasConditions(const model::OutputTable& table) {
  return table.TrigTable > 0 || table.TrigTabStop > 0 || table.WriteIf != 0;
}

/// A text without a digit counts as an old version.
bool isBeforeVersion6(std::string_view version) {
  const auto digit = std::find_if(version.begin(), version.end(), text::isDigit);
  return digit == version.end() || *digit < '6';
}

}  // namespace

std::optional<Message> warningAboutFloatingGround(const model::Project& project) {
  const std::vector<std::string> lines = floatingBlocks(project);
  if (lines.empty()) return std::nullopt;
  return Message{
      .title = "FLOATING GROUND WARNING",
      .text = joinedLines({"The following measurement blocks are NOT automatically",
                           "referenced to ground in the data logger:", listedLines(lines),
                           "If any differential measurements are floating (not referenced",
                           "to ground) then the low terminal on the 7121/22 module may need to be",
                           "connected to the adjacent ground terminal.", "SEE WIRING DIAGRAM"})};
}

Message questionSaveAnyway(const SaveQuestion& situation) {
  return {.title = "Save Generator Project ?",
          .text = concat(situation.sending ? "Program will not be downloaded.\r\n" : "",
                         situation.upgradeToo ? concat(upgradeLines, "\r\n") : "",
                         situation.dunmoreHost ? "Dunmore" : "The generator",
                         joinedLines({" recommends that the Generator file should NOT be saved",
                                      "due to possible issues in the following areas : ", "",
                                      "Duplicate Names", "Bad Timing", "Bad Slow Sequence",
                                      "Interval Problems", "Bad Status Flags",
                                      "Zero/Burst Problems", "", "Save it anyway?"})),
          .buttons = Buttons::yesNo,
          .defaultButton = Answer::no};
}

Message questionUpgrade() {
  return {.title = "Upgrade Generator Project Beyond Arvela 5.3.1 ?",
          .text = joinedLines({upgradeLines, "", "Do you want to save the project anyway ?"}),
          .buttons = Buttons::yesNo,
          .defaultButton = Answer::no};
}

SaveVerdict checkedForSave(model::Project& project, const CheckContext& context) {
  SaveVerdict verdict;
  KGEN_COMMON::VerifyBeforeSave(project, context, verdict.DoNotSave, verdict.NeedsUpgrade);
  if (!verdict.DoNotSave && !verdict.NeedsUpgrade)
    KGEN_COMMON::CheckFloatingGround(project, context);
  return verdict;
}

}  // namespace verify

namespace KGEN_COMMON {
namespace {

/// The checks that always run, each whatever the others found.
bool hasFirstProblems(const model::Project& project, const verify::CheckContext& context) {
  bool names = false;
  bool timing = false;
  bool slowSequence = false;
  CheckDuplicateNames(project, context, names);
  CheckMeasTimeVsInterval(project, context, timing);
  CheckSlowSequence(project, context, slowSequence);
  const bool intervalsAreFine = CheckTableIntervals(project, context);
  return !intervalsAreFine || names || timing || slowSequence;
}

/// The checks that are not worth asking about while the first ones found something.
bool hasFurtherProblems(model::Project& project, const verify::CheckContext& context) {
  bool problem = false;
  VerifyPickVars(project, context, verify::PickVarsMode::beforeSave);
  CheckDuplicateFlags(project, context, problem);
  if (!problem) VerifyZeroBurst(project, context, problem);
  return problem;
}

}  // namespace

void VerifyBeforeSave(model::Project& project, const verify::CheckContext& context, bool& DoNotSave,
                      bool& NeedsUpgrade) {
  DoNotSave = true;  // also after a fault
  NeedsUpgrade = false;
  ranWithoutFault(context, "VerifyBeforeSave", [&] {
    DoNotSave = hasFirstProblems(project, context) || hasFurtherProblems(project, context);
    NeedsUpgrade = CheckTriggerUpgrade(project);
  });
}

bool CheckTriggerUpgrade(const model::Project& project) {
  return verify::isBeforeVersion6(project.configuration.Version) &&
         std::any_of(project.tables.begin(), project.tables.end(), verify::hasConditions);
}

void CheckFloatingGround(const model::Project& project, const verify::CheckContext& context) {
  if (!context.isOff(verify::floatingGroundOff))
    answerTo(context, verify::warningAboutFloatingGround(project));
}

}  // namespace KGEN_COMMON
