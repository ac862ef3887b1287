#include <cmath>
#include <filesystem>

#include "control/paths.h"
#include "control/session.h"
#include "model/time_units.h"
#include "projectfile/project_file.h"
#include "text/strings.h"
#include "timing/execution_interval.h"

// How a session opens projects: from their files, from the backups of saves that did not end, and
// from the working copy that a crash left.
namespace control {
namespace {

using text::concat;

ports::Message notThere(const std::string& path) {
  ports::Message message;
  message.title = "FILE NOT FOUND";
  message.text = concat("The requested program generator file: \r\n", path,
                        "\r\ncould not be located on this computer.");
  return message;
}

ports::Message yesNoQuestion(std::string title, std::string text) {
  ports::Message question;
  question.title = std::move(title);
  question.text = std::move(text);
  question.icon = ports::Icon::question;
  question.buttons = ports::Buttons::yesNo;
  question.defaultButton = ports::Answer::yes;
  return question;
}

ports::Message questionAboutBackup(const std::string& path, const std::string& backup,
                                   bool missing) {
  return yesNoQuestion(
      "BACKUP FOUND", concat("The project file ", path, missing ? " is missing." : " is cut short.",
                             "\r\nThe version before the last save is still there as ", backup,
                             ".\r\n\r\nWould you like to open that version?"));
}

ports::Message questionAboutScan(double scan, double minimum) {
  return yesNoQuestion(
      "MAIN SCAN TOO SMALL",
      concat("The main scan interval of ", scan, " microseconds  is less than the\r\n",
             "minimum requirement of ", minimum, " microseconds for M7125 measurements.\r\n",
             "Would you like to correct it?"));
}

ports::Message questionAboutWorkingCopy(const std::string& origin) {
  return yesNoQuestion("WORKING COPY FOUND",
                       concat("The program generator ended without closing the project\r\n", origin,
                              "\r\n\r\nWould you like to go on with the changes made since it was "
                              "saved?"));
}

}  // namespace

bool Session::OpenFile(std::string_view path) {
  if (!ports_.host.finishWindows(true) || !AskToSaveAll()) return false;
  bool opened = false;
  guarded("OpenFile",
          [&] { opened = openExisting(std::filesystem::absolute(projectPath(path)).string()); });
  return opened;
}

bool Session::ChooseAndOpen() {
  const auto path = ports_.host.choosePath(
      {"OPEN GENERATOR FILE", "(Generator Files)|*.GN7;*.GEN|(All Files)|*.*", false, GenFilePath});
  return path && OpenFile(*path);
}

bool Session::openExisting(const std::string& path) {
  const bool there = ports_.files.exists(path);
  if (offerBackup(path)) return true;
  if (there) return readProject(path, path);
  ports_.messages.show(notThere(path));
  return false;
}

/// A backup beside a project tells of a save that did not end.
bool Session::offerBackup(const std::string& path) {
  const std::string backup = KGEN_GENFILE::backupOf(basePath(path));
  if (!ports_.files.exists(backup)) return false;
  const bool missing = !ports_.files.exists(path);
  if (!missing && !KGEN_GENFILE::isCutShort(ports_.files.read(path))) return false;
  if (KGEN_GENFILE::isCutShort(ports_.files.read(backup))) return false;
  const ports::Message question = questionAboutBackup(path, backup, missing);
  if (ports_.messages.show(question) == ports::Answer::yes) return readProject(backup, path);
  if (!missing) ports_.host.note(concat(path, ": the end of the project is missing"));
  return false;
}

/// Reads a file as the project of a path: they differ for backups and working copies, which count
/// as changed until they are saved.
bool Session::readProject(const std::string& file, const std::string& path) {
  model::Project next = KGEN_COMMON::newProject(settings_.defaults);
  const model::Project empty = next;
  const KGEN_GENFILE::LoadReport report =
      KGEN_GENFILE::loadInPlace(file, next, {.dunmoreHost = isDunmore()});
  if (report.error) {
    trouble_.report(permissionDenied, *report.error, "KGenCtl.OpenFile");
    return false;
  }
  for (const KGEN_GENFILE::LineNote& note : report.notes)
    ports_.host.note(concat(file, ":", note.line, ": ", note.text));
  if (!workingCopy_ || file != workingCopy_->path())
    endWorkingCopy();  // of the project before, which is closed
  startWith(std::move(next), path);
  modelForced_ = report.modelForced;
  if (file != path) saved_ = empty;
  for (const std::string& problem : model::channelPlan(project_).problems)
    ports_.host.note(concat(path, ": ", problem));
  ports_.host.fileOpened(path);
  offerLongerScan();
  return true;
}

/// 7125 modules take no more measurements than they can in a scan.
void Session::offerLongerScan() {
  const double minimum = timing::minimumFilterScanMicros(project_);
  const double scan = model::scanMicros(project_);
  if (scan >= minimum) return;
  if (ports_.messages.show(questionAboutScan(scan, minimum)) != ports::Answer::yes) return;
  constexpr double microsPerStep = 10;  // what a scan interval in microseconds counts
  model::Project next = project_;
  next.scan.ExecTimeUnits = 0;
  next.scan.ExecutionTime = std::ceil(minimum / microsPerStep);
  edit(std::move(next), "scan interval");
}

bool Session::OfferWorkingCopy() {
  bool opened = false;
  guarded("OfferWorkingCopy", [&] {
    if (!workingCopy_ || !workingCopy_->isLeftOver()) return;
    std::string origin = workingCopy_->origin();
    if (origin.empty()) origin = newProjectName;
    if (ports_.messages.show(questionAboutWorkingCopy(origin)) == ports::Answer::yes)
      opened = readProject(workingCopy_->path(), origin);
    else
      workingCopy_->remove();
  });
  return opened;
}

}  // namespace control
