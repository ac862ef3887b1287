#include "model/table_space.h"

#include <gtest/gtest.h>

namespace model {
namespace {

constexpr std::int64_t noBuffer = 0;

/// Table 1 keeps a voltage channel, 4 bytes a record, once a second.
Project newProject() {
  Project project = KGEN_COMMON::newProject();
  project.configuration.quantity(ModuleKindIndex::analog7121) = 1;
  project.configuration.quantity(ModuleKindIndex::cpu) = 2;
  project.set(BlockKind::voltage).BlockCount = 1;
  MeasurementBlock& block = project.block(BlockKind::voltage, 1);
  block.Reps = 1;
  block.DataResolution = "IEEE4";
  fitLists(project);
  for (std::size_t t : {0U, 1U, 2U}) {
    block.elements[0].Table[t] = 1;
    project.tables[t].TableOn = true;
    project.tables[t].OutInt = "1";
    project.tables[t].OutIntUnits = 2;
  }
  project.tables[2].TableOn = false;
  return project;
}

TEST(TableSpace, SharesWhatFixedTablesLeave) {
  Project project = newProject();
  project.tables[1].AutoSize = false;
  project.tables[1].Buffer = 250'000;
  project.tables[1].CalcTime = false;  // 16 bytes a record
  SpacePlan plan = KGEN_COMMON::CalcTableRecs(project, noBuffer);
  EXPECT_EQ(plan.tables[1], (TableSpace{true, Medium::sRam, 16, 250'000, 4e6, 1e6}));
  EXPECT_EQ(plan.tables[0].records, 0);  // nothing is left
  EXPECT_FALSE(plan.of(Medium::sRam).isOverfull());

  project.tables[1].Buffer = 100'000;
  plan = KGEN_COMMON::CalcTableRecs(project, 400'000);
  EXPECT_EQ(plan.of(Medium::sRam).free(), 3.6e6);
  EXPECT_EQ(plan.tables[0].records, 500'000);
  EXPECT_EQ(plan.of(Medium::sRam).tables, 3.6e6);

  project.tables[0].CalcTime = false;
  project.tables[1].AutoSize = true;
  project.tables[2].TableOn = true;
  project.tables[2].Buffer = -5;  // all memory is automatic size
  project.tables[2].AutoSize = false;
  plan = KGEN_COMMON::CalcTableRecs(project, 400'000);
  EXPECT_EQ(plan.tables[0].records, 75'000);
  EXPECT_EQ(plan.tables[2].records, 300'000);
}

TEST(TableSpace, IsOfTheMediumThatTheTableNames) {
  Project project = newProject();
  project.configuration.SizeCardA = 2;
  struct Case {
    int location, card;
    Medium medium;
    double capacity;
  };
  const Case cases[] = {{1, 2, Medium::sRam, 4e6},          {2, 0, Medium::flash, 2e6},
                        {3, 0, Medium::cardA, 2 * 1048576}, {3, 1, Medium::cardA, 2 * 1048576},
                        {3, 2, Medium::cardB, 0},           {7, 0, Medium::sRam, 4e6}};
  for (const Case& c : cases) {
    project.tables[0].TableLocation = static_cast<std::int16_t>(c.location);
    project.tables[0].PamCard = static_cast<std::int16_t>(c.card);
    const SpacePlan plan = KGEN_COMMON::CalcTableRecs(project, noBuffer);
    EXPECT_EQ(plan.tables[0].medium, c.medium) << c.location << " " << c.card;
    EXPECT_EQ(plan.of(c.medium).capacity, c.capacity);
  }
  project.tables[0].TableLocation = 3;
  project.tables[0].PamCard = 2;
  project.tables[0].AutoSize = false;
  EXPECT_TRUE(KGEN_COMMON::CalcTableRecs(project, noBuffer).of(Medium::cardB).isOverfull());
  project.configuration.quantity(ModuleKindIndex::cpu) = 1;
  project.scan.PamBuffer = 1;
  const SpacePlan small = KGEN_COMMON::CalcTableRecs(project, 3'000'000);
  EXPECT_EQ(small.of(Medium::sRam).free(), 1e6);
  EXPECT_EQ(small.of(Medium::flash).free(), 5e5);
  EXPECT_EQ(small.of(Medium::cardA).free(), 0);
  EXPECT_EQ(burstBufferText(small.of(Medium::cardA)), "3,000,000 bytes used for Burst Buffer.");
}

TEST(TableSpace, TurnsATimeIntoRecordsThatFit) {
  Project project = newProject();
  const SpacePlan plan = KGEN_COMMON::CalcTableRecs(project, noBuffer);
  EXPECT_EQ(recordsIn(3600.5, plan, 1), 3600);
  EXPECT_EQ(recordsIn(1'000'000, plan, 1), 1'000'000);
  EXPECT_EQ(recordsIn(1'000'001, plan, 1), std::nullopt);
  project.tables[0].OutInt = "VFilt";  // there is no filter
  EXPECT_FALSE(complaintAboutTimeOf(plan, 1));
  EXPECT_TRUE(complaintAboutTimeOf(KGEN_COMMON::CalcTableRecs(project, noBuffer), 1));
  EXPECT_EQ(recordsIn(1, KGEN_COMMON::CalcTableRecs(project, noBuffer), 1), std::nullopt);
  project = newProject();
  project.block(BlockKind::voltage, 1).elements[0].Table[0] = 0;  // records without data
  project.tables[0].AutoSize = true;
  const SpacePlan empty = KGEN_COMMON::CalcTableRecs(project, noBuffer);
  EXPECT_EQ(empty.tables[0].records, 0);
  EXPECT_EQ(recordsIn(3e9, empty, 1), std::nullopt);  // more than can be counted
}

}  // namespace
}  // namespace model
