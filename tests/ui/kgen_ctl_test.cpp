#include <gtest/gtest.h>

#include <QMetaMethod>
#include <QMetaProperty>
#include <QSignalSpy>
#include <QToolButton>

#include "control_bench.h"

namespace {

using support::ControlBench;
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
