#include "timing/isolated_plan.h"

#include <algorithm>
#include <cmath>

#include "model/time_units.h"
#include "text/numbers.h"
#include "timing/filter_order.h"

namespace timing {
namespace {

using model::BlockKind;

class SilentMessages final : public ports::MessageService {
 public:
  ports::Answer show(const ports::Message& message) override { return message.defaultButton; }
};

class SilentErrors final : public ports::ErrorReporter {
 public:
  void report(int, std::string_view, std::string_view) override {}
};

bool checksOpenCouples(const model::MeasurementBlock& block) {
  constexpr int thermocouple = 1;
  return block.InputType == thermocouple && block.OpenSensDetect;
}

/// The least time for measuring that gives a plan.
std::int64_t neededMeasurement(std::int32_t integration) {
  const std::int64_t order =
      std::clamp<std::int64_t>(-static_cast<std::int64_t>(integration), lowestOrder, highestOrder);
  return std::max<std::int64_t>(leastMeasurementMicros,
                                integration < 0 ? (order + 1) * sampleMicros : integration);
}

IsolatedPlan unplanned(const model::IsolatedSetup& setup, bool openThermocouple) {
  IsolatedPlan block;
  block.inUse = true;
  block.integrationMicros = setup.Integration;
  const auto need = static_cast<double>(
      subscanFor(neededMeasurement(setup.Integration), openThermocouple, setup.ReverseMes));
  block.neededScanMicros = std::ceil(need / std::max<double>(setup.ScansPerSubScan, 1));
  return block;
}

/// Plans the blocks one after the other: scans per subscan that one of them lowers hold for the
/// next.
class Pass {
 public:
  Pass(const model::Project& project, ports::MessageService& messages, ports::ErrorReporter& errors)
      : project_(project), messages_(messages), errors_(errors), setup_(project.isolated) {}

  IsolatedPlans run() {
    IsolatedPlans plans;
    for (std::size_t n = 1; n <= model::maxBlocks; ++n)
      plans[n - 1] = model::inUse(project_, BlockKind::isolated, n) ? planned(n) : idle();
    return plans;
  }

  [[nodiscard]] std::int16_t scansPerSubScan() const { return setup_.ScansPerSubScan; }

 private:
  [[nodiscard]] IsolatedPlan idle() const {
    IsolatedPlan block;
    block.integrationMicros = setup_.Integration;
    return block;
  }

  IsolatedPlan planned(std::size_t number) {
    const bool openThermocouple = checksOpenCouples(project_.block(BlockKind::isolated, number));
    if (model::scanMicros(project_) > static_cast<double>(longestSubscanMicros)) {
      refuseScan();
      return unplanned(setup_, openThermocouple);
    }
    cFilterOrder planner(messages_, errors_);
    const std::int32_t result =
        planner.CalcFOrderOrIntTime(scanMicros(), setup_.Integration, openThermocouple,
                                    setup_.ReverseMes, setup_.ScansPerSubScan);
    IsolatedPlan block = unplanned(setup_, openThermocouple);
    if (result >= 0) describe(planner, result, block);
    return block;
  }

  /// Longer than the planner can count; said once for all blocks.
  void refuseScan() {
    if (!refused_) messages_.show(subscanLimitMessage(1));
    refused_ = true;
    setup_.ScansPerSubScan = 1;
  }

  [[nodiscard]] std::int32_t scanMicros() const {
    return static_cast<std::int32_t>(
        text::integerWithin(model::scanMicros(project_), 0, longestSubscanMicros));
  }

  static void describe(const cFilterOrder& planner, std::int32_t result, IsolatedPlan& block) {
    block.result = result;
    block.filterOrder = planner.FilterOrder();
    block.integrationMicros = planner.IntegrationTimeUSec();
    block.measTimeAvail = planner.MeasTimeAvail();
    block.cutoffFrequency = planner.CutoffFrequency();
    const std::int64_t sampling = static_cast<std::int64_t>(planner.NumFilterCoeffs()) *
                                  sampleMicros * planner.NumPreFiltAvg();
    block.conversionMicros =
        static_cast<double>(subscanFor(sampling, planner.OpenTCCheck(), planner.InputReversal()));
  }

  const model::Project& project_;
  ports::MessageService& messages_;
  ports::ErrorReporter& errors_;
  model::IsolatedSetup setup_;
  bool refused_ = false;
};

}  // namespace

IsolatedPlans isolatedPlans(const model::Project& project) {
  SilentMessages messages;
  SilentErrors errors;
  return Pass(project, messages, errors).run();
}

}  // namespace timing

namespace KGEN_COMMON {

timing::IsolatedPlans PlanIsolatedBlocks(model::Project& project, ports::MessageService& messages,
                                         ports::ErrorReporter& errors) {
  timing::Pass pass(project, messages, errors);
  const timing::IsolatedPlans plans = pass.run();
  project.isolated.ScansPerSubScan = pass.scansPerSubScan();
  return plans;
}

}  // namespace KGEN_COMMON
