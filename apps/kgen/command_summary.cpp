#include <memory>

#include "command.h"
#include "control/summary.h"
#include "failure.h"
#include "model/channel_plan.h"
#include "parser.h"
#include "project_files.h"
#include "terminal.h"
#include "timing/measurement_times.h"

namespace kgen {
namespace {

int runSummary(const std::string& file) {
  const auto opened = openProject(file);
  const model::ChannelPlan plan = model::channelPlan(opened->project);
  const std::string name = opened->path == "-" ? "" : std::string(fileNameOf(baseOf(opened->path)));
  writeOut(control::summaryText(opened->project, plan,
                                timing::measurementTimes(opened->project, plan), {.name = name}));
  return done;
}

}  // namespace

Action prepareSummary(Parser& parser) {
  const auto file = std::make_shared<std::string>();
  parser.argument("FILE", "Project file, - for standard input", *file);
  return [file] { return runSummary(*file); };
}

}  // namespace kgen
