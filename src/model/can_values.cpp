#include "model/can_values.h"

#include <algorithm>

#include "text/strings.h"

namespace model {
namespace {

using text::concat;

constexpr int lastRetrievingType = 6, firstSendingType = 7, lastSendingValues = 12;

bool receives(const CanItem& item) {
  return !onlySends(item) && can::retrieves(item.ItemMessageType);
}

std::uint32_t identifierOf(const CanItem& item, const CanSetup& can) {
  return static_cast<std::uint32_t>(
      can::parsedIdentifier(onlySends(item) ? item.TxDataId : item.DataId, largestIdentifier(can))
          .value);
}

bool areOtherReplies(const CanItem& a, const CanItem& b) {
  return a.DataStyle == 2 && b.DataStyle == 2 &&
         (a.RxDataMatch != b.RxDataMatch || a.RxDataMask != b.RxDataMask);
}

std::string whyNone(const CanItem& item, const can::Frame& frame, std::size_t value) {
  if (item.DataStyle == 2 && !can::matchesPattern(frame.data, item.RxDataMatch, item.RxDataMask))
    return "the frame is not the reply that the item waits for";
  if (can::numberIn(frame.data, fieldOf(item), static_cast<int>(value))) return "";
  return concat("the frame has only ", frame.data.size(), " bytes");
}

DecodedValue decodedValue(const CanItem& item, std::size_t index, std::size_t v,
                          const can::Frame& frame) {
  DecodedValue decoded{index,        v,          valueName(item, index, v),
                       std::nullopt, item.Units, whyNone(item, frame, v)};
  const Element& element = item.values[v];
  if (!element.AliasUnits.empty()) decoded.units = element.AliasUnits;
  if (!decoded.remark.empty()) return decoded;
  const Scaling scaling = scalingOf(element, scalingOf(item));
  decoded.number =
      *can::numberIn(frame.data, fieldOf(item), static_cast<int>(v)) * scaling.multiplier +
      scaling.offset;
  return decoded;
}

std::optional<std::string> complaintAboutType(const CanItem& item) {
  const int type = item.ItemMessageType;
  if (can::messageTypeText(type) == "??")
    return concat("message type ", type, " is not known; write 0 to 14");
  if (hasTypeOfDirection(item)) return std::nullopt;
  if (type == 0)
    return concat("there is no message type yet; choose what the item ",
                  onlySends(item) ? "sends" : "receives");
  return onlySends(item)
             ? concat("message type ", type, " receives values; choose one of 7 to 14 to send")
             : concat("message type ", type, " sends values; choose one of 1 to 6 to receive");
}

std::optional<std::string> complaintAboutMessages(const CanItem& item, const CanSetup& can) {
  if (item.DataStyle != 0) {
    if (auto complaint = complaintAboutIdentifier(item.TxDataId, can)) return complaint;
    if (auto complaint = complaintAboutFrame(item.TxDataFrame)) return complaint;
  }
  return onlySends(item) ? std::nullopt : complaintAboutIdentifier(item.DataId, can);
}

std::optional<std::string> complaintAboutBits(const CanItem& item) {
  if (can::isFloat(item.ItemMessageType) && item.NumBits != 32)
    return concat("a 4-byte float has 32 bits, not ", item.NumBits,
                  "; correct the bits or the type");
  const int last = item.StartBit + item.NumBits * item.NumVals - 1;
  if (item.StartBit < 1 || item.NumBits < 1 || item.NumVals < 1 || last > can::frameBits)
    return concat("start bit ", item.StartBit, ", bits ", item.NumBits, " and values ",
                  item.NumVals, " do not lie within bits 1 to ", can::frameBits,
                  " of a frame; correct them");
  return std::nullopt;
}

}  // namespace

std::int32_t largestIdentifier(const CanSetup& can) {
  return static_cast<std::int32_t>(can.CanDataIDType == 0 ? can::largestStandard
                                                          : can::largestExtended);
}

std::optional<std::string> complaintAboutIdentifier(std::string_view text, const CanSetup& can) {
  // A larger limit shows whether the text was cut down to the largest identifier.
  constexpr std::int32_t noLimit = 0x7FFFFFFF;
  const can::Identifier identifier = can::parsedIdentifier(text, noLimit);
  if (!identifier.valid || text::trimmed(text).front() == '-')
    return concat("'", text,
                  "' is no identifier; write decimal digits, or &H and hexadecimal digits");
  if (identifier.value > largestIdentifier(can))
    return concat("identifier ", text, " is larger than ", largestIdentifier(can),
                  can.CanDataIDType == 0 ? "; choose 29-bit identifiers or a smaller one"
                                         : "; write a smaller one");
  return std::nullopt;
}

std::optional<std::string> complaintAboutFrame(std::string_view text) {
  for (int byte = 1; byte <= can::frameBytes; ++byte)
    if (can::byteOf(text, byte) < 0)
      return concat("'", text, "' is no frame; write &H and sixteen hexadecimal digits");
  return std::nullopt;
}

bool onlySends(const CanItem& item) { return item.DataStyle == 1; }

bool hasTypeOfDirection(const CanItem& item) {
  const int type = item.ItemMessageType;
  return onlySends(item) ? type >= firstSendingType : type >= 1 && type <= lastRetrievingType;
}

std::int16_t typeOfDirection(const CanItem& item) {
  const std::int16_t type = item.ItemMessageType;
  if (hasTypeOfDirection(item)) return type;
  if (can::retrieves(type)) return static_cast<std::int16_t>(type + lastRetrievingType);
  const bool sendsValues = type >= firstSendingType && type <= lastSendingValues;
  return static_cast<std::int16_t>(sendsValues ? type - lastRetrievingType : 0);
}

bool areOfOneMessage(const CanItem& a, const CanItem& b, const CanSetup& can) {
  return onlySends(a) == onlySends(b) && identifierOf(a, can) == identifierOf(b, can);
}

can::BitField fieldOf(const CanItem& item) {
  return {item.StartBit, item.NumBits, item.NumVals, item.ItemMessageType};
}

std::vector<int> bitsOf(const CanItem& item) {
  std::vector<int> bits;
  for (int v = 0; v < std::min<int>(item.NumVals, can::frameBits); ++v)
    for (const int bit : can::bitsOf(fieldOf(item), v)) bits.push_back(bit);
  std::sort(bits.begin(), bits.end());
  return bits;
}

std::vector<SharedBits> sharedBits(const CanSetup& can) {
  std::vector<SharedBits> shared;
  std::vector<std::vector<int>> bits;
  for (const CanItem& item : can.items) bits.push_back(bitsOf(item));
  for (std::size_t second = 0; second < can.items.size(); ++second)
    for (std::size_t first = 0; first < second; ++first) {
      const CanItem &a = can.items[first], &b = can.items[second];
      if (!receives(a) || !receives(b) || !areOfOneMessage(a, b, can) || areOtherReplies(a, b))
        continue;
      SharedBits both{first, second, {}};
      std::set_intersection(bits[first].begin(), bits[first].end(), bits[second].begin(),
                            bits[second].end(), std::back_inserter(both.bits));
      if (!both.bits.empty()) shared.push_back(std::move(both));
    }
  return shared;
}

std::optional<std::string> complaintAboutItem(const CanItem& item, const CanSetup& can) {
  if (auto complaint = complaintAboutMessages(item, can)) return complaint;
  if (auto complaint = complaintAboutType(item)) return complaint;
  if (!can::retrieves(item.ItemMessageType)) return std::nullopt;  // bytes of a frame as they are
  return complaintAboutBits(item);
}

std::string valueName(const CanItem& item, std::size_t itemIndex, std::size_t value) {
  const bool named = value < item.values.size() && !item.values[value].AliasName.empty();
  return named ? item.values[value].AliasName : concat("CBlk", itemIndex + 1, "(", value + 1, ")");
}

std::vector<DecodedValue> decoded(const Project& project, const can::Frame& frame) {
  std::vector<DecodedValue> values;
  const CanSetup& can = project.can;
  const bool otherLength = frame.identifier && frame.extended != (can.CanDataIDType != 0);
  for (std::size_t k = 0; k < can.items.size() && !otherLength; ++k) {
    const CanItem& item = can.items[k];
    if (!receives(item)) continue;
    if (frame.identifier && *frame.identifier != identifierOf(item, can)) continue;
    for (std::size_t v = 0; v < item.values.size(); ++v)
      values.push_back(decodedValue(item, k, v, frame));
  }
  return values;
}

}  // namespace model
