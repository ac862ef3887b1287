#include "verify/lost_references.h"

#include <gtest/gtest.h>

#include "model/conditions.h"
#include "support/demo_project.h"

namespace verify {
namespace {

using model::BlockKind;
using Texts = std::vector<std::string>;

/// A voltage block whose channel Level is used in many places, and a bridge Beam that stays.
model::Project usedProject() {
  model::Project project = KGEN_COMMON::newProject();
  project.configuration.quantity(model::ModuleKindIndex::analog7121) = 2;
  for (const auto& [kind, name] :
       {std::pair(BlockKind::voltage, "Level"), std::pair(BlockKind::bridge, "Beam")}) {
    model::MeasurementBlock& block = project.block(kind, 1);
    block.Reps = 1;
    block.elements.resize(1, model::defaultElement(kind));
    block.elements[0].AliasName = name;
    project.set(kind).BlockCount = 1;
  }
  return project;
}

model::Project withoutVoltages(model::Project project) {
  project.block(BlockKind::voltage, 1).Reps = 0;
  project.block(BlockKind::voltage, 1).elements.clear();
  project.set(BlockKind::voltage).BlockCount = 0;
  return project;
}

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

TEST(LostReferences, GoWithWhatTheyUse) {
  model::Project before = usedProject();
  before.calculated.fields = {fieldOf("Sum", "Level * 2"), fieldOf("Other", "Beam * 2"),
                              fieldOf("More", "Sum + Beam")};
  before.calculated.CalcFieldCount = 3;
  model::OutputTable& table = before.tables[0];
  table.TableOn = true;
  table.TrigTable = 3;
  table.conditions.trigger(0, 1) = above("Level");
  table.conditions.trigger(0, 2) = above("Beam");
  table.conditions.trigger(0, 3) = above("More");
  table.conditions.logic(0, 2) = "Or";
  table.WriteIf = 3;
  table.conditions.writeIf(1) = above("VBlk1(1)");
  table.conditions.writeIf(2) = above("Beam");
  table.conditions.writeIf(3) = above("BattVolt");
  table.GroupWriteIf = "3 Or (1 And 2)";
  model::storeDataEvent(table);
  model::TableProcessing& crossings = before.block(BlockKind::bridge, 1).processing[0];
  crossings.LevelCode = "3,2,0,0";
  crossings.LevelMeasName = "Level";
  before.configuration.EnablePowerOff = true;
  before.configuration.PowerOffMeasVar = "Level";

  const LostReferences lost = lostReferences(before, withoutVoltages(before));
  EXPECT_EQ(lost.settings, (Texts{"Calculated field Sum: Level * 2",
                                  "Calculated field More: Sum + Beam", "Table 1, start: More > 5",
                                  "Table 1, start: Level > 5", "Table 1, write if: VBlk1(1) > 5",
                                  "bridge block 1, second variable of level crossings: Level",
                                  "Power off on Level"}));
  EXPECT_EQ(lost.project.calculated.CalcFieldCount, 1);
  EXPECT_EQ(lost.project.tables[0].DataEventStart, "Beam > 5");
  EXPECT_EQ(model::writeIfText(lost.project.tables[0]), "BattVolt > 5 Or Beam > 5");
  EXPECT_EQ(lost.project.block(BlockKind::bridge, 1).processing[0].LevelCode, "3,1,0,0");
  EXPECT_FALSE(lost.project.configuration.EnablePowerOff);
  EXPECT_EQ(questionAboutLostReferences(lost.settings)->buttons, ports::Buttons::yesNo);
}

/// What was wrong before is no matter of this edit.
TEST(LostReferences, LeaveTheRest) {
  model::Project before = usedProject();
  before.flags[0].FlagInclude = true;
  before.flags[0].states[0] = above("Nowhere");
  before.flags[0].states[1] = above("Beam");
  const model::Project after = withoutVoltages(before);
  const LostReferences lost = lostReferences(before, after);
  EXPECT_EQ(lost.project, after);
  EXPECT_EQ(questionAboutLostReferences(lost.settings), std::nullopt);
}

}  // namespace
}  // namespace verify
