#include <utility>

#include "companion/table_information.h"
#include "companion/wiring_diagram.h"
#include "control/checked_program.h"
#include "control/paths.h"
#include "control/session.h"
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

ports::Message questionAboutReplacing(const std::string& file) {
  ports::Message question;
  question.title = "REPLACE FILE";
  question.text = concat("The project is saved as ", file,
                         "\r\nwhich exists already and is not the file that was opened.\r\n\r\n"
                         "Would you like to replace it?");
  question.icon = ports::Icon::exclamation;
  question.buttons = ports::Buttons::yesNo;
  question.defaultButton = ports::Answer::no;
  return question;
}

}  // namespace

SaveResult Session::save(Delivery delivery) {
  if (!mayBeSaved(delivery)) return SaveResult::refused;
  const Saving saving = prepared();
  if (model::isK700X(project_.configuration)) compileBeforeSave(saving, delivery);
  if (!writeProject(saving) || !writeDocuments(saving)) return SaveResult::failed;
  endWorkingCopy();
  if (delivery == Delivery::send) send();
  return SaveResult::saved;
}

/// The path holds for the save; the project moves there when its file was written.
SaveResult Session::saveTo(std::string path, Delivery delivery) {
  const std::string before = std::exchange(path_, std::move(path));
  placeTaken_ = false;
  const SaveResult result = save(delivery);
  if (!placeTaken_) path_ = before;
  return result;
}

SaveResult Session::SaveDldFile() {
  const std::optional<std::string> place = chosenPlace();
  return place ? saveTo(*place, Delivery::saveOnly) : SaveResult::refused;
}

SaveResult Session::SaveAndSend() {
  const std::optional<std::string> place = chosenPlace();
  return place ? saveTo(*place, Delivery::send) : SaveResult::refused;
}

SaveResult Session::SaveAs(std::string_view path) {
  return saveTo(concat(basePath(path), projectExtension), Delivery::saveOnly);
}

SaveResult Session::ChooseAndSaveAs() {
  const bool hasFolder = !folderOf(path_).empty();
  const std::optional<std::string> place =
      askedPlace(hasFolder ? path_ : concat(GenFilePath, "/", fileName(path_)));
  return place ? saveTo(*place, Delivery::saveOnly) : SaveResult::refused;
}

/// A name that gets the extension of projects may be that of a file which nobody asked about.
std::optional<std::string> Session::askedPlace(const std::string& proposal) {
  const auto chosen = ports_.host.choosePath(
      {"SAVE GENERATOR FILE", "(Generator Files)|*.GN7|(All Files)|*.*", true, proposal});
  if (!chosen) return std::nullopt;
  std::string place = concat(basePath(*chosen), projectExtension);
  if (place != *chosen && !mayReplace(place)) return std::nullopt;
  return place;
}

/// A new project has a name but no folder. A project keeps its base name, so that its file may
/// become another one: that is replaced only when the user agrees.
std::optional<std::string> Session::chosenPlace() {
  if (folderOf(path_).empty()) return askedPlace(concat(GenFilePath, "/", fileName(path_)));
  std::string place = concat(basePath(path_), projectExtension);
  if (!mayReplace(place)) return std::nullopt;
  return place;
}

bool Session::mayReplace(const std::string& path) {
  if (path == path_ || !ports_.files.exists(path)) return true;
  return ports_.messages.show(questionAboutReplacing(path)) == ports::Answer::yes;
}

/// Runs the checks and asks what they leave to the user. What the checks may change in the
/// project, with the user's consent, is an edit.
bool Session::mayBeSaved(Delivery& delivery) {
  model::Project checked = project_;
  const auto [doNotSave, needsUpgrade] = verify::checkedForSave(checked, checks());
  edit(checked, "zero and calibration settings");
  if (!doNotSave && !needsUpgrade) return true;
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

Session::Saving Session::prepared() {
  Saving saving{project_, stamp(), std::nullopt, {}, {}};
  KGEN_GENFILE::prepareForSave(saving.project, saving.stamp);
  makeProgram(saving);
  return saving;
}

/// A program that is too long, or that our own mistake made faulty, is none.
void Session::makeProgram(Saving& saving) {
  try {
    CheckedProgram made =
        checkedProgram(saving.project, saving.stamp, fileName(programPath()), ports_.writeProgram);
    saving.remark = std::move(made.remark);
    if (made.fault.empty())
      saving.program = std::move(made.program);
    else
      saving.fault = {invalidCall, std::move(made.fault), "SAVEDLD.Generate"};
  } catch (const SAVEDLD::ProgramTooLong& error) {
    saving.fault = {overflow, error.what(), "SAVEDLD.AppendLine"};
  }
}

bool Session::hasProgram(const Saving& saving) {
  if (!saving.program) trouble_.report(saving.fault.number, saving.fault.text, saving.fault.source);
  return saving.program.has_value();
}

/// Faults do not keep a project from being saved; a program with faults is sent only when the user
/// insists.
void Session::compileBeforeSave(const Saving& saving, Delivery& delivery) {
  if (!saving.program) return;
  const CompileResult result = compile(saving.program->text);
  if (result.state != CompileResult::State::faulty || delivery != Delivery::send)
    return showCompileResult(result);
  ports::Message question = compileMessage(
      concat(joined(result.lines), "\r\n\r\nDo you want to send the program all the same?"),
      ports::Icon::exclamation);
  question.buttons = ports::Buttons::yesNo;
  question.defaultButton = ports::Answer::no;
  if (ports_.messages.show(question) != ports::Answer::yes) delivery = Delivery::saveOnly;
}

bool Session::writeProject(const Saving& saving) {
  return guarded("SaveGenFile", [&] {
    const std::string remark =
        KGEN_GENFILE::save(ports_.files, basePath(path_), project_, saving.stamp);
    if (!remark.empty()) ports_.host.note(remark);
    project_ = saved_ = saving.project;
    modelForced_ = false;
    placeTaken_ = documentsOutdated_ = true;
    afterChange();
  });
}

/// Program, wiring and table information are complete in memory before the first is written; where
/// there is no program the old ones stay as they were.
bool Session::writeDocuments(const Saving& saving) {
  if (!hasProgram(saving)) return false;
  return guarded("SaveDldFile", [&] {
    const std::string wiring = MAKEWIRE::wiringText(project_, saving.stamp);
    const std::string tables = companion::tableInformation(project_, saving.stamp);
    for (const std::string& line : saving.program->notes) ports_.host.note(line);
    if (!saving.remark.empty()) ports_.host.note(saving.remark);
    ports_.files.replace(programPath(), saving.program->text, true);
    ports_.files.replace(concat(basePath(path_), ".WR7"), wiring, true);
    ports_.files.replace(concat(basePath(path_), ".TI7"), tables, true);
    programLines_ = static_cast<std::size_t>(saving.program->lines);
    documentsOutdated_ = false;
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
  const Saving saving = prepared();
  if (!hasProgram(saving)) return {};
  CompileResult result = compile(saving.program->text);
  showCompileResult(result);
  return result;
}

CompileResult Session::compile(const std::string& program) {
  CompileResult result;
  guarded("cmdTest_Click", [&] {
    const std::string compiler = foundPreCompiler();
    if (compiler.empty())
      result.notes.emplace_back("Skipped pre-compile.");
    else
      result = PreCompiler(ports_.files, ports_.processes, workDirectory_).run(compiler, program);
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
