#pragma once

#include <QValidator>
#include <functional>
#include <string>

namespace ui {

/// What may be typed into a box: the rule answers with the text that the box takes in its place, so
/// keys that it does not know are swallowed.
class TypingRule final : public QValidator {
  Q_OBJECT
 public:
  using Rule = std::function<QString(const QString& typed)>;
  TypingRule(Rule rule, QObject* parent) : QValidator(parent), rule_(std::move(rule)) {}
  State validate(QString& text, int& cursor) const override;

 private:
  Rule rule_;
};

/// A box that is left empty keeps what it had when it was entered.
class EmptyKeeper final : public QObject {
  Q_OBJECT
 public:
  EmptyKeeper(QWidget& box, std::function<std::string&()> place);
  /// Before the box stands for another value.
  void restore();
  void remember() { had_ = place_(); }

 Q_SIGNALS:
  void restored();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<std::string&()> place_;
  std::string had_;
};

/// Escape puts back the text that a box with a line to type in held before it was edited. Other
/// widgets stay as they are.
void restoreByEscape(QWidget& box);

}  // namespace ui
