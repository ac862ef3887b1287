#include "ui/frm_out_int.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include "control_bench.h"
#include "generator/program_writer.h"
#include "hands.h"
#include "ui/frm_table_times.h"
#include "ui/frm_trigger.h"
#include "ui/frm_write_if.h"
#include "ui/number_box.h"

namespace {

using ports::Answer;
using ports::Message;
using support::ControlBench;
using support::controlOf;

constexpr int outputTables = 2;

class OutputTables : public testing::Test {
 protected:
  OutputTables() {
    bench.openExample("everything_at_once");
    reopen();
  }
  void reopen() { window = &bench.open<ui::frmOutInt>(outputTables); }
  [[nodiscard]] const model::OutputTable& table(std::size_t number) const {
    return window->working().tables[number - 1];
  }
  void choose(const char* caption, const QString& text) {
    auto& box = controlOf<QComboBox>(*window, caption);
    ASSERT_GE(box.findText(text), 0) << text.toStdString();
    box.setCurrentIndex(box.findText(text));
    Q_EMIT box.activated(box.currentIndex());
  }
  void press(const char* caption) { controlOf<QPushButton>(*window, caption).click(); }
  template <class Window>
  Window& inner() {
    auto* found = window->findChild<Window*>();
    if (found == nullptr) throw std::runtime_error("the window did not open");
    found->activateWindow();
    if (!QTest::qWaitForWindowActive(found)) throw std::runtime_error("window stays inactive");
    return *found;
  }
  void rename(std::size_t number, const QString& name) {
    window->chooseTable(number);
    support::type(controlOf<QLineEdit>(*window, "Name:"), name);
  }
  [[nodiscard]] std::string program() const { return SAVEDLD::generate(bench.project(), {}).text; }
  [[nodiscard]] const Message& lastMessage() const { return bench.messages.shown.back(); }

  Answer answer = Answer::yes;
  ControlBench bench{[this](const Message&) { return answer; }};
  ui::frmOutInt* window = nullptr;
};

TEST_F(OutputTables, TakesOnlyKeysOfNames) {
  const std::pair<const char*, std::string> cases[] = {
      {"1abc", "abc"}, {"_x", "x"}, {"1_a", "a"}, {"a b-c.d", "abcd"}, {"abcdefghij", "abcdefgh"}};
  for (const auto& [typed, name] : cases) {
    rename(1, typed);
    EXPECT_EQ(table(1).TableName, name) << typed;
  }
}

TEST_F(OutputTables, PutsTextsBackByEscape) {
  for (const char* caption : {"Name:", "Interval:"}) {
    SCOPED_TRACE(caption);
    const model::Project before = window->working();
    window->chooseTable(4);
    auto& box = controlOf<QWidget>(*window, caption);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&box, "77x");
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_EQ(window->working(), before);
    EXPECT_TRUE(window->isVisible());
  }
}

/// By Alt and its number, which leaves the focus in the box.
TEST_F(OutputTables, LeaveATextWithTheTableThatItWasTypedFor) {
  const model::Project before = window->working();
  for (const char* caption : {"Name:", "Records:"}) {
    SCOPED_TRACE(caption);
    window->chooseTable(1);
    auto& box = controlOf<QWidget>(*window, caption);
    box.setFocus();
    window->chooseTable(4);
    EXPECT_TRUE(box.hasFocus());
    QTest::keyClicks(&box, "x");
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_EQ(window->working(), before);
  }
}

TEST_F(OutputTables, ClampsTheIntervalOnEnter) {
  window->chooseTable(2);
  auto& box = controlOf<QComboBox>(*window, "Interval:");
  const std::tuple<const char*, const char*, std::string> cases[] = {
      {"uSec", "200000000", "100000000"},
      {"mSec", "200000000", "200000000"},
      {"Hour", "1800000001", "1800000000"},
      {"Day", "1x2y", "12"},
      {"Sec", "0", "1"}};
  for (const auto& [unit, typed, interval] : cases) {
    SCOPED_TRACE(typed);
    choose("Units:", unit);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&box, typed);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(table(2).OutInt, interval);
    EXPECT_EQ(box.currentText().toStdString(), interval);
    EXPECT_TRUE(window->isVisible());
  }
  choose("Units:", "uSec");
  support::type(box, "5");
  EXPECT_EQ(controlOf<QLabel>(*window, "That is:").text(), "50 uSec");
}

TEST_F(OutputTables, AnIntervalThatIsLeftEmptyStays) {
  window->chooseTable(2);
  const std::string before = table(2).OutInt;
  auto& box = controlOf<QComboBox>(*window, "Interval:");
  for (const char* nothing : {"", "VF"}) {  // letters are swallowed
    support::typeText(box, nothing);
    EXPECT_EQ(table(2).OutInt, before) << nothing;
    EXPECT_EQ(box.currentText().toStdString(), before) << nothing;
  }
}

TEST_F(OutputTables, ProposeTheNameOfAFilterRate) {
  rename(2, "Table2");
  choose("Interval:", "VFilt");
  EXPECT_EQ(table(2).TableName, "VFilt2");
  support::type(controlOf<QComboBox>(*window, "Interval:"), "60");
  EXPECT_EQ(table(2).TableName, "Table2");
  choose("Interval:", "VFilt");
  EXPECT_FALSE(controlOf<QComboBox>(*window, "Units:").isEnabled());
  rename(2, "Quick");
  EXPECT_EQ(table(2).OutInt, "VFilt");
  EXPECT_EQ(table(2).TableName, "Quick");
}

TEST_F(OutputTables, BoxesThatAreLeftEmptyKeepWhatTheyHad) {
  const auto empty = [this](const char* caption) -> QWidget& {
    auto& box = controlOf<QWidget>(*window, caption);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_Delete);
    return box;
  };
  window->chooseTable(2);
  const model::Project before = window->working();
  for (const char* caption : {"Name:", "Interval:"}) {
    SCOPED_TRACE(caption);
    QTest::keyClick(&empty(caption), Qt::Key_Tab);
    EXPECT_EQ(window->working(), before);
    empty(caption);
    window->chooseTable(3);
    EXPECT_EQ(window->working(), before);
    window->chooseTable(2);
  }
  QTest::keyClick(&empty("Interval:"), Qt::Key_Return);
  EXPECT_EQ(window->working(), before);
  EXPECT_EQ(ui::utf8(controlOf<QComboBox>(*window, "Interval:").currentText()), table(2).OutInt);
  empty("Name:");
  window->accept();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(bench.project(), before);
}

TEST_F(OutputTables, RefusesNamesThatAreThereAlready) {
  rename(3, "samples");
  window->accept();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(lastMessage(),
            (Message{.title = "DUPLICATE TABLE NAME",
                     .text = "The name 'samples' is already being used for Table 1.\r\n\r\n"
                             "EACH TABLE REQUIRES A UNIQUE NAME!",
                     .icon = ports::Icon::critical}));
  rename(3, "Sample02");
  window->accept();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(lastMessage(),
            (Message{.title = "SIMILAR TABLE NAMES",
                     .text = "The first 6 characters in Table 1 (Samples) and Table 3 (Sample02) "
                             "are the same.\r\n"
                             "While this is legal, it will cause problems when collecting data.\r\n"
                             "The collection process uses the first 6 characters of the table\r\n"
                             "name plus 2 digits for the output file name.\r\n"
                             "YOU SHOULD USE A DIFFERENT NAME."}));
}

TEST_F(OutputTables, TellsAndAsksAboutFlags) {
  window->chooseTable(7);
  choose("Mark flag:", "Flag 5");
  EXPECT_EQ(lastMessage().title, "FLAG INFORMATION");
  choose("Mark flag:", "Flag 3");
  EXPECT_EQ(bench.messages.shown.size(), 1U);
  answer = Answer::no;
  window->accept();
  EXPECT_TRUE(window->isVisible());
  const std::string name = table(7).TableName;
  EXPECT_EQ(lastMessage(),
            (Message{.title = "DUPLICATE FLAGS",
                     .text = "Table '" + name + "'  Write Flag and Table '" + name +
                             "'  Mark Flag both use flag 3.\r\n"
                             "The above condition(s) could possibly cause undesirable results.\r\n"
                             "PRESS \"YES\" TO LEAVE AS IS OR \"NO\" TO EDIT.",
                     .buttons = ports::Buttons::yesNo,
                     .defaultButton = Answer::yes}));
  answer = Answer::yes;
  window->accept();
  EXPECT_EQ(bench.project().tables[6].FlagMark, 3);
}

TEST_F(OutputTables, SayWhatCancelAndTheNameBoxDo) {
  const std::pair<const char*, const char*> helps[] = {
      {"Name:", "Enter a table name up to 8 characters long."},
      {"Table times", "Press to display data tables time to fill."},
      {"Compressed time",
       "Uncheck here to store date & time with each record (stores time in 12 bytes per record)."}};
  for (const auto& [caption, help] : helps)
    EXPECT_EQ(controlOf<QWidget>(*window, caption).toolTip(), help);
  QStringList buttons;
  for (const QPushButton* each : window->findChildren<QPushButton*>()) buttons += each->toolTip();
  EXPECT_TRUE(buttons.contains("Press to save changes and exit."));
  EXPECT_TRUE(buttons.contains("Press to exit without saving changes."));
}

TEST_F(OutputTables, AsksWhenClosedWithEdits) {
  window->close();
  EXPECT_TRUE(bench.messages.shown.empty());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  for (const Answer each : {Answer::no, Answer::yes}) {
    reopen();
    rename(1, "Other");
    answer = each;
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(lastMessage(), (Message{.title = "OUTPUT TABLES",
                                      .text = "Edits were made to one or more table "
                                              "configurations.  Save changes before exiting "
                                              "screen?",
                                      .icon = ports::Icon::question,
                                      .buttons = ports::Buttons::yesNo,
                                      .defaultButton = Answer::yes}));
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(bench.project().tables[0].TableName, each == Answer::yes ? "Other" : "Samples");
  }
}

TEST_F(OutputTables, ShowHowLongTheirBuffersLast) {
  press("Table times");
  EXPECT_EQ(lastMessage().title, "TABLE TIME");
  EXPECT_TRUE(
      lastMessage().text.starts_with("Table 1 Time To Fill:\r\n0 Days, 0 Hours, 10 Mins, "
                                     "0.0 Secs\r\nTable 2 Time To Fill:\r\n"
                                     "Buffer Size   = Auto Size"))
      << lastMessage().text;
}

TEST_F(OutputTables, AreTriggeredByConditions) {
  window->chooseTable(2);
  press("Trigger...");
  auto& trigger = inner<ui::frmTrigger>();
  auto& start = trigger.conditions(0).view();
  start.setCurrentIndex(start.model()->index(0, 0));
  start.pasteText("BattVolt\t\t<\t11.5\tOr\nFlag(3)\t\t=\tTrue\nBattCurr\t\t>\t9\n");
  start.setCurrentIndex(start.model()->index(2, 0));
  EXPECT_EQ(trigger.working().tables[1].TrigTable, 3);
  trigger.conditions(0).removeRow(2);
  start.pasteText("NoSuch\t\t<\t1\n");
  EXPECT_TRUE(trigger.hint().contains("there is no variable 'NoSuch'"));
  auto& stop = trigger.conditions(1).view();
  stop.setCurrentIndex(stop.model()->index(1, 5));
  stop.pasteText("BattVolt > 12");
  support::type(controlOf<ui::NumberBox>(trigger, "Records before:"), "20");
  support::keepPicture(trigger, "frmTrigger_light");
  trigger.accept();
  EXPECT_EQ(table(2).TrigTable, 2);
  EXPECT_EQ(table(2).TrigTabStop, 2);  // the first one is not complete
  EXPECT_EQ(table(2).DataEventStart, "BattVolt < 11.5 Or Flag(3) = True");
  EXPECT_EQ(table(2).DataEventStop, "BattVolt > 12");
  EXPECT_EQ(table(2).DataEventCode, 2);
  window->accept();
  const std::string text = program();
  EXPECT_NE(text.find("   bStartTrigger = (BattVolt < 11.5 Or Flag(3) = True)"), text.npos);
  EXPECT_NE(text.find("DataEvent(20,bStartTrigger,bStopTrigger,0)"), text.npos);
}

/// All cells of their conditions, also the element and another variable.
TEST_F(OutputTables, ConditionsComeBackFromTheFile) {
  const auto fill = [](ui::ConditionSheet& conditions) {
    auto& view = conditions.view();
    view.setCurrentIndex(view.model()->index(0, 0));
    view.pasteText("Flag\t2\t<>\tFalse\nBattVolt\t\t<=\tBattCurr\nBattVolt\t\t<\t11.25\n");
  };
  window->chooseTable(2);
  press("Trigger...");
  fill(inner<ui::frmTrigger>().conditions(0));
  fill(inner<ui::frmTrigger>().conditions(1));
  inner<ui::frmTrigger>().accept();
  press("Write if...");
  fill(inner<ui::frmWriteIf>().conditions());
  inner<ui::frmWriteIf>().accept();
  window->accept();
  bench.control->SaveDldFile();
  const model::Project saved = bench.project();
  EXPECT_EQ(saved.tables[1].DataEventStart,
            "Flag(2) <> False And BattVolt <= BattCurr And BattVolt < 11.25");
  bench.control->OpenFile(bench.control->CurrentFileName());
  EXPECT_EQ(bench.project(), saved);
}

TEST_F(OutputTables, AreWrittenUnderConditions) {
  window->chooseTable(7);  // has a condition
  press("Write if...");
  auto& writeIf = inner<ui::frmWriteIf>();
  auto& rows = writeIf.conditions().view();
  rows.setCurrentIndex(rows.model()->index(1, 0));
  rows.pasteText("BattVolt\t\t<\t11.5\n");
  EXPECT_EQ(writeIf.working().tables[6].WriteIf, 2);
  support::type(controlOf<QLineEdit>(writeIf, "Grouping:"), "1 Or 3");
  writeIf.accept();
  EXPECT_TRUE(writeIf.isVisible());
  EXPECT_EQ(lastMessage().title, "WRITE IF GROUPING");
  support::type(controlOf<QLineEdit>(writeIf, "Grouping:"), "Not 2 Or 1");
  support::keepPicture(writeIf, "frmWriteIf_light");
  writeIf.conditions().removeRow(0);
  EXPECT_EQ(writeIf.working().tables[6].GroupWriteIf, "Not 1");
  EXPECT_EQ(writeIf.hint(), "The grouping is now Not 1.");
  writeIf.conditions().removeRow(0);
  EXPECT_EQ(writeIf.working().tables[6].GroupWriteIf, "");
  EXPECT_EQ(writeIf.hint(), "The grouping 'Not 1' went with the condition.");
  writeIf.undo();
  writeIf.accept();
  EXPECT_EQ(table(7).GroupWriteIf, "Not 2 Or 1");
  window->accept();
  EXPECT_NE(program().find("   bWriteIfCall = (Not BattVolt < 11.5 Or "), std::string::npos);
}

TEST_F(OutputTables, AreSizedByTheTimeTheyHold) {
  constexpr int withoutFilter = 3;
  {
    model::Project project = bench.project();
    for (model::FilterSlot& slot : project.filterSlots) slot.BlockCount = 0;
    project.tables[withoutFilter].OutInt = "VFilt";
    window->reject();
    bench.control->session().edit(std::move(project), "no filters");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    reopen();
  }
  press("Table sizes...");
  auto& times = inner<ui::frmTableTimes>();
  ui::SheetView& sheet = times.tables();
  constexpr int days = 5, tenSeconds = 1;  // the second table: a record each 10 seconds
  sheet.setCurrentIndex(sheet.model()->index(tenSeconds, days));
  sheet.pasteText("0\t2\t0\t0\n");
  EXPECT_EQ(times.working().tables[1].Buffer, 720);
  EXPECT_FALSE(times.working().tables[1].AutoSize);
  sheet.pasteText("3000\n");
  QCoreApplication::processEvents();
  EXPECT_EQ(lastMessage(), (Message{.title = "TABLE TIME TOO LONG",
                                    .text = "The time entered needs more memory than is "
                                            "available."}));
  EXPECT_EQ(times.working().tables[1].Buffer, 720);
  support::keepPicture(times, "frmTableTimes_light");
  sheet.setCurrentIndex(sheet.model()->index(0, 4));  // more records than the S-Ram holds
  sheet.pasteText("2000000000\n");
  EXPECT_TRUE(times.plan().of(model::Medium::sRam).isOverfull());
  auto& total = controlOf<QLabel>(times, "total of CPU S-Ram");
  const QColor usual = times.palette().color(QPalette::WindowText);
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return total.palette().color(QPalette::WindowText) != usual; }));
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return total.palette().color(QPalette::WindowText) == usual; }));
  times.undo();
  bench.messages.shown.clear();
  sheet.setCurrentIndex(sheet.model()->index(withoutFilter, days));
  sheet.pasteText("1\n");
  QCoreApplication::processEvents();
  EXPECT_TRUE(times.hint().contains("the table has no interval")) << times.hint().toStdString();
  EXPECT_TRUE(bench.messages.shown.empty());
  times.accept();
  EXPECT_EQ(table(2).Buffer, 720);
  EXPECT_EQ(table(1).Buffer, 600);
  window->undo();
  EXPECT_EQ(window->working(), bench.project());
}

TEST_F(OutputTables, KeepWhatAPersonSetUp) {
  rename(2, "Minutes");
  support::type(controlOf<QComboBox>(*window, "Interval:"), "2");
  choose("Units:", "Min");
  choose("Location:", "S-Ram on the CPU.");
  controlOf<QCheckBox>(*window, "Auto size").click();
  support::type(controlOf<ui::NumberBox>(*window, "Records:"), "500");
  controlOf<QCheckBox>(*window, "Compressed time").click();
  window->accept();
  bench.control->SaveDldFile();
  const model::Project saved = bench.project();
  bench.control->OpenFile(bench.control->CurrentFileName());
  EXPECT_EQ(bench.project(), saved);
  const model::OutputTable& kept = bench.project().tables[1];
  EXPECT_EQ(kept.OutInt, "2");
  EXPECT_EQ(kept.OutIntUnits, 3);
  EXPECT_EQ(kept.Buffer, 500);
  EXPECT_FALSE(kept.AutoSize);
  EXPECT_NE(program().find("DataTable(Minutes,True,500)"), std::string::npos);
}

}  // namespace
