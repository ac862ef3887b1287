#include "pictures/plot_frame.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "pictures/colours.h"
#include "pictures/drawing.h"

namespace pictures {
namespace {

constexpr double tickLength = 4, space = 3;

double widestTick(const Axis& axis, const QFontMetricsF& metrics) {
  double widest = 0;
  for (const double tick : axis.ticks())
    widest = std::max(widest, metrics.horizontalAdvance(axis.text(tick)));
  return widest;
}

}  // namespace

QPointF PlotFrame::at(double xValue, double yValue) const {
  return {area.left() + x.fraction(xValue) * area.width(),
          area.bottom() - y.fraction(yValue) * area.height()};
}

double PlotFrame::xAt(double pixel) const {
  return x.low + (pixel - area.left()) / std::max(area.width(), 1.0) * (x.high - x.low);
}

void PlotFrame::fitInto(const QRectF& whole, const QFont& font) {
  const QFontMetricsF metrics(captionFont(font));
  const double line = metrics.height();
  const double left =
      widestTick(y, metrics) + tickLength + 2 * space + (yTitle.isEmpty() ? 0 : line + space);
  const double bottom = (xTicks ? line + tickLength : 0) + (xTitle.isEmpty() ? 0 : line) + space;
  // Half a text stands beyond the last tick of both axes.
  const double right = xTicks ? metrics.horizontalAdvance(x.text(x.high)) / 2 + space : space;
  area = whole.adjusted(left, line / 2 + space, -right, -bottom).toAlignedRect();
  if (area.width() < 1) area.setWidth(1);
  if (area.height() < 1) area.setHeight(1);
}

void PlotFrame::draw(QPainter& painter, const QPalette& palette) const {
  painter.save();
  painter.setFont(captionFont(painter.font()));
  painter.fillRect(area, palette.color(QPalette::Base));
  drawXAxis(painter, palette);
  drawYAxis(painter, palette);
  drawFrame(painter, area, frameColour(palette));
  painter.restore();
}

void PlotFrame::drawXAxis(QPainter& painter, const QPalette& palette) const {
  const QFontMetricsF metrics(painter.font());
  const double line = metrics.height();
  double free = -line;  // where the text of the tick before ends
  for (const double tick : xTicks ? x.ticks() : QList<double>()) {
    const double pixel = std::round(at(tick, y.low).x());
    if (grid) painter.fillRect(QRectF(pixel, area.top(), 1, area.height()), gridColour(palette));
    painter.fillRect(QRectF(pixel, area.bottom(), 1, tickLength), frameColour(palette));
    const QString text = x.text(tick);
    const double wide = metrics.horizontalAdvance(text) + 2;
    if (pixel - wide / 2 < free) continue;
    free = pixel + wide / 2 + space;
    painter.setPen(softInk(palette));
    drawText(painter, QRectF(pixel - wide / 2, area.bottom() + tickLength, wide, line),
             Qt::AlignCenter, text);
  }
  painter.setPen(softInk(palette));
  const double top = area.bottom() + (xTicks ? tickLength + line : 1);
  drawText(painter, QRectF(area.left(), top, area.width(), line), Qt::AlignCenter, xTitle);
}

void PlotFrame::drawYAxis(QPainter& painter, const QPalette& palette) const {
  const QFontMetricsF metrics(painter.font());
  const double line = metrics.height(), wide = widestTick(y, metrics) + 1;
  const double right = area.left() - tickLength - space;
  for (const double tick : y.ticks()) {
    const double pixel = std::round(at(x.low, tick).y());
    if (grid) painter.fillRect(QRectF(area.left(), pixel, area.width(), 1), gridColour(palette));
    painter.fillRect(QRectF(area.left() - tickLength, pixel, tickLength, 1), frameColour(palette));
    painter.setPen(softInk(palette));
    drawText(painter, QRectF(right - wide, pixel - line / 2, wide, line),
             Qt::AlignVCenter | Qt::AlignRight, y.text(tick));
  }
  if (yTitle.isEmpty()) return;
  painter.save();
  painter.setPen(softInk(palette));
  painter.translate(right - wide - space - line, area.bottom());
  painter.rotate(-90);
  drawText(painter, QRectF(0, 0, area.height(), line), Qt::AlignCenter, yTitle);
  painter.restore();
}

void drawCurve(QPainter& painter, const PlotFrame& frame, const QList<QPointF>& values,
               const QPen& pen) {
  painter.save();
  painter.setClipRect(frame.area, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(pen);
  QPolygonF line;
  const auto finish = [&] {
    if (line.size() == 1) painter.drawEllipse(line.first(), 2.0, 2.0);
    if (line.size() > 1) painter.drawPolyline(line);
    line.clear();
  };
  for (const QPointF& value : values) {
    const bool number = std::isfinite(value.x()) && std::isfinite(value.y());
    if (number) line.append(frame.at(value.x(), value.y()));
    if (!number) finish();
  }
  finish();
  painter.restore();
}

void drawSignal(QPainter& painter, const PlotFrame& frame, const QList<double>& signal,
                const QPen& pen) {
  QList<QPointF> values;
  const double last = static_cast<double>(std::max<qsizetype>(signal.size() - 1, 1));
  for (qsizetype i = 0; i < signal.size(); ++i)
    values.append(
        {frame.x.low + (frame.x.high - frame.x.low) * static_cast<double>(i) / last, signal[i]});
  drawCurve(painter, frame, values, pen);
}

int ticksIn(double pixels, double each) {
  return std::clamp(static_cast<int>(pixels / std::max(each, 1.0)), 1, 10);
}

}  // namespace pictures
