#pragma once

#include <QLineEdit>
#include <functional>

namespace ui {

/// A box for a count. It swallows keys that are none of a count, and shows the old count until its
/// window has taken the new one.
class QuantityBox final : public QLineEdit {
  Q_OBJECT
 public:
  explicit QuantityBox(std::function<bool(char key)> takes, QWidget* parent = nullptr);

  void showCount(int count);
  /// A box that was left empty asks for 0.
  void settle();

 Q_SIGNALS:
  void wanted(int count);

 protected:
  void focusInEvent(QFocusEvent* event) override;

 private:
  QString shown_;
};

}  // namespace ui
