#include <gtest/gtest.h>

#include <QAccessible>
#include <QAccessibleInterface>

#include "pictures/frame_bits.h"
#include "pictures/picture_bench.h"
#include "pictures/slot_strip.h"

namespace pictures {
namespace {

QList<Slot> rack() {
  QList<Slot> all;
  for (int number = 1; number <= 15; ++number)
    all.append({number, number < 12 ? "7121/22" : "None", number < 12 ? number % 10 : -1, ""});
  return all;
}

QPoint middleOf(const ChoicePicture& picture, int part) {
  return picture.parts()[part].area.center().toPoint();
}

TEST(SlotStrip, EverySlotCanBeClickedInOneRowAndInMany) {
  SlotStrip strip;
  strip.setSlots(rack());
  QSignalSpy clicked(&strip, &SlotStrip::slotClicked);
  for (const int width : {2000, 700, 200, 40}) {
    strip.resize(width, strip.heightForWidth(width));
    for (int part = 0; part < 15; ++part) {
      ASSERT_TRUE(QRectF(strip.rect()).contains(strip.parts()[part].area)) << width;
      QTest::mouseClick(&strip, Qt::LeftButton, {}, middleOf(strip, part));
      ASSERT_EQ(clicked.size(), 1) << width << " " << part;
      EXPECT_EQ(clicked.takeFirst()[0].toInt(), part + 1);
    }
  }
  QTest::mouseClick(&strip, Qt::RightButton, {}, middleOf(strip, 1));
  QTest::mousePress(&strip, Qt::LeftButton, {}, middleOf(strip, 1));
  QTest::mouseRelease(&strip, Qt::LeftButton, {}, middleOf(strip, 2));
  EXPECT_TRUE(clicked.isEmpty());
}

TEST(SlotStrip, KeysWalkThroughRowsAndStopAtTheEnds) {
  SlotStrip strip;
  strip.setSlots(rack());
  strip.resize(500, strip.heightForWidth(500));
  QSignalSpy clicked(&strip, &SlotStrip::slotClicked);
  const auto after = [&](const QList<Qt::Key>& keys) {
    for (const Qt::Key key : keys) QTest::keyClick(&strip, key);
    return strip.currentPart();
  };
  EXPECT_EQ(after({Qt::Key_Left}), 0);
  EXPECT_EQ(after({Qt::Key_Right, Qt::Key_Right}), 2);
  const int below = after({Qt::Key_Down});
  EXPECT_GT(below, 2);
  EXPECT_EQ(strip.parts()[below].area.center().x(), strip.parts()[2].area.center().x());
  EXPECT_EQ(after({Qt::Key_Up, Qt::Key_Up}), 2);
  EXPECT_EQ(after({Qt::Key_End, Qt::Key_Right}), 14);
  after({Qt::Key_Space, Qt::Key_Home, Qt::Key_Return});
  ASSERT_EQ(clicked.size(), 2);
  EXPECT_EQ(clicked[0][0].toInt(), 15);
  EXPECT_EQ(clicked[1][0].toInt(), 1);
  after({Qt::Key_End});
  strip.setSlots(rack().mid(0, 3));
  EXPECT_EQ(strip.currentPart(), 2);
  strip.setSlots({});
  EXPECT_EQ(after({Qt::Key_Right, Qt::Key_Return}), -1);
}

TEST(SlotStrip, TellsItsSlots) {
  SlotStrip strip;
  strip.setSlots({{1, "7101", 0, "Power supply"}, {2, "None", -1, ""}, {3, "", -1, ""}});
  EXPECT_EQ(strip.accessibleDescription(), "Slot 1: 7101. Slot 2: None. Slot 3: empty.");
  strip.resize(strip.sizeHint());
  EXPECT_EQ(strip.helpAt(middleOf(strip, 0)), "Slot 1: 7101\nPower supply");
  EXPECT_EQ(strip.helpAt({-5, -5}), "");
  const QImage image = pictures_test::imageOf(strip, {strip.size()});
  const QPoint inFront = strip.parts()[0].area.topLeft().toPoint() + QPoint(6, 6);
  EXPECT_EQ(QColor(image.pixel(inFront)), SlotStrip::colourOf(0, strip.palette()));
}

TEST(ChoicePicture, IsAListForScreenReaders) {
  SlotStrip strip;
  strip.setSlots(rack());
  strip.resize(700, 200);
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&strip);
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->role(), QAccessible::List);
  ASSERT_EQ(list->childCount(), 15);
  EXPECT_EQ(list->text(QAccessible::Description), strip.accessibleDescription());
  QAccessibleInterface* entry = list->child(4);
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->text(QAccessible::Name), "Slot 5: 7121/22");
  EXPECT_EQ(list->child(4), entry);
  EXPECT_EQ(list->indexOfChild(entry), 4);
  EXPECT_EQ(list->childAt(entry->rect().center().x(), entry->rect().center().y()), entry);
  QSignalSpy clicked(&strip, &SlotStrip::slotClicked);
  entry->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  ASSERT_EQ(clicked.size(), 1);
  EXPECT_EQ(clicked[0][0].toInt(), 5);
  strip.setSlots(rack().mid(0, 2));
  EXPECT_FALSE(entry->isValid());
  entry->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(clicked.size(), 1);
  EXPECT_EQ(list->child(4), nullptr);
}

struct FrameBitsTest : testing::Test {
  FrameBitsTest() {
    frame.setItems({{"Speed", {0, 1, 2, 3, 4, 5, 6, 7}}, {"Gear", {7, 8}}, {"Lamp", {63, 64}}});
    frame.resize(frame.sizeHint());
  }
  /// Part in reading order: byte 0 from bit 7 down to bit 0, then byte 1.
  static int partOfBit(int bit) { return bit / 8 * 8 + 7 - bit % 8; }
  int clickBit(int bit) {
    QSignalSpy clicked(&frame, &FrameBits::itemClicked);
    QTest::mouseClick(&frame, Qt::LeftButton, {}, middleOf(frame, partOfBit(bit)));
    return clicked.isEmpty() ? -1 : clicked[0][0].toInt();
  }
  FrameBits frame;
};

TEST_F(FrameBitsTest, PutsBit7OfByte0AtTheTopLeft) {
  const auto middle = [&](int bit) { return QPointF(middleOf(frame, partOfBit(bit))); };
  EXPECT_EQ(frame.helpAt(middle(7)), "Byte 0 bit 7 (7): overlap of Speed and Gear");
  EXPECT_EQ(frame.helpAt(middle(0)), "Byte 0 bit 0 (0): Speed");
  EXPECT_EQ(frame.helpAt(middle(56)), "Byte 7 bit 0 (56): free");
  EXPECT_LT(middle(7).x(), middle(0).x());
  EXPECT_LT(middle(0).y(), middle(8).y());
  EXPECT_EQ(middle(15).x(), middle(7).x());
}

TEST_F(FrameBitsTest, ClickGivesTheItemAndOnAnOverlapTheNext) {
  EXPECT_EQ(clickBit(3), 0);
  EXPECT_EQ(clickBit(8), 1);
  EXPECT_EQ(clickBit(30), -1);
  EXPECT_EQ(clickBit(7), 0);
  frame.setSelected(0);
  EXPECT_EQ(clickBit(7), 1);
  frame.setSelected(1);
  EXPECT_EQ(clickBit(7), 0);
  QSignalSpy clicked(&frame, &FrameBits::itemClicked);
  QTest::mouseClick(&frame, Qt::LeftButton, {}, middleOf(frame, 64 + 2));  // in the legend
  ASSERT_EQ(clicked.size(), 1);
  EXPECT_EQ(clicked[0][0].toInt(), 2);
}

TEST_F(FrameBitsTest, FindsOverlapsAndTellsThem) {
  EXPECT_EQ(FrameBits::overlapsOf({{"A", {5, 5, 9, 64}}, {"B", {9, 64}}, {"C", {9, 2}}}),
            (QList<BitOverlap>{{9, {0, 1, 2}}}));
  frame.setSelected(2);
  EXPECT_EQ(frame.accessibleDescription(),
            "1 Speed: bits 0-7.\n2 Gear: bits 7-8.\n"
            "3 Lamp: bits 63-64; outside the frame: 64, selected.\n"
            "Byte 0 bit 7 (7): overlap of Speed and Gear.\n54 bits are free.");
  frame.setSelected(3);
  EXPECT_EQ(frame.selected(), -1);
}

TEST_F(FrameBitsTest, LegendKeepsTheSelectedItemInView) {
  QList<FrameItem> many;
  for (int i = 0; i < 60; ++i) many.append({QString("Item%1").arg(i), {i}});
  frame.setItems(many);
  for (const int selected : {0, 30, 59}) {
    frame.setSelected(selected);
    const QList<Part> parts = frame.parts();
    ASSERT_GT(parts.size(), 64 + 3);
    ASSERT_LT(parts.size(), 64 + 60);
    int shown = 0;
    for (int part = 64; part < parts.size(); ++part) {
      EXPECT_TRUE(QRectF(frame.rect()).contains(parts[part].area));
      if (!parts[part].help.endsWith("selected")) continue;
      ++shown;
      QSignalSpy clicked(&frame, &FrameBits::itemClicked);
      frame.choose(part);
      EXPECT_EQ(clicked.at(0)[0].toInt(), selected);
    }
    EXPECT_EQ(shown, 1) << selected;
  }
}

}  // namespace
}  // namespace pictures
