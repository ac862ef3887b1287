#include "ui/frm_iso_setup.h"

#include <algorithm>

#include "model/time_units.h"
#include "timing/filter_order.h"

namespace ui {
namespace {

constexpr int userTime = 2;               // integration code
constexpr int forcedOrder = 3;            // beside the integration codes: kept as a negative time
constexpr std::int16_t thermocouple = 1;  // input

}  // namespace

frmIsoSetup::frmIsoSetup(const WindowPorts& ports, QWidget* parent)
    : BlockWindow(ports, {"frmIsoSetup", "Isolated Measurements", "isolated blocks"},
                  model::BlockKind::isolated, parent) {
  build();
}

void frmIsoSetup::addSharedFields(Form& form) {
  Form& all = form.group("All isolated blocks");
  addFilter(all);
  all.check({"Re&verse inputs", "Measures twice with the inputs exchanged, which cancels offsets."},
            [this]() -> bool& { return shared().ReverseMes; });
  addScans(all);
  addReference(form, model::StoredSource::isolatedReference, &model::Project::isoReference);
}

/// The user gives the integration time, or the order of the filter; the planner finds the other.
void frmIsoSetup::addFilter(Form& form) {
  const auto isForced = [this] { return shared().Integration < 0; };
  form.addChoice(
      {"I&ntegration:",
       "Rejects the noise of the power line, takes the time below, or "
       "has the time follow from an order of the filter."},
      [] {
        return choicesOf({"50 Hz rejection", "60 Hz rejection", "Time below", "Force order"});
      },
      [this, isForced] { return isForced() ? forcedOrder : shared().IntegrationRange; },
      [this](int choice) { chooseIntegration(choice); });
  const Field& time =
      form.number({"Integration &time:",
                   "How long each measurement is integrated: a multiple of 96.", "uSec"},
                  model::isolatedIntegrationBounds,
                  [this]() -> std::int32_t& { return shared().Integration; })
          .settledBy([this](double micros) {
            return settledIntegration(model::InputKind::isolated7128, userTime,
                                      shared().Integration, static_cast<std::int32_t>(micros));
          })
          .closedWhen([this]() -> std::string {
            return shared().IntegrationRange == userTime ? "" : "The line rejection sets the time.";
          })
          .shownWhen([isForced] { return !isForced(); });
  stepBy(time, model::InputKind::isolated7128, &model::cAnalogConfig::IntegIncDec);
  form.addNumber(
          {"Forced &order:", "1 filters least and 5 most; the time follows from it."},
          [] { return model::isolatedOrderBounds; }, true,
          [this] { return -static_cast<double>(shared().Integration); },
          [this](double order) { shared().Integration = -static_cast<int>(order); })
      .shownWhen(isForced);
}

void frmIsoSetup::chooseIntegration(int choice) {
  const model::IsolatedSetup usual;
  if (choice == forcedOrder) {
    shared().IntegrationRange = userTime;
    const int order = planned_->plan().filterOrder;
    shared().Integration = -std::max(order, timing::lowestOrder);
    return;
  }
  if (shared().Integration < 0) shared().Integration = usual.Integration;
  shared().IntegrationRange = static_cast<std::int16_t>(choice);
  shared().Integration =
      settledIntegration(model::InputKind::isolated7128, shared().IntegrationRange,
                         shared().Integration, shared().Integration);
}

void frmIsoSetup::addScans(Form& form) {
  form.number({"Main scans each s&ubscan:", "How many main scans an isolated subscan takes."},
              model::scansPerSubScanBounds,
              [this]() -> std::int16_t& { return shared().ScansPerSubScan; })
      .settledBy([this](double scans) { return settledScans(scans); });
}

double frmIsoSetup::settledScans(double scans) {
  const double scan = model::scanMicros(working_);
  if (scan * scans <= static_cast<double>(timing::longestSubscanMicros)) return scans;
  const int most = std::max<int>(timing::mostScansPerSubScan(scan), 1);
  ports_.messages.show(timing::subscanLimitMessage(most, true));
  noteCorrection();
  return most;
}

void frmIsoSetup::addFields(Form& form) {
  const auto thermocouplesOnly = [this] { return block().InputType == thermocouple; };
  addReps(form);
  form.choice({"&Input:", "What the channels measure."}, choicesOf({"Volt", "TC"}),
              [this]() -> std::int16_t& { return block().InputType; });
  addTypeList(form, &model::MeasurementBlock::TCType).shownWhen(thermocouplesOnly);
  addRange(form);
  addOpenSensor(form).shownWhen(thermocouplesOnly);
  addTemperatureScale(form).shownWhen(thermocouplesOnly);
  addScaling(form);
  addUnits(form);
  addZeroAndCalibration(form);
  addStorage(form);
  planned_ = new frmIsoBlock(&form);
  form.row(planned_);
  onRefresh([this] { planned_->showPlan(working_, number()); });
}

/// The plans of all blocks follow; what is wrong with one is told here.
bool frmIsoSetup::mayBeDone() {
  if (!BlockWindow::mayBeDone()) return false;
  const model::Project& before = ports_.session.project();
  if (working_.isolated != before.isolated || working_.set(kind()) != before.set(kind()))
    KGEN_COMMON::PlanIsolatedBlocks(working_, ports_.messages, ports_.errors);
  return true;
}

}  // namespace ui
