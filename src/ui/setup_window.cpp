#include "ui/setup_window.h"

#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QEvent>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QStatusTipEvent>
#include <QVBoxLayout>
#include <utility>

#include "control/program_excerpt.h"
#include "generator/program_writer.h"
#include "model/renaming.h"
#include "ui/screen_room.h"
#include "verify/pick_variables.h"

namespace ui {
namespace {

constexpr std::size_t longestHistory = 50;
constexpr int previewDelayMs = 120;

QPushButton* addButton(QDialogButtonBox& box, const QString& caption, std::string_view help,
                       QDialogButtonBox::ButtonRole role) {
  QPushButton* button = box.addButton(caption, role);
  describe(*button, caption, qstring(help));
  button->setAutoDefault(false);
  return button;
}

}  // namespace

SetupWindow::SetupWindow(const WindowPorts& ports, WindowInfo info, QWidget* parent)
    : SetupWindow(ports, ports.session.project(), std::move(info), parent) {}

SetupWindow::SetupWindow(SetupWindow& owner, WindowInfo info)
    : SetupWindow(owner.ports_, owner.working_, std::move(info), &owner) {
  owner_ = &owner;
}

SetupWindow::SetupWindow(const WindowPorts& ports, const model::Project& start, WindowInfo info,
                         QWidget* parent)
    : AskingDialog(ports, parent),
      working_(start),
      info_(std::move(info)),
      before_(working_),
      preview_(new ProgramView(this)),
      hint_(new QLabel(this)) {
  setObjectName(info_.name);
  setWindowTitle(info_.title);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  hint_->setWordWrap(true);
  hint_->setMinimumHeight(2 * fontMetrics().height());
  hint_->setAccessibleName("Help line");
  preview_->setAccessibleName("Program lines");
  preview_->setToolTip("Shows the program lines that these settings give.");
  previewDelay_.setSingleShot(true);
  connect(&previewDelay_, &QTimer::timeout, this, &SetupWindow::showPreview);
  new QShortcut(QKeySequence::Undo, this, [this] { undo(); });
  new QShortcut(QKeySequence::Redo, this, [this] { redo(); });
}

SetupWindow::~SetupWindow() {
  for (Form* form : forms_) form->disarm();
}

void SetupWindow::setContents(QWidget* contents) {
  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->addWidget(contents);
  splitter->addWidget(preview_);
  splitter->setStretchFactor(0, 4);
  splitter->setStretchFactor(1, 1);
  splitter->setChildrenCollapsible(true);
  splitter->setCollapsible(0, false);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(splitter, 1);
  layout->addWidget(bottom());
  preview_->setVisible(!previewNames().empty());
  for (QWidget* each : findChildren<QWidget*>()) each->installEventFilter(this);
  refresh();
}

QWidget* SetupWindow::bottom() {
  auto* row = new QWidget(this);
  auto* layout = new QVBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(hint_);
  auto* box = new QDialogButtonBox(row);
  namespace help = control::panel::help;
  connect(addButton(*box, "Help", help::extendedHelp, QDialogButtonBox::HelpRole),
          &QPushButton::clicked, this, [this] { ports_.desk.showHelp(info_.page); });
  connect(addButton(*box, "Print", help::printWindow, QDialogButtonBox::ActionRole),
          &QPushButton::clicked, this, [this] { ports_.desk.printWindow(*this); });
  QPushButton* cancel = addButton(*box, "Cancel", info_.cancelHelp, QDialogButtonBox::RejectRole);
  cancel->setFocusPolicy(Qt::TabFocus);  // a click leaves what is being typed unsettled
  connect(cancel, &QPushButton::clicked, this, &SetupWindow::reject);
  QPushButton* done = addButton(*box, "&Done", help::done, QDialogButtonBox::AcceptRole);
  done->setDefault(true);
  connect(done, &QPushButton::clicked, this, &SetupWindow::accept);
  layout->addWidget(box);
  return row;
}

void SetupWindow::add(Form& form) {
  forms_.push_back(&form);
  parts_.emplace_back([&form] { form.refresh(); });
  connect(&form, &Form::edited, this, &SetupWindow::noteEdit);
}

void SetupWindow::add(SheetModel& sheet) {
  parts_.emplace_back([&sheet] { sheet.refresh(); });
  sheet.setKeeper([this] { return [this, kept = working_] { working_ = kept; }; });
  connect(&sheet, &SheetModel::edited, this, &SetupWindow::noteEdit);
  connect(&sheet, &SheetModel::refused, this, &SetupWindow::tell);
  connect(&sheet, &SheetModel::typingRefused, this, [this](const QString& complaint) {
    refusal_ = complaint;
    QTimer::singleShot(0, this, [this, complaint] { tell(complaint); });  // after the focus moved
  });
}

void SetupWindow::noteEdit(const QString& what) {
  refusal_.clear();
  if (working_ != before_) {
    if (what != lastEdit_ || past_.empty()) {
      ++state_;
      past_.push_back(std::move(before_));
      if (past_.size() > longestHistory) past_.pop_front();
    }
    future_.clear();
    lastEdit_ = what;
    before_ = working_;
    keepMemory(state_);
  }
  refresh();
}

void SetupWindow::refresh() {
  for (const auto& part : parts_) part();
  tell(complaint());
  previewDelay_.start(previewDelayMs);
}

/// What is wrong; a box that was left is named.
QString SetupWindow::complaint() const {
  for (const Form* form : forms_) {
    const Field* field = form->firstComplaint();
    if (field == nullptr) continue;
    const QString words = qstring(*field->complaint());
    const bool here = focusWidget() == nullptr || focusWidget() == field->widget;
    return here ? words : field->widget->accessibleName() + " " + words;
  }
  return {};
}

void SetupWindow::tell(const QString& words) {
  if (!words.isEmpty()) return hint_->setText(words);
  const QWidget* focused = focusWidget();
  hint_->setText(focused != nullptr ? focused->toolTip() : QString());
}

void SetupWindow::go(History& from, History& to) {
  if (from.empty()) return;
  to.push_back(std::move(working_));
  working_ = std::move(from.back());
  from.pop_back();
  before_ = working_;
  showOther();
}

void SetupWindow::showOther() {
  lastEdit_.clear();
  for (Form* form : forms_) form->forgetRefused();
  refresh();
}

void SetupWindow::turnTo(const std::function<void()>& another) {
  const QPointer<QWidget> focused = focusWidget();
  const bool typed = focused && qobject_cast<QAbstractItemView*>(focused) == nullptr;
  if (typed) focused->clearFocus();
  another();
  showOther();
  if (typed && focused && focused->isVisible() && focused->isEnabled()) focused->setFocus();
  if (focusWidget() == nullptr) focusNextChild();
}

void SetupWindow::undo() {
  if (!past_.empty()) recallMemory(--state_);
  go(past_, future_);
}

void SetupWindow::redo() {
  if (!future_.empty()) recallMemory(++state_);
  go(future_, past_);
}

void SetupWindow::showPreview() {
  const std::vector<std::string> names = previewNames();
  if (names.empty()) return;
  try {
    const SAVEDLD::Program program = SAVEDLD::generate(working_, {});
    preview_->setProgram(control::excerpt(program.text, names));
  } catch (const SAVEDLD::ProgramTooLong& tooLong) {
    preview_->setProgram(tooLong.what());
  }
}

/// Done by its key leaves the focus in a box or cell whose text is not settled yet.
void SetupWindow::settleTyping() {
  const QPointer<QWidget> focused = focusWidget();
  if (!focused) return;
  focused->clearFocus();
  if (focused && focused->isVisible()) focused->setFocus();
}

void SetupWindow::accept() {
  corrected_ = false;
  settleTyping();
  if (corrected_) return;
  if (!refusal_.isEmpty()) return tell(std::exchange(refusal_, {}));
  for (const Form* form : forms_) {
    const Field* field = form->firstComplaint();
    if (field == nullptr) continue;
    field->widget->setFocus();
    return tell(qstring(*field->complaint()));
  }
  if (!mayBeDone()) return refresh();
  handOver();
  QDialog::accept();
}

void SetupWindow::reject() {
  // A box that loses the focus now would still settle what was typed, and ask.
  if (QWidget* focused = focusWidget()) focused->blockSignals(true);
  for (Form* form : forms_) form->disarm();
  QDialog::reject();
}

bool SetupWindow::edited() const {
  return working_ != (owner_ != nullptr ? owner_->working_ : ports_.session.project());
}

bool SetupWindow::finish() {
  for (SetupWindow* inner : findChildren<SetupWindow*>(Qt::FindDirectChildrenOnly))
    if (inner->isVisible() && !inner->finish()) return false;
  const ports::Answer answer = answerAboutEdits();
  if (answer == ports::Answer::no) reject();
  if (answer == ports::Answer::yes) accept();
  return !isVisible();
}

void SetupWindow::handOver() {
  if (owner_ != nullptr) {
    owner_->working_ = working_;
    return owner_->noteEdit(info_.editName);
  }
  const model::Project before = ports_.session.project();
  working_.configuration.Operator = before.configuration.Operator;  // the panel's own, and
  working_.configuration.IDNumber = before.configuration.IDNumber;  // the host's
  // What refers to a name follows when the name changes.
  ports_.session.edit(model::withNewNames(before, std::move(working_)), utf8(info_.editName));
  working_ = ports_.session.project();
  if (working_ != before) tellOfMissing(before);
}

/// Variables that conditions and expressions lack since this edit.
void SetupWindow::tellOfMissing(const model::Project& before) {
  const verify::CheckContext context{ports_.messages, ports_.errors};
  using enum verify::PickVarsMode;
  if (KGEN_COMMON::VerifyPickVars(working_, context, silent) >
      KGEN_COMMON::VerifyPickVars(before, context, silent))
    KGEN_COMMON::VerifyPickVars(working_, context, afterWindow);
}

void SetupWindow::openInner(SetupWindow* inner) {
  inner->setAttribute(Qt::WA_DeleteOnClose);
  inner->setWindowModality(Qt::WindowModal);
  inner->show();
}

/// What an entry of a list says while it is chosen goes to the help line.
bool SetupWindow::event(QEvent* event) {
  if (event->type() == QEvent::StatusTip) {
    tell(static_cast<QStatusTipEvent*>(event)->tip());
    return true;
  }
  const bool known = QDialog::event(event);
  // What is hidden takes no room any more once its parts were laid out.
  if (event->type() == QEvent::LayoutRequest && isVisible()) fitScreen();
  return known;
}

bool SetupWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) {
    if (qobject_cast<QWidget*>(watched) != nullptr) tell(complaint());
  }
  return QDialog::eventFilter(watched, event);
}

/// Done must be on the screen, also on a small one.
void SetupWindow::fitScreen() {
  if (isMaximized() || isFullScreen()) return;
  const QSize room = roomOn(*screen());
  if (width() > room.width() || height() > room.height()) resize(size().boundedTo(room));
}

void SetupWindow::showEvent(QShowEvent* event) {
  fitScreen();
  showPreview();
  QDialog::showEvent(event);
}

}  // namespace ui
