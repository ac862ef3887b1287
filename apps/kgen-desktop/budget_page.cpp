#include "desktop/budget_page.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QVBoxLayout>

#include "ui/form.h"
#include "verify/message_lines.h"

namespace desktop {
namespace {

QString micros(double value) { return ui::qstring(verify::groupedNumber(value)); }

/// What is used, without what is left of it.
QList<pictures::Bar> unlimited(QList<pictures::Bar> bars) {
  for (pictures::Bar& bar : bars) bar.limit = 0;
  return bars;
}

bool keepsTo(double scan, const timing::ScanLimit& limit) {
  return scan >= limit.leastMicros && (limit.mostMicros == 0 || scan <= limit.mostMicros);
}

}  // namespace

BudgetPage::BudgetPage(QWidget* parent) : QWidget(parent) {}

void BudgetPage::build() {
  whole_ = new pictures::StackedBars(this);
  shares_ = new pictures::StackedBars(this);
  summary_ = new QLabel(this);
  limits_ = new QTreeWidget(this);
  auto* layout = new QVBoxLayout(this);
  summary_->setWordWrap(true);
  layout->addWidget(summary_);
  addPart("The scan and what is left of it", whole_);
  addPart("What takes the time", shares_);
  limits_->setRootIsDecorated(false);
  limits_->setHeaderLabels({"Set by", "At least (uSec)", "At most (uSec)", "Kept"});
  limits_->setTabKeyNavigation(false);
  ui::describe(*limits_, "Limits of the scan interval", "What asks for a longer or shorter scan.");
  addPart("Limits of the scan interval", limits_);
}

void BudgetPage::addPart(const QString& title, QWidget* part) {
  auto* box = new QGroupBox(title, this);
  box->setFlat(true);
  auto* inside = new QVBoxLayout(box);
  inside->setContentsMargins(0, 0, 0, 0);
  inside->addWidget(part);
  layout()->addWidget(box);
}

void BudgetPage::show(const Budget& budget) {
  if (layout() == nullptr) build();
  whole_->setBars(budget.bars, "uSec");
  shares_->setBars(unlimited(budget.bars), "uSec");
  summary_->setText(QString("Scan interval: %1 uSec. Shortest possible: %2 uSec, for measuring; "
                            "processing can take considerably longer.")
                        .arg(micros(budget.scanMicros), micros(budget.shortestScanMicros)));
  showLimits(budget);
}

void BudgetPage::showLimits(const Budget& budget) {
  limits_->clear();
  for (const timing::ScanLimit& limit : budget.limits) {
    const QString least = limit.leastMicros > 0 ? micros(limit.leastMicros) : "-";
    const QString most = limit.mostMicros > 0 ? micros(limit.mostMicros) : "-";
    const QString kept = keepsTo(budget.scanMicros, limit) ? "yes" : "NO";
    auto* item = new QTreeWidgetItem(QStringList{ui::qstring(limit.cause), least, most, kept});
    limits_->addTopLevelItem(item);
    for (const int number : {1, 2})
      item->setTextAlignment(number, Qt::AlignRight | Qt::AlignVCenter);
  }
  for (int column = 0; column < limits_->columnCount(); ++column)
    limits_->resizeColumnToContents(column);
}

}  // namespace desktop
