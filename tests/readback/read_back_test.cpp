#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "generator/program_writer.h"
#include "readback/verification.h"
#include "support/demo_project.h"
#include "support/examples.h"
#include "support/random_case.h"
#include "text/strings.h"

namespace {

/// What a person would read of a program that should be equal.
std::string disagreement(const std::string& program, const model::Project& project, bool dunmore) {
  const readback::Verification result = readback::verifyProgram(program, project, dunmore);
  std::string out;
  for (const logscript::Finding& error : result.errors)
    out += logscript::report(error, "program", program);
  for (const readback::Difference& difference : result.differences)
    out += readback::report(difference, "program");
  return out;
}

TEST(ReadBack, ProgramsOfExamplesSayWhatTheirProjectsSay) {
  const int examples = support::forExamples(
      KGEN_EXAMPLES_DIR, [](const std::string& name, const model::Project& project) {
        const std::string program = SAVEDLD::generate(project, support::demoStamp()).text;
        EXPECT_EQ(disagreement(program, project, false), "") << name;
      });
  EXPECT_GE(examples, 10);
}

TEST(ReadBack, ProgramsOfRandomProjectsDo) {
  for (unsigned seed = 0; seed < support::randomCases(150) && !HasFailure(); ++seed) {
    const support::RandomCase one = support::randomCase(seed);
    const std::string program = SAVEDLD::generate(one.project, one.stamp).text;
    EXPECT_EQ(disagreement(program, one.project, one.stamp.dunmoreHost), "") << seed;
  }
}

TEST(ReadBack, ProgramsOfOddProjectsDo) {
  for (unsigned seed = 0; seed < support::randomCases(150) && !HasFailure(); ++seed) {
    const support::RandomCase one = support::oddCase(seed);
    try {
      const std::string program = SAVEDLD::generate(one.project, one.stamp).text;
      EXPECT_EQ(disagreement(program, one.project, one.stamp.dunmoreHost), "") << seed;
    } catch (const SAVEDLD::ProgramTooLong&) {  // many more of something
    }
  }
}

/// Whatever stands where a program should: it differs, at lines that it has.
TEST(ReadBack, OfHalfAndGarbledProgramsEnds) {
  const model::Project project = support::demoProject();
  const std::string whole = SAVEDLD::generate(project, support::demoStamp()).text;
  constexpr std::string_view signs = "(),.=:'\"&X1\n\xC3";
  std::mt19937 random(3);
  for (std::size_t size = 0; size + 200 < whole.size(); size += 37) {
    std::string garbled = whole;
    for (int n = 0; n < 20; ++n)
      garbled[random() % garbled.size()] = signs[random() % signs.size()];
    for (const std::string& program : {whole.substr(0, size), garbled}) {
      const readback::Verification result = readback::verifyProgram(program, project);
      const auto lines = std::count(program.begin(), program.end(), '\n') + 1;
      EXPECT_FALSE(result.equal() && program.size() == size) << size;
      for (const readback::Difference& difference : result.differences) {
        EXPECT_GE(difference.line, 1U);
        EXPECT_LE(difference.line, lines);
      }
    }
  }
}

}  // namespace
