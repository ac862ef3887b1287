#include "desktop/frm_send.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QPushButton>
#include <QVBoxLayout>

#include "control/panel_texts.h"
#include "desktop/sender.h"

namespace desktop {
namespace {

constexpr int longestText = 4096;
constexpr int textWidth = 360;
using Kind = SendTarget::Kind;

}  // namespace

frmSend::frmSend(SendTarget target, QWidget* parent)
    : QDialog(parent),
      target_(std::move(target)),
      folder_(ui::utf8(target_.folder)),
      command_(ui::utf8(target_.command)),
      form_(new ui::Form(this)),
      hint_(new QLabel(this)) {
  setObjectName("frmSend");
  setWindowTitle("Send Programs");
  addFields();
  hint_->setWordWrap(true);
  hint_->setMinimumHeight(2 * fontMetrics().height());
  hint_->setAccessibleName("Help line");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(form_, 1);
  layout->addWidget(hint_);
  layout->addWidget(bottom());
  const auto refresh = [this] {
    form_->refresh();
    hint_->setText(complaint());
  };
  connect(form_, &ui::Form::edited, this, refresh);
  refresh();
}

void frmSend::addFields() {
  form_->row(
      new QLabel("Save and send writes the program and hands it on: to a folder, for\n"
                 "example a memory card, or to a command that loads it into the logger.",
                 form_));
  form_->choice({"&Send to:", "What happens with a program that is saved and sent."},
                ui::choicesOf({"Ask me", "A folder", "A command"}),
                [this]() -> Kind& { return target_.kind; });
  const auto isFolder = [this] { return target_.kind == Kind::folder; };
  const auto isCommand = [this] { return target_.kind == Kind::command; };
  form_
      ->text({"&Folder:", "The program is copied there."}, longestText,
             [this]() -> std::string& { return folder_; })
      .shownWhen(isFolder);
  form_->button({"C&hoose...", "Press to look for the folder."}, [this] { chooseFolder(); })
      .shownWhen(isFolder);
  form_
      ->text({"&Command:", "Runs with the file of the program in place of %f, or at its end."},
             longestText, [this]() -> std::string& { return command_; })
      .shownWhen(isCommand)
      .widget->setMinimumWidth(textWidth);
  form_->rowStretch();
}

QWidget* frmSend::bottom() {
  auto* box = new QDialogButtonBox(this);
  namespace help = control::panel::help;
  QPushButton* cancel = box->addButton("Cancel", QDialogButtonBox::RejectRole);
  QPushButton* done = box->addButton("&Done", QDialogButtonBox::AcceptRole);
  ui::describe(*cancel, "Cancel", ui::qstring(help::abandon));
  ui::describe(*done, "&Done", ui::qstring(help::done));
  done->setDefault(true);
  connect(cancel, &QPushButton::clicked, this, &frmSend::reject);
  connect(done, &QPushButton::clicked, this, &frmSend::accept);
  return box;
}

QString frmSend::complaint() const {
  if (target_.kind == Kind::folder && !QFileInfo(ui::qstring(folder_)).isDir())
    return "There is no such folder; type another one or choose it.";
  if (target_.kind == Kind::command && QProcess::splitCommand(ui::qstring(command_)).isEmpty())
    return "Type the command that loads a program into the logger.";
  return {};
}

void frmSend::chooseFolder() {
  const QString chosen =
      QFileDialog::getExistingDirectory(this, "CHOOSE FOLDER", ui::qstring(folder_));
  if (chosen.isEmpty()) return;
  folder_ = ui::utf8(chosen);
  form_->refresh();
  hint_->setText(complaint());
}

void frmSend::accept() {
  hint_->setText(complaint());
  if (!hint_->text().isEmpty()) return;
  target_.folder = ui::qstring(folder_);
  target_.command = ui::qstring(command_);
  QDialog::accept();
}

}  // namespace desktop
