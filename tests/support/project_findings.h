#pragma once

#include <string>
#include <vector>

#include "model/block_rules.h"
#include "model/channel_plan.h"
#include "recorded_ports.h"
#include "timing/execution_interval.h"
#include "verify/save_checks.h"

namespace support {

/// Everything that a save would show, by titles, and what windows would say of scan and blocks.
inline std::vector<std::string> findingsOf(model::Project project) {
  RecordedMessages messages;
  RecordedFaults faults;
  bool doNotSave = false, needsUpgrade = false;
  KGEN_COMMON::VerifyBeforeSave(project, {messages, faults}, doNotSave, needsUpgrade);
  std::vector<std::string> found = messages.titles();
  found.insert(found.end(), faults.sources.begin(), faults.sources.end());
  if (doNotSave || needsUpgrade) found.emplace_back("not to be saved");
  for (const std::string& problem : channelPlan(project).problems) found.push_back(problem);
  if (const auto complaint = timing::complaintAboutScan(project)) found.push_back(*complaint);
  for (const model::BlockKind kind : model::allBlockKinds)
    for (std::size_t n = 1; n <= model::infoOf(kind).blockLimit; ++n)
      if (const auto problem = firstProblemOfBlock(project, kind, n))
        found.push_back(problem->text);
  return found;
}

}  // namespace support
