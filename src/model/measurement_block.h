#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/limits.h"
#include "model/logger_configuration.h"

namespace model {

enum class BlockKind { thermocouple, voltage, highVoltage, isolated, bridge, pulse, filter, tcmux };
constexpr std::size_t blockKinds = 8;
constexpr std::array<BlockKind, blockKinds> allBlockKinds = {
    BlockKind::thermocouple, BlockKind::voltage, BlockKind::highVoltage, BlockKind::isolated,
    BlockKind::bridge,       BlockKind::pulse,   BlockKind::filter,      BlockKind::tcmux};

/// Which processings (bit c = processing code c) store a value in each of the eight tables.
using TableMasks = std::array<std::uint8_t, maxTables>;

/// One channel of a block.
struct Element {
  std::string AliasName;
  std::string AliasUnits;
  double AliasMult = 1;
  double AliasOffset = 0;
  double AliasGFactor = 2;   // bridges, in place of the offset
  bool AliasExcept = false;  // on: the channel's own scaling counts, off: the block's
  TableMasks Table = {};
  bool operator==(const Element&) const = default;
};

/// What histogram, rainflow and level crossing of a block need in one output table.
struct TableProcessing {
  std::string HistogramCode = "10,0,100,0";       // bins, low, high, form
  std::string RainHistoCode = "10,10,0,100,1,0";  // means, amplitudes, low, high, least, form
  std::string LevelCode = "10,1,0,0";             // levels, tests, hysteresis, form
  std::int16_t LevelMeas = 0;                     // place of the second variable in the pick list
  std::string LevelMeasName;                      // its name
  std::int16_t LevNumLevels = 0;
  std::vector<double> LevelVarOne;  // LevNumLevels levels
  std::int16_t LevNumTests = 0;
  std::vector<double> LevelVarTwo;  // LevNumTests levels of the second variable
  std::int16_t NumDims = 0;
  bool operator==(const TableProcessing&) const = default;
};

/// A group of like channels that are set up together. A kind uses the fields that its section of
/// the project file names; the others keep their defaults.
struct MeasurementBlock {
  std::int16_t Reps = 0;  // channels; 0: not in use
  bool Public = false;
  std::string MeasType = "Diff";  // "Diff" or "SE"
  std::string Range;
  std::int16_t RangeNo = 0;           // code of Range
  std::int32_t Integration = 40;      // us
  std::int16_t IntegrationRange = 2;  // 0 20000 us, 1 16670 us, 2 as the user says
  std::int32_t SettleTime = 30;       // us
  std::string DataResolution = "FP2";
  std::string Units;
  double DefaultMult = 1;
  double DefaultOffset = 0;
  bool ReverseMes = false;
  bool OpenSensDetect = false;
  std::int16_t ZeroFlag = 0;  // 0: none
  bool CalOnSite = false;
  double BlockTime = 0;  // us, estimated

  std::int16_t TypeNo = 0;  // thermocouple type

  std::int16_t ExciteReps = 1;  // bridge: channels an excitation channel feeds
  double Excite = 0;            // bridge: mV; filter: code of the excitation
  std::int16_t Style = 0;       // bridge configuration code; 5 and above are strain
  std::string Type;             // bridge instruction
  bool CheckCAO = false;        // bridge: excited by a continuous analog output
  bool RevExcite = false;
  bool RevOutput = false;
  double GageFactor = 2;
  std::int16_t GageCode = 1;  // 1 one gauge factor, 2 one a channel

  std::int16_t InputType = 0;  // isolated: 0 voltage, 1 thermocouple
  std::int16_t TCType = 0;     // isolated: thermocouple type

  std::int16_t Opt = 1;  // pulse: 0 counts a scan, 1 Hz, n Hz averaged over n ms
  std::string Meas;      // pulse input: "HiLev", "LoLev", "Switch"

  std::int16_t TSWindow = 0;  // FFT
  std::int16_t SpectOption = 0;
  double FRef = 0;
  std::int16_t SBin = 0;
  std::int16_t ILow = 1;
  std::int16_t IHigh = 512;

  bool TCMUXVolts = false;  // multiplexer measures volts, no thermocouples

  std::array<TableProcessing, maxTables> processing;
  std::vector<Element> elements;  // Reps of them
  bool operator==(const MeasurementBlock&) const = default;
};

/// All blocks of one kind; block number n is blocks[n - 1].
struct BlockSet {
  std::int16_t BlockCount = 0;  // highest block in use; of filter blocks see FilterSlot
  std::array<MeasurementBlock, maxBlocks> blocks;
  bool operator==(const BlockSet&) const = default;
};

/// Settings that all isolated blocks share.
struct IsolatedSetup {
  std::int32_t Integration = 960;  // us, or minus the filter order
  std::int16_t IntegrationRange = 2;
  bool ReverseMes = false;
  std::int16_t ScansPerSubScan = 1;
  bool operator==(const IsolatedSetup&) const = default;
};

/// Settings of one 7125 module; slot s is the s-th of them.
struct FilterSlot {
  std::int16_t BlockCount = 0;
  std::int16_t OverSample = 0;       // pass band code 0 to 4
  double FiltFreqNum = 100;          // filter samples a second
  double FiltFFTSampleRate = 10000;  // Hz
  bool FiltNoSubscan = false;        // measure once a scan
  std::int16_t FFTType = 0;          // 0 time series, 1 spectra
  std::int16_t FFTLength = 1024;     // samples
  bool FFTModule = false;            // on: the slot holds FFT blocks
  bool operator==(const FilterSlot&) const = default;
};

/// The reference temperature of a thermocouple kind and where it is stored.
struct ReferenceTemperature {
  std::string DataResolution = "FP2";
  bool Public = false;
  TableMasks Table = {};
  std::array<std::string, maxTables> HistogramCode;
  std::array<std::string, maxTables> RainCode;
  ReferenceTemperature();
  bool operator==(const ReferenceTemperature&) const = default;
};

/// What sets one kind apart: its limits, module, file section and letter in program names.
struct BlockKindInfo {
  std::string_view name;         // "thermocouple", for messages and lists
  std::string_view section;      // "[THERMOCOUPLE BLOCKS]"
  std::string_view levelPrefix;  // of its level-crossing keys
  char letter;                   // of its program variables
  ModuleKindIndex module;
  std::size_t blockLimit;
};
const BlockKindInfo& infoOf(BlockKind kind);

/// The block of a kind with the values that a new project gives it.
MeasurementBlock defaultBlock(BlockKind kind, std::int16_t integrationCode = 2);

/// The channel of a kind as a new block has it.
Element defaultElement(BlockKind kind);

/// Texts of the "Range" lists and their codes; an unknown text has code 0.
const std::vector<std::string_view>& rangesOf(BlockKind kind);
std::int16_t rangeCode(BlockKind kind, std::string_view range);

/// The range word of the program language, "mV50" or "V2"; open-sensor detection takes "mV50C".
std::string rangeKeyword(std::string_view range, bool openSensor);

bool isDifferential(const MeasurementBlock& block);
bool isStrain(const MeasurementBlock& bridge);

/// Two ranges are passed by the six-wire full bridge and the four-wire half bridge.
bool hasTwoRanges(const MeasurementBlock& bridge);

/// Half bridges with two and three wires are measured single-ended.
bool isSingleEndedBridge(const MeasurementBlock& bridge);
/// Channels of its module that one bridge takes: 1 or 2.
int channelsOfBridge(const MeasurementBlock& bridge);

/// "BrFull" and so on for a bridge configuration code; strain codes measure with "BrFull".
std::string_view bridgeInstruction(std::int16_t style);

struct Scaling {
  double multiplier = 1;
  double offset = 0;
  double gaugeFactor = 2;  // bridges, in place of the offset
};
/// What counts for the channels of a block that have no scaling of their own.
Scaling scalingOf(const MeasurementBlock& block);
/// What counts for a channel: its own scaling or the shared one.
Scaling scalingOf(const Element& element, const Scaling& shared);

}  // namespace model
