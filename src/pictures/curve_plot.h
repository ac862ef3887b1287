#pragma once

#include <QPointF>

#include "pictures/drawing.h"
#include "pictures/picture.h"
#include "pictures/plot_frame.h"

namespace pictures {

/// Points from left to right; one that is no number parts the curve.
struct Curve {
  QString name;
  QList<QPointF> points;
};

/// A vertical line at a place of the x axis.
struct Marker {
  double x = 0.0;
  QString caption;
};

/// Curves over linear axes. Where the mouse rests, the values there are told.
class CurvePlot final : public Picture {
  Q_OBJECT
 public:
  explicit CurvePlot(QWidget* parent = nullptr);

  void setTitles(const QString& xTitle, const QString& yTitle);
  void setCurves(const QList<Curve>& curves);
  void setMarkers(const QList<Marker>& markers);
  /// Shows the y axis between these values; equal ones: over all points.
  void setYRange(double low, double high);

  [[nodiscard]] QString helpAt(const QPointF& place) const override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void draw(QPainter& painter) const override;
  [[nodiscard]] QString words() const override;
  [[nodiscard]] QList<Part> parts() const override { return {}; }

 private:
  struct Bounds {
    double xLow, xHigh, yLow, yHigh;
  };
  [[nodiscard]] Bounds bounds() const;
  [[nodiscard]] PlotFrame frame() const;
  [[nodiscard]] QList<LegendEntry> legend() const;
  [[nodiscard]] QString valuesAt(double x) const;
  [[nodiscard]] QString wordsOf(const Curve& curve) const;
  void drawMarkers(QPainter& painter, const PlotFrame& frame) const;

  QString xTitle_, yTitle_;
  QList<Curve> curves_;
  QList<Marker> markers_;
  double yLow_ = 0.0, yHigh_ = 0.0;
};

}  // namespace pictures
