#pragma once

#include "pictures/choice_picture.h"

namespace pictures {

/// One place of the rack.
struct Slot {
  int number = 0;
  QString module;  // what stands on its front; for empty places too
  int kind = -1;   // colour of the module; -1: empty
  QString help;
};

/// The rack of the logger: numbered modules side by side, coloured by their kind. In a narrow
/// window it goes on in further rows.
class SlotStrip final : public ChoicePicture {
  Q_OBJECT
 public:
  explicit SlotStrip(QWidget* parent = nullptr);

  void setSlots(const QList<Slot>& modules);
  /// Colour of a kind, for whatever describes the strip.
  static QColor colourOf(int kind, const QPalette& palette);

  [[nodiscard]] QList<Part> parts() const override;
  void choose(int part) override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;

 Q_SIGNALS:
  void slotClicked(int number);

 protected:
  void draw(QPainter& painter) const override;
  [[nodiscard]] QString words() const override;

 private:
  [[nodiscard]] int rowsIn(int width) const;
  [[nodiscard]] int columnsIn(int width) const;
  [[nodiscard]] double leastWidth() const;
  [[nodiscard]] double rowHeight() const;
  void drawSlot(QPainter& painter, const Slot& slot, const QRectF& place) const;

  QList<Slot> slots_;
};

}  // namespace pictures
