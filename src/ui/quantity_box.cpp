#include "ui/quantity_box.h"

#include <QKeyEvent>
#include <algorithm>

namespace ui {
namespace {

constexpr int longestCount = 6;

}  // namespace

QuantityBox::QuantityBox(Digits digits, std::function<bool(char key)> takes, QWidget* parent)
    : QLineEdit(parent), digits_(digits), takes_(std::move(takes)) {
  setAlignment(Qt::AlignRight);
  setMaxLength(longestCount);
  setFixedWidth(fontMetrics().horizontalAdvance("000000") + 12);
  connect(this, &QLineEdit::textEdited, this, &QuantityBox::readText);
  connect(this, &QLineEdit::editingFinished, this, &QuantityBox::settle);
}

void QuantityBox::showCount(int count) {
  shown_ = QString::number(count);
  if (text() != shown_) setText(shown_);
}

void QuantityBox::readText(const QString& typed) {
  if (typed.isEmpty()) return;  // on the way to another count
  setText(shown_);
  const auto taken = [this](QChar key) { return takes_(key.toLatin1()); };
  if (std::all_of(typed.begin(), typed.end(), taken)) Q_EMIT wanted(typed.toInt());
}

void QuantityBox::settle() {
  if (!text().isEmpty()) return;
  setText(shown_);
  Q_EMIT wanted(0);
}

void QuantityBox::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  selectAll();
}

void QuantityBox::keyPressEvent(QKeyEvent* event) {
  const QString key = event->text();
  const bool writes = !key.isEmpty() && key.front().isPrint();
  if (writes && !takes_(key.front().toLatin1())) return;
  if (writes && digits_ == Digits::one) selectAll();
  QLineEdit::keyPressEvent(event);
}

}  // namespace ui
