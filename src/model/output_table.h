#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "model/limits.h"

namespace model {

/// A comparison, or a free expression in its place.
struct Condition {
  std::string MeasVar;
  std::int16_t Compare = 2;  // operator code
  std::int16_t VarIdx = 0;   // element of the variable, 0: none
  double Value = 0;
  std::string Varb;  // compared with, instead of the value
  std::string Expression;
  bool operator==(const Condition&) const = default;
};

/// Trigger and write-if conditions of one table and its record size. Triggers: 0 start, 1 stop;
/// conditions: 1 to 10. Another index throws std::out_of_range and stores nothing.
class cOutputTable {
 public:
  [[nodiscard]] const std::string& TriggerMeasVar(int trigger, int condition) const;
  void TriggerMeasVar(int trigger, int condition, std::string text);
  [[nodiscard]] std::int16_t TriggerCompare(int trigger, int condition) const;
  void TriggerCompare(int trigger, int condition, std::int16_t code);
  [[nodiscard]] std::int16_t TriggerVarIdx(int trigger, int condition) const;
  void TriggerVarIdx(int trigger, int condition, std::int16_t index);
  [[nodiscard]] float TriggerValue(int trigger, int condition) const;
  void TriggerValue(int trigger, int condition, double value);
  [[nodiscard]] const std::string& TriggerVarb(int trigger, int condition) const;
  void TriggerVarb(int trigger, int condition, std::string text);
  [[nodiscard]] const std::string& TriggerIndvExpress(int trigger, int condition) const;
  void TriggerIndvExpress(int trigger, int condition, std::string text);
  /// "And" or "Or": how the condition is joined to the next one.
  [[nodiscard]] const std::string& TriggerLogic(int trigger, int condition) const;
  void TriggerLogic(int trigger, int condition, std::string text);

  [[nodiscard]] const std::string& WriteIfMeasVar(int condition) const;
  void WriteIfMeasVar(int condition, std::string text);
  [[nodiscard]] std::int16_t WriteIfCompare(int condition) const;
  void WriteIfCompare(int condition, std::int16_t code);
  [[nodiscard]] std::int16_t WriteIfVarIdx(int condition) const;
  void WriteIfVarIdx(int condition, std::int16_t index);
  [[nodiscard]] float WriteIfValue(int condition) const;
  void WriteIfValue(int condition, double value);
  [[nodiscard]] const std::string& WriteIfVarb(int condition) const;
  void WriteIfVarb(int condition, std::string text);
  [[nodiscard]] const std::string& WriteIfExpression(int condition) const;
  void WriteIfExpression(int condition, std::string text);

  /// Whole conditions, for the file and for expressions.
  [[nodiscard]] const Condition& trigger(int trigger, int condition) const;
  [[nodiscard]] Condition& trigger(int trigger, int condition);
  [[nodiscard]] std::string& logic(int trigger, int condition);
  [[nodiscard]] const Condition& writeIf(int condition) const;
  [[nodiscard]] Condition& writeIf(int condition);

  void setRecord(std::int32_t dataBytes, bool timeStored);
  /// Data bytes of a record, and 12 more when date and time are stored with each record.
  [[nodiscard]] std::int32_t RecordBytes() const;

  /// The conditions; the record size is derived and does not count.
  bool operator==(const cOutputTable& other) const;

 private:
  std::array<std::array<Condition, maxConditions>, 2> triggers_;
  std::array<Condition, maxConditions> writeIf_;
  bool timeStored_ = false;
  std::int32_t dataBytes_ = 0;
  std::array<std::array<std::string, maxConditions>, 2> logic_ = andLogic();
  static std::array<std::array<std::string, maxConditions>, 2> andLogic();
};

/// One of the eight output tables. A table that is off keeps its settings.
struct OutputTable {
  bool TableOn = false;
  std::string OutInt = "1";  // whole number, or "VFilt" or "FFilt": at the rate of the filter
  std::int16_t OutIntUnits = 3;
  std::string TableName;
  std::int32_t Buffer = 1000;  // records; negative: all available memory
  bool SyncTable = false;      // a record each scan
  bool FillStop = false;
  std::int16_t PamCard = 0;  // 0 either, 1 A, 2 B
  bool AutoSize = true;
  std::int16_t TableLocation = 1;  // 1 CPU S-Ram, 2 CPU Flash, 3 PC card
  bool CalcTime = true;            // off: date and time in each record
  std::int16_t TrigTable = 0;      // start conditions; 0: not triggered
  std::int16_t TrigTabStop = 0;    // stop conditions; negative: as many as start conditions
  std::string DataEventStart;
  std::string DataEventStop;
  std::int16_t DataEventCode = 0;
  std::int32_t PreTriggerScans = 0;
  std::int32_t AftTriggerScans = 0;
  std::int16_t FlagTable = 0;  // written only while this flag is high
  std::int16_t FlagMark = 0;
  std::int16_t FlagFull = 0;
  bool SingleTrigger = false;
  bool DisableTrigger = false;
  std::int16_t WriteIf = 0;  // conditions
  bool DisableWriteIf = false;
  std::string GroupWriteIf;  // "1 And (2 Or 3)"; empty: all joined by And
  cOutputTable conditions;
  bool operator==(const OutputTable&) const = default;
};

}  // namespace model
