#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "pictures/curve_plot.h"
#include "pictures/frame_bits.h"
#include "pictures/histogram_picture.h"
#include "pictures/level_picture.h"
#include "pictures/picture_bench.h"
#include "pictures/rainflow_picture.h"
#include "pictures/slot_strip.h"
#include "pictures/stacked_bars.h"

namespace pictures {
namespace {

using pictures_test::QtWarnings;

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double most = std::numeric_limits<double>::max();
const QString longName(300, 'W');
const QString oddName = "%1 <b>%2</b>\n\u00e4\u20ac";

/// Shows the picture in all sizes, palettes and scales, and asks for help all over it.
void tryOut(Picture& picture, const std::string& what) {
  SCOPED_TRACE(what);
  const QtWarnings warnings;
  EXPECT_FALSE(picture.accessibleDescription().isEmpty());
  EXPECT_TRUE(picture.sizeHint().isValid());
  for (const QSize size : {picture.sizeHint(), picture.minimumSizeHint(), QSize(800, 500)})
    for (const bool dark : {false, true})
      for (const int scale : {1, 2}) pictures_test::imageOf(picture, {size, dark, scale});
  for (const QSize size : {QSize(1, 1), QSize(900, 5), QSize(7, 500), QSize(300, 200)}) {
    pictures_test::imageOf(picture, {size});
    for (int x = -1; x <= size.width(); x += 37)
      for (int y = -1; y <= size.height(); y += 23) picture.helpAt({double(x), double(y)});
  }
  EXPECT_EQ(QtWarnings::texts.join('\n').toStdString(), "");
}

TEST(EveryPicture, StandsEmptyAndOddData) {
  SlotStrip strip;
  tryOut(strip, "no slots");
  strip.setSlots({{0, oddName, 1, oddName}, {-7, longName, 99, longName}, {3, "", -5, ""}});
  tryOut(strip, "odd slots");

  StackedBars bars;
  tryOut(bars, "no bars");
  bars.setBars({{"", {}, 0}, {"", {{"", 0}, {"zero", 0}}, 0}}, "");
  tryOut(bars, "a bar of nothing");
  bars.setBars({{longName, {{oddName, most}, {longName, most}, {"a", -4}}, 1},
                {oddName, {{"b", none}, {"c", infinite}, {"d", 1e-300}}, none},
                {"limit", {}, infinite},
                {"above", {{"a", 3}}, -1}},
               longName);
  tryOut(bars, "odd bars");

  CurvePlot plot;
  tryOut(plot, "no curves");
  plot.setTitles(longName, oddName);
  plot.setCurves({{"", {}}, {oddName, {{none, 1}, {2, infinite}}}, {longName, {{3, 3}}}});
  plot.setMarkers({{none, "nowhere"}, {most, longName}, {3, ""}, {3, oddName}});
  tryOut(plot, "odd curves");
  plot.setCurves({{"huge", {{-most, -most}, {0, 0}, {most, most}}}, {"flat", {{1, 2}, {1, 2}}}});
  plot.setYRange(none, 3);
  tryOut(plot, "huge curves");

  FrameBits frame;
  tryOut(frame, "no items");
  QList<FrameItem> items = {{"", {}}, {longName, {-1, 64, 1000000, 0, 0, 63}}};
  for (int i = 0; i < 70; ++i) items.append({oddName, {i, i + 1}});
  frame.setItems(items);
  frame.setSelected(71);
  tryOut(frame, "odd items");
}

TEST(EveryPicture, StandsOddLimits) {
  const std::pair<double, double> limits[] = {
      {0, 0},        {5, -5},        {none, 1},   {0, none},      {-infinite, infinite},
      {-most, most}, {1, 1 + 1e-15}, {0, 5e-324}, {1e300, 1e301}, {0, 100}};
  for (const auto& [low, high] : limits)
    for (const int count : {-5, 1, 1000}) {
      const std::string what =
          QString("%1 from %2 to %3").arg(count).arg(low).arg(high).toStdString();
      HistogramPicture histogram;
      histogram.setBins(count, low, high);
      tryOut(histogram, "histogram " + what);
      RainflowPicture rainflow;
      rainflow.setShape({count, count, low, high, low});
      tryOut(rainflow, "rainflow " + what);
      LevelPicture levels;
      levels.setShape({QList<double>(std::clamp(count, 0, 100), low) + QList<double>{high}, high});
      tryOut(levels, "levels " + what);
    }
}

TEST(EveryPicture, DrawsItsDataInLightAndDark) {
  SlotStrip strip;
  StackedBars bars;
  CurvePlot plot;
  FrameBits frame;
  HistogramPicture histogram;
  RainflowPicture rainflow;
  LevelPicture levels;
  const std::pair<Picture*, std::function<void()>> changes[] = {
      {&strip,
       [&] {
         strip.setSlots({{1, "7101", 0, ""}, {2, "None", -1, ""}});
       }},
      {&bars,
       [&] {
         bars.setBars({{"Scan", {{"Voltage", 5}}, 4}}, "uSec");
       }},
      {&plot,
       [&] {
         plot.setCurves({{"Gain", {{0, 1}, {5, 0}}}});
       }},
      {&frame,
       [&] {
         frame.setItems({{"Speed", {0, 1, 2}}, {"Gear", {2, 3}}});
       }},
      {&histogram, [&] { histogram.setBins(4, 0, 10); }},
      {&rainflow,
       [&] {
         rainflow.setShape({4, 4, 0, 10, 0});
       }},
      {&levels, [&] {
         levels.setShape({{1, 2, 3}, 0.2});
       }}};
  for (const auto& [picture, change] : changes) {
    SCOPED_TRACE(picture->metaObject()->className());
    const QSize size = picture->sizeHint().expandedTo({300, 100});
    const QString words = picture->accessibleDescription();
    const QImage before = pictures_test::imageOf(*picture, {size});
    change();
    const QImage light = pictures_test::imageOf(*picture, {size});
    EXPECT_TRUE(before != light);
    EXPECT_NE(picture->accessibleDescription(), words);
    EXPECT_TRUE(light != pictures_test::imageOf(*picture, {size, true}));
    EXPECT_GT(pictures_test::coloursIn(light).size(), 2);
  }
}

TEST(EveryPicture, ShowsNamesInTipsAsPlainText) {
  SlotStrip strip;
  strip.setSlots({{1, "<b>7101</b>", 0, "Power & more"}});
  strip.resize(200, 100);
  strip.show();
  const QPoint middle = strip.mapFromGlobal(strip.mapToGlobal(QPoint(20, 50)));
  QHelpEvent ask(QEvent::ToolTip, middle, strip.mapToGlobal(middle));
  QApplication::sendEvent(&strip, &ask);
  EXPECT_EQ(QToolTip::text().toStdString(),
            "<qt>Slot 1: &lt;b&gt;7101&lt;/b&gt;<br>Power &amp; more</qt>");
  QToolTip::hideText();
}

}  // namespace
}  // namespace pictures
