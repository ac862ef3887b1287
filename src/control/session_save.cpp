#include <utility>

#include "companion/table_information.h"
#include "companion/wiring_diagram.h"
#include "control/paths.h"
#include "control/session.h"
#include "generator/program_writer.h"
#include "projectfile/project_file.h"
#include "text/strings.h"
#include "verify/save_checks.h"

// The save command, from the checks to the logger.
namespace control {
namespace {

using text::concat;

ports::Message compileMessage(std::string text, ports::Icon icon) {
  ports::Message message;
  message.title = "COMPILE RESULT";
  message.text = std::move(text);
  message.icon = icon;
  return message;
}

std::string joined(const std::vector<std::string>& lines) {
  std::string out;
  for (const std::string& line : lines) out += concat(out.empty() ? "" : "\r\n", line);
  return out;
}

/// The old file stands until the new one is on the disk.
void replaceFile(ports::FileStore& files, const std::string& path, std::string_view content) {
  const std::string aside = concat(path, ".new");
  files.write(aside, content, true);
  files.rename(aside, path);
}

}  // namespace

SaveResult Session::save(Delivery delivery) {
  if (!hasPlace() || !mayBeSaved(delivery)) return SaveResult::refused;
  if (model::isK700X(project_.configuration)) compileBeforeSave(delivery);
  if (!writeProject() || !writeDocuments()) return SaveResult::failed;
  if (delivery == Delivery::send) send();
  return SaveResult::saved;
}

SaveResult Session::SaveDldFile() { return save(Delivery::saveOnly); }
SaveResult Session::SaveAndSend() { return save(Delivery::send); }

SaveResult Session::SaveAs(std::string_view path) {
  const std::string before = std::exchange(path_, projectPath(path));
  const SaveResult result = save(Delivery::saveOnly);
  if (result != SaveResult::saved) path_ = before;
  return result;
}

/// A new project has a name but no folder.
bool Session::hasPlace() {
  if (!folderOf(path_).empty()) return true;
  const auto chosen =
      ports_.host.choosePath({"SAVE GENERATOR FILE", "(Generator Files)|*.GN7|(All Files)|*.*",
                              true, concat(GenFilePath, "/", fileName(path_))});
  if (chosen) path_ = projectPath(*chosen);
  return chosen.has_value();
}

/// Runs the checks and asks what they leave to the user. What the checks may change in the
/// project, with the user's consent, is an edit.
bool Session::mayBeSaved(Delivery& delivery) {
  bool doNotSave = false, needsUpgrade = false;
  model::Project checked = project_;
  KGEN_COMMON::VerifyBeforeSave(checked, checks(), doNotSave, needsUpgrade);
  edit(checked, "zero and calibration settings");
  if (!doNotSave && !needsUpgrade) {
    KGEN_COMMON::CheckFloatingGround(project_, checks());
    return true;
  }
  const bool sending = delivery == Delivery::send;
  const ports::Message question =
      doNotSave ? verify::questionSaveAnyway({isDunmore(), needsUpgrade, sending})
                : verify::questionUpgrade();
  if (ports_.messages.show(question) != ports::Answer::yes) return false;
  if (needsUpgrade) checked.configuration.Version = "6.0";
  edit(std::move(checked), "upgrade");
  if (doNotSave) delivery = Delivery::saveOnly;
  return true;
}

/// Faults do not keep a project from being saved; a program with faults is sent only when the user
/// insists.
void Session::compileBeforeSave(Delivery& delivery) {
  const CompileResult result = compileNow();
  if (result.state != CompileResult::State::faulty || delivery != Delivery::send)
    return showCompileResult(result);
  ports::Message question = compileMessage(
      concat(joined(result.lines), "\r\n\r\nDo you want to send the program all the same?"),
      ports::Icon::exclamation);
  question.buttons = ports::Buttons::yesNo;
  question.defaultButton = ports::Answer::no;
  if (ports_.messages.show(question) != ports::Answer::yes) delivery = Delivery::saveOnly;
}

bool Session::writeProject() {
  return guarded("SaveGenFile", [this] {
    KGEN_GENFILE::save(ports_.files, basePath(path_), project_, stamp());
    KGEN_GENFILE::prepareForSave(project_, stamp());
    path_ = concat(basePath(path_), projectExtension);
    saved_ = project_;
    modelForced_ = false;
    if (workingCopy_) workingCopy_->remove();
    afterChange();
  });
}

/// Program, wiring and table information are complete in memory before the first is written; a
/// program that is too long leaves the old one as it was.
bool Session::writeDocuments() {
  return guarded("SaveDldFile", [this] {
    const SAVEDLD::Program program = SAVEDLD::generate(project_, stamp());
    const std::string wiring = MAKEWIRE::wiringText(project_, stamp());
    const std::string tables = companion::tableInformation(project_, stamp());
    for (const std::string& line : program.notes) ports_.host.note(line);
    replaceFile(ports_.files, programPath(), program.text);
    replaceFile(ports_.files, concat(basePath(path_), ".WR7"), wiring);
    replaceFile(ports_.files, concat(basePath(path_), ".TI7"), tables);
    programLines_ = static_cast<std::size_t>(program.lines);
    afterChange();
  });
}

void Session::send() {
  if (isDunmore())
    DunmoreDownload(programPath());
  else
    ports_.host.downloadRequested(programPath());
}

bool Session::DunmoreDownload(const std::string& program) {
  if (ports_.host.handToDunmore(program)) return true;
  trouble_.report(invalidCall,
                  "KGenCtl is not registered with the Dunmore toolbar server-- no connection",
                  "KGenCtl.DunmoreDownload");
  return false;
}

// The pre-compiler

CompileResult Session::TestCompile() {
  const CompileResult result = compileNow();
  showCompileResult(result);
  return result;
}

CompileResult Session::compileNow() {
  CompileResult result;
  guarded("cmdTest_Click", [&] {
    const std::string compiler = foundPreCompiler();
    if (compiler.empty()) {
      result.notes.emplace_back("Skipped pre-compile.");
      return;
    }
    const SAVEDLD::Program program = SAVEDLD::generate(project_, stamp());
    result =
        PreCompiler(ports_.files, ports_.processes, workDirectory_).run(compiler, program.text);
  });
  for (const std::string& line : result.notes) ports_.host.note(line);
  return result;
}

/// A pre-compiler that the user had to search for is remembered.
std::string Session::foundPreCompiler() {
  std::string compiler = findPreCompiler(settings_, ports_.machine, ports_.files);
  if (!compiler.empty()) return compiler;
  compiler = searchPreCompiler(ports_.messages, ports_.host);
  if (compiler.empty()) return {};
  Settings changed = settings_;
  changed.LogCompPath = compiler;
  changeSettings(changed);
  return compiler;
}

void Session::showCompileResult(const CompileResult& result) {
  switch (result.state) {
    case CompileResult::State::compiled:
      ports_.messages.show(compileMessage("Test compiled OK.", ports::Icon::none));
      return;
    case CompileResult::State::faulty:
      ports_.messages.show(compileMessage(joined(result.lines), ports::Icon::exclamation));
      return;
    case CompileResult::State::skipped:
      if (!result.notes.empty())
        ports_.messages.show(compileMessage(joined(result.notes), ports::Icon::exclamation));
      return;
  }
}

}  // namespace control
