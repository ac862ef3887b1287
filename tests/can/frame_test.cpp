#include "can/frame.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <set>

namespace can {
namespace {

using Data = std::vector<std::uint8_t>;

TEST(FrameTexts, ComeInTheFormsOfBusTools) {
  const Frame standard{0x123, false, {0x01, 0x02, 0xA0}};
  const Frame extended{0x18FEF100, true, {0x01, 0x02}};
  const Frame dataAlone{std::nullopt, false, {0x01, 0x02, 0xA0}};
  const std::pair<std::string_view, Frame> cases[] = {
      {"123#0102A0", standard},
      {"123#01.02.a0", standard},
      {"(1436509052.249713) can0 123#0102A0", standard},
      {"123##10102A0", standard},
      {"123 3 01 02 A0", standard},
      {"can0  123   [3]  01 02 A0", standard},
      {"0x123, 0x01, 0x02, 0xA0", standard},
      {"&H123 0102A0", standard},
      {"18FEF100#0102", extended},
      {"98FEF100 2 01 02", extended},  // with the mark of 29 bits
      {"18fef100x 0102", extended},
      {"12 1 A0", {0x12, false, {0xA0}}},
      {"00000123#A0", {0x123, true, {0xA0}}},
      {"01 02 A0", dataAlone},
      {" 0102A0\t", dataAlone},
      {"1 2 A0", dataAlone},
      {"12 13", {std::nullopt, false, {0x12, 0x13}}},
      {"5#", {0x5, false, {}}},
  };
  for (const auto& [text, frame] : cases) {
    const FrameReading reading = frameFrom(text);
    ASSERT_TRUE(reading.frame) << text << ": " << reading.complaint;
    EXPECT_EQ(*reading.frame, frame) << text;
  }
}

TEST(FrameTexts, SayWhatIsWrong) {
  const std::pair<std::string, std::string_view> cases[] = {
      {"", "there is no frame"},
      {"(1.5)", "there is no frame"},
      {"123", "'123' are no data bytes"},
      {"123#R", "a request for a frame has no data"},
      {"123#0", ""},
      {"xyz#01", "'xyz' is no identifier"},
      {"#01", "'' is no identifier"},
      {"3FFFFFFF#01", "'3FFFFFFF' has more than 29 bits"},
      {"123456789 01", "'123456789' is no identifier"},
      {"123 01 G2", "'G2' are no data bytes"},
      {"01 [2] 01 0x", "'0x' are no data bytes"},
      {"123#" + std::string(130, '0'), "a frame has at most 64 bytes"},
  };
  for (const auto& [text, words] : cases) {
    const FrameReading reading = frameFrom(text);
    EXPECT_EQ(reading.frame.has_value(), words.empty()) << text;
    EXPECT_TRUE(reading.complaint.find(words) != std::string::npos) << reading.complaint;
  }
}

TEST(Bits, OfBothOrdersBeginAByteTogether) {
  EXPECT_EQ(bitsOf({9, 4, 1, 2}, 0), (std::vector<int>{8, 9, 10, 11}));
  EXPECT_EQ(bitsOf({9, 4, 1, 1}, 0), (std::vector<int>{12, 13, 14, 15}));
  EXPECT_EQ(bitsOf({5, 8, 1, 1}, 0), (std::vector<int>{12, 13, 14, 15, 0, 1, 2, 3}));
  EXPECT_EQ(bitsOf({5, 8, 1, 2}, 0), (std::vector<int>{4, 5, 6, 7, 8, 9, 10, 11}));
  EXPECT_EQ(bitsOf({57, 8, 2, 2}, 1), std::vector<int>());  // beyond the frame
  for (const int type : {1, 2, 5, 6, 7}) {
    std::set<int> all;
    for (int v = 0; v < 4; ++v)
      for (const int bit : bitsOf({1, 16, 4, type}, v)) all.insert(bit);
    EXPECT_EQ(all.size(), 64U);
  }
}

/// The number as a chain of decimal steps over a string of binary digits: nothing in common with
/// the way it is computed for items.
double numberByDigits(const Data& data, const BitField& field, int value) {
  std::string digits;  // most significant first, as sent
  for (const std::uint8_t byte : data)
    for (int bit = 7; bit >= 0; --bit) digits += (byte & (1 << bit)) != 0 ? '1' : '0';
  const bool little = field.messageType % 2 == 0;
  if (little) {  // the same frame read from its end
    std::string turned;
    for (std::size_t byte = 0; byte < data.size(); ++byte) turned.insert(0, digits, byte * 8, 8);
    digits = turned;
  }
  const int first = field.startBit - 1 + value * field.numBits;
  const int from = little ? static_cast<int>(digits.size()) - first - field.numBits : first;
  const std::string own =
      digits.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(field.numBits));
  long double number = 0;
  for (const char digit : own) number = number * 2 + (digit - '0');
  const bool negative = (field.messageType == 3 || field.messageType == 4) && own[0] == '1';
  if (negative) number -= std::pow(2.0L, field.numBits);
  if (field.messageType < 5) return static_cast<double>(number);
  const auto bits = static_cast<std::uint32_t>(number);
  float single = 0;
  std::memcpy(&single, &bits, sizeof single);
  return single;
}

TEST(Numbers, AgreeWithAnIndependentComputation) {
  std::mt19937 random(23);
  const auto upTo = [&random](int most) {
    return std::uniform_int_distribution<int>(1, most)(random);
  };
  for (int i = 0; i < 20000; ++i) {
    Data data(8);
    for (std::uint8_t& byte : data) byte = static_cast<std::uint8_t>(random());
    BitField field;
    field.messageType = upTo(6);
    field.numBits = field.messageType >= 5 ? 32 : upTo(64);
    field.numVals = upTo(64 / field.numBits);
    field.startBit = upTo(65 - field.numBits * field.numVals);
    const int value = upTo(field.numVals) - 1;
    const auto number = numberIn(data, field, value);
    ASSERT_TRUE(number);
    const double expected = numberByDigits(data, field, value);
    const bool bothNan = std::isnan(*number) && std::isnan(expected);
    EXPECT_TRUE(*number == expected || bothNan)
        << "type " << field.messageType << " start " << field.startBit << " bits " << field.numBits
        << " value " << value << ": " << *number << " and " << expected;
  }
}

TEST(Numbers, NeedTheirBitsAndAType) {
  const Data data = {0xFF, 0x80};
  EXPECT_EQ(numberIn(data, {1, 8, 1, 3}, 0), -1);
  EXPECT_EQ(numberIn(data, {8, 2, 1, 1}, 0), 3);
  EXPECT_EQ(numberIn(data, {9, 16, 1, 1}, 0), std::nullopt);  // the third byte is missing
  EXPECT_EQ(numberIn(data, {1, 8, 1, 0}, 0), std::nullopt);
  EXPECT_EQ(numberIn(data, {1, 8, 1, 13}, 0), std::nullopt);
  EXPECT_EQ(numberIn(Data(8), {1, 16, 1, 5}, 0), std::nullopt);  // half a float
  EXPECT_EQ(numberIn(Data(8), {60, 16, 1, 2}, 0), std::nullopt);
}

TEST(Patterns, CompareWhatTheyNameUnderTheMask) {
  const Data data = {0x03, 0x41, 0x0C};
  EXPECT_TRUE(matchesPattern(data, "&HXXXXXXXXXXXXXXXX", "0"));
  EXPECT_TRUE(matchesPattern(data, "&HXX41XXXXXXXXXXXX", "0"));
  EXPECT_FALSE(matchesPattern(data, "&HXX42XXXXXXXXXXXX", "0"));
  EXPECT_TRUE(matchesPattern(data, "&HXX42XXXXXXXXXXXX", "&HFFF0FFFFFFFFFFFF"));
  EXPECT_FALSE(matchesPattern(data, "&HXXXXXX00XXXXXXXX", "0"));  // no such byte came
}

}  // namespace
}  // namespace can
