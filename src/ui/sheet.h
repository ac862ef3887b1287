#pragma once

#include <QAbstractTableModel>
#include <QSet>
#include <QTableView>
#include <QTimer>
#include <functional>
#include <vector>

#include "ui/texts.h"

namespace ui {

/// One column of a sheet: how a cell reads and how it takes a text.
struct SheetColumn {
  QString title;
  QString help;
  std::function<std::string(std::size_t row)> text;
  /// Stores a text or says why not; without it the column can only be read.
  std::function<Complaint(std::size_t row, std::string_view cell)> store = {};
  /// Texts offered while editing; others can be typed when `freeText`.
  std::function<std::vector<std::string>()> offers = {};
  bool freeText = false;
  /// What an offer stands for.
  std::function<std::string(std::size_t row, std::size_t offer)> offerHelp = {};
  /// The offers can be combined: the cell joins those that are chosen with "+".
  bool combined = false;
};

/// Rows of a working copy as cells of text. It holds nothing itself.
class SheetModel final : public QAbstractTableModel {
  Q_OBJECT
 public:
  using QAbstractTableModel::QAbstractTableModel;
  void setColumns(std::vector<SheetColumn> columns, std::function<std::size_t()> rows);
  /// Everything anew from the values.
  void refresh();
  [[nodiscard]] const SheetColumn& column(int index) const {
    return columns_[static_cast<std::size_t>(index)];
  }
  struct Cell {
    int row, column;
    QString text;
  };
  /// Stores many cells or none: the first one that is refused is named.
  void storeAll(const std::vector<Cell>& cells, const QString& what);
  /// `keeper` keeps the values as they are and answers with what brings them back.
  using Restore = std::function<void()>;
  void setKeeper(std::function<Restore()> keeper) { keeper_ = std::move(keeper); }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 Q_SIGNALS:
  void edited(const QString& what);
  void refused(const QString& complaint);
  /// The same of a cell that was typed, whose text is gone.
  void typingRefused(const QString& complaint);

 private:
  Complaint store(int row, int column, const QString& text);
  QString refusalOf(const Cell& cell);

  std::vector<SheetColumn> columns_;
  std::function<std::size_t()> rows_ = [] { return std::size_t(0); };
  std::function<Restore()> keeper_ = [] { return Restore([] {}); };
  std::size_t shownRows_ = 0;
};

/// A sheet on the screen: edits in place, copies and pastes tab-separated text as spreadsheets do,
/// fills down with names that count on ("Temp1", "Temp2"), clears by Delete. Columns become wider
/// with what is typed.
class SheetView final : public QTableView {
  Q_OBJECT
 public:
  explicit SheetView(SheetModel& sheet, QWidget* parent = nullptr);

  void copy() const;
  void paste();
  void pasteText(const QString& text);
  void fillDown();
  void clearCells();
  /// Sees a text before it is pasted; true when it took it.
  void setPasteHandler(std::function<bool(const QString& text)> handler) {
    pasteHandler_ = std::move(handler);
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  [[nodiscard]] QModelIndex corner() const;
  void watchWidths();
  void widenColumns();
  SheetModel& sheet_;
  std::function<bool(const QString& text)> pasteHandler_;
  QTimer widening_;
  QSet<int> ownWidths_;  // columns that a person drew to a width
};

/// The texts of a fill: the first one goes on with the number at its end counted up, or as it is.
QString countedOn(const QString& first, int steps);

}  // namespace ui
