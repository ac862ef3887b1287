#pragma once

#include <QPainter>
#include <QPalette>

#include "pictures/axis.h"

namespace pictures {

/// Two axes around an area, and where values lie in it.
struct PlotFrame {
  QRectF area;
  Axis x, y;
  QString xTitle, yTitle;
  bool xTicks = true;
  bool grid = true;  // lines across the area at the ticks

  [[nodiscard]] QPointF at(double xValue, double yValue) const;
  [[nodiscard]] double xAt(double pixel) const;
  /// Background, grid, ticks and titles; the caller draws the rest in front of it.
  void draw(QPainter& painter, const QPalette& palette) const;

  /// The area within a whole widget that leaves just the room for ticks and titles.
  void fitInto(const QRectF& whole, const QFont& font);

 private:
  void drawXAxis(QPainter& painter, const QPalette& palette) const;
  void drawYAxis(QPainter& painter, const QPalette& palette) const;
};

/// A line through points in pixels, clipped to the frame; a point that is no number parts it.
void drawCurve(QPainter& painter, const PlotFrame& frame, const QList<QPointF>& values,
               const QPen& pen);

/// Values at equal steps over the frame's whole x axis.
void drawSignal(QPainter& painter, const PlotFrame& frame, const QList<double>& signal,
                const QPen& pen);

/// Ticks that have room along a length in pixels.
int ticksIn(double pixels, double each);

}  // namespace pictures
