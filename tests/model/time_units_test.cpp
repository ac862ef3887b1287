#include "model/time_units.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace model {
namespace {

OutputTable every(std::string interval, int unit) {
  OutputTable table;
  table.OutInt = std::move(interval);
  table.OutIntUnits = static_cast<std::int16_t>(unit);
  return table;
}

void addFilterBlocks(Project& project) {
  project.configuration.quantity(ModuleKindIndex::filter7125) = 2;
  project.filterSlots[0] = {.BlockCount = 1, .FiltFreqNum = 300, .FFTLength = 64};
  project.filterSlots[1] = {
      .BlockCount = 1, .FiltFFTSampleRate = 1000, .FFTLength = 512, .FFTModule = true};
  for (std::size_t n : {1U, 2U}) project.block(BlockKind::filter, n).Reps = 1;
}

TEST(Intervals, AreMicroseconds) {
  Project project;
  addFilterBlocks(project);
  struct Case {
    OutputTable table;
    double micros, shownNumber;
    int shownUnit;
  };
  const Case cases[] = {
      {every("5", 0), 50, 50, 0},
      {every("0", 2), 1e6, 1, 2},
      {every("soon", 3), 60e6, 1, 3},
      {every("-4", 2), 1e6, 1, 2},
      {every("2.5", 1), 2e3, 2, 1},
      {every("99999999999", 0), 21474836470.0, 21474836470.0, 0},
      {every("1", 5), 86400e6, 1, 5},
      {every("1", 6), 0, 1, 6},
      {every("VFILT", 3), 1e6 / 300, 3333, 0},
      {every("ffilt", 3), 512e3, 512e3, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.table.OutInt);
    EXPECT_DOUBLE_EQ(KGEN_COMMON::OutputIntervalMicros(project, c.table), c.micros);
    const ShownInterval shown = shownInterval(project, c.table);
    EXPECT_EQ(shown.number, c.shownNumber);
    EXPECT_EQ(shown.unitCode, c.shownUnit);
    EXPECT_FALSE(shown.synchronous);
  }
}

TEST(Intervals, OfASynchronousTableAreThoseOfTheScan) {
  Project project;
  project.scan.ExecutionTime = 100;
  project.scan.ExecTimeUnits = 0;
  OutputTable table = every("7", 3);
  table.SyncTable = true;
  table.AutoSize = false;
  table.Buffer = 1'000'000;
  const ShownInterval shown = shownInterval(project, table);
  EXPECT_TRUE(shown.synchronous);
  EXPECT_EQ(shown.number, 1000);
  EXPECT_EQ(shown.micros, 1000);
  EXPECT_EQ(secondsToFill(project, table), 1000);
}

TEST(Intervals, OfFiltersNeedOneInUse) {
  Project project;
  EXPECT_EQ(KGEN_COMMON::OutputIntervalMicros(project, every("VFilt", 2)), 0);
  addFilterBlocks(project);
  EXPECT_EQ(filterSubscan(project, project.filterSlots[0]), (FilterSubscan{3333, 300}));
  project.scan.ExecutionTime = 0.001;
  EXPECT_EQ(filterSubscan(project, project.filterSlots[0]), (FilterSubscan{3333, 1}));
  project.filterSlots[0].FiltFreqNum = 0;
  EXPECT_EQ(filterSubscan(project, project.filterSlots[0]), (FilterSubscan{1000, 1}));
}

TEST(TimeToFill, ListsTablesThatAreOn) {
  Project project;
  KGEN_COMMON::SetAllDefaults(project);
  project.tables[0].TableOn = true;
  project.tables[2] = every("90061500", 0);
  project.tables[2].TableOn = true;
  project.tables[2].AutoSize = false;
  project.tables[2].Buffer = 100;
  project.tables[3].TableOn = true;
  project.tables[3].AutoSize = false;
  project.tables[3].Buffer = -1;
  EXPECT_EQ(KGEN_COMMON::timeToFillText(project),
            "Table 1 Time To Fill:\r\nBuffer Size   = Auto Size\r\n"
            "Table 3 Time To Fill:\r\n1 Days, 1 Hours, 1 Mins, 1.5 Secs\r\n"
            "Table 4 Time To Fill:\r\nBuffer Size   = Auto Size\r\n");
}

TEST(TimeUnits, HaveThreeNames) {
  EXPECT_EQ(KGEN_COMMON::TimeUnitName(4, true), "hour");
  EXPECT_EQ(KGEN_COMMON::TimeUnitName(4, false), "Hour");
  EXPECT_EQ(unitKeyword(4), "Hr");
  EXPECT_EQ(KGEN_COMMON::TimeUnitName(6, true), "");
  EXPECT_EQ(unitKeyword(-1), "");
}

TEST(ProcessingDescription, NamesTheTable) {
  Project project;
  KGEN_COMMON::SetAllDefaults(project);
  EXPECT_EQ(KGEN_COMMON::ProcessingDescription(project, 1, 2),
            "The largest value scanned will be stored each time table Table2 outputs a record.");
  EXPECT_EQ(KGEN_COMMON::ProcessingDescription(project, 8, 1),
            " each time table Table1 outputs a record.");
  for (const std::size_t table : {0U, 9U})
    EXPECT_THROW(KGEN_COMMON::ProcessingDescription(project, 0, table), std::out_of_range);
}

}  // namespace
}  // namespace model
