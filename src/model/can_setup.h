#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "can/can_config.h"
#include "model/measurement_block.h"

namespace model {

/// One message to receive or send and the values in it. Texts of identifiers, frame, mask and
/// match are those of can::cCanConfig.
struct CanItem {
  std::string Name;
  std::int16_t DataStyle = 0;  // 0 receive, 1 transmit, 2 transmit then receive
  bool Enabled = true;
  std::int16_t StartBit = 1;
  std::int16_t NumBits = 1;
  std::int16_t NumVals = 1;
  std::string DataId{can::defaultIdentifier};
  std::string TxDataId{can::defaultIdentifier};
  std::string TxDataFrame{can::defaultFrame};
  std::string RxDataMatch{can::defaultMatch};
  std::string RxDataMask{can::defaultMask};
  std::int32_t RxTimeout = 100;  // ms
  std::int16_t ItemMessageType = 0;
  double Mult = 1;
  double Offset = 0;
  std::string Units;
  std::string DataType = "FP2";
  bool Public = false;
  std::string Description;
  std::array<TableProcessing, maxTables> processing;
  std::vector<Element> values;  // NumVals of them
  bool operator==(const CanItem&) const = default;
};
/// What counts for the values of an item that have no scaling of their own.
inline Scaling scalingOf(const CanItem& item) { return {item.Mult, item.Offset}; }

struct CanSetup {
  std::int16_t CanAddress = 1;
  std::int16_t CanBaud = 2;
  std::int16_t CanQuanta = 2;
  std::int16_t CanSeg1 = 5;
  std::int16_t CanSeg2 = 2;
  std::int16_t CanDataIDType = 0;  // 0: 11 bits, other: 29 bits
  std::int16_t CanMessageType = 0;
  bool CanEnableTransmit = false;
  bool CanNaNOldData = false;
  bool CanGetOSVerSig = false;
  std::int16_t CanCount = 0;
  std::int16_t CanPickDataFormat = 0;
  bool CanAutoSaveLists = false;
  bool CanBusEnabled = false;
  std::vector<CanItem> items;  // CanCount of them
  bool operator==(const CanSetup&) const = default;
};

}  // namespace model
