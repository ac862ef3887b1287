#include "ui/colour_button.h"

#include <QColorDialog>
#include <QPainter>

namespace ui {
namespace {

QIcon swatch(const QColor& colour, const QPalette& palette, const QSize& size) {
  QPixmap picture(size);
  picture.fill(colour);
  QPainter painter(&picture);
  painter.setPen(palette.color(QPalette::ButtonText));
  painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
  return picture;
}

}  // namespace

ColourButton::ColourButton(QString usual, QWidget* parent)
    : QPushButton(parent), usual_(std::move(usual)) {
  setAutoDefault(false);
  connect(this, &QPushButton::clicked, this, &ColourButton::ask);
}

void ColourButton::setColour(const QString& colour) {
  colour_ = colour;
  const bool usual = colour == usual_;
  setText(usual ? "As the system" : "#" + colour);
  setIcon(usual ? QIcon() : swatch(QColor("#" + colour), palette(), iconSize()));
}

void ColourButton::ask() {
  const QColor picked = QColorDialog::getColor(QColor("#" + colour_), this, accessibleName());
  if (picked.isValid()) Q_EMIT chosen(picked.name().mid(1).toUpper());
}

}  // namespace ui
