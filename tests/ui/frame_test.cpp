#include <gtest/gtest.h>

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

#include "control_bench.h"
#include "ui/frm_volt_setup.h"
#include "ui/number_box.h"
#include "ui/sheet.h"

namespace {

using model::BlockKind;
using ports::Answer;
using support::ControlBench;
using support::controlOf;

constexpr int voltage = 4;

class VoltageWindow : public testing::Test {
 protected:
  VoltageWindow() {
    bench.openExample("everything_at_once");
    window = &bench.open<ui::frmVoltSetup>(voltage);
  }
  [[nodiscard]] const model::MeasurementBlock& block(std::size_t number = 1) const {
    return window->working().block(BlockKind::voltage, number);
  }
  ui::SheetView& channels() { return controlOf<ui::SheetView>(*window, "channels"); }
  void choose(int row, int column, int lastRow, int lastColumn) {
    channels().setCurrentIndex(channels().model()->index(row, column));
    channels().selectionModel()->select(
        QItemSelection(channels().model()->index(row, column),
                       channels().model()->index(lastRow, lastColumn)),
        QItemSelectionModel::ClearAndSelect);
  }
  [[nodiscard]] QPushButton& buttonWith(QDialogButtonBox::ButtonRole role) const {
    auto* box = window->findChild<QDialogButtonBox*>();
    for (QAbstractButton* each : box->buttons())
      if (box->buttonRole(each) == role) return dynamic_cast<QPushButton&>(*each);
    throw std::runtime_error("no such button");
  }
  Answer answer = Answer::yes;
  ControlBench bench{[this](const ports::Message&) { return answer; }};
  QPointer<ui::frmVoltSetup> window;
};

TEST_F(VoltageWindow, CancelAfterEditsChangesNothing) {
  const model::Project before = bench.project();
  support::type(controlOf<ui::NumberBox>(*window, "Settling time:"), "120");
  EXPECT_EQ(block().SettleTime, 120);
  window->reject();
  EXPECT_EQ(bench.project(), before);
}

TEST_F(VoltageWindow, AsksBeforeEscapeAndTheFrameForgetEdits) {
  for (const bool byKey : {true, false}) {
    for (const Answer each : {Answer::cancel, Answer::no, Answer::yes}) {
      window = &bench.open<ui::frmVoltSetup>(voltage);
      const int wanted = 200 + block().SettleTime;
      support::type(controlOf<ui::NumberBox>(*window, "Settling time:"), QString::number(wanted));
      answer = each;
      bench.messages.shown.clear();
      byKey ? QTest::keyClick(window, Qt::Key_Escape) : void(window->close());
      QCoreApplication::processEvents();
      ASSERT_EQ(bench.messages.shown.size(), 1U);
      EXPECT_EQ(window && window->isVisible(), each == Answer::cancel);
      if (window) window->reject();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
      const int stored = bench.project().block(BlockKind::voltage, 1).SettleTime;
      EXPECT_EQ(stored == wanted, each == Answer::yes);
    }
  }
}

TEST_F(VoltageWindow, StaysOpenWhileTheLastCellIsRefused) {
  channels().setFocus();
  channels().setCurrentIndex(channels().model()->index(0, 1));
  QTest::keyClicks(&channels(), "I");
  QTest::keyClicks(QApplication::focusWidget(), "nlet Pressure");
  QTest::mouseClick(&buttonWith(QDialogButtonBox::AcceptRole), Qt::LeftButton);
  ASSERT_TRUE(window->isVisible());
  EXPECT_FALSE(window->hint().isEmpty());
  window->accept();
  EXPECT_FALSE(window->isVisible());
}

/// By the mouse and by its key.
TEST_F(VoltageWindow, SettlesNothingThatCancelForgets) {
  auto& reps = controlOf<ui::NumberBox>(*window, "Reps:");
  const auto typeTooMany = [&] {
    reps.setFocus();
    QTest::keyClick(&reps, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&reps, "500");
  };
  typeTooMany();
  window->accept();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(bench.messages.titles(), std::vector<std::string>{"NOT ENOUGH CHANNELS"});
  typeTooMany();
  QTest::mouseClick(&buttonWith(QDialogButtonBox::RejectRole), Qt::LeftButton);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(bench.messages.shown.size(), 1U);
}

TEST_F(VoltageWindow, RefusesWhatIsTypedWrongAndStaysOpen) {
  for (const char* typed : {"2000000", "-1", "abc", "1.5", ""}) {
    SCOPED_TRACE(typed);
    support::type(controlOf<ui::NumberBox>(*window, "Settling time:"), typed);
    window->accept();
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->hint().isEmpty());
  }
  support::type(controlOf<ui::NumberBox>(*window, "Settling time:"), "50");
  window->accept();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(bench.project().block(BlockKind::voltage, 1).SettleTime, 50);
}

/// The key of Done leaves the focus where it is, unlike the mouse.
TEST_F(VoltageWindow, SettlesWhatIsStillTypedWhenDone) {
  auto& time = controlOf<ui::NumberBox>(*window, "Integration time:");
  time.setFocus();
  QTest::keyClick(&time, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(&time, "127");
  EXPECT_EQ(block().Integration, 127);
  channels().setFocus();
  channels().setCurrentIndex(channels().model()->index(0, 1));
  QTest::keyClicks(&channels(), "I");
  QTest::keyClicks(QApplication::focusWidget(), "nlet");
  window->accept();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(bench.project().block(BlockKind::voltage, 1).Integration, 120);
  EXPECT_EQ(bench.project().block(BlockKind::voltage, 1).elements[0].AliasName, "Inlet");
}

TEST_F(VoltageWindow, StepsTimesAndScalingsByTheirOwnRules) {
  const auto stepped = [this](const char* caption, const char* from, int steps) {
    auto& box = controlOf<ui::NumberBox>(*window, caption);
    support::type(box, from);
    box.stepBy(steps);
    return box.text().toStdString();
  };
  EXPECT_EQ(stepped("Settling time:", "127", 1), "130");
  EXPECT_EQ(stepped("Settling time:", "5", -1), "0");
  EXPECT_EQ(stepped("Integration time:", "40", 2), "60");
  EXPECT_EQ(stepped("Multiplier:", "0.05", 1), "0.051");
}

TEST_F(VoltageWindow, TellsWhatAProcessingStores) {
  constexpr int firstTable = 6;
  channels().setCurrentIndex(channels().model()->index(0, firstTable));
  channels().edit(channels().currentIndex());
  auto* list = channels().findChild<QListWidget*>();
  ASSERT_NE(list, nullptr);
  list->setCurrentRow(1);
  const QString help = "The largest value scanned will be stored each time table " +
                       QString::fromStdString(window->working().tables[0].TableName) +
                       " outputs a record.";
  EXPECT_EQ(list->item(1)->toolTip(), help);
  EXPECT_EQ(window->hint(), help);
}

TEST_F(VoltageWindow, UndoesEditsFieldByField) {
  const model::Project before = window->working();
  support::type(controlOf<ui::NumberBox>(*window, "Settling time:"), "1234560");  // too much
  support::type(controlOf<ui::NumberBox>(*window, "Settling time:"), "120");
  controlOf<QCheckBox>(*window, "Reverse inputs").click();
  const model::Project after = window->working();
  window->undo();
  EXPECT_EQ(block().SettleTime, 120);
  window->undo();
  EXPECT_EQ(window->working(), before);
  window->redo();
  window->redo();
  EXPECT_EQ(window->working(), after);
}

TEST_F(VoltageWindow, KeepsNamesOfChannelsThatALowerNumberHides) {
  const std::vector<model::Element> all = block().elements;
  auto& reps = controlOf<ui::NumberBox>(*window, "Reps:");
  support::type(reps, "2");
  EXPECT_EQ(block().elements.size(), 2U);
  support::type(reps, QString::number(all.size()));
  EXPECT_EQ(block().elements, all);
}

TEST_F(VoltageWindow, RefusesMoreChannelsThanAreFree) {
  support::type(controlOf<ui::NumberBox>(*window, "Reps:"), "500");
  ASSERT_FALSE(bench.messages.shown.empty());
  EXPECT_EQ(bench.messages.shown.back().title, "NOT ENOUGH CHANNELS");
  EXPECT_TRUE(bench.messages.shown.back().text.starts_with("Not enough channels: "));
  EXPECT_LT(block().Reps, 500);
}

TEST_F(VoltageWindow, PastesFromASpreadsheetAllOrNothing) {
  choose(0, 1, 0, 1);
  channels().pasteText("Inlet\tbar\t0.5\nOutlet\tbar\t0.25\r\n");
  EXPECT_EQ(block().elements[0].AliasName, "Inlet");
  EXPECT_EQ(block().elements[1].AliasUnits, "bar");
  EXPECT_EQ(block().elements[1].AliasMult, 0.25);
  const std::vector<model::Element> kept = block().elements;
  for (const char* wrong : {"Good\tbar\nBad name\tbar\n", "X\tbar\tnot a number\n",
                            "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n"}) {
    SCOPED_TRACE(wrong);
    channels().pasteText(wrong);
    EXPECT_EQ(block().elements, kept);
    EXPECT_TRUE(window->hint().contains("nothing was changed")) << window->hint().toStdString();
  }
  choose(0, 1, 1, 3);
  channels().copy();
  EXPECT_EQ(QApplication::clipboard()->text(), "Inlet\tbar\t0.5\nOutlet\tbar\t0.25\n");
}

TEST_F(VoltageWindow, FillsDownWithNamesThatCountOn) {
  choose(0, 1, 0, 1);
  channels().pasteText("Load08\tkN\n");
  choose(0, 1, 3, 2);
  QTest::keyClick(&channels(), Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(block().elements[1].AliasName, "Load09");
  EXPECT_EQ(block().elements[3].AliasName, "Load11");
  EXPECT_EQ(block().elements[3].AliasUnits, "kN");
  QTest::keyClick(&channels(), Qt::Key_Delete);
  EXPECT_EQ(block().elements[0].AliasName, "");
}

TEST_F(VoltageWindow, ShowsTheProgramLinesOfItsBlock) {
  QTest::qWait(300);
  const QString lines = window->findChild<ui::ProgramView*>()->toPlainText();
  EXPECT_TRUE(lines.contains("VoltDiff(VBlk1(),VREP1,VRNG1")) << lines.toStdString();
  EXPECT_FALSE(lines.contains("BrFull"));
}

}  // namespace
