#include "ui/shown_text.h"

#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>

namespace ui {
namespace {

using Lines = QList<QStringView>;

/// Signs that a box takes for the end of a line, beside the usual one.
bool hasOtherLineEnds(const QString& text) {
  return std::any_of(text.begin(), text.end(), [](QChar sign) {
    return sign == u'\r' || sign == QChar::ParagraphSeparator || sign == QChar(0xfdd0) ||
           sign == QChar(0xfdd1);
  });
}

Lines lineViews(const QString& text) { return QStringView(text).split(u'\n'); }

class Changes {
 public:
  Changes(QTextDocument* document, const QString& before, const QString& after)
      : document_(document), before_(lineViews(before)), after_(lineViews(after)) {}

  void make() {
    QTextCursor all(document_);
    all.beginEditBlock();
    const qsizetype first = exchangeSingleLines();
    exchangeFrom(first);
    all.endEditBlock();
  }

 private:
  /// Lines that changed alone, from the top; answers with the first line that did not.
  qsizetype exchangeSingleLines() {
    const qsizetype common = std::min(before_.size(), after_.size());
    qsizetype line = 0;
    for (; line < common; ++line) {
      if (before_[line] == after_[line]) continue;
      if (line + 1 >= common || before_[line + 1] != after_[line + 1]) break;
      exchange(line, 1, 1);
    }
    return line;
  }

  /// What is left between that line and the end that both have.
  void exchangeFrom(qsizetype first) {
    qsizetype old = before_.size() - first, now = after_.size() - first;
    while (old > 0 && now > 0 && before_[first + old - 1] == after_[first + now - 1]) --old, --now;
    if (old == 0 && now == 0) return;
    if (old == 0 || now == 0) widen(first, old, now);
    exchange(first, old, now);
  }

  /// A text has no place between lines: a line that stays is exchanged with them.
  void widen(qsizetype& first, qsizetype& old, qsizetype& now) {
    if (first > 0) --first;
    ++old, ++now;
  }

  void exchange(qsizetype first, qsizetype old, qsizetype now) {
    const QTextBlock last = document_->findBlockByNumber(static_cast<int>(first + old - 1));
    QTextCursor cursor(document_->findBlockByNumber(static_cast<int>(first)));
    cursor.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
    const QChar* begin = after_[first].data();
    const QStringView& end = after_[first + now - 1];
    cursor.insertText(QString(begin, end.data() + end.size() - begin));
  }

  QTextDocument* document_;
  Lines before_, after_;
};

}  // namespace

void showText(QPlainTextEdit& box, const QString& before, const QString& after) {
  const int top = box.verticalScrollBar()->value(), left = box.horizontalScrollBar()->value();
  if (before.isEmpty() || hasOtherLineEnds(before) || hasOtherLineEnds(after))
    box.setPlainText(after);
  else
    Changes(box.document(), before, after).make();
  box.verticalScrollBar()->setValue(top);
  box.horizontalScrollBar()->setValue(left);
}

}  // namespace ui
