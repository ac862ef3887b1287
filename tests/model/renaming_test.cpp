#include "model/renaming.h"

#include <gtest/gtest.h>

#include "support/demo_project.h"

namespace model {
namespace {

using enum BlockKind;
using Names = std::vector<NewName>;

/// Two voltages of which the first is "Press", two CAN items of a value each, one field.
Project sampleProject() {
  Project project = support::projectWith(2, {ModuleKindIndex::analog7121});
  support::addBlock(project, voltage, 1, 3).elements[0].AliasName = "Press";
  project.can.CanBusEnabled = true;
  project.can.CanCount = 2;
  project.calculated.CalcFieldCount = 1;
  fitLists(project);
  for (CanItem& item : project.can.items) item.NumVals = 1;
  fitLists(project);
  project.can.items[0].Name = "Rpm";
  project.calculated.fields[0].CalcName = "Sum";
  project.calculated.fields[0].CalcExpress = "Press + VBlk1(2) * CBlk2(1)";
  project.tables[1].TableOn = true;
  project.tables[1].TableName = "Fast";
  return project;
}

TEST(Expressions, TakeNewNamesAsWholeWords) {
  const std::vector<NewName> names = {{"Press", "Oil"},
                                      {"Oil", "Press"},
                                      {"VBlk1(2)", "Boost"},
                                      {"Fast", "Slow"},
                                      {"A", "VBlk1(1)"}};
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"press+PRESS*Pressure - xPress", "Oil+Oil*Pressure - xPress"},
      {"Press < Oil", "Oil < Press"},  // all at once
      {"VBlk1(2)+VBlk1( 2 ) + VBlk1(22) + VBlk1(I)", "Boost+Boost + VBlk1(22) + VBlk1(I)"},
      {"Fast.Record(1,0) > Fast.Press(1,1)", "Slow.Record(1,0) > Slow.Press(1,1)"},
      {"Abs(Press)^2 And Not(Press)", "Abs(Oil)^2 And Not(Oil)"},
      {"1E5 + &HA + \"Press\" 'Press", "1E5 + &HA + \"Press\" 'Press"},
      {"A + A(2)", "VBlk1(1) + A(2)"},
      {"", ""}};
  for (const auto& [before, after] : cases) EXPECT_EQ(withNewNames(before, names), after);
}

TEST(Renaming, ReachesEveryReference) {
  Project project = sampleProject();
  const Condition byName = {.MeasVar = "PRESS", .Varb = "press", .Expression = "2*Press"};
  OutputTable& table = project.tables[0];
  table.conditions.trigger(0, 1) = table.conditions.trigger(1, 10) = byName;
  table.conditions.writeIf(3) = byName;
  table.DataEventStart = "Press > 3";
  table.GroupWriteIf = "1 And Press";  // numbers of conditions alone
  project.scan.TriggerMeasVar = "Press";
  project.scan.TrigExpression = "Press > 1";
  project.configuration.PowerOffMeasVar = "Press";
  project.configuration.Status = {{"Press", " >", "Press", "Flag(1) = True"}};
  project.ports.groups.resize(1);
  project.ports.groups[0].ports[7].conditions[3] = byName;
  project.flags[7].states[1] = byName;
  project.excitation.channels.resize(1);
  project.excitation.channels[0].conditions[1] = byName;
  project.block(bridge, 7).processing[7].LevelMeasName = "Press";
  project.can.items[1].processing[0].LevelMeasName = "Press";

  const Condition byNewName = {.MeasVar = "Oil", .Varb = "Oil", .Expression = "2*Oil"};
  Project expected = project;
  expected.block(voltage, 1).elements[0].AliasName = "Oil";
  expected.calculated.fields[0].CalcExpress = "Oil + VBlk1(2) * CBlk2(1)";
  OutputTable& other = expected.tables[0];
  other.conditions.trigger(0, 1) = other.conditions.trigger(1, 10) = byNewName;
  other.conditions.writeIf(3) = byNewName;
  other.DataEventStart = "Oil > 3";
  expected.scan.TriggerMeasVar = "Oil";
  expected.scan.TrigExpression = "Oil > 1";
  expected.configuration.PowerOffMeasVar = "Oil";
  expected.configuration.Status = {{"Oil", " >", "Oil", "Flag(1) = True"}};
  expected.ports.groups[0].ports[7].conditions[3] = byNewName;
  expected.flags[7].states[1] = byNewName;
  expected.excitation.channels[0].conditions[1] = byNewName;
  expected.block(bridge, 7).processing[7].LevelMeasName = "Oil";
  expected.can.items[1].processing[0].LevelMeasName = "Oil";
  EXPECT_EQ(renamed(project, "press", "Oil"), expected);
  EXPECT_EQ(renamed(project, "Nothing", "Oil"), project);
  EXPECT_EQ(renamed(project, "", "Oil"), project);
}

TEST(Renaming, MovesBetweenArrayAndName) {
  Project project = sampleProject();
  Condition& condition = project.tables[1].conditions.trigger(0, 1);
  condition.MeasVar = "VBlk1";
  condition.VarIdx = 2;
  const Project named = renamed(project, "VBlk1(2)", "Boost");
  EXPECT_EQ(named.block(voltage, 1).elements[1].AliasName, "Boost");
  EXPECT_EQ(named.calculated.fields[0].CalcExpress, "Press + Boost * CBlk2(1)");
  EXPECT_EQ(named.tables[1].conditions.trigger(0, 1).MeasVar, "Boost");
  EXPECT_EQ(named.tables[1].conditions.trigger(0, 1).VarIdx, 0);
  const Project cleared = renamed(named, "Boost", "VBlk1(2)");
  EXPECT_EQ(cleared.block(voltage, 1).elements[1].AliasName, "");
  EXPECT_EQ(cleared.calculated.fields[0].CalcExpress, project.calculated.fields[0].CalcExpress);
  EXPECT_EQ(cleared.tables[1].conditions.trigger(0, 1).MeasVar, "VBlk1(2)");
  EXPECT_EQ(renamed(project, "CBlk2(1)", "Speed").calculated.fields[0].CalcExpress,
            "Press + VBlk1(2) * Speed");
}

TEST(NewNames, AreToldByPlace) {
  const Project before = sampleProject();
  Project after = before;
  after.block(voltage, 1).elements[0].AliasName = "press";  // its case alone
  after.block(voltage, 1).elements[2].AliasName = "Boost";
  after.calculated.fields[0].CalcName = "";
  after.tables[1].TableName = "Slow";
  EXPECT_EQ(
      newNames(before, after),
      (Names{{"Press", "press"}, {"VBlk1(3)", "Boost"}, {"Sum", "CalcField1"}, {"Fast", "Slow"}}));
  EXPECT_EQ(newNames(before, before), Names{});
  after = before;
  after.set(voltage).BlockCount = 0;  // gone, not renamed
  EXPECT_EQ(newNames(before, after), Names{});
}

TEST(NewNames, AreNoneOfNamesThatChangedPlaces) {
  Project before = sampleProject();
  before.block(voltage, 1).elements[1].AliasName = "Boost";
  Project after = before;
  std::swap(after.block(voltage, 1).elements[0], after.block(voltage, 1).elements[1]);
  EXPECT_EQ(newNames(before, after), Names{});
}

TEST(NewNames, FollowItemsThatMoveUp) {
  Project before = sampleProject();
  Project after = before;
  after.can.items.erase(after.can.items.begin());
  after.can.CanCount = 1;
  EXPECT_EQ(newNames(before, after), (Names{{"CBlk2(1)", "CBlk1(1)"}}));
  EXPECT_EQ(withNewNames(before, after).calculated.fields[0].CalcExpress,
            "Press + VBlk1(2) * CBlk1(1)");
  EXPECT_EQ(newNames(after, before), (Names{{"CBlk1(1)", "CBlk2(1)"}}));  // and down

  before.filterSlots[0].BlockCount = before.filterSlots[1].BlockCount = 1;
  before.block(filter, 1).elements.resize(1);
  before.block(filter, 2).elements.resize(2);
  after = before;
  after.filterSlots[0].BlockCount = 0;
  std::swap(after.block(filter, 1), after.block(filter, 2));
  EXPECT_EQ(newNames(before, after),
            (Names{{"FVBlk2(1)", "FVBlk1(1)"}, {"FVBlk2(2)", "FVBlk1(2)"}}));
}

}  // namespace
}  // namespace model
