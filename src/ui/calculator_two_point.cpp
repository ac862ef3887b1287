#include "ui/calculator_two_point.h"

#include <QLineEdit>

#include "calculators/calculator_texts.h"
#include "calculators/two_point.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace ui {
namespace {

namespace help = calculators::help;

std::string shown(const calculators::Result& result) { return result ? result->shown : ""; }

}  // namespace

TwoPointWindow::TwoPointWindow(SetupWindow& owner, const ScaledBlock& target, const QString& name,
                               std::string_view title,
                               model::TwoPointInputs model::CalculatorInputs::*inputs)
    : CalculatorWindow(owner, target, name, title), points_(inputs) {}

void TwoPointWindow::addInputs(Form& form) {
  const std::string x(calculators::inputCaption(target().kind, block()));
  const auto again = [this] { fromX_ ? probeX() : probeY(); };
  const std::string low = text::concat("&Lowest ", x, ":"),
                    high = text::concat("&Highest ", x, ":");
  addNumber(form, {low, help::lowestX}, [this]() -> std::string& {
    return points().XMin;
  }).then(again);
  addNumber(form, {high, help::highestX}, [this]() -> std::string& {
    return points().XMax;
  }).then(again);
  addNumber(form, {"L&owest output:", help::lowestY}, [this]() -> std::string& {
    return points().YMin;
  }).then(again);
  addNumber(form, {"Highest o&utput:", help::highestY}, [this]() -> std::string& {
    return points().YMax;
  }).then(again);
  addUnits(form, [this]() -> std::string& { return points().Units; });
}

void TwoPointWindow::addResults(Form& form) {
  addResult(form, {"Multiplier:", help::transferred},
            [this] { return calculators::lineThrough(points()).multiplier; });
  addResult(form, {"Offset:", help::transferred},
            [this] { return calculators::lineThrough(points()).offset; });
  onRefresh([this] { followY(); });
  Form& whatIf = form.group("What if");
  Field& x = addNumber(whatIf, {"&X:", help::probeX}, [this]() -> std::string& { return x_; });
  x.then([this] { probeX(); });
  connect(qobject_cast<QLineEdit*>(x.widget), &QLineEdit::editingFinished, this,
          [this] { keepXWithinEnds(); });
  addNumber(whatIf, {"&Y:", help::probeY}, [this]() -> std::string& {
    return points().YOut;
  }).then([this] { probeY(); });
}

void TwoPointWindow::probeX() {
  fromX_ = true;
  yOfX_ = points().YOut = x_.empty() ? "" : shown(calculators::probeAtX(points(), x_).y);
}

/// When X has been typed to its end.
void TwoPointWindow::keepXWithinEnds() {
  if (!fromX_ || x_.empty()) return;
  const calculators::Result within = calculators::probeAtX(points(), x_).x;
  if (within && within->number != text::readNumber(x_)) x_ = within->shown;
  refresh();
}

void TwoPointWindow::probeY() {
  fromX_ = false;
  yOfX_ = points().YOut;
  x_ = yOfX_.empty() ? "" : shown(calculators::probeAtY(points(), yOfX_).x);
}

/// Another Y than the one that belongs to X: the window opened, or an edit was undone.
void TwoPointWindow::followY() {
  if (points().YOut != yOfX_) probeY();
}

calculators::Transfer TwoPointWindow::transfer() const { return calculators::transferOf(points()); }

}  // namespace ui
