#include "ui/list_window.h"

#include <QHeaderView>
#include <QLabel>
#include <QVBoxLayout>

#include "channels/channel_cells.h"
#include "text/strings.h"
#include "ui/cell_columns.h"

namespace ui {
namespace {

constexpr int leastListWidth = 440;

}  // namespace

ListWindow::ListWindow(const WindowPorts& ports, WindowInfo info, QWidget* parent)
    : SetupWindow(ports, std::move(info), parent) {}

void ListWindow::build(List list, QWidget* above, QWidget* detail, QWidget* below) {
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  if (above != nullptr) layout->addWidget(above);
  listed_.setColumns(std::move(list.columns), list.rows);
  view_ = new SheetView(listed_, side);
  view_->setObjectName("list");
  describe(*view_, list.caption, list.help);
  auto* caption = new QLabel(list.caption, side);
  caption->setBuddy(view_);
  layout->addWidget(caption);
  layout->addWidget(view_, 1);
  if (below != nullptr) layout->addWidget(below);
  connect(view_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& index) {
            if (index.isValid()) chooseRow(static_cast<std::size_t>(index.row()));
          });
  add(listed_);
  auto* contents = new QSplitter(Qt::Horizontal, this);
  side->setMinimumWidth(leastListWidth);
  contents->addWidget(side);
  contents->addWidget(detailOr(detail, list));
  contents->setStretchFactor(0, 1);
  contents->setStretchFactor(1, 1);
  contents->setChildrenCollapsible(false);
  setContents(contents);
  view_->resizeColumnsToContents();
  view_->setCurrentIndex(listed_.index(0, 0));
}

QWidget* ListWindow::detailOr(QWidget* detail, const List& list) {
  if (list.empty.isEmpty()) return detail;
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* words = new QLabel(list.empty, side);
  words->setObjectName("empty");
  words->setWordWrap(true);
  words->setAlignment(Qt::AlignCenter);
  layout->addWidget(detail);
  layout->addWidget(words);
  onRefresh([detail, words, rows = list.rows] {
    detail->setVisible(rows() > 0);
    words->setVisible(rows() == 0);
  });
  return side;
}

void ListWindow::chooseRow(std::size_t row) {
  if (row == row_) return;
  turnTo([this, row] { row_ = row; });
  if (view_->currentIndex().row() != static_cast<int>(row))
    view_->setCurrentIndex(listed_.index(static_cast<int>(row), 0));
}

std::vector<SheetColumn> tableColumns(const model::Project& project, int last,
                                      std::function<model::TableMasks&(std::size_t row)> masks) {
  std::vector<SheetColumn> columns;
  for (std::size_t t = 0; t < model::maxTables; ++t) {
    if (!project.tables[t].TableOn) continue;
    SheetColumn column;
    column.title = qstring(project.tables[t].TableName);
    column.help = QString("What table %1 stores.").arg(column.title);
    column.text = [masks, t](std::size_t row) { return channels::maskText(masks(row)[t]); };
    column.store = [masks, t, last](std::size_t row, std::string_view cell) {
      return channels::storeMask(cell, masks(row)[t], last);
    };
    column.offers = [last] { return channels::processingsUpTo(last); };
    column.offerHelp = processingHelp(project, t);
    column.combined = true;
    columns.push_back(std::move(column));
  }
  return columns;
}

}  // namespace ui
