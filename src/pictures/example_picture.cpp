#include "pictures/example_picture.h"

#include "pictures/drawing.h"

namespace pictures {

ExamplePicture::ExamplePicture(int letters, int lines, QWidget* parent)
    : Picture(parent), letters_(letters), lines_(lines) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize ExamplePicture::sizeHint() const {
  const QFontMetricsF metrics(font());
  return {static_cast<int>(metrics.averageCharWidth() * letters_),
          static_cast<int>(metrics.height() * lines_)};
}

int ExamplePicture::ticksInHeight() const {
  return ticksIn(height(), QFontMetricsF(captionFont(font())).height() * 2.5);
}

PlotFrame ExamplePicture::timeFrame(double low, double high) const {
  PlotFrame frame;
  frame.grid = false;
  frame.xTitle = "Time";
  frame.xTicks = false;
  frame.y = axisBetween(low, high, ticksInHeight());
  return frame;
}

}  // namespace pictures
