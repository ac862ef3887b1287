#include "ui/frm_options.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "control/trouble.h"
#include "control_bench.h"
#include "support_qt/palettes.h"
#include "support_qt/usable_by_all.h"
#include "ui/colour_button.h"

namespace {

using support::ControlBench;
using support::controlOf;

struct RecordedDesk final : ui::Desk {
  void showHelp(const QString& page) override { shown += page; }
  void printWindow(QWidget& window) override { printed += window.objectName(); }
  QStringList shown, printed;
};

class OptionsWindow : public testing::Test {
 protected:
  control::Session& session() { return bench.control->session(); }
  std::unique_ptr<ui::frmOptions> open() {
    auto window = std::make_unique<ui::frmOptions>(
        ui::WindowPorts{session(), bench.messages, errors, desk}, nullptr);
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    return window;
  }
  std::string stored(const std::string& key) { return bench.settings.values["kgen/" + key]; }

  ports::Answer answer = ports::Answer::no;
  ControlBench bench{[this](const ports::Message&) { return answer; }};
  RecordedDesk desk;
  support::RecordedFaults errors;
};

void goTo(ui::frmOptions& window, int page) {
  window.findChild<QTabWidget*>()->setCurrentIndex(page);
}

TEST_F(OptionsWindow, DoneWithoutAnEditStoresNothingButItsPlace) {
  for (const bool done : {true, false}) {
    const auto window = open();
    goTo(*window, done ? 2 : 3);
    done ? window->accept() : window->reject();
    EXPECT_EQ(session().settings().CurrentOptionsPage, done ? 2 : 3);
  }
  for (const auto& [key, value] : bench.settings.values)
    EXPECT_TRUE(key.starts_with("kgen/Settings/CurrentOptions")) << key << "=" << value;
  EXPECT_EQ(open()->findChild<QTabWidget*>()->currentIndex(), 3);
}

TEST_F(OptionsWindow, KeepsWhatAPersonSets) {
  const auto window = open();
  support::type(controlOf<QLineEdit>(*window, "Projects and programs:"), "/nowhere");
  EXPECT_TRUE(window->hint().startsWith("There is no such folder"));
  goTo(*window, 3);
  window->accept();  // refused: goes back to the page in question
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(window->findChild<QTabWidget*>()->currentIndex(), 0);
  support::type(controlOf<QLineEdit>(*window, "Projects and programs:"),
                QString::fromStdString(bench.folder));
  Q_EMIT controlOf<ui::ColourButton>(*window, "Summary background:").chosen("FFFFE0");
  goTo(*window, 2);
  support::type(controlOf<ui::NumberBox>(*window, "Scan interval:"), "250");
  auto& unit = controlOf<QComboBox>(*window, "Scan unit:");
  unit.setCurrentText("mSec");
  Q_EMIT unit.activated(unit.currentIndex());
  controlOf<QCheckBox>(*window, "Tables size themselves").click();
  support::type(controlOf<ui::NumberBox>(*window, "Records of a table:"), "500");
  goTo(*window, 3);
  controlOf<QCheckBox>(*window, "Differential measurements without a ground").click();
  goTo(*window, 4);
  controlOf<QCheckBox>(*window, "CAN values").click();
  window->accept();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(session().GenFilePath, bench.folder);
  EXPECT_EQ(session().settings().WarningMessageMask, 4);
  EXPECT_EQ(session().settings().UserVarListTypes, 127 - 16);
  EXPECT_EQ(stored("Colors/Summary Background"), "FFFFE0");
  EXPECT_EQ(stored("Settings/DefaultTableNumRecs"), "500");
  session().NewProject();
  EXPECT_EQ(bench.project().scan.ExecutionTime, 250);
  EXPECT_EQ(bench.project().scan.ExecTimeUnits, 1);
  EXPECT_EQ(bench.project().tables[0].Buffer, 500);
}

TEST_F(OptionsWindow, CancelChangesNothing) {
  const auto window = open();
  goTo(*window, 3);
  controlOf<QCheckBox>(*window, "Table names that begin alike").click();
  window->reject();
  EXPECT_EQ(session().settings().WarningMessageMask, 0);
}

TEST_F(OptionsWindow, AsksBeforeEscapeForgetsEdits) {
  for (const ports::Answer each : {ports::Answer::cancel, ports::Answer::no, ports::Answer::yes}) {
    const auto window = open();
    answer = each;
    goTo(*window, 3);
    controlOf<QCheckBox>(*window, "Table names that begin alike").click();
    QTest::keyClick(window.get(), Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_EQ(window->isVisible(), each == ports::Answer::cancel);
    EXPECT_EQ(session().settings().WarningMessageMask != 0, each == ports::Answer::yes);
  }
  EXPECT_EQ(bench.messages.titles(), std::vector<std::string>(3, "OPTIONS"));
}

TEST_F(OptionsWindow, HasItsHelpPage) {
  const auto window = open();
  QTest::keyClick(window.get(), Qt::Key_F1);
  EXPECT_EQ(desk.shown, QStringList{"frmOptions"});
  for (const char* page : {"frmOptions", "frmPrint", "desktop"})
    EXPECT_TRUE(QFile::exists(QString(":/kgen/guide/%1.md").arg(page))) << page;
}

TEST_F(OptionsWindow, IsPicturedInLightAndDark) {
  for (const bool dark : {false, true}) {
    const QPalette usual = QApplication::palette();
    if (dark) QApplication::setPalette(support::darkPalette());
    const auto window = open();
    for (int page = 0; page < 5; ++page) {
      goTo(*window, page);
      support::keepPicture(*window,
                           QString("frmOptions%1_%2").arg(page).arg(dark ? "dark" : "light"));
      support::expectUsableByAll(*window);
    }
    QApplication::setPalette(usual);
  }
}

}  // namespace
