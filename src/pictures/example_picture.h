#pragma once

#include "pictures/picture.h"
#include "pictures/plot_frame.h"

namespace pictures {

/// What a processing does, shown with an example signal: values over a time that has no numbers.
class ExamplePicture : public Picture {
  Q_OBJECT
 public:
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint() / 2; }

 protected:
  static constexpr int samples = 400;

  /// Its usual size, in letters and lines of text.
  ExamplePicture(int letters, int lines, QWidget* parent);
  [[nodiscard]] QList<Part> parts() const override { return {}; }
  /// The frame of the signal, yet to be fitted into its place.
  [[nodiscard]] PlotFrame timeFrame(double low, double high) const;
  /// Ticks that have room on an axis over the whole height.
  [[nodiscard]] int ticksInHeight() const;

  QList<double> signal_;

 private:
  int letters_, lines_;
};

}  // namespace pictures
