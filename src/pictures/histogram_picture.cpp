#include "pictures/histogram_picture.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "pictures/colours.h"
#include "pictures/drawing.h"
#include "pictures/example_signal.h"
#include "pictures/numbers.h"

namespace pictures {
namespace {

constexpr int mostBins = 1000;

}  // namespace

HistogramPicture::HistogramPicture(QWidget* parent) : ExamplePicture(70, 13, parent) {
  setBins(10, 0, 100);
}

void HistogramPicture::setBins(int bins, double low, double high) {
  low_ = bounded(low);
  high_ = bounded(high);
  signal_ = exampleSignal(samples, low_, high_);
  counts_ = binCounts(signal_, std::clamp(bins, 0, mostBins), low_, high_);
  renew();
}

PlotFrame HistogramPicture::signalFrame() const {
  PlotFrame frame = timeFrame(low_, high_);
  frame.fitInto(QRectF(0, 0, width() * 0.6, height()), font());
  return frame;
}

double HistogramPicture::edge(int bin) const {
  return std::lerp(low_, high_, bin / static_cast<double>(counts_.size()));
}

QRectF HistogramPicture::barArea(const PlotFrame& frame) const {
  const double left = frame.area.right() + 10;
  return {left, frame.area.top(), std::max(width() - left - 2, 1.0), frame.area.height()};
}

QRectF HistogramPicture::barOf(int bin, const PlotFrame& frame) const {
  const QRectF area = barArea(frame);
  const int most = std::max(1, *std::max_element(counts_.begin(), counts_.end()));
  const double count = static_cast<double>(counts_.size());
  const double bottom = area.bottom() - area.height() * bin / count;
  const double top = area.bottom() - area.height() * (bin + 1) / count;
  return {area.left(), top, area.width() * counts_[bin] / most, bottom - top};
}

void HistogramPicture::draw(QPainter& painter) const {
  const PlotFrame frame = signalFrame();
  frame.draw(painter, palette());
  const QColor fill = categoryColour(0, palette());
  painter.setFont(captionFont(font()));
  for (int bin = 0; usable() && bin < counts_.size(); ++bin) {
    const QRectF bar = barOf(bin, frame);
    const bool parted = bar.height() > 4;
    if (parted && bin > 0)
      painter.fillRect(QRectF(frame.area.left(), std::round(bar.bottom()),
                              barArea(frame).right() - frame.area.left(), 1),
                       mixed(gridColour(palette()), fill, 0.4));
    const QRectF filled = parted ? bar.adjusted(0, 2, 0, -1) : bar;
    painter.fillRect(filled, fill);
    const QString text = QString::number(counts_[bin]);
    drawTextOn(painter, filled, fill, text);
  }
  painter.setPen(palette().color(QPalette::Text));
  if (!usable()) return drawNote(painter, frame.area, words());
  drawSignal(painter, frame, signal_, QPen(palette().color(QPalette::Text), 1.5));
  const QRectF area = barArea(frame);
  painter.fillRect(QRectF(area.left() - 1, area.top(), 1, area.height()), frameColour(palette()));
  painter.setPen(softInk(palette()));
  const double line = QFontMetricsF(painter.font()).height();
  drawText(painter, QRectF(area.left(), area.bottom() + 1, area.width(), line), Qt::AlignCenter,
           "Samples in each bin");
}

QString HistogramPicture::wordsOf(int bin) const {
  return QString("Bin %1: ").arg(bin + 1) + numberText(edge(bin)) + " to " +
         numberText(edge(bin + 1)) +
         QString(", %1 of %2 samples (%3 %)")
             .arg(counts_[bin])
             .arg(samples)
             .arg(100.0 * counts_[bin] / samples, 0, 'f', 1);
}

QString HistogramPicture::helpAt(const QPointF& place) const {
  const PlotFrame frame = signalFrame();
  const QRectF area = frame.area.united(barArea(frame));
  if (!usable() || !area.contains(place)) return {};
  const double share = (area.bottom() - place.y()) / area.height();
  const int last = static_cast<int>(counts_.size()) - 1;
  return wordsOf(
      std::clamp(static_cast<int>(share * static_cast<double>(counts_.size())), 0, last));
}

QString HistogramPicture::words() const {
  if (!usable()) return "No bins: there must be at least one, and the high limit above the low.";
  constexpr int mostTold = 20;
  const auto count = static_cast<int>(counts_.size());
  QStringList lines = {QString("Histogram of an example signal: %1 bins from ").arg(count) +
                       numberText(low_) + " to " + numberText(high_) + ", each " +
                       numberText(edge(1) - edge(0)) + " wide."};
  for (int bin = 0; count <= mostTold && bin < count; ++bin) lines += wordsOf(bin) + '.';
  return lines.join('\n');
}

}  // namespace pictures
