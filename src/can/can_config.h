#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// CAN bus items and the bit timing of the CAN interface.
namespace can {

inline constexpr std::string_view defaultIdentifier = "0";
inline constexpr std::string_view defaultFrame = "&H0000000000000000";
inline constexpr std::string_view defaultMask = "0";
inline constexpr std::string_view defaultMatch = "&HXXXXXXXXXXXXXXXX";

/// Bit timing of the interface: baud = 8 MHz / (quanta x (1 + segment 1 + segment 2)).
class cCanModule {
 public:
  void SetMode(std::int16_t baudCode, std::int16_t moduleNumber);
  [[nodiscard]] std::int16_t module() const { return module_; }
  [[nodiscard]] std::int16_t NumBaudRates() const;
  /// "" for an unknown code.
  [[nodiscard]] std::string BaudRateText(std::int16_t code) const;
  /// Of the selected baud rate; 0 for an unknown code.
  [[nodiscard]] std::int16_t TimeQuanta() const;
  [[nodiscard]] std::int16_t TSeg1() const;
  [[nodiscard]] std::int16_t TSeg2() const;

 private:
  std::int16_t baudCode_ = 2;
  std::int16_t module_ = 1;
};

/// Fields of a 29-bit J1939 identifier, by index.
enum class J1939Field { priority, reserved, dataPage, pduFormat, pduSpecific, sourceAddress };

/// The settings of one CAN message. Identifiers are texts, decimal or "&H" with hexadecimal
/// digits, clamped to 11 or 29 bits.
class cCanConfig {
 public:
  cCanConfig();

  void SetMode(std::int32_t dataIdType);
  void SetMsgMode(std::int32_t messageType);

  [[nodiscard]] const std::string& DataID() const { return dataId_; }
  /// A text that is no number is refused and the old one kept: false.
  bool DataID(std::string_view text);
  [[nodiscard]] const std::string& TxDataID() const { return txDataId_; }
  bool TxDataID(std::string_view text);
  [[nodiscard]] const std::string& TxDataFrame() const { return txDataFrame_; }
  void TxDataFrame(std::string text) { txDataFrame_ = std::move(text); }
  [[nodiscard]] const std::string& RxDataMask() const { return rxDataMask_; }
  void RxDataMask(std::string text) { rxDataMask_ = std::move(text); }
  [[nodiscard]] const std::string& RxDataMatch() const { return rxDataMatch_; }
  void RxDataMatch(std::string text) { rxDataMatch_ = std::move(text); }
  [[nodiscard]] std::int32_t RxTimeout() const { return rxTimeout_; }
  void RxTimeout(std::int32_t milliseconds) { rxTimeout_ = milliseconds; }
  [[nodiscard]] std::int16_t StartBit() const { return startBit_; }
  void StartBit(std::int32_t bit);  // clamped to 1..64
  [[nodiscard]] std::int16_t NumBits() const { return numBits_; }
  void NumBits(std::int32_t bits);  // clamped to 1..64

  [[nodiscard]] std::int32_t MessageType() const { return messageType_; }
  [[nodiscard]] std::int32_t DataIDType() const { return dataIdType_; }
  [[nodiscard]] std::int16_t IdentifierBits() const { return dataIdType_ == 0 ? 11 : 29; }
  [[nodiscard]] std::int32_t LargestIdentifier() const;
  /// The last accepted identifier was written in hexadecimal.
  [[nodiscard]] bool DataIDIsHex() const { return dataIdIsHex_; }
  /// Parameter group number as decimal text; "" for an 11-bit identifier.
  [[nodiscard]] std::string PGNVal() const;

  /// Fields 0 to 5; another index throws std::out_of_range.
  [[nodiscard]] std::string J1939_FieldBinString(int field) const;
  [[nodiscard]] std::string J1939_FieldStartBit(int field) const;
  [[nodiscard]] std::uint8_t J1939_FieldVal(int field) const;
  /// Clamps the value and rebuilds the identifier, unless that has 11 bits and no fields.
  void J1939_FieldVal(int field, std::int32_t value);

  [[nodiscard]] std::unique_ptr<cCanConfig> Clone() const;
  bool operator==(const cCanConfig&) const = default;

 private:
  std::int32_t dataIdType_ = 0;
  std::int32_t messageType_ = 0;
  std::string dataId_{defaultIdentifier};
  std::string txDataId_{defaultIdentifier};
  bool dataIdIsHex_ = false;
  std::string txDataFrame_{defaultFrame};
  std::string rxDataMask_{defaultMask};
  std::string rxDataMatch_{defaultMatch};
  std::int32_t rxTimeout_ = 100;
  std::int16_t startBit_ = 1;
  std::int16_t numBits_ = 1;
  std::array<std::uint8_t, 6> fieldValues_ = {};  // of the 29-bit identifier

  bool setIdentifier(std::string& identifier, std::string_view text);
  void readFields();
};

/// The number that an identifier text stands for, clamped to the largest identifier; nothing
/// for a text that is no number.
struct Identifier {
  std::int32_t value = 0;
  bool hexadecimal = false;
  bool valid = false;
};
Identifier parsedIdentifier(std::string_view text, std::int32_t largest);
/// The form in which an identifier is kept: "217056256" or "&HCF00400".
std::string identifierText(const Identifier& identifier);

/// Texts of the message types 0 to 14; "??" otherwise.
std::string_view messageTypeText(std::int32_t code);

}  // namespace can
