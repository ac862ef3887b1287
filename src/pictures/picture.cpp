#include "pictures/picture.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace pictures {

Picture::Picture(QWidget* parent) : QWidget(parent) {}

QString Picture::helpAt(const QPointF& place) const {
  const int part = partAt(place);
  return part < 0 ? QString() : parts()[part].help;
}

void Picture::renew() {
  setAccessibleDescription(words());
  updateGeometry();
  update();
}

int Picture::partAt(const QPointF& place) const {
  const QList<Part> all = parts();
  for (qsizetype i = all.size() - 1; i >= 0; --i)
    if (all[i].area.contains(place)) return static_cast<int>(i);
  return -1;
}

bool Picture::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* asked = static_cast<QHelpEvent*>(event);
  const QString help = helpAt(asked->pos());
  if (help.isEmpty()) return QWidget::event(event);  // the tip of the whole, if there is one
  // Names are the user's: they are text, whatever signs they hold.
  QToolTip::showText(asked->globalPos(),
                     "<qt>" + help.toHtmlEscaped().replace('\n', "<br>") + "</qt>", this);
  return true;
}

void Picture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  draw(painter);
}

}  // namespace pictures
