#include "ui/frm_iso_block.h"

#include <QVBoxLayout>
#include <algorithm>

#include "ports/error_reporter.h"
#include "ports/message_service.h"
#include "text/strings.h"
#include "timing/filter_order.h"
#include "timing/filter_response.h"

namespace ui {
namespace {

constexpr std::size_t responsePoints = 240;
constexpr double zerosShown = 3;
constexpr double lowestShown = -80;  // dB

/// Keeps what the planner says instead of showing it while the user types.
class KeptMessages final : public ports::MessageService, public ports::ErrorReporter {
 public:
  ports::Answer show(const ports::Message& message) override {
    keep(message.text);
    return message.defaultButton;
  }
  void report(int, std::string_view description, std::string_view) override {
    keep(std::string(description));
  }
  [[nodiscard]] const std::string& first() const { return first_; }

 private:
  void keep(const std::string& words) {
    if (first_.empty()) first_ = words;
  }
  std::string first_;
};

/// The project with one isolated block alone.
model::Project alone(const model::Project& project, std::size_t number) {
  model::Project one = project;
  for (std::size_t n = 1; n <= model::maxBlocks; ++n)
    if (n != number) one.block(model::BlockKind::isolated, n).Reps = 0;
  return one;
}

}  // namespace

frmIsoBlock::frmIsoBlock(QWidget* parent)
    : QWidget(parent),
      results_(new Form(this)),
      advice_(new QLabel(this)),
      response_(new pictures::CurvePlot(this)) {
  addResults();
  advice_->setWordWrap(true);
  advice_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  response_->setTitles("Hz", "dB");
  response_->setYRange(lowestShown, 0);
  response_->setAccessibleName("Filter response");
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(results_);
  layout->addWidget(advice_);
  layout->addWidget(response_, 1);
}

void frmIsoBlock::addResults() {
  results_->readout({"Filter order:", "Of the digital filter, 1 to 5."},
                    [this] { return orNoPlan(text::concat(plan_.filterOrder)); });
  results_->readout({"Integrated for:", "The integration time in force."},
                    [this] { return orNoPlan(timing::shownMicros(plan_.integrationMicros)); });
  results_->readout({"Time available:", "The time that a subscan leaves for measuring."},
                    [this] { return orNoPlan(timing::shownMicros(plan_.measTimeAvail)); });
  results_->readout({"Cutoff frequency:", "Where the filter lets half of the power through."},
                    [this] { return orNoPlan(timing::shownCutoff(plan_.cutoffFrequency)); });
}

std::string frmIsoBlock::orNoPlan(const std::string& words) const {
  if (!plan_.inUse) return "not in use";
  return plan_.possible() ? words : "no plan";
}

void frmIsoBlock::showPlan(const model::Project& project, std::size_t number) {
  KeptMessages messages;
  model::Project one = alone(project, number);
  plan_ = KGEN_COMMON::PlanIsolatedBlocks(one, messages, messages)[number - 1];
  problem_ = messages.first();
  advice_->setText(qstring(problem_));
  advice_->setVisible(!problem_.empty());
  results_->refresh();
  showResponse();
}

void frmIsoBlock::showResponse() {
  response_->setVisible(plan_.inUse && plan_.possible() && plan_.integrationMicros > 0);
  if (!plan_.inUse || !plan_.possible() || plan_.integrationMicros <= 0) return;
  const double firstZero = 1e6 / plan_.integrationMicros;
  pictures::Curve curve{"response", {}};
  for (const timing::ResponsePoint& point :
       timing::filterResponse(firstZero, plan_.filterOrder, zerosShown * firstZero, responsePoints))
    curve.points.append({point.hertz, std::max(point.decibels, lowestShown)});
  response_->setCurves({curve});
  response_->setMarkers(
      {{static_cast<double>(plan_.cutoffFrequency), "cutoff"}, {firstZero, "first zero"}});
}

}  // namespace ui
