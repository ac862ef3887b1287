#pragma once

#include <map>
#include <utility>

#include "pictures/example_picture.h"

namespace pictures {

/// The matrix of a rainflow histogram.
struct RainflowShape {
  int means = 10;       // columns, from low to high
  int amplitudes = 10;  // rows, from 0 to the distance of low and high
  double low = 0.0;
  double high = 100.0;
  double least = 0.0;  // smaller swings are not counted
};

/// What a rainflow histogram does: an example signal, and beside it the matrix of mean and
/// amplitude with the cycles that fall into each cell.
class RainflowPicture final : public ExamplePicture {
  Q_OBJECT
 public:
  explicit RainflowPicture(QWidget* parent = nullptr);

  /// At most 1000 means and amplitudes are shown; fewer than one show none.
  void setShape(const RainflowShape& shape);

  [[nodiscard]] QString helpAt(const QPointF& place) const override;

 protected:
  void draw(QPainter& painter) const override;
  [[nodiscard]] QString words() const override;

 private:
  struct Cell {
    int mean, amplitude;
    bool operator<(const Cell& other) const {
      return std::pair(mean, amplitude) < std::pair(other.mean, other.amplitude);
    }
  };
  [[nodiscard]] bool usable() const;
  [[nodiscard]] PlotFrame signalFrame() const;
  [[nodiscard]] PlotFrame matrixFrame() const;
  [[nodiscard]] QString wordsOf(const Cell& cell) const;
  void drawCells(QPainter& painter, const PlotFrame& frame) const;
  void drawBorders(QPainter& painter, const PlotFrame& frame) const;

  RainflowShape shape_;
  std::map<Cell, double> counts_;  // of the cells that are not empty
  double counted_ = 0.0, passedOver_ = 0.0;
};

}  // namespace pictures
