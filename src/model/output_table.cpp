#include "model/output_table.h"

#include <stdexcept>

namespace model {
namespace {

std::size_t checked(int index, int low, int high) {
  if (index < low || index > high) throw std::out_of_range("Subscript out of range");
  return static_cast<std::size_t>(index - low);
}

std::size_t triggerIndex(int trigger) { return checked(trigger, 0, 1); }
std::size_t conditionIndex(int condition) {
  return checked(condition, 1, static_cast<int>(maxConditions));
}

constexpr std::int32_t timeBytes = 12;

}  // namespace

std::array<std::array<std::string, maxConditions>, 2> cOutputTable::andLogic() {
  std::array<std::array<std::string, maxConditions>, 2> logic;
  for (auto& ofTrigger : logic) ofTrigger.fill("And");
  return logic;
}

bool cOutputTable::operator==(const cOutputTable& other) const {
  return triggers_ == other.triggers_ && writeIf_ == other.writeIf_ && logic_ == other.logic_;
}

const Condition& cOutputTable::trigger(int trigger, int condition) const {
  return triggers_[triggerIndex(trigger)][conditionIndex(condition)];
}
Condition& cOutputTable::trigger(int trigger, int condition) {
  return triggers_[triggerIndex(trigger)][conditionIndex(condition)];
}
std::string& cOutputTable::logic(int trigger, int condition) {
  return logic_[triggerIndex(trigger)][conditionIndex(condition)];
}
const Condition& cOutputTable::writeIf(int condition) const {
  return writeIf_[conditionIndex(condition)];
}
Condition& cOutputTable::writeIf(int condition) { return writeIf_[conditionIndex(condition)]; }

const std::string& cOutputTable::TriggerMeasVar(int t, int c) const {
  return trigger(t, c).MeasVar;
}
void cOutputTable::TriggerMeasVar(int t, int c, std::string text) {
  trigger(t, c).MeasVar = std::move(text);
}
std::int16_t cOutputTable::TriggerCompare(int t, int c) const { return trigger(t, c).Compare; }
void cOutputTable::TriggerCompare(int t, int c, std::int16_t code) { trigger(t, c).Compare = code; }
std::int16_t cOutputTable::TriggerVarIdx(int t, int c) const { return trigger(t, c).VarIdx; }
void cOutputTable::TriggerVarIdx(int t, int c, std::int16_t index) { trigger(t, c).VarIdx = index; }
float cOutputTable::TriggerValue(int t, int c) const {
  return static_cast<float>(trigger(t, c).Value);
}
void cOutputTable::TriggerValue(int t, int c, double value) { trigger(t, c).Value = value; }
const std::string& cOutputTable::TriggerVarb(int t, int c) const { return trigger(t, c).Varb; }
void cOutputTable::TriggerVarb(int t, int c, std::string text) {
  trigger(t, c).Varb = std::move(text);
}
const std::string& cOutputTable::TriggerIndvExpress(int t, int c) const {
  return trigger(t, c).Expression;
}
void cOutputTable::TriggerIndvExpress(int t, int c, std::string text) {
  trigger(t, c).Expression = std::move(text);
}
const std::string& cOutputTable::TriggerLogic(int t, int c) const {
  return logic_[triggerIndex(t)][conditionIndex(c)];
}
void cOutputTable::TriggerLogic(int t, int c, std::string text) { logic(t, c) = std::move(text); }

const std::string& cOutputTable::WriteIfMeasVar(int c) const { return writeIf(c).MeasVar; }
void cOutputTable::WriteIfMeasVar(int c, std::string text) { writeIf(c).MeasVar = std::move(text); }
std::int16_t cOutputTable::WriteIfCompare(int c) const { return writeIf(c).Compare; }
void cOutputTable::WriteIfCompare(int c, std::int16_t code) { writeIf(c).Compare = code; }
std::int16_t cOutputTable::WriteIfVarIdx(int c) const { return writeIf(c).VarIdx; }
void cOutputTable::WriteIfVarIdx(int c, std::int16_t index) { writeIf(c).VarIdx = index; }
float cOutputTable::WriteIfValue(int c) const { return static_cast<float>(writeIf(c).Value); }
void cOutputTable::WriteIfValue(int c, double value) { writeIf(c).Value = value; }
const std::string& cOutputTable::WriteIfVarb(int c) const { return writeIf(c).Varb; }
void cOutputTable::WriteIfVarb(int c, std::string text) { writeIf(c).Varb = std::move(text); }
const std::string& cOutputTable::WriteIfExpression(int c) const { return writeIf(c).Expression; }
void cOutputTable::WriteIfExpression(int c, std::string text) {
  writeIf(c).Expression = std::move(text);
}

void cOutputTable::setRecord(std::int32_t dataBytes, bool timeStored) {
  dataBytes_ = dataBytes;
  timeStored_ = timeStored;
}

std::int32_t cOutputTable::RecordBytes() const {
  return dataBytes_ + (timeStored_ ? timeBytes : 0);
}

}  // namespace model
