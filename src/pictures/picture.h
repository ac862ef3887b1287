#pragma once

#include <QList>
#include <QWidget>

namespace pictures {

/// A place of a picture and what it shows.
struct Part {
  QRectF area;
  QString help;
};

/// A picture of plain numbers. Its colours follow the palette, its parts explain themselves where
/// the mouse rests, and its accessible description tells in words what it shows.
class Picture : public QWidget {
  Q_OBJECT
 public:
  explicit Picture(QWidget* parent = nullptr);

  /// What stands at a place, as plain text; empty where there is nothing to explain.
  [[nodiscard]] virtual QString helpAt(const QPointF& place) const;

 protected:
  virtual void draw(QPainter& painter) const = 0;
  /// The picture in words.
  [[nodiscard]] virtual QString words() const = 0;
  /// In drawing order: the last one is on top.
  [[nodiscard]] virtual QList<Part> parts() const = 0;
  /// To be called after the data changed.
  virtual void renew();

  /// Index of the topmost part at a place; -1 where there is none.
  [[nodiscard]] int partAt(const QPointF& place) const;
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace pictures
