#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "apps/workbench.h"

namespace apps_test {
namespace {

const char* const faulty = "Dim X, Spare\r\nBeginProg\r\nX = Y\r\nEndProg\r\n";
const char* const right = "Dim X\nBeginProg\nScan(1,Sec,0,0)\nBattery(X,0)\nNext Scan\nEndProg\n";

TEST(Compile, ShowsErrorsFirstAndEveryFile) {
  const Workbench bench;
  bench.write("a.KX7", faulty);
  bench.write("b.KX7", right);
  const Outcome run = bench.kgen("compile a.KX7 - < b.KX7");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out,
            "a.KX7:3:5: error: 'Y' is not declared; declare it with Dim, Public or Const "
            "[undeclared-name]\n  X = Y\n      ^\n"
            "a.KX7:1:8: hint: variable 'Spare' is never used; remove it [never-used]\n"
            "  Dim X, Spare\n         ^\na.KX7: 4 lines, 1 error, 0 warnings, 1 hint\n"
            "standard input: 6 lines, 0 errors, 0 warnings, 0 hints\n");
  EXPECT_EQ(bench.kgen("compile b.KX7").code, 0);
  const Outcome missing = bench.kgen("compile none.KX7 b.KX7 a.KX7");
  EXPECT_EQ(missing.code, 3);
  EXPECT_NE(missing.out.find("b.KX7: 6 lines"), std::string::npos);
  EXPECT_NE(missing.err.find("none.KX7"), std::string::npos);
}

TEST(Compile, GivesTheSameAsJson) {
  const Workbench bench;
  bench.write("a.KX7", faulty);
  const Outcome run = bench.kgen("compile a.KX7 --format json");
  EXPECT_EQ(run.code, 1);
  const auto file = nlohmann::json::parse(run.out)["files"][0];
  EXPECT_EQ(file["errors"], 1);
  EXPECT_EQ(file["findings"][0]["code"], "undeclared-name");
  EXPECT_EQ(file["findings"][0]["line"], 3);
  EXPECT_EQ(file["findings"][0]["source"], "X = Y");
}

TEST(Compile, ExplainsACode) {
  const Workbench bench;
  EXPECT_TRUE(bench.kgen("explain Zero-Divisor").out.starts_with("# zero-divisor (error)\n"));
  EXPECT_EQ(bench.kgen("explain zero").code, 2);
}

TEST(PreCompiler, ReportsOnItselfAndOnPrograms) {
  const Workbench bench;
  bench.write("a.KX7", faulty);
  bench.write("b.KX7", right);
  const std::string program = std::string(K7COMP_PROGRAM) + " ";
  EXPECT_EQ(bench.shell(program + "-d v.txt").code, 0);
  const std::string version = bench.read("v.txt");
  EXPECT_TRUE(version.starts_with("[Version]\r\nVERSION: ")) << version;
  EXPECT_NE(version.find("\r\nDATE: "), std::string::npos);
  EXPECT_EQ(bench.shell(program + "-t b.KX7 r.txt").code, 0);
  EXPECT_EQ(bench.read("r.txt"), "[Compile Results]\r\nCompiled OK\r\nScan:\r\nBATTERY: 30\r\n");
  EXPECT_EQ(bench.shell(program + "-t a.KX7 r.txt").code, 0);
  EXPECT_EQ(bench.read("r.txt"),
            "[Compile Results]\r\nLine 3, column 5: 'Y' is not declared; declare it with Dim, "
            "Public or Const [undeclared-name]\r\n");
  EXPECT_EQ(bench.shell(program + "-t none.KX7 r.txt").code, 3);
  EXPECT_EQ(bench.shell(program + "-t a.KX7").code, 2);
}

}  // namespace
}  // namespace apps_test
