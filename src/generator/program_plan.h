#pragma once

#include <array>
#include <string>
#include <vector>

#include "generator/source_block.h"
#include "model/channel_plan.h"
#include "model/document_stamp.h"
#include "model/project.h"
#include "model/stored_outputs.h"
#include "model/time_units.h"
#include "timing/isolated_plan.h"

namespace generator {

/// How a table is called in the scan.
struct PlannedTable {
  std::size_t number = 1;
  const model::OutputTable* table = nullptr;
  std::string name;
  model::ShownInterval interval;
  std::vector<model::StoredGroup> groups;
  bool hasTriggerSub = false;
  bool inSubscan = false;  // called at the rate of the voltage filter
};

/// A port group that the program reads or writes, and its variable.
struct PlannedPorts {
  std::size_t number = 1;
  const model::PortGroup* group = nullptr;
  model::PortGroupPlace place;
  bool reads = false;
  std::string variable;  // "WritPortL", "ReadPortU9"
};

struct PlannedField {
  std::size_t number = 1;
  const model::CalculatedField* field = nullptr;
  std::string name;
  std::string units;
  std::size_t average = 0;  // index into RunAvg, 0: an expression
  bool isPublic = false;
};

struct PlannedExcitation {
  const model::ExcitationChannel* channel = nullptr;
  model::Place place;
  std::string variable;  // "Excite_7_1"; "" for a static output
};

/// Voltage filter slots that are measured in one subscan.
struct PlannedSubscan {
  model::FilterSubscan timing;
  std::vector<std::size_t> slots;  // filter slots, from 1
};

/// Everything about a program that is decided before it is written: blocks, names, tables.
struct ProgramPlan {
  ProgramPlan(const model::Project& forProject, const model::DocumentStamp& withStamp);
  ProgramPlan(const ProgramPlan&) = delete;
  ProgramPlan& operator=(const ProgramPlan&) = delete;

  const model::Project& project;
  const model::DocumentStamp& stamp;
  model::ChannelPlan channels;
  timing::IsolatedPlans isolated;    // integration times in force
  std::vector<PlannedTable> tables;  // those that are on
  std::array<std::vector<SourceBlock>, 9> families;
  std::vector<PlannedPorts> ports;
  std::vector<PlannedField> fields;
  std::vector<PlannedExcitation> excitations;
  std::vector<PlannedSubscan> subscans;
  std::size_t runningAverages = 0;
  std::string burstTrigger;  // "" unless the scan is in burst mode with a condition
  std::vector<std::string> notes;

  /// Blocks of a family in use, by letter: T V F B P H I A, C for CAN items.
  [[nodiscard]] const std::vector<SourceBlock>& of(char letter) const;
  /// The subscan of a filter slot; nullptr when it is measured once a scan.
  [[nodiscard]] const PlannedSubscan* subscanOf(std::size_t filterSlot) const;
  [[nodiscard]] bool anyZeroed() const;
  /// Distinct zero flags, ascending.
  [[nodiscard]] std::vector<int> zeroFlags() const;
  [[nodiscard]] bool anyCalibrated() const;
  /// Battery voltage (current) is measured: asked for, stored or tested.
  [[nodiscard]] bool measuresBattery(bool current) const;
  [[nodiscard]] bool burstsWholeScan() const;
};

/// 1 to 8, or 0 for a number that is no flag.
int flagNumber(int flag);

/// The letters of families in the order of a list such as "TVFHIBPA".
template <class F>
void forBlocks(const ProgramPlan& plan, std::string_view letters, F f) {
  for (const char letter : letters)
    for (const SourceBlock& block : plan.of(letter)) f(block);
}

}  // namespace generator
