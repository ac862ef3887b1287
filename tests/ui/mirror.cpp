#include "mirror.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <algorithm>
#include <map>
#include <vector>

#include "hands.h"
#include "ui/calculator_window.h"
#include "ui/number_box.h"

namespace support {
namespace {

constexpr int mostRounds = 6;  // until a window settles: one control can change what others offer

QString nameOf(const QWidget& widget) {
  return widget.objectName().isEmpty() ? widget.accessibleName() : widget.objectName();
}

/// Parts of one kind in two windows, told apart by their names and, where those are alike, by their
/// order; those that are to be seen in both.
template <class Widget>
std::vector<std::pair<Widget*, Widget*>> pairsOf(QWidget& mine, QWidget& shown) {
  std::map<QString, QList<Widget*>> others;
  for (Widget* each : shown.findChildren<Widget*>())
    if (each->window() == &shown) others[nameOf(*each)].append(each);
  std::vector<std::pair<Widget*, Widget*>> pairs;
  for (Widget* each : mine.findChildren<Widget*>()) {
    QList<Widget*>& alike = others[nameOf(*each)];
    if (each->window() != &mine || alike.isEmpty()) continue;
    Widget* other = alike.takeFirst();
    if (each->isVisible() && other->isVisible()) pairs.emplace_back(each, other);
  }
  return pairs;
}

template <class Widget>
std::pair<Widget*, Widget*> pairNamed(QWidget& mine, QWidget& shown, const QString& name) {
  for (const auto& pair : pairsOf<Widget>(mine, shown))
    if (nameOf(*pair.first) == name) return pair;
  return {};
}

/// Lists that choose what is shown, and are no setting themselves.
bool choosesPage(const QComboBox& box) {
  return nameOf(box) == "Module:" || nameOf(box) == "Table:";
}

/// Rows that have more to show than their cells.
bool hasPages(const ui::SheetView& sheet) {
  return QStringList{"Blocks", "list", "ports"}.contains(nameOf(sheet));
}

bool opensWindow(const QPushButton& button) {
  static const QRegularExpression others(
      "^(Done|Cancel|Help|Print|Add|Remove|Import|Load|Save|Insert|Calculate|Table times|"
      "Table sizes)");
  return !QString(button.text()).remove('&').contains(others);
}

/// A window that shows the same wherever it is opened from.
bool isOfAllPages(const ui::SetupWindow& window) {
  return dynamic_cast<const ui::CalculatorWindow*>(&window) != nullptr;
}

ui::SetupWindow* innerOf(const QWidget& window) {
  for (auto* each : window.findChildren<ui::SetupWindow*>(Qt::FindDirectChildrenOnly))
    if (each->isVisible()) return each;
  return nullptr;
}

QPushButton* buttonOf(const QWidget& window, const QString& beginning) {
  for (auto* each : window.findChildren<QPushButton*>())
    if (each->window() == &window && QString(each->text()).remove('&').startsWith(beginning))
      return each;
  return nullptr;
}

/// What a control shows; nothing for what is no control.
QString textOf(const QWidget& widget) {
  if (const auto* box = qobject_cast<const QComboBox*>(&widget)) return box->currentText();
  if (const auto* box = qobject_cast<const ui::NumberBox*>(&widget)) return box->text();
  if (const auto* box = qobject_cast<const ui::MaskBox*>(&widget)) return box->text();
  if (const auto* box = qobject_cast<const QLineEdit*>(&widget)) return box->text();
  if (const auto* box = qobject_cast<const QAbstractButton*>(&widget))
    return box->isChecked() ? "on" : "off";
  return {};
}

void enter(QWidget& widget, const QString& text) {
  auto* list = qobject_cast<QComboBox*>(&widget);
  if (list != nullptr && (!list->isEditable() || list->findText(text) >= 0))
    chooseEntry(*list, text);
  else if (auto* box = qobject_cast<ui::MaskBox*>(&widget))
    tickMask(*box, text);
  else if (auto* button = qobject_cast<QAbstractButton*>(&widget))
    press(*button);
  else
    typeText(widget, text);
}

/// Boxes and buttons that hold a setting.
bool isControl(const QWidget& widget) {
  if (const auto* box = qobject_cast<const QComboBox*>(&widget))
    return !choosesPage(*box) && nameOf(*box) != "Variables";  // those to insert
  if (qobject_cast<const QLineEdit*>(&widget) != nullptr)
    return qobject_cast<QAbstractSpinBox*>(widget.parentWidget()) == nullptr &&
           qobject_cast<QComboBox*>(widget.parentWidget()) == nullptr;
  return qobject_cast<const ui::NumberBox*>(&widget) != nullptr ||
         qobject_cast<const ui::MaskBox*>(&widget) != nullptr ||
         qobject_cast<const QCheckBox*>(&widget) != nullptr ||
         qobject_cast<const QRadioButton*>(&widget) != nullptr;
}

struct Cell {
  int row, column;
};

QString cellText(const ui::SheetView& sheet, const Cell& cell) {
  return sheet.model()->index(cell.row, cell.column).data(Qt::EditRole).toString();
}

/// Cells that can be edited and read other than in a sheet of the same columns.
std::vector<Cell> differentCells(const ui::SheetView& mine, const ui::SheetView& shown) {
  std::vector<Cell> cells;
  for (int row = 0; row < std::min(mine.model()->rowCount(), shown.model()->rowCount()); ++row)
    for (int column = 0; column < mine.model()->columnCount(); ++column) {
      const bool editable =
          mine.model()->flags(mine.model()->index(row, column)) & Qt::ItemIsEditable;
      if (editable && cellText(mine, {row, column}) != cellText(shown, {row, column}))
        cells.push_back({row, column});
    }
  return cells;
}

/// Lists that can only be read follow from the settings.
bool isEdited(const ui::SheetView& sheet) {
  const auto& cells = dynamic_cast<const ui::SheetModel&>(*sheet.model());
  for (int column = 0; column < cells.columnCount(); ++column)
    if (cells.column(column).store) return true;
  return false;
}

QString titlesOf(const ui::SheetView& sheet) {
  QStringList titles;
  for (int column = 0; column < sheet.model()->columnCount(); ++column)
    titles += sheet.model()->headerData(column, Qt::Horizontal).toString();
  return titles.join('|');
}

/// The rectangle of cells from the first one of some to the last one, as a spreadsheet copies it.
QString copied(const ui::SheetView& sheet, const std::vector<Cell>& cells, int firstColumn) {
  int last = firstColumn;
  for (const Cell& each : cells) last = std::max(last, each.column);
  QString text;
  for (int row = cells.front().row; row <= cells.back().row; ++row)
    for (int column = firstColumn; column <= last; ++column)
      text += cellText(sheet, {row, column}) + (column < last ? '\t' : '\n');
  return text;
}

void typeCell(ui::SheetView& mine, const ui::SheetView& shown, const Cell& cell) {
  const QString wanted = cellText(shown, cell);
  if (cellText(mine, cell) != wanted) enterCell(mine, cell.row, cell.column, wanted);
}

/// All or nothing: a cell that is refused keeps the others out.
void pasteRest(ui::SheetView& mine, const ui::SheetView& shown) {
  const std::vector<Cell> cells = differentCells(mine, shown);
  if (cells.empty()) return;
  int column = cells.front().column;
  for (const Cell& each : cells) column = std::min(column, each.column);
  pasteAtCell(mine, cells.front().row, column, copied(shown, cells, column));
}

}  // namespace

void Mirror::note(const QWidget& control, const QString& is, const QString& wanted) {
  const QString text = QString("%1 %2%3: shows '%4', wanted '%5'; %6")
                           .arg(control.window()->objectName(), page_, nameOf(control), is, wanted,
                                control.toolTip().section('\n', -1));
  left_.insert(text.toStdString());
}

void Mirror::copyControls(QWidget& mine, QWidget& shown) {
  for (const auto& [box, other] : pairsOf<QWidget>(mine, shown))
    if (box->isVisible() && other->isVisible() && isControl(*box)) copyControl(*box, *other);
}

void Mirror::copyControl(QWidget& mine, const QWidget& shown) {
  const QString wanted = textOf(shown);
  const bool isOtherChoice = qobject_cast<QRadioButton*>(&mine) != nullptr && wanted == "off";
  if (textOf(mine) == wanted || isOtherChoice) return;
  if (mine.isEnabled()) enter(mine, wanted);
  if (textOf(mine) == wanted)
    ++edits_;
  else
    note(mine, textOf(mine), wanted);
}

void Mirror::copySheet(ui::SheetView& mine, const ui::SheetView& shown) {
  if (!isEdited(mine)) return;
  if (titlesOf(mine) != titlesOf(shown)) return note(mine, titlesOf(mine), titlesOf(shown));
  const int rows = mine.model()->rowCount(), wantedRows = shown.model()->rowCount();
  if (rows != wantedRows)
    note(mine, QString("%1 rows").arg(rows), QString("%1 rows").arg(wantedRows));
  const std::size_t before = differentCells(mine, shown).size();
  if (before == 0) return;
  if (!typed_.contains(nameOf(mine))) typeRow(mine, shown);
  pasteRest(mine, shown);
  for (const Cell& cell : differentCells(mine, shown)) typeCell(mine, shown, cell);
  const std::vector<Cell> cells = differentCells(mine, shown);
  edits_ += static_cast<int>(before) - static_cast<int>(cells.size());
  for (const Cell& cell : cells)
    note(mine, QString("row %1 '%2'").arg(cell.row + 1).arg(cellText(mine, cell)),
         cellText(shown, cell));
}

/// The first row of a sheet is typed cell by cell; the others are pasted, as people do.
void Mirror::typeRow(ui::SheetView& mine, const ui::SheetView& shown) {
  const std::vector<Cell> cells = differentCells(mine, shown);
  for (const Cell& cell : cells)
    if (cell.row == cells.front().row) typeCell(mine, shown, cell);
  typed_ += nameOf(mine);
}

/// A block of a filter module is added to the module that is chosen.
void Mirror::addRows(ui::SetupWindow& mine, ui::SetupWindow& shown) {
  QPushButton* add = buttonOf(mine, "Add ");
  const auto [module, shownModule] = pairNamed<QComboBox>(mine, shown, "Module:");
  for (const auto& [sheet, other] : pairsOf<ui::SheetView>(mine, shown))
    for (int row = sheet->model()->rowCount(); row < other->model()->rowCount(); ++row) {
      if (add == nullptr) break;
      other->setCurrentIndex(other->model()->index(row, 0));
      if (module != nullptr) chooseEntry(*module, shownModule->currentText());
      press(*add);
      if (sheet->model()->rowCount() <= row) break;
      ++edits_;
    }
}

/// The cells once more behind the pages, which have a say in what they take.
void Mirror::forRows(ui::SheetView& mine, ui::SheetView& shown, const Act& act) {
  const auto leftBefore = left_;
  copySheet(mine, shown);
  left_ = leftBefore;
  const int rows = std::min(mine.model()->rowCount(), shown.model()->rowCount());
  for (int row = 0; row < rows; ++row) {
    shown.setCurrentIndex(shown.model()->index(row, 0));
    clickCell(mine, row, 0);
    const QString outer = std::exchange(page_, page_ + QString("row %1, ").arg(row + 1));
    act();
    page_ = outer;
  }
  copySheet(mine, shown);
}

/// The module or table whose settings are shown.
void Mirror::forEntries(QComboBox& mine, QComboBox& shown, const Act& act) {
  for (int entry = 0; entry < shown.count(); ++entry) {
    shown.setCurrentIndex(entry);
    Q_EMIT shown.activated(entry);
    chooseEntry(mine, shown.currentText());
    act();
  }
}

void Mirror::forTabs(QTabBar& mine, QTabBar& shown, const Act& act) {
  for (int tab = 0; tab < mine.count(); ++tab) {
    shown.setCurrentIndex(tab);
    chooseTab(mine, tab);
    act();
  }
}

/// Every tab, every entry of a list that chooses, every row that has more to show; or the window as
/// it is.
void Mirror::forPages(ui::SetupWindow& mine, ui::SetupWindow& shown, const Act& act) {
  int turns = 0;
  const auto counted = [&] { ++turns, act(); };
  const auto withPorts = [&] {
    const auto [ports, shownPorts] = pairNamed<ui::SheetView>(mine, shown, "ports");
    ports == nullptr ? counted() : forRows(*ports, *shownPorts, counted);
  };
  for (const auto& [tabs, other] : pairsOf<QTabBar>(mine, shown)) forTabs(*tabs, *other, counted);
  for (const auto& [box, other] : pairsOf<QComboBox>(mine, shown))
    if (choosesPage(*box)) forEntries(*box, *other, counted);
  for (const auto& [sheet, other] : pairsOf<ui::SheetView>(mine, shown))
    if (hasPages(*sheet) && nameOf(*sheet) != "ports") forRows(*sheet, *other, withPorts);
  if (turns == 0) act();
}

/// A control can change what others show and offer, and so can a window behind a button.
void Mirror::copyPage(ui::SetupWindow& mine, ui::SetupWindow& shown) {
  settle(mine, shown);
  const int before = edits_;
  copyInnerWindows(mine, shown);
  if (edits_ != before) settle(mine, shown);
}

void Mirror::settle(ui::SetupWindow& mine, ui::SetupWindow& shown) {
  for (int round = 0; round < mostRounds; ++round) {
    const int before = edits_;
    const auto leftBefore = left_;
    copyControls(mine, shown);
    for (const auto& [sheet, other] : pairsOf<ui::SheetView>(mine, shown))
      if (!hasPages(*sheet)) copySheet(*sheet, *other);
    if (edits_ == before) return;
    left_ = leftBefore;
  }
  left_.insert((mine.objectName() + " does not settle").toStdString());
}

void Mirror::copyInnerWindows(ui::SetupWindow& mine, ui::SetupWindow& shown) {
  for (const auto& [button, other] : pairsOf<QPushButton>(mine, shown)) {
    if (!opensWindow(*other) || opened_.contains(other->text())) continue;
    other->click();
    press(*button);
    ui::SetupWindow* inner = innerOf(mine);
    if (isOfAllPages(*inner)) opened_ += other->text();
    copyWindow(*inner, *innerOf(shown));
  }
}

void Mirror::finish(ui::SetupWindow& mine, ui::SetupWindow& shown, bool edited) {
  buttonOf(shown, "Cancel")->click();
  press(*buttonOf(mine, edited ? "Done" : "Cancel"));
  if (!mine.isVisible()) return;
  left_.insert((mine.objectName() + " is not done: " + mine.hint()).toStdString());
  press(*buttonOf(mine, "Cancel"));
}

void Mirror::copyWindow(ui::SetupWindow& mine, ui::SetupWindow& shown) {
  const QStringList outerOpened = std::exchange(opened_, {});
  const QStringList outerTyped = std::exchange(typed_, {});
  const QString outerPage = std::exchange(page_, {});
  const int before = edits_;
  addRows(mine, shown);
  forPages(mine, shown, [&] { copyPage(mine, shown); });
  finish(mine, shown, edits_ != before);
  opened_ = outerOpened;
  typed_ = outerTyped;
  page_ = outerPage;
}

}  // namespace support
