#include "ui/qt_messages.h"

#include <QApplication>
#include <QGridLayout>
#include <QMessageBox>
#include <QSpacerItem>
#include <algorithm>

#include "ui/texts.h"

namespace ui {
namespace {

QMessageBox::Icon iconOf(ports::Icon icon) {
  switch (icon) {
    case ports::Icon::question:
      return QMessageBox::Question;
    case ports::Icon::exclamation:
      return QMessageBox::Warning;
    case ports::Icon::critical:
      return QMessageBox::Critical;
    case ports::Icon::none:
      break;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttonsOf(ports::Buttons buttons) {
  switch (buttons) {
    case ports::Buttons::okCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case ports::Buttons::yesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case ports::Buttons::yesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case ports::Buttons::ok:
      break;
  }
  return QMessageBox::Ok;
}

QMessageBox::StandardButton buttonOf(ports::Answer answer) {
  switch (answer) {
    case ports::Answer::cancel:
      return QMessageBox::Cancel;
    case ports::Answer::yes:
      return QMessageBox::Yes;
    case ports::Answer::no:
      return QMessageBox::No;
    case ports::Answer::ok:
      break;
  }
  return QMessageBox::Ok;
}

/// Closing a box by Esc answers what changes least.
QMessageBox::StandardButton escapeOf(ports::Buttons buttons) {
  if (buttons == ports::Buttons::ok) return QMessageBox::Ok;
  return buttons == ports::Buttons::yesNo ? QMessageBox::No : QMessageBox::Cancel;
}

ports::Answer answerOf(int button) {
  if (button == QMessageBox::Yes) return ports::Answer::yes;
  if (button == QMessageBox::No) return ports::Answer::no;
  return button == QMessageBox::Cancel ? ports::Answer::cancel : ports::Answer::ok;
}

/// Lines stay whole as far as the screen has room, and the title can be read: a box by itself
/// breaks lines that are longer than 500 dots.
void widen(QMessageBox& box) {
  auto* grid = qobject_cast<QGridLayout*>(box.layout());
  if (grid == nullptr) return;
  constexpr int longestLine = 900, besideTitle = 160, besideText = 90;
  const QFontMetrics metrics = box.fontMetrics();
  const int text = metrics.size(0, box.text()).width() + besideText;
  const int title = metrics.horizontalAdvance(box.windowTitle()) + besideTitle;
  grid->addItem(new QSpacerItem(std::clamp(text, title, std::max(title, longestLine)), 0),
                grid->rowCount(), 0, 1, grid->columnCount());
}

/// Of a long list a box shows the beginning, what is said or asked below it, and all when asked.
void setWords(QMessageBox& box, const QString& words) {
  constexpr qsizetype mostLines = 30, linesBelow = 6;
  QStringList lines = words.split('\n');
  if (lines.size() <= mostLines) return box.setText(words);
  box.setDetailedText(words);
  const qsizetype above = mostLines - linesBelow, hidden = lines.size() - mostLines;
  lines.remove(above, hidden);
  lines.insert(above, QString("... %1 more lines, shown by Details ...").arg(hidden));
  box.setText(lines.join('\n'));
}

}  // namespace

ports::Answer QtMessages::show(const ports::Message& message) {
  QWidget* active = QApplication::activeWindow();
  QMessageBox box(active != nullptr ? active : owner_);
  box.setWindowTitle(qstring(message.title));
  box.setTextFormat(Qt::PlainText);  // the text is the project's too
  setWords(box, qstring(message.text).remove('\r'));
  box.setIcon(iconOf(message.icon));
  box.setStandardButtons(buttonsOf(message.buttons));
  box.setDefaultButton(buttonOf(message.defaultButton));
  box.setEscapeButton(escapeOf(message.buttons));
  widen(box);
  if (message.beep) QApplication::beep();
  return answerOf(box.exec());
}

}  // namespace ui
