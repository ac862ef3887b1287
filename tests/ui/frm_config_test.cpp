#include "ui/frm_config.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

#include "control_bench.h"
#include "generator/program_writer.h"
#include "support_qt/palettes.h"
#include "ui/number_box.h"

namespace {

using model::BlockKind;
using model::ModuleKindIndex;
using ports::Answer;
using ports::Buttons;
using ports::Icon;
using ports::Message;
using support::ControlBench;
using support::controlOf;
using Strings = std::vector<std::string>;

constexpr int hardware = 0;
constexpr std::size_t volts = 0, powerOff = 2, saver = 3, monitor = 5;

Message told(const char* title, const char* text) { return {.title = title, .text = text}; }

Message asked(const char* title, const std::string& text) {
  return {.title = title, .text = text, .buttons = Buttons::yesNo, .defaultButton = Answer::no};
}

class Hardware : public testing::Test {
 protected:
  void open(const std::string& example, const std::function<void(model::Project&)>& change = {}) {
    bench.openExample(example);
    if (change) {
      model::Project project = bench.project();
      change(project);
      fitLists(project);
      bench.control->session().edit(std::move(project), "before");
    }
    window = &bench.open<ui::frmConfig>(hardware);
  }
  ui::SetupWindow& panel(std::size_t number) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();  // the last panel has left the screen
    window->openPanel(number);
    ui::SetupWindow* inner = window->findChild<ui::SetupWindow*>();
    if (inner == nullptr) throw std::runtime_error("no panel");
    inner->activateWindow();
    if (!QTest::qWaitForWindowActive(inner)) throw std::runtime_error("panel stays inactive");
    return *inner;
  }
  /// Types a count and answers with what its box shows then.
  std::string count(const char* box, const QString& typed) {
    auto& edit = controlOf<QLineEdit>(*window, box);
    support::type(edit, typed);
    return ui::utf8(edit.text());
  }
  [[nodiscard]] const model::LoggerConfiguration& working() const {
    return window->working().configuration;
  }
  [[nodiscard]] const Message& last() const { return bench.messages.shown.back(); }

  Answer answer = Answer::yes;
  ControlBench bench{[this](const Message& message) {
    return message.buttons == Buttons::yesNo ? answer : Answer::ok;
  }};
  ui::frmConfig* window = nullptr;
};

void choose(QWidget& window, const char* caption, const QString& text) {
  auto& box = controlOf<QComboBox>(window, caption);
  ASSERT_GE(box.findText(text), 0) << text.toStdString();
  box.setCurrentIndex(box.findText(text));
  Q_EMIT box.activated(box.currentIndex());
}

TEST_F(Hardware, RefusesTheThirteenthModule) {
  open("empty_project");
  EXPECT_EQ(count("7121/7122 Analog Input", "x1-2"), "12");
  EXPECT_TRUE(bench.messages.shown.empty());
  for (const char* box : {"7131 Exitation", "Future"}) {
    SCOPED_TRACE(box);
    EXPECT_EQ(count(box, "1"), "0");
    EXPECT_EQ(last(), (Message{.title = "TOO MANY",
                               .text = "Total module count is limited to 12.",
                               .icon = Icon::exclamation,
                               .beep = true}));
  }
  EXPECT_EQ(count("7121/7122 Analog Input", "3"), "3");
  EXPECT_EQ(count("Future", "2"), "2");
  EXPECT_EQ(controlOf<QLabel>(*window, "total").text(), "TOTAL (3 fixed + 5 user selected)");
  const QString slots = controlOf<QWidget>(*window, "slots").accessibleDescription();
  EXPECT_TRUE(slots.contains("Slot 6: 7121/22. Slot 7: Future. Slot 8: Future. Slot 9: None"))
      << slots.toStdString();
  window->accept();
  EXPECT_EQ(userModules(bench.project().configuration), 3);
}

TEST_F(Hardware, SaysWhatEachBoxCounts) {
  open("everything_at_once");
  const std::pair<const char*, const char*> helps[] = {
      {"CPU", "7104 CPU (1=7103, 2=7104)"},
      {"7151 PCMCIA Adaptor",
       "Enter the number of 7151 PCMCIA Adaptor modules installed in the Logger."},
      {"7131 Exitation", "Enter the number of 7131 Exitation modules installed in the Logger."},
      {"Future", "Enter the number of Future modules installed in the Logger."},
      {"TCMUX multiplexers:", "Enter the number of TCMUX Multiplexers connected to the logger."},
      {"CANIF devices:", "Enter the number of CANIF devices connected to the logger."}};
  for (const auto& [box, help] : helps)
    EXPECT_EQ(controlOf<QLineEdit>(*window, box).toolTip(), help) << box;
  EXPECT_EQ(
      controlOf<QWidget>(*window, "slots").toolTip(),
      "Module colors match description colors to indicate where modules should be installed.");
}

TEST_F(Hardware, AnEmptyBoxIsNoneWhenItIsLeft) {
  open("empty_project");
  count("7127 High Voltage", "2");
  auto& box = controlOf<QLineEdit>(*window, "7127 High Voltage");
  box.setFocus();
  box.selectAll();
  QTest::keyClick(&box, Qt::Key_Backspace);
  EXPECT_EQ(working().quantity(ModuleKindIndex::highVoltage7127), 2);
  window->accept();  // with the box still empty
  EXPECT_EQ(bench.project().configuration.quantity(ModuleKindIndex::highVoltage7127), 0);
}

TEST_F(Hardware, WarnsOfTheSupplyOfFourFilterModules) {
  open("empty_project");
  EXPECT_EQ(count("7125 Filtered Analog Input", "3"), "3");
  EXPECT_TRUE(bench.messages.shown.empty());
  EXPECT_EQ(count("7125 Filtered Analog Input", "4"), "4");
  EXPECT_EQ(last(), told("WARNING",
                         "A special power supply is required when the number of 7125 modules is "
                         "greater than 3.\r\n"
                         "Please call the Tervane Industrial Group for details."));
}

TEST_F(Hardware, AsksBeforeModulesInUseGo) {
  open("everything_at_once");
  const model::LoggerConfiguration before = working();
  const std::pair<const char*, const char*> cases[] = {
      {"7121/7122 Analog Input",
       "Reducing the number of 7121/22 modules will\r\n"
       "cause measurements made with this module type\r\n"
       "(voltages, thermocouples, TCMUX) to be removed\r\n"
       "when you save changes upon exiting this screen."},
      {"7131 Exitation",
       "Reducing the number of 7131 modules will cause all bridge\r\n"
       "measurements, digital ports and CAO outputs, and TCMUX blocks\r\n"
       "to be removed when you save changes upon exiting this screen."},
      {"7141/7142 Counter, Timer, I/O",
       "Reducing the number of 7141/42 modules will cause all pulse\r\n"
       "count measurements and Port setups for the affected slots to\r\n"
       "be removed when you save changes upon exiting this screen."},
      {"7127 High Voltage",
       "Reducing the number of 7127 modules will cause all high voltage\r\n"
       "measurements to be removed when you save changes upon exiting this screen."},
      {"7125 Filtered Analog Input",
       "Reducing the number of 7125 modules will cause all\r\n"
       "filtered measurements for the affected slots to be\r\n"
       "removed when you save changes upon exiting this screen."},
      {"7128 Isolation/High Common Mode",
       "Reducing the number of 7128 modules will cause all\r\n"
       "isolated measurements for the affected slots to be\r\n"
       "removed when you save changes upon exiting this screen."}};
  for (const auto& [box, removed] : cases) {
    SCOPED_TRACE(box);
    bench.messages.shown.clear();
    answer = Answer::no;
    EXPECT_NE(count(box, "0"), "0");
    EXPECT_EQ(working(), before);
    answer = Answer::yes;
    EXPECT_EQ(count(box, "0"), "0");
    const Message warning =
        asked("WARNING", std::string(removed) + "\r\nARE YOU SURE YOU WANT TO PROCEED?");
    EXPECT_EQ(bench.messages.shown, (std::vector{warning, warning}));
    window->undo();
    EXPECT_EQ(working(), before);
  }
}

TEST_F(Hardware, SwitchesTheCpuAndAsksOnce) {
  open("everything_at_once");
  answer = Answer::no;
  EXPECT_EQ(count("CPU", "13"), "2");
  EXPECT_EQ(last(),
            asked("MEASUREMENTS DISABLED",
                  "Use of the M7103 CPU will disable all TCMUX measurements, M7128/Isolated\r\n"
                  " measurements, and CANIF Tx/Rx measurements. Continue?"));
  EXPECT_EQ(bench.messages.shown.size(), 1U);
  QApplication::clipboard()->setText("12");
  auto& box = controlOf<QLineEdit>(*window, "CPU");
  box.setFocus();
  box.paste();
  EXPECT_EQ(last().text, "Invalid CPU code.");
  answer = Answer::yes;
  EXPECT_EQ(count("CPU", "1"), "1");
  EXPECT_EQ(box.toolTip(), "7103 CPU (1=7103, 2=7104)");

  bench.messages.shown.clear();
  window->accept();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(bench.messages.titles(), Strings{"CHANGE 7125 MEASUREMENT"});
  EXPECT_FALSE(inUse(bench.project(), BlockKind::isolated, 1));
  EXPECT_TRUE(bench.control->CurBasicFileName().endsWith(".KP7"));
}

/// Blocks and CAN items that the 7103 can't measure sleep until a 7104 is back.
TEST_F(Hardware, WhatThe7103LacksComesBackWithThe7104) {
  open("everything_at_once");
  const model::Project before = bench.project();
  for (const char* cpu : {"1", "2"}) {
    count("CPU", cpu);
    window->accept();
    ASSERT_FALSE(window->isVisible());
    EXPECT_EQ(bench.project().set(BlockKind::isolated), before.set(BlockKind::isolated));
    EXPECT_EQ(bench.project().set(BlockKind::tcmux), before.set(BlockKind::tcmux));
    EXPECT_EQ(bench.project().can, before.can);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    window = &bench.open<ui::frmConfig>(hardware);
    controlOf<ui::NumberBox>(*window, "Reference integration:").setFocus();
    support::type(controlOf<ui::NumberBox>(*window, "Reference integration:"), "50");
    bench.messages.shown.clear();
    window->accept();
    EXPECT_TRUE(bench.messages.shown.empty());
    EXPECT_EQ(bench.project().set(BlockKind::isolated), before.set(BlockKind::isolated));
    EXPECT_EQ(bench.project().set(BlockKind::tcmux), before.set(BlockKind::tcmux));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    window = &bench.open<ui::frmConfig>(hardware);
  }
}

TEST_F(Hardware, MoreModulesRemoveNothingThatHadNoRoom) {
  open("battery_test", [](model::Project& project) {
    project.configuration.quantity(ModuleKindIndex::isolation7128) = 1;
  });
  const model::BlockSet blocks = bench.project().set(BlockKind::isolated);
  count("7128 Isolation/High Common Mode", "2");
  window->accept();
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(bench.messages.shown.empty());
  EXPECT_EQ(bench.project().set(BlockKind::isolated), blocks);
}

/// Modules taken away while nothing used them are asked about with the CPU that uses them.
TEST_F(Hardware, AsksAboutModulesOfBlocksThatWakeUp) {
  for (const bool cpuFirst : {false, true}) {
    SCOPED_TRACE(cpuFirst);
    open("battery_test",
         [](model::Project& project) { project.configuration.quantity(ModuleKindIndex::cpu) = 1; });
    const char* const box = "7128 Isolation/High Common Mode";
    bench.messages.shown.clear();
    answer = Answer::no;
    if (cpuFirst) count("CPU", "2");
    const std::string modules = count(box, "0");
    EXPECT_EQ(modules == "0", !cpuFirst);
    if (!cpuFirst) count("CPU", "2");
    EXPECT_EQ(working().quantity(ModuleKindIndex::cpu), cpuFirst ? 2 : 1);
    ASSERT_EQ(bench.messages.shown.size(), 1U);
    EXPECT_TRUE(last().text.starts_with("Reducing the number of 7128 modules"));
    window->reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

TEST_F(Hardware, CancelAsksNothingAboutAnEmptyBox) {
  open("everything_at_once");
  auto& box = controlOf<QLineEdit>(*window, "7127 High Voltage");
  box.setFocus();
  box.selectAll();
  QTest::keyClick(&box, Qt::Key_Backspace);
  for (auto* each : window->findChildren<QPushButton*>())
    if (each->text() == "Cancel") QTest::mouseClick(each, Qt::LeftButton);
  EXPECT_TRUE(bench.messages.shown.empty());
  EXPECT_FALSE(window->isVisible());
}

TEST_F(Hardware, TurnsSpectraIntoSamplesOnThe7103) {
  open("vibration");
  count("CPU", "1");
  bench.messages.shown.clear();
  window->accept();
  EXPECT_EQ(bench.messages.shown,
            std::vector{told("CHANGE 7125 MEASUREMENT",
                             "FFT Spectra are not supported in the 7103 CPU.\r\n"
                             "Your 7125 Filter Module FFT spectra measurements will be changed to "
                             "be Individual Samples.Please open the FFT/Filter screen to confirm "
                             "that the scan interval and new table settings will meet your "
                             "needs.")});
  EXPECT_EQ(bench.project().filterSlots[1].FFTType, 0);
}

TEST_F(Hardware, HidesThe7104FromALegacyHost) {
  bench.control->setUseLegacy(true);
  open("empty_project");
  EXPECT_EQ(count("CPU", "2"), "1");
  EXPECT_FALSE(controlOf<QLineEdit>(*window, "TCMUX multiplexers:").isVisible());
  EXPECT_FALSE(controlOf<QLineEdit>(*window, "7128 Isolation/High Common Mode").isVisible());
}

TEST_F(Hardware, RefusesMultiplexersForTheFirstThingThatIsMissing) {
  open("empty_project", [](model::Project& project) {
    project.configuration.quantity(ModuleKindIndex::cpu) = 2;
    model::MeasurementBlock& bridge = project.block(BlockKind::bridge, 1);
    bridge.Reps = 8;
    bridge.Style = 2;
    project.set(BlockKind::bridge).BlockCount = 1;
    project.configuration.quantity(ModuleKindIndex::excitation7131) = 1;
    project.configuration.quantity(ModuleKindIndex::analog7121) = 1;
  });
  const char* tcmux = "TCMUX multiplexers:";
  EXPECT_EQ(count(tcmux, "1"), "0");
  EXPECT_EQ(last(), told("NOT ENOUGH EXCITATION CHANNELS",
                         "Please Add More 7131 Modules or Remove Some Measurements."));
  count("7131 Exitation", "2");
  EXPECT_EQ(count(tcmux, "6"), "0");
  EXPECT_EQ(last(), told("NOT ENOUGH DIFFERENTIAL CHANNELS",
                         "Please Add More 7121/7122 Modules, or Remove Some Measurements."));
  count("7121/7122 Analog Input", "4");
  EXPECT_EQ(count(tcmux, "15"), "1");  // its first digit fits
  EXPECT_EQ(last(), told("NOT ENOUGH DIGITAL CONTROL CHANNELS",
                         "Please Add More 7131 Modules or Remove Some Port measurements."));
  count("7131 Exitation", "0");
  EXPECT_EQ(count(tcmux, "2"), "1");
  EXPECT_EQ(last(), told("NO 7131 MODULES", "Please Add 7131 Modules!"));
  bench.messages.shown.clear();
  EXPECT_EQ(count("CANIF devices:", "2"), "0");
  EXPECT_TRUE(bench.messages.shown.empty());
  EXPECT_EQ(count("CANIF devices:", "1"), "1");
}

TEST_F(Hardware, TakingTheCardAwayEndsBurstAndMovesTables) {
  open("pump_house", [](model::Project& project) {
    project.configuration.TcConfigOpts[0] = 1;
    project.scan.ScanMode = 1;
    project.tables[0].TableLocation = 3;
  });
  ui::SetupWindow& card = panel(ui::frmConfig::cardPanel);
  auto& size = controlOf<QLineEdit>(card, "Size:");
  EXPECT_EQ(size.text(), "32");
  for (const char* wrong : {"2049", "1.5", "-1", "", "big"}) {
    SCOPED_TRACE(wrong);
    support::type(size, wrong);
    card.accept();
    EXPECT_TRUE(card.isVisible());
    EXPECT_EQ(card.hint(), "Enter a value from 0 to 2048");
  }
  support::type(size, "32");
  controlOf<QRadioButton>(card, "Gbytes").click();
  EXPECT_EQ(size.text(), "0.03125");
  support::type(size, "1.5");
  EXPECT_EQ(card.working().configuration.SizeCardA, 1536);
  support::type(size, "0");
  answer = Answer::no;
  card.accept();
  EXPECT_EQ(last(), asked("WARNING", "All Table Ouputs Will be On RAM, Continue?"));
  EXPECT_TRUE(card.isVisible());
  answer = Answer::yes;
  card.accept();
  EXPECT_EQ(working().SizeCardA, 0);
  bench.messages.shown.clear();
  window->accept();
  EXPECT_EQ(bench.messages.shown,
            std::vector{told("BURST PROBLEM",
                             "S-Ram card has been removed.\r\n"
                             "Scan is being changed from Burst to Continuous.")});
  EXPECT_EQ(bench.project().scan.ScanMode, 0);
  EXPECT_EQ(bench.project().tables[0].TableLocation, 1);
}

TEST_F(Hardware, StoresTheBatteryInTablesThatAreOn) {
  open("everything_at_once");
  ui::SetupWindow& battery = panel(volts);
  auto& tables = controlOf<ui::SheetView>(battery, "tables");
  tables.setCurrentIndex(tables.model()->index(1, 1));
  tables.pasteText("sample+level crossing\n");
  EXPECT_TRUE(battery.hint().contains("level crossing")) << battery.hint().toStdString();
  tables.pasteText("minimum+average\n");
  choose(battery, "Data type:", "IEEE4");
  battery.accept();
  EXPECT_EQ(window->working().powerOut.sets[0].Table[1], 4 + 8);
  window->accept();
  EXPECT_EQ(bench.project().powerOut.sets[0].DataResolution, "IEEE4");
  EXPECT_NE(SAVEDLD::generate(bench.project(), {}).text.find("Minimum(1,BattVolt,IEEE4"),
            std::string::npos);
}

TEST_F(Hardware, APersonSetsUpAStationThatSwitchesItselfOff) {
  open("empty_project");
  count("7121/7122 Analog Input", "2");

  ui::SetupWindow& off = panel(powerOff);
  controlOf<QCheckBox>(off, "Conditional power off").click();
  controlOf<QCheckBox>(off, "Measurement").click();
  auto& variable = controlOf<QComboBox>(off, "Variable:");
  EXPECT_GE(variable.findText("BattVolt"), 0);  // offered, though nothing was chosen yet
  variable.setEditText("BattVolt");
  choose(off, "Comparison:", " <");
  support::type(controlOf<ui::NumberBox>(off, "Value:"), "11");
  support::type(controlOf<ui::NumberBox>(off, "Off for:"), "5");
  choose(off, "Off unit:", "minutes");
  controlOf<QCheckBox>(off, "Time").click();
  controlOf<QCheckBox>(off, "Hour").click();
  support::type(controlOf<ui::NumberBox>(off, "Off hour:"), "18");
  controlOf<QCheckBox>(off, "Week Day").click();
  choose(off, "Off week day:", "Sat");
  EXPECT_EQ(controlOf<QLabel>(off, "Off at:").text(), "---- --- -- Sat 18:--:--");
  EXPECT_EQ(controlOf<QCheckBox>(off, "Hour").toolTip(), "Press to turn off Hour.");
  off.accept();
  EXPECT_EQ(working().PowerOffLine, "If BattVolt <11 Then PowerOff (0,5,Min)");
  EXPECT_EQ(working().PowerOffString, "---- --- -- Sat 18:--:--");

  ui::SetupWindow& low = panel(saver);
  controlOf<QCheckBox>(low, "Default level").click();
  support::type(controlOf<ui::NumberBox>(low, "Trip level:"), "10.17");
  EXPECT_EQ(low.working().configuration.BattTripVolts, 10.5);
  support::type(controlOf<ui::NumberBox>(low, "Trip level:"), "12");
  controlOf<QCheckBox>(low, "Leave the logger off").click();
  controlOf<QCheckBox>(low, "Until manually powered on").click();
  low.accept();

  ui::SetupWindow& status = panel(monitor);
  controlOf<QCheckBox>(status, "Monitor status").click();
  controlOf<QComboBox>(status, "Status Field:").setEditText("BattVolt");
  controlOf<QPushButton>(status, "Add line").click();
  EXPECT_EQ(status.hint(), "A line needs a field, a comparison, a value and a flag.");
  choose(status, "Comp:", " <=");
  support::type(controlOf<QLineEdit>(status, "Value:"), "11.8");
  choose(status, "Flag:", "Flag(3)");
  choose(status, "Set to:", "True");
  controlOf<QPushButton>(status, "Add line").click();
  auto& lines = controlOf<ui::SheetView>(status, "lines");
  EXPECT_EQ(lines.model()->rowCount(), 20);
  lines.setCurrentIndex(lines.model()->index(1, 0));
  lines.pasteText("BattVolt\t>\t14\tFlag(4) = True\n");
  const QString code =
      " If BattVolt <=11.8 Then\n       Flag(3) = True\n  End If\n"
      " If BattVolt >14 Then\n       Flag(4) = True\n  End If\n";
  EXPECT_EQ(controlOf<QPlainTextEdit>(status, "code").toPlainText(), code);
  status.accept();

  window->accept();
  EXPECT_TRUE(bench.control->SaveDldFile());
  const model::Project saved = bench.project();
  EXPECT_TRUE(bench.control->OpenFile(bench.control->CurrentFileName()));
  EXPECT_EQ(bench.project().configuration, saved.configuration);
  const std::string program = SAVEDLD::generate(bench.project(), {}).text;
  for (const char* line : {"If BattVolt <11 Then PowerOff (0,5,Min)",
                           "If StopTime(4) = 18 And StopTime(8) = 7 Then PowerOff (0,0,0)",
                           "If TripVolt <12 Then CountAvg", "If CountAvg >=5 Then PowerOff (0,0,0)",
                           "       Flag(4) = True"})
    EXPECT_NE(program.find(line), std::string::npos) << line;
}

TEST_F(Hardware, DoneAddsTheStatusLineThatStandsInTheBoxes) {
  open("empty_project");
  ui::SetupWindow& status = panel(monitor);
  controlOf<QComboBox>(status, "Status Field:").setEditText("BattVolt");
  support::type(controlOf<QLineEdit>(status, "Value:"), "11.8");
  status.accept();
  EXPECT_TRUE(status.isVisible());
  ASSERT_EQ(bench.messages.titles(), Strings{"NEW LINE"});
  EXPECT_NE(last().text.find("a comparison, a value and a flag"), std::string::npos);
  choose(status, "Flag:", "Flag(3)");
  status.accept();
  EXPECT_FALSE(status.isVisible());
  ASSERT_EQ(working().Status.size(), 1U);
  EXPECT_EQ(working().Status[0][2], "11.8");
  EXPECT_EQ(bench.messages.shown.size(), 1U);
}

TEST_F(Hardware, PanelsArePicturedInLightAndDark) {
  const QPalette usual = QApplication::palette();
  open("everything_at_once");
  for (std::size_t number = 0; number < ui::frmConfig::panels; ++number) {
    for (const bool dark : {false, true}) {
      if (dark) QApplication::setPalette(support::darkPalette());
      ui::SetupWindow& inner = panel(number);
      support::keepPicture(inner, inner.objectName() + (dark ? "_dark" : "_light"));
      inner.reject();
      QApplication::setPalette(usual);
    }
  }
}

}  // namespace
