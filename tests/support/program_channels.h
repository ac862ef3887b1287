#pragma once

#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "support/program_expressions.h"
#include "support/program_instructions.h"

namespace support {

/// The channels that the main scan of a program measures or drives, each at most once.
class ChannelUse {
 public:
  explicit ChannelUse(Scope& scope) : scope_(scope) {}

  /// Learns modules from a comment line of the header: "Slot 5 = 7121/22".
  void readSlots(const std::string& comment);

  /// The modules of SlotConfigure are those of the slot table, which ends at slot 12.
  void checkSlotConfigure(const std::vector<std::string>& modules);

  /// Takes the channels of a measurement, digital or excitation instruction.
  void take(const InstructionRow& row, const std::vector<Value>& arguments);

 private:
  void takeMeasurement(const InstructionRow& row, const std::vector<Value>& arguments);
  void takeDigital(const InstructionRow& row, const std::vector<Value>& arguments);
  void takeOne(int slot, char path, int channel);

  Scope& scope_;
  std::map<int, std::string> modules_;             // by slot
  std::set<std::tuple<int, char, int>> channels_;  // slot, path, channel from 0
};

}  // namespace support
