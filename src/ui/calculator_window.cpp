#include "ui/calculator_window.h"

#include <QRadioButton>
#include <QVBoxLayout>

#include "calculators/calculator_texts.h"
#include "model/names.h"
#include "text/numbers.h"

namespace ui {
namespace {

constexpr int longestNumber = 24;
constexpr int longestUnits = 12;
constexpr int optionColumns = 3;

/// Without a multiplier there is nothing to scale by.
void apply(const calculators::Transfer& transfer, model::MeasurementBlock& block) {
  if (!transfer.excitation.empty()) block.Excite = text::readNumber(transfer.excitation);
  if (transfer.multiplier.empty()) return;
  block.DefaultMult = text::readNumber(transfer.multiplier);
  if (!transfer.offset.empty()) block.DefaultOffset = text::readNumber(transfer.offset);
  if (!transfer.units.empty()) block.Units = transfer.units;
}

}  // namespace

CalculatorWindow::CalculatorWindow(SetupWindow& owner, const ScaledBlock& target,
                                   const QString& name, std::string_view title)
    : SetupWindow(owner, {name, qstring(title), "calculator", "calculators"}), target_(target) {}

void CalculatorWindow::build() {
  auto* contents = new QWidget(this);
  auto* form = new Form(contents);
  Form& sensor = form->group("Sensor");
  addInputs(sensor);
  addResults(form->group("Result"));
  form->rowStretch();
  auto* layout = new QVBoxLayout(contents);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(form);
  add(*form);
  setContents(contents);
  sensor.setFocus();
}

Field& CalculatorWindow::addNumber(Form& form, const FieldText& text,
                                   std::function<std::string&()> place, Form::TextRule rule) {
  return form.text(text, longestNumber, std::move(place), std::move(rule));
}

void CalculatorWindow::addUnits(Form& form, std::function<std::string&()> place) {
  form.text({"&Units:", calculators::help::outputUnits}, longestUnits, std::move(place),
            model::complaintAboutUnits);
}

void CalculatorWindow::addResult(Form& form, const FieldText& text,
                                 std::function<calculators::Result()> result) {
  form.readout(text, [result = std::move(result)] {
    const calculators::Result now = result();
    return now ? now->shown : std::string("-");
  });
}

Field& CalculatorWindow::addOptions(Form& form, const FieldText& text,
                                    const std::vector<Option>& options,
                                    const std::function<int()>& chosen,
                                    const std::function<void(int)>& choose) {
  auto* row = new QWidget(&form);
  auto* layout = new QGridLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  std::vector<QRadioButton*> buttons;
  for (const Option& each : options) {
    const int index = static_cast<int>(buttons.size());
    auto* button = new QRadioButton(qstring(each.caption), row);
    describe(*button, qstring(each.caption), qstring(each.help.empty() ? text.help : each.help));
    button->setObjectName(qstring(each.caption));
    connect(button, &QRadioButton::clicked, this, [&form, row, choose, index] {
      choose(index);
      form.noteEdit(row->objectName());
    });
    layout->addWidget(button, index / optionColumns, index % optionColumns);
    buttons.push_back(button);
  }
  row->setFocusProxy(buttons.front());
  Field& field = form.custom(text, row);
  field.show = [buttons, chosen] {
    const auto index = static_cast<std::size_t>(chosen());
    if (index < buttons.size()) buttons[index]->setChecked(true);
  };
  return field;
}

bool CalculatorWindow::mayBeDone() {
  apply(transfer(), working_.block(target_.kind, target_.number));
  return true;
}

}  // namespace ui
