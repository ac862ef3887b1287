#pragma once

#include "pictures/picture.h"

namespace pictures {

/// A picture whose parts can be chosen: by mouse, or by the arrow keys, Home, End, Enter and Space.
/// Screen readers meet its parts as the entries of a list.
class ChoicePicture : public Picture {
  Q_OBJECT
 public:
  explicit ChoicePicture(QWidget* parent = nullptr);

  [[nodiscard]] QList<Part> parts() const override = 0;
  /// The part that the keyboard is at; -1 when there are none.
  [[nodiscard]] int currentPart() const;
  void setCurrentPart(int part);
  /// A part was chosen.
  virtual void choose(int part) = 0;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int partBeside(int key) const;
  void tellFocus();

  int current_ = 0;
  int pressed_ = -1;
};

}  // namespace pictures
