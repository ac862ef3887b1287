#include "ui/frm_exec_int.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

#include "control_bench.h"
#include "generator/program_writer.h"
#include "ui/number_box.h"

namespace {

using ports::Answer;
using ports::Message;
using support::ControlBench;
using support::controlOf;

constexpr int scanInterval = 1;

class ScanInterval : public testing::Test {
 protected:
  void open(const std::string& example) {
    bench.openExample(example);
    window = &bench.open<ui::frmExecInt>(scanInterval);
  }
  void enter(const char* caption, const QString& text) {
    support::type(controlOf<ui::NumberBox>(*window, caption), text);
  }
  void choose(const char* caption, const QString& text) {
    auto& box = controlOf<QComboBox>(*window, caption);
    ASSERT_GE(box.findText(text), 0) << text.toStdString();
    box.setCurrentIndex(box.findText(text));
    Q_EMIT box.activated(box.currentIndex());
  }
  [[nodiscard]] QString shown(const char* caption) const {
    return controlOf<QLabel>(*window, caption).text();
  }
  using Strings = std::vector<std::string>;

  Answer answer = Answer::ok;
  ControlBench bench{[this](const Message&) { return answer; }};
  ui::frmExecInt* window = nullptr;
};

TEST_F(ScanInterval, ShowsTheTrueTime) {
  open("everything_at_once");
  enter("Interval:", "50");
  choose("Unit:", "uSec");
  EXPECT_EQ(shown("That is:"), "500 uSec, 2,000 scans a second");
  choose("Unit:", "Min");
  EXPECT_EQ(window->working().scan.ExecTimeUnits, 3);
  EXPECT_TRUE(shown("That is:").startsWith("50 Min, 0.000333 scans"));
}

TEST_F(ScanInterval, IsRefusedWhenTheLoggerCannotKeepIt) {
  open("everything_at_once");
  for (const auto& [number, unit] : {std::pair{"9", "uSec"}, {"1.5", "Sec"}, {"2", "Hour"}}) {
    SCOPED_TRACE(number);
    enter("Interval:", number);
    choose("Unit:", unit);
    window->accept();
    EXPECT_TRUE(window->isVisible());
    ASSERT_FALSE(bench.messages.shown.empty());
    EXPECT_EQ(bench.messages.shown.back().title, "SCAN INTERVAL");
    EXPECT_EQ(bench.messages.shown.back().icon, ports::Icon::critical);
    bench.messages.shown.clear();
  }
}

TEST_F(ScanInterval, TellsOfTablesThatDoNotFollow) {
  open("pump_house");
  const auto titlesAfter = [this](const char* number, const char* unit) {
    bench.messages.shown.clear();
    enter("Interval:", number);
    choose("Unit:", unit);
    window->accept();
    return bench.messages.titles();
  };
  answer = Answer::no;  // keeps the window open where it is asked
  EXPECT_EQ(titlesAfter("2", "Min").front(), "TIMING PROBLEM 1");  // a table keeps each minute
  EXPECT_TRUE(bench.messages.shown.front().text.ends_with(
      "*** MUST CHECK SCAN INTERVALS FOR OUTPUT TABLES ***"));
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  window = &bench.open<ui::frmExecInt>(scanInterval);
  EXPECT_EQ(titlesAfter("7", "Sec").front(), "TIMING PROBLEM 2");
}

TEST_F(ScanInterval, AsksBeforeTablesAreReducedToSamples) {
  open("everything_at_once");
  enter("Interval:", "10");  // the interval of the table of means
  answer = Answer::no;
  window->accept();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(bench.messages.shown.back().title, "OUTPUT TABLES");
  answer = Answer::yes;
  window->accept();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(bench.project().scan.ExecutionTime, 10);
}

TEST_F(ScanInterval, PlansIsolatedBlocksAnew) {
  open("everything_at_once");
  const int before = bench.project().isolated.ScansPerSubScan;
  ASSERT_GT(before, 1);
  answer = Answer::yes;
  enter("Interval:", "30");
  choose("Unit:", "Min");
  window->accept();
  const Message limit = {
      .title = "Subscan Interval Too Long",
      .text =
          "The Isolated subscan interval (M7128) cannot be longer than 30 minutes.\r\n"
          "The number of main scans per subscan will be reset.\r\n\r\n"
          "The largest value for this setting using the current\r\nscan rate is 1."};
  EXPECT_EQ(std::count(bench.messages.shown.begin(), bench.messages.shown.end(), limit), 1);
  EXPECT_EQ(bench.project().isolated.ScansPerSubScan, 1);
}

TEST_F(ScanInterval, BurstsNeedMemoryForThem) {
  open("pump_house");  // a 7103 without a card
  EXPECT_FALSE(controlOf<QComboBox>(*window, "Mode:").isEnabled());
  EXPECT_TRUE(controlOf<QComboBox>(*window, "Mode:").toolTip().contains("static RAM card"));
  EXPECT_FALSE(controlOf<QComboBox>(*window, "Trigger:").isVisible());
}

TEST_F(ScanInterval, BurstsBeginOnACondition) {
  open("everything_at_once");
  choose("Mode:", "Burst");
  choose("Trigger:", "a measurement");
  const std::string name =
      bench.project().block(model::BlockKind::voltage, 1).elements[1].AliasName;
  choose("Variable:", QString::fromStdString(name));
  enter("Value:", "4.5");
  window->accept();  // without a buffer
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(bench.messages.shown.back().text, "A burst scan needs a buffer of at least 1 scan.");
  enter("Buffer size:", "100");
  enter("Scans after the trigger:", "25");
  EXPECT_EQ(shown("Begins when:").toStdString(), name + " > 4.5");
  auto& expression = controlOf<QLineEdit>(*window, "Free expression:");
  support::type(expression, "VBlk1(2) >");
  window->accept();
  EXPECT_TRUE(window->isVisible());
  expression.setFocus();
  QTest::keyClick(&expression, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&expression, Qt::Key_Delete);
  support::keepPicture(*window, "frmExecInt_burst");
  window->accept();
  EXPECT_FALSE(window->isVisible());
  const std::string text = SAVEDLD::generate(bench.project(), {}).text;
  EXPECT_NE(text.find("BeginBurstTrigger(" + name + " > 4.5)"), std::string::npos);
  EXPECT_NE(text.find("EndBurstTrigger(100,25)"), std::string::npos);
}

TEST_F(ScanInterval, KeepsWhatAPersonSetUp) {
  open("pump_house");
  enter("Interval:", "20");
  choose("Unit:", "Sec");
  controlOf<QCheckBox>(*window, "Buffer scans").click();
  enter("Buffer size:", "12");
  choose("Start:", "when Flag 2 is set");
  window->accept();
  bench.control->SaveDldFile();
  const model::Project saved = bench.project();
  bench.control->OpenFile(bench.control->CurrentFileName());
  EXPECT_EQ(bench.project(), saved);
  EXPECT_EQ(bench.project().scan.FlagScan, 2);
  EXPECT_TRUE(bench.project().scan.ScanBuffer);
  const std::string text = SAVEDLD::generate(bench.project(), {}).text;
  EXPECT_NE(text.find("Scan(PERIOD,P_UNITS,12,0)"), std::string::npos);
}

}  // namespace
