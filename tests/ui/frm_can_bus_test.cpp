#include "ui/frm_can_bus.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <fstream>
#include <set>

#include "control_bench.h"
#include "pictures/frame_bits.h"
#include "support_qt/palettes.h"
#include "support_qt/silent_controls.h"
#include "ui/frm_can_import.h"
#include "ui/frm_level_cross.h"
#include "ui/number_box.h"

namespace {

using support::ControlBench;
using support::controlOf;
using support::pasteAt;

constexpr int canBus = 11;

class CanBusWindow : public testing::Test {
 protected:
  CanBusWindow() {
    bench.openExample("empty_project");
    model::Project project = bench.project();
    project.configuration.quantity(model::ModuleKindIndex::cpu) = 2;
    project.configuration.CanBusQty = 1;
    project.tables[0].TableOn = true;
    bench.control->session().edit(std::move(project), "CANIF");
    window = &bench.open<ui::frmCanBus>(canBus);
    controlOf<QCheckBox>(*window, "CAN bus in use").click();
    choose("Identifiers:", "29 bits");
  }
  void choose(const char* caption, const QString& text) {
    auto& box = controlOf<QComboBox>(*window, caption);
    ASSERT_GE(box.findText(text), 0) << text.toStdString();
    box.setCurrentIndex(box.findText(text));
    Q_EMIT box.activated(box.currentIndex());
  }
  void enter(const char* caption, const QString& text) {
    support::type(controlOf<QWidget>(*window, caption), text);
  }
  [[nodiscard]] QString fieldWords() const {
    return controlOf<QLabel>(controlOf<QWidget>(*window, "Fields:"), "words").text();
  }
  [[nodiscard]] QString check(int row) const {
    return controlOf<ui::SheetView>(*window, "list").model()->index(row, 5).data().toString();
  }
  [[nodiscard]] const std::vector<model::CanItem>& items() const {
    return window->working().can.items;
  }
  std::string keep() {
    window->accept();
    EXPECT_FALSE(window->isVisible()) << window->hint().toStdString();
    bench.control->SaveDldFile();
    const model::Project saved = bench.project();
    bench.control->OpenFile(bench.control->CurrentFileName());
    EXPECT_EQ(bench.project(), saved);
    EXPECT_EQ(support::faultsOf(saved), "");
    return SAVEDLD::generate(saved, {}).text;
  }
  ui::frmCanImport& import(const char* file) {
    window->importDatabase(QString(KGEN_DBC_DIR) + "/" + file);
    auto* found = window->findChild<ui::frmCanImport*>();
    if (found == nullptr) throw std::runtime_error("no import window");
    return *found;
  }
  ControlBench bench;
  ui::frmCanBus* window = nullptr;
};

/// Engine speed of J1939: identifier, bits, scaling, a frame to try.
TEST_F(CanBusWindow, ReceivesWhatAPersonSetsUp) {
  window->addItem();
  enter("Identifier:", "&H0CF00400");
  EXPECT_TRUE(fieldWords().contains("PGN 61444")) << fieldWords().toStdString();
  enter("Identifier:", "speed");
  window->accept();
  EXPECT_TRUE(window->hint().contains("'speed' is no identifier")) << window->hint().toStdString();
  enter("Identifier:", "&H0CF00400");
  choose("Type:", ui::qstring(can::messageTypeText(2)));
  enter("Start bit:", "25");
  enter("Number of bits:", "16");
  enter("Multiplier:", "0.125");
  enter("Units:", "rpm");
  pasteAt(*window, "values", 0, 0, "Engine");
  const QString value = window->valuesOf("0CF00400#000000E02E000000");
  EXPECT_TRUE(value.startsWith("Engine = ")) << value.toStdString();
  const std::string program = keep();
  EXPECT_NE(program.find("Alias CBlk1(1) = Engine"), std::string::npos);
}

/// What counts is shown; another number is the value's own scaling, the rest begins as it counted.
TEST_F(CanBusWindow, ShowsTheScalingThatCounts) {
  window->addItem();
  enter("Multiplier:", "0.125");
  enter("Offset:", "-40");
  const auto row = [this] {
    const auto& model = *controlOf<ui::SheetView>(*window, "values").model();
    return QStringList{model.index(0, 2).data().toString(), model.index(0, 3).data().toString(),
                       model.index(0, 4).data().toString()};
  };
  EXPECT_EQ(row(), QStringList({"no", "0.125", "-40"}));
  pasteAt(*window, "values", 0, 3, "0.5");
  EXPECT_EQ(row(), QStringList({"yes", "0.5", "-40"}));
  EXPECT_EQ(items()[0].values[0].AliasOffset, -40);
  pasteAt(*window, "values", 0, 2, "no");
  EXPECT_EQ(row(), QStringList({"no", "0.125", "-40"}));
  EXPECT_EQ(items()[0].values[0], model::Element{});
}

/// Identifiers get one form; what the program would cut or misread is refused.
TEST_F(CanBusWindow, GivesIdentifiersTheirForm) {
  window->addItem();
  enter("Identifier:", "&h0cf00400");
  EXPECT_EQ(items()[0].DataId, "&HCF00400");
  enter("Identifier:", "0042");
  EXPECT_EQ(items()[0].DataId, "42");
  enter("Identifier:", "-5");
  EXPECT_TRUE(window->hint().contains("'-5' is no identifier")) << window->hint().toStdString();
}

TEST_F(CanBusWindow, ReadsAndWritesTheFieldsOfIdentifiers) {
  window->addItem();
  choose("Direction:", "Transmit, then receive");
  const std::pair<const char*, std::string model::CanItem::*> cases[] = {
      {"Fields:", &model::CanItem::DataId}, {"Fields to send:", &model::CanItem::TxDataId}};
  for (const auto& [caption, place] : cases) {
    auto& fields = controlOf<QWidget>(*window, caption);
    const std::pair<const char*, const char*> typed[] = {
        {"Priority", "6"}, {"Page", "1"},    {"PDU format", "254"}, {"PDU specific", "241"},
        {"Source", "300"}, {"Source", "11"}, {"Reserved", "0"}};
    for (const auto& [field, number] : typed)
      support::type(controlOf<QWidget>(fields, field), number);
    EXPECT_EQ(items()[0].*place, std::to_string(0x19FEF10B)) << caption;
  }
  enter("Identifier:", "&H18FEF100");
  support::type(controlOf<QWidget>(controlOf<QWidget>(*window, "Fields:"), "Source"), "11");
  EXPECT_EQ(items()[0].DataId, "&H18FEF10B");
  EXPECT_TRUE(fieldWords().contains("PGN 65265")) << fieldWords().toStdString();
  choose("Identifiers:", "11 bits");
  EXPECT_FALSE(controlOf<QWidget>(controlOf<QWidget>(*window, "Fields:"), "Source").isEnabled());
}

TEST_F(CanBusWindow, OffersTheTypesOfTheDirection) {
  window->addItem();
  EXPECT_TRUE(check(0).contains("choose what the item receives")) << check(0).toStdString();
  auto& types = controlOf<QComboBox>(*window, "Type:");
  choose("Type:", ui::qstring(can::messageTypeText(2)));
  EXPECT_EQ(types.count(), 6);
  choose("Direction:", "Transmit");
  EXPECT_EQ(types.count(), 8);
  EXPECT_EQ(types.currentText(), ui::qstring(can::messageTypeText(8)));
  enter("Frame to send:", "&H02ZZ");
  window->accept();
  EXPECT_TRUE(window->hint().contains("'&H02ZZ' is no frame")) << window->hint().toStdString();
  enter("Frame to send:", "&H02010C0000000000");
  keep();
}

TEST_F(CanBusWindow, TellsOfBitsThatItemsShare) {
  for (const char* identifier : {"&HCF00400", "217056256", "5"}) {
    window->addItem();
    enter("Identifier:", identifier);
    choose("Type:", ui::qstring(can::messageTypeText(1)));
  }
  EXPECT_EQ(check(0), "takes bits that another item takes too: 2");
  EXPECT_EQ(check(1), "takes bits that another item takes too: 1");
  EXPECT_EQ(check(2), "good");
  window->chooseRow(0);
  auto& bits = *window->findChild<pictures::FrameBits*>();
  Q_EMIT bits.itemClicked(1);
  EXPECT_EQ(window->row(), 1U);
}

/// A number passes smaller ones while it is typed.
TEST_F(CanBusWindow, KeepsValuesWhileTheirNumberIsTyped) {
  window->addItem();
  choose("Type:", ui::qstring(can::messageTypeText(1)));
  enter("Values:", "2");
  pasteAt(*window, "values", 1, 0, "Second\tbar");
  enter("Values:", "10");
  ASSERT_EQ(items()[0].values.size(), 10U);
  EXPECT_EQ(items()[0].values[1].AliasName, "Second");
  enter("Values:", "1");
  EXPECT_EQ(items()[0].values.size(), 1U);
  keep();
}

/// Items that nobody touched are cut by shorter identifiers as well.
TEST_F(CanBusWindow, ChecksAllItemsWhenIdentifiersBecomeShorter) {
  window->reject();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  bench.openExample("vehicle_on_the_road");
  window = &bench.open<ui::frmCanBus>(canBus);
  choose("Identifiers:", "11 bits");
  window->accept();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(bench.messages.shown.back().title, "CAN ITEM");
  EXPECT_TRUE(bench.messages.shown.back().text.find("is larger than 2047") != std::string::npos);
  model::Project project = bench.project();
  project.can.CanDataIDType = 0;
  const auto notes = SAVEDLD::generate(project, {}).notes;
  EXPECT_TRUE(std::any_of(notes.begin(), notes.end(), [](const std::string& note) {
    return note.starts_with("CAN item 1: ") && note.find("2047") != std::string::npos;
  }));
}

TEST_F(CanBusWindow, HasNoItemsWithoutTheInterface) {
  window->reject();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  bench.openExample("bridge_monitoring");
  window = &bench.open<ui::frmCanBus>(canBus);
  bench.messages.shown.clear();
  window->addItem();
  window->loadList("list.txt");
  window->importDatabase(QString(KGEN_DBC_DIR) + "/plain.dbc");
  const ports::Message missing{.title = "NO MODULE", .text = "Please add a CANIF module first."};
  EXPECT_EQ(bench.messages.shown, std::vector<ports::Message>(3, missing));
  EXPECT_TRUE(items().empty());
}

TEST_F(CanBusWindow, LeadsBackToAnItemThatNoFrameHas) {
  window->addItem();
  choose("Type:", ui::qstring(can::messageTypeText(1)));
  window->addItem();
  choose("Type:", ui::qstring(can::messageTypeText(1)));
  enter("Start bit:", "60");
  enter("Number of bits:", "16");
  window->chooseRow(0);
  window->accept();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(bench.messages.shown.back().title, "CAN ITEM");
  EXPECT_TRUE(bench.messages.shown.back().text.starts_with("Item 2: "));
  EXPECT_EQ(window->row(), 1U);
}

TEST_F(CanBusWindow, AsksForAnAnswerThatMatches) {
  controlOf<QCheckBox>(*window, "Enable transmit").click();
  window->addItem();
  choose("Type:", ui::qstring(can::messageTypeText(1)));
  EXPECT_FALSE(controlOf<QWidget>(*window, "Answer matches:").isVisible());
  choose("Direction:", "Transmit, then receive");
  enter("Identifier to send:", "&H18DA10F1");
  enter("Frame to send:", "&H02010C0000000000");
  enter("Identifier:", "&H18DAF110");
  enter("Answer matches:", "&HXX410GXXXXXXXXXX");
  window->accept();
  EXPECT_TRUE(window->hint().contains("is no pattern")) << window->hint().toStdString();
  enter("Answer matches:", "&HXX410CXXXXXXXXXX");
  enter("Start bit:", "25");
  enter("Number of bits:", "16");
  EXPECT_EQ(window->valuesOf("18DAF110#03410C1AF8000000").count('='), 1);
  EXPECT_NE(window->valuesOf("18DAF110#03410D1AF8000000").count('='), 1);
  keep();
  EXPECT_EQ(bench.project().can.items[0].RxDataMatch, "&HXX410CXXXXXXXXXX");
}

TEST_F(CanBusWindow, TakesWhatIsGoodOfADirtyDatabase) {
  ui::frmCanImport& dirty = import("dirty.dbc");
  support::keepPicture(dirty, "frmCanImport_light");
  EXPECT_EQ(support::silentControls(dirty), std::set<QString>());
  EXPECT_TRUE(controlOf<QPlainTextEdit>(dirty, "faults").toPlainText().contains("line 11: "));
  dirty.chooseReady();
  dirty.accept();
  EXPECT_FALSE(items().empty());
  const std::size_t count = items().size();
  window->undo();
  EXPECT_TRUE(items().empty());
  window->redo();
  EXPECT_EQ(items().size(), count);
  keep();
}

TEST_F(CanBusWindow, ExplainsSignalsThatItCannotHave) {
  ui::frmCanImport& beyond = import("beyond_the_logger.dbc");
  auto& sheet = controlOf<ui::SheetView>(beyond, "signals");
  int refused = 0;
  for (int row = 0; row < sheet.model()->rowCount(); ++row) {
    const QString name = sheet.model()->index(row, 2).data().toString();
    const QString remark = sheet.model()->index(row, 7).data().toString();
    sheet.setCurrentIndex(sheet.model()->index(row, 0));
    sheet.pasteText("yes");
    if (sheet.model()->index(row, 0).data().toString() == "yes") continue;
    ++refused;
    EXPECT_FALSE(remark.isEmpty()) << name.toStdString();
  }
  EXPECT_GT(refused, 0);
}

TEST_F(CanBusWindow, ExchangesMessageLists) {
  import("plain.dbc").chooseReady();
  window->findChild<ui::frmCanImport*>()->accept();
  const auto before = items();
  ASSERT_FALSE(before.empty());
  const QString path = QString::fromStdString(bench.folder + "/list.txt");
  window->saveList(path);
  std::ofstream(path.toStdString(), std::ios::app) << "Bad\tx\r\n";
  while (!items().empty()) {
    window->chooseRow(0);
    window->removeItem();
  }
  window->loadList(path);
  ASSERT_EQ(items().size(), before.size());
  EXPECT_EQ(items()[0].DataId, before[0].DataId);
  EXPECT_EQ(bench.messages.titles(), std::vector<std::string>{"MESSAGE LIST"});
  window->loadList(path + ".not");
  EXPECT_EQ(bench.messages.shown.back().title, "FILE");

  controlOf<QCheckBox>(*window, "Save the list by itself").click();
  window->accept();
  EXPECT_TRUE(std::filesystem::exists(bench.folder + "/empty_project_CAN.txt"));
}

TEST_F(CanBusWindow, HasLevelsForItsValues) {
  window->addItem();
  choose("Type:", ui::qstring(can::messageTypeText(1)));
  enter("Number of bits:", "8");
  pasteAt(*window, "values", 0, 5, "level crossing");
  controlOf<QPushButton>(*window, "Level crossing...").click();
  auto* levels = window->findChild<ui::frmLevelCross*>();
  ASSERT_NE(levels, nullptr);
  levels->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(levels));
  support::type(controlOf<ui::NumberBox>(*levels, "Levels:"), "3");
  levels->accept();
  EXPECT_EQ(items()[0].processing[0].LevelCode, "3,1,0,0");
  keep();
}

}  // namespace
