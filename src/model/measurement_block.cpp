#include "model/measurement_block.h"

#include <algorithm>

#include "text/strings.h"

namespace model {
namespace {

constexpr std::array<BlockKindInfo, blockKinds> kindInfos = {{
    {"thermocouple", "[THERMOCOUPLE BLOCKS]", "Tm", 'T', ModuleKindIndex::analog7121, maxBlocks},
    {"voltage", "[VOLTAGE BLOCKS]", "Vo", 'V', ModuleKindIndex::analog7121, maxBlocks},
    {"high voltage", "[HIGH VOLTAGE BLOCKS]", "Hv", 'H', ModuleKindIndex::highVoltage7127,
     maxBlocks},
    {"isolated", "[ISOLATED BLOCKS]", "Iso", 'I', ModuleKindIndex::isolation7128, maxBlocks},
    {"bridge", "[BRIDGE BLOCKS]", "Br", 'B', ModuleKindIndex::analog7121, maxBlocks},
    {"pulse", "[PULSE BLOCKS]", "Pu", 'P', ModuleKindIndex::counter7141, maxPulseBlocks},
    {"filter", "[FILTER BLOCKS]", "Fi", 'F', ModuleKindIndex::filter7125, maxBlocks},
    {"TCMUX", "[TCMUX BLOCKS]", "Am", 'A', ModuleKindIndex::analog7121, maxBlocks},
}};

const std::vector<std::string_view> standardRanges = {"50 mV", "200 mV", "500 mV", "2 Volts"};
const std::vector<std::string_view> wideRanges = {"20 mV",    "50 mV",    "200 mV",  "500 mV",
                                                  "1000 mV",  "5000 mV",  "2 Volts", "10 Volts",
                                                  "20 Volts", "50 Volts", "60 Volts"};
const std::vector<std::string_view> filterRanges = {"5000 mV", "1000 mV", "200 mV", "50 mV",
                                                    "20 mV"};
const std::vector<std::string_view> noRanges = {};

std::int16_t rangeBase(BlockKind kind) {
  switch (kind) {
    case BlockKind::thermocouple:
    case BlockKind::tcmux:
      return 30;
    case BlockKind::bridge:
      return 40;
    case BlockKind::voltage:
      return 50;
    default:
      return 100;
  }
}

void applyTemperatureDefaults(MeasurementBlock& block) {
  block.Units = "Deg_F";
  block.DefaultMult = 1.8;
  block.DefaultOffset = 32;
  block.Range = "50 mV";
  block.OpenSensDetect = true;
  block.ReverseMes = true;
}

void applyVoltageDefaults(MeasurementBlock& block, std::int16_t integrationCode) {
  block.Units = "mVolts";
  block.Range = "50 mV";
  block.OpenSensDetect = true;
  block.ReverseMes = true;
  block.IntegrationRange = integrationCode;
  block.Integration = integrationCode == 0 ? 20000 : integrationCode == 1 ? 16670 : 40;
}

void applyBridgeDefaults(MeasurementBlock& block) {
  block.DataResolution = "IEEE4";
  block.Units = "mVoltPVolt";
  block.Range = "200 mV";
  block.ReverseMes = true;
  block.Type = "BrFull";
  block.Excite = 5000;
}

void applyKindDefaults(BlockKind kind, MeasurementBlock& block, std::int16_t integrationCode) {
  switch (kind) {
    case BlockKind::thermocouple:
    case BlockKind::tcmux:
      return applyTemperatureDefaults(block);
    case BlockKind::voltage:
      return applyVoltageDefaults(block, integrationCode);
    case BlockKind::highVoltage:
      block.Units = "Volts";
      block.Range = "2 Volts";
      block.ReverseMes = true;
      return;
    case BlockKind::isolated:
      block.Units = "mVolts";
      block.Range = "2 Volts";
      return;
    case BlockKind::bridge:
      return applyBridgeDefaults(block);
    case BlockKind::pulse:
      block.DataResolution = "IEEE4";
      block.Units = "Hz";
      block.Meas = "HiLev";
      return;
    case BlockKind::filter:
      block.DataResolution = "IEEE4";
      block.Units = "mVolts";
      block.Range = "5000 mV";
      return;
  }
}

}  // namespace

ReferenceTemperature::ReferenceTemperature() {
  const TableProcessing defaults;
  HistogramCode.fill(defaults.HistogramCode);
  RainCode.fill(defaults.RainHistoCode);
}

const BlockKindInfo& infoOf(BlockKind kind) { return kindInfos[static_cast<std::size_t>(kind)]; }

MeasurementBlock defaultBlock(BlockKind kind, std::int16_t integrationCode) {
  MeasurementBlock block;
  applyKindDefaults(kind, block, integrationCode);
  block.RangeNo = rangeCode(kind, block.Range);
  return block;
}

Element defaultElement(BlockKind kind) {
  Element element;
  if (kind == BlockKind::thermocouple || kind == BlockKind::tcmux) element.AliasMult = 1.8;
  return element;
}

const std::vector<std::string_view>& rangesOf(BlockKind kind) {
  switch (kind) {
    case BlockKind::highVoltage:
    case BlockKind::isolated:
      return wideRanges;
    case BlockKind::filter:
      return filterRanges;
    case BlockKind::pulse:
      return noRanges;
    default:
      return standardRanges;
  }
}

std::int16_t rangeCode(BlockKind kind, std::string_view range) {
  const auto& ranges = rangesOf(kind);
  const auto found = std::find(ranges.begin(), ranges.end(), range);
  if (found == ranges.end()) return 0;
  return static_cast<std::int16_t>(rangeBase(kind) + 10 * (found - ranges.begin()));
}

std::string rangeKeyword(std::string_view range, bool openSensor) {
  const std::size_t blank = range.find(' ');
  const std::string_view number = range.substr(0, blank);
  const std::string_view unit = blank == std::string_view::npos ? "" : range.substr(blank + 1);
  if (unit == "Volts") return text::concat("V", number);
  const bool detects = openSensor && (number == "50" || number == "200");
  return text::concat("mV", number, detects ? "C" : "");
}

bool isDifferential(const MeasurementBlock& block) {
  return !text::equalsIgnoringCase(block.MeasType, "SE");
}

bool isStrain(const MeasurementBlock& bridge) { return bridge.Style >= 5; }

bool hasTwoRanges(const MeasurementBlock& bridge) { return bridge.Style == 1 || bridge.Style == 4; }

bool isSingleEndedBridge(const MeasurementBlock& bridge) {
  const std::string_view name = bridgeInstruction(bridge.Style);
  return name == "BrHalf" || name == "BrHalf3W";
}

int channelsOfBridge(const MeasurementBlock& bridge) {
  return hasTwoRanges(bridge) || bridgeInstruction(bridge.Style) == "BrHalf3W" ? 2 : 1;
}

std::string_view bridgeInstruction(std::int16_t style) {
  static constexpr std::array<std::string_view, 5> names = {"BrFull", "BrFull6W", "BrHalf",
                                                            "BrHalf3W", "BrHalf4W"};
  return style >= 0 && style < 5 ? names[static_cast<std::size_t>(style)] : names[0];
}

Scaling scalingOf(const MeasurementBlock& block) {
  return {block.DefaultMult, block.DefaultOffset, block.GageFactor};
}

Scaling scalingOf(const Element& element, const Scaling& shared) {
  if (!element.AliasExcept) return shared;
  return {element.AliasMult, element.AliasOffset, element.AliasGFactor};
}

}  // namespace model
