#include "pictures/example_signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>

namespace pictures {
namespace {

TEST(ExampleSignal, ReachesBothEndsAndNeverLeavesThem) {
  for (const auto& [low, high] :
       {std::pair(-20.0, 80.0), std::pair(5.0, 5.0), std::pair(-1.7e308, 1.7e308)}) {
    const QList<double> signal = exampleSignal(400, low, high);
    const auto [least, most] = std::minmax_element(signal.begin(), signal.end());
    EXPECT_EQ(*least, low);
    EXPECT_EQ(*most, high);
    EXPECT_EQ(signal, exampleSignal(400, low, high));
  }
  EXPECT_EQ(exampleSignal(-3, 0, 1).size(), 2);
}

TEST(BinCounts, PutEverySampleInItsBin) {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(binCounts({0, 9.99, 10, 30, 40, 40.01, -1, none}, 4, 0, 40), (QList<int>{2, 1, 0, 2}));
  for (const int bins : {1, 7, 1000}) {
    const QList<int> counts = binCounts(exampleSignal(400, -3, 9), bins, -3, 9);
    EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), 0), 400);
  }
  EXPECT_EQ(binCounts({1, 2}, 0, 0, 5), QList<int>());
  EXPECT_EQ(binCounts({1, 2}, 2, 5, 5), (QList<int>{0, 0}));
  EXPECT_EQ(binCounts({1, 2}, 2, none, 5), (QList<int>{0, 0}));
}

TEST(Rainflow, CountsTheWellKnownSequence) {
  // A history that textbooks count by hand: range to number of cycles.
  const QList<double> history = {-2, 1, -3, 5, -1, 3, -4, 4, -2};
  const std::map<double, double> expected = {{3, 0.5}, {4, 1.5}, {6, 0.5}, {8, 1}, {9, 0.5}};
  std::map<double, double> counted;
  for (const Cycle& cycle : rainflowCycles(history)) counted[cycle.amplitude] += cycle.count;
  EXPECT_EQ(counted, expected);
}

TEST(Rainflow, TakesPlateausAndSlopesAsOneSwing) {
  EXPECT_TRUE(rainflowCycles({}).isEmpty());
  EXPECT_TRUE(rainflowCycles({3}).isEmpty());
  EXPECT_TRUE(rainflowCycles({3, 3, 3}).isEmpty());
  const QList<Cycle> cycles = rainflowCycles({1, 1, 2, 2, 5, 7, 7});
  ASSERT_EQ(cycles.size(), 1);
  EXPECT_EQ(cycles[0].amplitude, 6);
  EXPECT_EQ(cycles[0].mean, 4);
  EXPECT_EQ(cycles[0].count, 0.5);
}

TEST(Crossings, CountAgainOnlyBehindTheHysteresis) {
  const QList<double> signal = {0, 11, 9, 11, 4, 10, 12};
  EXPECT_EQ(crossingsOf(signal, 10, 0, false), (QList<int>{1, 3, 5}));
  EXPECT_EQ(crossingsOf(signal, 10, 2, false), (QList<int>{1, 5}));
  EXPECT_EQ(crossingsOf(signal, 10, 20, false), QList<int>());
  EXPECT_EQ(crossingsOf(signal, 10, 0, true), (QList<int>{2, 4}));
  EXPECT_EQ(crossingsOf(signal, 10, -5, false), (QList<int>{1, 3, 5}));
  // A signal that starts above a level has not crossed it.
  EXPECT_EQ(crossingsOf({20, 15, 30}, 10, 0, false), QList<int>());
}

}  // namespace
}  // namespace pictures
