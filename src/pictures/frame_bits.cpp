#include "pictures/frame_bits.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "pictures/colours.h"
#include "pictures/drawing.h"

namespace pictures {
namespace {

constexpr int frameBits = 64, byteBits = 8;

bool inFrame(int bit) { return bit >= 0 && bit < frameBits; }

/// Bit of a cell in reading order, and the other way round.
int mirrored(int bit) { return bit / byteBits * byteBits + (byteBits - 1 - bit % byteBits); }

QList<int> sortedBits(const FrameItem& item) {
  QList<int> bits = item.bits;
  std::sort(bits.begin(), bits.end());
  bits.erase(std::unique(bits.begin(), bits.end()), bits.end());
  return bits;
}

QList<QList<int>> itemsByBit(const QList<FrameItem>& items) {
  QList<QList<int>> byBit(frameBits);
  for (int i = 0; i < items.size(); ++i)
    for (const int bit : sortedBits(items[i]))
      if (inFrame(bit)) byBit[bit].append(i);
  return byBit;
}

struct Run {
  int first, last;
};

/// Bits that follow each other; with `breaks`, only within one byte.
QList<Run> runsOf(const FrameItem& item, bool breaks) {
  QList<Run> runs;
  for (const int bit : sortedBits(item)) {
    const bool goesOn =
        !runs.isEmpty() && runs.last().last + 1 == bit && !(breaks && bit % byteBits == 0);
    if (goesOn)
      runs.last().last = bit;
    else
      runs.append({bit, bit});
  }
  return runs;
}

QString runText(const Run& run) {
  return run.first == run.last ? QString::number(run.first)
                               : QString("%1-%2").arg(run.first).arg(run.last);
}

QString bitsText(const FrameItem& item) {
  QStringList texts;
  for (const Run& run : runsOf(item, false)) texts += runText(run);
  if (texts.isEmpty()) return "no bits";
  return (item.bits.size() == 1 ? "bit " : "bits ") + texts.join(", ");
}

QString outsideText(const FrameItem& item) {
  QStringList outside;
  for (const int bit : sortedBits(item))
    if (!inFrame(bit)) outside += QString::number(bit);
  return outside.isEmpty() ? QString() : "; outside the frame: " + outside.join(", ");
}

QString placeText(int bit) {
  return QString("Byte %1 bit %2 (%3)").arg(bit / byteBits).arg(bit % byteBits).arg(bit);
}

}  // namespace

FrameBits::FrameBits(QWidget* parent) : ChoicePicture(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setItems({});
}

void FrameBits::setItems(const QList<FrameItem>& items) {
  items_ = items;
  itemsOfBit_ = itemsByBit(items);
  selected_ = -1;
  renew();
}

void FrameBits::setSelected(int item) {
  selected_ = item >= 0 && item < items_.size() ? item : -1;
  renew();
}

QList<BitOverlap> FrameBits::overlapsOf(const QList<FrameItem>& items) {
  const QList<QList<int>> byBit = itemsByBit(items);
  QList<BitOverlap> overlaps;
  for (int bit = 0; bit < frameBits; ++bit)
    if (byBit[bit].size() > 1) overlaps.append({bit, byBit[bit]});
  return overlaps;
}

QSize FrameBits::sizeHint() const {
  const QFontMetricsF metrics(font());
  return {static_cast<int>(metrics.averageCharWidth() * 85),
          static_cast<int>(metrics.height() * 16)};
}

QSize FrameBits::minimumSizeHint() const {
  const QFontMetricsF metrics(font());
  return {static_cast<int>(metrics.averageCharWidth() * 50),
          static_cast<int>(metrics.height() * 11)};
}

QRectF FrameBits::gridArea() const {
  const QFontMetricsF metrics(captionFont(font()));
  const double left = metrics.horizontalAdvance("Byte 0") + 8, top = metrics.height() + 4;
  const double right = items_.isEmpty() ? width() - 2.0 : width() * 0.68;
  return {left, top, std::max(right - left, 8.0), std::max(height() - top - 2, 8.0)};
}

QRectF FrameBits::cellOf(int bit) const {
  const QRectF grid = gridArea();
  const int column = mirrored(bit) % byteBits, row = bit / byteBits;
  const double left = std::round(grid.left() + column * grid.width() / byteBits);
  const double right = std::round(grid.left() + (column + 1) * grid.width() / byteBits);
  const double top = std::round(grid.top() + row * grid.height() / byteBits);
  const double bottom = std::round(grid.top() + (row + 1) * grid.height() / byteBits);
  return {left, top, right - left, bottom - top};
}

QRectF FrameBits::placeOf(int firstBit, int lastBit) const {
  return cellOf(firstBit).united(cellOf(lastBit)).adjusted(2, 2, -1, -1);
}

FrameBits::Legend FrameBits::legend() const {
  const double line = QFontMetricsF(font()).height(), room = gridArea().height();
  const auto count = static_cast<int>(items_.size());
  const int fitting = std::max(1, static_cast<int>(room / (line * 1.15)));
  if (count <= fitting) return {0, count, std::min(line * 2.1, room / std::max(count, 1))};
  const int shown = fitting - 1;  // the last row counts the others
  return {std::clamp(selected_ - shown + 1, 0, count - shown), shown, room / fitting};
}

QRectF FrameBits::legendRow(int row) const {
  const QRectF grid = gridArea();
  const double high = legend().rowHeight;
  return {grid.right() + 12, grid.top() + row * high, width() - grid.right() - 14, high};
}

QString FrameBits::helpOfBit(int bit) const {
  QStringList names;
  for (const int item : itemsOfBit_[bit]) names += items_[item].name;
  const QString place = placeText(bit) + ": ";
  if (names.isEmpty()) return place + "free";
  return place + (names.size() > 1 ? "overlap of " : "") + names.join(" and ");
}

QList<Part> FrameBits::parts() const {
  QList<Part> parts;
  for (int cell = 0; cell < frameBits; ++cell) {
    const int bit = mirrored(cell);
    parts.append({cellOf(bit), helpOfBit(bit)});
  }
  const Legend rows = legend();
  for (int row = 0; row < rows.count; ++row)
    parts.append({legendRow(row), wordsOf(rows.first + row)});
  return parts;
}

void FrameBits::choose(int part) {
  if (part >= frameBits) {
    Q_EMIT itemClicked(legend().first + part - frameBits);
    return;
  }
  const QList<int>& here = itemsOfBit_[mirrored(part)];
  if (here.isEmpty()) return;
  const qsizetype next = (here.indexOf(selected_) + 1) % here.size();
  Q_EMIT itemClicked(here[next]);
}

void FrameBits::draw(QPainter& painter) const {
  drawGrid(painter);
  for (int item = 0; item < items_.size(); ++item) drawItem(painter, item);
  for (int bit = 0; bit < frameBits; ++bit)
    if (itemsOfBit_[bit].size() > 1) drawOverlap(painter, bit);
  drawSelection(painter);
  drawLegend(painter);
}

void FrameBits::drawGrid(QPainter& painter) const {
  const QRectF grid = gridArea();
  painter.setFont(captionFont(font()));
  painter.fillRect(grid, palette().color(QPalette::Base));
  painter.setPen(softInk(palette()));
  for (int i = 0; i < byteBits; ++i) {
    const QRectF cell = cellOf(i * byteBits + i);
    const QRectF left(0, cell.top(), grid.left() - 6, cell.height());
    drawText(painter, left, Qt::AlignVCenter | Qt::AlignRight, QString("Byte %1").arg(i));
    const QRectF above(cell.left(), 0, cell.width(), grid.top() - 2);
    drawText(painter, above, Qt::AlignCenter, QString::number(i));
  }
  for (int bit = 0; bit < frameBits; ++bit) {
    const QRectF cell = cellOf(bit);
    drawFrame(painter, cell.adjusted(0, 0, 1, 1), gridColour(palette()));
    if (!itemsOfBit_[bit].isEmpty()) continue;
    painter.setPen(softInk(palette()));
    drawText(painter, cell, Qt::AlignCenter, QString::number(bit));
  }
}

void FrameBits::drawItem(QPainter& painter, int item) const {
  const QColor fill = categoryColour(item, palette());
  FrameItem alone;  // the bits that are free for its name
  for (const int bit : items_[item].bits)
    if (inFrame(bit) && itemsOfBit_[bit].size() == 1) alone.bits.append(bit);
  for (const Run& run : runsOf(items_[item], true))
    if (inFrame(run.first)) painter.fillRect(placeOf(run.first, run.last), fill);
  painter.setFont(captionFont(font()));
  const QFontMetricsF metrics(painter.font());
  const QString number = QString::number(item + 1), &name = items_[item].name;
  for (const Run& run : runsOf(alone, true)) {
    const QRectF place = placeOf(run.first, run.last);
    const bool named =
        metrics.horizontalAdvance(number + ' ' + name.left(4) + "…") < place.width() - 6;
    drawTextOn(painter, place, fill, named ? number + ' ' + name : number);
  }
}

void FrameBits::drawOverlap(QPainter& painter, int bit) const {
  const QRectF cell = cellOf(bit).adjusted(2, 2, -1, -1);
  painter.fillRect(cellOf(bit).adjusted(0, 1, 0, 0), palette().color(QPalette::Base));
  drawHatched(painter, cell, alarmColour(palette()));
  drawFrame(painter, cell, alarmColour(palette()));
  QStringList numbers;
  for (const int item : itemsOfBit_[bit]) numbers += QString::number(item + 1);
  painter.setFont(captionFont(font()));
  const QString text = numbers.join('+');
  const double wide =
      std::min(QFontMetricsF(painter.font()).horizontalAdvance(text) + 8, cell.width() - 2);
  const QRectF tag(cell.center().x() - wide / 2, cell.center().y() - 9, wide, 18);
  painter.fillRect(tag.intersected(cell), palette().color(QPalette::Base));
  painter.setPen(palette().color(QPalette::Text));
  drawText(painter, tag.adjusted(2, 0, -2, 0), Qt::AlignCenter, text);
}

void FrameBits::drawSelection(QPainter& painter) const {
  if (selected_ < 0) return;
  painter.setBrush(Qt::NoBrush);
  for (const Run& run : runsOf(items_[selected_], true)) {
    if (!inFrame(run.first)) continue;
    const QRectF place = cellOf(run.first).united(cellOf(run.last)).adjusted(1, 1, 0, 0);
    painter.setPen(QPen(palette().color(QPalette::Text), 3));
    painter.drawRect(place);
  }
}

void FrameBits::drawLegend(QPainter& painter) const {
  const Legend rows = legend();
  for (int row = 0; row < rows.count; ++row)
    drawLegendRow(painter, rows.first + row, legendRow(row).adjusted(0, 1, 0, -1));
  if (rows.count == items_.size()) return;
  painter.setFont(captionFont(font()));
  painter.setPen(softInk(palette()));
  drawText(painter, legendRow(rows.count), Qt::AlignVCenter | Qt::AlignLeft,
           QString("%1 more").arg(items_.size() - rows.count));
}

void FrameBits::drawLegendRow(QPainter& painter, int item, const QRectF& row) const {
  const QColor fill = categoryColour(item, palette());
  const double side = std::min(row.height(), QFontMetricsF(font()).height() * 1.3);
  const QRectF tag(row.left(), row.center().y() - side / 2, side * 1.3, side);
  painter.setFont(captionFont(font()));
  painter.fillRect(tag, fill);
  drawTextOn(painter, tag, fill, QString::number(item + 1));
  drawLegendText(painter, item, row.adjusted(tag.width() + 6, 0, -2, 0));
  if (item == selected_) drawFrame(painter, row, palette().color(QPalette::WindowText));
}

void FrameBits::drawLegendText(QPainter& painter, int item, const QRectF& place) const {
  QFont face = font();
  face.setBold(item == selected_);
  const QString outside = outsideText(items_[item]), bits = bitsText(items_[item]) + outside;
  const bool twoLines = place.height() > QFontMetricsF(font()).height() * 1.85;
  QRectF name = place, below = place;
  if (twoLines) name.setHeight(place.height() / 2);
  below.setTop(name.bottom());
  painter.setFont(face);
  painter.setPen(palette().color(QPalette::WindowText));
  const QString all = items_[item].name + ", " + bits;
  const bool oneLine = !twoLines && QFontMetricsF(face).horizontalAdvance(all) <= place.width();
  drawText(painter, name, Qt::AlignVCenter | Qt::AlignLeft, oneLine ? all : items_[item].name);
  painter.setFont(captionFont(font()));
  painter.setPen(outside.isEmpty() ? softInk(palette()) : alarmColour(palette()));
  if (twoLines) drawText(painter, below, Qt::AlignVCenter | Qt::AlignLeft, bits);
}

QString FrameBits::wordsOf(int item) const {
  return QString("%1 ").arg(item + 1) + items_[item].name + ": " + bitsText(items_[item]) +
         outsideText(items_[item]) + (item == selected_ ? ", selected" : "");
}

QString FrameBits::words() const {
  if (items_.isEmpty()) return "A frame of 64 free bits.";
  QStringList lines;
  for (int item = 0; item < items_.size(); ++item) lines += wordsOf(item) + '.';
  for (const BitOverlap& overlap : overlapsOf(items_)) lines += helpOfBit(overlap.bit) + '.';
  const auto free = std::count(itemsOfBit_.begin(), itemsOfBit_.end(), QList<int>());
  lines += QString("%1 bits are free.").arg(free);
  return lines.join('\n');
}

}  // namespace pictures
