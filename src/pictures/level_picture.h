#pragma once

#include "pictures/example_picture.h"

namespace pictures {

/// Levels whose crossings are counted.
struct LevelShape {
  QList<double> levels;
  double hysteresis = 0.0;  // the signal must come back by more before it can cross again
  bool falling = false;     // crossings on the way down instead of up
};

/// What a level crossing histogram does: levels over an example signal, a mark at every crossing
/// that counts, the hysteresis as a band at each level.
class LevelPicture final : public ExamplePicture {
  Q_OBJECT
 public:
  explicit LevelPicture(QWidget* parent = nullptr);

  /// Levels that are no numbers are left out.
  void setShape(const LevelShape& shape);

  [[nodiscard]] QString helpAt(const QPointF& place) const override;

 protected:
  void draw(QPainter& painter) const override;
  [[nodiscard]] QString words() const override;

 private:
  struct Level {
    double value;
    QList<int> crossings;
  };
  [[nodiscard]] PlotFrame frame() const;
  [[nodiscard]] QString wordsOf(const Level& level) const;
  /// So many levels that their lines would cover the signal.
  [[nodiscard]] bool dense(const PlotFrame& frame) const;
  void drawLevels(QPainter& painter, const PlotFrame& frame) const;
  void drawCrossings(QPainter& painter, const PlotFrame& frame) const;
  void drawCounts(QPainter& painter, const PlotFrame& frame) const;

  LevelShape shape_;
  QList<Level> levels_;
};

}  // namespace pictures
