#pragma once

#include <string>
#include <vector>

#include "desktop/findings.h"
#include "model/document_stamp.h"
#include "pictures/stacked_bars.h"
#include "timing/measurement_times.h"

namespace desktop {

/// What the measurements take of a scan, and what limits it.
struct Budget {
  QList<pictures::Bar> bars;  // the scan comes first
  std::vector<timing::ScanLimit> limits;
  double scanMicros = 0;
  double shortestScanMicros = 0;
};
Budget budgetOf(const model::Project& project);

/// Everything that the window shows of a project beside its summary.
struct Review {
  std::string program;
  std::string tables;
  std::string wiring;
  Budget budget;
  std::vector<Finding> findings;  // the gravest first
};

struct ReviewRequest {
  model::Project project;
  model::DocumentStamp stamp;
  unsigned warningMask = 0;
};

/// May run beside the window, on a thread of its own.
Review reviewOf(const ReviewRequest& request);

}  // namespace desktop
