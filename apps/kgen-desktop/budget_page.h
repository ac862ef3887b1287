#pragma once

#include <QLabel>
#include <QTreeWidget>

#include "desktop/review.h"
#include "pictures/stacked_bars.h"

namespace desktop {

/// What the measurements take of a scan, and what limits the scan interval. Empty until there is a
/// budget.
class BudgetPage final : public QWidget {
  Q_OBJECT
 public:
  explicit BudgetPage(QWidget* parent);
  void show(const Budget& budget);
  using QWidget::show;

 private:
  void build();
  void addPart(const QString& title, QWidget* part);
  void showLimits(const Budget& budget);
  pictures::StackedBars* whole_ = nullptr;   // the scan with what is left of it
  pictures::StackedBars* shares_ = nullptr;  // what is used, on a scale of its own
  QLabel* summary_ = nullptr;
  QTreeWidget* limits_ = nullptr;
};

}  // namespace desktop
