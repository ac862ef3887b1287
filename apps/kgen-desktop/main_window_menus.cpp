#include <QActionGroup>
#include <QApplication>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QToolBar>

#include "control/panel_texts.h"
#include "control/session.h"
#include "desktop/main_window.h"
#include "ui/form.h"
#include "ui/icon.h"

// Menus and tool bar. Letters of their menus are those that the buttons of the panel leave.
namespace desktop {

/// An entry of a menu. `icon` is a file among the icons; those that have one and keys stand on
/// the tool bar too.
struct MainWindow::Command {
  const char* text;
  const char* icon;
  QString help;
  QKeySequence keys;
  std::function<void()> act;
};

namespace {

namespace panel = control::panel;

QIcon iconNamed(const QString& name) { return name.isEmpty() ? QIcon() : ui::icon(name); }

/// What tool bars and status line say of an action.
void describe(QAction& action, const QString& help) {
  const QString keys = action.shortcut().toString(QKeySequence::NativeText);
  action.setToolTip(keys.isEmpty() ? help : help + " (" + keys + ")");
  action.setStatusTip(help);
}

void showStep(QAction& action, const char* verb, bool possible, const std::string& name) {
  action.setEnabled(possible);
  action.setText(possible ? QString("%1 %2").arg(verb, ui::qstring(name)) : QString(verb));
  describe(action,
           possible ? QString("%1 %2.").arg(ui::withoutMnemonic(verb), ui::qstring(name))
                    : QString("There is no edit to %1.").arg(ui::withoutMnemonic(verb).toLower()));
}

}  // namespace

QAction* MainWindow::add(QMenu& menu, const Command& command) {
  auto* action = new QAction(iconNamed(command.icon), command.text, this);
  action->setShortcut(command.keys);
  describe(*action, command.help);
  connect(action, &QAction::triggered, this, command.act);
  menu.addAction(action);
  return action;
}

void MainWindow::addMenus() {
  addProjectMenu();
  addEditMenu();
  addViewMenu();
  addExtrasMenu();
  addHelpMenu();
  addTools();
  auto* reach = new QAction(this);  // those menus that have no letter
  reach->setShortcut(Qt::Key_F10);
  connect(reach, &QAction::triggered, this,
          [this] { menuBar()->setActiveAction(menuBar()->actions().front()); });
  addAction(reach);
}

void MainWindow::addProjectMenu() {
  QMenu& menu = *menuBar()->addMenu("Pro&ject");
  control::Session& session = control_->session();
  add(menu, {"&New", "new", "Begins a new project.", QKeySequence::New,
             [&session] { session.NewProject(); }});
  add(menu, {"New from a &List...", "", "Plans a new project: modules, a list of channels, tables.",
             QKeySequence("Ctrl+Shift+N"), [this] { control_->openNewProject(); }});
  add(menu, {"&Open...", "open", "Opens a project.", QKeySequence::Open,
             [&session] { session.ChooseAndOpen(); }});
  recentMenu_ = menu.addMenu("Open &Recent");
  connect(recentMenu_, &QMenu::aboutToShow, this, &MainWindow::showRecentFiles);
  menu.addSeparator();
  add(menu, {"&Save", "button_17", ui::qstring(panel::buttons[panel::saveButton].help),
             QKeySequence::Save, [&session] { session.SaveDldFile(); }});
  add(menu, {"Save &As...", "save_as", "Saves the project under another name.",
             QKeySequence("Ctrl+Shift+S"), [&session] { session.ChooseAndSaveAs(); }});
  add(menu,
      {"Save and Sen&d", "button_16", ui::qstring(panel::buttons[panel::saveAndSendButton].help),
       QKeySequence("Ctrl+Return"), [&session] { session.SaveAndSend(); }});
  menu.addSeparator();
  add(menu, {"&Print...", "print", ui::qstring(panel::help::printOptions), QKeySequence::Print,
             [this] { control_->PrintSelect(); }});
  menu.addSeparator();
  add(menu,
      {"&Quit", "", ui::qstring(panel::help::quit), QKeySequence("Ctrl+Q"), [this] { close(); }});
}

void MainWindow::showRecentFiles() {
  recentMenu_->clear();
  const QStringList files = settings_.recentFiles();
  for (qsizetype i = 0; i < files.size(); ++i) {
    const QFileInfo file(files[i]);
    QString text = QString("%1   %2").arg(file.fileName(), file.path());
    text = QString(i < 9 ? "&%1 " : "%1 ").arg(i + 1) + text.replace('&', "&&");
    connect(recentMenu_->addAction(text), &QAction::triggered, this,
            [this, path = files[i]] { open(path); });
  }
  if (files.isEmpty()) recentMenu_->addAction("No project was opened yet.")->setEnabled(false);
}

void MainWindow::addEditMenu() {
  QMenu& menu = *menuBar()->addMenu("Edit");
  control::Session& session = control_->session();
  undo_ = add(menu, {"&Undo", "undo", {}, QKeySequence::Undo, [&session] { session.undo(); }});
  redo_ = add(menu, {"&Redo", "redo", {}, QKeySequence::Redo, [&session] { session.redo(); }});
  menu.addSeparator();
  add(menu, {"&Find...", "find", "Finds words in the text beside the summary.", QKeySequence::Find,
             [this] { openFind(); }});
  add(menu, {"Find &Next", "", "Goes to the next place that was found.", QKeySequence(Qt::Key_F3),
             [this] { currentDocument()->findNext(); }});
  add(menu, {"Find &Previous", "", "Goes to the place before that was found.",
             QKeySequence("Shift+F3"), [this] { currentDocument()->findPrevious(); }});
}

void MainWindow::addViewMenu() {
  QMenu& menu = *menuBar()->addMenu("Vie&w");
  documents_ = add(menu, {"&Documents", "", "Shows or hides the pages beside the summary.",
                          QKeySequence(Qt::Key_F9), [] {}});
  documents_->setCheckable(true);
  documents_->setChecked(true);
  connect(documents_, &QAction::toggled, pages_, &QWidget::setVisible);
  menu.addAction(findingsDock_->toggleViewAction());
  findingsDock_->toggleViewAction()->setShortcut(Qt::Key_F8);
  menu.addSeparator();
  for (int page = 0; page < pages_->count(); ++page)
    add(menu, {"", "", "Shows this page beside the summary.",
               QKeySequence(QString("Ctrl+%1").arg(page + 1)),
               [this, page] {
                 showPage(*pages_->widget(page));
                 pages_->setFocus();
               }})
        ->setText(pages_->tabText(page));
}

void MainWindow::addExtrasMenu() {
  QMenu& menu = *menuBar()->addMenu("E&xtras");
  control::Session& session = control_->session();
  add(menu, {"&Compile", "compile", "Compiles the program with the pre-compiler of the logger.",
             QKeySequence("Ctrl+B"), [&session] { session.TestCompile(); }});
  menu.addSeparator();
  add(menu,
      {"&Send Settings...", "button_16", "Where programs go that are saved and sent.", {}, [this] {
         askForTarget();
       }});
  add(menu, {"&Options...", "options", "Folders, colours, defaults, warnings and variables.",
             QKeySequence("Ctrl+,"), [this] { control_->ShowOptions(); }});
}

void MainWindow::addHelpMenu() {
  QMenu& menu = *menuBar()->addMenu("Help");
  add(menu, {"&Contents", "help", ui::qstring(panel::help::extendedHelp),
             QKeySequence::HelpContents, [this] { control_->ShowHelpFile(); }});
  add(menu, {"&About", "kgen", "Tells the version of this program.", {}, [this] { showAbout(); }});
}

void MainWindow::addTools() {
  QToolBar& bar = *addToolBar("Tool Bar");
  bar.setObjectName("tools");
  constexpr int iconSize = 22;
  bar.setIconSize({iconSize, iconSize});
  for (const QAction* title : menuBar()->actions()) {
    for (QAction* each : title->menu()->actions())
      if (!each->icon().isNull() && !each->shortcut().isEmpty()) bar.addAction(each);
    bar.addSeparator();
  }
}

/// Their texts name the edit; without one they say so.
void MainWindow::updateActions() {
  const control::EditHistory& history = control_->session().history();
  showStep(*undo_, "&Undo", history.canUndo(), history.undoName());
  showStep(*redo_, "&Redo", history.canRedo(), history.redoName());
}

void MainWindow::showAbout() {
  QMessageBox::about(this, "About",
                     QString("<b>KGen %1</b><p>Describes K700 data loggers and generates their "
                             "programs.<p>Built %2.")
                         .arg(control_->Version(), control_->VersionDate()));
}

}  // namespace desktop
