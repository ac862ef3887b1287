#include "channels/can_list.h"

#include <gtest/gtest.h>

#include <random>

#include "support/random_project.h"

namespace channels {
namespace {

using model::CanItem;
using model::CanSetup;

constexpr std::string_view header =
    "name\tid\ttype\tstart\tbits\tvalues\tmultiplier\toffset\tunits\tdescription\r\n";

CanSetup setup(std::int16_t idType) {
  CanSetup can;
  can.CanDataIDType = idType;
  return can;
}

TEST(CanLists, HaveALineAMessage) {
  CanItem speed;
  speed.Name = "Speed";
  speed.DataId = "&HCF00400";
  speed.ItemMessageType = 2;
  speed.StartBit = 25;
  speed.NumBits = 16;
  speed.Mult = 0.125;
  speed.Units = "rpm";
  speed.Description = "first\tand second\nline";
  CanItem ask;
  ask.DataStyle = 1;
  ask.ItemMessageType = 13;
  ask.TxDataId = "2015";
  EXPECT_EQ(canListText({speed, ask}),
            std::string(header) +
                "Speed\t&HCF00400\t2\t25\t16\t1\t0.125\t0\trpm\tfirst and second line\r\n"
                "\t2015\t13\t1\t1\t1\t1\t0\t\t\r\n");
}

TEST(CanLists, ComeBackAsTheyWere) {
  std::mt19937 random(17);
  std::size_t items = 0;
  for (int i = 0; i < 200; ++i) {
    const model::Project project = support::randomProject(random);
    CanSetup empty = setup(project.can.CanDataIDType);
    const CanList list = canItemsFrom(canListText(project.can.items), empty);
    ASSERT_TRUE(list.faults.empty()) << list.faults[0].text;
    EXPECT_EQ(canListText(list.items), canListText(project.can.items));
    for (const CanItem& item : list.items)
      EXPECT_EQ(item.values.size(), static_cast<std::size_t>(item.NumVals));
    items += list.items.size();
  }
  EXPECT_GT(items, 50U);
}

TEST(CanLists, NameBadLinesAndKeepTheRest) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"A\t\t1\t1\t8", "the id is missing"},
      {"A\t2048\t1\t1\t8", "identifier 2048 is larger than 2047; choose 29-bit"},
      {"A\tx12\t1\t1\t8", "'x12' is no identifier"},
      {"A\t12\t15\t1\t8", "message type 15 is not known"},
      {"A\t12\t1\t1\t8.5", "bits: '8.5' is no whole number"},
      {"A\t12\t1\t50\t8\t2\t1", "start bit 50, bits 8 and values 2 do not lie within bits 1 to 64"},
      {"A\t12\t1\t0\t8", "start bit 0"},
      {"A\t12\t5\t1\t16", "a 4-byte float has 32 bits, not 16"},
      {"A\t12\t1\t1\t8\t1\t1,5", "multiplier: '1,5' is no number"},
      {"A\t12\t1\t1\t8\t1\t1\t0\tm s", "units: 'm s' are no units"},
      {"A\t12\t1\t1\t8\t1\t1\t0\tm\ta [b]", "description: 'a [b]' has square brackets"},
      {"A 12 1 1 8", "the id is missing"},
      {"A\t12\t1\t1\t8\t1\t1\t0\tm\td\te", "11 cells where there are 10 columns"},
  };
  for (const auto& [line, words] : cases) {
    const std::string text = std::string(header) + std::string(line) + "\nGood\t12\t1\t1\t8\n";
    const CanList list = canItemsFrom(text, setup(0));
    ASSERT_EQ(list.faults.size(), 1U) << line;
    EXPECT_EQ(list.faults[0].line, 2U);
    EXPECT_TRUE(list.faults[0].text.find(words) != std::string::npos) << list.faults[0].text;
    ASSERT_EQ(list.items.size(), 1U) << line;
    EXPECT_EQ(list.items[0].Name, "Good");
  }
}

TEST(CanLists, TakeColumnsByName) {
  const CanList list = canItemsFrom(
      "\xEF\xBB\xBF"
      "bits\tTYPE\tColour\tid\tstart\r16\t2\tred\t&H1F\t9\r\r8\t7\tred\t5\t1\r",
      setup(1));
  ASSERT_EQ(list.faults.size(), 1U);
  EXPECT_EQ(list.faults[0].text.substr(0, 15), "column 'Colour'");
  ASSERT_EQ(list.items.size(), 2U);
  EXPECT_EQ(list.items[0].DataId, "&H1F");
  EXPECT_EQ(list.items[0].StartBit, 9);
  EXPECT_EQ(list.items[1].TxDataId, "5");
  EXPECT_EQ(list.items[1].DataStyle, 1);
  EXPECT_EQ(canItemsFrom("Oil\t5\t1\t1\t8", setup(0)).items.size(), 1U);  // no header
  EXPECT_TRUE(canItemsFrom("", setup(0)).items.empty());
}

TEST(CanLists, EndWhereTheProjectIsFull) {
  CanSetup can = setup(0);
  can.items.resize(model::maxCanItems - 1);
  const CanList list = canItemsFrom("A\t1\t1\t1\t8\nB\t1\t1\t1\t8\n", can);
  EXPECT_EQ(list.items.size(), 1U);
  ASSERT_EQ(list.faults.size(), 1U);
  EXPECT_EQ(list.faults[0].line, 2U);
}

}  // namespace
}  // namespace channels
