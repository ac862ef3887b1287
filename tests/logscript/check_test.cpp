#include "logscript/check.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "logscript/instructions.h"
#include "support/demo_project.h"
#include "text/strings.h"

namespace {

using logscript::Finding;
using text::concat;

/// "3:5 undeclared-name" for each error and warning; hints too when asked for.
std::string shown(std::string_view program, bool hints = false) {
  std::string out;
  for (const Finding& finding : logscript::check(program)) {
    const logscript::CodeInfo& info = logscript::infoOf(finding.code);
    if (info.severity == logscript::Severity::hint && !hints) continue;
    out += concat(out.empty() ? "" : ", ", finding.line, ":", finding.column, " ", info.name);
  }
  return out;
}

/// A program: declarations that the cases share, then the lines of the case from line 11 on.
std::string inProgram(std::string_view body) {
  return concat(
      "Const N = 3\nConst ZERO = 0\nConst RNG = mV50\nPublic Flag(8)\nDim X, Y, I\nDim A(N), "
      "B(2,N)\n"
      "Alias A(1) = First\nDataTable(T,True,-1)\nSample(N,A(),FP2)\nEndTable\n",
      body);
}
std::string inBody(std::string_view body) {
  return inProgram(concat("BeginProg\n", body, "\nCallTable T\nEndProg\n"));
}
std::string inScan(std::string_view body) {
  return inBody(concat("Scan(1,Sec,0,0)\n", body, "\nNext Scan"));
}

struct Case {
  const char* lines;
  const char* expected;
};

void expectAll(std::initializer_list<Case> cases, std::string (*wrap)(std::string_view)) {
  for (const auto& [lines, expected] : cases) EXPECT_EQ(shown(wrap(lines)), expected) << lines;
}

TEST(Check, TakesTheWholeLanguage) {
  expectAll(
      {{"X = -A(1)^2 + B(2,3)*(Y - .5E-3)/&H1F \\ 2 Mod 3", ""},
       {"If X <1 And Not Y >=2 Or X <> 3 Then X = 1 : Y = 2 Else X = 3", ""},
       {"if x = 1 then\nx = 2\nelseif X = 2 Then\nELSE\nY = 1\nEndIf", ""},
       {"Do Until Flag(1): Loop\nDo\nExitDo\nLoop While X < 3\nWhile X < 2\nWend", ""},
       {"For I = N To 1 Step -1\nA(I) = I\nExit For\nNext", ""},
       {"Select Case X\nCase 1, 2 To 3\nY = 1\nCase Else\nY = 2\nEnd Select", ""},
       {"X = IIF(T.Record(1,0) >= T.TableSize(1,1),True,False)\nX = T.A(2,1) + T.First(1,1)", ""},
       {"First = Abs(First) : Delay(10,mSec)", ""},
       {"SlowSequence\nDim Late\nLate = 1", ""}},
      inBody);
  expectAll(
      {{"VoltSE(A(),N,RNG,5,1,30,40,1,0)\nIf X Then VoltSE(A(),N,RNG,5,1,30,40,1,0)", ""},
       {"SubScan (100,uSec,10)\nNextSubScan\nBeginBurstTrigger(X > 1)\nEndBurstTrigger(1,2)", ""},
       {"AvgRun(A(1), 3,A(),10)\nIf X Then ExitScan", ""}},
      inScan);
  EXPECT_EQ(shown("\xEF\xBB\xBF' a comment\r\n\r\nBeginProg 'begins\r\nEndProg"), "");
}

TEST(Check, TellsFaultsOfForm) {
  expectAll({{"X = (1 + 2", "12:11 syntax"},
             {"X = 1 Y = 2", "12:7 syntax"},
             {"X = 1 $ 2\nY = 1 +", "12:7 syntax, 13:8 syntax"},
             {"Fi X Then\nEnd If", "12:1 syntax"},
             {"For I = 1 Too 3\nNxet I", "12:11 syntax, 13:1 syntax"},
             {"If X Thne Y = 1", "12:6 syntax"},
             {"If X + Then\nY = 1\nEnd If", "12:8 syntax"},
             {"Do\nLoopp", "13:1 syntax"},
             {"X = \"text", "12:5 syntax"},
             {"5 = X", "12:1 syntax"}},
            inBody);
  EXPECT_EQ(
      shown(inProgram("Dmi Z\nConst K = \nDim Q(\nBeginProg\nZ = K + Q(1)\nCallTable T\nEndProg")),
      "11:1 syntax, 12:11 syntax, 13:7 syntax");
}

TEST(Check, TellsFaultsOfBlocks) {
  expectAll({{"For I = 1 To 3\nX = 1", "12:1 block-not-closed"},
             {"For I = 1 To 3\nX = 1\nFor I = 1 To 2\nNext I", "12:1 block-not-closed"},
             {"Do\nIf X Then\nLoop", "13:1 block-not-closed"},
             {"If X Then Do", "12:11 block-not-closed"},
             {"Next I", "12:1 closes-nothing"},
             {"X = 1\nElse\nY = 1\nEnd If", "13:1 closes-nothing"},
             {"NextScan", "12:1 closes-nothing"},
             {"For I = 1 To 3\nNext X", "13:6 closed-wrongly"},
             {"BeginProg", "11:1 block-not-closed, 12:1 wrong-place"},
             {"DataTable(Z,True,1)\nEndTable",
              "11:1 block-not-closed, 12:11 table-not-called, "
              "14:1 wrong-place"}},
            inBody);
  EXPECT_EQ(shown("DataTable(T,True,1)\nBeginProg\nCallTable T"),
            "1:1 block-not-closed, 2:1 block-not-closed");
  EXPECT_EQ(shown("Sub S\nSub R\nEnd Sub\nBeginProg\nCall S : R\nEndProg"), "1:1 block-not-closed");
  EXPECT_EQ(shown("Dim X"), "1:6 no-program");
}

TEST(Check, TellsStatementsInTheWrongPlace) {
  expectAll({{"Battery(X,0)\nBattery(Y,1)\nCallTable T\nNext Scan", "12:1 wrong-place"},
             {"Sample(1,X,FP2)", "12:1 wrong-place"},
             {"SlotConfigure(7121)", "12:1 wrong-place"},
             {"If X Then\nDim Z\nEnd If\nZ = 1", "13:1 wrong-place"},
             {"ExitScan", "12:1 wrong-place"}},
            inBody);
  EXPECT_EQ(shown("Dim X\nX = 1\nX = 2\nBeginProg\nEndProg"), "2:1 wrong-place");
  EXPECT_EQ(shown("Dim X\nAverage(1,X,FP2,False)\nEndTable\nBeginProg\nCallTable T\nEndProg"),
            "2:1 wrong-place");
  EXPECT_EQ(
      shown("Dim X\nDataTable(T,True,1)\nX = 1\nX = 2\nEndTable\nBeginProg\nCallTable T\nEndProg"),
      "3:1 wrong-place");
}

TEST(Check, TellsFaultsOfNames) {
  expectAll({{"X = Z + Z\nZ = 1", "12:5 undeclared-name"},
             {"X = Fist", "12:5 undeclared-name"},
             {"For K = 1 To 2\nNext K", "12:5 undeclared-name"},
             {"N = 4", "12:1 wrong-kind"},
             {"X = A + 1", "12:5 wrong-kind"},
             {"X = A()", "12:5 wrong-kind"},
             {"X = T", "12:5 wrong-kind"},
             {"X = Sec", "12:5 wrong-kind"},
             {"X = Scan", "12:5 syntax"},
             {"First(1) = 2", "12:1 wrong-kind"},
             {"CallTable X\nCall T", "12:11 wrong-kind, 13:6 wrong-kind"},
             {"CallTable Q\nFileMark(Q)", "12:11 unknown-table"},
             {"X = Q.Record(1,0)", "12:5 unknown-table"},
             {"X = T.B(1,1)", "12:5 unknown-field"},
             {"Call S\nS", "12:6 unknown-subroutine"},
             {"Restoer(1)", "12:1 unknown-instruction"}},
            inBody);
  expectAll({{"Dim x", "11:5 declared-twice"},
             {"Const T = 1", "11:7 declared-twice"},
             {"Dim Average", "11:5 reserved-name"},
             {"Dim Loop", "11:5 reserved-name"},
             {"Const C = X", "11:11 wrong-kind"},
             {"Dim C(X)", "11:7 wrong-kind"},
             {"Dim C(0)", "11:7 index-range"},
             {"Alias A(4) = C", "11:9 index-range"},
             {"Alias First = C", "11:7 wrong-kind"},
             {"Units T = km/h", "11:7 wrong-kind"}},
            [](std::string_view lines) {
              return inProgram(concat(lines, "\nBeginProg\nCallTable T\nEndProg"));
            });
}

TEST(Check, TellsFaultsOfArguments) {
  expectAll(
      {{"VoltSE(A(),N,RNG,5,1,30,40,1)", "13:1 argument-count"},
       {"VoltSE(A(),N,N,5,1,30,40,1,0)", "13:14 argument-kind"},
       {"VoltSE(A(),X,RNG,5,1,30,40,1,0)", "13:12 argument-kind"},
       {"VoltSE(N,N,RNG,5,1,30,40,1,0)", "13:8 argument-kind"},
       {"VoltSE(A(),4,RNG,5,1,30,40,1,0)", "13:8 index-range"},
       {"VoltSE(A(2),N,RNG,5,1,30,40,1,0)", "13:8 index-range"},
       {"VoltSE(A(),N,RNG,5,1,30,40,B(),0)", "13:28 index-range"},
       {"VoltSE(A(),N,RNG,16,1,30,40,1,0)", "13:18 slot-range"},
       {"VoltDiff(A(),N,RNG,5,15,True,30,40,1,0)", "13:22 slot-range"},
       {"VoltDiff(A(),N,RNG,5,1,2,30,40,1,0)", "13:24 argument-kind"},
       {"Delay(10,FP2)", "13:10 argument-kind"},
       {"FileMark(X)", "13:10 argument-kind"},
       {"X = Abs(1,2)\nX = T.Record(1)", "13:5 argument-count, 14:5 argument-count"},
       {"A(1,2) = 1\nX(1) = 2\nX = B(2)", "13:1 index-count, 14:1 index-count, 15:5 index-count"},
       {"A(N+1) = 1\nA(0) = 1", "13:3 index-range, 14:3 index-range"},
       {"For I = 1 To 4\nA(I) = 1\nIf I < 4 Then A(I) = 2\nNext I", "14:3 index-range"},
       {"Flag(9) = True\nFor I = 0 To 8\nFlag(I) = 0\nNext I",
        "13:6 flag-number, 15:6 flag-number"},
       {"X = 1/ZERO + 5 Mod (N-3)", "13:7 zero-divisor, 13:21 zero-divisor"}},
      inScan);
}

TEST(Check, TellsChannelsMeasuredTwice) {
  expectAll({{"VoltDiff(A(),N,RNG,5,1,True,30,40,1,0)\nVoltSE(X,1,RNG,5,6,30,40,1,0)",
              "14:1 channel-twice"},
             {"VoltSE(X,1,RNG,6,2,30,40,1,0)\nVoltDiff(A(),N,RNG,5,13,True,30,40,1,0)",
              "14:1 channel-twice"},
             {"VoltDiff(A(),N,RNG,5,1,True,30,40,1,0)\nVoltSE(X,1,RNG,5,7,30,40,1,0)", ""},
             {"PulseCount(A(),N,5,1,0,0,1,0)\nVoltSE(X,1,RNG,5,1,30,40,1,0)", ""},
             {"VoltSE(X,1,RNG,5,1,30,40,1,0)\nNext Scan\nScan(1,Sec,0,0)\n"
              "VoltSE(X,1,RNG,5,1,30,40,1,0)",
              ""}},
            inScan);
}

TEST(Check, TellsLevelsThatHaveTooLittleRoom) {
  const auto table = [](std::string_view levels) {
    return shown(concat("Dim S(2), L1(3), L2(2)\nDataTable(T,True,1)\nLevelCrossing(S(),FP2,0,",
                        levels, ",L1(),L2(),0,0)\nEndTable\nBeginProg\nCallTable T\nEndProg"));
  };
  EXPECT_EQ(table("3,2"), "");
  EXPECT_EQ(table("4,2"), "3:29 index-range");
  EXPECT_EQ(table("3,3"), "3:34 index-range");
}

TEST(Check, CountsDataAgainstRead) {
  const auto program = [](std::string_view data, std::string_view body) {
    return shown(inProgram(concat(data, "\nBeginProg\n", body, "\nCallTable T\nEndProg")));
  };
  const char* loop = "For I = 1 To N\nRead A(I)\nNext I";
  EXPECT_EQ(program("Data 1,-2\nData N", loop), "");
  EXPECT_EQ(program("Data 1,2", loop), "14:1 data-read");
  EXPECT_EQ(program("Data 1,2\nData 3,4", loop), "12:8 data-read");
  EXPECT_EQ(program("Data 1,2", "If X Then Read X"), "");
}

TEST(Check, TellsWhatIsNotUsed) {
  EXPECT_EQ(shown("Dim X, Y(2), Z\nAlias Y(1) = Q\nUnits Z = m\nDataTable(T,True,1)\nEndTable\n"
                  "Sub S\nEnd Sub\nBeginProg\nX = Q\nEndProg",
                  true),
            "1:14 never-used, 4:11 table-not-called, 6:5 never-used");
  EXPECT_EQ(shown("Public X\nBeginProg\nEndProg", true), "");  // seen from outside
  // A misspelt name counts as the one that was meant.
  EXPECT_EQ(shown("Dim Speed\nBeginProg\nSpeeed = 1\nEndProg", true), "3:1 undeclared-name");
}

TEST(Check, RefusesWhatIsTooMuch) {
  EXPECT_EQ(shown(concat("X", std::string(1, '\0'))), "1:1 not-text");
  const std::string lines(2997, '\n');
  EXPECT_EQ(shown(concat("BeginProg\n", lines, "'\nEndProg\n")), "");
  EXPECT_EQ(shown(concat("BeginProg\n", lines, "\n'\nEndProg")), "3001:1 too-long");
  const auto repeated = [](std::string_view part, int times) {
    std::string out;
    while (times-- > 0) out += part;
    return out;
  };
  const std::string inner = concat("Dim X\nBeginProg\nX = ", repeated("(", 10000), "1",
                                   repeated(")", 10000), "\nX = 1\nEndProg");
  EXPECT_EQ(shown(inner), "3:105 too-deep");
  EXPECT_EQ(shown(concat("BeginProg\n", repeated("Do:", 10000), "\nEndProg")), "2:298 too-deep");
  EXPECT_EQ(shown(concat("Dim X\nBeginProg\nX = ", repeated("1+", 100000), "1\nEndProg")), "");
  EXPECT_EQ(logscript::check(repeated("?\n", 5000)).size(), 101U);
}

TEST(Report, ShowsThePlaceUnderACaret) {
  const std::string program = "Dim X\r\nBeginProg\r\n\tX = Y 'sum\r\nEndProg\r\n";
  const std::vector<Finding> findings = logscript::check(program);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(logscript::report(findings[0], "A.KX7", program),
            "A.KX7:3:6: error: 'Y' is not declared; declare it with Dim, Public or Const "
            "[undeclared-name]\n  \tX = Y 'sum\n  \t    ^\n");
}

TEST(Words, EveryArgumentOfEveryInstructionHasAMeaning) {
  for (const logscript::Instruction& instruction : logscript::allInstructions())
    for (const char letter : instruction.arguments)
      EXPECT_EQ(logscript::argumentKind(letter).letter, letter) << instruction.name;
}

/// The program after a title line such as "Wrong:" of a page.
std::string example(const std::string& page, const std::string& title) {
  const std::size_t at = page.find(concat("\n", title, "\n\n```\n"));
  if (at == std::string::npos) return {};
  const std::size_t begin = page.find("```\n", at) + 4;
  return page.substr(begin, page.find("```", begin) - begin);
}

TEST(Pages, ExplainEveryCodeWithExamplesThatHold) {
  std::size_t pages = 0;
  for (const auto& entry : std::filesystem::directory_iterator(KGEN_FINDINGS_DIR)) {
    const std::string code = entry.path().stem();
    const std::string page = support::wholeFile(entry.path());
    ++pages;
    ASSERT_TRUE(logscript::codeNamed(code)) << code;
    const logscript::CodeInfo& info = logscript::infoOf(*logscript::codeNamed(code));
    EXPECT_TRUE(
        page.starts_with(concat("# ", code, " (", logscript::nameOf(info.severity), ")\n")));
    if (example(page, "Wrong:").empty()) continue;
    const std::string found = shown(example(page, "Wrong:"), true);
    EXPECT_TRUE(found.ends_with(concat(" ", code)) && found.find(',') == std::string::npos)
        << code << ": " << found;
    EXPECT_EQ(shown(example(page, "Right:"), true), "") << code;
  }
  EXPECT_EQ(pages, logscript::allCodes().size());
}

}  // namespace
