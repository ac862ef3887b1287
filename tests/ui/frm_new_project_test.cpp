#include "ui/frm_new_project.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <set>

#include "control_bench.h"
#include "support_qt/palettes.h"
#include "support_qt/silent_controls.h"
#include "ui/number_box.h"

namespace {

using control::PlanStep;
using model::BlockKind;
using model::ModuleKindIndex;
using ports::Answer;
using support::ControlBench;
using support::controlOf;

class NewProject : public testing::Test {
 protected:
  NewProject() {
    window = bench.control->openNewProject();
    if (!QTest::qWaitForWindowActive(window)) throw std::runtime_error("window stays inactive");
  }
  void pasteList(const QString& text) {
    controlOf<QPlainTextEdit>(*window, "list").setPlainText(text);
  }
  [[nodiscard]] QString notes() const { return controlOf<QLabel>(*window, "notes").text(); }

  Answer answer = Answer::yes;
  ControlBench bench{[this](const ports::Message&) { return answer; }};
  ui::frmNewProject* window = nullptr;
};

/// A person goes through the steps; the project checks clean and its program has no faults.
TEST_F(NewProject, IsPlannedStepByStep) {
  support::type(controlOf<ui::NumberBox>(*window, "Scan interval:"), "2");
  support::pasteAt(*window, "Modules", 1, 1, "1");
  window->goTo(PlanStep::kinds);
  support::pasteAt(*window, "Kinds of channels", 0, 1, "12");
  window->goTo(PlanStep::list);
  pasteList(
      "kind,name,units,multiplier,offset\nvoltage,Inlet,bar,0.25,-10\nvoltage,Outlet,bar\n"
      "bridge,Beam,uStrain,,2.1\n");
  window->goTo(PlanStep::tables);
  support::type(controlOf<ui::NumberBox>(*window, "Output tables:"), "2");
  support::pasteAt(*window, "Tables", 0, 1,
                   "Fast\t2\tSec\tsample\nSlow\t10\tMin\taverage+maximum\n");
  EXPECT_TRUE(notes().contains("the channels need 2 modules 7121/22 in place of 1"))
      << notes().toStdString();
  window->accept();
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(bench.messages.shown.empty());

  const model::Project& project = bench.project();
  EXPECT_EQ(project.block(BlockKind::thermocouple, 1).Reps, 12);
  EXPECT_EQ(project.block(BlockKind::voltage, 1).elements[1].AliasName, "Outlet");
  EXPECT_EQ(project.configuration.quantity(ModuleKindIndex::excitation7131), 1);
  EXPECT_EQ(project.tables[1].TableName, "Slow");
  EXPECT_TRUE(bench.control->session().changed());
  EXPECT_EQ(support::faultsOf(project), "");
  bench.control->SaveDldFile();
  for (const std::string& title : bench.messages.titles())
    EXPECT_EQ(title, "FLOATING GROUND WARNING");
}

TEST_F(NewProject, TellsWhereSomethingIsInTheWay) {
  window->goTo(PlanStep::tables);
  support::pasteAt(*window, "Kinds of channels", 3, 1, "50");
  window->accept();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(controlOf<QTabWidget>(*window, "steps").currentIndex(), 1);
  EXPECT_TRUE(notes().startsWith(
      "NOT POSSIBLE: 50 isolated channels are more than 7 blocks hold; leave 8 out."));
  support::pasteAt(*window, "Kinds of channels", 3, 1, "x");
  EXPECT_EQ(window->planned().obstacles.size(), 1U);
  support::pasteAt(*window, "Kinds of channels", 3, 1, "5");
  EXPECT_TRUE(window->planned().obstacles.empty());
}

TEST_F(NewProject, LeavesLinesOutOnlyWhenAsked) {
  pasteList("voltage\tInlet\tbar\nvoltmeter\tOutlet\n");
  EXPECT_TRUE(controlOf<QPlainTextEdit>(*window, "faults")
                  .toPlainText()
                  .startsWith("line 2: 'voltmeter' is no kind"));
  answer = Answer::no;
  window->accept();
  EXPECT_EQ(bench.messages.shown.back(),
            (ports::Message{.title = "CHANNEL LIST",
                            .text = "Lines of the channel list that can't be read: 1.\r\nMake the "
                                    "project without them?",
                            .icon = ports::Icon::question,
                            .buttons = ports::Buttons::yesNo,
                            .defaultButton = Answer::no}));
  EXPECT_TRUE(window->isVisible());
  answer = Answer::yes;
  window->accept();
  EXPECT_EQ(bench.project().block(BlockKind::voltage, 1).Reps, 1);
}

TEST_F(NewProject, AsksBeforeEscapeForgetsThePlan) {
  QTest::keyClick(window, Qt::Key_Escape);
  EXPECT_FALSE(window->isVisible());
  EXPECT_TRUE(bench.messages.shown.empty());
  window = bench.control->openNewProject();
  const model::Project before = bench.project();
  pasteList("voltmeter\tOutlet\n");
  for (const Answer each : {Answer::cancel, Answer::no}) {
    answer = each;
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(window->isVisible(), each == Answer::cancel);
  }
  EXPECT_EQ(bench.messages.titles(), std::vector<std::string>(2, "NEW PROJECT FROM A LIST"));
  EXPECT_EQ(bench.project(), before);
}

TEST_F(NewProject, KeepsAChangedProjectUnlessAsked) {
  model::Project changed = bench.project();
  changed.tables[0].TableOn = true;
  bench.control->session().edit(changed, "table");
  answer = Answer::cancel;
  window->accept();
  EXPECT_EQ(bench.messages.titles(), std::vector<std::string>{"QUIT GENERATOR"});
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(bench.project(), changed);
  answer = Answer::no;
  window->accept();
  bench.control->session().undo();
  EXPECT_FALSE(bench.control->session().changed());
}

TEST_F(NewProject, IsPicturedInLightAndDark) {
  const QPalette usual = QApplication::palette();
  for (const bool dark : {false, true}) {
    if (dark) QApplication::setPalette(support::darkPalette());
    support::pasteAt(*window, "Kinds of channels", 0, 1, dark ? "400" : "12");
    pasteList(
        "kind,name,units,multiplier,offset\nvoltage,Inlet,bar,0.25,-10\nvoltage,Outlet,bar\n"
        "thermocouple,Oven1,Deg_C\nthermocouple,Oven2,Deg_C\nbridge,Beam,uStrain,,2.1\n" +
        QString(dark ? "voltage,Top level,m\nisolated,Cell1,Volts\n" : "isolated,Cell1,Volts\n"));
    for (const PlanStep step :
         {PlanStep::logger, PlanStep::kinds, PlanStep::list, PlanStep::tables}) {
      window->goTo(step);
      EXPECT_EQ(support::silentControls(*window), std::set<QString>());
      support::keepPicture(*window, QString("frmNewProject%1_%2")
                                        .arg(static_cast<int>(step) + 1)
                                        .arg(dark ? "dark" : "light"));
    }
    QApplication::setPalette(usual);
  }
}

}  // namespace
