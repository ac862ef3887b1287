#include "control/condition_cells.h"

#include <gtest/gtest.h>

#include "model/conditions.h"
#include "support/demo_project.h"

namespace control {
namespace {

using enum ConditionCell;
using model::Condition;

TEST(ConditionCells, StoreWhatAPersonTypes) {
  const model::Project project = support::demoProject();
  struct Case {
    std::vector<std::pair<ConditionCell, std::string_view>> typed;
    std::string_view reads, value;
  };
  const Case cases[] = {
      {{{variable, " Press "}, {compare, ">="}, {value, "4.5"}}, "Press >= 4.5", "4.5"},
      {{{variable, "VBlk1"}, {index, "2"}, {value, "Press"}}, "VBlk1(2) > Press", "Press"},
      {{{variable, "Press"}, {value, "Press"}, {value, "7"}}, "Press > 7", "7"},
      {{{variable, "Flag(3)"}}, "Flag(3) = True", "True"},
      {{{variable, "Flag(3)"}, {compare, "<>"}, {value, "false"}}, "Flag(3) <> False", "False"},
      {{{variable, "Press"}, {expression, "Press > 3 And Flag(1)"}}, "Press > 3 And Flag(1)", "0"},
      {{{variable, "Press"}, {compare, ">="}, {compare, ""}, {value, ""}}, "Press > 0", "0"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.reads));
    Condition condition;
    for (const auto& [cell, typed] : c.typed)
      EXPECT_EQ(storeCell(cell, typed, condition, project), std::nullopt) << typed;
    EXPECT_EQ(model::conditionText(condition), c.reads);
    EXPECT_EQ(cellText(value, condition), c.value);
  }
}

TEST(ConditionCells, RefuseWhatTheProgramCouldNotRead) {
  const model::Project project = support::demoProject();
  const std::pair<ConditionCell, std::string_view> cases[] = {{variable, "Pres"},
                                                              {variable, "Press + 1"},
                                                              {variable, "Flag(9)"},
                                                              {index, "-1"},
                                                              {index, "1.5"},
                                                              {index, "526"},
                                                              {index, "x"},
                                                              {compare, "=>"},
                                                              {compare, "??"},
                                                              {value, "Pres"},
                                                              {value, "1,5"},
                                                              {expression, "Press >"},
                                                              {expression, "Pres > 1"}};
  for (const auto& [cell, typed] : cases) {
    Condition condition;
    EXPECT_NE(storeCell(cell, typed, condition, project), std::nullopt) << typed;
    EXPECT_EQ(condition, Condition{}) << typed;
  }
}

TEST(ConditionCells, ShowAndKeepWhatAFileBrought) {
  Condition odd;
  odd.MeasVar = "Gone";
  odd.Compare = 17;
  EXPECT_EQ(cellText(variable, odd), "Gone");
  EXPECT_EQ(cellText(compare, odd), "??");
  EXPECT_EQ(cellText(index, odd), "");
}

}  // namespace
}  // namespace control
