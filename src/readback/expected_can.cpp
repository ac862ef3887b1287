#include <algorithm>
#include <cmath>

#include "can/can_config.h"
#include "projectfile/rows.h"
#include "readback/sections.h"

namespace readback {
namespace {

using text::concat;

constexpr int bytesOfFrame = 8;
constexpr double delayMs = 10;

/// CANBus into a destination: interface, identifier, type, first bit, bits, values.
struct Message {
  std::string destination;
  Part identifier, type;
  std::vector<Part> rest;
};

void expectMessage(Expectation& out, const Setting& setting, const Message& message,
                   std::string_view before = {}) {
  std::vector<Part> parts = {{message.destination}, {"CanAddress"},     {"CanQuanta"}, {"CanSeg1"},
                             {"CanSeg2"},           message.identifier, message.type};
  parts.insert(parts.end(), message.rest.begin(), message.rest.end());
  if (before.empty()) return out.call(setting, "CANBus", parts);
  std::string list;
  for (const Part& part : parts) list += concat(list.empty() ? "" : ",", part.text);
  out.line(setting, concat(before, "CANBus(", list, ")"));
}

Part identifier(const Outline& outline, std::string_view text, std::string_view key) {
  const std::int32_t largest = outline.project.can.CanDataIDType == 0 ? 0x7FF : 0x1FFFFFFF;
  return {can::parsedIdentifier(text, largest).value, key};
}

/// What takes the values of an item out of a message.
Message valuesOf(const Outline& outline, const Source& source) {
  const model::CanItem& item = *source.item;
  const Part multiplier = constantOf(source, "MULT"), offset = constantOf(source, "OSET");
  const bool arrays = source.ownMultipliers || source.ownOffsets;
  return {source.values + "()",
          identifier(outline, item.DataId, "DataId"),
          {item.ItemMessageType, "ItemMessageType"},
          {{item.StartBit, "StartBit"},
           {item.NumBits, "NumBits"},
           {item.NumVals, "NumVals"},
           source.ownMultipliers ? Part(source.multipliers() + "()", "Mult") : multiplier,
           arrays ? Part(source.offsets() + "()", "Offset") : offset}};
}

/// Byte 1 to 8 of a text of hexadecimal digits; -1 where it has none.
int byteOf(std::string_view text, int byte) {
  if (text::equalsIgnoringCase(text.substr(0, 2), "&H")) text.remove_prefix(2);
  int value = 0;
  for (std::size_t i = static_cast<std::size_t>(byte - 1) * 2, end = i + 2; i < end; ++i) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const std::size_t digit =
        i < text.size() ? digits.find(text::upper(text.substr(i, 1))) : std::string_view::npos;
    if (digit == std::string_view::npos) return -1;
    value = value * 16 + static_cast<int>(digit);
  }
  return value;
}

int sentByte(const model::CanItem& item, int byte) {
  return std::max(byteOf(item.TxDataFrame, byte), 0);
}

/// A mask that does not name all bytes compares every bit.
int maskOf(const model::CanItem& item, int byte) {
  const bool whole =
      byteOf(item.RxDataMask, byte) >= 0 &&
      item.RxDataMask.size() >=
          16U + (text::equalsIgnoringCase(item.RxDataMask.substr(0, 2), "&H") ? 2 : 0);
  return whole ? byteOf(item.RxDataMask, byte) : 255;
}

std::string matchOf(const model::CanItem& item) {
  std::string all;
  for (int byte = 1; byte <= bytesOfFrame; ++byte) {
    const int pattern = byteOf(item.RxDataMatch, byte), mask = maskOf(item, byte);
    if (pattern < 0 || mask == 0) continue;
    std::string received = concat("ByteRx(", byte, ")");
    if (mask != 255) received = concat("(", received, " And ", mask, ")");
    all += concat(all.empty() ? "" : " And ", received, " = ", pattern & mask);
  }
  return all;
}

void expectFrame(Expectation& out, const std::vector<const Source*>& items, const Source& source) {
  for (int byte = 1; byte <= bytesOfFrame; ++byte)
    if (std::any_of(items.begin(), items.end(),
                    [byte](const Source* other) { return sentByte(*other->item, byte) != 0; }))
      out.assign(source.setting("TxDataFrame"), concat("ByteTx(", byte, ")"),
                 sentByte(*source.item, byte));
}

void expectSending(Expectation& out, const Outline& outline, const Source& source) {
  constexpr int firstTransmitType = 7;
  const model::CanItem& item = *source.item;
  const bool ownType = item.DataStyle == 1 && item.ItemMessageType >= firstTransmitType;
  expectMessage(
      out, source.setting("TxDataId"),
      {"ByteTx(1)",
       identifier(outline, item.TxDataId, "TxDataId"),
       {ownType ? item.ItemMessageType : std::int16_t{firstTransmitType}, "ItemMessageType"},
       {{1}, {8}, {8}, {1}, {0}}});
}

void expectReply(Expectation& out, const Outline& outline, const Source& source,
                 std::size_t number) {
  const std::string match = matchOf(*source.item);
  out.line(source.setting("RxTimeout"), concat("For idx = 1 To NumRxReads(", number, ")"));
  expectMessage(out, source.setting("DataId"),
                {"ByteRx(1)",
                 identifier(outline, source.item->DataId, "DataId"),
                 {1},
                 {{1}, {8}, {8}, {1}, {0}}});
  if (match.empty())
    expectMessage(out, source.setting(""), valuesOf(outline, source));
  else
    expectMessage(out, source.setting("RxDataMatch"), valuesOf(outline, source),
                  concat("If ", match, " Then "));
  out.line(everyProgram, "Delay(CANDelay,mSec)");
  out.line(source.setting("RxTimeout"), "Next idx");
}

}  // namespace

std::vector<const Source*> transmittingItems(const Outline& outline) {
  std::vector<const Source*> items;
  for (const Source& source : outline.sources)
    if (source.item && source.item->DataStyle != 0) items.push_back(&source);
  return items;
}

void expectCanSetup(Expectation& out, const Outline& outline) {
  if (!hasCanInterface(outline.project)) return;
  const model::CanSetup& can = outline.project.can;
  out.assign(canSetting("CanAddress"), "CanAddress", can.CanAddress);
  out.assign(canSetting("CanQuanta"), "CanQuanta", can.CanQuanta);
  out.assign(canSetting("CanSeg1"), "CanSeg1", can.CanSeg1);
  out.assign(canSetting("CanSeg2"), "CanSeg2", can.CanSeg2);
  out.assign(canSetting(can.CanEnableTransmit ? "CanEnableTransmit" : "CanNaNOldData"),
             "CanSwitchTx", (can.CanEnableTransmit ? 4 : 0) + (can.CanNaNOldData ? 100 : 0));
  for (const std::string_view line :
       {"Scan(1,Sec,0,10)",
        "CANBus(CanSwitchTx,CanAddress,CanQuanta,CanSeg1,CanSeg2,1,32,0,0,1,1.0,0.0)",
        "CANBus(CanSwitchRx,CanAddress,CanQuanta,CanSeg1,CanSeg2,1,33,0,0,1,1.0,0.0)",
        "If CanSwitchRx = CanSwitchTx Then ExitScan", "NextScan", "Scan(1,Sec,0,10)",
        "CANBus(CanIfInfo(),CanAddress,CanQuanta,CanSeg1,CanSeg2,1,30,0,0,0,1.0,0.0)",
        "If CanIfInfo(1) > 0 Then ExitScan", "NextScan", "CanIfSig = CanIfInfo(1)",
        "CanIfVer = CanIfInfo(2)", "CallTable CANChk"})
    out.line(canSetting("CanBusEnabled"), line);
}

void expectCanReception(Expectation& out, const Outline& outline) {
  each(outline, "C", [&](const Source& source) {
    if (source.item->DataStyle == 0)
      expectMessage(out, source.setting(""), valuesOf(outline, source));
  });
}

void expectCanExchangeSetup(Expectation& out, const Outline& outline) {
  std::size_t number = 0;
  for (const Source* source : transmittingItems(outline)) {
    const model::CanItem& item = *source->item;
    const double reads = std::ceil(static_cast<double>(item.RxTimeout) / delayMs);
    out.assign(source->setting("RxTimeout"), concat("NumRxReads(", ++number, ")"),
               item.DataStyle == 1 ? std::int64_t{0} : text::integerWithin(reads, 1, 1000000));
  }
}

void expectCanExchange(Expectation& out, const Outline& outline) {
  const std::vector<const Source*> items = transmittingItems(outline);
  for (std::size_t i = 0; i < items.size(); ++i) {
    expectFrame(out, items, *items[i]);
    expectSending(out, outline, *items[i]);
    if (items[i]->item->DataStyle == 2)
      expectReply(out, outline, *items[i], i + 1);
    else
      out.line(everyProgram, "Delay(CANDelay,mSec)");
  }
}

}  // namespace readback
