#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "can/can_config.h"
#include "model/measurement_block.h"

/// One measurement, CAN item or other data object while a window edits or lists it.
namespace model {

/// What a data object stands for; the kinds from thermocouple to TCMUX that have an integration
/// time own a cAnalogConfig, CAN items a cCanConfig.
enum class DataObjectType : std::int16_t {
  none = 0,
  loggerPower = 1,
  thermocouple = 2,
  voltage = 3,
  highVoltage = 4,
  pulse = 5,
  isolated = 6,
  filter = 7,
  bridge = 8,
  tcmux = 9,
  calculatedField = 10,
  canItem = 11,
  port = 12,
  flag = 13,
  excitation = 14,
  referenceTemperature = 15
};

/// Which module digitises an input, and so which integration times it has.
enum class InputKind : std::int16_t {
  unset = 0,  // like analog7121
  analog7121 = 1,
  highVoltage7127 = 2,
  isolated7128 = 4,          // multiples of 96 us, or minus the filter order
  isolated7128Stepped = 100  // a list of times
};

/// The analog settings of one data object.
class cAnalogConfig {
 public:
  /// Stepping of integration and settling time: 1 stepped; 0 and -1, as created, free.
  void SetMode(std::int16_t integrationStepping, std::int16_t settlingStepping);
  [[nodiscard]] std::unique_ptr<cAnalogConfig> Clone() const;

  /// The input and the block kind that owns the list of ranges.
  void setInput(InputKind input, BlockKind kind);
  [[nodiscard]] InputKind inputKind() const { return inputKind_; }

  [[nodiscard]] std::int16_t MeasureType() const { return measureType_; }
  void MeasureType(std::int16_t code);  // 0 "Diff", 1 "SE"
  [[nodiscard]] std::string_view MeasureTypeString() const;
  /// 0 voltage, 1 thermocouple; isolated inputs measure either.
  [[nodiscard]] std::int16_t VarType() const { return varType_; }
  void VarType(std::int16_t code) { varType_ = code; }
  [[nodiscard]] std::string_view InputTypeString() const;  // "Volt" or "TC"

  [[nodiscard]] std::int16_t RangeIndex() const { return rangeIndex_; }
  void RangeIndex(std::int16_t index) { rangeIndex_ = index; }
  [[nodiscard]] std::string_view Range() const;  // "??" outside the list
  [[nodiscard]] std::int16_t RangeCode() const;  // 0 outside the list
  /// Open-sensor detection works on this range.
  [[nodiscard]] bool OpenSensIsValid() const;

  [[nodiscard]] std::int16_t IntegCode() const { return integCode_; }
  void IntegCode(std::int16_t code);
  [[nodiscard]] std::int32_t IntegTime() const { return integTime_; }
  /// Takes the time that the code or the module allows; false: refused, the old one stays.
  bool IntegTime(std::int32_t micros);
  [[nodiscard]] std::int32_t SettleTime() const { return settleTime_; }
  void SettleTime(std::int32_t micros);  // clamped to 0..1,000,000

  /// One step up (+1) or down (-1); the new time.
  std::int32_t IntegIncDec(int step);
  std::int32_t SettleIncDec(int step);

  [[nodiscard]] bool ReverseMes() const { return reverseMes_; }
  void ReverseMes(bool on) { reverseMes_ = on; }
  [[nodiscard]] bool OpenSensDetect() const { return openSensDetect_; }
  void OpenSensDetect(bool on) { openSensDetect_ = on; }

  [[nodiscard]] std::int16_t TempScale() const { return tempScale_; }
  void TempScale(std::int16_t code);
  [[nodiscard]] std::string_view TempScaleUnits() const;  // "Deg_C"; "??" for another code

  /// Integration and settling, twice with reversal of a differential input, and 10 us more with
  /// open-sensor detection.
  [[nodiscard]] std::int32_t MeasTime() const;

  std::function<void()> onMeasureTypeChange;
  std::function<void()> onTempScaleChange;

 private:
  [[nodiscard]] bool isOf7128() const { return inputKind_ == InputKind::isolated7128; }
  [[nodiscard]] std::int64_t steppedTime(int step) const;

  std::int16_t integrationStepping_ = -1;
  std::int16_t settlingStepping_ = -1;
  InputKind inputKind_ = InputKind::unset;
  BlockKind kind_ = BlockKind::voltage;
  std::int16_t measureType_ = 0;
  std::int16_t varType_ = 0;
  std::int16_t rangeIndex_ = 0;
  std::int16_t integCode_ = 2;
  std::int32_t integTime_ = 40;
  std::int32_t settleTime_ = 30;
  bool reverseMes_ = false;
  bool openSensDetect_ = false;
  std::int16_t tempScale_ = 0;
};

/// The bridge settings of one data object.
struct cBridgeConfig {
  std::string Config = "BrFull";
  std::int16_t Reps = 1;
  std::int16_t ExciteReps = 1;
  double Excite = 5000;  // mV
  double GageFactor = 2;

  [[nodiscard]] std::unique_ptr<cBridgeConfig> Clone() const;
  bool operator==(const cBridgeConfig&) const = default;
};

/// One data object. Its scaling is kept in single precision.
class cKGenData {
 public:
  cKGenData() = default;
  cKGenData(const cKGenData&) = delete;
  cKGenData& operator=(const cKGenData&) = delete;
  ~cKGenData() = default;

  /// Says what the object is; its configuration is made anew when the type changes.
  void SetMode(DataObjectType type, std::int16_t block, std::int16_t element);
  [[nodiscard]] std::unique_ptr<cKGenData> Clone() const;

  [[nodiscard]] DataObjectType DataObjType() const { return type_; }
  [[nodiscard]] std::int16_t Block() const { return block_; }
  [[nodiscard]] std::int16_t module() const { return module_; }
  void module(std::int16_t slot) { module_ = slot; }

  /// nullptr when the type has none.
  [[nodiscard]] cAnalogConfig* Analog() { return analog_.get(); }
  [[nodiscard]] const cAnalogConfig* Analog() const { return analog_.get(); }
  [[nodiscard]] can::cCanConfig* Can() { return can_.get(); }
  [[nodiscard]] bool hasCanConfig() const { return can_ != nullptr; }

  [[nodiscard]] std::int16_t DataTypeCode() const { return dataTypeCode_; }
  void DataTypeCode(std::int16_t code) { dataTypeCode_ = code; }
  [[nodiscard]] std::string_view DataTypeString() const;  // "FP2", "IEEE4", "??"

  /// "TBlk1(3)": the name that the program gives the object when it has no alias.
  [[nodiscard]] std::string DefaultName() const;

  [[nodiscard]] std::int16_t Reps() const { return reps_; }
  void Reps(std::int16_t channels) { reps_ = channels; }
  /// Tables that store the object, and the first of them from 1; 0: none.
  void storedIn(const TableMasks& masks) { masks_ = masks; }
  [[nodiscard]] std::int16_t FirstTableUsed() const;

  [[nodiscard]] float Multiplier() const { return multiplier_; }
  void Multiplier(double value) { multiplier_ = static_cast<float>(value); }
  [[nodiscard]] float Offset() const { return offset_; }
  void Offset(double value) { offset_ = static_cast<float>(value); }
  /// One tenth of the value's decimal magnitude up (+1) or down (-1); the new value.
  float MultIncDec(int step);
  float OffsetIncDec(int step);

  [[nodiscard]] std::int32_t MeasTime() const;  // us; 0 without analog configuration
  [[nodiscard]] double BlockTime() const;       // us

  /// The measurement type or the temperature scale of the analog configuration has changed.
  std::function<void()> onChange;

 private:
  void makeConfiguration();
  void listen();
  void Analog_MeasureTypeChange();
  void Analog_TempScaleChange();

  DataObjectType type_ = DataObjectType::none;
  std::int16_t block_ = 0;
  std::int16_t element_ = 0;
  std::int16_t module_ = 0;
  std::int16_t reps_ = 1;
  std::int16_t dataTypeCode_ = 0;
  TableMasks masks_ = {};
  float multiplier_ = 1;
  float offset_ = 0;
  std::unique_ptr<cAnalogConfig> analog_;
  std::unique_ptr<can::cCanConfig> can_;
};

/// The data object of a block as it stands.
std::unique_ptr<cKGenData> dataObjectOf(const MeasurementBlock& block, BlockKind kind,
                                        std::int16_t number);

/// Puts an edited object's scaling into its block: singles as their shortest decimal, so that
/// 273.16 stays 273.16.
void writeScaling(const cKGenData& object, MeasurementBlock& block);

}  // namespace model
