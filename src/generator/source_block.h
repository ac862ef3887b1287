#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "model/channel_plan.h"
#include "model/project.h"

namespace generator {

/// Level-crossing arrays of a block: the levels, the tests of the second variable and the
/// channels that use them in a table that is on.
struct LevelCrossing {
  std::vector<double> levels;
  std::vector<double> tests;
  std::string secondVariable;
  std::vector<std::size_t> elements;  // from 1
  [[nodiscard]] bool used() const { return !elements.empty(); }
};

/// A channel as the program names it.
struct ProgramChannel {
  std::string alias;  // "" when the channel has none that the program can use
  std::string units;
};

/// A block of measurements, or a CAN item, with all that the emitters have to know: decided once,
/// before the first line is written.
struct SourceBlock {
  char letter = 'T';  // of its program names
  std::size_t number = 1;
  const model::MeasurementBlock* block = nullptr;  // none for CAN items
  const model::CanItem* item = nullptr;
  model::BlockKind kind = model::BlockKind::thermocouple;
  model::BlockPlace place;
  std::size_t filterSlot = 0;  // from 1; of filter blocks
  bool fft = false;

  std::size_t reps = 0;       // channels
  std::size_t arraySize = 0;  // elements of its arrays: more for multiplexers
  double multiplier = 1;
  double offset = 0;
  std::string units;
  std::string dataType;
  const std::vector<model::Element>* elements = nullptr;
  const std::array<model::TableProcessing, model::maxTables>* processing = nullptr;
  std::vector<ProgramChannel> channels;  // reps of them

  bool isPublic = false;
  bool multiplierArray = false;  // measured with an array of multipliers and one of offsets
  bool offsetArray = false;
  bool gaugeArray = false;
  bool burst = false;       // measured channel by channel in a burst trigger
  bool calibrated = false;  // by the Dunmore host
  int zeroFlag = 0;         // 1 to 8; 0: never zeroed
  LevelCrossing crossing;

  [[nodiscard]] bool zeroed() const { return zeroFlag > 0; }
  [[nodiscard]] bool strain() const { return letter == 'B' && model::isStrain(*block); }

  /// "VBlk1"; filter blocks "FVBlk1", or "FFBlk1" with spectra.
  [[nodiscard]] std::string values() const;
  /// The same as declarations, tables and zero code spell it: filter blocks with a capital K.
  [[nodiscard]] std::string declaredValues() const;
  [[nodiscard]] std::string multipliers() const;   // "MVBlk1"
  [[nodiscard]] std::string offsets() const;       // "OVBlk1"
  [[nodiscard]] std::string gaugeFactors() const;  // "GBBlk1"
  /// A constant of the block: "VREP1" for "REP".
  [[nodiscard]] std::string constant(std::string_view suffix) const;
  /// "LCVBlk1_2": the pair of values that a level crossing of channel 2 reads.
  [[nodiscard]] std::string crossingSource(std::size_t element) const;
  /// Channel `element` in the program: its alias is not used, the array element is.
  [[nodiscard]] std::string element(std::size_t element) const;
};

/// What a pulse block counts: 0 high level, 1 low level, 2 switch.
int pulseInputCode(const model::MeasurementBlock& pulse);

}  // namespace generator
