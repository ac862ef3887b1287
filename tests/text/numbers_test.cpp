#include "text/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace text {
namespace {

TEST(Numbers, ReadsTheNumberAtTheStartOfAText) {
  const std::pair<std::string_view, double> cases[] = {
      {" 12", 12},
      {"\t-3.5 mSecs", -3.5},
      {"+7", 7},
      {".5", 0.5},
      {"5.", 5},
      {"1,5", 1},
      {"1e3x", 1000},
      {"2D-2", 0.02},
      {"3E", 3},
      {"4e+", 4},
      {"", 0},
      {"soon", 0},
      {"-", 0},
      {".", 0},
      {"1e-999", 0},
      {"1 2", 1},
      {"1e999", 1.7976931348623157e308},
      {"-1e999", -1.7976931348623157e308},
  };
  for (const auto& [text, value] : cases) {
    SCOPED_TRACE(text);
    EXPECT_EQ(readNumber(text), value);
  }
  const std::string zeros(400, '0');
  EXPECT_EQ(readNumber("0." + zeros + "1"), 0);
  EXPECT_EQ(readNumber("-1" + zeros), -std::numeric_limits<double>::max());
  EXPECT_EQ(readNumber("1" + zeros + "e-399"), 10);
  EXPECT_TRUE(isNumber(" -1.5e2 "));
  for (const std::string_view text : {"1.5x", "", "--1", "1 2"}) EXPECT_FALSE(isNumber(text));
}

TEST(Numbers, RoundsHalvesToEvenAndSaturates) {
  EXPECT_EQ(halfEven(2.5), 2);
  EXPECT_EQ(halfEven(3.5), 4);
  EXPECT_EQ(halfEven(-0.5), 0);
  EXPECT_EQ(halfEven(-1.5), -2);
  EXPECT_EQ(integerWithin(1e300, -5, 32767), 32767);
  EXPECT_EQ(integerWithin(-1e300, -5, 32767), -5);
  EXPECT_EQ(integerWithin(std::nan(""), -5, 9), -5);
  constexpr auto most = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(integerWithin(1e19, 0, most), most);
}

TEST(Numbers, WritesTheShortestFormAndTheGeneralForm) {
  const std::pair<double, std::string_view> cases[] = {
      {0, "0"},
      {-0.0, "0"},
      {0.5, "0.5"},
      {-11.5, "-11.5"},
      {1e14, "100000000000000"},
      {1e15, "1E15"},
      {1.5e20, "1.5E20"},
      {0.0001, "0.0001"},
      {0.00001, "1E-5"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3, "0.333333333333333"},
      {273.16, "273.16"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(shortest(value), text);
  EXPECT_EQ(shortestSingle(273.16F), "273.16");
  EXPECT_EQ(shortestSingle(0.1F), "0.1");
  EXPECT_EQ(shortestSingle(1234567.8), "1234568");
  std::string general;
  appendGeneral(general, 2.5);
  appendGeneral(general, -2.5);
  appendGeneral(general, std::int64_t{0});
  EXPECT_EQ(general, " 2.5-2.5 0");
}

TEST(Numbers, ReadsBackWhatItWrites) {
  std::mt19937_64 random(7);
  std::uniform_int_distribution<std::int64_t> digits(-999'999'999'999'999, 999'999'999'999'999);
  std::uniform_int_distribution<int> power(-30, 30);
  for (int i = 0; i < 20'000; ++i) {
    const std::string written =
        std::to_string(digits(random)) + "e" + std::to_string(power(random));
    const double value = readNumber(written);
    EXPECT_EQ(readNumber(shortest(value)), value) << written;
    const auto single = static_cast<float>(value);
    EXPECT_LE(std::abs(readNumber(shortestSingle(single)) - single), 1e-6 * std::abs(single));
  }
}

TEST(Numbers, FollowsDisplayPatterns) {
  const std::tuple<double, std::string_view, std::string_view> cases[] = {
      {0, "#0.0##", "0.0"},
      {1.23456, "#0.0##", "1.235"},
      {2, "#0.0###0", "2.00000"},
      {0.5, "0.0####", "0.5"},
      {1.005, "0.00", "1.01"},
      {2.675, "0.00", "2.68"},
      {-0.004, "0.00", "0.00"},
      {-1.5, "0.00", "-1.50"},
      {999.9999, "#0.0##", "1000.0"},
      {1234567, "#,##0", "1,234,567"},
      {999, "#,##0", "999"},
      {1234.5678, "#,##0.000", "1,234.568"},
      {5000, "###0", "5000"},
      {0.000012345678, "0.####0e-##", "1.23457e-5"},
      {9999999, "0.####0e-##", "1.00000e7"},
      {0, "0.####0e-##", "0.00000e0"},
  };
  for (const auto& [value, pattern, text] : cases) {
    SCOPED_TRACE(pattern);
    EXPECT_EQ(formatted(value, pattern), text);
  }
}

}  // namespace
}  // namespace text
