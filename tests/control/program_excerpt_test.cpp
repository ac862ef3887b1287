#include "control/program_excerpt.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "generator/program_writer.h"
#include "support/demo_project.h"

namespace control {
namespace {

constexpr std::string_view program =
    "Const VREP1 = 2      'Press counts\r\n"
    "Dim VBlk1(VREP1)\r\n"
    "Dim MVBlk1(VREP1)\r\n"
    "Alias VBlk1(1) = Press\r\n"
    "DataTable(T1,True,-1)\r\n"
    "   Average(1,VBlk1(),FP2,False)\r\n"
    "   Sample(1,Other,FP2)\r\n"
    "EndTable\r\n"
    "BeginProg\r\n"
    "   Scan(1,Sec,0,0)\r\n"
    "      VoltDiff(VBlk1(),VREP1,mV50)\r\n"
    "      If PRESS > 3 Then Flag(3) = True\r\n"
    "      If Other > 3 Then\r\n"
    "         Flag(3) = False\r\n"
    "         Flag(30) = Pressure\r\n"
    "      EndIf\r\n"
    "   NextScan\r\n"
    "EndProg\r\n";

TEST(Excerpt, HasWholeWordsBelowTheLineThatOpensTheirBlock) {
  EXPECT_EQ(excerpt(program, {"press"}),
            "Alias VBlk1(1) = Press\r\n"
            "   Scan(1,Sec,0,0)\r\n"
            "      If PRESS > 3 Then Flag(3) = True\r\n");
  EXPECT_EQ(excerpt(program, {"Flag(3)"}),
            "   Scan(1,Sec,0,0)\r\n"
            "      If PRESS > 3 Then Flag(3) = True\r\n"
            "      If Other > 3 Then\r\n"
            "         Flag(3) = False\r\n"
            "      EndIf\r\n");
  EXPECT_EQ(excerpt(program, {"VBl*", "Nothing"}),
            "Dim VBlk1(VREP1)\r\n"
            "Alias VBlk1(1) = Press\r\n"
            "DataTable(T1,True,-1)\r\n"
            "   Average(1,VBlk1(),FP2,False)\r\n"
            "   Scan(1,Sec,0,0)\r\n"
            "      VoltDiff(VBlk1(),VREP1,mV50)\r\n");
  EXPECT_EQ(excerpt(program, {"t1{}"}),
            "DataTable(T1,True,-1)\r\n"
            "   Average(1,VBlk1(),FP2,False)\r\n"
            "   Sample(1,Other,FP2)\r\n"
            "EndTable\r\n");
  for (const std::vector<std::string>& names :
       std::vector<std::vector<std::string>>{{}, {""}, {"*"}, {"VBl"}, {"counts"}})
    EXPECT_EQ(excerpt(program, names), "");
  EXPECT_EQ(excerpt("Dim B1(2)\r\nDim B1Zero(2)\r\nDim B10(2)\r\n", {"B1*"}),
            "Dim B1(2)\r\nDim B1Zero(2)\r\n");
}

TEST(Excerpt, TellsWhenThePartsOfAnIfRun) {
  constexpr std::string_view branches =
      "BeginProg\r\n"
      "   Scan(1,Sec,0,0)\r\n"
      "      If A > 1 Then\r\n"
      "         Flag(1) = True\r\n"
      "         If B > 1 Then\r\n"
      "            Other = 1\r\n"
      "         End If\r\n"
      "      ElseIf A < 0 Then\r\n"
      "         Flag(1) = False\r\n"
      "      Else\r\n"
      "         Other = 2\r\n"
      "      End If\r\n"
      "   Next Scan\r\n"
      "EndProg\r\n";
  EXPECT_EQ(excerpt(branches, {"Flag(1)"}),
            "      If A > 1 Then\r\n"
            "         Flag(1) = True\r\n"
            "      ElseIf A < 0 Then\r\n"
            "         Flag(1) = False\r\n"
            "      Else\r\n"
            "      End If\r\n");
}

TEST(Excerpt, TakesAnyTextAsProgram) {
  EXPECT_EQ(excerpt("", {"a"}), "");
  EXPECT_EQ(excerpt("EndIf\nx = a", {"a"}), "x = a");
  EXPECT_EQ(excerpt("Next Scan : a(\n\"'\" a ' a", {"a"}), "Next Scan : a(\n\"'\" a ' a");
}

TEST(Excerpt, ShowsWhatASettingOfAProjectGives) {
  const std::string text = SAVEDLD::generate(support::demoProject(), support::demoStamp()).text;
  const std::string lines = excerpt(text, {"Press"});
  EXPECT_NE(lines.find("Alias VBlk1(1) = Press"), std::string::npos) << lines;
  EXPECT_NE(lines.find("Alias OVBlk1(1) = O$Press"), std::string::npos) << lines;
  EXPECT_NE(lines.find("Units Press = psi"), std::string::npos) << lines;
  EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 4) << lines;  // comments don't count
}

}  // namespace
}  // namespace control
