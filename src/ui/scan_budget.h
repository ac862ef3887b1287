#pragma once

#include "model/channel_plan.h"
#include "model/project.h"
#include "pictures/stacked_bars.h"

namespace ui {

/// What uses up the time of a scan, in microseconds: a bar for the scan, and one for each 7128
/// module in use, which converts in subscans of its own.
QList<pictures::Bar> scanBudget(const model::Project& project, const model::ChannelPlan& plan);

}  // namespace ui
