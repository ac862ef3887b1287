#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>

#include "projectfile/project_file.h"
#include "support/demo_project.h"
#include "support/random_project.h"
#include "text/strings.h"

namespace {

std::string textOf(const model::Project& project) {
  return KGEN_GENFILE::fileText(project, support::demoStamp());
}

model::Project loaded(const std::string& text) {
  model::Project project;
  KGEN_COMMON::SetAllDefaults(project);
  const KGEN_GENFILE::LoadReport report = KGEN_GENFILE::loadText(text, project);
  EXPECT_FALSE(report.error) << *report.error;
  EXPECT_EQ(report.ignoredLines, 0U);
  EXPECT_TRUE(report.notes.empty());
  return project;
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  return text;
}

/// Sections in another order, and in each of them the lines.
std::string shuffled(const std::string& text, std::mt19937& random) {
  std::vector<std::vector<std::string>> sections;
  for (const std::string& line : linesOf(text)) {
    if (line.starts_with('[')) sections.emplace_back();
    sections.back().push_back(line);
  }
  std::shuffle(sections.begin(), sections.end(), random);
  std::string out;
  for (auto& section : sections) {
    std::shuffle(section.begin() + 1, section.end(), random);
    out += joined(section);
  }
  return out;
}

TEST(RoundTrip, BringsBackRandomProjectsInAnyOrderOfLines) {
  for (unsigned seed = 1; seed <= 30; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    model::Project project = support::randomProject(random, {seed % 3 != 0, 20 + int(seed) * 2});
    KGEN_GENFILE::prepareForSave(project, support::demoStamp());
    const std::string text = textOf(project);
    const model::Project again = loaded(text);
    EXPECT_TRUE(again == project);
    EXPECT_EQ(textOf(again), text);
    EXPECT_TRUE(loaded(shuffled(text, random)) == project);
  }
}

/// Keys whose values decide what else is written, or follow from other keys.
bool decidesOrFollows(const std::string& key) {
  static constexpr std::string_view names[] = {
      "Version",       "VersionLastSaved", "PCTime",    "ModuleQty",   "StatusMonCount",
      "Tot",           "TableOn",          "TrigTable", "TrigTabStop", "WriteIf",
      "BlockCount",    "SEChannelCount",   "Reps",      "RangeNo",     "Range",
      "ExciteCAO",     "ExciteSwitched",   "ReadMode",  "CanCount",    "NumVals",
      "CalcFieldCount"};
  if (key.find("LevNum") != std::string::npos) return true;
  return std::any_of(std::begin(names), std::end(names), [&key](std::string_view name) {
    return key == name || key.starts_with(std::string(name) + "(") ||
           (name == "Tot" && key.starts_with(name));
  });
}

std::string otherValue(const std::string& key, const std::string& value, std::size_t line,
                       std::mt19937& random) {
  const bool mask = key.starts_with("Table(") || key.starts_with("CalcField(");
  if (mask) return text::concat(" ", 1 + random() % 255);
  if (key.starts_with("AliasOffset("))
    return text::concat(" ", 1 + line % 1000);  // 0 has two forms
  if (value == " 0" || value == "-1") return random() % 2 == 0 ? " 0" : "-1";
  if (value.starts_with(' ') || value.starts_with('-')) return text::concat(" ", line % 30000);
  return text::concat("text ", line);
}

TEST(RoundTrip, EveryValueSurvivesASave) {
  std::mt19937 random(7);
  const model::Project project = support::randomProject(random, {true, 100});
  for (int run = 0; run < 12; ++run) {  // so often that no two flags stay alike by chance
    std::vector<std::string> lines = linesOf(textOf(project));
    for (std::size_t i = 0; i < lines.size(); ++i) {
      std::string& line = lines[i];
      const std::size_t equals = line.find('=');
      if (line.starts_with('[') || equals == std::string::npos) continue;
      line.pop_back();  // CR
      const std::string key = line.substr(0, equals);
      if (!decidesOrFollows(key))
        line.replace(equals + 1, std::string::npos,
                     otherValue(key, line.substr(equals + 1), i, random));
      line += '\r';
    }
    const std::vector<std::string> again = linesOf(textOf(loaded(joined(lines))));
    ASSERT_EQ(again.size(), lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (decidesOrFollows(lines[i].substr(0, lines[i].find('=')))) continue;
      EXPECT_EQ(again[i], lines[i]);
    }
  }
}

TEST(RoundTrip, AFileCutAnywhereLoadsOrIsRefusedWhole) {
  const std::string text = textOf(support::demoProject());
  const model::Project before = support::projectWith(1, {});
  for (std::size_t size = 0; size <= text.size(); size += size < 3000 ? 1 : 7) {
    model::Project project = before;
    const auto report = KGEN_GENFILE::loadText(std::string_view(text).substr(0, size), project);
    EXPECT_TRUE(!report.error || project == before) << size;
    EXPECT_EQ(report.error.has_value(), size < std::string_view("[GN7 VERSION]").size()) << size;
  }
}

}  // namespace
