#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include "control_bench.h"
#include "ui/block_window.h"
#include "ui/frm_config.h"
#include "ui/frm_histogram.h"
#include "ui/frm_level_cross.h"
#include "ui/frm_rainflow.h"
#include "ui/number_box.h"
#include "ui/sheet.h"

namespace {

using model::BlockKind;
using support::ControlBench;
using support::controlOf;

constexpr int voltage = 4;

/// A voltage block whose first channel two tables store as histogram, rainflow and crossings.
class Processings : public testing::Test {
 protected:
  Processings() {
    bench.openExample("everything_at_once");
    model::Project project = bench.project();
    for (const std::size_t t : {0U, 1U}) {
      project.tables[t].TableOn = true;
      project.block(BlockKind::voltage, 1).processing[t] = {};
      project.block(BlockKind::voltage, 1).elements[0].Table[t] = 0xE0;
    }
    bench.control->session().edit(std::move(project), "test");
    owner = &dynamic_cast<ui::BlockWindow&>(bench.open(voltage));
  }
  template <class Window>
  void open(const char* button) {
    openIn<Window>(*owner, button);
    support::keepPicture(*window, window->objectName());
  }
  /// By the first button of the name that is on the screen.
  template <class Window>
  void openIn(QWidget& opener, const char* name) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (auto* button : opener.findChildren<QPushButton*>(name))
      if (button->isVisible()) {
        button->click();
        break;
      }
    window = opener.findChild<Window*>();
    if (window == nullptr) throw std::runtime_error("the window did not open");
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window)) throw std::runtime_error("window stays inactive");
  }
  void enter(const char* caption, const QString& text) {
    support::type(controlOf<ui::NumberBox>(*window, caption), text);
  }
  [[nodiscard]] QString shown(const char* caption) const {
    return controlOf<QLabel>(*window, caption).text();
  }
  [[nodiscard]] const model::TableProcessing& done(std::size_t table) {
    window->accept();
    return owner->working().block(BlockKind::voltage, 1).processing[table];
  }

  ControlBench bench;
  ui::BlockWindow* owner = nullptr;
  ui::SetupWindow* window = nullptr;
};

TEST_F(Processings, HistogramsHaveBinsOfEachTable) {
  open<ui::frmHistogram>("Histogram...");
  const QString before = shown("Record:");
  enter("Bins:", "25");
  EXPECT_EQ(shown("Values:"), "25 of each channel");
  EXPECT_NE(shown("Record:"), before);
  enter("Low limit:", "-5.5");
  auto& table = controlOf<QComboBox>(*window, "Table:");
  table.setCurrentIndex(1);
  Q_EMIT table.activated(1);
  EXPECT_EQ(shown("Values:"), "10 of each channel");
  enter("High limit:", "7");
  EXPECT_EQ(done(0).HistogramCode, "25,-5.5,100,0");
  EXPECT_EQ(done(1).HistogramCode, "10,0,7,0");
}

TEST_F(Processings, RainflowMultipliesItsBins) {
  open<ui::frmRainflow>("Rainflow...");
  enter("Mean bins:", "5");
  enter("Amplitude bins:", "20");
  enter("Least amplitude:", "0.25");
  EXPECT_EQ(shown("Values:"), "100 of each channel");
  EXPECT_EQ(done(0).RainHistoCode, "5,20,0,100,0.25,0");
}

TEST_F(Processings, LevelsHoldForAllTablesOfTheBlock) {
  open<ui::frmLevelCross>("Level crossing...");
  enter("Levels:", "3");
  auto& levels = controlOf<ui::SheetView>(*window, "Level");
  levels.setCurrentIndex(levels.model()->index(0, 0));
  levels.pasteText("1\n2.5\n4\n");
  auto& second = controlOf<QComboBox>(*window, "Second variable:");
  second.setCurrentIndex(2);
  Q_EMIT second.activated(2);
  const std::string variable = second.currentText().toStdString();
  enter("Tests:", "2");
  EXPECT_EQ(shown("Values:"), "6 of each channel");
  window->accept();
  for (const std::size_t t : {0U, 1U}) {
    const model::TableProcessing& filed =
        owner->working().block(BlockKind::voltage, 1).processing[t];
    EXPECT_EQ(filed.LevelCode, "3,2,0,0");
    EXPECT_EQ(filed.LevelVarOne, (std::vector<double>{1, 2.5, 4}));
    EXPECT_EQ(filed.LevNumTests, 2);
    EXPECT_EQ(filed.LevelMeasName, variable);
  }
}

/// A number passes smaller ones while it is typed.
TEST_F(Processings, LevelsBeyondANumberStayUntilDone) {
  open<ui::frmLevelCross>("Level crossing...");
  enter("Levels:", "3");
  support::pasteAt(*window, "Level", 0, 0, "1\n2.5\n4\n");
  auto& second = controlOf<QComboBox>(*window, "Second variable:");
  second.setCurrentIndex(2);
  Q_EMIT second.activated(2);
  enter("Tests:", "2");
  support::pasteAt(*window, "Test", 0, 0, "7\n8\n");
  enter("Levels:", "10");
  enter("Tests:", "1");
  enter("Tests:", "3");
  const model::TableProcessing& filed = done(0);
  EXPECT_EQ(filed.LevelVarOne, (std::vector<double>{1, 2.5, 4, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(filed.LevelVarTwo, (std::vector<double>{7, 8, 0}));
  open<ui::frmLevelCross>("Level crossing...");
  enter("Levels:", "2");
  EXPECT_EQ(done(0).LevelVarOne, (std::vector<double>{1, 2.5}));
}

TEST_F(Processings, DoneWithoutAnEditChangesNothing) {
  const model::Project before = owner->working();
  open<ui::frmHistogram>("Histogram...");
  window->accept();
  open<ui::frmRainflow>("Rainflow...");
  window->accept();
  open<ui::frmLevelCross>("Level crossing...");
  window->accept();
  EXPECT_EQ(owner->working(), before);
}

TEST_F(Processings, AreOfferedWhereTheyAreStored) {
  EXPECT_TRUE(controlOf<QPushButton>(*owner, "Histogram...").isVisible());
  owner->chooseBlock(7);
  EXPECT_FALSE(controlOf<QPushButton>(*owner, "Histogram...").isVisible());
}

/// The battery, reference temperatures and blocks have theirs where the file keeps them.
TEST_F(Processings, AreThereForTheBatteryAndReferences) {
  owner->reject();
  model::Project project = bench.project();
  project.powerOut.sets[0].Table[0] = 0x60;
  project.tcmuxReference.Table[0] = 0x20;
  project.isoReference.Table[0] = 0x40;
  bench.control->session().edit(std::move(project), "test");
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

  auto& hardware = bench.open<ui::frmConfig>(0);
  hardware.openPanel(0);
  auto* battery = hardware.findChild<ui::SetupWindow*>();
  ASSERT_NE(battery, nullptr);
  openIn<ui::frmHistogram>(*battery, "Histogram...");
  enter("Bins:", "20");
  EXPECT_EQ(shown("Values:"), "20 of each channel");
  window->accept();
  openIn<ui::frmRainflow>(*battery, "Rainflow...");
  enter("Mean bins:", "3");
  window->accept();
  battery->accept();
  hardware.accept();
  EXPECT_EQ(bench.project().powerOut.HistogramCode[0], "20,0,100,0");
  EXPECT_EQ(bench.project().powerOut.RainHistoCode[0], "3,10,0,100,1,0");

  auto& multiplexers = bench.open(10);
  openIn<ui::frmHistogram>(multiplexers, "Histogram...");
  enter("High limit:", "50");
  window->accept();
  multiplexers.accept();
  EXPECT_EQ(bench.project().tcmuxReference.HistogramCode[0], "10,0,50,0");
  auto& isolated = bench.open(6);
  openIn<ui::frmRainflow>(isolated, "Rainflow...");
  enter("High limit:", "50");
  window->accept();
  isolated.accept();
  EXPECT_EQ(bench.project().isoReference.RainCode[0], "10,10,0,50,1,0");
  const std::string program = SAVEDLD::generate(bench.project(), {}).text;
  EXPECT_NE(program.find("Histogram(BattVolt,"), std::string::npos);
  EXPECT_EQ(support::faultsOf(bench.project()), "");
}

}  // namespace
