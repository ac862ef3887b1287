#include "can/can_config.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

#include "text/strings.h"

namespace can {
namespace {

struct BaudRate {
  std::string_view text;
  std::int16_t quanta, segment1, segment2;
};

constexpr std::array<BaudRate, 7> baudRates = {{{"1 M", 1, 5, 2},
                                                {"800 K", 1, 7, 2},
                                                {"500 K", 2, 5, 2},
                                                {"250 K", 4, 5, 2},
                                                {"125 K", 8, 5, 2},
                                                {"50 K", 16, 7, 2},
                                                {"20 K", 40, 7, 2}}};

const BaudRate& baudRate(std::int16_t code) {
  static constexpr BaudRate unknown = {"", 0, 0, 0};
  return code >= 0 && code < static_cast<std::int16_t>(baudRates.size())
             ? baudRates[static_cast<std::size_t>(code)]
             : unknown;
}

struct FieldLayout {
  unsigned startBit, bits;
  [[nodiscard]] std::uint32_t largest() const { return (1U << bits) - 1; }
};

constexpr std::array<FieldLayout, 6> fieldLayouts = {
    {{26, 3}, {25, 1}, {24, 1}, {16, 8}, {8, 8}, {0, 8}}};

std::size_t checkedField(int field) {
  if (field < 0 || field >= static_cast<int>(fieldLayouts.size()))
    throw std::out_of_range("Subscript out of range");
  return static_cast<std::size_t>(field);
}

constexpr std::string_view hexadecimalMark = "&H";

bool isHexadecimal(std::string_view text) {
  return text::equalsIgnoringCase(text.substr(0, hexadecimalMark.size()), hexadecimalMark);
}

bool consistsOf(std::string_view text, std::string_view characters) {
  return !text.empty() && text.find_first_not_of(characters) == std::string_view::npos;
}

Identifier hexadecimalIdentifier(std::string_view digits, std::int32_t largest) {
  constexpr std::size_t mostDigits = 8;  // 32 bits
  if (digits.size() > mostDigits || !consistsOf(digits, "0123456789abcdefABCDEF")) return {};
  std::uint32_t value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  const auto limit = static_cast<std::uint32_t>(largest);
  return {static_cast<std::int32_t>(std::min(value, limit)), true, true};
}

Identifier decimalIdentifier(std::string_view text, std::int32_t largest) {
  std::string_view digits = text;
  if (!digits.empty() && (digits.front() == '-' || digits.front() == '+')) digits.remove_prefix(1);
  if (!consistsOf(digits, "0123456789")) return {};
  const std::int64_t value = text::integerWithin(text::readNumber(text), 0, largest);
  return {static_cast<std::int32_t>(value), false, true};
}

std::int16_t bitWithin64(std::int32_t bit) {
  return static_cast<std::int16_t>(std::clamp<std::int32_t>(bit, 1, 64));
}

}  // namespace

void cCanModule::SetMode(std::int16_t baudCode, std::int16_t moduleNumber) {
  baudCode_ = baudCode;
  module_ = moduleNumber;
}

std::int16_t cCanModule::NumBaudRates() const {
  return static_cast<std::int16_t>(baudRates.size());
}

std::string cCanModule::BaudRateText(std::int16_t code) const {
  return std::string(baudRate(code).text);
}

std::int16_t cCanModule::TimeQuanta() const { return baudRate(baudCode_).quanta; }
std::int16_t cCanModule::TSeg1() const { return baudRate(baudCode_).segment1; }
std::int16_t cCanModule::TSeg2() const { return baudRate(baudCode_).segment2; }

cCanConfig::cCanConfig() { readFields(); }

void cCanConfig::SetMode(std::int32_t dataIdType) {
  dataIdType_ = dataIdType;
  dataId_ = identifierText(parsedIdentifier(dataId_, LargestIdentifier()));
  txDataId_ = identifierText(parsedIdentifier(txDataId_, LargestIdentifier()));
  readFields();
}

void cCanConfig::SetMsgMode(std::int32_t messageType) { messageType_ = messageType; }

bool cCanConfig::setIdentifier(std::string& identifier, std::string_view text) {
  const Identifier parsed = parsedIdentifier(text, LargestIdentifier());
  if (!parsed.valid) return false;
  identifier = identifierText(parsed);
  dataIdIsHex_ = parsed.hexadecimal;
  return true;
}

bool cCanConfig::DataID(std::string_view text) {
  if (!setIdentifier(dataId_, text)) return false;
  readFields();
  return true;
}

bool cCanConfig::TxDataID(std::string_view text) { return setIdentifier(txDataId_, text); }

void cCanConfig::StartBit(std::int32_t bit) { startBit_ = bitWithin64(bit); }
void cCanConfig::NumBits(std::int32_t bits) { numBits_ = bitWithin64(bits); }

std::int32_t cCanConfig::LargestIdentifier() const {
  return IdentifierBits() == 11 ? 0x7FF : 0x1FFFFFFF;
}

void cCanConfig::readFields() {
  fieldValues_ = {};
  if (IdentifierBits() == 11) return;
  const auto identifier =
      static_cast<std::uint32_t>(parsedIdentifier(dataId_, LargestIdentifier()).value);
  for (std::size_t f = 0; f < fieldLayouts.size(); ++f)
    fieldValues_[f] = static_cast<std::uint8_t>(identifier >> fieldLayouts[f].startBit &
                                                fieldLayouts[f].largest());
}

std::string cCanConfig::PGNVal() const {
  if (IdentifierBits() == 11) return {};
  const auto value = [this](J1939Field field) {
    return static_cast<std::int32_t>(fieldValues_[static_cast<std::size_t>(field)]);
  };
  constexpr std::int32_t firstBroadcastFormat = 240;  // below it PDU specific is an address
  const std::int32_t format = value(J1939Field::pduFormat);
  const std::int32_t specific = format >= firstBroadcastFormat ? value(J1939Field::pduSpecific) : 0;
  return text::concat(value(J1939Field::reserved) * 0x20000 +
                      value(J1939Field::dataPage) * 0x10000 + format * 0x100 + specific);
}

std::string cCanConfig::J1939_FieldBinString(int field) const {
  const std::size_t f = checkedField(field);
  std::string digits;
  for (unsigned bit = fieldLayouts[f].bits; bit-- > 0;)
    digits += (fieldValues_[f] >> bit & 1U) != 0 ? '1' : '0';
  return digits;
}

std::string cCanConfig::J1939_FieldStartBit(int field) const {
  return text::concat(fieldLayouts[checkedField(field)].startBit);
}

std::uint8_t cCanConfig::J1939_FieldVal(int field) const {
  return fieldValues_[checkedField(field)];
}

void cCanConfig::J1939_FieldVal(int field, std::int32_t value) {
  const std::size_t f = checkedField(field);
  const auto largest = static_cast<std::int32_t>(fieldLayouts[f].largest());
  fieldValues_[f] = static_cast<std::uint8_t>(std::clamp<std::int32_t>(value, 0, largest));
  if (IdentifierBits() == 11) return;
  std::uint32_t identifier = 0;
  for (std::size_t i = 0; i < fieldLayouts.size(); ++i)
    identifier |= static_cast<std::uint32_t>(fieldValues_[i]) << fieldLayouts[i].startBit;
  dataId_ = identifierText({static_cast<std::int32_t>(identifier), isHexadecimal(dataId_), true});
}

std::unique_ptr<cCanConfig> cCanConfig::Clone() const {
  return std::make_unique<cCanConfig>(*this);
}

std::string identifierText(const Identifier& identifier) {
  if (!identifier.hexadecimal) return text::concat(identifier.value);
  std::array<char, 16> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), identifier.value, 16);
  return text::concat(hexadecimalMark, text::upper({digits.data(), end.ptr}));
}

Identifier parsedIdentifier(std::string_view text, std::int32_t largest) {
  const std::string_view number = text::trimmed(text);
  if (isHexadecimal(number))
    return hexadecimalIdentifier(number.substr(hexadecimalMark.size()), largest);
  return decimalIdentifier(number, largest);
}

std::string_view messageTypeText(std::int32_t code) {
  static constexpr std::array<std::string_view, 15> texts = {
      "None",
      "1 - Retrieve data; unsigned integer, MSB first",
      "2 - Retrieve data; unsigned integer, LSB first",
      "3 - Retrieve data; signed integer, MSB first",
      "4 - Retrieve data; signed integer, LSB first",
      "5 - Retrieve data; 4-byte float, MSB first",
      "6 - Retrieve data; 4-byte float, LSB first",
      "7 - Transmit data; unsigned integer, MSB first",
      "8 - Transmit data; unsigned integer, LSB first",
      "9 - Transmit data; signed integer, MSB first",
      "10 - Transmit data; signed integer, LSB first",
      "11 - Transmit data; 4-byte float, MSB first",
      "12 - Transmit data; 4-byte float, LSB first",
      "13 - Transmit data frame",
      "14 - Transmit data frame, receive reply"};
  return code >= 0 && code < static_cast<std::int32_t>(texts.size())
             ? texts[static_cast<std::size_t>(code)]
             : "??";
}

}  // namespace can
