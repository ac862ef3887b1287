#include "ui/quantity_box.h"

#include "ui/typing.h"

namespace ui {
namespace {

constexpr int longestCount = 6;

}  // namespace

QuantityBox::QuantityBox(std::function<bool(char key)> takes, QWidget* parent) : QLineEdit(parent) {
  setAlignment(Qt::AlignRight);
  setMaxLength(longestCount);
  setFixedWidth(fontMetrics().horizontalAdvance("000000") + 12);
  setValidator(new TypingRule(
      [this, takes = std::move(takes)](const QString& typed) {
        QString taken;
        for (const QChar key : typed)
          if (typed == shown_ || takes(key.toLatin1())) taken += key;
        return taken;
      },
      this));
  connect(this, &QLineEdit::textEdited, this, [this](const QString& typed) {
    if (typed.isEmpty()) return;  // on the way to another count
    setText(shown_);
    Q_EMIT wanted(typed.toInt());
  });
  connect(this, &QLineEdit::editingFinished, this, &QuantityBox::settle);
}

void QuantityBox::showCount(int count) {
  shown_ = QString::number(count);
  if (text() != shown_) setText(shown_);
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

}  // namespace ui
