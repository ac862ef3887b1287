#include <gtest/gtest.h>

#include <QToolButton>
#include <fstream>
#include <set>
#include <sstream>

#include "control/panel_texts.h"
#include "control_bench.h"
#include "hands.h"
#include "mirror.h"
#include "projectfile/project_file.h"

namespace {

using support::ControlBench;
using support::Mirror;

/// The order of the work: the logger, the tables, what is measured, what depends on that, the scan.
constexpr int buttons[] = {0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 15, 13, 14, 1};
constexpr int mostPasses = 4;

std::string bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The lines of a text, each with the head of its section.
std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  std::string section;
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with('[')) section = line.substr(0, line.find(']') + 1) + " ";
    lines.push_back(section + line);
  }
  return lines;
}

/// Names the lines that one of the texts has alone.
void expectSame(const std::string& got, const std::string& wanted) {
  if (got == wanted) return;
  std::multiset<std::string> missing;
  for (const std::string& line : linesOf(wanted)) missing.insert(line);
  std::string out = "The texts differ.\n";
  for (const std::string& line : linesOf(got)) {
    const auto found = missing.find(line);
    if (found == missing.end())
      out += "too much: " + line + "\n";
    else
      missing.erase(found);
  }
  for (const std::string& line : missing) out += "missing:  " + line + "\n";
  ADD_FAILURE() << out;
}

/// What differs from a default is meant to.
ports::Answer answerTo(const ports::Message& message) {
  return message.title == "DEFAULT SCALING CHANGED" ? ports::Answer::no : message.defaultButton;
}

class Rebuild : public testing::TestWithParam<const char*> {
 protected:
  Rebuild() { shown.openExample(GetParam()); }

  /// All windows, and those again in which something had to wait for others.
  void work() {
    mirror.copyControls(*mine.control, *shown.control);
    std::vector<int> open(std::begin(buttons), std::end(buttons));
    for (int pass = 0; pass < mostPasses && !open.empty(); ++pass) {
      left.clear();
      std::vector<int> again;
      for (const int button : open)
        if (!copyWindow(button)) again.push_back(button);
      open = again;
    }
  }
  bool copyWindow(int button) {
    mirror.forgetLeft();
    auto& window = shown.open(button);
    mirror.copyWindow(mine.open(button), window);
    left.insert(mirror.left().begin(), mirror.left().end());
    return mirror.left().empty();
  }
  void save() {
    mine.host.chosenPath = fileOf(".GN7");
    support::press(*mine.control->findChild<QToolButton*>(
        QString("button_%1").arg(control::panel::saveButton)));
  }
  [[nodiscard]] std::string fileOf(std::string_view extension) const {
    return text::concat(mine.folder, "/", GetParam(), extension);
  }

  ControlBench shown, mine{answerTo};
  Mirror mirror;
  std::set<std::string> left;  // what no window took
};

TEST_P(Rebuild, ThroughTheWindowsAloneGivesTheSameFiles) {
  work();
  for (const std::string& each : left) ADD_FAILURE() << each;
  save();
  const std::string example = text::concat(KGEN_EXAMPLES_DIR, "/", GetParam(), ".GN7");
  expectSame(bytesOf(fileOf(".GN7")), bytesOf(example));
  const std::string extension(model::programExtension(mine.project().configuration));
  const std::string program = text::concat(KGEN_GOLDEN_DIR, "/programs/", GetParam(), extension);
  expectSame(bytesOf(fileOf(extension)), bytesOf(program));
}

INSTANTIATE_TEST_SUITE_P(All, Rebuild,
                         testing::Values("battery_test", "bridge_monitoring", "engine_test_bed",
                                         "everything_at_once", "furnace_multiplexers", "pump_house",
                                         "remote_station", "vehicle_on_the_road", "vibration"),
                         [](const auto& example) { return std::string(example.param); });

}  // namespace
