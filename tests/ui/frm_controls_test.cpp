#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include "control_bench.h"
#include "model/pick_list.h"
#include "ui/frm_calc_fields.h"
#include "ui/frm_excite.h"
#include "ui/frm_flags.h"
#include "ui/frm_histogram.h"
#include "ui/frm_ports.h"
#include "ui/mask_box.h"

namespace {

using model::BlockKind;
using model::ModuleKindIndex;
using support::ControlBench;
using support::controlOf;
using support::pasteAt;

enum Button { calcFields = 12, digitalPorts = 13, programFlags = 14, excitation = 15 };

model::CalculatedField fieldOf(const char* name, const char* expression) {
  model::CalculatedField field;
  field.CalcName = name;
  field.CalcExpress = expression;
  return field;
}

model::Condition above(const char* variable) {
  model::Condition condition;
  condition.MeasVar = variable;
  condition.Value = 5;
  return condition;
}

/// The windows of flags, ports, outputs and calculated fields, on a project with two voltages, a
/// 7131 in slot 5 and a 7141/42 in slot 6.
class Controls : public testing::Test {
 protected:
  Controls() {
    bench.openExample("empty_project");
    model::Project project = bench.project();
    for (const auto kind : {ModuleKindIndex::analog7121, ModuleKindIndex::excitation7131,
                            ModuleKindIndex::counter7141})
      project.configuration.quantity(kind) = 1;
    model::MeasurementBlock& block = project.block(BlockKind::voltage, 1);
    block.Reps = 2;
    block.elements.resize(2, model::defaultElement(BlockKind::voltage));
    block.elements[0].AliasName = "Level";
    project.set(BlockKind::voltage).BlockCount = 1;
    project.tables[0].TableOn = true;
    fitLists(project);
    bench.control->session().edit(std::move(project), "modules");
  }
  /// Done, save and open again: nothing is lost. Answers with the program.
  std::string keep(ui::SetupWindow& window) {
    window.accept();
    EXPECT_FALSE(window.isVisible()) << window.hint().toStdString();
    bench.control->SaveDldFile();
    const model::Project saved = bench.project();
    bench.control->OpenFile(bench.control->CurrentFileName());
    EXPECT_EQ(bench.project(), saved);
    EXPECT_EQ(support::faultsOf(saved), "");
    return SAVEDLD::generate(saved, {}).text;
  }
  static void expectLines(const std::string& program, std::initializer_list<const char*> lines) {
    for (const char* line : lines)
      EXPECT_NE(program.find(line), std::string::npos) << line << "\n"
                                                       << program.substr(program.find("BeginProg"));
  }
  static void choose(QWidget& window, const char* caption, const QString& text) {
    auto& box = controlOf<QComboBox>(window, caption);
    ASSERT_GE(box.findText(text), 0) << text.toStdString();
    box.setCurrentIndex(box.findText(text));
    Q_EMIT box.activated(box.currentIndex());
  }
  [[nodiscard]] static QString cell(QWidget& window, const char* sheet, int row, int column) {
    auto& view = controlOf<ui::SheetView>(window, sheet);
    return view.model()->index(row, column).data().toString();
  }
  static void pasteConditions(QWidget& window, const QString& caption, int row,
                              const QString& text) {
    pasteCell(window, caption, row, "Variable", text);
  }
  static void pasteCell(QWidget& window, const QString& caption, int row, const QString& title,
                        const QString& text) {
    for (ui::SheetView* view : window.findChildren<ui::SheetView*>()) {
      if (view->accessibleName() != caption) continue;
      for (int column = 0; column < view->model()->columnCount(); ++column)
        if (view->model()->headerData(column, Qt::Horizontal).toString() == title) {
          view->setCurrentIndex(view->model()->index(row, column));
          return view->pasteText(text);
        }
    }
    FAIL() << caption.toStdString() << " " << title.toStdString();
  }
  ControlBench bench;
};

TEST_F(Controls, FlagsAreSetByConditions) {
  auto& window = bench.open<ui::frmFlags>(programFlags);
  pasteAt(window, "list", 1, 1, "yes\tFalse");
  window.chooseRow(1);
  pasteConditions(window, "Conditions of the flag", 0, "Level\t>\t2.5\nLevel\t<\t1\n");
  EXPECT_EQ(cell(window, "list", 1, 3), "Level > 2.5");
  pasteConditions(window, "Conditions of the flag", 0, "Levle");
  EXPECT_TRUE(window.hint().contains("there is no variable 'Levle'"))
      << window.hint().toStdString();
  pasteAt(window, "list", 1, 1, "perhaps");
  EXPECT_TRUE(window.hint().contains("neither yes nor no"));
  expectLines(keep(window), {"      If Level > 2.5 Then", "      Flag(2) = False",
                             "      ElseIf Level < 1 Then", "      Flag(2) = True"});
}

/// The project file keeps a variable, a comparison, a number and an expression of such conditions.
TEST_F(Controls, ConditionsOfStatesComeBackFromTheFile) {
  const struct {
    int button;
    const char *sheet, *setUp, *caption;
  } cases[] = {{programFlags, "list", "yes", "Conditions of the flag"},
               {digitalPorts, "ports", "yes", "Conditions of the port"},
               {excitation, "list", "yes\tDynamic\t100\t200\t0", "Conditions of the output"}};
  const std::pair<const char*, const char*> edits[] = {{"Variable", "Level"},
                                                       {"Variable", "VBlk1(2)"},
                                                       {"Operator", "<="},
                                                       {"Value", "0.25"},
                                                       {"Variable", "Flag(3)"},
                                                       {"Value", "False"},
                                                       {"Free expression", "Level > VBlk1(2)"}};
  for (const auto& [button, sheet, setUp, caption] : cases)
    for (const auto& [title, text] : edits) {
      SCOPED_TRACE(std::string(caption) + " " + title + " " + text);
      ui::SetupWindow& window = bench.open(button);
      pasteAt(window, sheet, 0, 1, setUp);
      pasteCell(window, caption, 0, title, text);
      keep(window);
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(Controls, ConditionsOfStatesSendAnotherVariableToTheExpression) {
  auto& window = bench.open<ui::frmFlags>(programFlags);
  pasteConditions(window, "Conditions of the flag", 0, "Level\t>\t0.5");
  const model::Project before = window.working();
  pasteCell(window, "Conditions of the flag", 0, "Value", "VBlk1(2)");
  EXPECT_TRUE(window.hint().contains("write 'Level > VBlk1(2)' as free expression"))
      << window.hint().toStdString();
  EXPECT_EQ(window.working(), before);
}

/// The lists of conditions, levels and fields have the kinds of variables that the options say.
TEST_F(Controls, ListsOfferTheKindsOfVariablesOfTheOptions) {
  model::Project project = bench.project();
  project.calculated.fields = {fieldOf("Sum", "Level * 2")};
  project.calculated.CalcFieldCount = 1;
  bench.control->session().edit(std::move(project), "field");
  control::Settings settings = bench.control->session().settings();
  settings.UserVarListTypes = model::calculatedVariables;
  bench.control->session().changeSettings(settings);
  const std::vector<std::string> sum = {"Sum"};
  for (const int button : {digitalPorts, programFlags, excitation}) {
    ui::SetupWindow& window = bench.open(button);
    for (ui::SheetView* view : window.findChildren<ui::SheetView*>()) {
      const auto& sheet = dynamic_cast<ui::SheetModel&>(*view->model());
      for (int column = 0; column < sheet.columnCount(); ++column)
        if (sheet.column(column).title == "Variable") {
          EXPECT_EQ(sheet.column(column).offers(), sum) << button;
        }
    }
    window.reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  auto& fields = bench.open<ui::frmCalcFields>(calcFields);
  EXPECT_EQ(controlOf<QComboBox>(fields, "variables").count(), 1);
}

TEST_F(Controls, FlagsBeyondTheNumberOfTheOptionsAreShownWhenUsedOrAskedFor) {
  control::Settings settings = bench.control->session().settings();
  settings.DefaultNumFlags = 3;
  bench.control->session().changeSettings(settings);
  model::Project project = bench.project();
  project.flags[4].FlagInclude = true;
  bench.control->session().edit(std::move(project), "flag");
  auto& window = bench.open<ui::frmFlags>(programFlags);
  auto& list = controlOf<ui::SheetView>(window, "list");
  EXPECT_EQ(list.model()->rowCount(), 5);
  controlOf<QCheckBox>(window, "Show all eight flags").click();
  EXPECT_EQ(list.model()->rowCount(), 8);
}

TEST_F(Controls, PortsAreWrittenAndRead) {
  auto& window = bench.open<ui::frmPorts>(digitalPorts);
  EXPECT_EQ(cell(window, "list", 2, 0), "7141/42 slot 6, ports 9-16");
  pasteAt(window, "ports", 2, 1, "yes\tLow when true");
  pasteConditions(window, "Conditions of the port", 0, "Level\t>\t3\n");
  EXPECT_FALSE(controlOf<QCheckBox>(window, "Read the group").isEnabled());
  pasteAt(window, "ports", 0, 1, "yes");  // its conditions are those of another port
  controlOf<ui::SheetView>(window, "ports")
      .setCurrentIndex(controlOf<ui::SheetView>(window, "ports").model()->index(2, 0));

  window.chooseRow(2);
  controlOf<QCheckBox>(window, "Read the group").click();
  pasteAt(window, "ports", 0, 1, "yes\nyes\n");
  pasteAt(window, "ports", 1, 3, "4");
  pasteAt(window, "ports", 1, 2, "Low when true");
  EXPECT_TRUE(window.hint().contains("only ports that are written have a polarity"));
  auto& mask = controlOf<ui::MaskBox>(window, "Table1:");
  mask.setMask(1 + (1 << 5));
  Q_EMIT mask.edited();
  controlOf<QPushButton>(window, "Histogram...").click();
  window.findChild<ui::frmHistogram*>()->accept();
  support::keepPicture(window, "frmPorts_read");
  const std::string program = keep(window);
  expectLines(program, {"      WritPortL = 4", "If Level > 3 Then WritPortL = WritPortL - 4",
                        "      WriteIO(5,1,5,WritPortL)", "      ReadIO(ReadPortU,6,2,5)"});
}

TEST_F(Controls, PortsThatAreTakenAreRefused) {
  model::Project project = bench.project();
  model::MeasurementBlock& pulses = project.block(BlockKind::pulse, 1);
  pulses.Reps = 1;
  pulses.elements.resize(1);
  project.set(BlockKind::pulse).BlockCount = 1;
  bench.control->session().edit(std::move(project), "pulse");
  auto& window = bench.open<ui::frmPorts>(digitalPorts);
  int taken = 0;
  for (const std::size_t group : {1U, 2U}) {
    window.chooseRow(group);
    for (int port = 0; port < 8; ++port) {
      auto& view = controlOf<ui::SheetView>(window, "ports");
      view.edit(view.model()->index(port, 1));
      auto* editor = view.findChild<QComboBox*>();
      const bool opened = editor != nullptr;
      EXPECT_EQ(opened, cell(window, "ports", port, 4).isEmpty()) << port;
      if (opened) {
        QTest::keyClick(editor, Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        continue;
      }
      ++taken;
      pasteAt(window, "ports", port, 1, "yes");
      EXPECT_TRUE(window.hint().contains("the port is taken: ")) << window.hint().toStdString();
    }
  }
  EXPECT_EQ(taken, 1);
}

TEST_F(Controls, OutputsAreStaticOrDynamic) {
  auto& window = bench.open<ui::frmExcite>(excitation);
  controlOf<QCheckBox>(window, "Public").click();
  pasteAt(window, "list", 0, 1, "yes\tStatic\t1500\n");
  pasteAt(window, "list", 1, 1, "yes\tDynamic\t0\t2000\t300\n");
  pasteAt(window, "list", 1, 3, "6000");
  EXPECT_TRUE(window.hint().contains("is not from -5000 to 5000"));
  window.chooseRow(1);
  pasteConditions(window, "Conditions of the output", 0, "Level\t<\t1\nLevel\t>=\t1\n");
  expectLines(keep(window), {"      Excite(5,1,1,1500)", "      If Level < 1 Then",
                             "      Excite_5_2 = 0", "      ElseIf Level >= 1 Then",
                             "      Excite_5_2 = 2000", "      Excite(5,2,1,Excite_5_2,300)"});
}

/// What is refused, or says what holds anyhow, adds no output that Done would keep.
TEST_F(Controls, OutputsComeWithAnEditOnly) {
  const model::Project before = bench.project();
  auto& window = bench.open<ui::frmExcite>(excitation);
  pasteAt(window, "list", 2, 3, "6000");
  pasteAt(window, "list", 2, 1, "perhaps");
  pasteAt(window, "list", 2, 1, "no\tStatic\t0");
  window.accept();
  EXPECT_EQ(bench.project(), before);
}

TEST_F(Controls, WindowsSayWhatIsMissing) {
  bench.control->session().undo();  // no modules
  for (const int button : {11, 13, 15}) {
    ui::SetupWindow& window = bench.open(button);
    EXPECT_TRUE(controlOf<QLabel>(window, "empty").isVisible()) << button;
    window.reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

TEST_F(Controls, FieldsAreComputed) {
  auto& window = bench.open<ui::frmCalcFields>(calcFields);
  window.addField();
  window.addField();
  pasteAt(window, "fields", 0, 0, "Sum\tbar\tExpression\tLevel + Sqr(VBlk1(2))");
  EXPECT_EQ(cell(window, "fields", 0, 4), "good");
  pasteAt(window, "fields", 1, 0, "Mean\tbar\tRunning average\tLevl");
  pasteAt(window, "fields", 1, 5, "60");
  EXPECT_TRUE(cell(window, "fields", 1, 4).contains(">>Levl<<"));
  pasteAt(window, "fields", 1, 8, "histogram");
  EXPECT_TRUE(window.hint().contains("no table stores histogram of it"))
      << window.hint().toStdString();
  pasteAt(window, "fields", 0, 8, "sample+average");
  window.accept();
  EXPECT_TRUE(window.isVisible());
  EXPECT_EQ(bench.messages.shown.back(),
            (ports::Message{.title = "CALCULATED FIELD",
                            .text = "Field 2 Mean: there is no variable 'Levl'; did you mean "
                                    "'Level'?\r\n>>Levl<<"}));
  pasteAt(window, "fields", 1, 3, "Level");
  expectLines(keep(window), {"      Sum = Level + Sqr(VBlk1(2))",
                             "      AvgRun(RunAvg(1), 1,Level,60)", "Sample (1,Sum,IEEE4"});
}

TEST_F(Controls, RunningAveragesHaveSamples) {
  auto& window = bench.open<ui::frmCalcFields>(calcFields);
  window.addField();
  pasteAt(window, "fields", 0, 0, "Mean\tbar\tRunning average\tLevel");
  EXPECT_EQ(cell(window, "fields", 0, 4), "good");
  EXPECT_GE(cell(window, "fields", 0, 5).toInt(), 2);
  for (const char* samples : {"0", "1", "1001"}) {
    pasteAt(window, "fields", 0, 5, samples);
    EXPECT_TRUE(window.hint().contains("nothing was changed")) << samples;
  }
  pasteAt(window, "fields", 0, 2, "Expression\tLevel");
  pasteAt(window, "fields", 0, 5, "0");  // an expression has no use for it
  EXPECT_EQ(cell(window, "fields", 0, 5), "0");
}

/// One visit gives a field another name and changes a field that uses it.
TEST_F(Controls, FieldsFollowANameOfTheSameVisit) {
  model::Project project = bench.project();
  project.calculated.fields = {fieldOf("Sum", "Level * 2"), fieldOf("Twice", "Sum * 2")};
  project.calculated.CalcFieldCount = 2;
  bench.control->session().edit(std::move(project), "fields");
  auto& window = bench.open<ui::frmCalcFields>(calcFields);
  const auto offered = [&window](const char* name) {
    return controlOf<QComboBox>(window, "variables").findText(name) >= 0;
  };
  pasteAt(window, "fields", 0, 0, "Total");
  pasteAt(window, "fields", 1, 3, "Sum * 3");
  EXPECT_EQ(cell(window, "fields", 1, 4), "good");
  EXPECT_TRUE(offered("Total"));
  EXPECT_FALSE(offered("Sum"));
  window.addField();
  pasteAt(window, "fields", 2, 0, "Third\t\tExpression\tTotal / 3");
  EXPECT_TRUE(offered("Third"));
  while (window.working().calculated.fields.size() > 2) window.undo();
  expectLines(keep(window), {"      Total = Level * 2", "      Twice = Total * 3"});
}

/// Another name for a channel changes what refers to it in the same edit.
TEST_F(Controls, ReferencesFollowARenamedChannel) {
  model::Project project = bench.project();
  project.calculated.fields = {fieldOf("Sum", "Level * 2")};
  project.calculated.CalcFieldCount = 1;
  project.flags[0].FlagInclude = true;
  project.flags[0].states[0] = above("Level");
  project.scan.BurstTrigger = 1;
  project.scan.TriggerMeasVar = "Level";
  bench.control->session().edit(std::move(project), "references");
  const model::Project before = bench.project();
  auto& voltages = bench.open(4);
  pasteAt(voltages, "channels", 0, 1, "Height");
  voltages.accept();
  EXPECT_EQ(bench.project().calculated.fields[0].CalcExpress, "Height * 2");
  EXPECT_EQ(bench.project().flags[0].states[0].MeasVar, "Height");
  EXPECT_EQ(bench.project().scan.TriggerMeasVar, "Height");
  EXPECT_TRUE(bench.messages.shown.empty());
  bench.control->session().undo();
  EXPECT_EQ(bench.project(), before);
}

/// A window that takes a variable away says who lacks it now.
TEST_F(Controls, MissingVariablesAreToldOnDone) {
  model::Project project = bench.project();
  project.calculated.fields = {fieldOf("Sum", "Level * 2")};
  project.calculated.CalcFieldCount = 1;
  project.flags[0].FlagInclude = true;
  project.flags[0].states[0] = above("Sum");
  bench.control->session().edit(std::move(project), "field");
  auto& window = bench.open<ui::frmCalcFields>(calcFields);
  window.removeField();
  window.accept();
  EXPECT_EQ(bench.messages.titles(), std::vector<std::string>{"INVALID TRIGGER CONDITION"});
}

}  // namespace
