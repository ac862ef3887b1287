#include <gtest/gtest.h>

#include "generator/program_writer.h"
#include "support/demo_project.h"

namespace {

TEST(DemoProgram, IsTheGoldenListing) {
  const SAVEDLD::Program program = SAVEDLD::generate(support::demoProject(), support::demoStamp());
  EXPECT_EQ(program.text, support::wholeFile(KGEN_GOLDEN_DIR "/demo.KX7"));
  EXPECT_EQ(program.lines, 195);
}

}  // namespace
