#include "can/can_config.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace can {
namespace {

TEST(CanIdentifier, IsNormalisedToTheRangeOfItsType) {
  struct Case {
    std::string_view typed, stored;
    bool extended = false, accepted = true, hexadecimal = false;
  };
  const Case cases[] = {
      {"4000", "2047"},
      {"-1", "0"},
      {" 012 ", "12"},
      {"&H7ff", "&H7FF", false, true, true},
      {"&hFFFF", "&H7FF", false, true, true},
      {"&H1fffffff", "&H1FFFFFFF", true, true, true},
      {"&HFFFFFFFF", "&H1FFFFFFF", true, true, true},  // 32 bits, never negative
      {"&H0cf00400", "&HCF00400", true, true, true},
      {"99999999999999999999", "536870911", true},
      {"&H123456789", "0", true, false},
      {"&H", "0", true, false},
      {"12x", "0", true, false},
      {"1.5", "0", true, false},
      {"", "0", true, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.typed);
    cCanConfig config;
    config.SetMode(c.extended ? 1 : 0);
    EXPECT_EQ(config.DataID(c.typed), c.accepted);
    EXPECT_EQ(config.DataID(), c.stored);
    EXPECT_EQ(config.DataIDIsHex(), c.hexadecimal);
    EXPECT_EQ(config.TxDataID(c.typed), c.accepted);
    EXPECT_EQ(config.TxDataID(), c.stored);
  }
}

TEST(CanIdentifier, IsClampedAgainWhenTheTypeChanges) {
  cCanConfig config;
  config.SetMode(1);
  config.DataID("&HCF00400");
  config.TxDataID("100000");
  EXPECT_FALSE(config.DataIDIsHex());
  config.SetMode(0);
  EXPECT_EQ(config.DataID(), "&H7FF");
  EXPECT_EQ(config.TxDataID(), "2047");
  EXPECT_EQ(config.PGNVal(), "");
}

TEST(J1939Fields, AreTheBitsOfTheIdentifier) {
  cCanConfig config;
  config.SetMode(1);
  config.DataID("&HCF00400");
  const std::uint8_t values[] = {3, 0, 0, 240, 4, 0};
  const std::string_view digits[] = {"011", "0", "0", "11110000", "00000100", "00000000"};
  const std::string_view starts[] = {"26", "25", "24", "16", "8", "0"};
  for (int f = 0; f < 6; ++f) {
    EXPECT_EQ(config.J1939_FieldVal(f), values[f]);
    EXPECT_EQ(config.J1939_FieldBinString(f), digits[f]);
    EXPECT_EQ(config.J1939_FieldStartBit(f), starts[f]);
  }
  EXPECT_EQ(config.PGNVal(), "61444");
  config.J1939_FieldVal(3, 239);  // now PDU specific is an address
  EXPECT_EQ(config.PGNVal(), "61184");
  config.J1939_FieldVal(1, 1);
  EXPECT_EQ(config.PGNVal(), "192256");
  config.J1939_FieldVal(0, 9);
  EXPECT_EQ(config.J1939_FieldVal(0), 7);
  EXPECT_EQ(config.DataID(), "&H1EEF0400");
  EXPECT_THROW(config.J1939_FieldVal(6, 1), std::out_of_range);
  EXPECT_THROW((void)config.J1939_FieldBinString(-1), std::out_of_range);
}

TEST(CanConfig, ClampsBitsAndClonesEverything) {
  cCanConfig config;
  config.NumBits(0);
  config.StartBit(100);
  EXPECT_EQ(config.NumBits(), 1);
  EXPECT_EQ(config.StartBit(), 64);
  config.SetMode(1);
  config.SetMsgMode(14);
  config.DataID("77");
  config.RxTimeout(250);
  const auto clone = config.Clone();
  EXPECT_EQ(*clone, config);
  clone->DataID("78");
  EXPECT_EQ(config.DataID(), "77");
  EXPECT_EQ(messageTypeText(config.MessageType()), "14 - Transmit data frame, receive reply");
  EXPECT_EQ(messageTypeText(15), "??");
}

TEST(CanModule, TimesEveryBaudRate) {
  cCanModule module;
  const double bauds[] = {1e6, 800e3, 500e3, 250e3, 125e3, 50e3, 20e3};
  ASSERT_EQ(module.NumBaudRates(), 7);
  for (std::int16_t code = 0; code < 7; ++code) {
    module.SetMode(code, 1);
    EXPECT_EQ(8e6 / (module.TimeQuanta() * (1 + module.TSeg1() + module.TSeg2())),
              bauds[static_cast<std::size_t>(code)]);
  }
  EXPECT_EQ(module.BaudRateText(6), "20 K");
  module.SetMode(7, 1);
  EXPECT_EQ(module.TimeQuanta(), 0);
  EXPECT_EQ(module.BaudRateText(-1), "");
}

}  // namespace
}  // namespace can
