#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "apps/workbench.h"
#include "support/demo_project.h"

namespace apps_test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

/// To make the file anew: run the loop of the test in a shell and read every change.
TEST(Check, SaysTheSameOfTheExamples) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(KGEN_EXAMPLES_DIR))
    if (entry.path().extension() == ".GN7") files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  const Workbench bench;
  std::string all;
  for (const fs::path& file : files) {
    const Outcome run = bench.kgen("check " + file.string());
    EXPECT_EQ(run.err, "");
    all += "=== " + file.filename().string() + ": exit code " + std::to_string(run.code) + "\n" +
           run.out;
  }
  EXPECT_EQ(all, support::wholeFile(std::string(KGEN_GOLDEN_DIR) + "/checks.txt"));
}

/// Two boxes with different buttons, and conditions of an old version.
model::Project burstProject() {
  model::Project project = smallProject();
  project.scan.ScanMode = 1;
  project.block(model::BlockKind::voltage, 1).ZeroFlag = 2;
  project.block(model::BlockKind::voltage, 1).CalOnSite = true;
  return project;
}

TEST(Check, AnswersAsToldAndWritesNothing) {
  const struct {
    const char* arguments;
    int code;
    std::vector<std::string> answers;
  } cases[] = {
      {"", 1, {"cancel", "no"}},
      {"--answer ok", 0, {"ok", "yes", "ok"}},  // and the floating ground warning
      {"--answer yes", 0, {"ok", "yes", "ok"}},
      {"--answer no", 1, {"cancel", "no"}},
      {"--answer cancel", 1, {"cancel", "cancel"}},
  };
  const Workbench bench;
  bench.write("burst.GN7", burstProject());
  const std::string before = bench.read("burst.GN7");
  for (const auto& [arguments, code, answers] : cases) {
    SCOPED_TRACE(arguments);
    const Outcome run = bench.kgen(std::string("check burst --format json ") + arguments);
    EXPECT_EQ(run.code, code) << run.err;
    const json answer = json::parse(run.out);
    EXPECT_EQ(answer.at("doNotSave"), code == 1);
    EXPECT_EQ(answer.at("needsUpgrade"), false);
    std::vector<std::string> given;
    for (const json& message : answer.at("messages")) given.push_back(message.at("answer"));
    EXPECT_EQ(given, answers);
    EXPECT_EQ(answer.at("/messages/1/buttons"_json_pointer), "yes/no/cancel");
    EXPECT_EQ(answer.at("/messages/0/icon"_json_pointer), "question");
  }
  EXPECT_TRUE(bench.read("burst.GN7") == before);
  EXPECT_EQ(bench.files(), std::vector<std::string>{"burst.GN7"});
  EXPECT_EQ(bench.kgen("check burst --answer maybe").code, 2);
  EXPECT_EQ(bench.kgen("check absent").code, 3);
}

TEST(Check, FindsAnUpgrade) {
  const Workbench bench;
  model::Project project = smallProject();
  project.configuration.Version = "5.3";
  project.tables[0].TrigTable = 1;
  project.tables[0].conditions.TriggerMeasVar(0, 1, "BattVolt");
  bench.write("old.GN7", project);
  const Outcome run = bench.kgen("check old");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "do not save: no, needs upgrade: yes\n");
}

}  // namespace
}  // namespace apps_test
