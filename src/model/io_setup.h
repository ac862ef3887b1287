#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "model/limits.h"
#include "model/measurement_block.h"
#include "model/output_table.h"

/// Battery measurements, digital ports, flags and excitation outputs.
namespace model {

/// A power-out measurement: set 1 is the battery voltage, set 2 the battery current.
struct PowerOutSet {
  std::string DataResolution = "FP2";
  bool Public = false;
  TableMasks Table = {};
  bool operator==(const PowerOutSet&) const = default;
};

struct PowerOutTables {
  std::array<PowerOutSet, 2> sets;
  std::array<std::string, maxTables> HistogramCode;
  std::array<std::string, maxTables> RainHistoCode;
  PowerOutTables();
  bool operator==(const PowerOutTables&) const = default;
};

struct Port {
  bool Include = false;
  std::int16_t Polarity = 0;    // 0 high when true, 1 low when true
  std::int16_t BinaryMask = 0;  // weight of a read port; 0: 2^(n-1)
  std::array<Condition, conditionsPerPort> conditions;
  bool operator==(const Port&) const = default;
};

/// Eight ports that are written or read together.
struct PortGroup {
  bool Public = false;
  std::string DataResolution = "IEEE4";
  bool ByteMode = false;
  bool ReadMode = false;  // on: inputs, off: outputs
  std::array<Port, portsPerGroup> ports;
  std::string HistogramCode = "10,0,100,0";
  TableMasks Table = {};
  bool operator==(const PortGroup&) const = default;
};

struct PortSetup {
  std::int16_t CodeType = 1;  // 0 one instruction a port, 1 one a group
  std::vector<PortGroup> groups;
  bool operator==(const PortSetup&) const = default;
};

/// A program flag that conditions set: state 1 to FlagOn, state 2 to the opposite.
struct FlagControl {
  bool FlagInclude = false;
  bool FlagOn = true;
  std::array<Condition, 2> states;
  bool operator==(const FlagControl&) const = default;
};

/// A continuous analog output.
struct ExcitationChannel {
  bool Include = false;
  std::int16_t DynamicStatic = 0;  // 0 static: state 1 always, 1 dynamic: as the conditions say
  double State1 = 0;               // mV
  double State2 = 0;
  double Delay = 0;  // us
  std::array<Condition, 2> conditions;
  bool operator==(const ExcitationChannel&) const = default;
};

struct ExcitationSetup {
  bool ExcitePublic = false;
  std::vector<ExcitationChannel> channels;
  bool operator==(const ExcitationSetup&) const = default;
};

}  // namespace model
