#include "ui/sheet.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QRegularExpression>

#include "ui/sheet_delegate.h"

namespace ui {

void SheetModel::setColumns(std::vector<SheetColumn> columns, std::function<std::size_t()> rows) {
  beginResetModel();
  columns_ = std::move(columns);
  rows_ = std::move(rows);
  shownRows_ = rows_();
  endResetModel();
}

void SheetModel::refresh() {
  const std::size_t rows = rows_();
  if (rows != shownRows_) {
    beginResetModel();
    shownRows_ = rows;
    endResetModel();
  } else if (rows > 0) {
    Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
  }
}

int SheetModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shownRows_);
}

int SheetModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant SheetModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || static_cast<std::size_t>(index.row()) >= rows_()) return {};
  const SheetColumn& cells = column(index.column());
  if (role == Qt::DisplayRole || role == Qt::EditRole)
    return qstring(cells.text(static_cast<std::size_t>(index.row())));
  if (role == Qt::ToolTipRole || role == Qt::StatusTipRole || role == Qt::AccessibleDescriptionRole)
    return cells.help;
  return {};
}

QVariant SheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Vertical)
    return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
  if (role == Qt::DisplayRole) return column(section).title;
  if (role == Qt::ToolTipRole) return column(section).help;
  return {};
}

Qt::ItemFlags SheetModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (index.isValid() && column(index.column()).store) flags |= Qt::ItemIsEditable;
  return flags;
}

Complaint SheetModel::store(int row, int columnIndex, const QString& text) {
  const SheetColumn& cells = column(columnIndex);
  if (!cells.store) return std::nullopt;  // a cell that can only be read is passed over
  return cells.store(static_cast<std::size_t>(row), utf8(text));
}

QString SheetModel::refusalOf(const Cell& cell) {
  const QString place = QString("row %1").arg(cell.row + 1);
  if (cell.row >= rowCount())
    return place + ": there are fewer rows here; nothing was changed. Add channels first.";
  if (cell.column >= columnCount())
    return place + ": there are fewer columns here; nothing was changed.";
  const Complaint complaint = store(cell.row, cell.column, cell.text);
  if (!complaint) return {};
  return QString("%1, %2: %3; nothing was changed.")
      .arg(place, column(cell.column).title, qstring(*complaint));
}

void SheetModel::storeAll(const std::vector<Cell>& cells, const QString& what) {
  if (cells.empty()) return;
  const Restore restore = keeper_();
  for (const Cell& cell : cells) {
    const QString refusal = refusalOf(cell);
    if (refusal.isEmpty()) continue;
    restore();
    Q_EMIT refused(refusal);
    return;
  }
  refresh();
  Q_EMIT edited(QString("%1 %2 %3").arg(what).arg(cells.front().row).arg(cells.front().column));
}

bool SheetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid()) return false;
  if (value.toString() == data(index, Qt::EditRole).toString()) return true;
  if (const Complaint complaint = store(index.row(), index.column(), value.toString())) {
    Q_EMIT refused(qstring(*complaint));
    Q_EMIT typingRefused(qstring(*complaint));
    return false;
  }
  Q_EMIT dataChanged(index, index);
  Q_EMIT edited(QString("%1 %2").arg(column(index.column()).title).arg(index.row() + 1));
  return true;
}

SheetView::SheetView(SheetModel& sheet, QWidget* parent) : QTableView(parent), sheet_(sheet) {
  setModel(&sheet);
  setItemDelegate(new SheetDelegate(this));
  setAlternatingRowColors(true);
  setTabKeyNavigation(false);  // Tab leaves the sheet; arrows move in it
  setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
  horizontalHeader()->setStretchLastSection(true);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
  watchWidths();
}

void SheetView::watchWidths() {
  constexpr int lookedAt = 40;  // rows, besides those on the screen
  horizontalHeader()->setResizeContentsPrecision(lookedAt);
  widening_.setSingleShot(true);
  connect(&widening_, &QTimer::timeout, this, &SheetView::widenColumns);
  const auto later = [this] { widening_.start(0); };
  connect(&sheet_, &QAbstractItemModel::dataChanged, this, later);
  connect(&sheet_, &QAbstractItemModel::modelReset, this, later);
  connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
    if (QApplication::mouseButtons() != Qt::NoButton) ownWidths_.insert(column);
  });
}

/// The first picture has the columns as wide as they need to be.
void SheetView::showEvent(QShowEvent* event) {
  if (widening_.isActive()) widenColumns();
  QTableView::showEvent(event);
}

void SheetView::widenColumns() {
  widening_.stop();
  const int widest = fontMetrics().horizontalAdvance(QString(30, '0'));
  for (int column = 0; column + 1 < sheet_.columnCount(); ++column) {
    if (ownWidths_.contains(column)) continue;
    const int wanted = std::min(sizeHintForColumn(column), widest);
    if (wanted > columnWidth(column)) setColumnWidth(column, wanted);
  }
}

void SheetView::copy() const {
  QModelIndexList cells = selectedIndexes();
  if (cells.isEmpty()) return;
  std::sort(cells.begin(), cells.end());
  QString text;
  for (qsizetype i = 0; i < cells.size(); ++i) {
    if (i > 0) text += cells[i].row() == cells[i - 1].row() ? '\t' : '\n';
    text += cells[i].data(Qt::EditRole).toString();
  }
  QApplication::clipboard()->setText(text + '\n');
}

void SheetView::paste() { pasteText(QApplication::clipboard()->text()); }

QModelIndex SheetView::corner() const {
  const QModelIndexList cells = selectedIndexes();
  return cells.isEmpty() ? currentIndex() : *std::min_element(cells.begin(), cells.end());
}

void SheetView::pasteText(const QString& text) {
  if (pasteHandler_ && pasteHandler_(text)) return;
  QStringList lines = QString(text).remove('\r').split('\n');
  if (lines.back().isEmpty()) lines.removeLast();
  const QModelIndex from = corner();
  if (lines.isEmpty() || !from.isValid()) return;
  std::vector<SheetModel::Cell> cells;
  for (int down = 0; down < lines.size(); ++down) {
    const QStringList texts = lines[down].split('\t');
    for (int right = 0; right < texts.size(); ++right)
      cells.push_back({from.row() + down, from.column() + right, texts[right]});
  }
  sheet_.storeAll(cells, "paste");
}

void SheetView::fillDown() {
  QModelIndexList chosen = selectedIndexes();
  std::sort(chosen.begin(), chosen.end());
  std::vector<SheetModel::Cell> cells;
  for (const QModelIndex& each : chosen) {
    if (each.row() == chosen.front().row()) continue;
    const QModelIndex first = each.siblingAtRow(chosen.front().row());
    cells.push_back({each.row(), each.column(),
                     countedOn(first.data(Qt::EditRole).toString(), each.row() - first.row())});
  }
  sheet_.storeAll(cells, "fill down");
}

void SheetView::clearCells() {
  std::vector<SheetModel::Cell> cells;
  for (const QModelIndex& each : selectedIndexes())
    cells.push_back({each.row(), each.column(), {}});
  sheet_.storeAll(cells, "clear");
}

void SheetView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) return copy();
  if (event->matches(QKeySequence::Paste)) return paste();
  // The system's own list of keys for Delete has Ctrl+D on some desktops.
  if (event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_D) return fillDown();
  if (event->matches(QKeySequence::Delete)) return clearCells();
  QTableView::keyPressEvent(event);
}

void SheetView::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu(this);
  menu.addAction("&Copy", QKeySequence::Copy, this, &SheetView::copy);
  menu.addAction("&Paste", QKeySequence::Paste, this, &SheetView::paste);
  menu.addAction("&Fill Down", QKeySequence("Ctrl+D"), this, &SheetView::fillDown);
  menu.addAction("C&lear", QKeySequence::Delete, this, &SheetView::clearCells);
  menu.exec(event->globalPos());
}

QString countedOn(const QString& first, int steps) {
  static const QRegularExpression numberAtEnd("^(.*[A-Za-z_])([0-9]{1,6})$");
  const QRegularExpressionMatch match = numberAtEnd.match(first);
  if (!match.hasMatch()) return first;
  const QString digits = match.captured(2);
  const QString next = QString::number(digits.toInt() + steps);
  return match.captured(1) + next.rightJustified(digits.size(), '0');
}

}  // namespace ui
