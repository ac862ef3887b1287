#pragma once

#include <QValidator>
#include <functional>

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

/// Escape puts back the text that a box with a line to type in held before it was edited. Other
/// widgets stay as they are.
void restoreByEscape(QWidget& box);

}  // namespace ui
