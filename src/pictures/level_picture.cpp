#include "pictures/level_picture.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <limits>

#include "pictures/colours.h"
#include "pictures/drawing.h"
#include "pictures/example_signal.h"
#include "pictures/numbers.h"

namespace pictures {
namespace {

/// An axis with some room beyond the outer levels, where the example signal ends.
Axis axisAround(const QList<double>& levels) {
  if (levels.isEmpty()) return axisBetween(-1, 1, 5);
  const auto [least, most] = std::minmax_element(levels.begin(), levels.end());
  const double length = *most - *least;
  const double margin = length > 0 ? length * 0.2 : std::max(std::abs(*most) * 0.5, 1.0);
  return axisBetween(*least - margin, *most + margin, 5);
}

}  // namespace

LevelPicture::LevelPicture(QWidget* parent) : ExamplePicture(75, 14, parent) { setShape({}); }

void LevelPicture::setShape(const LevelShape& shape) {
  shape_ = shape;
  shape_.levels.removeIf([](double level) { return !std::isfinite(level); });
  for (double& level : shape_.levels) level = bounded(level);
  shape_.hysteresis = std::max(bounded(shape.hysteresis), 0.0);
  const Axis axis = axisAround(shape_.levels);
  const double room = axis.high / 20 - axis.low / 20;
  signal_ = exampleSignal(samples, axis.low + room, axis.high - room);
  levels_.clear();
  for (const double level : shape_.levels)
    levels_.append({level, crossingsOf(signal_, level, shape_.hysteresis, shape_.falling)});
  renew();
}

PlotFrame LevelPicture::frame() const {
  const Axis around = axisAround(shape_.levels);
  PlotFrame frame = timeFrame(around.low, around.high);
  frame.x = axisBetween(0, samples - 1, 5);
  const double counts = QFontMetricsF(captionFont(font())).horizontalAdvance("Level 100: 000");
  frame.fitInto(QRectF(rect()).adjusted(0, 0, -counts, 0), font());
  return frame;
}

void LevelPicture::draw(QPainter& painter) const {
  const PlotFrame plot = frame();
  plot.draw(painter, palette());
  painter.save();
  painter.setClipRect(plot.area);
  drawLevels(painter, plot);
  drawSignal(painter, plot, signal_, QPen(palette().color(QPalette::Text), 1.5));
  drawCrossings(painter, plot);
  painter.restore();
  painter.setPen(palette().color(QPalette::Text));
  if (levels_.isEmpty()) drawNote(painter, plot.area, words());
  drawCounts(painter, plot);
}

bool LevelPicture::dense(const PlotFrame& plot) const {
  constexpr double leastApart = 8;
  return plot.area.height() < leastApart * static_cast<double>(levels_.size());
}

void LevelPicture::drawLevels(QPainter& painter, const PlotFrame& plot) const {
  QColor line = categoryColour(0, palette()), band = line;
  band.setAlphaF(dense(plot) ? 0.06F : 0.22F);
  line.setAlphaF(dense(plot) ? 0.4F : 1.0F);
  const double back = shape_.falling ? shape_.hysteresis : -shape_.hysteresis;
  for (const Level& level : levels_) {
    const double y = std::round(plot.at(0, level.value).y());
    const double end = plot.at(0, level.value + back).y();
    painter.fillRect(
        QRectF(plot.area.left(), std::min(y, end), plot.area.width(), std::abs(end - y)), band);
    painter.fillRect(QRectF(plot.area.left(), y, plot.area.width(), 1), line);
  }
}

void LevelPicture::drawCrossings(QPainter& painter, const PlotFrame& plot) const {
  const double half = dense(plot) ? 2.5 : 4.5, down = shape_.falling ? 1 : -1;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(dense(plot) ? QPen(Qt::NoPen) : QPen(palette().color(QPalette::Base), 1));
  painter.setBrush(categoryColour(1, palette()));
  for (const Level& level : levels_)
    for (const int sample : level.crossings) {  // an arrow head in the direction that counts
      const QPointF at = plot.at(sample, level.value);
      painter.drawPolygon(
          QPolygonF({at + QPointF(-half, -half * down), at + QPointF(half, -half * down),
                     at + QPointF(0, half * down)}));
    }
  painter.setRenderHint(QPainter::Antialiasing, false);
}

void LevelPicture::drawCounts(QPainter& painter, const PlotFrame& plot) const {
  painter.setFont(captionFont(font()));
  painter.setPen(softInk(palette()));
  const double line = QFontMetricsF(painter.font()).height();
  QList<double> taken;  // texts that would cover another are left out
  for (int i = 0; i < levels_.size(); ++i) {
    const double y = plot.at(0, levels_[i].value).y();
    const auto near = [&](double other) { return std::abs(other - y) < line; };
    if (std::any_of(taken.begin(), taken.end(), near)) continue;
    taken.append(y);
    const double left = plot.area.right() + 6;
    drawText(painter, QRectF(left, y - line / 2, width() - left, line),
             Qt::AlignVCenter | Qt::AlignLeft,
             QString("Level %1: %2").arg(i + 1).arg(levels_[i].crossings.size()));
  }
}

QString LevelPicture::wordsOf(const Level& level) const {
  return "Level " + numberText(level.value) + QString(": %1 crossings").arg(level.crossings.size());
}

QString LevelPicture::helpAt(const QPointF& place) const {
  const PlotFrame plot = frame();
  const Level* nearest = nullptr;
  double distance = std::numeric_limits<double>::infinity();
  for (const Level& level : levels_) {
    const double away = std::abs(plot.at(0, level.value).y() - place.y());
    if (away >= distance) continue;
    distance = away;
    nearest = &level;
  }
  constexpr double reach = 8;
  return distance <= reach && place.x() >= plot.area.left() ? wordsOf(*nearest) : QString();
}

QString LevelPicture::words() const {
  if (levels_.isEmpty()) return "No levels.";
  QStringList lines = {QString("Crossings of %1 levels by an example signal, counted on its way ")
                           .arg(levels_.size()) +
                       (shape_.falling ? "down" : "up") + ", hysteresis " +
                       numberText(shape_.hysteresis) + '.'};
  for (const Level& level : levels_) lines += wordsOf(level) + '.';
  return lines.join('\n');
}

}  // namespace pictures
