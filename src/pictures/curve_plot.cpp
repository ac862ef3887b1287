#include "pictures/curve_plot.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

#include "pictures/colours.h"
#include "pictures/numbers.h"

namespace pictures {
namespace {

bool isNumber(const QPointF& point) { return std::isfinite(point.x()) && std::isfinite(point.y()); }

/// Value of a curve between its points; none beside them or in a gap.
std::optional<double> valueAt(const Curve& curve, double x) {
  for (qsizetype i = 0; i < curve.points.size(); ++i) {
    const QPointF right = curve.points[i];
    if (!isNumber(right)) continue;
    if (right.x() == x) return right.y();
    if (i == 0 || !isNumber(curve.points[i - 1])) continue;
    const QPointF left = curve.points[i - 1];
    if (left.x() < x && x < right.x())
      return left.y() + (right.y() - left.y()) * ((x - left.x()) / (right.x() - left.x()));
  }
  return std::nullopt;
}

/// Curves differ in their strokes too, for eyes that tell no colours.
QPen penOf(int curve, const QPalette& palette) {
  constexpr std::array styles = {Qt::SolidLine, Qt::DashLine, Qt::DashDotLine, Qt::DotLine};
  return {categoryColour(curve, palette), 2, styles[static_cast<std::size_t>(curve) % 4],
          Qt::FlatCap, Qt::RoundJoin};
}

}  // namespace

CurvePlot::CurvePlot(QWidget* parent) : Picture(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  renew();
}

void CurvePlot::setTitles(const QString& xTitle, const QString& yTitle) {
  xTitle_ = xTitle;
  yTitle_ = yTitle;
  renew();
}

void CurvePlot::setCurves(const QList<Curve>& curves) {
  curves_ = curves;
  renew();
}

void CurvePlot::setMarkers(const QList<Marker>& markers) {
  markers_ = markers;
  renew();
}

void CurvePlot::setYRange(double low, double high) {
  yLow_ = low;
  yHigh_ = high;
  renew();
}

QSize CurvePlot::sizeHint() const {
  const QFontMetricsF metrics(font());
  return {static_cast<int>(metrics.averageCharWidth() * 70),
          static_cast<int>(metrics.height() * 15)};
}

QSize CurvePlot::minimumSizeHint() const { return sizeHint() / 2; }

CurvePlot::Bounds CurvePlot::bounds() const {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  Bounds all{none, none, none, none};  // fmin and fmax pass over what is no number
  for (const Curve& curve : curves_)
    for (const QPointF& point : curve.points) {
      if (!isNumber(point)) continue;
      all = {std::fmin(all.xLow, point.x()), std::fmax(all.xHigh, point.x()),
             std::fmin(all.yLow, point.y()), std::fmax(all.yHigh, point.y())};
    }
  for (const Marker& marker : markers_) {
    if (!std::isfinite(marker.x)) continue;
    all.xLow = std::fmin(all.xLow, marker.x);
    all.xHigh = std::fmax(all.xHigh, marker.x);
  }
  return all;
}

PlotFrame CurvePlot::frame() const {
  const QFontMetricsF metrics(captionFont(font()));
  const Bounds all = bounds();
  const bool given = std::isfinite(yLow_) && std::isfinite(yHigh_) && yLow_ != yHigh_;
  PlotFrame frame;
  frame.xTitle = xTitle_;
  frame.yTitle = yTitle_;
  frame.x =
      axisBetween(all.xLow, all.xHigh, ticksIn(width(), metrics.horizontalAdvance("00000000")));
  const int rows = ticksIn(height() - 4 * metrics.height(), metrics.height() * 2);
  frame.y = given ? axisBetween(yLow_, yHigh_, rows) : niceAxis(all.yLow, all.yHigh, rows);
  const double top = curves_.size() > 1 ? legendHeight(legend(), captionFont(font()), width()) : 0;
  frame.fitInto(QRectF(rect()).adjusted(0, top, 0, 0), font());
  return frame;
}

QList<LegendEntry> CurvePlot::legend() const {
  QList<LegendEntry> entries;
  for (int i = 0; i < curves_.size(); ++i)
    entries.append({curves_[i].name, categoryColour(i, palette()), penOf(i, palette()).style()});
  return entries;
}

void CurvePlot::draw(QPainter& painter) const {
  const PlotFrame plot = frame();
  plot.draw(painter, palette());
  for (int i = 0; i < curves_.size(); ++i)
    drawCurve(painter, plot, curves_[i].points, penOf(i, palette()));
  painter.setFont(captionFont(font()));
  painter.setPen(palette().color(QPalette::Text));
  if (std::isnan(bounds().yLow)) drawNote(painter, plot.area, "No values");
  drawMarkers(painter, plot);
  if (curves_.size() < 2) return;
  drawLegend(painter, legend(), QRectF(plot.area.left(), 0, plot.area.width(), plot.area.top()),
             softInk(palette()));
}

void CurvePlot::drawMarkers(QPainter& painter, const PlotFrame& plot) const {
  const QFontMetricsF metrics(painter.font());
  const double line = metrics.height();
  int row = 0;
  for (const Marker& marker : markers_) {
    if (!std::isfinite(marker.x)) continue;
    const double x = std::round(plot.at(marker.x, 0).x());
    painter.setPen(QPen(palette().color(QPalette::Text), 1, Qt::DashLine));
    painter.drawLine(QPointF(x, plot.area.top()), QPointF(x, plot.area.bottom()));
    // Captions step down, so that near markers do not cover each other.
    const double wide = std::min(metrics.horizontalAdvance(marker.caption) + 6, plot.area.width());
    const double left = x + 2 + wide <= plot.area.right() ? x + 2 : x - 1 - wide;
    const QRectF place(std::max(left, plot.area.left() + 1), plot.area.top() + 2 + row * line, wide,
                       line);
    QColor paper = palette().color(QPalette::Base);
    paper.setAlphaF(0.85F);
    painter.fillRect(place, paper);
    painter.setPen(palette().color(QPalette::Text));
    drawText(painter, place.adjusted(3, 0, -3, 0), Qt::AlignCenter, marker.caption);
    row = (row + 1) % std::max(1, static_cast<int>(plot.area.height() / line) - 1);
  }
}

QString CurvePlot::valuesAt(double x) const {
  QStringList lines;
  for (const Curve& curve : curves_)
    if (const auto value = valueAt(curve, x)) lines += curve.name + ": " + numberText(*value);
  return lines.join('\n');
}

QString CurvePlot::helpAt(const QPointF& place) const {
  const PlotFrame plot = frame();
  if (!plot.area.contains(place)) return {};
  QStringList lines;
  for (const Marker& marker : markers_)
    if (std::abs(plot.at(marker.x, 0).x() - place.x()) < 4)
      lines += marker.caption + ": " + numberText(marker.x);
  const double x = plot.xAt(place.x());
  const QString values = valuesAt(x);
  if (!values.isEmpty()) lines += xTitle_ + ": " + numberText(x) + '\n' + values;
  return lines.join('\n');
}

QString CurvePlot::wordsOf(const Curve& curve) const {
  QPointF lowest, highest;
  qsizetype numbers = 0;
  for (const QPointF& point : curve.points) {
    if (!isNumber(point)) continue;
    if (numbers == 0 || point.y() < lowest.y()) lowest = point;
    if (numbers == 0 || point.y() > highest.y()) highest = point;
    ++numbers;
  }
  if (numbers == 0) return curve.name + ": no values.";
  const auto told = [](const QPointF& point) {
    return numberText(point.y()) + " at " + numberText(point.x());
  };
  return curve.name + ": highest " + told(highest) + ", lowest " + told(lowest) + '.';
}

QString CurvePlot::words() const {
  QStringList lines = {yTitle_ + " over " + xTitle_ + '.'};
  for (const Curve& curve : curves_) lines += wordsOf(curve);
  for (const Marker& marker : markers_) {
    const QString values = valuesAt(marker.x);
    lines += marker.caption + " at " + numberText(marker.x) +
             (values.isEmpty() ? QString() : ": " + QString(values).replace('\n', ", ")) + '.';
  }
  return lines.join('\n');
}

}  // namespace pictures
