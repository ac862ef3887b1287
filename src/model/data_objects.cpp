#include "model/data_objects.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "text/strings.h"

namespace model {
namespace {

constexpr std::int32_t micros96 = 96;  // sample unit of the 7128

template <std::size_t N>
std::string_view textOf(const std::array<std::string_view, N>& texts, int code) {
  return code >= 0 && code < static_cast<int>(N) ? texts[static_cast<std::size_t>(code)] : "??";
}

std::int32_t snappedTime(std::int32_t micros) {
  constexpr std::array<std::int32_t, 17> times = {96,     192,    480,     960,     1920,   4800,
                                                  9600,   16608,  19968,   48000,   96000,  192000,
                                                  480000, 960000, 1920000, 4800000, 9600000};
  const auto above = std::upper_bound(times.begin(), times.end(), micros);
  return above == times.begin() ? times.front() : *(above - 1);
}

std::int64_t roundedDown(std::int64_t value, std::int64_t unit) {
  return std::max<std::int64_t>(value, 0) / unit * unit;
}

/// The way of the arrow buttons: 10, 100, 200, 250, then multiples of 500 us.
std::int64_t steppedUp(std::int64_t t) {
  for (const std::int64_t stop : {100, 200, 250})
    if (t < stop) return stop;
  return (t / 500 + 1) * 500;
}

std::int64_t steppedDown(std::int64_t t) {
  if (t <= 200) return 100;
  if (t <= 500) return 200;
  return (t / 500 - 1) * 500;
}

/// One tenth of the value's decimal magnitude up or down.
float stepped(float value, int step) {
  const double magnitude =
      value == 0 ? 0.1 : std::pow(10, std::floor(std::log10(std::abs(double{value}))) - 1);
  const double sum = text::readNumber(text::shortestSingle(value)) + step * magnitude;
  return static_cast<float>(text::readNumber(text::shortestSingle(sum)));
}

struct ObjectKind {
  DataObjectType type;
  BlockKind kind;
  InputKind input;
};

constexpr std::array<ObjectKind, 8> blockObjects = {
    {{DataObjectType::thermocouple, BlockKind::thermocouple, InputKind::analog7121},
     {DataObjectType::voltage, BlockKind::voltage, InputKind::analog7121},
     {DataObjectType::highVoltage, BlockKind::highVoltage, InputKind::highVoltage7127},
     {DataObjectType::pulse, BlockKind::pulse, InputKind::unset},
     {DataObjectType::isolated, BlockKind::isolated, InputKind::isolated7128},
     {DataObjectType::filter, BlockKind::filter, InputKind::unset},
     {DataObjectType::bridge, BlockKind::bridge, InputKind::analog7121},
     {DataObjectType::tcmux, BlockKind::tcmux, InputKind::analog7121}}};

const ObjectKind* blockObject(DataObjectType type) {
  const auto found = std::find_if(blockObjects.begin(), blockObjects.end(),
                                  [type](const ObjectKind& object) { return object.type == type; });
  return found == blockObjects.end() ? nullptr : &*found;
}

bool hasIntegration(DataObjectType type) {
  return blockObject(type) && type != DataObjectType::pulse && type != DataObjectType::filter;
}

void fillAnalog(cAnalogConfig& analog, const MeasurementBlock& block, BlockKind kind) {
  const auto& ranges = rangesOf(kind);
  const auto range = std::find(ranges.begin(), ranges.end(), block.Range);
  analog.RangeIndex(static_cast<std::int16_t>(range - ranges.begin()));
  analog.MeasureType(isDifferential(block) ? 0 : 1);
  analog.VarType(block.InputType);
  analog.IntegCode(block.IntegrationRange);
  analog.IntegTime(block.Integration);
  analog.SettleTime(block.SettleTime);
  analog.ReverseMes(block.ReverseMes);
  analog.OpenSensDetect(block.OpenSensDetect);
}

TableMasks masksOfAll(const std::vector<Element>& elements) {
  TableMasks masks = {};
  for (const Element& element : elements)
    for (std::size_t t = 0; t < maxTables; ++t) masks[t] |= element.Table[t];
  return masks;
}

/// A value that was not edited keeps the digits that single precision does not show.
void writeSingle(float edited, double& value) {
  if (static_cast<float>(value) != edited) value = text::readNumber(text::shortestSingle(edited));
}

}  // namespace

// ---- cAnalogConfig

void cAnalogConfig::SetMode(std::int16_t integrationStepping, std::int16_t settlingStepping) {
  integrationStepping_ = integrationStepping;
  settlingStepping_ = settlingStepping;
}

std::unique_ptr<cAnalogConfig> cAnalogConfig::Clone() const {
  auto clone = std::make_unique<cAnalogConfig>(*this);
  clone->onMeasureTypeChange = nullptr;  // listeners stay with the original
  clone->onTempScaleChange = nullptr;
  return clone;
}

void cAnalogConfig::setInput(InputKind input, BlockKind kind) {
  inputKind_ = input;
  kind_ = kind;
}

void cAnalogConfig::MeasureType(std::int16_t code) {
  if (code == measureType_) return;
  measureType_ = code;
  if (onMeasureTypeChange) onMeasureTypeChange();
}

std::string_view cAnalogConfig::MeasureTypeString() const {
  return textOf<2>({"Diff", "SE"}, measureType_);
}

std::string_view cAnalogConfig::InputTypeString() const {
  return textOf<2>({"Volt", "TC"}, varType_);
}

std::string_view cAnalogConfig::Range() const {
  const auto& ranges = rangesOf(kind_);
  const auto index = static_cast<std::size_t>(rangeIndex_);
  return rangeIndex_ >= 0 && index < ranges.size() ? ranges[index] : "??";
}

std::int16_t cAnalogConfig::RangeCode() const { return rangeCode(kind_, Range()); }

bool cAnalogConfig::OpenSensIsValid() const { return Range() == "50 mV" || Range() == "200 mV"; }

void cAnalogConfig::IntegCode(std::int16_t code) {
  integCode_ = code;
  IntegTime(integTime_);
}

bool cAnalogConfig::IntegTime(std::int32_t micros) {
  constexpr std::int32_t cycle50Hz = 20000;
  constexpr std::int32_t cycle60Hz = 16670;
  if (integCode_ == 0 || integCode_ == 1) {
    integTime_ = integCode_ == 0 ? cycle50Hz : cycle60Hz;
    return true;
  }
  if (micros < 0 && !isOf7128()) return false;
  if (inputKind_ == InputKind::isolated7128Stepped)
    integTime_ = snappedTime(micros);
  else if (!isOf7128())
    integTime_ = micros / 10 * 10;
  else  // a negative number is a filter order
    integTime_ = micros < 0 ? micros : micros / micros96 * micros96;
  return true;
}

void cAnalogConfig::SettleTime(std::int32_t micros) {
  settleTime_ = std::clamp<std::int32_t>(micros, 0, 1'000'000);
}

std::int64_t cAnalogConfig::steppedTime(int step) const {
  const std::int64_t t = integTime_;
  if (integrationStepping_ == 1) return step > 0 ? steppedUp(t) : steppedDown(t);
  const std::int64_t unit = isOf7128() ? micros96 : 10;
  return roundedDown(t, unit) + (step > 0 ? unit : -unit);
}

std::int32_t cAnalogConfig::IntegIncDec(int step) {
  const std::int64_t least = isOf7128() ? micros96 : 10;
  const std::int64_t most = isOf7128() ? 10'000'000 : 1'000'000;
  integCode_ = 2;
  integTime_ = static_cast<std::int32_t>(std::clamp(steppedTime(step), least, most));
  return integTime_;
}

std::int32_t cAnalogConfig::SettleIncDec(int step) {
  const std::int64_t t = roundedDown(settleTime_, 10) + (step > 0 ? 10 : -10);
  SettleTime(static_cast<std::int32_t>(t));
  return settleTime_;
}

void cAnalogConfig::TempScale(std::int16_t code) {
  if (code == tempScale_) return;
  tempScale_ = code;
  if (onTempScaleChange) onTempScaleChange();
}

std::string_view cAnalogConfig::TempScaleUnits() const {
  return textOf<4>({"Deg_C", "Deg_F", "Kelvin", "Rankine"}, tempScale_);
}

std::int32_t cAnalogConfig::MeasTime() const {
  std::int64_t t = std::max<std::int64_t>(integTime_, 0) + settleTime_;
  if (reverseMes_ && measureType_ == 0) t *= 2;
  if (openSensDetect_ && OpenSensIsValid()) t += 10;
  return static_cast<std::int32_t>(text::integerWithin(static_cast<double>(t), 0, 2147483647));
}

std::unique_ptr<cBridgeConfig> cBridgeConfig::Clone() const {
  return std::make_unique<cBridgeConfig>(*this);
}

// ---- cKGenData

void cKGenData::SetMode(DataObjectType type, std::int16_t block, std::int16_t element) {
  block_ = block;
  element_ = element;
  if (type == type_) return;
  type_ = type;
  makeConfiguration();
}

void cKGenData::makeConfiguration() {
  analog_.reset();
  can_.reset();
  if (type_ == DataObjectType::canItem) can_ = std::make_unique<can::cCanConfig>();
  if (!hasIntegration(type_)) return;
  const ObjectKind& object = *blockObject(type_);
  analog_ = std::make_unique<cAnalogConfig>();
  analog_->setInput(object.input, object.kind);
  listen();
}

void cKGenData::listen() {
  analog_->onMeasureTypeChange = [this] { Analog_MeasureTypeChange(); };
  analog_->onTempScaleChange = [this] { Analog_TempScaleChange(); };
}

std::unique_ptr<cKGenData> cKGenData::Clone() const {
  auto clone = std::make_unique<cKGenData>();
  clone->type_ = type_;
  clone->block_ = block_;
  clone->element_ = element_;
  clone->module_ = module_;
  clone->reps_ = reps_;
  clone->dataTypeCode_ = dataTypeCode_;
  clone->masks_ = masks_;
  clone->multiplier_ = multiplier_;
  clone->offset_ = offset_;
  if (can_) clone->can_ = can_->Clone();
  if (analog_) {
    clone->analog_ = analog_->Clone();
    clone->listen();
  }
  return clone;
}

std::string_view cKGenData::DataTypeString() const {
  return textOf<2>({"FP2", "IEEE4"}, dataTypeCode_);
}

std::string cKGenData::DefaultName() const {
  const auto numbered = [this](std::string_view array) {
    return element_ > 0 ? text::concat(array, "(", element_, ")") : std::string(array);
  };
  if (const ObjectKind* object = blockObject(type_)) {
    const std::string_view filter = type_ == DataObjectType::filter ? "FV" : "";
    const std::string letter(filter.empty() ? 1 : 0, infoOf(object->kind).letter);
    return numbered(text::concat(filter, letter, "Blk", block_));
  }
  switch (type_) {
    case DataObjectType::loggerPower:
      return block_ == 2 ? "BattCurr" : "BattVolt";
    case DataObjectType::calculatedField:
      return text::concat("CalcField", block_);
    case DataObjectType::canItem:
      return numbered(text::concat("CBlk", block_));
    case DataObjectType::port:
      return numbered("Port");
    case DataObjectType::flag:
      return numbered("Flag");
    case DataObjectType::excitation:
      return text::concat("Excite_", module_, "_", element_);
    case DataObjectType::referenceTemperature:
      return numbered("TRef");
    default:
      return {};
  }
}

std::int16_t cKGenData::FirstTableUsed() const {
  const auto found =
      std::find_if(masks_.begin(), masks_.end(), [](auto mask) { return mask != 0; });
  return static_cast<std::int16_t>(found == masks_.end() ? 0 : found - masks_.begin() + 1);
}

float cKGenData::MultIncDec(int step) {
  multiplier_ = stepped(multiplier_, step > 0 ? 1 : -1);
  return multiplier_;
}

float cKGenData::OffsetIncDec(int step) {
  offset_ = stepped(offset_, step > 0 ? 1 : -1);
  return offset_;
}

std::int32_t cKGenData::MeasTime() const { return analog_ ? analog_->MeasTime() : 0; }

double cKGenData::BlockTime() const { return static_cast<double>(MeasTime()) * reps_; }

void cKGenData::Analog_MeasureTypeChange() {
  if (onChange) onChange();
}

void cKGenData::Analog_TempScaleChange() {
  constexpr std::array<float, 4> multipliers = {1.0F, 1.8F, 1.0F, 1.8F};
  constexpr std::array<float, 4> offsets = {0.0F, 32.0F, 273.16F, 491.72F};
  const auto scale = static_cast<std::size_t>(analog_->TempScale());
  if (scale >= multipliers.size()) return;
  multiplier_ = multipliers[scale];
  offset_ = offsets[scale];
  if (onChange) onChange();
}

// ---- blocks

std::unique_ptr<cKGenData> dataObjectOf(const MeasurementBlock& block, BlockKind kind,
                                        std::int16_t number) {
  const auto found = std::find_if(blockObjects.begin(), blockObjects.end(),
                                  [kind](const ObjectKind& object) { return object.kind == kind; });
  auto object = std::make_unique<cKGenData>();
  object->SetMode(found->type, number, 0);
  object->Reps(block.Reps);
  const bool isIeee4 = block.DataResolution == "IEEE4";
  const int code = isIeee4 ? 1 : block.DataResolution == "FP2" ? 0 : -1;
  object->DataTypeCode(static_cast<std::int16_t>(code));
  object->Multiplier(block.DefaultMult);
  object->Offset(block.DefaultOffset);
  object->storedIn(masksOfAll(block.elements));
  if (object->Analog()) fillAnalog(*object->Analog(), block, kind);
  return object;
}

void writeScaling(const cKGenData& object, MeasurementBlock& block) {
  writeSingle(object.Multiplier(), block.DefaultMult);
  writeSingle(object.Offset(), block.DefaultOffset);
}

}  // namespace model
