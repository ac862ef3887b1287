#include <gtest/gtest.h>

#include <limits>

#include "pictures/colours.h"
#include "pictures/curve_plot.h"
#include "pictures/histogram_picture.h"
#include "pictures/level_picture.h"
#include "pictures/picture_bench.h"
#include "pictures/rainflow_picture.h"
#include "pictures/stacked_bars.h"

namespace pictures {
namespace {

/// All that the picture says along a line, each once and in order.
QStringList helpAlong(const Picture& picture, QPointF from, QPointF to) {
  QStringList helps;
  constexpr int steps = 2000;
  for (int i = 0; i <= steps; ++i) {
    const QString help = picture.helpAt(from + (to - from) * i / steps);
    if (!help.isEmpty() && !helps.contains(help)) helps += help;
  }
  return helps;
}

const QList<Bar> budget = {{"Scan", {{"Voltage", 1000}, {"CAN", 500}}, 2000},
                           {"Subscan", {{"CAN", 3000}}, 2500}};

TEST(StackedBars, TellsShareFreePartAndExcess) {
  StackedBars bars;
  bars.setBars(budget, "uSec");
  EXPECT_EQ(bars.accessibleDescription(),
            "Scan: 1,500 / 2,000 uSec, 500 free: Voltage 1,000, CAN 500.\n"
            "Subscan: 3,000 / 2,500 uSec, 500 above the limit: CAN 3,000.");
  bars.resize(bars.sizeHint());
  const double row = bars.height() / 3.0, end = bars.width() - 1.0;  // the legend is the third
  EXPECT_EQ(helpAlong(bars, {0, row * 0.4}, {end, row * 0.4}),
            (QStringList{"Scan: 1,500 / 2,000 uSec", "Voltage: 1,000 uSec, 50.0 % of the limit",
                         "CAN: 500 uSec, 25.0 % of the limit",
                         "Scan: 500 uSec free, 25.0 % of the limit"}));
  EXPECT_EQ(helpAlong(bars, {end * 0.3, row * 1.7}, {end, row * 1.7}),
            (QStringList{"CAN: 3,000 uSec, 120.0 % of the limit",
                         "Subscan: 500 uSec above the limit of 2,500 uSec",
                         "Subscan: 3,000 / 2,500 uSec"}));
}

TEST(StackedBars, DrawsLengthsInProportionAndTheExcessInAlarm) {
  StackedBars bars;
  bars.setBars(budget, "uSec");
  const QImage image = pictures_test::imageOf(bars, {bars.sizeHint()});
  const int scanRow = 5, subscanRow = static_cast<int>(bars.height() * 0.43);
  const auto pixels = [&](int y, const QColor& colour) {
    int count = 0;
    for (int x = 0; x < image.width(); ++x) count += QColor(image.pixel(x, y)) == colour;
    return count;
  };
  const QPalette palette = bars.palette();
  const int voltage = pixels(scanRow, categoryColour(0, palette));
  const int can = pixels(scanRow, categoryColour(1, palette));
  EXPECT_GT(can, 20);
  EXPECT_NEAR(voltage, 2 * can, 3);
  EXPECT_GT(pixels(subscanRow, alarmColour(palette)), 0);
  EXPECT_EQ(pixels(scanRow, alarmColour(palette)), 0);
}

TEST(CurvePlot, TellsExtremesAndValuesAtMarkers) {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  CurvePlot plot;
  plot.setTitles("Frequency (Hz)", "Gain");
  plot.setCurves({{"Order 3", {{0, 1}, {100, 0.5}, {150, none}, {200, 0}}}, {"None", {}}});
  plot.setMarkers({{50, "Cutoff"}, {130, "Gap"}});
  EXPECT_EQ(plot.accessibleDescription(),
            "Gain over Frequency (Hz).\nOrder 3: highest 1 at 0, lowest 0 at 200.\n"
            "None: no values.\nCutoff at 50: Order 3: 0.75.\nGap at 130.");
  plot.resize(600, 300);
  const QStringList helps = helpAlong(plot, {0, 150}, {599, 150});
  EXPECT_EQ(helps.filter("Cutoff: 50").isEmpty(), false);
  EXPECT_TRUE(helps.filter("Order 3: 0.9").size() > 2);
  EXPECT_EQ(plot.helpAt({300, 299}), "");
}

TEST(CurvePlot, DrawsACurveThatFallsFromLeftToRight) {
  CurvePlot plot;
  plot.setCurves({{"Falls", {{0, 10}, {10, 0}}}});
  const QImage image = pictures_test::imageOf(plot, {{400, 300}});
  const QRgb colour = categoryColour(0, plot.palette()).rgb();
  const auto drawnIn = [&](const QRect& place) {
    return pictures_test::coloursIn(image, place).contains(colour);
  };
  EXPECT_TRUE(drawnIn({0, 0, 200, 150}));
  EXPECT_TRUE(drawnIn({210, 150, 190, 150}));
  EXPECT_FALSE(drawnIn({0, 160, 190, 140}));
  EXPECT_FALSE(drawnIn({230, 0, 170, 120}));
}

TEST(HistogramPicture, ExplainsEveryBinFromLowToHigh) {
  HistogramPicture picture;
  picture.setBins(4, -20, 20);
  picture.resize(500, 300);
  const QStringList bins = helpAlong(picture, {400, 299}, {400, 0});
  ASSERT_EQ(bins.size(), 4);
  EXPECT_TRUE(bins[0].startsWith("Bin 1: -20 to -10, ")) << bins[0].toStdString();
  EXPECT_TRUE(bins[3].startsWith("Bin 4: 10 to 20, ")) << bins[3].toStdString();
  EXPECT_TRUE(picture.accessibleDescription().contains("4 bins from -20 to 20, each 10 wide."));
  EXPECT_TRUE(picture.accessibleDescription().contains(bins[2]));
}

TEST(RainflowPicture, ExplainsCellsAndCountsEveryCycleOnce) {
  RainflowPicture picture;
  picture.setShape({2, 3, 0, 60, 0});
  picture.resize(600, 300);
  QStringList cells;
  double cycles = 0;
  for (int x = 300; x < 600; x += 20) {
    for (const QString& help : helpAlong(picture, {double(x), 299}, {double(x), 0})) {
      if (cells.contains(help)) continue;
      cells += help;
      cycles += help.section(": ", 1).section(' ', 0, 0).toDouble();
    }
  }
  ASSERT_EQ(cells.size(), 6);
  EXPECT_TRUE(cells[0].startsWith("Mean 0 to 30, amplitude 0 to 20: "));
  EXPECT_TRUE(cells[5].startsWith("Mean 30 to 60, amplitude 40 to 60: "));
  const QString words = picture.accessibleDescription();
  EXPECT_TRUE(words.contains(QString(". %1 cycles counted, 0 smaller").arg(cycles)))
      << words.toStdString() << cycles;
  picture.setShape({2, 3, 0, 60, 61});
  EXPECT_TRUE(picture.accessibleDescription().contains(
      QString(". 0 cycles counted, %1 smaller").arg(cycles)));
}

TEST(LevelPicture, TellsCrossingsThatTheHysteresisLeaves) {
  LevelPicture picture;
  picture.setShape({{10, std::numeric_limits<double>::infinity(), 30, 50}, 0, false});
  const QString freely = picture.accessibleDescription();
  EXPECT_TRUE(
      freely.startsWith("Crossings of 3 levels by an example signal, counted on its way up"));
  EXPECT_FALSE(freely.contains(": 0 crossings"));
  picture.setShape({{10, 30, 50}, 1000, true});
  const QString held = picture.accessibleDescription();
  EXPECT_TRUE(held.contains("way down, hysteresis 1,000."));
  EXPECT_EQ(held.count(": 0 crossings"), 3);
  picture.resize(500, 300);
  EXPECT_EQ(
      helpAlong(picture, {200, 299}, {200, 0}),
      (QStringList{"Level 10: 0 crossings", "Level 30: 0 crossings", "Level 50: 0 crossings"}));
}

}  // namespace
}  // namespace pictures
