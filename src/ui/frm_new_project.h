#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QTabWidget>

#include "control/project_plan.h"
#include "ui/asking_dialog.h"
#include "ui/form.h"
#include "ui/sheet.h"

namespace ui {

/// Plans a new project in steps: the logger, the kinds of channels, a list of them, the tables.
/// Beside the steps stands what the plan gives. It touches no project before Make Project.
class frmNewProject final : public AskingDialog {
  Q_OBJECT
 public:
  frmNewProject(const WindowPorts& ports, QWidget* parent);
  ~frmNewProject() override;

  [[nodiscard]] const control::PlannedProject& planned() const { return planned_; }
  /// A file as the list of channels.
  void loadList(const QString& path);
  void goTo(control::PlanStep step) { steps_->setCurrentIndex(static_cast<int>(step)); }
  void accept() override;

 private:
  void addStep(const QString& title, QWidget* content);
  QWidget* loggerStep();
  QWidget* kindsStep();
  QWidget* listStep();
  QWidget* tablesStep();
  Form* newForm();
  SheetView* addSheet(SheetModel& sheet, const QString& name, const QString& help);
  std::vector<SheetColumn> moduleColumns();
  std::vector<SheetColumn> kindColumns();
  std::vector<SheetColumn> tableColumns();
  QWidget* summaryColumn();
  QWidget* bottom();

  void plan();
  void readList();
  void showNotes();
  void tell(const QString& words = {});
  [[nodiscard]] QString notesOf(control::PlanStep step) const;
  [[nodiscard]] QString allNotes() const;
  [[nodiscard]] QString summary() const;
  bool mayLeaveOut();
  [[nodiscard]] bool edited() const override;
  [[nodiscard]] std::optional<ports::Message> questionAboutEdits() const override;

  control::ProjectPlan plan_;
  control::ProjectPlan begun_;  // before the first edit
  control::PlannedProject planned_;
  channels::PlannedList list_;
  std::vector<Form*> forms_;
  std::vector<SheetModel*> sheets_;
  SheetModel modules_, kinds_, tables_;
  QTabWidget* steps_;
  std::vector<QLabel*> notes_;  // by step
  QPlainTextEdit* listBox_ = nullptr;
  QPlainTextEdit* faults_ = nullptr;
  QLabel* allNotes_ = nullptr;
  QPlainTextEdit* summary_ = nullptr;
  QLabel* hint_;
};

}  // namespace ui
