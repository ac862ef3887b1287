#include "ui/frm_trigger.h"

#include <QTabWidget>
#include <QVBoxLayout>
#include <limits>

#include "model/conditions.h"
#include "text/strings.h"
#include "ui/listed_variables.h"

namespace ui {

frmTrigger::frmTrigger(SetupWindow& owner, std::size_t table)
    : SetupWindow(owner, {"frmTrigger", QString("Trigger of Table %1").arg(table), "trigger"}),
      number_(table),
      before_(this->table()) {
  auto* contents = new QWidget(this);
  auto* layout = new QVBoxLayout(contents);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* tabs = new QTabWidget(contents);
  tabs->addTab(page(0), "&Start");
  tabs->addTab(page(1), "Sto&p");
  for (QWidget* each : {static_cast<QWidget*>(tabs), static_cast<QWidget*>(tabs->tabBar())})
    describe(*each, "Conditions", "Choose what starts or what stops the table.");
  layout->addWidget(tabs, 1);
  auto* form = new Form(contents);
  addSettings(*form);
  layout->addWidget(form);
  add(*form);
  setContents(contents);
  resize(980, 720);
}

QWidget* frmTrigger::page(int trigger) {
  auto* page = new QWidget(this);
  auto* layout = new QVBoxLayout(page);
  auto* sheet = new ConditionSheet(rowsOf(trigger), working_, listedTypes(ports_),
                                   trigger == 0 ? "Start conditions" : "Stop conditions", page);
  sheets_[static_cast<std::size_t>(trigger)] = sheet;
  auto* words = new QLabel(page);
  words->setWordWrap(true);
  words->setTextInteractionFlags(Qt::TextSelectableByMouse);
  onRefresh([this, words, trigger] { words->setText(qstring(wordsOf(trigger))); });
  layout->addWidget(sheet, 1);
  layout->addWidget(words);
  add(sheet->sheet());
  return page;
}

/// A stop count below 0 in old projects stands for that of the start conditions.
int frmTrigger::countOf(int trigger) const {
  const bool likeStart = trigger == 0 || table().TrigTabStop < 0;
  return likeStart ? table().TrigTable : table().TrigTabStop;
}

ConditionRows frmTrigger::rowsOf(int trigger) {
  const auto condition = [](std::size_t row) { return static_cast<int>(row) + 1; };
  ConditionRows rows;
  rows.at = [this, trigger, condition](std::size_t row) -> model::Condition& {
    return table().conditions.trigger(trigger, condition(row));
  };
  rows.logic = [this, trigger, condition](std::size_t row) -> std::string& {
    return table().conditions.logic(trigger, condition(row));
  };
  rows.count = [this, trigger] { return countOf(trigger); };
  rows.setCount = [this, trigger](int count) {
    (trigger == 0 ? table().TrigTable : table().TrigTabStop) = static_cast<std::int16_t>(count);
  };
  return rows;
}

std::string frmTrigger::wordsOf(int trigger) const {
  if (table().DisableTrigger) return "The trigger is disabled.";
  const std::string expression = model::triggerText(table(), trigger);
  if (trigger == 0)
    return expression.empty() ? "No condition: the table starts at once."
                              : text::concat("The table starts when ", expression);
  return expression.empty() ? "No condition: the table does not stop."
                            : text::concat("The table stops when ", expression);
}

void frmTrigger::addSettings(Form& form) {
  constexpr double most = std::numeric_limits<std::int32_t>::max();
  form.number({"Records &before:", "Records from before the start that are kept."}, Bounds{0, most},
              [this]() -> std::int32_t& { return table().PreTriggerScans; });
  form.number({"Records &after:", "Records that are stored after the stop."}, Bounds{0, most},
              [this]() -> std::int32_t& { return table().AftTriggerScans; });
  form.check({"S&ingle trigger", "Starts once, while the table has no record."},
             [this]() -> bool& { return table().SingleTrigger; });
  form.check({"Disab&le", "The conditions are kept, but do not count."},
             [this]() -> bool& { return table().DisableTrigger; });
}

bool frmTrigger::mayBeDone() {
  if (table() != before_) model::storeDataEvent(table());
  return true;
}

std::vector<std::string> frmTrigger::previewNames() const {
  const std::string& name = table().TableName;
  return {text::concat("TriggerCall", name, "{}"), text::concat(name, "{}")};
}

}  // namespace ui
