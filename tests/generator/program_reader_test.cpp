#include "support/program_reader.h"

#include <gtest/gtest.h>

#include "support/demo_project.h"

namespace {

std::string demo() { return support::wholeFile(KGEN_GOLDEN_DIR "/demo.KX7"); }

/// A change of the demo program and a part of the fault that it must give.
struct Mutation {
  std::string_view from, to, fault;
};

constexpr Mutation mutations[] = {
    {"Sub Zero ", "Sub Zera ", "'zero' is no instruction"},
    {"CallTable Table1\r\n", "CallTable Table2\r\n", "no 'table2' to call"},
    {"CallTable Table1\r\n", "Call Table1\r\n", "no 'table1' to call"},
    {"   Next Scan ", "   NextSubScan", "not open"},
    {"Loop    ", "Next I  ", "not open"},
    {"End Sub\r\n", "EndTable\r\n", "can't stand here"},
    {"EndTable\r\n", "\r\n", "is not closed"},
    {"TREP1,TBlk1(),FP2", "TREP1,TBlk2(),FP2", "'tblk2' is not declared"},
    {"Dim OVBlk1(VREP1)", "Dim OVBlk1(IREP1)", "out of bounds"},
    {"Dim I  ", "Dim Tb ", "'i' is no variable"},
    {"Dim Count2", "Dim Count ", "declared twice"},
    {"Dim BattCurr", "Dim VBLK1   ", "declared twice"},
    {"Press = psi  ", "Inlet = psi  ", "has units already"},
    {",TRef(1),True,", ",TRef(1),", "number of arguments"},
    {",TRef(1),True,", ",TRef(2),True,", "out of bounds"},
    {",TRef(1),True,", ",TRef(1),TREP1,", "argument 8 is of another kind"},
    {"MeasDisable,False)", "MeasDisable)", "number of arguments"},
    {"VBlk1Zero_Avg", "VBlk1Zero_Max_", "has no column"},
    {"Zero_1,Count = 10", "Zero_Table,Count = 10", "too long"},
    {"TRNG1,5,1,", "TRNG1,5,3,", "is used twice"},
    {"VRNG1,5,5,VSETL1,VINT1,MVBlk1(),OV", "VRNG1,6,5,VSETL1,VINT1,MVBlk1(),OV",
     "holds no 7121/22"},
    {"MVBlk1(I) = VMULT1 ", "MVBlk1(1) = VMULT1 ", "not filled to its end"},
    {"ModuleTemp(TRef(),1,5,40)", "Calibrate()              ", "'tref' never gets a value"},
    {"SlotConfigure(7121,7131,7128)", "SlotConfigure(7121,7128)", "does not list slot 6"},
    {"Flag(3) = False  ", "Flag(9) = False  ", "out of bounds"},
    {"Const VSETL1 = 30  ", "Const VSETL1 = 30 ", "wrong column"},
    {"\\\\ SUBROUTINES //", "\\ SUBROUTINES ///", "wrong width"},
    {"______ Volt Blocks ______", "_____ Volt Blocks ______", "wrong width"},
    {"BeginProg ", "BeginProg\t", "not printable"},
    {"EndProg ", "EndProg\n", "does not end in CR LF"},
};

TEST(ProgramReader, FindsNoFaultInTheDemoProgram) {
  const support::ProgramReading reading = support::readProgram(demo());
  EXPECT_EQ(support::faultList(demo(), reading.faults), "");
  ASSERT_EQ(reading.tables.size(), 2U);
  EXPECT_EQ(reading.tables[0].name, "table1");
  EXPECT_EQ(reading.tables[0].values, 6U);
  EXPECT_EQ(reading.tables[0].bytes, 12U);
}

TEST(ProgramReader, FindsEveryMutation) {
  for (const auto& [from, to, fault] : mutations) {
    SCOPED_TRACE(from);
    std::string text = demo();
    const std::string replaced = std::string(from);
    const std::size_t at = text.find(replaced);
    ASSERT_NE(at, std::string::npos);
    text.replace(at, replaced.size(), to);
    const std::string faults = support::faultList(text, support::readProgram(text).faults);
    EXPECT_NE(faults.find(fault), std::string::npos) << faults;
  }
}

/// Statements without effect on the rest of the program may go unnoticed; these may not.
TEST(ProgramReader, FindsADroppedLine) {
  const std::string whole = demo();
  for (const std::string_view line : {"Const TREP1",
                                      "Public TBlk1",
                                      "Dim MVBlk1",
                                      "Alias TBlk1",
                                      "Dim MeasDisable",
                                      "DataTable(T",
                                      "EndTable",
                                      "   Average(VREP1",
                                      "End Sub",
                                      "CallTable Zero_1",
                                      "BeginProg",
                                      "Do ",
                                      "Loop ",
                                      "   Scan(PERIOD",
                                      "      VoltSE(VBlk1()",
                                      "      SubScan(",
                                      "SlowSequence",
                                      "Dim TripVolt",
                                      "SlotConfigure(",
                                      "      CallTable Table1",
                                      "   Next I"}) {
    SCOPED_TRACE(line);
    const std::size_t begin = whole.find("\n" + std::string(line)) + 1;
    ASSERT_NE(begin, 0U);
    std::string text = whole;
    text.erase(begin, whole.find('\n', begin) + 1 - begin);
    EXPECT_FALSE(support::readProgram(text).faults.empty());
  }
}

}  // namespace
