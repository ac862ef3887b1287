#include <gtest/gtest.h>

#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QStatusBar>

#include "desktop_bench.h"
#include "support_qt/palettes.h"
#include "support_qt/silent_controls.h"

namespace {

using support::DesktopBench;
using Titles = std::vector<std::string>;

desktop::SendTarget commandTarget(const QString& command) {
  return {desktop::SendTarget::Kind::command, {}, command};
}

TEST(MainWindow, FollowsAProjectFromOpenToSave) {
  DesktopBench bench;
  bench.open("pump_house");
  EXPECT_EQ(bench.window->windowTitle(), "pump_house.GN7[*]");
  EXPECT_TRUE(bench.window->program().toPlainText().contains("BeginProg"));
  EXPECT_FALSE(bench.action("Undo").isEnabled());
  EXPECT_EQ(bench.action("Undo").statusTip(), "There is no edit to undo.");
  QScrollBar* place = bench.window->program().verticalScrollBar();
  place->setValue(50);
  bench.setOperator("A. Person");
  EXPECT_TRUE(bench.window->isWindowModified());
  bench.waitForReview();
  EXPECT_EQ(place->value(), 50);
  EXPECT_TRUE(bench.window->program().toPlainText().contains("A. Person"));
  bench.action("Undo operator and ID").trigger();
  EXPECT_FALSE(bench.window->isWindowModified());
  bench.action("Redo operator and ID").trigger();
  bench.action("Save").trigger();
  EXPECT_FALSE(bench.window->isWindowModified());
  EXPECT_TRUE(QFile::exists(bench.at("pump_house.KP7")));
}

TEST(MainWindow, SavesAsAndRemembersWhatWasOpened) {
  DesktopBench bench;
  bench.open("pump_house");
  QFile other(bench.at("other.GN7"));
  ASSERT_TRUE(other.open(QIODevice::WriteOnly));
  bench.host.chosenPath = bench.folder + "/other";  // becomes other.GN7, which is there
  bench.action("Save As...").trigger();
  EXPECT_EQ(bench.messages.titles().back(), "REPLACE FILE");
  EXPECT_EQ(other.size(), 0);
  bench.host.chosenPath = bench.folder + "/copy";
  bench.action("Save As...").trigger();
  EXPECT_EQ(bench.window->windowTitle(), "copy.GN7[*]");
  EXPECT_EQ(bench.settings->recentFiles(),
            QStringList({bench.at("copy.GN7"), bench.at("pump_house.GN7")}));
  QFile::remove(bench.at("copy.GN7"));
  bench.window->open(bench.at("copy.GN7"));
  EXPECT_EQ(bench.messages.titles().back(), "FILE NOT FOUND");
  EXPECT_EQ(bench.settings->recentFiles(), QStringList(bench.at("pump_house.GN7")));
}

TEST(MainWindow, TellsOfFilesThatAreNoProjectsAndGoesOn) {
  DesktopBench bench;
  QFile nonsense(bench.at("nonsense.GN7"));
  ASSERT_TRUE(nonsense.open(QIODevice::WriteOnly));
  nonsense.write(QByteArray(1000, '\x01'));
  nonsense.close();
  bench.window->begin({bench.at("missing"), bench.at("second.GN7")});
  EXPECT_EQ(bench.messages.titles(), (Titles{"FILE NOT FOUND", "ONE PROJECT AT A TIME"}));
  EXPECT_TRUE(bench.messages.shown[1].text.ends_with("second.GN7"));
  bench.window->open(bench.at("nonsense.GN7"));
  bench.window->open(QString::fromStdString(bench.folder));
  EXPECT_TRUE(bench.window->isVisible());
  EXPECT_FALSE(bench.window->isWindowModified());
}

TEST(MainWindow, OffersTheWorkOfACrash) {
  DesktopBench bench;
  bench.open("pump_house");
  bench.setOperator("Lost and Found");
  bench.start();
  bench.window->begin({bench.at("pump_house.GN7")});
  EXPECT_EQ(bench.messages.titles(), Titles{"WORKING COPY FOUND"});
  EXPECT_EQ(bench.session().project().configuration.Operator, "Lost and Found");
  EXPECT_EQ(bench.window->windowTitle(), "pump_house.GN7[*]");
  EXPECT_TRUE(bench.window->isWindowModified());
}

TEST(MainWindow, HasAWorkingCopyOfItsOwnBesideOtherWindows) {
  DesktopBench bench;
  bench.window->begin({});
  bench.setOperator("First Window");
  {
    desktop::MainWindow second(*bench.settings, &bench.sessionPorts);
    second.begin({});
    model::Project next = second.control().session().project();
    next.configuration.Operator = "Second Window";
    second.control().session().edit(std::move(next), "operator and ID");
  }  // as a crash ends it
  EXPECT_EQ(bench.messages.titles(), Titles{});
  desktop::MainWindow third(*bench.settings, &bench.sessionPorts);
  third.begin({bench.copyExample("vibration")});
  EXPECT_EQ(bench.messages.titles(), (Titles{"WORKING COPY FOUND", "ONE PROJECT AT A TIME"}));
  EXPECT_EQ(third.control().session().project().configuration.Operator, "Second Window");
  third.control().session().CloseSession();
  EXPECT_TRUE(QFile::exists(bench.at("work/EditTemp.GN7")));
}

TEST(MainWindow, AsksBeforeItClosesAndRemembersItsPlace) {
  ports::Answer answer = ports::Answer::cancel;
  DesktopBench bench([&](const ports::Message&) { return answer; });
  bench.open("pump_house");
  bench.setOperator("Unsaved");
  bench.window->findChild<QDockWidget*>("findings")->hide();
  EXPECT_FALSE(bench.window->close());
  answer = ports::Answer::no;
  EXPECT_TRUE(bench.window->close());
  EXPECT_EQ(bench.messages.titles(), (Titles{"QUIT GENERATOR", "QUIT GENERATOR"}));
  bench.start();
  EXPECT_TRUE(bench.window->findChild<QDockWidget*>("findings")->isHidden());
}

TEST(MainWindow, TakesProjectsThatAreDroppedOnIt) {
  DesktopBench bench;
  QMimeData data;
  const auto drop = [&](const QString& path) {
    data.setUrls({QUrl::fromLocalFile("/etc/hostname"), QUrl::fromLocalFile(path)});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(bench.window.get(), &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent event(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    return QApplication::sendEvent(bench.window.get(), &event);
  };
  EXPECT_FALSE(drop("/etc/passwd"));
  EXPECT_TRUE(drop(bench.copyExample("vibration")));
  EXPECT_EQ(bench.window->windowTitle(), "vibration.GN7[*]");
}

TEST(MainWindow, FindsInTheProgram) {
  DesktopBench bench;
  bench.open("pump_house");
  ui::ProgramView& program = bench.window->program();
  bench.action("Find...").trigger();
  auto* words = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  ASSERT_NE(words, nullptr);
  QTest::keyClicks(words, "calltable");
  auto* count = words->parentWidget()->findChild<QLabel*>();
  const auto all = program.toPlainText().count("CallTable", Qt::CaseInsensitive);
  ASSERT_GT(all, 1);
  EXPECT_EQ(count->text(), QString("1 of %1").arg(all));
  EXPECT_EQ(program.textCursor().selectedText(), "CallTable");
  bench.action("Find Next").trigger();
  EXPECT_EQ(count->text(), QString("2 of %1").arg(all));
  bench.action("Find Previous").trigger();
  bench.action("Find Previous").trigger();  // around the start
  EXPECT_EQ(count->text(), QString("%1 of %1").arg(all));
  QTest::keyClicks(words, " nowhere");
  EXPECT_EQ(count->text(), "not found");
  QTest::keyClick(words, Qt::Key_Escape);
  EXPECT_FALSE(words->isVisible());
}

TEST(MainWindow, LeadsFromAFindingToItsWindowAndItsLine) {
  DesktopBench bench;
  bench.open("everything_at_once");
  model::Project next = bench.session().project();
  auto& elements = next.block(model::BlockKind::voltage, 1).elements;
  elements[0].AliasName = elements[1].AliasName = "Twice";
  next.calculated.fields.at(0).CalcExpress = "Twice * NoSuchThing";
  bench.session().edit(next, "names");
  bench.waitForReview();
  desktop::FindingsList& list = bench.window->findings();
  const auto rowWith = [&](const char* words) {
    const auto rows = list.findItems(words, Qt::MatchContains, 0);
    return rows.isEmpty() ? nullptr : rows.front();
  };
  QTreeWidgetItem* unknown = rowWith("NoSuchThing");
  QTreeWidgetItem* twice = rowWith("DUPLICATION FOUND");
  ASSERT_TRUE(unknown != nullptr && twice != nullptr);
  EXPECT_TRUE(list.title().contains("error"));
  Q_EMIT list.itemActivated(unknown, 0);
  EXPECT_TRUE(bench.window->program().textCursor().block().text().contains("NoSuchThing"));
  Q_EMIT list.itemActivated(twice, 0);
  auto* window = bench.window->findChild<ui::SetupWindow*>();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->objectName(), "frmVoltSetup");
}

TEST(MainWindow, SendsToAFolderOrByACommand) {
  DesktopBench bench;
  bench.open("pump_house");
  std::filesystem::create_directory(bench.folder + "/card");
  bench.settings->setSendTarget({desktop::SendTarget::Kind::folder, bench.at("card"), {}});
  bench.action("Save and Send").trigger();
  EXPECT_TRUE(QFile::exists(bench.at("card/pump_house.KP7")));
  bench.settings->setSendTarget(commandTarget("cp %f \"" + bench.at("by command") + "\""));
  bench.action("Save and Send").trigger();
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return bench.window->statusBar()->currentMessage().startsWith("The program was sent.");
  }));
  EXPECT_TRUE(QFile::exists(bench.at("by command")));
  EXPECT_EQ(bench.told("SEND PROGRAM"), "");
}

TEST(MainWindow, TellsOfProgramsThatWereNotSent) {
  DesktopBench bench;
  bench.open("pump_house");
  const auto sent = [&](const desktop::SendTarget& target) {
    bench.messages.shown.clear();
    bench.settings->setSendTarget(target);
    bench.action("Save and Send").trigger();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bench.told("SEND PROGRAM").isEmpty(); }));
    return bench.told("SEND PROGRAM");
  };
  EXPECT_TRUE(sent({desktop::SendTarget::Kind::folder, "/nowhere", {}}).contains("/nowhere"));
  EXPECT_TRUE(sent(commandTarget("/no/such/loader")).contains("could not be started"));
  const QString failed = sent(commandTarget("ls /no/such/port"));
  EXPECT_TRUE(failed.contains("ended with code 2")) << failed.toStdString();
  EXPECT_TRUE(failed.contains("/no/such/port")) << failed.toStdString();
}

TEST(MainWindow, IsPicturedInLightAndDark) {
  for (const bool dark : {false, true}) {
    const QPalette usual = QApplication::palette();
    if (dark) QApplication::setPalette(support::darkPalette());
    DesktopBench bench;
    bench.open("engine_test_bed");
    for (const char* page : {"Program", "Tables", "Wiring", "Scan Time"}) {
      bench.action(page).trigger();
      support::keepPicture(
          *bench.window,
          QString("desktop_%1_%2").arg(QString(page).remove(' '), dark ? "dark" : "light"));
      EXPECT_EQ(support::silentControls(*bench.window), std::set<QString>());
    }
    QApplication::setPalette(usual);
  }
}

}  // namespace
