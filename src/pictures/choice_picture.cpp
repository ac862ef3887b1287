#include "pictures/choice_picture.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <limits>

#include "pictures/choice_access.h"

namespace pictures {
namespace {

/// The nearest part above or below, straight ones first; `from` itself when there is none.
int partInColumn(const QList<Part>& parts, int from, bool down) {
  const QPointF start = parts[from].area.center();
  const double least = parts[from].area.height() / 2;
  int best = from;
  double nearest = std::numeric_limits<double>::infinity();
  for (int i = 0; i < parts.size(); ++i) {
    const QPointF way = parts[i].area.center() - start;
    const double ahead = down ? way.y() : -way.y();
    const double distance = ahead + 3 * std::abs(way.x());
    if (ahead <= least || distance >= nearest) continue;
    nearest = distance;
    best = i;
  }
  return best;
}

}  // namespace

ChoicePicture::ChoicePicture(QWidget* parent) : Picture(parent) {
  setFocusPolicy(Qt::StrongFocus);
  installChoiceAccess();
}

int ChoicePicture::currentPart() const {
  return std::min(current_, static_cast<int>(parts().size()) - 1);
}

void ChoicePicture::setCurrentPart(int part) {
  const int last = static_cast<int>(parts().size()) - 1;
  part = std::clamp(part, 0, std::max(last, 0));
  if (part == current_) return;
  current_ = part;
  update();
  tellFocus();
}

int ChoicePicture::partBeside(int key) const {
  const QList<Part> all = parts();
  const int at = currentPart();
  switch (key) {
    case Qt::Key_Left:
      return at - 1;
    case Qt::Key_Right:
      return at + 1;
    case Qt::Key_Up:
      return partInColumn(all, at, false);
    case Qt::Key_Down:
      return partInColumn(all, at, true);
    case Qt::Key_Home:
      return 0;
    default:
      return static_cast<int>(all.size()) - 1;
  }
}

void ChoicePicture::keyPressEvent(QKeyEvent* event) {
  if (currentPart() < 0) return Picture::keyPressEvent(event);
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
      return setCurrentPart(partBeside(event->key()));
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      return choose(currentPart());
    default:
      Picture::keyPressEvent(event);
  }
}

void ChoicePicture::mousePressEvent(QMouseEvent* event) {
  pressed_ = event->button() == Qt::LeftButton ? partAt(event->position()) : -1;
  if (pressed_ >= 0) setCurrentPart(pressed_);
}

void ChoicePicture::mouseReleaseEvent(QMouseEvent* event) {
  const int pressed = std::exchange(pressed_, -1);
  if (pressed >= 0 && event->button() == Qt::LeftButton && partAt(event->position()) == pressed)
    choose(pressed);
}

void ChoicePicture::focusInEvent(QFocusEvent* event) {
  Picture::focusInEvent(event);
  tellFocus();
}

void ChoicePicture::tellFocus() {
  if (!hasFocus() || currentPart() < 0) return;
  QAccessibleEvent moved(this, QAccessible::Focus);
  moved.setChild(currentPart());
  QAccessible::updateAccessibility(&moved);
}

void ChoicePicture::paintEvent(QPaintEvent* event) {
  Picture::paintEvent(event);
  const int at = currentPart();
  if (!hasFocus() || at < 0) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF ring = parts()[at].area;
  // Two colours, so that the ring shows on every fill.
  painter.setPen(QPen(palette().color(QPalette::Window), 4));
  painter.drawRect(ring.adjusted(2, 2, -2, -2));
  painter.setPen(QPen(palette().color(QPalette::WindowText), 2));
  painter.drawRect(ring.adjusted(2, 2, -2, -2));
}

}  // namespace pictures
