#pragma once

#include <functional>
#include <vector>

#include "calculators/result.h"
#include "model/project.h"
#include "ui/setup_window.h"

namespace ui {

/// The block whose scaling a calculator works out.
struct ScaledBlock {
  model::BlockKind kind;
  std::size_t number;  // from 1
};

/// A calculator that a measurement window opens: inputs, which the project keeps, above what
/// follows from them. Done puts the results into the block. A calculator derives from it and names
/// its fields in addInputs() and addResults().
class CalculatorWindow : public SetupWindow {
  Q_OBJECT
 protected:
  CalculatorWindow(SetupWindow& owner, const ScaledBlock& target, const QString& name,
                   std::string_view title);
  /// Once, at the end of a calculator's constructor.
  void build();

  virtual void addInputs(Form& form) = 0;
  virtual void addResults(Form& form) = 0;
  /// What Done puts into the block.
  [[nodiscard]] virtual calculators::Transfer transfer() const = 0;

  [[nodiscard]] model::CalculatorInputs& inputs() { return working_.calculators; }
  [[nodiscard]] const model::CalculatorInputs& inputs() const { return working_.calculators; }
  [[nodiscard]] const model::MeasurementBlock& block() const {
    return working_.block(target_.kind, target_.number);
  }
  [[nodiscard]] const ScaledBlock& target() const { return target_; }

  /// A box for a number as text: what is no number gives no result, and is refused only by a rule.
  static Field& addNumber(Form& form, const FieldText& text, std::function<std::string&()> place,
                          Form::TextRule rule = {});
  static void addUnits(Form& form, std::function<std::string&()> place);
  static void addResult(Form& form, const FieldText& text,
                        std::function<calculators::Result()> result);
  /// Choices to click, side by side, told apart by their index.
  struct Option {
    std::string_view caption, help;
  };
  Field& addOptions(Form& form, const FieldText& text, const std::vector<Option>& options,
                    const std::function<int()>& chosen, const std::function<void(int)>& choose);

  bool mayBeDone() override;
  /// Numbers that were tried out are forgotten without a question.
  [[nodiscard]] std::optional<ports::Message> questionAboutEdits() const override {
    return std::nullopt;
  }

 private:
  ScaledBlock target_;
};

}  // namespace ui
