#include "ui/frm_write_if.h"

#include <QVBoxLayout>

#include "model/conditions.h"
#include "text/strings.h"
#include "ui/listed_variables.h"

namespace ui {

constexpr int longestGrouping = 250;

frmWriteIf::frmWriteIf(SetupWindow& owner, std::size_t table)
    : SetupWindow(owner, {"frmWriteIf", QString("Write If of Table %1").arg(table), "write if"}),
      number_(table),
      before_(this->table()) {
  auto* contents = new QWidget(this);
  auto* layout = new QVBoxLayout(contents);
  sheet_ = new ConditionSheet(rows(), working_, listedTypes(ports_), "Conditions for a record",
                              contents);
  auto* expression = new QLabel(contents);
  expression->setWordWrap(true);
  expression->setTextInteractionFlags(Qt::TextSelectableByMouse);
  onRefresh([this, expression] { expression->setText(qstring(words())); });
  auto* form = new Form(contents);
  addSettings(*form);
  layout->addWidget(sheet_, 1);
  layout->addWidget(expression);
  layout->addWidget(form);
  add(sheet_->sheet());
  add(*form);
  setContents(contents);
  resize(980, 640);
}

ConditionRows frmWriteIf::rows() {
  ConditionRows rows;
  rows.at = [this](std::size_t row) -> model::Condition& {
    return table().conditions.writeIf(static_cast<int>(row) + 1);
  };
  rows.count = [this] { return table().WriteIf; };
  rows.setCount = [this](int count) { table().WriteIf = static_cast<std::int16_t>(count); };
  rows.remove = [this](std::size_t row) -> Complaint {
    const std::string before = table().GroupWriteIf;
    const bool kept = model::removeWriteIf(table(), static_cast<int>(row) + 1);
    if (table().GroupWriteIf == before) return std::nullopt;
    if (!kept) return text::concat("The grouping '", before, "' went with the condition.");
    return text::concat("The grouping is now ", table().GroupWriteIf, ".");
  };
  return rows;
}

void frmWriteIf::addSettings(Form& form) {
  form.text({"&Grouping:",
             "The numbers of the conditions joined by And, Or, Not and parentheses, as in "
             "1 And (2 Or 3); nothing joins all of them by And."},
            longestGrouping, [this]() -> std::string& { return table().GroupWriteIf; });
  form.check({"Disab&le", "The conditions are kept, but do not count."},
             [this]() -> bool& { return table().DisableWriteIf; });
}

std::string frmWriteIf::words() const {
  if (table().DisableWriteIf) return "The conditions are disabled.";
  if (const auto complaint = model::complaintAboutGrouping(table())) return *complaint;
  const std::string expression = model::writeIfText(table());
  return expression.empty() ? "No condition: every record is stored."
                            : text::concat("A record is stored if ", expression);
}

bool frmWriteIf::mayBeDone() {
  const auto complaint = model::complaintAboutGrouping(table());
  if (!complaint || table() == before_) return true;
  ports_.messages.show({.title = "WRITE IF GROUPING", .text = *complaint});
  return false;
}

std::vector<std::string> frmWriteIf::previewNames() const {
  const std::string& name = table().TableName;
  return {text::concat("TriggerCall", name, "{}"), name};
}

}  // namespace ui
