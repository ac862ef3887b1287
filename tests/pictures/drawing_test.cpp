#include "pictures/drawing.h"

#include <gtest/gtest.h>

#include "pictures/colours.h"
#include "pictures/numbers.h"
#include "pictures/picture_bench.h"

namespace pictures {
namespace {

TEST(Colours, StandOutFromTheWindowAndCarryTheirInk) {
  for (const bool dark : {false, true}) {
    const QPalette palette = pictures_test::palette(dark);
    ASSERT_EQ(isDark(palette), dark);
    QSet<QRgb> fills;
    for (int i = 0; i < categories; ++i) {
      SCOPED_TRACE(testing::Message() << "category " << i << (dark ? " dark" : " light"));
      const QColor fill = categoryColour(i, palette);
      fills.insert(fill.rgb());
      for (const auto role : {QPalette::Window, QPalette::Base})
        EXPECT_GE(contrast(fill, palette.color(role)), 3.0);
      EXPECT_GE(contrast(fill, inkOn(fill)), 4.5);
    }
    EXPECT_EQ(fills.size(), categories);
    for (const auto role : {QPalette::Window, QPalette::Base}) {
      EXPECT_GE(contrast(softInk(palette), palette.color(role)), 4.5);
      EXPECT_GE(contrast(alarmColour(palette), palette.color(role)), 4.5);
      EXPECT_GE(contrast(frameColour(palette), palette.color(role)), 3.0);
    }
    EXPECT_EQ(categoryColour(categories + 2, palette), categoryColour(2, palette));
  }
}

TEST(Drawing, ElidesInsteadOfLeavingItsPlace) {
  QImage image(200, 40, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  const QRect place(50, 5, 60, 30);
  drawText(painter, place, Qt::AlignVCenter | Qt::AlignLeft, "A very long name of a channel");
  painter.end();
  using pictures_test::coloursIn;
  EXPECT_GT(coloursIn(image, place).size(), 1);
  EXPECT_EQ(coloursIn(image, QRect(0, 0, 49, 40)).size(), 1);
  EXPECT_EQ(coloursIn(image, QRect(111, 0, 89, 40)).size(), 1);
}

TEST(Drawing, FramesAreSharpAtEveryScale) {
  for (const int scale : {1, 2, 3}) {
    QImage image(QSize(60, 40) * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawFrame(painter, QRectF(10, 10, 30, 20), Qt::black);
    painter.end();
    EXPECT_EQ(pictures_test::coloursIn(image), (QSet<QRgb>{0xff000000, 0xffffffff})) << scale;
  }
}

TEST(Drawing, LegendTakesFurtherRowsWhereItIsNarrow) {
  const QList<LegendEntry> entries = {{"Thermocouple", Qt::red}, {"Bridge", Qt::blue}};
  const QFont font;
  const double row = legendHeight(entries, font, 2000);
  EXPECT_GT(row, 0);
  EXPECT_EQ(legendHeight(entries, font, 40), 2 * row);
  EXPECT_EQ(legendHeight(entries, font, 0), 2 * row);
  EXPECT_EQ(legendHeight({}, font, 100), 0);
}

TEST(Numbers, ReadTheSameInEveryCountry) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::German));
  EXPECT_EQ(numberText(1234567), "1,234,567");
  EXPECT_EQ(numberText(-0.0), "0");
  EXPECT_EQ(numberText(12.5), "12.5");
  EXPECT_EQ(numberText(1e20), "1e+20");
  QLocale::setDefault(before);
}

}  // namespace
}  // namespace pictures
