#include "pictures/slot_strip.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <cmath>

#include "pictures/colours.h"
#include "pictures/drawing.h"

namespace pictures {
namespace {

constexpr double gap = 3, rail = 6;

/// By kind, as the modules are painted; the last one is of modules to come.
constexpr std::array<QRgb, 11> fronts = {0xff808080, 0xff000080, 0xff008080, 0xff800080,
                                         0xff0080ff, 0xff00a000, 0xff808000, 0xffd00000,
                                         0xffff8000, 0xffc000c0, 0xffc0c0c0};

QString wordsOf(const Slot& slot) {
  return QString("Slot %1: ").arg(slot.number) + (slot.module.isEmpty() ? "empty" : slot.module);
}

}  // namespace

SlotStrip::SlotStrip(QWidget* parent) : ChoicePicture(parent) {
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  renew();
}

void SlotStrip::setSlots(const QList<Slot>& modules) {
  slots_ = modules;
  renew();
}

QColor SlotStrip::colourOf(int kind, const QPalette& palette) {
  if (kind < 0) return categoryColour(kind, palette);
  return fronts[static_cast<std::size_t>(kind) % fronts.size()];
}

double SlotStrip::leastWidth() const {
  QFont bold = font();
  bold.setBold(true);
  const QFontMetricsF metrics(bold);
  double widest = metrics.horizontalAdvance("0000");
  for (const Slot& slot : slots_)
    widest = std::max(widest, metrics.horizontalAdvance(slot.module.left(8)));
  return std::ceil(widest) + 10 + gap;
}

double SlotStrip::rowHeight() const { return std::ceil(QFontMetricsF(font()).height() * 5); }

int SlotStrip::rowsIn(int width) const {
  const int most = std::max(1, static_cast<int>(width / leastWidth()));
  return (std::max(1, static_cast<int>(slots_.size())) + most - 1) / most;
}

int SlotStrip::columnsIn(int width) const {  // rows of about the same length
  const int rows = rowsIn(width), count = std::max(1, static_cast<int>(slots_.size()));
  return (count + rows - 1) / rows;
}

QSize SlotStrip::sizeHint() const {
  const int width = static_cast<int>(leastWidth()) * std::max(static_cast<int>(slots_.size()), 1);
  return {width, heightForWidth(width)};
}

QSize SlotStrip::minimumSizeHint() const {
  return {static_cast<int>(leastWidth() * 5), static_cast<int>(rowHeight())};
}

int SlotStrip::heightForWidth(int width) const {
  return static_cast<int>(rowsIn(width) * rowHeight());
}

QList<Part> SlotStrip::parts() const {
  const int columns = columnsIn(width()), rows = rowsIn(width());
  const double wide = std::min(width() / double(columns), leastWidth() * 2.2);
  const double high = std::min(height() / double(rows), rowHeight() * 1.5);
  QList<Part> parts;
  for (int i = 0; i < slots_.size(); ++i) {
    const int row = i / columns, column = i % columns;
    const QRectF cell(column * wide, row * high, wide, high);
    const QString help = slots_[i].help.isEmpty() ? QString() : '\n' + slots_[i].help;
    parts.append({cell.adjusted(0, rail, -gap, -rail), wordsOf(slots_[i]) + help});
  }
  return parts;
}

void SlotStrip::choose(int part) { Q_EMIT slotClicked(slots_[part].number); }

void SlotStrip::draw(QPainter& painter) const {
  const QList<Part> places = parts();
  for (qsizetype i = 0; i < places.size(); ++i) {
    const QRectF place = places[i].area;
    const QColor railColour = mixed(gridColour(palette()), frameColour(palette()), 0.3);
    for (const double y : {place.top() - rail + 1, place.bottom() + rail - 4})
      painter.fillRect(QRectF(place.left(), y, place.width() + gap, 3), railColour);
    drawSlot(painter, slots_[i], place);
  }
}

void SlotStrip::drawSlot(QPainter& painter, const Slot& slot, const QRectF& place) const {
  const double line = QFontMetricsF(font()).height();
  const bool empty = slot.kind < 0;
  const QColor front = empty ? palette().color(QPalette::Window) : colourOf(slot.kind, palette());
  const QColor ink = empty ? softInk(palette()) : inkOn(front);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  // The frame shows dark fronts on dark windows, too.
  painter.setPen(QPen(frameColour(palette()), 1, empty ? Qt::DashLine : Qt::SolidLine));
  painter.setBrush(empty ? QBrush(Qt::NoBrush) : QBrush(front));
  painter.drawRoundedRect(place.adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);

  painter.setPen(ink);
  painter.setFont(captionFont(font()));
  const QRectF number(place.left(), place.top() + 3, place.width(), line);
  drawText(painter, number.adjusted(3, 0, -3, 0), Qt::AlignCenter, QString::number(slot.number));
  if (!empty) {  // its terminal strip
    painter.setPen(QPen(mixed(front, ink, 0.45), 3, Qt::DotLine));
    const double y = place.bottom() - line * 0.5;
    painter.drawLine(QPointF(place.left() + 8, y), QPointF(place.right() - 8, y));
  }
  QFont nameFont = font();
  nameFont.setBold(!empty);
  painter.setFont(nameFont);
  painter.setPen(ink);
  const QRectF name(place.left() + 3, number.bottom(), place.width() - 6,
                    place.bottom() - line * 0.8 - number.bottom());
  drawText(painter, name, Qt::AlignCenter, slot.module);
  painter.restore();
}

QString SlotStrip::words() const {
  QStringList lines;
  for (const Slot& slot : slots_) lines += wordsOf(slot);
  return lines.isEmpty() ? "No slots." : lines.join(". ") + '.';
}

}  // namespace pictures
