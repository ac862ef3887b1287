#include "desktop/main_window.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QStatusBar>
#include <algorithm>

#include "control/session.h"
#include "desktop/frm_send.h"
#include "text/strings.h"
#include "ui/form.h"
#include "ui/screen_room.h"

namespace desktop {
namespace {

constexpr int noteMs = 10'000;
constexpr QSize usualSize(1280, 800);

/// The first project among files that are dragged; "" when there is none.
QString projectIn(const QMimeData& data) {
  for (const QUrl& url : data.urls()) {
    QString path = url.toLocalFile();
    const QString suffix = QFileInfo(path).suffix().toUpper();
    if (suffix == "GN7" || suffix == "GEN") return path;
  }
  return {};
}

ports::Message message(const char* title, const QString& text) {
  ports::Message result;
  result.title = title;
  result.text = ui::utf8(text);
  return result;
}

}  // namespace

MainWindow::MainWindow(DesktopSettings& settings, const control::SessionPorts* ports)
    : settings_(settings),
      ownMessages_(this),
      messages_(ports != nullptr ? ports->messages : ownMessages_),
      parts_(new QSplitter(this)),
      pages_(new QTabWidget(parts_)),
      program_(new ui::ProgramView(pages_)),
      reviewer_([this] { return reviewRequest(); }) {
  setAcceptDrops(true);
  addControl(ports);
  addPages();
  addFindings();
  addMenus();
  statusBar();
  placeParts();
  connect(&sender_, &Sender::told, this,
          [this](const QString& words) { statusBar()->showMessage(words); });
  connect(&sender_, &Sender::failed, this,
          [this](const QString& words) { tell(message("SEND PROGRAM", words)); });
  connect(&reviewer_, &Reviewer::ready, this, [this](const auto& review) { showReview(*review); });
  showChanges();
}

MainWindow::~MainWindow() = default;

void MainWindow::addControl(const control::SessionPorts* ports) {
  control_ = ports != nullptr ? new KGenCtl(*ports, parts_) : new KGenCtl(parts_);
  parts_->insertWidget(0, control_);
  connect(control_, &KGenCtl::Changed, this, &MainWindow::showChanges);
  connect(control_, &KGenCtl::FileOpened, this, &MainWindow::noteOpened);
  connect(control_, &KGenCtl::Note, this, &MainWindow::keepNote);
  connect(control_, &KGenCtl::DownloadRequest, this, &MainWindow::sendProgram);
  connect(control_, &KGenCtl::QuitRequest, this, &MainWindow::close);
}

void MainWindow::addPages() {
  ui::describe(*pages_, "Documents", "What the project gives: choose a page.");
  ui::describe(*program_, "Program", "The program that the project gives.");
  program_->setNumbered(true);
  programPage_ = new DocumentPage(
      program_, [this](const std::string& text) { program_->setProgram(text); }, pages_);
  tablesPage_ = plainTextPage("Table information", "What the output tables store.", pages_);
  wiringPage_ = plainTextPage("Wiring", "Which wire goes where.", pages_);
  budgetPage_ = new BudgetPage(pages_);
  pages_->addTab(programPage_, "Program");
  pages_->addTab(tablesPage_, "Tables");
  pages_->addTab(wiringPage_, "Wiring");
  pages_->addTab(budgetPage_, "Scan Time");
}

void MainWindow::addFindings() {
  findingsDock_ = new QDockWidget("Findings", this);
  findingsDock_->setObjectName("findings");
  findings_ = new FindingsList(findingsDock_);
  findingsDock_->setWidget(findings_);
  addDockWidget(Qt::BottomDockWidgetArea, findingsDock_);
  connect(findings_, &FindingsList::wanted, this, &MainWindow::goTo);
}

void MainWindow::placeParts() {
  parts_->setStretchFactor(1, 1);
  parts_->setCollapsible(0, false);
  setCentralWidget(parts_);
  constexpr int usualFindingsHeight = 130;
  if (!restoreGeometry(settings_.place("window")))
    resize(usualSize.boundedTo(ui::roomOn(*screen())));
  restoreState(settings_.place("parts"));
  if (!parts_->restoreState(settings_.place("splitter")))
    resizeDocks({findingsDock_}, {usualFindingsHeight}, Qt::Vertical);
}

void MainWindow::rememberPlaces() {
  settings_.setPlace("window", saveGeometry());
  settings_.setPlace("parts", saveState());
  settings_.setPlace("splitter", parts_->saveState());
}

void MainWindow::begin(const QStringList& files) {
  if (offerWorkingCopy()) return tellOfUnopened(files);
  if (!files.isEmpty()) open(files.front());
  tellOfUnopened(files.mid(1));
}

/// One that a crash left behind; windows that are open keep theirs.
bool MainWindow::offerWorkingCopy() {
  control::Session& session = control_->session();
  place_.emplace(ui::qstring(session.workDirectory()));
  session.useWorkDirectory(ui::utf8(place_->folder()));
  return place_->isOwn() && session.OfferWorkingCopy();
}

void MainWindow::tellOfUnopened(QStringList files) {
  files.removeAll(control_->CurrentFileName());
  if (files.isEmpty()) return;
  tell(message("ONE PROJECT AT A TIME",
               "One project is open at a time. Not opened:\r\n" + files.join("\r\n")));
}

void MainWindow::open(const QString& path) {
  if (!control_->OpenFile(path) && !QFileInfo::exists(path)) settings_.removeRecentFile(path);
}

void MainWindow::noteOpened(const QString& path) {
  fileFindings_ = std::move(notes_);
  notes_.clear();
  shownFile_ = path;
  settings_.addRecentFile(path);
  showChanges();
  showFindings();
}

/// Title, actions and, soon, documents.
void MainWindow::showChanges() {
  const QString path = control_->CurrentFileName();
  if (path != shownFile_) fileFindings_.clear();
  const bool placed = QFileInfo(path).isAbsolute();
  if (placed && path != shownFile_) settings_.addRecentFile(path);
  shownFile_ = path;
  setWindowTitle(QFileInfo(path).fileName() + "[*]");
  setWindowModified(control_->session().changed());
  updateActions();
  reviewer_.renew();
}

ReviewRequest MainWindow::reviewRequest() {
  const control::Session& session = control_->session();
  return {session.project(), session.stamp(),
          static_cast<unsigned>(session.settings().WarningMessageMask)};
}

void MainWindow::showReview(const Review& review) {
  programPage_->setText(review.program);
  tablesPage_->setText(review.tables);
  wiringPage_->setText(review.wiring);
  budgetPage_->show(review.budget);
  reviewFindings_ = review.findings;
  showFindings();
  Q_EMIT reviewed();
}

/// What the file said, unless the review says the same.
void MainWindow::showFindings() {
  std::vector<Finding> all = reviewFindings_;
  for (const Finding& note : fileFindings_)
    if (std::none_of(all.begin(), all.end(),
                     [&](const Finding& each) { return note.text.ends_with(each.text); }))
      all.push_back(note);
  findings_->show(all);
  findingsDock_->setWindowTitle(findings_->title());
}

/// A file is read in one go: what was noted before belongs to something else.
void MainWindow::keepNote(const QString& line) {
  if (notes_.empty()) QTimer::singleShot(0, this, [this] { notes_.clear(); });
  notes_.push_back(findingOfNote(ui::utf8(line)));
  statusBar()->showMessage(line, noteMs);
}

void MainWindow::goTo(const Finding& finding) {
  if (finding.line > 0) {
    showPage(*programPage_);
    program_->showLine(finding.line);
    program_->setFocus();
  } else if (finding.button >= 0) {
    control_->openWindow(finding.button);
  }
}

void MainWindow::sendProgram(const QString& program) {
  if (settings_.sendTarget().kind == SendTarget::Kind::none && !askForTarget())
    return statusBar()->showMessage("The program was saved and not sent.");
  sender_.send(program, settings_.sendTarget());
}

/// True when there is somewhere to send to.
bool MainWindow::askForTarget() {
  frmSend window(settings_.sendTarget(), this);
  if (window.exec() != QDialog::Accepted) return false;
  settings_.setSendTarget(window.target());
  return window.target().kind != SendTarget::Kind::none;
}

bool MainWindow::maySendingStop() {
  if (!sender_.isBusy()) return true;
  ports::Message question =
      message("SEND PROGRAM", "The program is still being sent. Stop it and quit?");
  question.buttons = ports::Buttons::yesNo;
  question.defaultButton = ports::Answer::no;
  if (tell(question) != ports::Answer::yes) return false;
  sender_.stop();
  return true;
}

ports::Answer MainWindow::tell(const ports::Message& message) { return messages_.show(message); }

void MainWindow::showPage(QWidget& page) {
  documents_->setChecked(true);
  pages_->setCurrentWidget(&page);
}

DocumentPage* MainWindow::currentDocument() {
  auto* page = qobject_cast<DocumentPage*>(pages_->currentWidget());
  return page != nullptr ? page : programPage_;
}

void MainWindow::openFind() {
  DocumentPage* page = currentDocument();
  showPage(*page);
  page->openFind();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  const bool leaves = maySendingStop() && control_->session().Quit();
  if (leaves) rememberPlaces();
  event->setAccepted(leaves);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!projectIn(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const QString path = projectIn(*event->mimeData());
  if (!path.isEmpty()) open(path);
}

}  // namespace desktop
