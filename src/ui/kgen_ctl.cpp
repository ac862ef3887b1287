#include "ui/kgen_ctl.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QPointer>
#include <QVBoxLayout>
#include <optional>

#include "control/session.h"
#include "control/trouble.h"
#include "platform/disk_files.h"
#include "platform/processes.h"
#include "platform/settings_file.h"
#include "platform/system_clock.h"
#include "ui/frm_new_project.h"
#include "ui/frm_options.h"
#include "ui/help_viewer.h"
#include "ui/main_panel.h"
#include "ui/printing.h"
#include "ui/qt_messages.h"
#include "ui/windows.h"

namespace {

using ui::qstring;
using ui::utf8;

/// The ports of a control that stands on this machine.
struct RealPorts {
  RealPorts(KGenCtl& control, ports::Host& host)
      : messages(&control),
        settings([&host](const std::string& line) { host.note(line); }),
        machine([&host](const std::string& line) { host.note(line); }),
        all{messages, files, clock, settings, machine, processes, host} {}
  ui::QtMessages messages;
  platform::DiskFiles files;
  platform::SystemClock clock;
  platform::SettingsFile settings;
  platform::MachineFile machine;
  platform::Processes processes;
  control::SessionPorts all;
};

/// "(A)|*.a;*.b|(All)|*.*" as the file dialog wants it.
QString dialogFilter(std::string_view filter) {
  const QStringList parts = qstring(filter).split('|');
  QStringList entries;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
    entries += QString("%1 (%2)").arg(QString(parts[i]).remove('(').remove(')'),
                                      QString(parts[i + 1]).replace(';', ' ').replace("*.*", "*"));
  return entries.join(";;");
}

std::optional<std::string> chosenPath(const ports::FileQuestion& question, QWidget& parent) {
  const QString title = qstring(question.title);
  const QString proposal = qstring(question.proposal);
  const QString filter = dialogFilter(question.filter);
  const QString path = question.forSaving
                           ? QFileDialog::getSaveFileName(&parent, title, proposal, filter)
                           : QFileDialog::getOpenFileName(&parent, title, proposal, filter);
  if (path.isEmpty()) return std::nullopt;
  return utf8(path);
}

}  // namespace

/// The control behind its face: the session, and what the session asks of the program around it.
struct KGenCtl::Parts final : ports::Host, ui::Desk {
  Parts(KGenCtl& face, const control::SessionPorts* given)
      : control(face),
        asked(given != nullptr ? &given->host : nullptr),
        session(given != nullptr ? withThisHost(*given) : real.emplace(face, *this).all),
        messages(given != nullptr ? given->messages : real->messages),
        errors(messages) {}

  control::SessionPorts withThisHost(const control::SessionPorts& given) {
    return {given.messages, given.files,     given.clock, given.settings,
            given.machine,  given.processes, *this};
  }

  // ports::Host
  void fileOpened(const std::string& project) override {
    Q_EMIT control.FileOpened(qstring(project));
  }
  void downloadRequested(const std::string& program) override {
    Q_EMIT control.DownloadRequest(qstring(program));
  }
  bool handToDunmore(const std::string& program) override {
    return dunmoreServer && dunmoreServer(qstring(program));
  }
  void printRequested() override { ui::showPrintSelect(control, windowPorts()); }
  void helpRequested(const std::string&, int) override { showHelp("index"); }
  void optionsRequested() override { showOptions(); }
  void closeWindows() override {
    if (window) window->reject();
    if (newProject) newProject->reject();
    if (help) help->close();
  }
  bool finishWindows(bool ask) override {
    if (!window || !window->isVisible()) return true;
    if (ask) return window->finish();
    window->reject();
    return true;
  }
  void refresh() override {
    if (panel != nullptr) panel->refresh();
    Q_EMIT control.Changed();
  }
  std::optional<std::string> choosePath(const ports::FileQuestion& question) override {
    return asked != nullptr ? asked->choosePath(question) : chosenPath(question, control);
  }
  /// What is noted while the control is made waits until somebody can listen.
  void note(std::string_view line) override {
    const auto tell = [this, text = qstring(line)] { Q_EMIT control.Note(text); };
    if (panel != nullptr) return tell();
    QMetaObject::invokeMethod(&control, tell, Qt::QueuedConnection);
  }

  // ui::Desk
  void showHelp(const QString& page) override;
  void printWindow(QWidget& which) override { ui::printWindow(which, messages); }

  void showOptions();
  ui::WindowPorts windowPorts() { return {session, messages, errors, *this}; }
  void build();

  KGenCtl& control;
  // Before the session, which speaks to its host while it is made.
  ui::MainPanel* panel = nullptr;
  QPointer<ui::SetupWindow> window;  // one at a time: each edits a copy of the whole project
  QPointer<ui::frmNewProject> newProject;
  std::unique_ptr<ui::HelpViewer> help;  // not the control's: windows that wait would block it
  std::function<bool(const QString&)> dunmoreServer;
  ports::Host* asked;
  std::optional<RealPorts> real;
  control::Session session;
  ports::MessageService& messages;
  control::TroubleReporter errors;
};

void KGenCtl::Parts::showHelp(const QString& page) {
  if (!help) help = std::make_unique<ui::HelpViewer>();
  session.showHelpFor(utf8(page), 0);
  help->showPage(page, &control);
}

void KGenCtl::Parts::showOptions() {
  ui::frmOptions options(windowPorts(), &control);
  options.exec();
}

void KGenCtl::Parts::build() {
  panel = new ui::MainPanel(session, &control);
  auto* layout = new QVBoxLayout(&control);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(panel);
  connect(panel, &ui::MainPanel::buttonPressed, &control, [this](int button) {
    if (button == static_cast<int>(control::panel::saveButton))
      session.SaveDldFile();
    else if (button == static_cast<int>(control::panel::saveAndSendButton))
      session.SaveAndSend();
    else
      control.openWindow(button);
  });
  connect(panel, &ui::MainPanel::printPressed, &control, &KGenCtl::PrintSelect);
  connect(panel, &ui::MainPanel::helpPressed, &control, &KGenCtl::ShowHelpFile);
  connect(panel, &ui::MainPanel::quitPressed, &control, [this] {
    if (session.Quit()) Q_EMIT control.QuitRequest();
  });
}

KGenCtl::KGenCtl(QWidget* parent)
    : QWidget(parent), parts_(std::make_unique<Parts>(*this, nullptr)) {
  parts_->build();
}

KGenCtl::KGenCtl(const control::SessionPorts& ports, QWidget* parent)
    : QWidget(parent), parts_(std::make_unique<Parts>(*this, &ports)) {
  parts_->build();
}

KGenCtl::~KGenCtl() = default;

control::Session& KGenCtl::session() { return parts_->session; }

ui::SetupWindow* KGenCtl::openWindow(int button) {
  if (parts_->window && parts_->window->isVisible()) {  // a closed one waits for its deletion
    parts_->window->raise();
    parts_->window->activateWindow();
    return parts_->window;
  }
  ui::SetupWindow* opened = ui::makeWindow(button, parts_->windowPorts(), this);
  opened->setAttribute(Qt::WA_DeleteOnClose);
  opened->setWindowModality(Qt::WindowModal);
  parts_->window = opened;
  opened->show();
  return opened;
}

ui::frmNewProject* KGenCtl::openNewProject() {
  if (!parts_->newProject || !parts_->newProject->isVisible()) {
    auto* opened = new ui::frmNewProject(parts_->windowPorts(), this);
    opened->setAttribute(Qt::WA_DeleteOnClose);
    opened->setWindowModality(Qt::WindowModal);
    parts_->newProject = opened;
    opened->show();
  }
  parts_->newProject->raise();
  parts_->newProject->activateWindow();
  return parts_->newProject;
}

void KGenCtl::closeEvent(QCloseEvent* event) { event->setAccepted(parts_->session.AskToSaveAll()); }

// Properties

QString KGenCtl::AppPath() const { return qstring(parts_->session.AppPath); }
void KGenCtl::setAppPath(const QString& path) { parts_->session.AppPath = utf8(path); }
QString KGenCtl::TVNItemNumber() const { return qstring(control::Session::TVNItemNumber()); }
QString KGenCtl::CurrentFileName() const { return qstring(parts_->session.CurrentFileName()); }
QString KGenCtl::CurBasicFileName() const { return qstring(parts_->session.CurBasicFileName()); }
QString KGenCtl::GenFilePath() const { return qstring(parts_->session.GenFilePath); }
void KGenCtl::setGenFilePath(const QString& path) { parts_->session.GenFilePath = utf8(path); }
QString KGenCtl::HelpFileName() const { return qstring(parts_->session.HelpFileName()); }
QString KGenCtl::HelpPath() const { return qstring(parts_->session.HelpPath); }
void KGenCtl::setHelpPath(const QString& path) { parts_->session.HelpPath = utf8(path); }
QString KGenCtl::HelpText() const { return qstring(parts_->session.HelpText()); }
int KGenCtl::InternalHelpContextID() const { return parts_->session.InternalHelpContextID(); }
QString KGenCtl::RegistryApp() const { return qstring(parts_->session.RegistryApp()); }
void KGenCtl::setRegistryApp(const QString& application) {
  parts_->session.RegistryApp(utf8(application));
}
bool KGenCtl::SoftColors() const { return parts_->session.SoftColors; }
void KGenCtl::setSoftColors(bool soft) {
  parts_->session.SoftColors = soft;
  parts_->refresh();
}
bool KGenCtl::SoftTextHighlight() const { return parts_->session.SoftTextHighlight; }
void KGenCtl::setSoftTextHighlight(bool soft) {
  parts_->session.SoftTextHighlight = soft;
  parts_->refresh();
}
bool KGenCtl::UseLegacy() const { return parts_->session.UseLegacy; }
void KGenCtl::setUseLegacy(bool legacy) { parts_->session.UseLegacy = legacy; }
QString KGenCtl::Version() const { return qstring(control::Session::Version()); }
QString KGenCtl::VersionDate() const { return qstring(control::Session::VersionDate()); }
QString KGenCtl::HostApp() const { return qstring(parts_->session.HostApp); }
void KGenCtl::setHostApp(const QString& application) {
  parts_->session.HostApp = utf8(application);
}
void KGenCtl::setDunmoreServer(std::function<bool(const QString& program)> server) {
  parts_->dunmoreServer = std::move(server);
}

// Methods

void KGenCtl::LongToMessage(int code) { parts_->session.LongToMessage(code); }
void KGenCtl::StringToMessage(const QString& message) {
  parts_->session.StringToMessage(utf8(message));
}
bool KGenCtl::DunmoreDownload(const QString& program) {
  return parts_->session.DunmoreDownload(utf8(program));
}
void KGenCtl::CloseSession() { parts_->session.CloseSession(); }
bool KGenCtl::OpenFile(const QString& path) { return parts_->session.OpenFile(utf8(path)); }
void KGenCtl::PrintSelect() { parts_->session.PrintSelect(); }
void KGenCtl::ShowHelpFile() { parts_->session.ShowHelpFile(); }
void KGenCtl::OffSaveDownload() { parts_->session.OffSaveDownload(); }
bool KGenCtl::AskToSaveAll() { return parts_->session.AskToSaveAll(); }
bool KGenCtl::SaveDldFile() { return parts_->session.SaveDldFile() == control::SaveResult::saved; }
void KGenCtl::ShowOptions() { parts_->session.ShowOptions(); }
void KGenCtl::SetQuitButton(bool shown) { parts_->session.SetQuitButton(shown); }
void KGenCtl::SetSaveDownload(bool shown) { parts_->session.SetSaveDownload(shown); }
void KGenCtl::FormCleanup() { parts_->session.FormCleanup(); }

QStringList KGenCtl::GetSelectedColors() const {
  const control::SelectedColors& c = parts_->session.GetSelectedColors();
  return {qstring(c.FormBackground),    qstring(c.PanelBackground), qstring(c.PanelText),
          qstring(c.SummaryBackground), qstring(c.SummaryText),     qstring(c.SummaryHighlight)};
}

/// Colours that are missing or no colours stay as they are.
void KGenCtl::SetSelectedColors(const QStringList& colors) {
  control::SelectedColors chosen = parts_->session.GetSelectedColors();
  std::string* const places[] = {&chosen.FormBackground, &chosen.PanelBackground,
                                 &chosen.PanelText,      &chosen.SummaryBackground,
                                 &chosen.SummaryText,    &chosen.SummaryHighlight};
  for (qsizetype i = 0; i < std::min<qsizetype>(colors.size(), std::size(places)); ++i)
    if (colors[i].size() == 6 && QColor::isValidColor("#" + colors[i]))
      *places[i] = utf8(colors[i].toUpper());
  parts_->session.SetSelectedColors(chosen);
}
