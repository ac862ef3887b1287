#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "model/channel_plan.h"
#include "model/project.h"
#include "model/stored_outputs.h"
#include "model/time_units.h"
#include "readback/expectation.h"
#include "timing/isolated_plan.h"

namespace readback {

/// A measurement block or a CAN item as a program shows it.
struct Source {
  char letter = 'T';  // of its names
  std::size_t number = 1;
  model::BlockKind kind = model::BlockKind::thermocouple;
  const model::MeasurementBlock* block = nullptr;  // none for CAN items
  const model::CanItem* item = nullptr;
  const std::vector<model::Element>* elements = nullptr;
  const std::array<model::TableProcessing, model::maxTables>* processing = nullptr;
  model::BlockPlace place;
  std::size_t filterSlot = 0;  // from 1
  bool fft = false;

  std::string values;  // "VBlk1"
  std::size_t reps = 0, size = 0;
  double multiplier = 1, offset = 0;
  std::string units;
  std::vector<std::string> names, channelUnits;  // "" where a channel has none that can be used
  bool isPublic = false;
  bool ownMultipliers = false, ownOffsets = false, ownGauges = false;
  bool burst = false;
  bool calibrated = false;
  int zeroFlag = 0;

  std::vector<std::size_t> crossings;  // channels whose level crossings are stored
  std::vector<double> levels, tests;
  std::string secondVariable;
  std::size_t levelTable = 0;  // that the levels come from, from 1; 0: none

  [[nodiscard]] bool strain() const { return letter == 'B' && model::isStrain(*block); }
  [[nodiscard]] std::string constant(std::string_view suffix) const;  // "VREP1"
  [[nodiscard]] std::string multipliers() const;                      // "MVBlk1"
  [[nodiscard]] std::string offsets() const;
  [[nodiscard]] std::string gauges() const;
  [[nodiscard]] std::string element(std::size_t number) const;               // "VBlk1(2)"
  [[nodiscard]] std::string crossing(std::size_t number) const;              // "LCVBlk1_2"
  [[nodiscard]] const model::Element* settingsOf(std::size_t number) const;  // from 1
  /// The key that its section of the project file has for a setting of blocks.
  [[nodiscard]] std::string_view keyOf(std::string_view key) const;
  /// The same for a setting of level crossings.
  [[nodiscard]] std::string levelKey(std::string_view key) const;
  /// A key of the block, or of one of its channels (from 1).
  [[nodiscard]] Setting setting(std::string_view key, std::size_t channel = 0) const;
};

struct Table {
  std::size_t number = 1;
  const model::OutputTable* settings = nullptr;
  std::string name;
  model::ShownInterval interval;
  std::vector<model::StoredGroup> groups;
  bool hasSub = false;
  bool inSubscan = false;

  [[nodiscard]] Setting setting(std::string_view key) const;
};

struct Field {
  std::size_t number = 1;
  const model::CalculatedField* settings = nullptr;
  std::string name, units;
  std::size_t average = 0;  // its place in RunAvg, from 1; 0: none
  bool isPublic = false;

  [[nodiscard]] Setting setting(std::string_view key) const;
};

struct Ports {
  std::size_t number = 1;
  const model::PortGroup* settings = nullptr;
  model::PortGroupPlace place;
  std::string variable;

  [[nodiscard]] Setting setting(std::string_view key, std::size_t port = 0) const;
};

struct Output {  // of the excitation window
  std::size_t number = 1;
  const model::ExcitationChannel* settings = nullptr;
  model::Place place;
  std::string variable;  // "" for a static one

  [[nodiscard]] Setting setting(std::string_view key) const;
};

struct Subscan {
  model::FilterSubscan timing;
  std::vector<std::size_t> slots;
};

/// What is in the program of a project and under which names.
struct Outline {
  Outline(const model::Project& forProject, bool dunmore);
  Outline(const Outline&) = delete;
  Outline& operator=(const Outline&) = delete;

  const model::Project& project;
  bool dunmoreHost;
  model::ChannelPlan channels;
  timing::IsolatedPlans isolated;
  std::vector<Source> sources;
  std::vector<Table> tables;
  std::vector<Field> fields;
  std::vector<Ports> ports;
  std::vector<Output> outputs;
  std::vector<Subscan> subscans;
  std::string burstTrigger;

  [[nodiscard]] bool anyZeroed(std::string_view letters = "VFBAHI") const;
  [[nodiscard]] bool anyCalibrated() const;
  [[nodiscard]] const Subscan* subscanOf(std::size_t filterSlot) const;
};

/// Calls f for the sources of the letters, letter by letter.
template <class F>
void each(const Outline& outline, std::string_view letters, F f) {
  for (const char letter : letters)
    for (const Source& source : outline.sources)
      if (source.letter == letter) f(source);
}

/// 1 to 8, or 0 for a number that is no flag.
int flagOf(int number);

Setting scanSetting(std::string_view key);
Setting configurationSetting(std::string_view key);
Setting canSetting(std::string_view key);
/// Of what every program has.
inline const Setting everyProgram;

}  // namespace readback
