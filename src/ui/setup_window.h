#pragma once

#include <QLabel>
#include <QTimer>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

#include "control/panel_texts.h"
#include "ui/asking_dialog.h"
#include "ui/form.h"
#include "ui/program_view.h"
#include "ui/sheet.h"

namespace ui {

/// What a window is called, on the screen, in the help and in the list of edits.
struct WindowInfo {
  QString name;         // "frmVoltSetup"; also its help page
  QString title;        // of the window
  QString editName;     // "voltage blocks", for undo
  QString page = name;  // of the help
  std::string_view cancelHelp = control::panel::help::abandon;
};

/// The frame of every setup window: it edits a copy of the project, which only Done gives back.
/// Below the window's own part stand the program lines that its settings give, the help of what
/// has the focus or what is wrong, and Done, Cancel, Help and Print. Edits can be undone one by
/// one.
class SetupWindow : public AskingDialog {
  Q_OBJECT
 public:
  SetupWindow(const WindowPorts& ports, WindowInfo info, QWidget* parent);
  /// A window that another one opens: it edits a copy of the owner's working copy, and Done gives
  /// that back to the owner.
  SetupWindow(SetupWindow& owner, WindowInfo info);

  ~SetupWindow() override;

  [[nodiscard]] const model::Project& working() const { return working_; }
  [[nodiscard]] const WindowInfo& info() const { return info_; }
  void accept() override;
  /// Forgets the edits without a question.
  void reject() override;
  /// Asks about edits, as Escape and the frame's button do. False when the window stays open.
  bool finish();
  void undo();
  void redo();
  /// Shows a window of this one, which then waits. Its Done is one edit here.
  void openInner(SetupWindow* inner);
  /// What is told at the bottom of the window.
  [[nodiscard]] QString hint() const { return hint_->text(); }

 protected:
  /// Once, at the end of the constructor of a window: its own part of the frame.
  void setContents(QWidget* contents);
  /// Their edits are edits of the window, and they show the working copy after each.
  void add(Form& form);
  void add(SheetModel& sheet);
  void onRefresh(std::function<void()> act) { parts_.push_back(std::move(act)); }
  /// After any change of the working copy; `what` is the field. Edits of one field in a row are
  /// one step of undo.
  void noteEdit(const QString& what);
  void refresh();
  /// After the window turned to another part of the working copy.
  void showOther();
  /// Turns to another part: what is being typed belongs to the one before.
  void turnTo(const std::function<void()>& another);
  /// What was typed last was put right, which Done by its key must not pass over.
  void noteCorrection() { corrected_ = true; }
  void tell(const QString& words);

  /// The last checks before Done: shows what is wrong; false keeps the window open.
  virtual bool mayBeDone() { return true; }
  /// What a window remembers beside the working copy goes back and forth with it: keep it under the
  /// number of the state that was reached, and take it up again when that state comes back.
  virtual void keepMemory(int /*state*/) {}
  virtual void recallMemory(int /*state*/) {}
  /// Names whose program lines are shown: "VBlk1*" also stands for longer ones.
  [[nodiscard]] virtual std::vector<std::string> previewNames() const { return {}; }

  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

  model::Project working_;

 private:
  QWidget* bottom();
  [[nodiscard]] QString complaint() const;
  void showPreview();
  void fitScreen();
  using History = std::deque<model::Project>;
  void go(History& from, History& to);

  SetupWindow(const WindowPorts& ports, const model::Project& start, WindowInfo info,
              QWidget* parent);
  [[nodiscard]] bool edited() const override;
  [[nodiscard]] QString helpPage() const override { return info_.page; }
  void settleTyping();
  void handOver();
  void tellOfMissing(const model::Project& before);

  SetupWindow* owner_ = nullptr;
  WindowInfo info_;
  model::Project before_;  // the working copy as it was before the last edit
  QString lastEdit_;
  int state_ = 0;  // edits so far, less those undone
  History past_, future_;
  QString refusal_;  // of a cell, until an edit or Done
  bool corrected_ = false;
  std::vector<std::function<void()>> parts_;
  std::vector<Form*> forms_;
  ProgramView* preview_;
  QLabel* hint_;
  QTimer previewDelay_;
};

}  // namespace ui
