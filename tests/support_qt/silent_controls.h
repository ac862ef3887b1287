#pragma once

#include <QLabel>
#include <QWidget>
#include <set>

namespace support {

/// Controls that a person can use and that say nothing of themselves.
inline std::set<QString> silentControls(QWidget& window) {
  std::set<QString> silent;
  for (QWidget* each : window.findChildren<QWidget*>()) {
    if (!each->isVisible() || each->focusPolicy() == Qt::NoFocus) continue;
    if (qobject_cast<QLabel*>(each) != nullptr || each->objectName().startsWith("qt_")) continue;
    if (each->parentWidget()->inherits("QAbstractSpinBox") ||
        each->parentWidget()->inherits("QComboBox"))
      continue;
    if (each->accessibleName().isEmpty() || each->toolTip().isEmpty())
      silent.insert(
          QString("%1 %2 '%3'")
              .arg(each->metaObject()->className(), each->objectName(), each->accessibleName()));
  }
  return silent;
}

}  // namespace support
