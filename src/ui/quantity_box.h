#pragma once

#include <QLineEdit>
#include <functional>

namespace ui {

/// A box for a count. It swallows keys that are none of a count, and shows the
/// old count until its window has taken the new one. The count may be a code of
/// one digit: then a key replaces it.
class QuantityBox final : public QLineEdit {
  Q_OBJECT
 public:
  enum class Digits { one, any };
  QuantityBox(Digits digits, std::function<bool(char key)> takes, QWidget* parent);

  void showCount(int count);

 Q_SIGNALS:
  void wanted(int count);

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void readText(const QString& typed);
  /// A box that was left empty asks for 0.
  void settle();

  Digits digits_;
  std::function<bool(char key)> takes_;
  QString shown_;
};

}  // namespace ui
