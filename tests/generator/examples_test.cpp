#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "companion/table_information.h"
#include "generator/program_writer.h"
#include "model/channel_plan.h"
#include "projectfile/project_file.h"
#include "support/program_reader.h"

namespace {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Where two texts first differ, with the line: shorter to read than both of them.
std::string firstDifference(const std::string& got, const std::string& want) {
  const auto [a, b] = std::mismatch(got.begin(), got.end(), want.begin(), want.end());
  if (a == got.end() && b == want.end()) return "";
  const auto line = std::count(got.begin(), a, '\n') + 1;
  const auto lineStart = std::find(std::make_reverse_iterator(a), got.rend(), '\n').base();
  return "line " + std::to_string(line) + ": " +
         std::string(lineStart, std::find(a, got.end(), '\n'));
}

class Examples : public testing::TestWithParam<fs::path> {
 protected:
  void SetUp() override {
    KGEN_COMMON::SetAllDefaults(project_);
    const auto report = KGEN_GENFILE::load(GetParam().string(), project_);
    ASSERT_FALSE(report.error) << *report.error;
    EXPECT_TRUE(report.notes.empty());
    EXPECT_EQ(report.ignoredLines, 0U);
  }
  [[nodiscard]] fs::path golden(std::string_view extension) const {
    return fs::path(KGEN_GOLDEN_DIR) / "programs" /
           (GetParam().stem().string() + std::string(extension));
  }

  model::Project project_;
  model::DocumentStamp stamp_{GetParam().stem().string(), {2026, 7, 4, 13, 5, 9}, false};
};

TEST_P(Examples, PassUnchangedThroughTheProjectFile) {
  EXPECT_EQ(firstDifference(KGEN_GENFILE::fileText(project_, stamp_), bytesOf(GetParam())), "");
}

TEST_P(Examples, FitTheirHardware) {
  const auto problems = model::channelPlan(project_).problems;
  EXPECT_TRUE(problems.empty()) << problems.front();
}

TEST_P(Examples, GiveTheirProgramsAndTableInformation) {
  const SAVEDLD::Program program = SAVEDLD::generate(project_, stamp_);
  EXPECT_TRUE(program.notes.empty()) << program.notes.front();
  const std::string extension(programExtension(project_.configuration));
  EXPECT_EQ(firstDifference(program.text, bytesOf(golden(extension))), "");
  EXPECT_EQ(firstDifference(companion::tableInformation(project_, stamp_), bytesOf(golden(".TI7"))),
            "");
  EXPECT_EQ(support::faultList(program.text, support::readProgram(program.text).faults), "");
}

std::vector<fs::path> exampleFiles() {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(KGEN_EXAMPLES_DIR))
    if (entry.path().extension() == ".GN7") files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

INSTANTIATE_TEST_SUITE_P(All, Examples, testing::ValuesIn(exampleFiles()),
                         [](const auto& example) { return example.param.stem().string(); });

}  // namespace
