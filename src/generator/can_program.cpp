#include <algorithm>
#include <cmath>

#include "can/can_config.h"
#include "can/frame.h"
#include "generator/emitters.h"
#include "model/can_values.h"

namespace generator {
namespace {

using text::concat;

constexpr std::string_view interfaceArguments = ",CanAddress,CanQuanta,CanSeg1,CanSeg2,";
constexpr int canDelayMs = 10;
constexpr int firstTransmitType = 7;
constexpr int retrieveByteType = 1;

std::int32_t identifier(const model::CanSetup& can, std::string_view idText) {
  return can::parsedIdentifier(idText, largestIdentifier(can)).value;
}

std::string scaling(const SourceBlock& block) {
  if (block.multiplierArray) return concat(block.multipliers(), "(),", block.offsets(), "()");
  if (block.offsetArray) return concat(block.constant("MULT"), ",", block.offsets(), "()");
  return concat(block.constant("MULT"), ",", block.constant("OSET"));
}

/// CANBus(...) that takes the values of an item out of a received message.
std::string valueInstruction(const ProgramPlan& plan, const SourceBlock& block) {
  const model::CanItem& item = *block.item;
  return concat("CANBus(", block.values(), "()", interfaceArguments,
                identifier(plan.project.can, item.DataId), ",", item.ItemMessageType, ",",
                item.StartBit, ",", item.NumBits, ",", item.NumVals, ",", scaling(block), ")");
}

int frameByte(const model::CanItem& item, int byte) {
  return std::max(can::byteOf(item.TxDataFrame, byte), 0);
}

std::string matchTest(const model::CanItem& item) {
  std::string test;
  for (int byte = 1; byte <= can::frameBytes; ++byte) {
    const int pattern = can::byteOf(item.RxDataMatch, byte);
    const int mask = can::maskByte(item.RxDataMask, byte);
    if (pattern < 0 || mask == 0) continue;
    const std::string left =
        mask == 255 ? concat("ByteRx(", byte, ")") : concat("(ByteRx(", byte, ") And ", mask, ")");
    test += concat(test.empty() ? "" : " And ", left, " = ", pattern & mask);
  }
  return test;
}

bool transmits(const SourceBlock& block) { return block.item->DataStyle != 0; }

std::vector<const SourceBlock*> transmittingItems(const ProgramPlan& plan) {
  std::vector<const SourceBlock*> items;
  for (const SourceBlock& block : plan.of('C'))
    if (transmits(block)) items.push_back(&block);
  return items;
}

int receiveReads(const model::CanItem& item) {
  if (item.DataStyle == 1) return 0;
  const double reads = std::ceil(static_cast<double>(item.RxTimeout) / canDelayMs);
  return static_cast<int>(text::integerWithin(reads, 1, 1000000));
}

/// The transmit placeholders are shared: a byte is written when this frame or another one has it.
void emitFrame(ProgramText& out, const std::vector<const SourceBlock*>& items,
               const model::CanItem& item) {
  for (int byte = 1; byte <= can::frameBytes; ++byte) {
    const bool anySets = std::any_of(items.begin(), items.end(), [byte](const SourceBlock* other) {
      return frameByte(*other->item, byte) != 0;
    });
    if (anySets) out.line("      ByteTx(", byte, ") = ", frameByte(item, byte));
  }
}

void emitTransmission(ProgramText& out, const ProgramPlan& plan, const model::CanItem& item) {
  const bool ownType = item.DataStyle == 1 && item.ItemMessageType >= firstTransmitType;
  const int type = ownType ? item.ItemMessageType : firstTransmitType;
  out.line("      CANBus(ByteTx(1)", interfaceArguments,
           identifier(plan.project.can, item.TxDataId), ",", type, ",1,8,8,1.0,0.0)");
}

void emitReply(ProgramText& out, const ProgramPlan& plan, const SourceBlock& block,
               std::size_t number) {
  out.line("      For idx = 1 To NumRxReads(", number, ")");
  out.line("         CANBus(ByteRx(1)", interfaceArguments,
           identifier(plan.project.can, block.item->DataId), ",", retrieveByteType,
           ",1,8,8,1.0,0.0)");
  const std::string test = matchTest(*block.item);
  const std::string values = valueInstruction(plan, block);
  out.line("         ", test.empty() ? values : concat("If ", test, " Then ", values));
  out.append("         Delay(CANDelay,mSec)");
  out.append("      Next idx");
}

void emitSwitchScan(ProgramText& out, const model::CanSetup& can) {
  static constexpr std::string_view lines[2][2] = {
      {"CanSwitchTx=0000  'DisableTransmit, UseOldData",
       "CanSwitchTx=0100  'DisableTransmit, SetOldDataToNAN"},
      {"CanSwitchTx=0004  'EnableTransmit, UseOldData",
       "CanSwitchTx=0104  'EnableTransmit, SetOldDataToNAN"}};
  out.append(lines[can.CanEnableTransmit ? 1 : 0][can.CanNaNOldData ? 1 : 0]);
  out.append("Scan(1,Sec,0,10) 'Set Switches - NAN and  TxEnable");
  out.append("CANBus(CanSwitchTx,CanAddress,CanQuanta,CanSeg1,CanSeg2,1,32,0,0,1,1.0,0.0)");
  out.append("CANBus(CanSwitchRx,CanAddress,CanQuanta,CanSeg1,CanSeg2,1,33,0,0,1,1.0,0.0)");
  out.append("If CanSwitchRx = CanSwitchTx Then ExitScan");
  out.append("NextScan");
}

void emitSignatureScan(ProgramText& out) {
  out.append("Scan(1,Sec,0,10)");
  out.append("CANBus(CanIfInfo(),CanAddress,CanQuanta,CanSeg1,CanSeg2,1,30,0,0,0,1.0,0.0)");
  out.append("If CanIfInfo(1) > 0 Then ExitScan");
  out.append("NextScan");
  out.append("CanIfSig = CanIfInfo(1)");
  out.append("CanIfVer = CanIfInfo(2)");
  out.append("CallTable CANChk             'Persist CANIF Specific Settings");
}

void emitItemDeclarations(ProgramText& out, const SourceBlock& block) {
  const std::string comment = concat("'Block", block.number);
  const auto constant = [&](std::string_view suffix, const auto& value, std::string_view text) {
    out.code("Const ", block.constant(suffix), " = ", value).comment(comment, text);
  };
  out.subBanner(concat(" CAN Item ", block.number));
  constant("REP", block.reps, " repetitions");
  constant("MULT", block.multiplier, " default multiplier");
  constant("OSET", block.offset, " default offset");
  emitBlockArrays(out, block);
}

}  // namespace

void emitCanDeclarations(ProgramText& out, const ProgramPlan& plan) {
  if (!hasCanInterface(plan.project)) return;
  out.spacedSectionBanner(" CANBUS DECLARATIONS ");
  for (const std::string_view name :
       {"CanAddress", "CanQuanta", "CanSeg1", "CanSeg2", "CanSwitchTx", "CanSwitchRx",
        "CanIfInfo(8)", "CanIfSig", "CanIfVer"})
    out.line("Dim ", name);
  for (const SourceBlock& block : plan.of('C'))
    if (block.reps > 0) emitItemDeclarations(out, block);
}

void emitCanPreliminaries(ProgramText& out, const ProgramPlan& plan) {
  if (!hasCanInterface(plan.project)) return;
  const model::CanSetup& can = plan.project.can;
  out.hyphenBanner("Preliminary CANBUS Configuration Scan(s) ");
  out.line("CanAddress = ", can.CanAddress);
  out.line("CanQuanta = ", can.CanQuanta);
  out.line("CanSeg1 = ", can.CanSeg1);
  out.line("CanSeg2 = ", can.CanSeg2);
  emitSwitchScan(out, can);
  emitSignatureScan(out);
}

void emitCanReception(ProgramText& out, const ProgramPlan& plan) {
  const auto& items = plan.of('C');
  if (std::all_of(items.begin(), items.end(), transmits)) return;
  out.bodyBanner(" Canbus items ");
  for (const SourceBlock& block : items)
    if (!transmits(block)) out.line("      ", valueInstruction(plan, block));
}

void emitCanExchangeDeclarations(ProgramText& out, const ProgramPlan& plan) {
  const auto items = transmittingItems(plan);
  if (items.empty()) return;
  out.code("Dim idx").comment("'Index for looping through Rx Retries");
  out.code("Dim NumRxReads(", items.size(), ")")
      .comment("'Number of Rx Reads to perform for each CAN item");
  out.code("Public ByteTx(8),ByteRx(8)").comment("'Intermediate Transmit and Receive placeholders");
  out.code("Const CANDelay = ", canDelayMs).comment("'Delay in mSec for each CAN TxRx Loop : ");
  for (std::size_t i = 1; i <= items.size(); ++i) {
    const int reads = receiveReads(*items[i - 1]->item);
    out.code("NumRxReads(", i, ") = ", reads).comment("'Execute ", reads, " Rx reads for Tx #", i);
  }
}

bool exchangesCanFrames(const ProgramPlan& plan) { return !transmittingItems(plan).empty(); }

void emitCanExchange(ProgramText& out, const ProgramPlan& plan) {
  const auto items = transmittingItems(plan);
  for (std::size_t i = 1; i <= items.size(); ++i) {
    const SourceBlock& block = *items[i - 1];
    emitFrame(out, items, *block.item);
    emitTransmission(out, plan, *block.item);
    if (block.item->DataStyle == 2)
      emitReply(out, plan, block, i);
    else
      out.append("      Delay(CANDelay,mSec)");
  }
}

}  // namespace generator
