#include "ui/number_box.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "text/numbers.h"
#include "text/strings.h"

namespace ui {

NumberBox::NumberBox(const Bounds& bounds, bool whole, QWidget* parent)
    : QAbstractSpinBox(parent), bounds_(bounds), whole_(whole) {
  setAlignment(Qt::AlignRight);
  setAccelerated(true);
  setKeyboardTracking(true);
  connect(lineEdit(), &QLineEdit::textEdited, this, &NumberBox::edited);
}

void NumberBox::setValue(double value) {
  const std::string typed = utf8(text());
  if (text::isNumber(typed) && text::readNumber(typed) == value) return;
  lineEdit()->setText(
      qstring(pattern_.empty() ? text::shortest(value) : text::formatted(value, pattern_)));
}

void NumberBox::setBounds(const Bounds& bounds) { bounds_ = bounds; }

std::optional<double> NumberBox::value() const {
  if (complaint()) return std::nullopt;
  return text::readNumber(utf8(text()));
}

Complaint NumberBox::complaint() const {
  const std::string typed = utf8(text());
  const double number = text::readNumber(typed);
  if (!text::isNumber(typed))
    return text::concat("'", typed, "' is no number; write it with a decimal point.");
  if (whole_ && number != std::floor(number)) return "Enter a whole number.";
  if (number < bounds_.low || number > bounds_.high)
    return text::concat("Enter a value from ", bounds_.low, " to ", bounds_.high, ".");
  return std::nullopt;
}

void NumberBox::stepBy(int steps) {
  double number = text::readNumber(utf8(text()));
  for (int i = 0; stepRule_ && i < std::abs(steps); ++i)
    number = stepRule_(number, steps > 0 ? 1 : -1);
  if (!stepRule_) number += steps * bounds_.step;
  setValue(std::clamp(number, bounds_.low, bounds_.high));
  selectAll();
  Q_EMIT edited();
}

QSize NumberBox::sizeHint() const {
  QSize size = QAbstractSpinBox::sizeHint();
  size.setWidth(fontMetrics().horizontalAdvance("-1800000000") + 40);
  return size;
}

QAbstractSpinBox::StepEnabled NumberBox::stepEnabled() const {
  if (isReadOnly()) return StepNone;
  return StepUpEnabled | StepDownEnabled;
}

}  // namespace ui
