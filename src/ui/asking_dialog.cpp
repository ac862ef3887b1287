#include "ui/asking_dialog.h"

#include <QCloseEvent>
#include <QKeyEvent>

#include "ui/texts.h"

namespace ui {

AskingDialog::AskingDialog(const WindowPorts& ports, QWidget* parent)
    : QDialog(parent), ports_(ports) {}

std::optional<ports::Message> AskingDialog::questionAboutEdits() const {
  return ports::Message{.title = utf8(windowTitle().toUpper()),
                        .text = "Edits were made.  Save changes before exiting screen?",
                        .icon = ports::Icon::question,
                        .buttons = ports::Buttons::yesNoCancel,
                        .defaultButton = ports::Answer::yes};
}

ports::Answer AskingDialog::answerAboutEdits() {
  const auto question = edited() ? questionAboutEdits() : std::nullopt;
  return question ? ports_.messages.show(*question) : ports::Answer::no;
}

void AskingDialog::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) return ports_.desk.showHelp(helpPage());
  if (event->key() != Qt::Key_Escape) return QDialog::keyPressEvent(event);
  close();
}

/// Done waits until the event is over.
void AskingDialog::closeEvent(QCloseEvent* event) {
  const ports::Answer answer = isVisible() ? answerAboutEdits() : ports::Answer::no;
  if (answer == ports::Answer::no) return QDialog::closeEvent(event);
  event->ignore();
  if (answer == ports::Answer::yes)
    QMetaObject::invokeMethod(this, &AskingDialog::accept, Qt::QueuedConnection);
}

}  // namespace ui
