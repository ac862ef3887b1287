#include "model/can_values.h"

#include <gtest/gtest.h>

#include "support/demo_project.h"
#include "text/strings.h"

namespace model {
namespace {

/// Wheel speeds (four values), a temperature in byte 2 and a reply.
Project vehicle() {
  Project project = support::projectWith(2, {});
  project.can.CanBusEnabled = true;
  project.can.CanDataIDType = 1;
  project.can.CanCount = 3;
  fitLists(project);
  auto& items = project.can.items;
  items[0].DataId = "&H18FEBF0B";
  items[0].ItemMessageType = 2;
  items[0].NumBits = 16;
  items[0].NumVals = 4;
  items[0].Mult = 0.5;
  items[0].Units = "km/h";
  items[1].DataId = "419348235";  // the same identifier
  items[1].ItemMessageType = 3;
  items[1].StartBit = 9;
  items[1].NumBits = 8;
  items[1].Offset = -40;
  items[2].DataId = "2024";
  items[2].DataStyle = 2;
  items[2].ItemMessageType = 1;
  items[2].StartBit = 25;
  items[2].NumBits = 8;
  items[2].RxDataMatch = "&HXX41XXXXXXXXXXXX";
  fitLists(project);
  items[0].values[1].AliasName = "Right";
  items[0].values[1].AliasExcept = true;
  items[0].values[1].AliasMult = 2;
  items[0].values[1].AliasUnits = "mph";
  return project;
}

std::vector<std::string> shown(const std::vector<DecodedValue>& values) {
  std::vector<std::string> lines;
  lines.reserve(values.size());
  for (const DecodedValue& each : values)
    lines.push_back(text::concat(each.name, " ", each.number ? text::shortest(*each.number) : "-",
                                 " ", each.units, each.remark));
  return lines;
}

std::vector<std::string> decodedText(std::string_view frame) {
  return shown(decoded(vehicle(), can::frameFrom(frame).frame.value()));
}

TEST(CanValues, AreDecodedFromAFrame) {
  using Lines = std::vector<std::string>;
  EXPECT_EQ(decodedText("18FEBF0B#0A 00 0300 FFFF 0001"),
            (Lines{"CBlk1(1) 5 km/h", "Right 6 mph", "CBlk1(3) 32767.5 km/h", "CBlk1(4) 128 km/h",
                   "CBlk2(1) -40 "}));
  EXPECT_EQ(decodedText("18FEBF0B 3 01 FE 00"),
            (Lines{"CBlk1(1) 32512.5 km/h", "Right - mphthe frame has only 3 bytes",
                   "CBlk1(3) - km/hthe frame has only 3 bytes",
                   "CBlk1(4) - km/hthe frame has only 3 bytes", "CBlk2(1) -42 "}));
  EXPECT_EQ(decodedText("000007E8#0341050708"), Lines{"CBlk3(1) 7 "});
  EXPECT_EQ(decodedText("000007E8#0342050708"),
            Lines{"CBlk3(1) - the frame is not the reply that the item waits for"});
  EXPECT_EQ(decodedText("7E8#0341050708"), Lines{});             // an 11-bit frame
  EXPECT_EQ(decodedText("01 41 02 03 04 05 06 07").size(), 6U);  // of any message
}

TEST(CanBits, ThatItemsShareAreTold) {
  Project project = vehicle();
  EXPECT_EQ(bitsOf(project.can.items[1]), (std::vector<int>{8, 9, 10, 11, 12, 13, 14, 15}));
  EXPECT_EQ(bitsOf(project.can.items[0]).size(), 64U);
  const std::vector<SharedBits> shared = sharedBits(project.can);
  ASSERT_EQ(shared.size(), 1U);
  EXPECT_EQ(shared[0], (SharedBits{0, 1, {8, 9, 10, 11, 12, 13, 14, 15}}));
  project.can.items[0].NumVals = 0;
  EXPECT_TRUE(sharedBits(project.can).empty());
  project.can.items[1] = project.can.items[2];  // two replies
  EXPECT_EQ(sharedBits(project.can).size(), 1U);
  project.can.items[1].RxDataMatch = "&HXX42XXXXXXXXXXXX";
  EXPECT_TRUE(sharedBits(project.can).empty());
}

CanItem itemOf(int style, int type) {
  CanItem item;
  item.DataStyle = static_cast<std::int16_t>(style);
  item.ItemMessageType = static_cast<std::int16_t>(type);
  return item;
}

TEST(CanItems, AreOfOneMessageHoweverItsIdentifierIsWritten) {
  CanSetup can;
  can.CanDataIDType = 1;
  CanItem a = itemOf(0, 1), b = itemOf(2, 1), sends = itemOf(1, 7);
  a.DataId = "&HCF00400";
  for (const char* text : {"&H0CF00400", "&hcf00400", "217056256"}) {
    b.DataId = sends.DataId = text;
    EXPECT_TRUE(areOfOneMessage(a, b, can)) << text;
    EXPECT_FALSE(areOfOneMessage(a, sends, can)) << text;
  }
  CanItem other = sends;
  EXPECT_TRUE(areOfOneMessage(sends, other, can));
  other.TxDataId = "5";
  EXPECT_FALSE(areOfOneMessage(sends, other, can));
}

TEST(CanItems, ReceiveOrSendByTypesOfTheirOwn) {
  const CanSetup can;
  for (int style = 0; style <= 2; ++style)
    for (int type = 0; type <= 14; ++type) {
      const bool fits = style == 1 ? type >= 7 : type >= 1 && type <= 6;
      CanItem item = itemOf(style, type);
      item.NumBits = 32;
      EXPECT_EQ(!complaintAboutItem(item, can), fits) << style << " " << type;
      item.ItemMessageType = typeOfDirection(item);
      const bool kept = type >= 1 && type <= (style == 1 ? 14 : 12);
      EXPECT_EQ(!complaintAboutItem(item, can), kept) << style << " " << type;
      if (kept) {
        EXPECT_EQ((item.ItemMessageType - type) % 6, 0) << style << " " << type;
      }
    }
}

TEST(CanItems, AreToldWhatAProgramWouldCut) {
  CanSetup can;
  CanItem item = itemOf(2, 1);
  EXPECT_FALSE(complaintAboutItem(item, can));
  for (const char* text : {"-5", "2048", "&H800", "&H", "speed"}) {
    for (std::string CanItem::*place : {&CanItem::DataId, &CanItem::TxDataId}) {
      CanItem bad = item;
      bad.*place = text;
      EXPECT_TRUE(complaintAboutItem(bad, can)) << text;
    }
  }
  for (const char* frame : {"&H02ZZ000000000000", "&H02", ""}) {
    item.TxDataFrame = frame;
    EXPECT_TRUE(complaintAboutItem(item, can)) << frame;
  }
  item.DataStyle = 0;  // sends nothing
  EXPECT_FALSE(complaintAboutItem(item, can));
}

}  // namespace
}  // namespace model
