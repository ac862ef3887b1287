#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <set>

#include "platform/processes.h"
#include "projectfile/project_file.h"
#include "support/fake_session_ports.h"

namespace {

namespace fs = std::filesystem;
using control::SaveResult;
using control::Session;
using ports::Answer;
using text::concat;
using Strings = std::vector<std::string>;

model::Project projectOf(int cpu) {
  model::Project project = KGEN_COMMON::newProject();
  project.configuration.quantity(model::ModuleKindIndex::cpu) = static_cast<std::int16_t>(cpu);
  project.configuration.quantity(model::ModuleKindIndex::analog7121) = 1;
  project.block(model::BlockKind::thermocouple, 1).Reps = 2;
  project.set(model::BlockKind::thermocouple).BlockCount = 1;
  model::fitLists(project);
  return project;
}

void addDuplicateNames(model::Project& project) {
  for (model::Element& element : project.block(model::BlockKind::thermocouple, 1).elements)
    element.AliasName = "Twice";
}

void addOldTrigger(model::Project& project) {
  project.configuration.Version = "5.3";
  project.tables[0].TrigTable = 1;
  project.tables[0].conditions.trigger(0, 1).MeasVar = "BattVolt";
}

class SessionTest : public testing::Test {
 protected:
  SessionTest() {
    std::string name = fs::temp_directory_path() / "kgen_session.XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder = name;
    machine.folder = folder;
  }
  ~SessionTest() override { fs::remove_all(folder); }

  control::SessionPorts ports() {
    return {messages, files, clock, settings, machine, processes, host};
  }
  void store(const model::Project& project, const std::string& name = "site") {
    platform::DiskFiles disk;
    disk.write(at(name + ".GN7"), KGEN_GENFILE::fileText(project, {}), false);
  }
  [[nodiscard]] std::string at(const std::string& name) const { return concat(folder, "/", name); }
  /// Names of the files of the project's folder.
  [[nodiscard]] std::set<std::string> names() const {
    std::set<std::string> found;
    for (const auto& entry : fs::directory_iterator(folder))
      if (entry.is_regular_file()) found.insert(entry.path().filename().string());
    return found;
  }
  [[nodiscard]] bool hasWorkingCopy() const { return fs::exists(at("work/EditTemp.GN7")); }
  static void renameOperator(Session& session, const std::string& name) {
    model::Project next = session.project();
    next.configuration.Operator = name;
    session.edit(std::move(next), "operator");
  }
  Answer answerTo(const ports::Message& message) {
    const auto told = answers.find(message.title);
    return told == answers.end() ? message.defaultButton : told->second;
  }

  std::string folder;
  std::map<std::string, Answer> answers;
  support::RecordedMessages messages{[this](const ports::Message& m) { return answerTo(m); }};
  support::FailingDisk files;
  support::FixedClock clock;
  support::MemorySettings settings;
  support::FakeMachine machine;
  support::FakeProcesses processes;
  support::RecordedHost host;
};

constexpr const char* upgradeTitle = "Upgrade Generator Project Beyond Arvela 5.3.1 ?";
constexpr const char* saveTitle = "Save Generator Project ?";

TEST_F(SessionTest, SavesByWhatTheChecksFindAndTheUserSays) {
  const struct {
    bool problem, upgrade, send, agrees;
    const char* box;  // the question, or nullptr
    bool saved, sent;
    const char* version;
  } cases[] = {
      {false, false, false, false, nullptr, true, false, "6.0"},
      {false, false, true, false, nullptr, true, true, "6.0"},
      {true, false, false, false, saveTitle, false, false, "6.0"},
      {true, false, true, true, saveTitle, true, false, "6.0"},
      {false, true, true, false, upgradeTitle, false, false, "5.3"},
      {false, true, true, true, upgradeTitle, true, true, "6.0"},
      {true, true, true, false, saveTitle, false, false, "5.3"},
      {true, true, true, true, saveTitle, true, false, "6.0"},
  };
  for (const int cpu : {1, 2})
    for (const auto& c : cases) {
      SCOPED_TRACE(concat(cpu, " ", c.box ? c.box : "no box", c.send ? " send" : "",
                          c.agrees ? " yes" : ""));
      model::Project project = projectOf(cpu);
      if (c.problem) addDuplicateNames(project);
      if (c.upgrade) addOldTrigger(project);
      for (const auto& name : names()) fs::remove(at(name));
      store(project);
      Session session(ports());
      ASSERT_TRUE(session.OpenFile(at("site.GN7")));
      renameOperator(session, "Ada");
      messages.shown.clear();
      host.events.clear();
      answers = {{saveTitle, c.agrees ? Answer::yes : Answer::no},
                 {upgradeTitle, c.agrees ? Answer::yes : Answer::no},
                 {"MISSING FILE", Answer::no}};
      const SaveResult result = c.send ? session.SaveAndSend() : session.SaveDldFile();
      EXPECT_EQ(result, c.saved ? SaveResult::saved : SaveResult::refused);
      EXPECT_EQ(session.changed(), !c.saved);
      EXPECT_EQ(session.project().configuration.Version, c.version);
      const std::string program = cpu == 2 ? "site.KX7" : "site.KP7";
      EXPECT_EQ(host.events, c.sent ? Strings{"download " + program} : Strings{});
      EXPECT_EQ(names(), c.saved
                             ? (std::set<std::string>{"site.GN7", program, "site.TI7", "site.WR7"})
                             : std::set<std::string>{"site.GN7"});
      Strings boxes;
      if (c.problem) boxes.emplace_back("DUPLICATION FOUND");
      if (c.box) boxes.emplace_back(c.box);
      if (!c.box) boxes.emplace_back("FLOATING GROUND WARNING");
      if (c.saved && cpu == 2) boxes.insert(boxes.end(), {"MISSING FILE", "COMPILE RESULT"});
      EXPECT_EQ(messages.titles(), boxes);
      EXPECT_EQ(hasWorkingCopy(), !c.saved);
    }
}

TEST_F(SessionTest, NeverLosesTheProjectWhateverStepOfASaveFails) {
  const model::Project before = projectOf(1);
  int steps = 1;
  for (int failAt = 1; failAt <= steps; ++failAt) {
    SCOPED_TRACE(failAt);
    for (const auto& name : names()) fs::remove(at(name));
    store(before);
    Session session(ports());
    ASSERT_TRUE(session.OpenFile(at("site.GN7")));
    renameOperator(session, "Ada");
    messages.shown.clear();
    files.changes = 0;
    files.failAt = failAt;
    const SaveResult result = session.SaveAndSend();
    files.failAt = 0;
    const bool failed = result == SaveResult::failed;
    if (failAt == 1) steps = 40;
    if (files.changes < failAt) break;  // every step has failed once
    // A backup, or a working copy, that can't be deleted is no failure of the save.
    EXPECT_TRUE(messages.titles().back() == "TROUBLE" || !host.notes.empty());
    EXPECT_EQ(session.changed(), failed);
    EXPECT_EQ(session.project().configuration.Operator, "Ada");
    // The old project, or the new one, is whole under the name or the backup name.
    model::Project found = KGEN_COMMON::newProject();
    const bool whole =
        fs::exists(at("site.GN7")) && !KGEN_GENFILE::isCutShort(files.read(at("site.GN7")));
    const auto report = KGEN_GENFILE::load(at(whole ? "site.GN7" : "site._EN"), found);
    EXPECT_FALSE(report.error);
    EXPECT_EQ(found.block(model::BlockKind::thermocouple, 1).Reps, 2);
    EXPECT_TRUE(host.events.back() != "download site.KP7" || !failed);
  }
  EXPECT_GT(steps, 1);
}

TEST_F(SessionTest, KnowsWhatASaveThatFailedLeavesToSave) {
  store(projectOf(1));
  Session session(ports());
  ASSERT_TRUE(session.OpenFile(at("site.GN7")));
  renameOperator(session, "Ada");
  for (const char* taken : {"site.KP7", "copy.KP7"}) fs::create_directory(at(taken));
  EXPECT_EQ(session.SaveDldFile(), SaveResult::failed);  // the project stands, the program not
  EXPECT_TRUE(session.changed());
  fs::remove(at("site.KP7"));
  EXPECT_EQ(session.SaveDldFile(), SaveResult::saved);
  EXPECT_FALSE(session.changed());
  EXPECT_EQ(session.SaveAs(at("copy")), SaveResult::failed);
  EXPECT_EQ(session.CurrentFileName(), at("copy.GN7"));
  EXPECT_EQ(session.SaveAs(at("missing/copy")), SaveResult::failed);
  EXPECT_EQ(session.CurrentFileName(), at("copy.GN7"));
}

TEST_F(SessionTest, AsksBeforeItReplacesAnotherProject) {
  store(projectOf(1), "site.v2");
  store(projectOf(2), "site");
  const std::string other = files.read(at("site.GN7"));
  for (const Answer answer : {Answer::no, Answer::yes}) {
    answers = {{"REPLACE FILE", answer}};
    Session session(ports());
    ASSERT_TRUE(session.OpenFile(at("site.v2.GN7")));
    session.SaveDldFile();
    EXPECT_EQ(files.read(at("site.GN7")) == other, answer == Answer::no);
    EXPECT_EQ(session.CurrentFileName(), at(answer == Answer::no ? "site.v2.GN7" : "site.GN7"));
  }
}

TEST_F(SessionTest, OffersTheBackupOfASaveThatDidNotEnd) {
  store(projectOf(1));
  const std::string whole = files.read(at("site.GN7"));
  for (const bool missing : {true, false}) {
    files.write(at("site._EN"), whole, false);
    missing ? files.remove(at("site.GN7"))
            : files.write(at("site.GN7"), whole.substr(0, 2000), false);
    Session session(ports());
    messages.shown.clear();
    EXPECT_TRUE(session.OpenFile(at("site")));
    ASSERT_EQ(messages.titles(), Strings{"BACKUP FOUND"});
    EXPECT_EQ(session.project().block(model::BlockKind::thermocouple, 1).Reps, 2);
    EXPECT_EQ(session.CurrentFileName(), at("site.GN7"));
    EXPECT_TRUE(session.changed());
  }
  files.write(at("site.GN7"), whole, false);  // complete: the backup was only not deleted
  Session session(ports());
  messages.shown.clear();
  EXPECT_TRUE(session.OpenFile(at("site.xyz")));
  EXPECT_EQ(messages.titles(), Strings{});
  EXPECT_FALSE(session.changed());
}

TEST_F(SessionTest, OpensWithDefaultsSoThatNothingOfTheLastProjectStays) {
  Session session(ports());
  store(projectOf(2), "full");
  files.write(at("bare.GN7"), "[GN7 VERSION]\r\nVersion=6.0\r\n\r\n", false);
  EXPECT_TRUE(session.OpenFile(at("full.GN7")));
  host.chosenPath = at("bare.GN7");
  EXPECT_TRUE(session.ChooseAndOpen());
  model::Project bare = KGEN_COMMON::newProject();
  EXPECT_EQ(session.project(), bare);
  EXPECT_FALSE(session.OpenFile(at("missing.GN7")));
  ASSERT_EQ(messages.titles(), Strings{"FILE NOT FOUND"});
  EXPECT_EQ(messages.shown[0].text,
            concat("The requested program generator file: \r\n", at("missing.GN7"),
                   "\r\ncould not be located on this computer."));
  EXPECT_EQ(session.CurrentFileName(), at("bare.GN7"));
  EXPECT_EQ(host.events,
            (Strings{"opened full.GN7", "choose OPEN GENERATOR FILE", "opened bare.GN7"}));
}

TEST_F(SessionTest, ForcesTheModelForTheDunmoreHostAndHandsItsProgramOver) {
  store(projectOf(1));
  Session session(ports());
  session.HostApp = "dunMORE";
  ASSERT_TRUE(session.OpenFile(at("site.GN7")));
  EXPECT_TRUE(session.changed());
  EXPECT_EQ(session.CurBasicFileName(), "site.KX7");
  answers = {{"MISSING FILE", Answer::no}};
  EXPECT_EQ(session.SaveAndSend(), SaveResult::saved);
  EXPECT_EQ(host.events.back(), "dunmore site.KX7");
  EXPECT_FALSE(session.changed());
  host.toolbarServer = false;
  messages.shown.clear();
  EXPECT_FALSE(session.DunmoreDownload(at("site.KX7")));
  ASSERT_EQ(messages.shown.size(), 1U);
  EXPECT_EQ(
      messages.shown[0].text,
      "Unexpected error 5, \"KGenCtl is not registered with the Dunmore toolbar server-- no "
      "connection\" has occurred in KGenCtl.DunmoreDownload.\r\n Press \"OK\" and the program "
      "will continue.");
}

TEST_F(SessionTest, LengthensAScanThatFiltersNeedLonger) {
  model::Project project = projectOf(1);
  project.configuration.quantity(model::ModuleKindIndex::filter7125) = 1;
  project.filterSlots[0].BlockCount = 1;
  project.filterSlots[0].FiltFreqNum = 100;
  project.block(model::BlockKind::filter, 1).Reps = 1;
  project.scan.ExecutionTime = 1;
  project.scan.ExecTimeUnits = 1;
  model::fitLists(project);
  store(project);
  Session session(ports());
  ASSERT_TRUE(session.OpenFile(at("site.GN7")));
  ASSERT_EQ(messages.titles(), Strings{"MAIN SCAN TOO SMALL"});
  EXPECT_EQ(messages.shown[0].text,
            "The main scan interval of 1000 microseconds  is less than the\r\nminimum requirement "
            "of 10000 microseconds for M7125 measurements.\r\nWould you like to correct it?");
  EXPECT_EQ(session.project().scan.ExecutionTime, 1000);
  session.undo();
  EXPECT_EQ(session.project().scan.ExecutionTime, 1);
}

TEST_F(SessionTest, KeepsAWorkingCopyUntilTheProjectIsClosed) {
  store(projectOf(1));
  {
    Session crashed(ports());
    ASSERT_TRUE(crashed.OpenFile(at("site.GN7")));
    EXPECT_FALSE(hasWorkingCopy());
    renameOperator(crashed, "Grace");
  }
  EXPECT_TRUE(hasWorkingCopy());
  Session session(ports());
  messages.shown.clear();
  EXPECT_TRUE(session.OfferWorkingCopy());
  EXPECT_EQ(messages.titles(), Strings{"WORKING COPY FOUND"});
  EXPECT_EQ(session.project().configuration.Operator, "Grace");
  EXPECT_EQ(session.CurrentFileName(), at("site.GN7"));
  EXPECT_TRUE(session.changed());
  answers = {{"QUIT GENERATOR", Answer::cancel}};
  EXPECT_FALSE(session.Quit());
  EXPECT_TRUE(hasWorkingCopy());
  answers = {{"QUIT GENERATOR", Answer::no}};
  EXPECT_TRUE(session.Quit());
  EXPECT_FALSE(hasWorkingCopy());
  EXPECT_FALSE(session.OfferWorkingCopy());
}

/// Its Done would put the project that it was opened for in the place of another.
TEST_F(SessionTest, StaysWithTheProjectOfAWindowThatStaysOpen) {
  store(projectOf(1));
  Session session(ports());
  ASSERT_TRUE(session.OpenFile(at("site.GN7")));
  host.windowsEnd = false;
  EXPECT_FALSE(session.OpenFile(at("site.GN7")));
  EXPECT_FALSE(session.Quit());
  session.NewProject();
  EXPECT_EQ(session.CurrentFileName(), at("site.GN7"));
  EXPECT_EQ(host.events, Strings{"opened site.GN7"});
  session.CloseSession();  // asks nobody
  EXPECT_NE(session.CurrentFileName(), at("site.GN7"));
}

TEST_F(SessionTest, TellsOnceThatTheWorkDirectoryCannotBeWritten) {
  files.write(at("work"), "a file where the folder should be", false);
  store(projectOf(1));
  Session session(ports());
  ASSERT_TRUE(session.OpenFile(at("site.GN7")));
  renameOperator(session, "Grace");
  renameOperator(session, "Ada");
  EXPECT_EQ(messages.titles(), Strings{"TROUBLE"});
  EXPECT_EQ(session.SaveDldFile(), SaveResult::saved);
  EXPECT_EQ(messages.titles(), (Strings{"TROUBLE", "FLOATING GROUND WARNING"}));
  EXPECT_TRUE(fs::exists(at("site.KP7")));
}

TEST_F(SessionTest, UndoesAndRedoesWholeEdits) {
  Session session(ports());
  const model::Project first = session.project();
  renameOperator(session, "Ada");
  renameOperator(session, "Ada");  // no edit
  renameOperator(session, "Grace");
  session.undo();
  session.undo();
  EXPECT_EQ(session.project(), first);
  EXPECT_FALSE(session.changed());
  EXPECT_FALSE(session.history().canUndo());
  session.undo();
  session.redo();
  EXPECT_EQ(session.project().configuration.Operator, "Ada");
  renameOperator(session, "Emmy");
  EXPECT_FALSE(session.history().canRedo());
  const std::string before = session.project().configuration.Operator;
  for (const char* typed : {"B", "Be", "Ben"}) {
    model::Project next = session.project();
    next.configuration.Operator = typed;
    session.editOn(next, "a name");
  }
  session.undo();
  EXPECT_EQ(session.project().configuration.Operator, before);
}

TEST_F(SessionTest, TakesMessagesOfTheHost) {
  store(projectOf(1));
  Session session(ports());
  session.StringToMessage(concat("OPEN=", at("site.GN7")));
  session.StringToMessage("OPERATOR=Ada");
  session.StringToMessage("ID=K-17");
  session.StringToMessage("SING=loud");
  session.StringToMessage("OPERATOR=Eve\r\n[SCAN SETUP]");
  session.StringToMessage("ID=" + std::string(31, 'x'));
  EXPECT_EQ(session.project().configuration.Operator, "Ada");
  EXPECT_EQ(session.project().configuration.IDNumber, "K-17");
  EXPECT_TRUE(session.changed());
  session.LongToMessage(4);
  EXPECT_FALSE(session.changed());
  session.StringToMessage("ID=Ü" + std::string(29, 'x'));  // characters count, not bytes
  EXPECT_EQ(session.project().configuration.IDNumber.size(), 31U);
  session.LongToMessage(4);
  for (const int code : {5, 3, 77}) session.LongToMessage(code);
  EXPECT_EQ(host.events, (Strings{"opened site.GN7", "print", "download site.KP7"}));
}

TEST_F(SessionTest, RunsThePreCompilerAndCleansUp) {
  using How = ports::ProcessEnd::How;
  using State = control::CompileResult::State;
  const struct {
    How how;
    const char* report;
    State state;
    const char* box;
  } cases[] = {
      {How::exited, "[Compile Results]\r\nCompiled OK\r\nSize 1234\r\n", State::compiled,
       "Test compiled OK."},
      {How::exited, "[Compile Results]\nLine 7: no\nBATTERY: 30\n", State::faulty, "Line 7: no"},
      {How::exited, "", State::skipped,
       "Skipped pre-compile. The pre-compiler ended with code 0 and wrote no report."},
      {How::crashed, "", State::skipped,
       "Skipped version. The pre-compiler crashed (signal 11).\r\nSkipped pre-compile. The "
       "pre-compiler crashed (signal 11)."},
      {How::tookTooLong, "", State::skipped,
       "Skipped version. The pre-compiler did not end within 60 seconds.\r\nSkipped pre-compile. "
       "The pre-compiler did not end within 60 seconds."},
  };
  machine.hasCompilers = true;
  files.write(at("K7Comp.EXE"), "", false);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.box);
    processes.how = c.how;
    processes.report = c.report;
    processes.runs.clear();
    messages.shown.clear();
    Session session(ports());
    const control::CompileResult result = session.TestCompile();
    EXPECT_EQ(result.state, c.state);
    ASSERT_EQ(messages.titles(), Strings{"COMPILE RESULT"});
    EXPECT_EQ(messages.shown[0].text, c.box);
    const std::string work = at("work/");
    EXPECT_EQ(
        processes.runs,
        (std::vector<Strings>{{at("K7Comp.EXE"), "-d", work + "VERCOMP.TXT"},
                              {at("K7Comp.EXE"), "-t", work + "TEMP$$$$", work + "PRECOMP.TXT"}}));
    EXPECT_FALSE(fs::exists(work + "TEMP$$$$"));
    EXPECT_NE(processes.program.find("BeginProg"), std::string::npos);
  }
}

TEST_F(SessionTest, SearchesForAMissingPreCompilerAndRemembersIt) {
  host.chosenPath = at("mine.exe");
  Session session(ports());
  EXPECT_EQ(session.TestCompile().state, control::CompileResult::State::compiled);
  EXPECT_EQ(messages.titles(), (Strings{"MISSING FILE", "COMPILE RESULT"}));
  EXPECT_EQ(messages.shown[0].text,
            "Pre-Compiler was not found.\r\nWould you like to search for it?");
  EXPECT_EQ(host.events, Strings{"choose FIND K700 COMPILER"});
  EXPECT_EQ(session.settings().LogCompPath, at("mine.exe"));
  EXPECT_EQ(settings.values["kgen/Settings/LogCompPath"], at("mine.exe"));
}

/// On a machine without another one, the pre-compiler that is installed with the program runs.
TEST_F(SessionTest, CompilesWithTheInstalledPreCompiler) {
  fs::create_directory(at("bin"));
  fs::create_symlink(K7COMP_PROGRAM, at("bin/k7comp"));
  platform::Processes real;
  Session session({messages, files, clock, settings, machine, real, host});
  const control::CompileResult result = session.TestCompile();
  EXPECT_EQ(result.state, control::CompileResult::State::compiled);
  EXPECT_EQ(result.version.substr(0, 2), "6.");
  EXPECT_EQ(messages.titles(), Strings{"COMPILE RESULT"});
}

TEST_F(SessionTest, AsksBeforeAFaultyProgramIsSent) {
  store(projectOf(2));
  machine.hasCompilers = true;
  files.write(at("k7comp.exe"), "", false);
  processes.report = "[Compile Results]\r\nLine 7: no\r\n";
  for (const Answer answer : {Answer::no, Answer::yes}) {
    answers = {{"COMPILE RESULT", answer}};
    Session session(ports());
    ASSERT_TRUE(session.OpenFile(at("site.GN7")));
    host.events.clear();
    EXPECT_EQ(session.SaveAndSend(), SaveResult::saved);
    EXPECT_EQ(host.events, answer == Answer::yes ? Strings{"download site.KX7"} : Strings{});
  }
}

TEST_F(SessionTest, MakesNewProjectsFromTheSettings) {
  settings.values = {
      {"kgen/Settings/DefaultScanInterval", "5"},   {"kgen/Settings/DefaultScanIntervalUnits", "5"},
      {"kgen/Settings/DefaultDataType", "1"},       {"kgen/Settings/DefaultInputType", "1"},
      {"kgen/Settings/DefaultTableAutoSize", "0"},  {"kgen/Settings/DefaultTableNumRecs", "many"},
      {"kgen/Settings/WarningMessageMask", "1e99"}, {"kgen/Colors/Panel Text", "FF8000"},
      {"kgen/Colors/Summary Text", "red"}};
  Session session(ports());
  const model::Project& project = session.project();
  EXPECT_EQ(project.scan.ExecutionTime, 5);
  EXPECT_EQ(project.scan.ExecTimeUnits, 2);
  EXPECT_EQ(project.block(model::BlockKind::voltage, 1).DataResolution, "IEEE4");
  EXPECT_EQ(project.block(model::BlockKind::voltage, 1).MeasType, "SE");
  EXPECT_FALSE(project.tables[0].AutoSize);
  EXPECT_EQ(project.tables[0].Buffer, 1000);
  EXPECT_EQ(session.GetSelectedColors().PanelText, "FF8000");
  EXPECT_EQ(session.GetSelectedColors().SummaryText, "000000");
  EXPECT_EQ(host.notes.size(), 4U);
  control::SelectedColors colors = session.GetSelectedColors();
  colors.SummaryText = "102030";
  session.SetSelectedColors(colors);
  EXPECT_EQ(settings.values["kgen/Colors/Summary Text"], "102030");
  EXPECT_FALSE(settings.values.contains("kgen/Settings/GenPath"));  // as usual: not written
}

/// A mistake of the program writer costs the new program, never the old one or the project.
TEST_F(SessionTest, FaultyProgramIsNotWrittenButTheProjectIsSaved) {
  store(projectOf(1));
  control::SessionPorts broken = ports();
  Session session(broken);
  ASSERT_TRUE(session.OpenFile(at("site.GN7")));
  ASSERT_EQ(session.SaveDldFile(), SaveResult::saved);
  const std::string before = platform::readAll(at("site.KP7"));

  broken.writeProgram = [](const model::Project& project, const model::DocumentStamp& stamp) {
    SAVEDLD::Program program = SAVEDLD::generate(project, stamp);
    const std::string_view end = "EndProg";
    program.text.erase(program.text.find(end), end.size());
    return program;
  };
  Session faulty(broken);
  ASSERT_TRUE(faulty.OpenFile(at("site.GN7")));
  renameOperator(faulty, "Ann");
  messages.shown.clear();
  EXPECT_EQ(faulty.SaveDldFile(), SaveResult::failed);
  ASSERT_FALSE(messages.shown.empty());
  EXPECT_NE(messages.shown.back().text.find("by a mistake of the generator"), std::string::npos);
  EXPECT_EQ(platform::readAll(at("site.KP7")), before);
  model::Project saved;
  ASSERT_FALSE(KGEN_GENFILE::load(at("site.GN7"), saved).error);
  EXPECT_EQ(saved.configuration.Operator, "Ann");
}

}  // namespace
