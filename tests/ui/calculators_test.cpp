#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "control_bench.h"
#include "ui/block_window.h"
#include "ui/frm_calc_mult_off.h"
#include "ui/frm_calc_mv_per_volt.h"
#include "ui/frm_calc_pot.h"
#include "ui/frm_flow_calc.h"
#include "ui/frm_more_spd_calc.h"
#include "ui/frm_rpm_calc.h"
#include "ui/frm_rs_calc.h"
#include "ui/frm_spd_calc.h"
#include "ui/sheet.h"

namespace {

using model::BlockKind;
using ports::Answer;
using ports::Message;
using support::ControlBench;
using support::controlOf;

constexpr int voltage = 4, bridge = 7, filter = 8, pulse = 9;

class Calculators : public testing::Test {
 protected:
  Calculators() { bench.openExample("everything_at_once"); }

  /// The calculator that a button of a measurement window opens.
  template <class Calculator>
  Calculator& open(int window, const char* button) {
    owner = dynamic_cast<ui::BlockWindow*>(&bench.open(window));
    controlOf<QPushButton>(*owner, button).click();
    auto* found = owner->findChild<Calculator*>();
    if (found == nullptr) throw std::runtime_error("no calculator");
    calculator = found;
    support::keepPicture(*found, found->objectName());
    return *found;
  }
  void enter(const char* caption, const QString& text) {
    auto& box = controlOf<QLineEdit>(*calculator, caption);
    support::type(box, text);
    Q_EMIT box.editingFinished();  // as when the focus goes on
  }
  void click(const char* caption) { controlOf<QAbstractButton>(*calculator, caption).click(); }
  [[nodiscard]] QString shown(const char* caption) const {
    return controlOf<QLabel>(*calculator, caption).text();
  }
  [[nodiscard]] QString typed(const char* caption) const {
    return controlOf<QLineEdit>(*calculator, caption).text();
  }
  [[nodiscard]] const model::MeasurementBlock& block(BlockKind kind) const {
    return owner->working().block(kind, 1);
  }

  Answer answer = Answer::ok;
  ControlBench bench{[this](const Message&) { return answer; }};
  ui::BlockWindow* owner = nullptr;
  ui::SetupWindow* calculator = nullptr;
};

TEST_F(Calculators, TwoPointsGiveALineForTheBlock) {
  open<ui::frmCalcMultOff>(voltage, "X-Y calculator...");
  EXPECT_EQ(calculator->windowTitle(), "Volt/Volt X-Y Calculator");
  enter("Lowest Input mV:", "0");
  enter("Highest Input mV:", "100");
  enter("Lowest output:", "-5");
  enter("Highest output:", "45");
  enter("Units:", "kN");
  EXPECT_EQ(shown("Multiplier:"), "0.5");
  EXPECT_EQ(shown("Offset:"), "-5.0");
  enter("X:", "200");  // beyond the highest
  EXPECT_EQ(typed("X:"), "100.0");
  EXPECT_EQ(typed("Y:"), "45.0");
  enter("Y:", "0");
  EXPECT_EQ(typed("X:"), "10.0");
  enter("Highest Input mV:", "0");  // no line
  EXPECT_EQ(shown("Multiplier:"), "-");
  enter("Highest Input mV:", "100");
  calculator->accept();
  EXPECT_EQ(block(BlockKind::voltage).DefaultMult, 0.5);
  EXPECT_EQ(block(BlockKind::voltage).DefaultOffset, -5);
  EXPECT_EQ(block(BlockKind::voltage).Units, "kN");
  owner->undo();
  EXPECT_EQ(owner->working(), bench.project());  // one edit
}

TEST_F(Calculators, AreFiledWithTheProject) {
  answer = Answer::no;
  open<ui::frmRsCalc>(voltage, "Resistance calculator...");
  enter("Rf:", "1500");
  click("kOhms");
  EXPECT_EQ(shown("Multiplier:"), "1.5");
  calculator->accept();
  owner->accept();
  bench.control->SaveDldFile();
  bench.control->OpenFile(bench.control->CurrentFileName());
  EXPECT_EQ(bench.project().calculators.rs, (model::ResistanceInputs{"1500", "kOhms"}));
  EXPECT_EQ(bench.project().block(BlockKind::voltage, 1).DefaultMult, 1.5);
  EXPECT_EQ(bench.project().block(BlockKind::voltage, 1).Units, "kOhms");
}

TEST_F(Calculators, ReplaceWhatWasRefusedInTheBox) {
  auto& window = bench.open(pulse);
  auto& multiplier = controlOf<ui::NumberBox>(window, "Multiplier:");
  support::type(multiplier, "abc");
  open<ui::frmRPMCalc>(pulse, "RPM calculator...");
  enter("Pulses per revolution:", "24");
  calculator->accept();
  EXPECT_EQ(multiplier.text(), "2.5");
  EXPECT_TRUE(window.hint().isEmpty() || !window.hint().contains("abc"));
}

TEST_F(Calculators, WithoutAResultOrWithCancelChangeNothing) {
  const model::Project before = bench.project();
  open<ui::frmRPMCalc>(pulse, "RPM calculator...");
  for (const char* useless : {"", "0", "abc"}) {
    SCOPED_TRACE(useless);
    enter("Pulses per revolution:", useless);
    EXPECT_EQ(shown("Multiplier:"), "-");
  }
  enter("Pulses per revolution:", QString::fromStdString(before.calculators.rpm.Pulses));
  calculator->reject();
  EXPECT_EQ(owner->working(), before);
}

TEST_F(Calculators, SensitivitySolvesForWhatIsClicked) {
  open<ui::frmCalcmVPerVolt>(bridge, "mV/V calculator...");
  EXPECT_EQ(calculator->windowTitle(), "Volt/Volt Calculator");
  enter("Full scale output:", "2");
  enter("Rated capacity:", "100");
  EXPECT_EQ(shown("Multiplier (M):"), "50.000000");
  enter("Excitation, mV (E):", "5000");
  enter("Units (U):", "10");
  click("Calculate V");
  EXPECT_EQ(typed("Sensor output, mV (V):"), "1.0");
  EXPECT_EQ(shown("Formula:"), "V = U * (E / 1000) / M");
  enter("Units (U):", "0");
  click("Calculate E");
  EXPECT_EQ(typed("Excitation, mV (E):"), "ERROR");
}

TEST_F(Calculators, SensitivityAsksAboutTooMuchExcitation) {
  open<ui::frmCalcmVPerVolt>(bridge, "mV/V calculator...");
  enter("Full scale output:", "2");
  enter("Rated capacity:", "100");
  enter("Excitation, mV (E):", "6000");
  answer = Answer::yes;
  calculator->accept();
  EXPECT_TRUE(calculator->isVisible());
  ASSERT_EQ(bench.messages.titles(), (std::vector<std::string>{"VALUE TOO LARGE"}));
  EXPECT_EQ(bench.messages.shown.back().text,
            "Excitation voltage is 6000 mV which is greater than the 5000 mV limit of the logger."
            "\r\nDo you want to go back and edit the values?");
  EXPECT_EQ(bench.messages.shown.back().buttons, ports::Buttons::yesNo);
  enter("Excitation, mV (E):", "4000");
  calculator->accept();
  EXPECT_FALSE(calculator->isVisible());
  EXPECT_EQ(block(BlockKind::bridge).Excite, 4000);
  EXPECT_EQ(block(BlockKind::bridge).DefaultMult, 50);
}

TEST_F(Calculators, SensitivityRefusesWhatIsNoExcitation) {
  open<ui::frmCalcmVPerVolt>(bridge, "mV/V calculator...");
  const double before = block(BlockKind::bridge).Excite;
  enter("Excitation, mV (E):", "4000 mV");
  calculator->accept();
  ASSERT_TRUE(calculator->isVisible());
  EXPECT_TRUE(calculator->hint().contains("enter mV without their unit"));
  enter("Excitation, mV (E):", " ");
  enter("Full scale output:", "2");
  enter("Rated capacity:", "100");
  enter("Units (U):", "-10");
  enter("Sensor output, mV (V):", "1");
  click("Calculate E");
  EXPECT_EQ(typed("Excitation, mV (E):"), "-5000.0");
  calculator->accept();
  EXPECT_TRUE(calculator->isVisible());
  EXPECT_EQ(bench.messages.titles(), (std::vector<std::string>{"EXCITATION"}));
  enter("Excitation, mV (E):", " ");
  calculator->accept();
  EXPECT_EQ(block(BlockKind::bridge).Excite, before);
  EXPECT_EQ(block(BlockKind::bridge).DefaultMult, 50);
}

TEST_F(Calculators, PotentiometersHaveTheirOwnInputs) {
  open<ui::frmCalcPot>(bridge, "Potentiometer calculator...");
  EXPECT_EQ(calculator->windowTitle(), "Potentiometer Calculator");
  enter("Highest output:", "360");
  EXPECT_EQ(calculator->working().calculators.pot.YMax, "360");
  EXPECT_EQ(calculator->working().calculators.multOff, bench.project().calculators.multOff);
}

TEST_F(Calculators, FlowInOtherUnitsThanTheFactor) {
  open<ui::frmFlowCalc>(pulse, "Flow calculator...");
  enter("Calibration factor:", "10");
  click("Pulses per Liter");
  click("Gals/Min");
  EXPECT_EQ(shown("Multiplier:"), "1.585032");
  enter("Pulses per second:", "2");
  EXPECT_EQ(shown("That is:"), "3.17");
  calculator->accept();
  EXPECT_EQ(block(BlockKind::pulse).Units, "Gals/Min");
  EXPECT_NEAR(block(BlockKind::pulse).DefaultMult, 6 / 3.785411784, 1e-12);
}

TEST_F(Calculators, SpeedFromWheelAndGears) {
  auto& window = open<ui::frmSpdCalc>(pulse, "Speed calculator...");
  enter("Pulses per revolution:", "10");
  enter("Wheel size:", "100");
  click("Circumference");
  click("Centimeters");
  auto& gears = controlOf<ui::SheetView>(window, "Gear boxes:");
  gears.setCurrentIndex(gears.model()->index(0, 0));
  gears.pasteText("2\n2.5\n");
  click("M/Sec");
  EXPECT_EQ(shown("Distance, metric:"), "2.0");
  EXPECT_EQ(shown("Count, metric:"), "50,000.0");
  EXPECT_EQ(shown("Multiplier:"), "0.02");
  EXPECT_EQ(window.working().calculators.speed.GearRatio, (std::vector<std::string>{"2", "2.5"}));
  gears.pasteText("\n\n");
  EXPECT_TRUE(window.working().calculators.speed.GearRatio.empty());
}

TEST_F(Calculators, SpeedFromPulsesOfADistance) {
  open<ui::frmMoreSpdCalc>(pulse, "Speed by distance...");
  enter("Pulses:", "1000");
  click("Kilometer");
  click("K/Hour");
  enter("Pulses per second:", "10");
  EXPECT_EQ(shown("Multiplier:"), "3.6");
  EXPECT_EQ(shown("That is:"), "36.0 K/Hour");
}

TEST_F(Calculators, TakeTheirTitleFromTheBlock) {
  owner = dynamic_cast<ui::BlockWindow*>(&bench.open(filter));
  owner->chooseBlock(2);  // FFT
  open<ui::frmCalcMultOff>(filter, "X-Y calculator...");
  EXPECT_EQ(calculator->windowTitle(), "FFT Multiplier Calculator");
}

}  // namespace
