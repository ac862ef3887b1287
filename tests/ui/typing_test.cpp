#include <gtest/gtest.h>

#include <QComboBox>
#include <QHeaderView>

#include "control_bench.h"
#include "ui/form.h"
#include "ui/frm_volt_setup.h"
#include "ui/number_box.h"

// What people type and paste into a window, and what they are told.
namespace {

using support::ControlBench;
using support::controlOf;
using support::pasteAt;

enum Column { place, alias, units, multiplier, offset, ownScaling, firstTable };

class TypingIntoVoltages : public testing::Test {
 protected:
  TypingIntoVoltages() {
    bench.openExample("pump_house");
    model::Project next = bench.project();
    block(next).DefaultMult = 5;
    block(next).elements.resize(static_cast<std::size_t>(block(next).Reps));
    for (model::Element& each : block(next).elements) each = {};
    bench.control->session().edit(std::move(next), "test");
    window = &bench.open<ui::frmVoltSetup>(4);
  }
  static model::MeasurementBlock& block(model::Project& project) {
    return project.block(model::BlockKind::voltage, 1);
  }
  [[nodiscard]] const model::Element& element(std::size_t row = 0) const {
    return window->working().block(model::BlockKind::voltage, 1).elements.at(row);
  }
  ui::SheetView& sheet() { return controlOf<ui::SheetView>(*window, "channels"); }
  ControlBench bench;
  ui::frmVoltSetup* window = nullptr;
};

TEST_F(TypingIntoVoltages, ScalingOfAChannelCountsOnceItIsTyped) {
  pasteAt(*window, "channels", 0, multiplier, "5\t0");  // as the block
  EXPECT_FALSE(element().AliasExcept);
  pasteAt(*window, "channels", 0, offset, "3");
  EXPECT_TRUE(element().AliasExcept);
  EXPECT_EQ(element().AliasMult, 5) << "what is not typed stays the block's";
  EXPECT_EQ(element().AliasOffset, 3);
  pasteAt(*window, "channels", 0, multiplier, "0.2\t-1\tno");  // a list that says otherwise
  EXPECT_FALSE(element().AliasExcept);
  pasteAt(*window, "channels", 0, multiplier, "1\t3");
  EXPECT_TRUE(element().AliasExcept);
  EXPECT_EQ(element().AliasMult, 1);
}

TEST_F(TypingIntoVoltages, WordsChooseWhatATableStores) {
  for (const auto& [keys, stored] : {std::pair{"average", "average"},
                                     {"sample+average", "sample+average"},
                                     {"max+min", "maximum+minimum"}}) {
    SCOPED_TRACE(keys);
    const QModelIndex cell = sheet().model()->index(0, firstTable);
    sheet().setFocus();
    sheet().setCurrentIndex(cell);
    sheet().clearCells();
    QTest::keyClicks(&sheet(), QString(keys).left(1));
    QWidget* list = QApplication::focusWidget();
    ASSERT_NE(list, &sheet());
    QTest::keyClicks(list, QString(keys).mid(1));
    QTest::keyClick(list, Qt::Key_Return);
    QApplication::processEvents();  // Enter commits once the list has seen it
    EXPECT_EQ(cell.data().toString(), stored);
  }
}

TEST_F(TypingIntoVoltages, ColumnsBecomeAsWideAsWhatIsInThem) {
  pasteAt(*window, "channels", 0, alias, "I");
  QApplication::processEvents();
  const int before = sheet().columnWidth(alias);
  pasteAt(*window, "channels", 0, alias, "InletPressure_01");
  QApplication::processEvents();
  EXPECT_GT(sheet().columnWidth(alias), before);
  EXPECT_GE(sheet().columnWidth(alias),
            sheet().fontMetrics().horizontalAdvance("InletPressure_01"));
}

TEST(Lists, AreAsWideAsTheirLongestEntry) {
  std::vector<ui::Choice> choices = ui::choicesOf({"Standard deviation", "Sample"});
  std::int16_t value = 0;
  ui::Form form;
  const QWidget& box = *form.choice(
                                {"List:", "A list that grows."}, [&] { return choices; },
                                [&]() -> std::int16_t& { return value; })
                            .widget;
  const auto wide = [&box](const char* entry) {
    return box.fontMetrics().horizontalAdvance(entry);
  };
  EXPECT_LT(box.sizeHint().width(), wide("Standard deviation"));  // measured while it is empty
  form.refresh();
  form.show();
  EXPECT_GT(box.width(), wide("Standard deviation"));
  choices.push_back({"Standard deviation over the hour", 2});
  form.refresh();
  EXPECT_GT(box.sizeHint().width(), wide("Standard deviation over the hour"));
}

TEST_F(TypingIntoVoltages, RefusedNumbersChangeNothingAndSayWhyUntilTheyAreCorrected) {
  const model::Project before = window->working();
  auto& reps = controlOf<ui::NumberBox>(*window, "Reps:");
  support::type(reps, "99999");  // begins as 9 and 99
  EXPECT_EQ(window->working(), before);
  EXPECT_EQ(reps.text(), "99999");
  EXPECT_NE(QApplication::focusWidget(), &reps);
  EXPECT_EQ(window->hint(), "Reps: Enter a value from 0 to 525.");
  support::type(reps, "2");
  EXPECT_FALSE(window->hint().startsWith("Reps:"));
}

}  // namespace
