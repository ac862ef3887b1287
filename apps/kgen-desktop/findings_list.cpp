#include "desktop/findings_list.h"

#include <QHeaderView>
#include <algorithm>

#include "control/panel_texts.h"
#include "ui/form.h"
#include "ui/icon.h"

namespace desktop {
namespace {

QString nameOf(Weight weight) { return weight == Weight::error ? "error" : "warning"; }

QString placeOf(const Finding& finding) {
  if (finding.line > 0) return QString("program, line %1").arg(finding.line);
  if (finding.button < 0) return {};
  const auto button = static_cast<std::size_t>(finding.button);
  return ui::withoutMnemonic(ui::qstring(control::panel::buttons.at(button).caption));
}

}  // namespace

FindingsList::FindingsList(QWidget* parent) : QTreeWidget(parent) {
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setTabKeyNavigation(false);
  setHeaderLabels({"What", "Where"});
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(0, QHeaderView::Stretch);
  header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
  ui::describe(*this, "Findings", "What to look at; Enter leads to the line or the window.");
  connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
    const auto row = static_cast<std::size_t>(indexOfTopLevelItem(item));
    if (row >= findings_.size()) return;
    const Finding finding = findings_[row];  // the list may change while it is looked at
    Q_EMIT wanted(finding);
  });
}

void FindingsList::show(const std::vector<Finding>& findings) {
  if (findings == findings_ && topLevelItemCount() > 0) return;
  findings_ = findings;
  clear();
  for (const Finding& finding : findings_) addRow(finding);
  if (!findings_.empty()) return;
  auto* nothing = new QTreeWidgetItem(this, {"Nothing to look at."});
  nothing->setFlags(Qt::ItemIsEnabled);
}

void FindingsList::addRow(const Finding& finding) {
  const QString text = ui::qstring(finding.text);
  auto* item = new QTreeWidgetItem(this, {text, placeOf(finding)});
  item->setIcon(0, ui::icon(nameOf(finding.weight)));
  item->setToolTip(0, ui::qstring(finding.details).remove('\r'));
  item->setData(0, Qt::AccessibleTextRole, nameOf(finding.weight) + ": " + text);
}

QString FindingsList::title() const {
  QStringList counts;
  for (const Weight weight : {Weight::error, Weight::warning}) {
    const auto count = std::count_if(findings_.begin(), findings_.end(),
                                     [&](const Finding& each) { return each.weight == weight; });
    if (count > 0)
      counts += QString("%1 %2%3").arg(count).arg(nameOf(weight), count > 1 ? "s" : "");
  }
  return counts.isEmpty() ? QString("Findings") : "Findings (" + counts.join(", ") + ")";
}

}  // namespace desktop
