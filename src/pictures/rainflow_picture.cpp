#include "pictures/rainflow_picture.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "pictures/colours.h"
#include "pictures/drawing.h"
#include "pictures/example_signal.h"
#include "pictures/numbers.h"

namespace pictures {
namespace {

constexpr int mostCells = 1000;

int cellOf(double share, int cells) {
  return std::clamp(static_cast<int>(share * cells), 0, cells - 1);
}

QString edges(double low, double high, int cell, int cells) {
  const auto edge = [&](int i) {
    return numberText(std::lerp(low, high, i / static_cast<double>(cells)));
  };
  return edge(cell) + " to " + edge(cell + 1);
}

}  // namespace

RainflowPicture::RainflowPicture(QWidget* parent) : ExamplePicture(80, 15, parent) { setShape({}); }

bool RainflowPicture::usable() const {
  return shape_.means > 0 && shape_.amplitudes > 0 && shape_.high > shape_.low;
}

void RainflowPicture::setShape(const RainflowShape& shape) {
  shape_ = {std::clamp(shape.means, 0, mostCells), std::clamp(shape.amplitudes, 0, mostCells),
            bounded(shape.low), bounded(shape.high), bounded(shape.least)};
  signal_ = exampleSignal(samples, shape_.low, shape_.high);
  counts_.clear();
  counted_ = passedOver_ = 0.0;
  for (const Cycle& cycle : usable() ? rainflowCycles(signal_) : QList<Cycle>()) {
    const bool tooSmall = cycle.amplitude < shape_.least;
    (tooSmall ? passedOver_ : counted_) += cycle.count;
    if (tooSmall) continue;
    const double length = shape_.high - shape_.low;
    const Cell cell{cellOf((cycle.mean - shape_.low) / length, shape_.means),
                    cellOf(cycle.amplitude / length, shape_.amplitudes)};
    counts_[cell] += cycle.count;
  }
  renew();
}

PlotFrame RainflowPicture::signalFrame() const {
  PlotFrame frame = timeFrame(shape_.low, shape_.high);
  frame.fitInto(QRectF(0, 0, width() * 0.42, height()), font());
  return frame;
}

PlotFrame RainflowPicture::matrixFrame() const {
  const QFontMetricsF metrics(captionFont(font()));
  PlotFrame frame;
  frame.grid = false;
  frame.xTitle = "Mean";
  frame.yTitle = "Amplitude";
  frame.x = axisBetween(shape_.low, shape_.high,
                        ticksIn(width() * 0.45, metrics.horizontalAdvance("000000")));
  frame.y = axisBetween(0, usable() ? shape_.high - shape_.low : 0, ticksInHeight());
  frame.fitInto(QRectF(width() * 0.44, 0, width() * 0.56, height()), font());
  return frame;
}

void RainflowPicture::draw(QPainter& painter) const {
  const PlotFrame left = signalFrame(), right = matrixFrame();
  left.draw(painter, palette());
  right.draw(painter, palette());
  painter.setPen(palette().color(QPalette::Text));
  if (!usable()) return drawNote(painter, right.area, words());
  drawSignal(painter, left, signal_, QPen(palette().color(QPalette::Text), 1.5));
  drawCells(painter, right);
  drawBorders(painter, right);
}

void RainflowPicture::drawCells(QPainter& painter, const PlotFrame& frame) const {
  double most = 0.5;
  for (const auto& [cell, count] : counts_) most = std::max(most, count);
  const double wide = frame.area.width() / shape_.means;
  const double high = frame.area.height() / shape_.amplitudes;
  painter.setFont(captionFont(font()));
  for (const auto& [cell, count] : counts_) {
    // Cells smaller than a pixel still show.
    const QRectF place(frame.area.left() + cell.mean * wide,
                       frame.area.bottom() - (cell.amplitude + 1) * high, std::max(wide, 3.0),
                       std::max(high, 3.0));
    const QColor fill = mixed(palette().color(QPalette::Base), categoryColour(0, palette()),
                              0.35 + 0.65 * count / most);
    painter.fillRect(place, fill);
    drawTextOn(painter, place, fill, numberText(count));
  }
}

void RainflowPicture::drawBorders(QPainter& painter, const PlotFrame& frame) const {
  constexpr double leastApart = 4;
  const QRectF area = frame.area;
  const double wide = area.width() / shape_.means, high = area.height() / shape_.amplitudes;
  const QColor colour = mixed(gridColour(palette()), frameColour(palette()), 0.25);
  for (int i = 1; wide >= leastApart && i < shape_.means; ++i)
    painter.fillRect(QRectF(std::round(area.left() + i * wide), area.top(), 1, area.height()),
                     colour);
  for (int i = 1; high >= leastApart && i < shape_.amplitudes; ++i)
    painter.fillRect(QRectF(area.left(), std::round(area.bottom() - i * high), area.width(), 1),
                     colour);
  drawFrame(painter, area, frameColour(palette()));
}

QString RainflowPicture::wordsOf(const Cell& cell) const {
  const auto found = counts_.find(cell);
  return "Mean " + edges(shape_.low, shape_.high, cell.mean, shape_.means) + ", amplitude " +
         edges(0, shape_.high - shape_.low, cell.amplitude, shape_.amplitudes) + ": " +
         numberText(found == counts_.end() ? 0.0 : found->second) + " cycles";
}

QString RainflowPicture::helpAt(const QPointF& place) const {
  const QRectF area = matrixFrame().area;
  if (!usable() || !area.contains(place)) return {};
  return wordsOf({cellOf((place.x() - area.left()) / area.width(), shape_.means),
                  cellOf((area.bottom() - place.y()) / area.height(), shape_.amplitudes)});
}

QString RainflowPicture::words() const {
  if (!usable())
    return "No matrix: there must be at least one mean and one amplitude, and the high limit above "
           "the low.";
  return QString("Rainflow histogram of an example signal: %1 means by %2 amplitudes, %3 cells, ")
             .arg(shape_.means)
             .arg(shape_.amplitudes)
             .arg(shape_.means * shape_.amplitudes) +
         "values from " + numberText(shape_.low) + " to " + numberText(shape_.high) + ". " +
         numberText(counted_) + " cycles counted, " + numberText(passedOver_) +
         " smaller than the least amplitude of " + numberText(shape_.least) + " passed over.";
}

}  // namespace pictures
