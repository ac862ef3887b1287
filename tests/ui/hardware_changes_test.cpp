#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>

#include "control_bench.h"
#include "support/project_findings.h"
#include "ui/frm_config.h"
#include "ui/number_box.h"

namespace {

using ports::Answer;
using ports::Buttons;
using support::ControlBench;
using support::controlOf;
using support::findingsOf;
using Texts = std::vector<std::string>;

struct Change {
  const char* box;
  const char* count;
};

/// A change of the hardware of the largest example, with Yes to every question.
class HardwareChanges : public testing::Test {
 protected:
  HardwareChanges() {
    bench.openExample("everything_at_once");
    before = bench.project();
    findingsBefore = findingsOf(before);
  }
  void edit(const std::vector<Change>& changes) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    auto& window = bench.open<ui::frmConfig>(0);
    for (const Change& change : changes)
      support::type(controlOf<QLineEdit>(window, change.box), change.count);
    window.accept();
    ASSERT_FALSE(window.isVisible()) << window.hint().toStdString();
  }
  /// Nothing new is to be found but blocks that sleep, the program has no faults, and one undo
  /// brings all back.
  void expectSound() {
    EXPECT_NE(bench.project(), before);
    Texts found = findingsOf(bench.project());
    std::erase_if(found, [this](const std::string& each) {
      return std::count(findingsBefore.begin(), findingsBefore.end(), each) > 0 ||
             each.find(" needs the 7104 CPU and is left out") != std::string::npos;
    });
    EXPECT_EQ(found, Texts());
    EXPECT_EQ(support::faultsOf(bench.project()), "");
    bench.control->session().undo();
    EXPECT_EQ(bench.project(), before);
  }
  ControlBench bench{[](const ports::Message& message) {
    return message.buttons == Buttons::yesNo ? Answer::yes : Answer::ok;
  }};
  model::Project before;
  Texts findingsBefore;
};

TEST_F(HardwareChanges, LeaveASoundProject) {
  const std::vector<Change> cases[] = {
      {{"7121/7122 Analog Input", "0"}},
      {{"7121/7122 Analog Input", "1"}},
      {{"7131 Exitation", "0"}},
      {{"7131 Exitation", "1"}},
      {{"7141/7142 Counter, Timer, I/O", "0"}},
      {{"7141/7142 Counter, Timer, I/O", "1"}},
      {{"7127 High Voltage", "0"}},
      {{"7125 Filtered Analog Input", "0"}},
      {{"7125 Filtered Analog Input", "1"}},
      {{"7128 Isolation/High Common Mode", "0"}},
      {{"7151 PCMCIA Adaptor", "0"}},
      {{"TCMUX multiplexers:", "0"}},
      {{"CANIF devices:", "0"}},
      {{"CPU", "1"}},
      {{"7131 Exitation", "0"}, {"7121/7122 Analog Input", "5"}},
      {{"7121/7122 Analog Input", "0"},
       {"7131 Exitation", "0"},
       {"7141/7142 Counter, Timer, I/O", "0"},
       {"7127 High Voltage", "0"},
       {"7125 Filtered Analog Input", "0"},
       {"7128 Isolation/High Common Mode", "0"}},
  };
  for (const std::vector<Change>& changes : cases) {
    SCOPED_TRACE(std::string(changes.front().box) + " " + changes.front().count + " and " +
                 std::to_string(changes.size() - 1) + " more");
    edit(changes);
    expectSound();
  }
}

TEST_F(HardwareChanges, AskAboutWhatUsesRemovedMeasurements) {
  edit({{"7121/7122 Analog Input", "0"}});
  std::string asked;
  for (const ports::Message& message : bench.messages.shown)
    if (message.text.find("The following settings use") != std::string::npos) {
      EXPECT_EQ(message.buttons, Buttons::yesNo);
      asked += message.text;
    }
  EXPECT_NE(asked.find("Calculated field "), std::string::npos) << asked;
}

TEST_F(HardwareChanges, EndBurstsWithTheCpuThatTakesThem) {
  model::Project project = bench.project();
  project.scan.ScanMode = 1;
  bench.control->session().edit(project, "burst");
  bench.messages.shown.clear();
  edit({{"CPU", "1"}});
  const Texts titles = bench.messages.titles();
  EXPECT_EQ(std::count(titles.begin(), titles.end(), "BURST PROBLEM"), 1);
  EXPECT_EQ(bench.project().scan.ScanMode, 0);
}

TEST_F(HardwareChanges, TheCardTakesTablesToTheCpu) {
  model::Project project = bench.project();
  project.configuration.SizeCardA = 32;
  for (model::OutputTable& table : project.tables) table.TableLocation = 3;
  bench.control->session().edit(std::move(project), "card");
  before = bench.project();
  auto& window = bench.open<ui::frmConfig>(0);
  window.openPanel(ui::frmConfig::cardPanel);
  auto* card = window.findChild<ui::SetupWindow*>();
  ASSERT_NE(card, nullptr);
  card->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(card));
  support::type(controlOf<QLineEdit>(*card, "Size:"), "0");
  card->accept();
  window.accept();
  for (const model::OutputTable& table : bench.project().tables) EXPECT_EQ(table.TableLocation, 1);
  expectSound();
}

/// Tables keep their intervals as far as they are a multiple of the scan.
TEST_F(HardwareChanges, AScanThatDividesTheTablesIsSound) {
  auto& window = bench.open(1);
  support::type(controlOf<ui::NumberBox>(window, "Interval:"), "500");
  auto& unit = controlOf<QComboBox>(window, "Unit:");
  unit.setCurrentIndex(unit.findText("mSec"));
  Q_EMIT unit.activated(unit.currentIndex());
  window.accept();
  ASSERT_FALSE(window.isVisible()) << window.hint().toStdString();
  expectSound();
}

}  // namespace
