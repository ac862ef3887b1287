#pragma once

#include "pictures/drawing.h"
#include "pictures/picture.h"

namespace pictures {

/// A share of a bar. Segments of the same name have the same colour in all bars.
struct Segment {
  QString name;
  double value = 0.0;
};

/// One row. What is above the limit shows as such, what is below as free.
struct Bar {
  QString name;
  QList<Segment> segments;
  double limit = 0.0;  // 0: none
};

/// Horizontal bars on a common scale, with limits and a legend: what uses up a budget, and how much
/// is left of it. Values that are negative or no numbers count as 0.
class StackedBars final : public Picture {
  Q_OBJECT
 public:
  explicit StackedBars(QWidget* parent = nullptr);

  void setBars(const QList<Bar>& bars, const QString& unit);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;

 protected:
  void draw(QPainter& painter) const override;
  [[nodiscard]] QString words() const override;
  [[nodiscard]] QList<Part> parts() const override;

 private:
  enum class Kind { name, segment, free, above, total };
  struct Piece {
    Kind kind;
    int bar;
    int segment;
    QRectF area;
  };
  struct Columns {
    double names, bars, totals, right;  // their left edges, and where they end
    double rowHeight;
  };
  [[nodiscard]] Columns columns() const;
  [[nodiscard]] QList<Piece> pieces() const;
  [[nodiscard]] QList<Piece> piecesOf(int bar, const Columns& columns) const;
  [[nodiscard]] QList<LegendEntry> legend() const;
  [[nodiscard]] QString totalText(const Bar& bar) const;
  [[nodiscard]] QString helpOf(const Piece& piece) const;
  [[nodiscard]] QString wordsOf(const Bar& bar) const;
  void drawPiece(QPainter& painter, const Piece& piece) const;
  void drawFree(QPainter& painter, const Piece& piece) const;
  [[nodiscard]] double limitAt(const Bar& bar, const Columns& columns) const;
  void drawLimit(QPainter& painter, int bar, const Columns& columns) const;

  QList<Bar> bars_;
  QString unit_;
  QStringList names_;  // of segments, in the order of their colours
  double scale_ = 1.0;
};

}  // namespace pictures
