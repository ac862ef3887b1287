#include "ui/scan_budget.h"

#include <algorithm>

#include "model/time_units.h"
#include "timing/measurement_times.h"
#include "ui/texts.h"

namespace ui {
namespace {

using pictures::Bar;

void addSegment(Bar& bar, const QString& name, double micros) {
  if (micros > 0) bar.segments.append({name, micros});
}

/// Small ones share a segment, so that no colour comes twice.
bool isSmall(timing::TimeGroup group) {
  using enum timing::TimeGroup;
  return group == cao || group == port || group == flag;
}

Bar mainScan(const model::Project& project, const timing::MeasurementTimes& times) {
  Bar bar{"Scan", {}, model::scanMicros(project)};
  double others = times.batteryVolts + times.batteryCurrent;
  for (std::size_t i = 0; i < timing::timeGroups; ++i) {
    const auto group = static_cast<timing::TimeGroup>(i);
    if (isSmall(group))
      others += times.of(group);
    else
      addSegment(bar, qstring(timing::nameOf(group)), times.of(group));
  }
  addSegment(bar, "Outputs and battery", others);
  return bar;
}

}  // namespace

QList<Bar> scanBudget(const model::Project& project, const model::ChannelPlan& plan) {
  const timing::MeasurementTimes times = timing::measurementTimes(project, plan);
  QList<Bar> bars = {mainScan(project, times)};
  const double subscan =
      model::scanMicros(project) * std::max<int>(project.isolated.ScansPerSubScan, 1);
  for (std::size_t module = 0; module < times.isolatedSlots.size(); ++module) {
    Bar bar{QString("7128 no. %1").arg(module + 1), {}, subscan};
    addSegment(bar, "Isolated", times.isolatedSlots[module]);
    if (!bar.segments.isEmpty()) bars.append(bar);
  }
  return bars;
}

}  // namespace ui
