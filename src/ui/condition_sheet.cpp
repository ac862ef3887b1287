#include "ui/condition_sheet.h"

#include <QHeaderView>
#include <QPushButton>
#include <QVBoxLayout>

#include "model/conditions.h"
#include "model/pick_list.h"
#include "text/strings.h"
#include "ui/form.h"

namespace ui {

using control::ConditionCell;
using model::Condition;

ConditionSheet::ConditionSheet(ConditionRows rows, const model::Project& project, unsigned types,
                               const QString& caption, QWidget* parent)
    : QWidget(parent),
      rows_(std::move(rows)),
      project_(project),
      types_(types),
      view_(new SheetView(sheet_, this)) {
  sheet_.setColumns(columns(), [this] { return rows_.rows; });
  describe(*view_, caption,
           "A variable, how it is compared, and with what; or an expression. Delete clears cells, "
           "copy and paste work as in a spreadsheet.");
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(view_);
  if (rows_.count) {
    auto* remove = new QPushButton("Remo&ve this condition", this);
    remove->setAutoDefault(false);
    describe(*remove, remove->text(), "Takes the chosen row out; those below move up.");
    connect(remove, &QPushButton::clicked, this, [this] {
      const QModelIndex chosen = view_->currentIndex();
      if (chosen.isValid()) removeRow(static_cast<std::size_t>(chosen.row()));
    });
    layout->addWidget(remove, 0, Qt::AlignLeft);
  }
  arrangeColumns();
}

void ConditionSheet::arrangeColumns() {
  const int letter = view_->fontMetrics().averageCharWidth();
  std::vector<int> widths = {22, 7, 12, 18};  // in letters; the rest as their titles need
  if (rows_.ofState) widths = {22, 12, 18};
  int column = rows_.name ? 1 : 0;
  for (const int width : widths) view_->setColumnWidth(column++, width * letter);
  const int expression = sheet_.columnCount() - 2;
  view_->setColumnWidth(expression, 28 * letter);
  const int frame = 2 * view_->frameWidth() + view_->horizontalHeader()->sizeHint().height();
  const int shown = static_cast<int>(rows_.rows) * view_->verticalHeader()->defaultSectionSize();
  view_->setMinimumHeight(std::min(shown, 10 * view_->verticalHeader()->defaultSectionSize()) +
                          frame);
  view_->setMinimumWidth(110 * letter);
}

std::vector<SheetColumn> ConditionSheet::columns() {
  SheetColumn variable = column(ConditionCell::variable, "Variable", "What is tested.");
  variable.offers = [this] { return variables(); };
  variable.freeText = true;
  SheetColumn compare = column(ConditionCell::compare, "Operator", "How it is compared.");
  compare.offers = control::comparisons;
  std::vector<SheetColumn> columns;
  if (rows_.name) columns.push_back({"Condition", "What the condition decides.", rows_.name});
  columns.push_back(std::move(variable));
  if (!rows_.ofState)
    columns.push_back(column(ConditionCell::index, "Index",
                             "The element of an array; nothing where the variable names one."));
  columns.push_back(std::move(compare));
  columns.push_back(valueColumn());
  if (rows_.logic) columns.push_back(logicColumn());
  columns.push_back(column(ConditionCell::expression, "Free expression",
                           "An expression of the program language; it takes the place of the "
                           "variable and its comparison."));
  columns.push_back(readsColumn());
  return columns;
}

SheetColumn ConditionSheet::column(ConditionCell cell, const QString& title, const QString& help) {
  SheetColumn column;
  column.title = title;
  column.help = help;
  column.text = [this, cell](std::size_t row) {
    return counts(row) ? control::cellText(cell, rows_.at(row)) : std::string();
  };
  column.store = [this, cell](std::size_t row, std::string_view text) {
    return store(row, cell, text);
  };
  return column;
}

SheetColumn ConditionSheet::valueColumn() {
  if (rows_.ofState)
    return column(ConditionCell::value, "Value",
                  "A number, or True and False where a flag is tested. Another variable to compare "
                  "with goes into the free expression.");
  SheetColumn value =
      column(ConditionCell::value, "Value or variable",
             "A number, another variable, or True and False where a flag is tested.");
  value.offers = [this] { return variables(); };
  value.freeText = true;
  return value;
}

SheetColumn ConditionSheet::logicColumn() {
  SheetColumn column;
  column.title = "Joined by";
  column.help = "How the condition is joined to the next one.";
  column.text = [this](std::size_t row) { return counts(row) ? rows_.logic(row) : std::string(); };
  column.store = [this](std::size_t row, std::string_view text) { return storeLogic(row, text); };
  column.offers = [] { return std::vector<std::string>{"And", "Or"}; };
  return column;
}

SheetColumn ConditionSheet::readsColumn() {
  return {"Reads", "The condition as the program has it.", [this](std::size_t row) {
            if (!counts(row) || (!rows_.count && rows_.at(row) == Condition{}))
              return std::string();
            const std::string text = model::conditionText(rows_.at(row));
            return text.empty() ? "not complete; left out" : text;
          }};
}

std::vector<std::string> ConditionSheet::variables() const {
  return model::variableNames(project_, types_);
}

bool ConditionSheet::counts(std::size_t row) const {
  return !rows_.count || static_cast<int>(row) < rows_.count();
}

bool ConditionSheet::isBlank(std::size_t row) const {
  const bool joined = rows_.logic && rows_.logic(row) != "And";
  return rows_.at(row) == Condition{} && !joined;
}

/// What a row held before it counted is forgotten.
void ConditionSheet::addUpTo(std::size_t row) {
  if (counts(row)) return;
  for (std::size_t r = static_cast<std::size_t>(std::max(rows_.count(), 0)); r <= row; ++r) {
    rows_.at(r) = {};
    if (rows_.logic) rows_.logic(r) = "And";
  }
  rows_.setCount(static_cast<int>(row) + 1);
}

void ConditionSheet::dropBlankEnd() {
  if (!rows_.count) return;
  int count = rows_.count();
  while (count > 0 && isBlank(static_cast<std::size_t>(count) - 1)) --count;
  if (count != rows_.count()) rows_.setCount(count);
}

Complaint ConditionSheet::store(std::size_t row, ConditionCell cell, std::string_view text) {
  if (!counts(row) && text::trimmed(text).empty()) return std::nullopt;
  Condition condition = counts(row) ? rows_.at(row) : Condition{};
  if (Complaint complaint = control::storeCell(cell, text, condition, project_)) return complaint;
  if (rows_.ofState)
    if (Complaint complaint = control::complaintAboutStateCondition(condition)) return complaint;
  addUpTo(row);
  rows_.at(row) = std::move(condition);
  dropBlankEnd();
  return std::nullopt;
}

Complaint ConditionSheet::storeLogic(std::size_t row, std::string_view text) {
  text = text::trimmed(text);
  if (!counts(row) && text.empty()) return std::nullopt;
  const bool isOr = text::equalsIgnoringCase(text, "Or");
  if (!isOr && !text.empty() && !text::equalsIgnoringCase(text, "And"))
    return text::concat("'", text, "' joins no conditions; And and Or do");
  addUpTo(row);
  rows_.logic(row) = isOr ? "Or" : "And";
  dropBlankEnd();
  return std::nullopt;
}

void ConditionSheet::removeRow(std::size_t row) {
  if (!rows_.count || !counts(row)) return;
  const QString what = QString("removed condition %1").arg(row + 1);
  if (rows_.remove) {
    const Complaint remark = rows_.remove(row);
    Q_EMIT sheet_.edited(what);
    if (remark) Q_EMIT sheet_.refused(qstring(*remark));
    return;
  }
  const auto last = static_cast<std::size_t>(rows_.count()) - 1;
  for (std::size_t r = row; r < last; ++r) {
    rows_.at(r) = rows_.at(r + 1);
    if (rows_.logic) rows_.logic(r) = rows_.logic(r + 1);
  }
  rows_.at(last) = {};
  if (rows_.logic) rows_.logic(last) = "And";
  rows_.setCount(static_cast<int>(last));
  Q_EMIT sheet_.edited(what);
}

}  // namespace ui
