#include "desktop/find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QTextBlock>

#include "ui/form.h"

namespace desktop {
namespace {

constexpr int mostMarks = 500;  // more would make typing slow, and are too many to look at

QString plural(qsizetype count) {
  return count == 1 ? QString("1 place") : QString("%1 places").arg(count);
}

}  // namespace

FindBar::FindBar(QPlainTextEdit& text, QWidget* parent)
    : QWidget(parent), text_(text), words_(new QLineEdit(this)), count_(new QLabel(this)) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(4, 2, 4, 2);
  ui::describe(*words_, "Find", "Words to find, in any case of letters. Enter goes on.");
  words_->setPlaceholderText("Find");
  layout->addWidget(words_, 1);
  layout->addWidget(count_);
  connect(addButton(Qt::UpArrow, "Previous", "Goes to the place before (Shift+F3)."),
          &QToolButton::clicked, this, &FindBar::findPrevious);
  connect(addButton(Qt::DownArrow, "Next", "Goes to the next place (F3)."), &QToolButton::clicked,
          this, &FindBar::findNext);
  connect(words_, &QLineEdit::textChanged, this, &FindBar::search);
  connect(words_, &QLineEdit::returnPressed, this, &FindBar::findNext);
  hide();
}

QToolButton* FindBar::addButton(Qt::ArrowType arrow, const QString& caption, const QString& help) {
  auto* button = new QToolButton(this);
  button->setArrowType(arrow);
  button->setFocusPolicy(Qt::StrongFocus);
  ui::describe(*button, caption, help);
  layout()->addWidget(button);
  return button;
}

void FindBar::open() {
  show();
  const QString selected = text_.textCursor().selectedText();
  if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator))
    words_->setText(selected);
  words_->setFocus();
  words_->selectAll();
  recount();
}

void FindBar::close() {
  hide();
  text_.setExtraSelections({});
  text_.setFocus();
}

/// From the place that is shown on, so that longer words stay where shorter ones were found.
void FindBar::search(const QString& words) {
  QTextCursor cursor = text_.textCursor();
  cursor.setPosition(cursor.selectionStart());
  text_.setTextCursor(cursor);
  if (!words.isEmpty()) step({});
  recount();
}

void FindBar::findNext() { step({}); }
void FindBar::findPrevious() { step(QTextDocument::FindBackward); }

/// Goes on at the other end after the last place.
void FindBar::step(QTextDocument::FindFlags flags) {
  if (words_->text().isEmpty()) return;
  if (!text_.find(words_->text(), flags)) {
    const bool back = flags.testFlag(QTextDocument::FindBackward);
    QTextCursor around = text_.textCursor();
    around.movePosition(back ? QTextCursor::End : QTextCursor::Start);
    around = text_.document()->find(words_->text(), around, flags);
    if (!around.isNull()) text_.setTextCursor(around);
  }
  tellCount();
}

void FindBar::recount() {
  if (!isVisible()) return;
  mark();
  tellCount();
}

void FindBar::mark() {
  QList<QTextEdit::ExtraSelection> marks;
  QTextCharFormat format;
  const QPalette& palette = text_.palette();
  format.setBackground(palette.color(QPalette::Highlight)
                           .lighter(palette.color(QPalette::Base).lightness() < 128 ? 60 : 190));
  format.setForeground(palette.color(QPalette::Text));
  QTextCursor place(text_.document());
  while (!words_->text().isEmpty() && marks.size() < mostMarks) {
    place = text_.document()->find(words_->text(), place);
    if (place.isNull()) break;
    marks.append({place, format});
  }
  text_.setExtraSelections(marks);
}

void FindBar::tellCount() {
  const QString& words = words_->text();
  if (words.isEmpty()) return count_->clear();
  const QString all = text_.toPlainText();
  const qsizetype count = all.count(words, Qt::CaseInsensitive);
  const QTextCursor cursor = text_.textCursor();
  const bool onPlace = cursor.selectedText().compare(words, Qt::CaseInsensitive) == 0;
  if (count == 0)
    count_->setText("not found");
  else if (onPlace)
    count_->setText(QString("%1 of %2")
                        .arg(all.left(cursor.selectionEnd()).count(words, Qt::CaseInsensitive))
                        .arg(count));
  else
    count_->setText(plural(count));
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return close();
  QWidget::keyPressEvent(event);
}

}  // namespace desktop
