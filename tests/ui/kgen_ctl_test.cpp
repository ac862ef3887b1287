#include <gtest/gtest.h>

#include <QLineEdit>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPointer>
#include <QSignalSpy>
#include <QToolButton>
#include <algorithm>

#include "control_bench.h"
#include "ui/number_box.h"

namespace {

using support::ControlBench;
using support::controlOf;
using Names = QStringList;

/// What hosts are written against: a name that goes missing breaks them at run time.
TEST(KGenCtl, HasThePropertiesAndMethodsThatHostsKnow) {
  const QMetaObject& meta = KGenCtl::staticMetaObject;
  for (const char* name :
       {"AppPath", "TVNItemNumber", "CurrentFileName", "CurBasicFileName", "GenFilePath",
        "HelpFileName", "HelpPath", "HelpText", "InternalHelpContextID", "RegistryApp",
        "SoftColors", "SoftTextHighlight", "UseLegacy", "Version", "VersionDate", "HostApp"})
    EXPECT_GE(meta.indexOfProperty(name), 0) << name;
  for (const char* readOnly :
       {"TVNItemNumber", "CurrentFileName", "CurBasicFileName", "HelpFileName", "HelpText",
        "InternalHelpContextID", "Version", "VersionDate"})
    EXPECT_FALSE(meta.property(meta.indexOfProperty(readOnly)).isWritable()) << readOnly;
  Names methods;
  for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    if (meta.method(i).methodType() == QMetaMethod::Slot) methods += meta.method(i).name();
  EXPECT_EQ(methods, Names({"LongToMessage", "StringToMessage", "DunmoreDownload", "CloseSession",
                            "GetSelectedColors", "OpenFile", "PrintSelect", "SetSelectedColors",
                            "ShowHelpFile", "OffSaveDownload", "AskToSaveAll", "SaveDldFile",
                            "ShowOptions", "SetQuitButton", "SetSaveDownload", "FormCleanup"}));
}

TEST(KGenCtl, TellsItsHostOfOpenedProjectsAndProgramsToSend) {
  ControlBench bench;
  QSignalSpy opened(bench.control.get(), &KGenCtl::FileOpened);
  QSignalSpy download(bench.control.get(), &KGenCtl::DownloadRequest);
  bench.openExample("pump_house");
  ASSERT_EQ(opened.size(), 1);
  EXPECT_TRUE(opened[0][0].toString().endsWith("pump_house.GN7"));
  bench.control->findChild<QToolButton*>("button_16")->click();
  ASSERT_EQ(download.size(), 1);
  EXPECT_EQ(download[0][0].toString(), QString::fromStdString(bench.folder) + "/" +
                                           bench.control->property("CurBasicFileName").toString());
  EXPECT_TRUE(QFile::exists(download[0][0].toString()));
}

/// Before anybody can listen, and each line once.
TEST(KGenCtl, TellsItsHostWhatIsNotedWhileItIsMade) {
  ControlBench bench;
  bench.settings.values["kgen/Settings/DefaultNumFlags"] = "999";
  KGenCtl control({bench.messages, bench.files, bench.clock, bench.settings, bench.machine,
                   bench.processes, bench.host},
                  nullptr);
  QSignalSpy notes(&control, &KGenCtl::Note);
  EXPECT_EQ(notes.size(), 0);
  QCoreApplication::processEvents();
  ASSERT_EQ(notes.size(), 1);
  EXPECT_TRUE(notes[0][0].toString().contains("DefaultNumFlags"));
}

TEST(KGenCtl, HandsProgramsToTheRealTimeHost) {
  ControlBench bench;
  QString handed;
  bench.control->setHostApp("dunmore");
  EXPECT_FALSE(bench.control->DunmoreDownload("a.KX7"));  // not registered yet
  bench.control->setDunmoreServer([&](const QString& program) {
    handed = program;
    return true;
  });
  EXPECT_TRUE(bench.control->DunmoreDownload("b.KX7"));
  EXPECT_EQ(handed, "b.KX7");
}

TEST(KGenCtl, TakesMessagesColoursAndButtonsFromItsHost) {
  ControlBench bench;
  bench.control->StringToMessage("OPERATOR=A. Host");
  EXPECT_EQ(bench.project().configuration.Operator, "A. Host");
  bench.control->SetSelectedColors({"101010", "nonsense", "ffffff"});
  EXPECT_EQ(bench.control->GetSelectedColors(),
            QStringList({"101010", "D4D0C8", "FFFFFF", "FFFFFF", "000000", "0000FF"}));
  bench.control->OffSaveDownload();
  EXPECT_FALSE(bench.control->findChild<QToolButton*>("button_16")->isVisible());
  bench.control->SetSaveDownload(true);
  EXPECT_TRUE(bench.control->findChild<QToolButton*>("button_16")->isVisible());
}

TEST(KGenCtl, KeepsWhatIsStillBeingTypedInOperatorAndId) {
  ControlBench bench;
  bench.openExample("pump_house");
  const model::Project before = bench.project();
  const auto boxes = bench.control->findChildren<QLineEdit*>();
  const auto found = std::find_if(boxes.begin(), boxes.end(), [](const QLineEdit* each) {
    return each->accessibleName() == "Operator";
  });
  ASSERT_NE(found, boxes.end());
  QLineEdit& box = **found;
  box.setFocus();
  QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(&box, "A. [New] \"Person\"");
  EXPECT_TRUE(bench.control->SaveDldFile());
  const std::string typed = "A. New Person";
  EXPECT_EQ(bench.project().configuration.Operator, typed);
  EXPECT_NE(bench.files.read(bench.folder + "/pump_house.GN7").find(typed), std::string::npos);
  EXPECT_EQ(box.text().toStdString(), typed);
  bench.control->session().undo();
  EXPECT_EQ(bench.project().configuration.Operator, before.configuration.Operator);
}

/// A window holds a copy of the project that was there when it was opened.
TEST(KGenCtl, AsksAboutAWindowBeforeItsProjectIsReplaced) {
  ports::Answer answer = ports::Answer::cancel;
  ControlBench bench([&](const ports::Message&) { return answer; });
  bench.openExample("pump_house");
  const QPointer<ui::SetupWindow> window = &bench.open(4);
  support::type(controlOf<ui::NumberBox>(*window, "Settling time:"), "120");
  const QString pumpHouse = bench.control->CurrentFileName();
  bench.openExample("battery_test");
  EXPECT_EQ(bench.control->CurrentFileName(), pumpHouse);
  ASSERT_TRUE(window && window->isVisible());
  bench.control->StringToMessage("OPERATOR=A. Host");
  answer = ports::Answer::no;
  bench.openExample("battery_test");
  EXPECT_TRUE(bench.control->CurrentFileName().endsWith("battery_test.GN7"));
  EXPECT_FALSE(window && window->isVisible());
}

TEST(KGenCtl, LeavesOperatorAndIdToTheHostWhileAWindowIsOpen) {
  ControlBench bench;
  bench.openExample("pump_house");
  ui::SetupWindow& window = bench.open(4);
  support::type(controlOf<ui::NumberBox>(window, "Settling time:"), "120");
  bench.control->StringToMessage("OPERATOR=A. Host");
  window.accept();
  EXPECT_EQ(bench.project().configuration.Operator, "A. Host");
}

TEST(KGenCtl, OpensOneSetupWindowAtATime) {
  ControlBench bench;
  bench.openExample("pump_house");
  ui::SetupWindow& first = bench.open(4);
  EXPECT_EQ(&bench.open(4), &first);
  first.reject();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  bench.control->FormCleanup();  // with no window open
  EXPECT_EQ(bench.control->findChildren<ui::SetupWindow*>().size(), 0);
}

}  // namespace
