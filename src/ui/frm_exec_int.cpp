#include "ui/frm_exec_int.h"

#include <QHeaderView>
#include <QSplitter>
#include <QVBoxLayout>
#include <limits>

#include "control/condition_cells.h"
#include "control/field_expression.h"
#include "model/conditions.h"
#include "model/pick_list.h"
#include "model/time_units.h"
#include "pictures/colours.h"
#include "text/strings.h"
#include "timing/execution_interval.h"
#include "timing/isolated_plan.h"
#include "ui/choices.h"
#include "ui/scan_budget.h"
#include "verify/timing_checks.h"
#include "verify/window_checks.h"

namespace ui {
namespace {

using text::concat;

constexpr double mostScans = std::numeric_limits<std::int32_t>::max();
constexpr int longestExpression = 250;
constexpr int onCondition = 1, onFlag = 2;  // triggers of a burst

std::vector<Choice> comparisonChoices() {
  std::vector<Choice> choices;
  for (const std::string& each : control::comparisons())
    choices.push_back({each, static_cast<int>(choices.size())});
  return choices;
}

}  // namespace

frmExecInt::frmExecInt(const WindowPorts& ports, QWidget* parent)
    : SetupWindow(ports, {"frmExecInt", "Scan Interval", "scan interval"}, parent) {
  onRefresh([this] { compute(); });
  auto* form = new Form;
  Form& interval = form->group("Scan interval");
  addInterval(interval);
  addScanning(form->group("Scanning"));
  addBurst(form->group("Burst"));
  form->rowStretch();
  add(*form);
  auto* contents = new QSplitter(Qt::Horizontal, this);
  contents->addWidget(scrolled(form));
  contents->addWidget(budget());
  contents->setStretchFactor(1, 1);
  contents->setChildrenCollapsible(false);
  contents->setSizes({430, 700});
  setContents(contents);
  interval.setFocus();
  resize(1140, 740);
}

void frmExecInt::compute() {
  plan_ = model::channelPlan(working_);
  times_ = timing::measurementTimes(working_, plan_);
  limits_ = timing::scanLimits(working_, plan_);
  if (bars_ != nullptr) bars_->setBars(scanBudget(working_, plan_), "uSec");
}

void frmExecInt::addInterval(Form& form) {
  constexpr double longest = 1e9;
  form.number({"&Interval:", "How often the program scans, in the unit below."}, Bounds{1, longest},
              [this]() -> double& { return scan().ExecutionTime; });
  form.choice({"&Unit:", "The unit of the interval. With uSec the number counts tens."},
              timeUnitChoices(model::unitcode::hours),
              [this]() -> std::int16_t& { return scan().ExecTimeUnits; });
  form.readout({"That is:", "The time from scan to scan."}, [this] {
    const double each = model::scanMicros(working_);
    const std::string number = text::formatted(
        model::trueNumber(scan().ExecutionTime, scan().ExecTimeUnits), "#,##0.######");
    const std::string scans = text::formatted(each > 0 ? 1e6 / each : 0, "#,##0.######");
    return concat(number, " ", KGEN_COMMON::TimeUnitName(scan().ExecTimeUnits, false), ", ", scans,
                  scans == "1" ? " scan a second" : " scans a second");
  });
  auto* fault = new QLabel(this);
  fault->setWordWrap(true);
  onRefresh([this, fault] {
    QPalette colours;
    colours.setColor(QPalette::WindowText, pictures::alarmColour(palette()));
    fault->setPalette(colours);
    const Complaint words = complaint();
    fault->setText(qstring(words.value_or("")));
    fault->setVisible(words.has_value());
  });
  form.row(fault);
}

Complaint frmExecInt::complaint() const {
  if (isBurst())
    if (Complaint burst = timing::complaintAboutBurst(working_)) return burst;
  return timing::complaintAboutScan(working_);
}

void frmExecInt::addScanning(Form& form) {
  form.choice({"&Mode:", "Continuous scans go on all the time; a burst is kept in the buffer."},
              choicesOf({"Continuous", "Burst"}),
              [this]() -> std::int16_t& { return scan().ScanMode; })
      .then([this] { switchBuffer(); })
      .closedWhen([this] {
        return isBurst() ? std::string() : timing::complaintAboutBurst(working_).value_or("");
      });
  addBuffer(form);
  std::vector<Choice> flags = choicesOf({"at once"});
  for (int flag = 1; flag <= static_cast<int>(model::maxFlags); ++flag)
    flags.push_back({concat("when Flag ", flag, " is set"), flag});
  form.choice({"&Start:", "The scan begins at once, or waits for a flag."}, std::move(flags),
              [this]() -> std::int16_t& { return scan().FlagScan; });
}

/// A burst is always buffered. On a 7104 the switch is for bursts alone.
void frmExecInt::switchBuffer() {
  const bool kept = scan().ScanBuffer && !model::isK700X(working_.configuration);
  scan().ScanBuffer = isBurst() || kept;
}

/// The 7104 buffers a number of scans; the 7103 has a switch beside it.
void frmExecInt::addBuffer(Form& form) {
  const auto isK700X = [this] { return model::isK700X(working_.configuration); };
  form.number({"Scans &buffered:", "Scans that wait for being processed; 0 for none."},
              Bounds{0, mostScans}, [this]() -> std::int32_t& { return scan().BufferScans; })
      .shownWhen(isK700X);
  form.check({"&Buffer scans", "Scans wait in a buffer for being processed."},
             [this]() -> bool& { return scan().ScanBuffer; })
      .closedWhen([this] { return std::string(isBurst() ? "A burst is always buffered." : ""); })
      .shownWhen([isK700X] { return !isK700X(); });
  form.number({"Buffer si&ze:", "Scans in the buffer, of a burst or of continuous scans.", "scans"},
              Bounds{0, std::numeric_limits<std::int16_t>::max()},
              [this]() -> std::int16_t& { return scan().ScanBufferSize; })
      .shownWhen([this, isK700X] { return isBurst() || (!isK700X() && scan().ScanBuffer); });
  form.choice({"Buffer m&emory:", "Where scans are buffered."},
              choicesOf({"CPU S-RAM", "PAM card A", "PAM card B"}),
              [this]() -> std::int16_t& { return scan().PamBuffer; })
      .shownWhen([this, isK700X] { return isBurst() || (!isK700X() && scan().ScanBuffer); });
}

void frmExecInt::addBurst(Form& form) {
  onRefresh([this, &form] { form.parentWidget()->setVisible(isBurst()); });
  form.choice({"T&rigger:", "What begins a burst."},
              choicesOf({"none, it begins at once", "a measurement", "a flag"}),
              [this]() -> std::int16_t& { return scan().BurstTrigger; });
  addBurstCondition(form);
  form.number({"Scans a&fter the trigger:", "The burst ends so many scans after its trigger."},
              Bounds{0, mostScans}, [this]() -> std::int32_t& { return scan().PostTriggerScans; });
}

void frmExecInt::addBurstCondition(Form& form) {
  const auto triggered = [this] {
    return scan().BurstTrigger == onCondition || scan().BurstTrigger == onFlag;
  };
  form.pick(
          {"&Variable:", "What is tested, out of the variables of the project."},
          [this] {
            const bool flags = scan().BurstTrigger == onFlag;
            return model::variableNames(working_,
                                        flags ? model::flagVariables : model::channelVariables);
          },
          [this]() -> std::string& { return scan().TriggerMeasVar; })
      .shownWhen(triggered);
  form.choice({"C&omparison:", "How the variable is compared with the value."}, comparisonChoices(),
              [this]() -> std::int16_t& { return scan().TriggerCompare; })
      .shownWhen([this] { return scan().BurstTrigger == onCondition; });
  form.number({"Va&lue:", "What the variable is compared with."}, Bounds{-1e30, 1e30},
              [this]() -> double& { return scan().TriggerValue; })
      .shownWhen([this] { return scan().BurstTrigger == onCondition; });
  form.text(
          {"Free e&xpression:", "An expression that takes the place of the comparison."},
          longestExpression, [this]() -> std::string& { return scan().TrigExpression; },
          [this](std::string_view typed) -> Complaint {
            const auto fault = typed.empty() ? std::nullopt : control::faultIn(typed, working_);
            return fault ? Complaint(fault->text) : Complaint();
          })
      .shownWhen(triggered);
  form.readout({"Begins when:", "The condition as the program has it."},
               [this] {
                 const std::string words = model::burstTriggerText(scan());
                 return words.empty() ? std::string("not complete: choose a variable") : words;
               })
      .shownWhen(triggered);
}

void frmExecInt::addReadings(Form& form) {
  form.readout({"Estimated time:", "What all measurements of a scan take.", "uSec"},
               [this] { return microsText(times_.total); });
  form.readout({"Shortest scan:", "The shortest interval that is possible.", "uSec"},
               [this] { return microsText(times_.shortestScan); });
  form.readout({"Filter minimum:", "The shortest scan that the 7125 modules in use allow.", "uSec"},
               [this] {
                 const double least = timing::minimumFilterScanMicros(working_);
                 return least > 0 ? microsText(least) : std::string("no filters");
               });
  form.readout({"Isolated subscan:", "The time for one conversion of the 7128 modules.", "uSec"},
               [this] { return isolatedText(); });
  form.readout({"Scan buffer:", "What the buffer takes of its memory.", "bytes"}, [this] {
    return text::formatted(static_cast<double>(timing::bufferBytes(working_)), "#,##0");
  });
}

std::string frmExecInt::isolatedText() const {
  for (std::size_t n = 1; n <= model::maxBlocks; ++n)
    if (model::inUse(working_, model::BlockKind::isolated, n))
      return microsText(model::scanMicros(working_) * working_.isolated.ScansPerSubScan);
  return "no isolated blocks";
}

QWidget* frmExecInt::budget() {
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  auto* readings = new Form(side);
  addReadings(readings->group("Readings"));
  add(*readings);
  bars_ = new pictures::StackedBars(side);
  bars_->setAccessibleName("Scan-time budget");
  layout->addWidget(readings);
  layout->addWidget(new QLabel("What takes the time of a scan", side));
  layout->addWidget(bars_);
  layout->addWidget(limitSheet(), 1);
  return side;
}

QWidget* frmExecInt::limitSheet() {
  limitList_.setColumns({{"Limit", "What limits the scan interval.",
                          [this](std::size_t row) { return limits_[row].cause; }},
                         {"At least (uSec)", "The shortest scan that it allows.",
                          [this](std::size_t row) { return microsText(limits_[row].leastMicros); }},
                         {"At most (uSec)", "The longest scan that it allows.",
                          [this](std::size_t row) {
                            const double most = limits_[row].mostMicros;
                            return most > 0 ? microsText(most) : std::string();
                          }}},
                        [this] { return limits_.size(); });
  auto* view = new SheetView(limitList_, this);
  view->verticalHeader()->hide();
  describe(*view, "Limits of the scan interval", "What limits the scan interval, and to what.");
  const int letter = fontMetrics().averageCharWidth();
  view->setColumnWidth(0, 46 * letter);
  view->setColumnWidth(1, 18 * letter);
  add(limitList_);
  return view;
}

/// A scan that is as it was has nothing to be checked for.
bool frmExecInt::mayBeDone() {
  if (scan() == ports_.session.project().scan) return true;
  const auto show = [this](const std::string& text, ports::Icon icon) {
    ports_.messages.show({.title = "SCAN INTERVAL", .text = text, .icon = icon});
  };
  if (const Complaint fault = complaint()) {
    show(*fault, ports::Icon::critical);
    return false;
  }
  const verify::CheckContext context{
      ports_.messages, ports_.errors,
      static_cast<unsigned>(ports_.session.settings().WarningMessageMask)};
  KGEN_COMMON::CheckTableIntervals(working_, context, verify::IntervalCheck::executionIntervals);
  bool problem = false;
  KGEN_COMMON::CheckScanRateTables(working_, context, problem);
  if (problem) return false;
  KGEN_COMMON::PlanIsolatedBlocks(working_, ports_.messages, ports_.errors);
  const auto warning = timing::warningAboutEstimate(working_, model::channelPlan(working_));
  if (warning && !context.isOff(verify::timingCheckOff)) show(*warning, ports::Icon::exclamation);
  return true;
}

std::vector<std::string> frmExecInt::previewNames() const {
  return {"PERIOD", "P_UNITS", "Scan", "BeginBurstTrigger", "EndBurstTrigger"};
}

}  // namespace ui
