#include <gtest/gtest.h>

#include <random>

#include "apps/workbench.h"
#include "projectfile/project_file.h"
#include "text/strings.h"

namespace apps_test {
namespace {

bool isWhole(const Workbench& bench, const std::string& name) {
  return std::filesystem::exists(bench.path(name)) && !KGEN_GENFILE::isCutShort(bench.read(name));
}

/// A project of some megabytes, so that a save takes long enough to be caught in the middle.
TEST(Save, KilledAtAnyMomentLeavesAWholeProject) {
  const Workbench bench;
  bench.write("new.GN7", endlessProject());
  bench.write("site.GN7", endlessProject());
  std::mt19937 random(20'261'124);
  std::uniform_int_distribution<int> delay(1, 60);
  int killed = 0;
  for (int i = 0; i < 30; ++i) {
    const Outcome run =
        bench.shell(text::concat("timeout -s KILL 0.0", delay(random) < 10 ? "0" : "",
                                 delay(random), " $KGEN convert new.GN7 site.GN7 2>/dev/null"));
    killed += run.code == 0 ? 0 : 1;
    const bool whole = isWhole(bench, "site.GN7");
    ASSERT_TRUE(whole || isWhole(bench, "site._EN"));
    const Outcome show = bench.kgen("show site.GN7 > /dev/null");
    ASSERT_EQ(show.code, whole ? 0 : 3);
    ASSERT_EQ(show.err.find("site._EN") != std::string::npos, !whole) << show.err;
  }
  EXPECT_GT(killed, 0);
}

TEST(Save, HalfSavedProjectsAreNotOpened) {
  const Workbench bench;
  bench.write("site.GN7", smallProject());
  const std::string content = bench.read("site.GN7");
  bench.write("site._EN", content);
  EXPECT_EQ(bench.kgen("show site").code, 0);  // whole: only the backup was not deleted
  bench.write("site.GN7", content.substr(0, content.size() / 2));
  const Outcome cut = bench.kgen("generate site");
  EXPECT_EQ(cut.code, 3);
  EXPECT_NE(cut.err.find("site.GN7: is cut short"), std::string::npos) << cut.err;
  std::filesystem::remove(bench.path("site.GN7"));
  const Outcome missing = bench.kgen("show site");
  EXPECT_EQ(missing.code, 3);
  EXPECT_NE(missing.err.find("site.GN7: is missing"), std::string::npos) << missing.err;
  EXPECT_EQ(bench.kgen("show site._EN").code, 0);
}

}  // namespace
}  // namespace apps_test
