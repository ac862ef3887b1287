#pragma once

#include <QBrush>
#include <QList>
#include <QPainter>
#include <QPalette>
#include <QString>

namespace pictures {

/// One line of text in its place, with "..." where it is too long.
void drawText(QPainter& painter, const QRectF& place, int flags, const QString& text);
/// The same over a filled shape, only if at least the first letters fit.
void drawTextOn(QPainter& painter, const QRectF& place, const QColor& fill, const QString& text);
/// Some lines of text in the middle of a place: why there is no picture.
void drawNote(QPainter& painter, const QRectF& place, const QString& text);
/// Oblique stripes over what is wrong.
void drawHatched(QPainter& painter, const QRectF& place, const QColor& colour);
/// A frame of one pixel within the place, sharp at every scale.
void drawFrame(QPainter& painter, const QRectF& place, const QColor& colour,
               Qt::PenStyle style = Qt::SolidLine);
/// Font of captions and axis texts.
QFont captionFont(const QFont& font);

/// What a legend tells of one fill.
struct LegendEntry {
  QString name;
  QColor colour;
  Qt::PenStyle stroke = Qt::NoPen;  // a line instead of a filled square
};
/// Height that a legend takes in a width; nothing for no entries.
double legendHeight(const QList<LegendEntry>& entries, const QFont& font, double width);
void drawLegend(QPainter& painter, const QList<LegendEntry>& entries, const QRectF& place,
                const QColor& ink);

}  // namespace pictures
