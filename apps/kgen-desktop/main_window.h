#pragma once

#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QSplitter>
#include <QTabWidget>
#include <optional>

#include "desktop/budget_page.h"
#include "desktop/desktop_settings.h"
#include "desktop/document_page.h"
#include "desktop/findings_list.h"
#include "desktop/reviewer.h"
#include "desktop/sender.h"
#include "desktop/work_place.h"
#include "ui/kgen_ctl.h"
#include "ui/program_view.h"
#include "ui/qt_messages.h"

namespace desktop {

/// The program around the control: files, menus, what the project gives beside the summary, and
/// what there is to look at in it.
class MainWindow final : public QMainWindow {
  Q_OBJECT
 public:
  /// With other files, settings and messages than those of this machine when they are given.
  explicit MainWindow(DesktopSettings& settings, const control::SessionPorts* ports = nullptr);
  ~MainWindow() override;

  /// Once the window is shown: offers what a crash left behind, then opens a file.
  void begin(const QStringList& files);
  /// Opens a project and remembers it, or tells why not.
  void open(const QString& path);

  [[nodiscard]] KGenCtl& control() { return *control_; }
  [[nodiscard]] ui::ProgramView& program() { return *program_; }
  [[nodiscard]] FindingsList& findings() { return *findings_; }

 Q_SIGNALS:
  /// Documents and findings show the project as it is.
  void reviewed();

 private:
  void addControl(const control::SessionPorts* ports);
  void addPages();
  void addFindings();
  void placeParts();

  // The menus, in main_window_menus.cpp.
  void addMenus();
  void addProjectMenu();
  void addEditMenu();
  void addViewMenu();
  void addExtrasMenu();
  void addHelpMenu();
  void addTools();
  struct Command;
  QAction* add(QMenu& menu, const Command& command);
  void showRecentFiles();
  void updateActions();

  void showChanges();
  void showReview(const Review& review);
  void showFindings();
  void goTo(const Finding& finding);
  void keepNote(const QString& line);
  void noteOpened(const QString& path);
  bool offerWorkingCopy();
  void tellOfUnopened(QStringList files);
  [[nodiscard]] ReviewRequest reviewRequest();

  void sendProgram(const QString& program);
  bool askForTarget();
  bool maySendingStop();
  ports::Answer tell(const ports::Message& message);
  void showAbout();

  void showPage(QWidget& page);
  [[nodiscard]] DocumentPage* currentDocument();
  void openFind();
  void rememberPlaces();
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

  DesktopSettings& settings_;
  ui::QtMessages ownMessages_;
  ports::MessageService& messages_;
  KGenCtl* control_ = nullptr;
  QSplitter* parts_;
  QTabWidget* pages_;
  ui::ProgramView* program_;
  DocumentPage* programPage_ = nullptr;
  DocumentPage* tablesPage_ = nullptr;
  DocumentPage* wiringPage_ = nullptr;
  BudgetPage* budgetPage_ = nullptr;
  FindingsList* findings_ = nullptr;
  QDockWidget* findingsDock_ = nullptr;
  QMenu* recentMenu_ = nullptr;
  QAction *undo_ = nullptr, *redo_ = nullptr, *documents_ = nullptr;
  Sender sender_;
  Reviewer reviewer_;
  std::vector<Finding> reviewFindings_;
  std::vector<Finding> fileFindings_;  // of the reading of the project's file
  std::vector<Finding> notes_;         // of what is going on
  QString shownFile_;
  std::optional<WorkPlace> place_;
};

}  // namespace desktop
