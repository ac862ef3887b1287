#include "pictures/drawing.h"

#include <algorithm>
#include <cmath>

#include "pictures/colours.h"

namespace pictures {
namespace {

double markWidth(const LegendEntry& entry, const QFontMetricsF& metrics) {
  return metrics.height() * (entry.stroke == Qt::NoPen ? 0.7 : 2);
}

void drawLegendMark(QPainter& painter, const LegendEntry& entry, const QRectF& place) {
  if (entry.stroke == Qt::NoPen) return painter.fillRect(place, entry.colour);
  painter.setPen(QPen(entry.colour, 2, entry.stroke, Qt::FlatCap));
  const QPointF start(place.left(), std::round(place.center().y()));
  painter.drawLine(start, start + QPointF(markWidth(entry, QFontMetricsF(painter.font())), 0));
}

/// Places of the entries in rows, from the left.
QList<QRectF> legendPlaces(const QList<LegendEntry>& entries, const QFontMetricsF& metrics,
                           double width) {
  const double height = metrics.height() + 4, gap = metrics.height();
  QList<QRectF> places;
  QPointF at;
  for (const LegendEntry& entry : entries) {
    const double wide =
        std::min(markWidth(entry, metrics) + metrics.horizontalAdvance(entry.name) + 6,
                 std::max(width, 1.0));
    if (at.x() > 0 && at.x() + wide > width) at = QPointF(0, at.y() + height);
    places.append(QRectF(at, QSizeF(wide, height)));
    at.rx() += wide + gap;
  }
  return places;
}

}  // namespace

void drawText(QPainter& painter, const QRectF& place, int flags, const QString& text) {
  if (place.width() < 1 || place.height() < 1) return;
  const QFontMetricsF metrics(painter.font());
  painter.drawText(place, flags | Qt::TextSingleLine | Qt::TextDontClip,
                   metrics.elidedText(text, Qt::ElideRight, place.width() + 0.5));
}

void drawTextOn(QPainter& painter, const QRectF& place, const QColor& fill, const QString& text) {
  const QFontMetricsF metrics(painter.font());
  const double least =
      std::min(metrics.horizontalAdvance(text), metrics.horizontalAdvance(text.left(2) + "…"));
  const QRectF inner = place.adjusted(3, 0, -3, 0);
  if (inner.width() < least || inner.height() < metrics.height() * 0.8) return;
  painter.setPen(inkOn(fill));
  drawText(painter, inner, Qt::AlignCenter, text);
}

void drawNote(QPainter& painter, const QRectF& place, const QString& text) {
  painter.drawText(place.adjusted(8, 4, -8, -4), Qt::AlignCenter | Qt::TextWordWrap, text);
}

void drawHatched(QPainter& painter, const QRectF& place, const QColor& colour) {
  painter.save();
  painter.setClipRect(place, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colour, 2));
  constexpr double apart = 6;
  // Stripes begin at multiples of their distance, so that neighbours join.
  const double first = std::floor((place.left() - place.height()) / apart) * apart;
  const int stripes = static_cast<int>((place.right() - first) / apart) + 1;
  for (int i = 0; i < stripes; ++i) {
    const double x = first + i * apart;
    painter.drawLine(QPointF(x, place.bottom()), QPointF(x + place.height(), place.top()));
  }
  painter.restore();
}

void drawFrame(QPainter& painter, const QRectF& place, const QColor& colour, Qt::PenStyle style) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setPen(QPen(colour, 1, style));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(place.adjusted(0, 0, -1, -1));
  painter.restore();
}

QFont captionFont(const QFont& font) {
  QFont small = font;
  if (font.pointSizeF() > 0) small.setPointSizeF(std::max(font.pointSizeF() * 0.9, 7.0));
  return small;
}

double legendHeight(const QList<LegendEntry>& entries, const QFont& font, double width) {
  if (entries.isEmpty()) return 0;
  return legendPlaces(entries, QFontMetricsF(font), width).constLast().bottom();
}

void drawLegend(QPainter& painter, const QList<LegendEntry>& entries, const QRectF& place,
                const QColor& ink) {
  const QFontMetricsF metrics(painter.font());
  const QList<QRectF> places = legendPlaces(entries, metrics, place.width());
  const double side = metrics.height() * 0.7;
  for (qsizetype i = 0; i < entries.size(); ++i) {
    const QRectF row = places[i].translated(place.topLeft());
    if (row.bottom() > place.bottom() + 1) return;
    drawLegendMark(painter, entries[i],
                   QRectF(row.left(), row.center().y() - side / 2, side, side));
    painter.setPen(ink);
    drawText(painter, row.adjusted(markWidth(entries[i], metrics) + 5, 0, 0, 0),
             Qt::AlignVCenter | Qt::AlignLeft, entries[i].name);
  }
}

}  // namespace pictures
