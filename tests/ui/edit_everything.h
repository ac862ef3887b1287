#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>

#include "ui/number_box.h"
#include "ui/sheet.h"

namespace support {

inline void editBox(QCheckBox& box) { box.click(); }

inline void editBox(QComboBox& box) {
  if (box.count() < 2) return;
  box.setCurrentIndex((box.currentIndex() + 1) % box.count());
  Q_EMIT box.activated(box.currentIndex());
}

inline void editBox(ui::NumberBox& box) { box.stepBy(1); }

inline void editBox(QLineEdit& box) {
  if (box.parentWidget()->inherits("QAbstractSpinBox") || box.parentWidget()->inherits("QComboBox"))
    return;
  QTest::keyClick(&box, Qt::Key_End);
  QTest::keyClicks(&box, "1");
}

/// The first row: what the cells offer last, or a digit.
inline void editBox(ui::SheetView& view) {
  auto& sheet = dynamic_cast<ui::SheetModel&>(*view.model());
  for (int column = 0; column < sheet.columnCount() && sheet.rowCount() > 0; ++column) {
    const ui::SheetColumn& cells = sheet.column(column);
    const auto offers = cells.offers ? cells.offers() : std::vector<std::string>{};
    if (cells.store)
      sheet.setData(sheet.index(0, column), offers.empty() ? "7" : ui::qstring(offers.back()),
                    Qt::EditRole);
  }
}

template <class Box>
void editAll(QWidget& window) {
  QList<QPointer<Box>> boxes;
  for (Box* each : window.findChildren<Box*>()) boxes += each;
  for (const QPointer<Box>& each : boxes)
    if (each && each->isVisible() && each->isEnabled()) editBox(*each);
}

/// Something else in every control of a window.
inline void editEverything(QWidget& window) {
  editAll<ui::SheetView>(window);
  editAll<QLineEdit>(window);
  editAll<ui::NumberBox>(window);
  editAll<QCheckBox>(window);
  editAll<QComboBox>(window);
}

}  // namespace support
