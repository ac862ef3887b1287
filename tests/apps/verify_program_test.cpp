#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "apps/workbench.h"

namespace apps_test {
namespace {

class VerifyProgram : public testing::Test {
 protected:
  VerifyProgram() {
    bench.write("small.GN7", smallProject());
    const Outcome made = bench.kgen("generate small");
    EXPECT_EQ(made.code, 0) << made.err;
  }
  void edit(const std::string& from, const std::string& to) const {
    std::string program = bench.read("small.KX7");
    const std::size_t at = program.find(from);
    ASSERT_NE(at, std::string::npos);
    bench.write("small.KX7", program.replace(at, from.size(), to));
  }

  Workbench bench;
};

TEST_F(VerifyProgram, AgreesWithWhatWasGenerated) {
  EXPECT_EQ(bench.kgen("verify-program small.GN7 small.KX7").out,
            "small.KX7: says what the project says\n");
  EXPECT_EQ(bench.kgen("verify-program - small.KX7 < small.GN7").code, 0);
  EXPECT_EQ(bench.kgen("verify-program small - < small.KX7").code, 0);
  EXPECT_EQ(bench.kgen("verify-program - -").code, 2);
  EXPECT_EQ(bench.kgen("verify-program small none.KX7").code, 3);
}

TEST_F(VerifyProgram, NamesEachDifferenceWithItsPlaceAndSetting) {
  edit("Const VINT1 = 40", "Const VINT1 = 90");
  const Outcome run = bench.kgen("verify-program small small.KX7");
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.out.find(": the constant VINT1 is 90 and 40 is expected ([VOLTAGE BLOCKS] "
                         "Integration, block 1)\nsmall.KX7: 0 errors, 1 difference\n"),
            std::string::npos)
      << run.out;
  const Outcome json = bench.kgen("verify-program small small.KX7 --format json");
  EXPECT_EQ(json.code, 1);
  const auto answer = nlohmann::json::parse(json.out);
  EXPECT_EQ(answer["equal"], false);
  EXPECT_EQ(answer["errors"].size(), 0U);
  const auto difference = answer["differences"][0];
  EXPECT_EQ(difference["is"], "90");
  EXPECT_EQ(difference["expected"], "40");
  EXPECT_EQ(difference["key"], "Integration");
}

TEST_F(VerifyProgram, TellsErrorsToo) {
  edit("EndProg", "");
  const Outcome run = bench.kgen("verify-program small small.KX7");
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.out.find("[block-not-closed]"), std::string::npos) << run.out;
}

/// What an engineer types wrong is said, and no reason not to write the program.
TEST_F(VerifyProgram, FindsTheEngineersMistakesInBothAndKeepsQuiet) {
  model::Project project = smallProject();
  project.calculated.fields.resize(1);
  project.calculated.CalcFieldCount = 1;
  project.calculated.fields[0].CalcExpress = "Nobody + 1";
  bench.write("small.GN7", project);
  const Outcome made = bench.kgen("generate small --force");
  EXPECT_EQ(made.code, 0);
  EXPECT_NE(made.err.find("warning: a condition or an expression of the project makes a fault in"),
            std::string::npos)
      << made.err;
  EXPECT_EQ(bench.kgen("compile small.KX7").code, 1);
  EXPECT_EQ(bench.kgen("verify-program small small.KX7").code, 0);
}

}  // namespace
}  // namespace apps_test
