#pragma once

#include <QSplitter>

#include "ui/setup_window.h"

namespace ui {

/// A setup window with a list, and beside it what belongs to the chosen row.
class ListWindow : public SetupWindow {
  Q_OBJECT
 public:
  /// From 0.
  void chooseRow(std::size_t row);
  [[nodiscard]] std::size_t row() const { return row_; }

 protected:
  ListWindow(const WindowPorts& ports, WindowInfo info, QWidget* parent);
  struct List {
    QString caption, help;
    std::vector<SheetColumn> columns;
    std::function<std::size_t()> rows;
    QString empty = {};  // stands in place of the detail while there are no rows
  };
  /// Once: the list at the left, `above` and `below` it, and `detail` at the right.
  void build(List list, QWidget* above, QWidget* detail, QWidget* below = nullptr);
  [[nodiscard]] SheetView& listView() { return *view_; }

 private:
  QWidget* detailOr(QWidget* detail, const List& list);

  SheetModel listed_;
  SheetView* view_ = nullptr;
  std::size_t row_ = 0;
};

/// Columns for what each table that is on stores of a row, processings up to a code.
std::vector<SheetColumn> tableColumns(const model::Project& project, int last,
                                      std::function<model::TableMasks&(std::size_t row)> masks);

}  // namespace ui
