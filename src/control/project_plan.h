#pragma once

#include <array>
#include <string>
#include <vector>

#include "channels/planned_channels.h"
#include "model/project.h"

namespace control {

struct PlannedTable {
  std::string name;
  std::string interval = "1";    // whole number of the unit
  std::int16_t units = 3;        // time-unit code
  std::uint8_t processings = 8;  // bit c: processing code c, of every channel
  bool operator==(const PlannedTable&) const = default;
};

/// The step of planning that a note is about.
enum class PlanStep { logger, kinds, list, tables };

struct PlanNote {
  PlanStep step = PlanStep::logger;
  std::string text;
  bool operator==(const PlanNote&) const = default;
};

/// What is asked for a new project.
struct ProjectPlan {
  std::int16_t cpu = 1;  // 1 the 7103, 2 the 7104
  double scan = 1;
  std::int16_t scanUnits = 2;
  /// Modules that are there, by ModuleKindIndex. The logger gets more when its channels need them.
  std::array<std::int16_t, model::moduleKinds> modules = {};
  /// Channels of each kind (by BlockKind); those of the list are among them, and where it has more
  /// than that, it counts.
  std::array<std::size_t, model::blockKinds> channels = {};
  std::vector<channels::PlannedChannel> list;
  std::vector<PlannedTable> tables;  // at most 8
  bool operator==(const ProjectPlan&) const = default;
};

struct PlannedProject {
  model::Project project;
  std::vector<PlanNote> remarks;    // what is not as planned, and why
  std::vector<PlanNote> obstacles;  // why the logger can't do it; none: the project checks clean
};

/// Blocks with the channels of the plan, the modules that they need, the tables. Scan and table
/// intervals that are too short or do not fit together become longer, and that is remarked.
PlannedProject projectFrom(const ProjectPlan& plan, const model::DefaultSettings& settings = {});

}  // namespace control
