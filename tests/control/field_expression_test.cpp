#include "control/field_expression.h"

#include <gtest/gtest.h>

#include <random>

#include "support/demo_project.h"
#include "support/random_project.h"

namespace control {
namespace {

/// Thermocouples "Inlet" and TBlk1(2), pressure "Press", table "Table1".
const model::Project& demo() {
  static const model::Project project = support::demoProject();
  return project;
}

TEST(FieldExpressions, ThatAreFine) {
  for (const std::string_view expression :
       {"Press", "TBlk1(2)", "Inlet*1.8 + 32", "-Press^2/(3-Inlet)", "Sqr(Abs(Press))", "Flag(3)*2",
        "Press > 3 And Not Inlet < 2", "Table1.Record(1,0)", "1e3 * &HFF",
        "TBlk1(1)",  // by its array although it has a name
        "True", "Press 'bar", "IIF(Press > 1,2,Inlet)", "TBlk1(Press)"})
    EXPECT_EQ(faultIn(expression, demo()), std::nullopt) << expression;
}

TEST(FieldExpressions, FaultsAreToldWithTheirPlace) {
  struct Case {
    std::string_view expression;
    std::size_t offset, length;
    std::string_view words;
  };
  const Case cases[] = {
      {"", 0, 0, "the expression is empty"},
      {"   ", 0, 0, "the expression is empty"},
      {"(Press + 2", 10, 0, "')' is missing before the end of the line"},
      {"Press + 2)", 9, 1, "')' closes nothing"},
      {"Press + * 2", 8, 1, "a value is missing before '*'"},
      {"Press +", 7, 0, "a value is missing before the end of the line"},
      {"2 Press", 2, 5, "'Press' follows a value; write an operator"},
      {"Press, 2", 5, 1, "',' stands only between"},
      {"Press # 2", 6, 1, "'#' follows a value"},
      {"2 + Sqr(Press,1)", 4, 3, "'Sqr' takes 1 argument, not 2"},
      {"Sqr", 0, 3, "'Sqr' is a function; write 1 argument"},
      {"2*\"x\"", 2, 3, "a text is no number"},
      {"1 + TBlk1()", 4, 5, "'TBlk1' is a whole array"},
      {"1 + If", 4, 2, "a value is missing before 'If'"},
      {"Sample(3) + 1", 0, 6, "'Sample' is a word of the language and no function"},
      {"mV50", 0, 4, "'mV50' is a word of the language and has no value"},
      {"Press\n+ 2", 5, 1, "an expression is one line"},
      {"2 + Pres", 4, 4, "there is no variable 'Pres'; did you mean 'Press'?"},
      {"press", 0, 5, "there is no variable 'press'; did you mean 'Press'?"},
      {"2 + Sqrt(Press)", 4, 4, "there is no function or array 'Sqrt'; did you mean 'Sqr'?"},
      {"Rubbish", 0, 7, "there is no variable 'Rubbish'; pick one from the list"},
      {"TBlk1(3)", 0, 8, "there is no variable 'TBlk1(3)'; pick"},
      {"Table7.Record(1,0)", 0, 18, "there is no variable 'Table7.Record(1,0)'"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.expression);
    const auto fault = faultIn(c.expression, demo());
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->offset, c.offset);
    EXPECT_EQ(fault->length, c.length);
    EXPECT_TRUE(fault->text.find(c.words) != std::string::npos) << fault->text;
  }
}

TEST(FieldExpressions, OfARunningAverageAreOneVariable) {
  model::CalculatedField field;
  field.CalcType = 1;
  field.CalcExpress = " TBlk1(2) ";
  EXPECT_EQ(faultIn(field, demo()), std::nullopt);
  for (const std::string_view expression : {"Press + 1", "3", "Sqr(Press)", "(Press)"}) {
    field.CalcExpress = expression;
    EXPECT_TRUE(faultIn(field, demo())) << expression;
  }
}

TEST(FieldExpressions, OfARunningAverageHaveSamples) {
  model::CalculatedField field;
  for (const auto& [type, samples, good] :
       {std::tuple(0, 0, true), {1, 1, false}, {1, 2, true}, {1, 1000, true}, {1, 1001, false}}) {
    field.CalcType = static_cast<std::int16_t>(type);
    field.CalcAvg = static_cast<std::int16_t>(samples);
    EXPECT_EQ(!complaintAboutSamples(field), good) << samples;
  }
}

TEST(FieldExpressions, OfValidProjectsHaveNoFaultAndCutOnesStayWithinTheirText) {
  std::mt19937 random(3);
  for (int i = 0; i < 40; ++i) {
    const model::Project project = support::randomProject(random);
    for (const model::CalculatedField& field : project.calculated.fields) {
      const auto fault = faultIn(field, project);
      EXPECT_FALSE(fault) << field.CalcExpress << ": " << fault->text;
      for (std::size_t end = 0; end < field.CalcExpress.size(); ++end) {
        const auto cut = faultIn(field.CalcExpress.substr(0, end), project);
        EXPECT_TRUE(!cut || cut->offset + cut->length <= end) << field.CalcExpress;
      }
    }
  }
}

}  // namespace
}  // namespace control
