#include "pictures/stacked_bars.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "pictures/colours.h"
#include "pictures/numbers.h"

namespace pictures {
namespace {

double amount(double value) { return std::max(bounded(value), 0.0); }

double totalOf(const Bar& bar) {
  double total = 0;
  for (const Segment& segment : bar.segments) total += segment.value;
  return total;
}

double freeOf(const Bar& bar) { return bar.limit > 0 ? bar.limit - totalOf(bar) : 0.0; }

QString shareText(double part, double whole) {
  return whole > 0 ? QString::number(100 * part / whole, 'f', 1) + " %" : QString();
}

}  // namespace

StackedBars::StackedBars(QWidget* parent) : Picture(parent) {
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  renew();
}

void StackedBars::setBars(const QList<Bar>& bars, const QString& unit) {
  bars_ = bars;
  unit_ = unit;
  names_.clear();
  scale_ = 0.0;
  for (Bar& bar : bars_) {
    bar.limit = amount(bar.limit);
    for (Segment& segment : bar.segments) {
      segment.value = amount(segment.value);
      if (!names_.contains(segment.name)) names_ += segment.name;
    }
    scale_ = std::max({scale_, totalOf(bar), bar.limit});
  }
  if (scale_ <= 0) scale_ = 1.0;
  renew();
}

QString StackedBars::totalText(const Bar& bar) const {
  const QString limit = bar.limit > 0 ? " / " + numberText(bar.limit) : QString();
  return numberText(totalOf(bar)) + limit + ' ' + unit_;
}

QList<LegendEntry> StackedBars::legend() const {
  QList<LegendEntry> entries;
  for (int i = 0; i < names_.size(); ++i) entries.append({names_[i], categoryColour(i, palette())});
  return entries;
}

int StackedBars::heightForWidth(int width) const {
  const double row = std::ceil(QFontMetricsF(font()).height() * 2);
  const double rows = row * static_cast<double>(std::max<qsizetype>(bars_.size(), 1));
  return static_cast<int>(std::ceil(rows + 6 + legendHeight(legend(), captionFont(font()), width)));
}

QSize StackedBars::sizeHint() const {
  const int width = static_cast<int>(QFontMetricsF(font()).averageCharWidth() * 90);
  return {width, heightForWidth(width)};
}

QSize StackedBars::minimumSizeHint() const {
  const QFontMetricsF metrics(font());
  const double rows = static_cast<double>(std::max<qsizetype>(bars_.size(), 1));
  return {static_cast<int>(metrics.averageCharWidth() * 45),
          static_cast<int>(metrics.height() * (1.4 * rows + 1.5))};
}

StackedBars::Columns StackedBars::columns() const {
  const QFontMetricsF metrics(font());
  double names = 0, totals = 0;
  for (const Bar& bar : bars_) {
    names = std::max(names, metrics.horizontalAdvance(bar.name));
    totals = std::max(totals, metrics.horizontalAdvance(totalText(bar)));
  }
  names = std::min(names + 10, width() * 0.3);
  totals = std::min(totals + 10, width() * 0.35);
  const double room = height() - 6 - legendHeight(legend(), captionFont(font()), width());
  const double rows = static_cast<double>(std::max<qsizetype>(bars_.size(), 1));
  return {0, names, width() - totals, double(width()),
          std::clamp(room / rows, metrics.height() * 1.4, metrics.height() * 2.4)};
}

QList<StackedBars::Piece> StackedBars::piecesOf(int index, const Columns& at) const {
  const Bar& bar = bars_[index];
  const double top = index * at.rowHeight, wide = std::max(at.totals - at.bars - 1, 1.0);
  const auto place = [&](double from, double to) {
    const double left = at.bars + std::round(from / scale_ * wide);
    const double right = at.bars + std::round(to / scale_ * wide);
    return QRectF(left, top + 3, right - left, at.rowHeight - 6);
  };
  QList<Piece> pieces = {
      {Kind::name, index, 0, QRectF(at.names, top, at.bars - at.names, at.rowHeight)},
      {Kind::total, index, 0, QRectF(at.totals, top, at.right - at.totals, at.rowHeight)}};
  double sum = 0;
  for (int i = 0; i < bar.segments.size(); ++i) {
    const double value = bar.segments[i].value;
    pieces.append({Kind::segment, index, i, place(sum, sum + value)});
    sum += value;
  }
  if (freeOf(bar) > 0) pieces.append({Kind::free, index, 0, place(sum, bar.limit)});
  if (freeOf(bar) < 0) pieces.append({Kind::above, index, 0, place(bar.limit, sum)});
  return pieces;
}

QList<StackedBars::Piece> StackedBars::pieces() const {
  const Columns at = columns();
  QList<Piece> pieces;
  for (int i = 0; i < bars_.size(); ++i) pieces += piecesOf(i, at);
  return pieces;
}

QString StackedBars::helpOf(const Piece& piece) const {
  const Bar& bar = bars_[piece.bar];
  const double whole = bar.limit > 0 ? bar.limit : totalOf(bar);
  switch (piece.kind) {
    case Kind::segment: {
      const Segment& segment = bar.segments[piece.segment];
      return segment.name + ": " + numberText(segment.value) + ' ' + unit_ + ", " +
             shareText(segment.value, whole) + (bar.limit > 0 ? " of the limit" : " of the total");
    }
    case Kind::free:
      return bar.name + ": " + numberText(freeOf(bar)) + ' ' + unit_ + " free, " +
             shareText(freeOf(bar), whole) + " of the limit";
    case Kind::above:
      return bar.name + ": " + numberText(-freeOf(bar)) + ' ' + unit_ + " above the limit of " +
             numberText(bar.limit) + ' ' + unit_;
    default:
      return bar.name + ": " + totalText(bar);
  }
}

QList<Part> StackedBars::parts() const {
  QList<Part> parts;
  for (const Piece& piece : pieces()) {
    QRectF area = piece.area;
    if (piece.kind == Kind::above) area.setTop(area.center().y());  // its segments stay in reach
    parts.append({area, helpOf(piece)});
  }
  return parts;
}

void StackedBars::draw(QPainter& painter) const {
  for (const Piece& piece : pieces()) drawPiece(painter, piece);
  const Columns at = columns();
  for (int i = 0; i < bars_.size(); ++i) drawLimit(painter, i, at);
  painter.setFont(captionFont(font()));
  const double top = at.rowHeight * static_cast<double>(bars_.size()) + 6;
  drawLegend(painter, legend(), QRectF(0, top, width(), height() - top), softInk(palette()));
}

void StackedBars::drawPiece(QPainter& painter, const Piece& piece) const {
  const Bar& bar = bars_[piece.bar];
  const bool tooMuch = freeOf(bar) < 0;
  switch (piece.kind) {
    case Kind::name:
      painter.setPen(palette().color(QPalette::WindowText));
      return drawText(painter, piece.area.adjusted(0, 0, -8, 0), Qt::AlignVCenter | Qt::AlignLeft,
                      bar.name);
    case Kind::total:
      painter.setPen(tooMuch ? alarmColour(palette()) : palette().color(QPalette::WindowText));
      return drawText(painter, piece.area.adjusted(8, 0, 0, 0), Qt::AlignVCenter | Qt::AlignRight,
                      totalText(bar));
    case Kind::segment: {
      const Segment& segment = bar.segments[piece.segment];
      const auto colour = static_cast<int>(names_.indexOf(segment.name));
      const QColor fill = categoryColour(colour, palette());
      // A line of the background parts neighbours.
      const bool wide = piece.area.width() > 3;
      painter.fillRect(piece.area.adjusted(0, 0, wide ? -1 : 0, 0), fill);
      QRectF within = piece.area;  // the limit's line crosses no name
      if (tooMuch) within.setRight(std::min(within.right(), limitAt(bar, columns()) - 2));
      return drawTextOn(painter, within, fill, segment.name);
    }
    case Kind::free:
      return drawFree(painter, piece);
    case Kind::above: {
      QRectF area = piece.area;
      area.setTop(area.bottom() - area.height() * 0.35);
      painter.fillRect(area, palette().color(QPalette::Window));
      drawHatched(painter, area, alarmColour(palette()));
      return drawFrame(painter, piece.area, alarmColour(palette()));
    }
  }
}

void StackedBars::drawFree(QPainter& painter, const Piece& piece) const {
  drawFrame(painter, piece.area, frameColour(palette()), Qt::DotLine);
  painter.setPen(softInk(palette()));
  QRectF behind = piece.area;  // the limit, where there may be room
  behind.setLeft(piece.area.right() + 6);
  behind.setRight(columns().totals);
  const QString number = numberText(freeOf(bars_[piece.bar]));
  for (const QString& text : {number + " free", number}) {
    const double wide = QFontMetricsF(font()).horizontalAdvance(text) + 2;
    if (wide + 4 < piece.area.width()) return drawText(painter, piece.area, Qt::AlignCenter, text);
    if (wide < behind.width())
      return drawText(painter, behind, Qt::AlignVCenter | Qt::AlignLeft, text);
  }
}

double StackedBars::limitAt(const Bar& bar, const Columns& at) const {
  return at.bars + std::round(bar.limit / scale_ * std::max(at.totals - at.bars - 1, 1.0));
}

void StackedBars::drawLimit(QPainter& painter, int index, const Columns& at) const {
  const Bar& bar = bars_[index];
  if (bar.limit <= 0) return;
  const double x = limitAt(bar, at);
  const QColor colour =
      freeOf(bar) < 0 ? alarmColour(palette()) : palette().color(QPalette::WindowText);
  painter.fillRect(QRectF(x - 1, index * at.rowHeight, 2, at.rowHeight), colour);
}

QString StackedBars::wordsOf(const Bar& bar) const {
  QString text = bar.name + ": " + totalText(bar);
  const double free = freeOf(bar);
  if (free > 0) text += ", " + numberText(free) + " free";
  if (free < 0) text += ", " + numberText(-free) + " above the limit";
  QStringList shares;
  for (const Segment& segment : bar.segments)
    shares += segment.name + ' ' + numberText(segment.value);
  return shares.isEmpty() ? text + '.' : text + ": " + shares.join(", ") + '.';
}

QString StackedBars::words() const {
  QStringList lines;
  for (const Bar& bar : bars_) lines += wordsOf(bar);
  return lines.isEmpty() ? "No bars." : lines.join('\n');
}

}  // namespace pictures
