#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>

#include "projectfile/project_listing.h"
#include "support/demo_project.h"
#include "support/random_project.h"

namespace {

nlohmann::json jsonOf(const model::Project& project) {
  std::string text;
  text::JsonWriter json([&text](std::string_view piece) { text += piece; });
  projectfile::writeJson(project, json);
  json.finish();
  return nlohmann::json::parse(text);
}

TEST(JsonListing, NestsTheValuesUnderTheKeysOfTheFile) {
  model::Project project = support::demoProject();
  project.tables[1].WriteIf = 1;
  project.tables[1].conditions.WriteIfMeasVar(1, "say \"x\"");
  const nlohmann::json json = jsonOf(project);
  const std::pair<const char*, nlohmann::json> cases[] = {
      {"/version/Version", "6.0"},
      {"/configuration/ModuleQty", {0, 2, 0, 1, 1, 1, 0, 0, 0, 1}},
      {"/configuration/MonitorPower/3", true},
      {"/scan/TotIsoChans", 1},
      {"/tables/0/number", 1},
      {"/tables/0/OutInt", "10"},
      {"/tables/1/writeIfConditions/0/MeasureVar", "say \"x\""},
      {"/blocks/thermocouple/BlockCount", 1},
      {"/blocks/thermocouple/blocks/0/number", 1},
      {"/blocks/thermocouple/blocks/0/elements/0/AliasName", "Inlet"},
      {"/blocks/thermocouple/blocks/0/elements/1/Table", {10, 0, 0, 0, 0, 0, 0, 0}},
      {"/blocks/voltage/blocks/0/elements/0/AliasMult", 0.1},
      {"/blocks/voltage/blocks/0/tables/7/VoLevelCode", "10,1,0,0"},
      {"/blocks/isolated/Integration", 960},
      {"/blocks/bridge/blocks", nlohmann::json::array()},
      {"/can/CanBaud", 2},
      {"/calculatedFields/CalcFieldCount", 0},
  };
  for (const auto& [place, expected] : cases) {
    SCOPED_TRACE(place);
    ASSERT_TRUE(json.contains(nlohmann::json::json_pointer(place)));
    EXPECT_EQ(json.at(nlohmann::json::json_pointer(place)), expected);
  }
}

TEST(JsonListing, IsValidForProjectsOfEveryKind) {
  for (unsigned seed = 1; seed <= 10; ++seed) {
    std::mt19937 random(seed);
    const model::Project project = support::randomProject(random, {true, 80});
    const nlohmann::json json = jsonOf(project);
    EXPECT_EQ(json.at("blocks").size(), model::blockKinds);
    EXPECT_EQ(json.at("can").at("items").size(), project.can.items.size());
  }
}

TEST(TextListing, ShowsTheSectionsForPeople) {
  const std::string text = projectfile::textListing(support::demoProject());
  EXPECT_NE(text.find("[CONFIGURATION]\nOperator = Name\nIDNumber = Number\nModuleQty(2) = 2\n"),
            std::string::npos);
  EXPECT_NE(text.find("\nAliasMult(1,1) = 1.8\nAliasOffset(1,1) = 0\n"), std::string::npos);
}

}  // namespace
