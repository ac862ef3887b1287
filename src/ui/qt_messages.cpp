#include "ui/qt_messages.h"

#include <QApplication>
#include <QMessageBox>

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

}  // namespace

ports::Answer QtMessages::show(const ports::Message& message) {
  QWidget* active = QApplication::activeWindow();
  QMessageBox box(active != nullptr ? active : owner_);
  box.setWindowTitle(qstring(message.title));
  box.setTextFormat(Qt::PlainText);  // the text is the project's too
  box.setText(qstring(message.text).remove('\r'));
  box.setIcon(iconOf(message.icon));
  box.setStandardButtons(buttonsOf(message.buttons));
  box.setDefaultButton(buttonOf(message.defaultButton));
  box.setEscapeButton(escapeOf(message.buttons));
  if (message.beep) QApplication::beep();
  return answerOf(box.exec());
}

}  // namespace ui
