#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "control/checked_program.h"
#include "control/edit_history.h"
#include "control/pre_compiler.h"
#include "control/settings.h"
#include "control/trouble.h"
#include "control/working_copy.h"
#include "generator/program_writer.h"
#include "model/document_stamp.h"
#include "model/project.h"
#include "ports/clock.h"
#include "ports/file_store.h"
#include "ports/host.h"
#include "ports/machine_registry.h"
#include "ports/message_service.h"
#include "ports/process_runner.h"
#include "ports/settings_store.h"
#include "verify/check_context.h"

namespace control {

/// Everything outside that a session needs.
struct SessionPorts {
  ports::MessageService& messages;
  ports::FileStore& files;
  ports::Clock& clock;
  ports::SettingsStore& settings;
  ports::MachineRegistry& machine;
  ports::ProcessRunner& processes;
  ports::Host& host;
  ProgramWriter writeProgram = SAVEDLD::generate;
};

/// How a save ends.
enum class SaveResult { saved, refused, failed };

/// Operator and ID as a project takes them: up to 30 characters without line breaks, quotes and
/// square brackets.
bool isIdentity(std::string_view text);

/// The open project, its files and its changed flag, and the ways to open, edit, save, send and
/// close it: what the control does without a screen. Exactly one project is open at a time.
/// Nothing throws; what goes wrong is shown.
class Session {
 public:
  /// Starts with a new project made from the settings of the application.
  Session(const SessionPorts& ports, std::string registryApp = "kgen");

  // The project and its edits.
  [[nodiscard]] const model::Project& project() const { return project_; }
  /// Replaces the project after an edit; one that changes nothing is no edit.
  void edit(model::Project next, std::string name);
  /// The same; one step of undo with the last edit when that has the same name.
  void editOn(model::Project next, const std::string& name);
  void undo();
  void redo();
  [[nodiscard]] const EditHistory& history() const { return history_; }
  /// There is something to save: edits, a model that was forced, or documents that the last save
  /// could not write.
  [[nodiscard]] bool changed() const {
    return modelForced_ || documentsOutdated_ || project_ != saved_;
  }
  /// The summary of the project as it is.
  [[nodiscard]] const std::string& summary();

  // Properties. Those without a way to set them can only be read.
  std::string AppPath;
  std::string GenFilePath;  // folder of projects and programs
  std::string HelpPath;
  bool SoftColors = false;
  bool SoftTextHighlight = false;
  bool UseLegacy = false;  // hides the 7104 and what needs it
  std::string HostApp;
  [[nodiscard]] static std::string_view TVNItemNumber() { return "TVN-KGEN-6"; }
  [[nodiscard]] const std::string& CurrentFileName() const { return path_; }
  /// The program that is generated from the project.
  [[nodiscard]] std::string CurBasicFileName() const;
  [[nodiscard]] std::string HelpFileName() const;
  [[nodiscard]] const std::string& HelpText() const { return helpText_; }
  [[nodiscard]] int InternalHelpContextID() const { return helpContextId_; }
  [[nodiscard]] const std::string& RegistryApp() const { return registryApp_; }
  /// Reads the settings of another application.
  void RegistryApp(std::string application);
  [[nodiscard]] static std::string_view Version() { return model::generatorVersion; }
  [[nodiscard]] static std::string_view VersionDate();  // of the build
  [[nodiscard]] bool quitButtonShown() const { return quitButton_; }
  [[nodiscard]] bool sendButtonShown() const { return sendButton_; }

  // Methods, in the order in which the control lists them.
  void LongToMessage(int code);
  void StringToMessage(std::string_view message);
  /// False when the toolbar server is not connected, which is reported.
  bool DunmoreDownload(const std::string& program);
  /// Forgets the project without a question and begins a new one.
  void CloseSession();
  [[nodiscard]] const SelectedColors& GetSelectedColors() const { return settings_.colors; }
  bool OpenFile(std::string_view path);
  void PrintSelect();
  void SetSelectedColors(const SelectedColors& colors);
  void ShowHelpFile();
  /// Takes the save-and-send button away; SetSaveDownload brings it back.
  void OffSaveDownload();
  /// With unsaved changes: asks, and saves when told so. False when the project must stay open.
  bool AskToSaveAll();
  /// The save button.
  SaveResult SaveDldFile();
  /// The save-and-send button.
  SaveResult SaveAndSend();
  void ShowOptions();
  void SetQuitButton(bool shown);
  void SetSaveDownload(bool shown);
  /// Closes the windows and removes what the session keeps in the work directory.
  void FormCleanup();

  // More ways around a project.
  void NewProject();
  /// The open button: asks for the file.
  bool ChooseAndOpen();
  SaveResult SaveAs(std::string_view path);
  /// The save-as command: asks for the file.
  SaveResult ChooseAndSaveAs();
  /// The quit button: false when the project stays open.
  bool Quit();
  /// Offers the working copy that a crash left behind. True when it is open now.
  bool OfferWorkingCopy();
  /// Compiles the program of the project and shows the result.
  CompileResult TestCompile();
  /// Help for what has the focus.
  void showHelpFor(std::string helpText, int contextId);

  [[nodiscard]] const Settings& settings() const { return settings_; }
  void changeSettings(const Settings& settings);
  [[nodiscard]] const std::string& workDirectory() const { return workDirectory_; }
  /// Where working copies and files of the pre-compiler go, before the first edit: sessions that
  /// share a folder would take away each other's.
  void useWorkDirectory(std::string folder);
  /// What documents that are made now say about their making.
  [[nodiscard]] model::DocumentStamp stamp() const;

 private:
  enum class Delivery { saveOnly, send };
  template <class Act>
  bool guarded(std::string_view procedure, const Act& act);

  void readAllSettings();
  void startWith(model::Project project, std::string path);
  void afterChange();
  void keepWorkingCopy();
  void replaceProject(model::Project next);
  void makeNewProject();
  [[nodiscard]] bool isDunmore() const;
  [[nodiscard]] std::string programPath() const;
  [[nodiscard]] verify::CheckContext checks();

  bool openExisting(const std::string& path);
  bool offerBackup(const std::string& path);
  bool readProject(const std::string& file, const std::string& path);
  void offerLongerScan();

  /// What one save writes, all of it made at one moment.
  struct Saving {
    model::Project project;
    model::DocumentStamp stamp;
    std::optional<SAVEDLD::Program> program;
    struct Fault {
      FaultNumber number = invalidCall;
      std::string text;
      std::string_view source;
    } fault;             // why there is none
    std::string remark;  // on faults that texts of the project make in it
  };

  SaveResult saveTo(std::string path, Delivery delivery);
  SaveResult save(Delivery delivery);
  std::optional<std::string> chosenPlace();
  std::optional<std::string> askedPlace(const std::string& proposal);
  bool mayReplace(const std::string& path);
  bool mayBeSaved(Delivery& delivery);
  Saving prepared();
  void makeProgram(Saving& saving);
  bool hasProgram(const Saving& saving);
  void compileBeforeSave(const Saving& saving, Delivery& delivery);
  bool writeProject(const Saving& saving);
  bool writeDocuments(const Saving& saving);
  void send();
  void endWorkingCopy();
  std::string foundPreCompiler();
  CompileResult compile(const std::string& program);
  void showCompileResult(const CompileResult& result);

  SessionPorts ports_;
  TroubleReporter trouble_;
  std::string registryApp_;
  Settings settings_;
  std::string workDirectory_;
  std::optional<WorkingCopy> workingCopy_;
  bool workingCopyFailed_ = false;

  model::Project project_;
  model::Project saved_;  // as it was opened or saved last
  std::string path_;      // of the project file; its folder is empty while it has no place yet
  bool modelForced_ = false;
  bool documentsOutdated_ = false;
  bool placeTaken_ = false;  // the running save has written its project file
  EditHistory history_;
  std::optional<std::string> summary_;
  std::optional<std::size_t> programLines_;

  std::string helpText_;
  int helpContextId_ = 0;
  bool quitButton_ = true;
  bool sendButton_ = true;
};

/// Runs a step of the session; a fault inside is shown and gives false.
template <class Act>
bool Session::guarded(std::string_view procedure, const Act& act) {
  const std::string source = "KGenCtl." + std::string(procedure);
  try {
    act();
    return true;
  } catch (const ports::FileError& error) {
    trouble_.report(permissionDenied, error.what(), source);
  } catch (const std::exception& error) {
    trouble_.report(invalidCall, error.what(), source);
  }
  return false;
}

}  // namespace control
