#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "model/project.h"

namespace verify {

/// The variables that a project offers to conditions and expressions, for many look-ups.
class OfferedVariables {
 public:
  explicit OfferedVariables(const model::Project& project);
  OfferedVariables(const OfferedVariables&) = delete;
  OfferedVariables& operator=(const OfferedVariables&) = delete;

  /// Exactly this name is on the pick list, or it is a channel by its array although it has a name
  /// of its own: "VBlk1(3)".
  [[nodiscard]] bool has(std::string_view name) const;
  /// A variable with this name takes an index.
  [[nodiscard]] bool hasArray(std::string_view name) const;

  /// What of an expression, or of a condition, the project does not offer. A condition without a
  /// variable gives noName.
  [[nodiscard]] std::vector<std::string> missingIn(std::string_view expression) const;
  [[nodiscard]] std::vector<std::string> missingIn(const model::Condition& condition) const;
  /// The name itself unless it is offered.
  [[nodiscard]] std::vector<std::string> missingName(std::string_view name) const;

  static constexpr std::string_view noName = "## MISSING ##";

 private:
  void addArrays(const model::Project& project);
  [[nodiscard]] bool isOffered(const std::string& variable) const;

  std::vector<std::string> list_;
  std::unordered_set<std::string_view> names_;             // into list_
  std::unordered_set<std::string_view> arrays_;            // into list_: what stands before "("
  std::unordered_map<std::string, std::size_t> channels_;  // of arrays
};

}  // namespace verify
