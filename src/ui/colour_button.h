#pragma once

#include <QPushButton>

namespace ui {

/// A colour "RRGGBB" that the user can change. The usual one stands for that of the system.
class ColourButton final : public QPushButton {
  Q_OBJECT
 public:
  ColourButton(QString usual, QWidget* parent);
  void setColour(const QString& colour);

 Q_SIGNALS:
  /// The user chose another one.
  void chosen(const QString& colour);

 private:
  void ask();
  QString usual_, colour_;
};

}  // namespace ui
