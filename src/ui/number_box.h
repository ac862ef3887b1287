#pragma once

#include <QAbstractSpinBox>
#include <QLineEdit>
#include <functional>
#include <optional>

#include "model/block_rules.h"
#include "ui/texts.h"

namespace ui {

using Bounds = model::FieldBounds;

/// A box for a number with a decimal point in any locale. It shows any value that a project holds,
/// also one outside its bounds, and never changes one by itself.
class NumberBox final : public QAbstractSpinBox {
  Q_OBJECT
 public:
  NumberBox(const Bounds& bounds, bool whole, QWidget* parent = nullptr);

  /// The text stays as typed while it stands for the value.
  void setValue(double value);
  void setBounds(const Bounds& bounds);
  /// How numbers are shown: "#0.0". Without it they are as short as can be.
  void setPattern(std::string_view pattern) { pattern_ = pattern; }
  /// What the arrows make of a value, up (1) or down (-1), in place of the step of the bounds.
  using StepRule = std::function<double(double value, int direction)>;
  void setStepRule(StepRule rule) { stepRule_ = std::move(rule); }
  /// Nothing while the text is not a number within the bounds.
  [[nodiscard]] std::optional<double> value() const;
  [[nodiscard]] Complaint complaint() const;

  /// Typed or stepped since it was set to false.
  void setModifiedByUser(bool modified) { modified_ = modified; }
  [[nodiscard]] bool isModifiedByUser() const { return modified_; }

  void stepBy(int steps) override;
  [[nodiscard]] QSize sizeHint() const override;
  QValidator::State validate(QString&, int&) const override { return QValidator::Acceptable; }

 Q_SIGNALS:
  void edited();

 protected:
  [[nodiscard]] StepEnabled stepEnabled() const override;

 private:
  Bounds bounds_;
  bool whole_;
  std::string pattern_;
  StepRule stepRule_;
  bool modified_ = false;
};

}  // namespace ui
