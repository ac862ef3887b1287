#include <gtest/gtest.h>

#include <QComboBox>
#include <QMenu>
#include <QPushButton>

#include "control_bench.h"
#include "generator/program_writer.h"
#include "ui/block_window.h"
#include "ui/mask_box.h"
#include "ui/number_box.h"
#include "ui/sheet.h"

namespace {

using model::BlockKind;
using model::ModuleKindIndex;
using support::ControlBench;
using support::controlOf;

struct KindOfWindow {
  int button;
  BlockKind kind;
  const char* missing;  // the module that an empty project lacks
};
constexpr KindOfWindow kinds[] = {
    {3, BlockKind::thermocouple, "7121/22"}, {4, BlockKind::voltage, "7121/22"},
    {5, BlockKind::highVoltage, "7127"},     {6, BlockKind::isolated, "7104 CPU"},
    {7, BlockKind::bridge, "7121/22"},       {8, BlockKind::filter, "7125"},
    {9, BlockKind::pulse, "7141/42"},        {10, BlockKind::tcmux, "7104 CPU"}};

class BlockWindows : public testing::TestWithParam<KindOfWindow> {
 protected:
  ui::BlockWindow& open() { return dynamic_cast<ui::BlockWindow&>(bench.open(GetParam().button)); }
  static void choose(QWidget& window, const char* caption, const QString& text) {
    auto& box = controlOf<QComboBox>(window, caption);
    box.setCurrentIndex(box.findText(text));
    Q_EMIT box.activated(box.currentIndex());
  }
  /// A 7104 with a module of each kind, two multiplexers and a table that is on.
  void equip() {
    model::Project project = bench.project();
    model::LoggerConfiguration& configuration = project.configuration;
    configuration.quantity(ModuleKindIndex::cpu) = 2;
    for (const auto kind : {ModuleKindIndex::analog7121, ModuleKindIndex::excitation7131,
                            ModuleKindIndex::counter7141, ModuleKindIndex::highVoltage7127,
                            ModuleKindIndex::filter7125, ModuleKindIndex::isolation7128})
      configuration.quantity(kind) = 1;
    configuration.TCMUXQty = 2;
    project.tables[0].TableOn = true;
    bench.control->session().edit(std::move(project), "modules");
  }
  ControlBench bench;
};

/// A person builds a block with two named channels, saves, reopens and generates.
TEST_P(BlockWindows, BuildABlockThatTheProgramMeasures) {
  bench.openExample("empty_project");
  equip();
  ui::BlockWindow& window = open();
  if (GetParam().kind == BlockKind::filter) controlOf<QPushButton>(window, "Add a block").click();
  support::type(controlOf<ui::NumberBox>(window, "Reps:"), "2");
  auto& channels = controlOf<ui::SheetView>(window, "channels");
  channels.setCurrentIndex(channels.model()->index(0, 1));
  channels.pasteText("Front\tbar\nRear\tbar\n");
  window.accept();
  ASSERT_FALSE(window.isVisible()) << window.hint().toStdString();
  EXPECT_TRUE(bench.messages.shown.empty());

  bench.control->SaveDldFile();
  bench.control->OpenFile(bench.control->CurrentFileName());
  const model::MeasurementBlock& block = bench.project().block(GetParam().kind, 1);
  ASSERT_EQ(block.elements.size(), 2U);
  EXPECT_EQ(block.elements[1].AliasName, "Rear");
  const std::string program = SAVEDLD::generate(bench.project(), {}).text;
  const std::string array = model::arrayName(bench.project(), GetParam().kind, 1);
  EXPECT_NE(program.find("Alias " + array + "(2) = Rear"), std::string::npos);
  EXPECT_EQ(support::faultsOf(bench.project()), "");
}

TEST_P(BlockWindows, AskForTheModuleThatIsMissing) {
  bench.openExample("empty_project");
  model::Project bare = bench.project();
  bare.configuration.quantity(ModuleKindIndex::cpu) = 1;
  bench.control->session().edit(std::move(bare), "CPU");
  ui::BlockWindow& window = open();
  if (GetParam().kind == BlockKind::filter)
    controlOf<QPushButton>(window, "Add a block").click();
  else
    support::type(controlOf<ui::NumberBox>(window, "Reps:"), "2");
  ASSERT_FALSE(bench.messages.shown.empty());
  EXPECT_EQ(bench.messages.shown.back().title, "NO MODULE");
  EXPECT_EQ(bench.messages.shown.back().text,
            std::string("Please add a ") + GetParam().missing + " module first.");
  EXPECT_EQ(window.working().block(GetParam().kind, 1).Reps, 0);
}

INSTANTIATE_TEST_SUITE_P(Kinds, BlockWindows, testing::ValuesIn(kinds), [](const auto& tested) {
  return "Button" + std::to_string(tested.param.button);
});

class OneKind : public testing::Test {
 protected:
  ui::BlockWindow& open(int button) {
    bench.openExample("everything_at_once");
    return dynamic_cast<ui::BlockWindow&>(bench.open(button));
  }
  static void choose(QWidget& window, const char* caption, const QString& text) {
    auto& box = controlOf<QComboBox>(window, caption);
    ASSERT_GE(box.findText(text), 0) << text.toStdString();
    box.setCurrentIndex(box.findText(text));
    Q_EMIT box.activated(box.currentIndex());
  }
  ports::Answer answer = ports::Answer::yes;
  ControlBench bench{[this](const ports::Message&) { return answer; }};
};

TEST_F(OneKind, TemperatureScaleSetsTheScaling) {
  bench.openExample("everything_at_once");
  for (const int button : {3, 10}) {
    SCOPED_TRACE(button);
    const BlockKind kind = button == 3 ? BlockKind::thermocouple : BlockKind::tcmux;
    auto& window = dynamic_cast<ui::BlockWindow&>(bench.open(button));
    const auto scaling = [&](const char* scale) {
      choose(window, "Temperature scale:", scale);
      const model::MeasurementBlock& block = window.working().block(kind, 1);
      return std::tuple(block.DefaultMult, block.DefaultOffset, block.Units);
    };
    EXPECT_EQ(scaling("Kelvin"), std::tuple(1.0, 273.16, std::string("Kelvin")));
    EXPECT_EQ(scaling("Rankine"), std::tuple(1.8, 491.72, std::string("Rankine")));
    EXPECT_EQ(scaling("Deg_C"), std::tuple(1.0, 0.0, std::string("Deg_C")));
    EXPECT_EQ(scaling("Deg_F"), std::tuple(1.8, 32.0, std::string("Deg_F")));
    window.reject();
  }
}

TEST_F(OneKind, ReferenceTemperaturesAreStoredByTable) {
  ui::BlockWindow& window = open(3);
  std::size_t table = 0;
  while (!window.working().tables[table].TableOn) ++table;
  const std::string caption = window.working().tables[table].TableName + ":";
  auto& mask = controlOf<ui::MaskBox>(window, caption.c_str());
  const std::uint8_t before = mask.mask();
  mask.menu()->actions()[2]->trigger();
  EXPECT_EQ(window.working().tcReference.Table[table], before ^ 4);
  window.undo();
  EXPECT_EQ(mask.mask(), before);
}

TEST_F(OneKind, ThermocouplesAreReversedOnlyDifferentially) {
  ui::BlockWindow& window = open(3);
  choose(window, "Input:", "Diff");
  EXPECT_TRUE(controlOf<QWidget>(window, "Reverse inputs").isEnabled());
  choose(window, "Input:", "SE");
  EXPECT_FALSE(controlOf<QWidget>(window, "Reverse inputs").isEnabled());
  EXPECT_TRUE(controlOf<QWidget>(window, "Reverse inputs")
                  .toolTip()
                  .contains("Only differential inputs can be reversed."));
}

TEST_F(OneKind, BridgesShowGaugeFactorsOfStrain) {
  ui::BlockWindow& window = open(7);
  choose(window, "Configuration:", "Half bridge");
  EXPECT_FALSE(controlOf<QWidget>(window, "Gauge factor:").isVisible());
  EXPECT_EQ(window.working().block(BlockKind::bridge, 1).Type, "BrHalf");
  choose(window, "Configuration:", "Quarter bridge strain");
  EXPECT_TRUE(controlOf<QWidget>(window, "Gauge factor:").isVisible());
  EXPECT_EQ(window.working().block(BlockKind::bridge, 1).Type, "BrFull");
}

TEST_F(OneKind, PulsesAreCountedOrTimed) {
  ui::BlockWindow& window = open(9);
  const auto& block = window.working().block(BlockKind::pulse, 1);
  choose(window, "Result:", "Counts");
  EXPECT_EQ(block.Opt, 0);
  EXPECT_FALSE(controlOf<QWidget>(window, "Averaged over:").isVisible());
  choose(window, "Result:", "Hz, averaged");
  support::type(controlOf<ui::NumberBox>(window, "Averaged over:"), "250");
  EXPECT_EQ(block.Opt, 250);
}

TEST_F(OneKind, ChangedDefaultsAskAboutChannelsOfTheirOwn) {
  bench.openExample("everything_at_once");
  model::Project project = bench.project();
  model::Element& own = project.block(BlockKind::voltage, 1).elements[0];
  own.AliasExcept = true;
  own.AliasMult = 3;
  bench.control->session().edit(std::move(project), "own scaling");
  auto& window = bench.open(4);
  support::type(controlOf<ui::NumberBox>(window, "Multiplier:"), "2");
  window.accept();
  EXPECT_EQ(bench.messages.shown.back(),
            (ports::Message{.title = "DEFAULT SCALING CHANGED",
                            .text = "Individual multipliers and offsets are not all the same as "
                                    "the defaults.\r\n\r\nWOULD YOU LIKE TO EXAMINE SCALARS NOW?",
                            .icon = ports::Icon::question,
                            .buttons = ports::Buttons::yesNo,
                            .defaultButton = ports::Answer::yes}));
  EXPECT_TRUE(window.isVisible());  // Yes, at the channels
  EXPECT_TRUE(controlOf<ui::SheetView>(window, "channels").hasFocus());
  answer = ports::Answer::no;
  window.accept();
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(bench.project().block(BlockKind::voltage, 1).DefaultMult, 2);
}

/// Channels that fewer repetitions hide are those of the present state, whatever was undone.
TEST_F(OneKind, HiddenChannelsGoWithUndo) {
  ui::BlockWindow& window = open(4);
  const model::MeasurementBlock& block = window.working().block(BlockKind::voltage, 1);
  const std::vector<model::Element> before = block.elements;
  ASSERT_GE(before.size(), 3U);
  auto& reps = controlOf<ui::NumberBox>(window, "Reps:");
  support::type(reps, QString::number(before.size() - 2));
  window.undo();
  EXPECT_EQ(block.elements, before);
  support::type(reps, QString::number(before.size() + 1));
  std::vector<model::Element> longer = before;
  longer.push_back(model::defaultElement(BlockKind::voltage));
  EXPECT_EQ(block.elements, longer);
  window.undo();
  support::type(reps, "1");
  window.undo();
  window.redo();
  support::type(reps, QString::number(before.size()));
  EXPECT_EQ(block.elements, before);  // what the redone edit hid
}

TEST_F(OneKind, AnExcitationFeedsNoMoreBridgesThanThereAre) {
  bench.openExample("bridge_monitoring");
  auto& window = dynamic_cast<ui::BlockWindow&>(bench.open(7));
  support::type(controlOf<ui::NumberBox>(window, "Reps:"), "4");
  support::type(controlOf<ui::NumberBox>(window, "Bridges each:"), "3");
  window.accept();
  EXPECT_EQ(bench.project().block(BlockKind::bridge, 1).ExciteReps, 3);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  auto& again = dynamic_cast<ui::BlockWindow&>(bench.open(7));
  support::type(controlOf<ui::NumberBox>(again, "Reps:"), "2");
  again.accept();
  EXPECT_EQ(bench.project().block(BlockKind::bridge, 1).ExciteReps, 2);
}

TEST_F(OneKind, ChannelsShowTheScalingThatCounts) {
  ui::BlockWindow& window = open(4);
  support::type(controlOf<ui::NumberBox>(window, "Multiplier:"), "6");
  auto& channels = controlOf<ui::SheetView>(window, "channels");
  constexpr int multiplier = 3, offset = 4, own = 5;
  const auto cell = [&](int row, int column) {
    return ui::utf8(channels.model()->index(row, column).data().toString());
  };
  const auto paste = [&](int row, int column, const char* text) {
    channels.setCurrentIndex(channels.model()->index(row, column));
    channels.pasteText(text);
  };
  const auto row = [&](int n) {
    return cell(n, multiplier) + " " + cell(n, offset) + " " + cell(n, own);
  };
  EXPECT_EQ(row(0), "6 0 no");
  paste(0, multiplier, "6\n");  // as shown
  EXPECT_EQ(row(0), "6 0 no");
  paste(0, own, "yes\n");
  EXPECT_EQ(row(0), "6 0 yes");
  paste(1, offset, "2\n");
  EXPECT_EQ(row(1), "6 2 yes");
  paste(1, own, "no\n");
  EXPECT_EQ(row(1), "6 0 no");
  paste(1, multiplier, "1\t0\tyes\n");  // what a channel has that nobody scaled
  EXPECT_EQ(row(1), "1 0 yes");
  paste(1, multiplier, "7\t1\tno\n");
  EXPECT_EQ(row(1), "6 0 no");
}

/// The table that another program wrote goes to every channel that it names.
TEST_F(OneKind, TakeAChannelTable) {
  ui::BlockWindow& window = open(4);
  const model::Project before = window.working();
  auto& channels = controlOf<ui::SheetView>(window, "channels");
  channels.pasteText("kind,block,element,alias\nvoltage,1,1,Here\nthermocouple,1,1,\"There\"\n");
  EXPECT_EQ(window.working().block(BlockKind::voltage, 1).elements[0].AliasName, "Here");
  EXPECT_EQ(window.working().block(BlockKind::thermocouple, 1).elements[0].AliasName, "There");
  window.undo();
  EXPECT_EQ(window.working(), before);
  channels.pasteText("kind\tblock\telement\talias\nvoltage\t1\t999\tHere\n");
  EXPECT_EQ(window.working(), before);
  EXPECT_TRUE(window.hint().startsWith("Nothing was pasted. Line 2: "))
      << window.hint().toStdString();
}

}  // namespace
