#pragma once

#include "pictures/choice_picture.h"

namespace pictures {

/// What lies in a CAN frame.
struct FrameItem {
  QString name;
  QList<int> bits;  // 0 to 63: bit 0 of byte 0 to bit 7 of byte 7
};

/// A bit that several items use.
struct BitOverlap {
  int bit = 0;
  QList<int> items;  // their indexes
  bool operator==(const BitOverlap&) const = default;
};

/// The 64 bits of a CAN frame, a row for each byte and bit 7 at the left, with the items in them.
/// Bits of several items are hatched. Items can be chosen in the frame and in the legend beside it.
class FrameBits final : public ChoicePicture {
  Q_OBJECT
 public:
  explicit FrameBits(QWidget* parent = nullptr);

  /// No item is selected afterwards. Bits outside 0 to 63 are not drawn but told.
  void setItems(const QList<FrameItem>& items);
  /// The item to be shown as selected; -1: none.
  void setSelected(int item);
  [[nodiscard]] int selected() const { return selected_; }
  /// Bits of more than one item, in ascending order.
  static QList<BitOverlap> overlapsOf(const QList<FrameItem>& items);

  [[nodiscard]] QList<Part> parts() const override;
  void choose(int part) override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// Of the items of one bit, each further click gives the next.
  void itemClicked(int item);

 protected:
  void draw(QPainter& painter) const override;
  [[nodiscard]] QString words() const override;

 private:
  [[nodiscard]] QRectF gridArea() const;
  [[nodiscard]] QRectF cellOf(int bit) const;
  [[nodiscard]] QRectF placeOf(int firstBit, int lastBit) const;
  struct Legend {
    int first, count;  // the items that have room
    double rowHeight;
  };
  [[nodiscard]] Legend legend() const;
  [[nodiscard]] QRectF legendRow(int row) const;
  [[nodiscard]] QString helpOfBit(int bit) const;
  [[nodiscard]] QString wordsOf(int item) const;
  void drawGrid(QPainter& painter) const;
  void drawItem(QPainter& painter, int item) const;
  void drawOverlap(QPainter& painter, int bit) const;
  void drawSelection(QPainter& painter) const;
  void drawLegend(QPainter& painter) const;
  void drawLegendRow(QPainter& painter, int item, const QRectF& row) const;
  void drawLegendText(QPainter& painter, int item, const QRectF& place) const;

  QList<FrameItem> items_;
  QList<QList<int>> itemsOfBit_;  // 64 of them
  int selected_ = -1;
};

}  // namespace pictures
