#pragma once

#include "pictures/example_picture.h"

namespace pictures {

/// What a histogram does: an example signal, and beside it the bins with the samples that fall into
/// each.
class HistogramPicture final : public ExamplePicture {
  Q_OBJECT
 public:
  explicit HistogramPicture(QWidget* parent = nullptr);

  /// Bins of equal width from low to high. At most 1000 are shown; fewer than one shows none.
  void setBins(int bins, double low, double high);

  [[nodiscard]] QString helpAt(const QPointF& place) const override;

 protected:
  void draw(QPainter& painter) const override;
  [[nodiscard]] QString words() const override;

 private:
  [[nodiscard]] PlotFrame signalFrame() const;
  [[nodiscard]] QRectF barArea(const PlotFrame& frame) const;
  [[nodiscard]] QRectF barOf(int bin, const PlotFrame& frame) const;
  [[nodiscard]] QString wordsOf(int bin) const;
  [[nodiscard]] double edge(int bin) const;
  [[nodiscard]] bool usable() const { return !counts_.isEmpty() && high_ > low_; }

  double low_ = 0.0, high_ = 0.0;
  QList<int> counts_;
};

}  // namespace pictures
