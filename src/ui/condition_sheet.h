#pragma once

#include <QWidget>
#include <functional>

#include "control/condition_cells.h"
#include "model/project.h"
#include "ui/sheet.h"

namespace ui {

/// The conditions that a sheet edits.
struct ConditionRows {
  std::size_t rows = model::maxConditions;
  std::function<model::Condition&(std::size_t row)> at;  // from 0
  /// How many of the rows count; the sheet raises and lowers the number. Without it all rows do.
  std::function<int()> count = {};
  std::function<void(int)> setCount = {};
  /// Takes one of the rows that count out, where there is more to it than moving the others up;
  /// answers with what is to be told of it.
  std::function<Complaint(std::size_t row)> remove = {};
  /// "And" or "Or", to the next row.
  std::function<std::string&(std::size_t row)> logic = {};
  /// What stands before a row in place of its number.
  std::function<std::string(std::size_t row)> name = {};
  /// Conditions of flags, ports and outputs: no index, and a number to compare with.
  bool ofState = false;
};

/// A sheet of conditions: variable, index, comparison, value or variable, and an expression that
/// takes their place. Variables are picked from those of the project.
class ConditionSheet final : public QWidget {
  Q_OBJECT
 public:
  /// `types` are the variables offered, bits of model::VariableTypes.
  ConditionSheet(ConditionRows rows, const model::Project& project, unsigned types,
                 const QString& caption, QWidget* parent);

  [[nodiscard]] SheetModel& sheet() { return sheet_; }
  [[nodiscard]] SheetView& view() { return *view_; }
  /// The rows below move up.
  void removeRow(std::size_t row);

 private:
  [[nodiscard]] std::vector<SheetColumn> columns();
  [[nodiscard]] SheetColumn column(control::ConditionCell cell, const QString& title,
                                   const QString& help);
  [[nodiscard]] SheetColumn valueColumn();
  [[nodiscard]] SheetColumn logicColumn();
  [[nodiscard]] SheetColumn readsColumn();
  [[nodiscard]] std::vector<std::string> variables() const;
  [[nodiscard]] bool counts(std::size_t row) const;
  [[nodiscard]] bool isBlank(std::size_t row) const;
  void addUpTo(std::size_t row);
  void dropBlankEnd();
  void arrangeColumns();
  Complaint store(std::size_t row, control::ConditionCell cell, std::string_view text);
  Complaint storeLogic(std::size_t row, std::string_view text);

  ConditionRows rows_;
  const model::Project& project_;
  unsigned types_;
  SheetModel sheet_;
  SheetView* view_;
};

}  // namespace ui
