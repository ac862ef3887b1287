#include <gtest/gtest.h>

#include <map>
#include <random>

#include "model/conditions.h"
#include "model/pick_list.h"
#include "model/renaming.h"
#include "support/random_project.h"
#include "text/strings.h"
#include "verify/expression_variables.h"
#include "verify/pick_variables.h"

namespace verify {
namespace {

using model::Project;

/// Changes names here and there, as a window does; some are cleared, some given.
Project withOtherNames(Project project, std::mt19937& random) {
  int number = 0;
  const auto change = [&](std::string& name) {
    if (random() % 3 == 0) name = random() % 4 == 0 ? "" : text::concat("New_", ++number);
  };
  for (model::BlockSet& set : project.blockSets)
    for (model::MeasurementBlock& block : set.blocks)
      for (model::Element& element : block.elements) change(element.AliasName);
  for (model::CanItem& item : project.can.items)
    for (model::Element& value : item.values) change(value.AliasName);
  for (model::CalculatedField& field : project.calculated.fields) change(field.CalcName);
  for (model::OutputTable& table : project.tables)
    if (random() % 3 == 0) table.TableName = text::concat("T_", ++number);
  return project;
}

std::size_t missingCount(const Project& project) {
  const OfferedVariables offered(project);
  std::size_t count = 0;
  for (const auto find : {missingInCalculatedFields, missingInLevelCrossings, missingInPowerOff,
                          missingInBurst, missingInTwoState, missingInWriteIf})
    count += find(project, offered).count;
  return count;
}

/// Where each name of the pick list stands: the same in two states that differ in names alone.
std::map<std::string, std::size_t> placesOf(const Project& project) {
  std::map<std::string, std::size_t> places;
  const std::vector<std::string> names = model::variableNames(project);
  for (std::size_t i = 0; i < names.size(); ++i) places[names[i]] = i;
  return places;
}

/// The expressions of a project with places instead of names.
std::vector<std::string> meanings(const Project& project) {
  const auto places = placesOf(project);
  std::vector<std::string> out;
  for (const std::string& expression : allExpressions(project))
    for (const std::string& name : variablesIn(expression)) {
      const auto place = places.find(name);
      if (place != places.end()) out.push_back(text::concat("place ", place->second));
    }
  return out;
}

TEST(RenamedReferences, NameTheSameVariablesAsBefore) {
  std::mt19937 random(5);
  std::size_t references = 0;
  for (int i = 0; i < 80; ++i) {
    const Project before = support::randomProject(random);
    const Project renamed = withOtherNames(before, random);
    const Project after = withNewNames(before, renamed);
    EXPECT_LE(missingCount(after), missingCount(before)) << i;
    const std::vector<std::string> meant = meanings(before);
    const std::vector<std::string> now = meanings(after);
    references += meant.size();
    // Array forms of channels with a name are on no pick list: they can only become listed ones.
    EXPECT_GE(now.size(), meant.size()) << i;
    if (now.size() == meant.size()) {
      EXPECT_EQ(now, meant) << i;
    }
    EXPECT_EQ(withNewNames(before, after), after) << i;  // nothing is left to do
  }
  EXPECT_GT(references, 1000U);
}

}  // namespace
}  // namespace verify
