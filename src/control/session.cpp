#include "control/session.h"

#include <algorithm>
#include <utility>

#include "control/panel_texts.h"
#include "control/paths.h"
#include "control/summary.h"
#include "text/strings.h"

namespace control {
namespace {

using text::concat;

/// What a host can ask for by a number.
enum HostCommand { refreshSummary = 1, saveProject, saveAndSend, discardChanges, printSummary };

std::string workDirectoryOf(const ports::MachineRegistry& machine) {
  const auto set = machine.read(R"(SOFTWARE\Tervane\ProgGen)", "WorkDir");
  return set && !set->empty() ? *set : machine.applicationData();
}

std::size_t characters(std::string_view utf8) {
  return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;  // no byte that goes on with one
  }));
}

}  // namespace

bool isIdentity(std::string_view text) {
  return characters(text) <= panel::longestIdentity &&
         std::none_of(text.begin(), text.end(), [](char c) {
           return static_cast<unsigned char>(c) < ' ' || c == '[' || c == ']' || c == '"';
         });
}

Session::Session(const SessionPorts& ports, std::string registryApp)
    : ports_(ports), trouble_(ports.messages), registryApp_(std::move(registryApp)) {
  guarded("UserControl_Initialize", [this] {
    readAllSettings();
    useWorkDirectory(workDirectoryOf(ports_.machine));
  });
  makeNewProject();
}

void Session::useWorkDirectory(std::string folder) {
  workDirectory_ = std::move(folder);
  workingCopy_.emplace(ports_.files, workDirectory_);
}

void Session::makeNewProject() {
  startWith(KGEN_COMMON::newProject(settings_.defaults), std::string(newProjectName));
}

void Session::readAllSettings() {
  std::vector<std::string> complaints;
  settings_ = readSettings(ports_.settings, registryApp_, complaints);
  for (const std::string& line : complaints) ports_.host.note(line);
  GenFilePath =
      ports_.files.exists(settings_.GenPath) ? settings_.GenPath : ports_.machine.documents();
}

void Session::RegistryApp(std::string application) {
  registryApp_ = std::move(application);
  guarded("RegistryApp", [this] { readAllSettings(); });
  if (path_ == newProjectName && !changed()) makeNewProject();
  ports_.host.refresh();
}

void Session::changeSettings(const Settings& settings) {
  if (settings.GenPath != settings_.GenPath && ports_.files.exists(settings.GenPath))
    GenFilePath = settings.GenPath;
  settings_ = settings;
  guarded("ShowOptions", [this] { writeSettings(ports_.settings, registryApp_, settings_); });
  ports_.host.refresh();
}

void Session::SetSelectedColors(const SelectedColors& colors) {
  Settings changed = settings_;
  changed.colors = colors;
  changeSettings(changed);
}

// The project and its edits

void Session::startWith(model::Project project, std::string path) {
  project_ = std::move(project);
  saved_ = project_;
  path_ = std::move(path);
  modelForced_ = documentsOutdated_ = false;
  history_.clear();
  programLines_.reset();
  afterChange();
}

void Session::afterChange() {
  summary_.reset();
  ports_.host.refresh();
}

void Session::replaceProject(model::Project next) {
  project_ = std::move(next);
  keepWorkingCopy();
  afterChange();
}

void Session::edit(model::Project next, std::string name) {
  if (next == project_) return;
  history_.record(project_, std::move(name));
  replaceProject(std::move(next));
}

void Session::editOn(model::Project next, const std::string& name) {
  if (history_.undoName() != name || history_.canRedo()) return edit(std::move(next), name);
  if (next != project_) replaceProject(std::move(next));
}

void Session::undo() {
  if (!history_.canUndo()) return;
  model::Project next = project_;
  history_.undo(next);
  replaceProject(std::move(next));
}

void Session::redo() {
  if (!history_.canRedo()) return;
  model::Project next = project_;
  history_.redo(next);
  replaceProject(std::move(next));
}

/// A work directory that can't be written to is told once: the project itself is not in danger.
void Session::keepWorkingCopy() {
  if (!changed()) return endWorkingCopy();
  if (!workingCopy_ || workingCopyFailed_) return;
  workingCopyFailed_ =
      !guarded("SaveEditTemp", [this] { workingCopy_->write(project_, path_, stamp()); });
}

void Session::endWorkingCopy() {
  if (!workingCopy_ || workingCopyFailed_) return;
  workingCopyFailed_ = !guarded("DeleteEditTemp", [this] { workingCopy_->remove(); });
}

const std::string& Session::summary() {
  if (!summary_) {
    const model::ChannelPlan plan = model::channelPlan(project_);
    summary_ = summaryText(project_, plan, timing::measurementTimes(project_, plan),
                           {fileName(basePath(path_)), std::string(Version()), programLines_});
  }
  return *summary_;
}

bool Session::isDunmore() const { return text::equalsIgnoringCase(HostApp, "Dunmore"); }

model::DocumentStamp Session::stamp() const {
  return {fileName(basePath(path_)), ports_.clock.now(), isDunmore()};
}

std::string Session::programPath() const {
  return concat(basePath(path_), model::programExtension(project_.configuration));
}

std::string Session::CurBasicFileName() const { return fileName(programPath()); }

std::string Session::HelpFileName() const {
  return HelpPath.empty() ? "kgen" : concat(HelpPath, "/kgen");
}

std::string_view Session::VersionDate() { return KGEN_BUILD_DATE; }

verify::CheckContext Session::checks() {
  return {ports_.messages, trouble_, static_cast<unsigned>(settings_.WarningMessageMask)};
}

// What the host asks for

void Session::LongToMessage(int code) {
  switch (code) {
    case refreshSummary:
      return afterChange();
    case saveProject:
      SaveDldFile();
      return;
    case saveAndSend:
      SaveAndSend();
      return;
    case discardChanges:
      saved_ = project_;
      modelForced_ = documentsOutdated_ = false;
      return;
    case printSummary:
      return PrintSelect();
    default:
      return;
  }
}

void Session::StringToMessage(std::string_view message) {
  const std::size_t equals = std::min(message.find('='), message.size());
  const std::string_view word = message.substr(0, equals);
  const std::string value(message.substr(std::min(equals + 1, message.size())));
  if (word == "OPEN") {
    OpenFile(value);
    return;
  }
  if (word != "OPERATOR" && word != "ID") return;
  if (!isIdentity(value)) {
    ports_.host.note(concat(word,
                            ": up to 30 characters without line breaks, quotes and square "
                            "brackets; the message is ignored"));
    return;
  }
  model::Project next = project_;
  (word == "ID" ? next.configuration.IDNumber : next.configuration.Operator) = value;
  edit(std::move(next), "operator and ID");
}

void Session::PrintSelect() { ports_.host.printRequested(); }
void Session::ShowOptions() { ports_.host.optionsRequested(); }
void Session::ShowHelpFile() { ports_.host.helpRequested(HelpFileName(), helpContextId_); }

void Session::showHelpFor(std::string helpText, int contextId) {
  helpText_ = std::move(helpText);
  helpContextId_ = contextId;
}

void Session::SetQuitButton(bool shown) {
  quitButton_ = shown;
  ports_.host.refresh();
}

void Session::SetSaveDownload(bool shown) {
  sendButton_ = shown;
  ports_.host.refresh();
}

void Session::OffSaveDownload() { SetSaveDownload(false); }

// The end of a project

void Session::CloseSession() {
  ports_.host.finishWindows(false);
  endWorkingCopy();
  makeNewProject();
}

void Session::NewProject() {
  if (ports_.host.finishWindows(true) && AskToSaveAll()) CloseSession();
}

bool Session::AskToSaveAll() {
  if (!changed()) return true;
  ports::Message question;
  question.title = "QUIT GENERATOR";
  question.text = concat("Do you want to save changes made to ", fileName(path_), "?");
  question.icon = ports::Icon::question;
  question.buttons = ports::Buttons::yesNoCancel;
  question.defaultButton = ports::Answer::yes;
  const ports::Answer answer = ports_.messages.show(question);
  if (answer == ports::Answer::yes) return SaveDldFile() == SaveResult::saved;
  return answer == ports::Answer::no;
}

bool Session::Quit() {
  if (!ports_.host.finishWindows(true) || !AskToSaveAll()) return false;
  FormCleanup();
  CloseSession();
  return true;
}

void Session::FormCleanup() {
  ports_.host.closeWindows();
  endWorkingCopy();
}

}  // namespace control
