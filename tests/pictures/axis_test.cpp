#include "pictures/axis.h"

#include <gtest/gtest.h>

#include <QSet>
#include <cmath>
#include <limits>

namespace pictures {
namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double most = std::numeric_limits<double>::max();

TEST(Axis, StaysSoundBetweenAnyTwoNumbers) {
  const double ends[] = {none,  infinite, -infinite, most,  -most, 0.0, -0.0,    5e-324,
                         1e-12, 1.0,      1 + 1e-15, -20.0, 80.0,  1e9, 1e9 + 3, -1e-300};
  for (const double low : ends)
    for (const double high : ends)
      for (const Axis& axis : {axisBetween(low, high, 6), niceAxis(low, high, 6)}) {
        SCOPED_TRACE(testing::Message() << low << " to " << high);
        ASSERT_TRUE(std::isfinite(axis.low) && std::isfinite(axis.high));
        ASSERT_LT(axis.low, axis.high);
        const QList<double> ticks = axis.ticks();
        ASSERT_FALSE(ticks.isEmpty());
        ASSERT_LE(ticks.size(), 9);
        QSet<QString> texts;
        for (const double tick : ticks) {
          EXPECT_GE(axis.fraction(tick), -1e-5);
          EXPECT_LE(axis.fraction(tick), 1 + 1e-5);
          texts.insert(axis.text(tick));
        }
        EXPECT_EQ(texts.size(), ticks.size()) << "ticks that read alike";
        for (const double odd : ends) EXPECT_TRUE(std::abs(axis.fraction(odd)) <= 5);
      }
}

TEST(Axis, TicksAreRoundNumbersAndReadAsSuch) {
  const auto texts = [](const Axis& axis) {
    QStringList all;
    for (const double tick : axis.ticks()) all += axis.text(tick);
    return all.join(' ').toStdString();
  };
  EXPECT_EQ(texts(axisBetween(-20, 80, 6)), "-20 0 20 40 60 80");
  EXPECT_EQ(texts(axisBetween(3, 98, 6)), "20 40 60 80");
  EXPECT_EQ(texts(niceAxis(0.03, 0.97, 6)), "0.0 0.2 0.4 0.6 0.8 1.0");
  EXPECT_EQ(texts(niceAxis(-0.3, 0.3, 3)), "-0.4 -0.2 0.0 0.2 0.4");
  EXPECT_EQ(texts(axisBetween(80, -20, 2)), "0 50");
  EXPECT_EQ(texts(axisBetween(0, 4e7, 4)), "0 1e+07 2e+07 3e+07 4e+07");
}

}  // namespace
}  // namespace pictures
