#include "desktop/review.h"

#include <algorithm>
#include <iterator>

#include "control/document_text.h"
#include "model/channel_plan.h"
#include "model/time_units.h"
#include "text/strings.h"
#include "ui/scan_budget.h"

namespace desktop {
namespace {

using control::Document;
using text::concat;

void append(std::vector<Finding>& findings, std::vector<Finding> more) {
  std::move(more.begin(), more.end(), std::back_inserter(findings));
}

/// The program with what is found in it, or why there is none.
void addProgram(Review& review, const ReviewRequest& request) {
  try {
    SAVEDLD::Program program = SAVEDLD::generate(request.project, request.stamp);
    append(review.findings, findingsOfProgram(program));
    review.program = std::move(program.text);
  } catch (const SAVEDLD::ProgramTooLong& tooLong) {
    review.findings.push_back({Weight::error, tooLong.what(), tooLong.what(), 0, -1});
    review.program = concat("' ", tooLong.what(), "\r\n");
  }
}

}  // namespace

Budget budgetOf(const model::Project& project) {
  const model::ChannelPlan plan = model::channelPlan(project);
  const timing::MeasurementTimes times = timing::measurementTimes(project, plan);
  Budget budget;
  budget.scanMicros = model::scanMicros(project);
  budget.shortestScanMicros = times.shortestScan;
  budget.bars = ui::scanBudget(project, plan);
  budget.limits = timing::scanLimits(project, plan);
  return budget;
}

Review reviewOf(const ReviewRequest& request) {
  Review review;
  append(review.findings, findingsOfChecks(request.project, request.warningMask));
  append(review.findings, findingsOfChannels(request.project));
  addProgram(review, request);
  std::stable_sort(review.findings.begin(), review.findings.end(),
                   [](const Finding& a, const Finding& b) { return a.weight < b.weight; });
  review.tables = control::documentText(Document::tables, request.project, request.stamp);
  review.wiring = control::documentText(Document::wiring, request.project, request.stamp);
  review.budget = budgetOf(request.project);
  return review;
}

}  // namespace desktop
