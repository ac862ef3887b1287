#include "control/checked_program.h"

#include <gtest/gtest.h>

#include "support/demo_project.h"
#include "support/examples.h"
#include "support/random_case.h"
#include "text/strings.h"

namespace {

using control::checkedProgram;

TEST(CheckedProgram, FindsNoFaultOfItsOwnInAnyProject) {
  support::forExamples(KGEN_EXAMPLES_DIR,
                       [](const std::string& name, const model::Project& project) {
                         EXPECT_EQ(checkedProgram(project, support::demoStamp(), name).fault, "");
                       });
  for (unsigned seed = 0; seed < support::randomCases(100); ++seed) {
    const support::RandomCase one = support::randomCase(seed);
    const control::CheckedProgram made = checkedProgram(one.project, one.stamp, "site");
    ASSERT_EQ(made.fault, "") << seed;
    ASSERT_EQ(made.remark, "") << seed;
  }
  for (unsigned seed = 0; seed < support::randomCases(100); ++seed) {
    const support::RandomCase odd = support::oddCase(seed);
    try {
      ASSERT_EQ(checkedProgram(odd.project, odd.stamp, "site").fault, "") << seed;
    } catch (const SAVEDLD::ProgramTooLong&) {  // many more of something
    }
  }
}

TEST(CheckedProgram, ThatDoesNotFitItsModulesIsNoFaultOfTheWriter) {
  model::Project project = support::demoProject();
  project.configuration.quantity(model::ModuleKindIndex::isolation7128) = 0;
  project.configuration.quantity(model::ModuleKindIndex::analog7121) = 11;
  support::addBlock(project, model::BlockKind::voltage, 2, 400);
  const control::CheckedProgram made = checkedProgram(project, support::demoStamp(), "DEMO.KX7");
  EXPECT_EQ(made.fault, "");
  EXPECT_TRUE(made.remark.starts_with("what has no module makes a fault in DEMO.KX7, line "))
      << made.remark;
}

/// Whatever an engineer types where the program takes it over is the engineer's.
TEST(CheckedProgram, LeavesTextsOfTheProjectToTheEngineer) {
  for (const char* text :
       {"Nobody", "3 +", "Press(1", "\"text\"", "Zero", "1 : EndProg", "Flag(9)"}) {
    SCOPED_TRACE(text);
    model::Project project = support::demoProject();
    project.tables[0].TrigTable = 1;
    project.tables[0].conditions.trigger(0, 1).Expression = text;
    project.calculated.fields.resize(1);
    project.calculated.fields[0].CalcExpress = text;
    project.flags[0].FlagInclude = true;
    project.flags[0].states[0].MeasVar = text;
    project.configuration.MonitorPower.fill(true);
    project.configuration.EnablePowerOff = true;
    project.configuration.PowerOffMeasVar = text;
    project.configuration.StatusMonCount = 1;
    project.configuration.Status = {{text, " > ", "3", "Flag(1) = True"}};
    const control::CheckedProgram made = checkedProgram(project, support::demoStamp(), "DEMO.KX7");
    EXPECT_EQ(made.fault, "");
    EXPECT_TRUE(
        made.remark.starts_with("a condition or an expression of the project makes a fault "
                                "in DEMO.KX7, line "))
        << made.remark;
    EXPECT_NE(made.program.text, "");
  }
}

/// A writer that forgets to declare something.
SAVEDLD::Program forgetful(const model::Project& project, const model::DocumentStamp& stamp) {
  SAVEDLD::Program program = SAVEDLD::generate(project, stamp);
  const std::string declaration = "Const VREP1 = ";
  program.text.erase(program.text.find(declaration), declaration.size() + 1);
  return program;
}

TEST(CheckedProgram, TellsAFaultOfTheWriterAlsoBesideOnesOfTheEngineer) {
  model::Project project = support::demoProject();
  for (const bool typedWrong : {false, true}) {
    project.calculated.fields.resize(typedWrong ? 1 : 0);
    if (typedWrong) project.calculated.fields[0].CalcExpress = "Nobody";
    const control::CheckedProgram made =
        checkedProgram(project, support::demoStamp(), "DEMO.KX7", forgetful);
    EXPECT_TRUE(
        made.fault.starts_with("the program made for DEMO.KX7 is faulty by a mistake of "
                               "the generator: line "))
        << made.fault;
    EXPECT_NE(made.fault.find("'VREP1' is not declared"), std::string::npos) << made.fault;
    EXPECT_EQ(made.fault.find("Nobody"), std::string::npos) << made.fault;
  }
}

}  // namespace
