#pragma once

#include <QTreeWidget>
#include <vector>

#include "desktop/findings.h"

namespace desktop {

/// What there is to look at in the project. Enter or a double click leads to the place.
class FindingsList final : public QTreeWidget {
  Q_OBJECT
 public:
  explicit FindingsList(QWidget* parent);
  void show(const std::vector<Finding>& findings);
  using QTreeWidget::show;
  /// "Findings (1 error, 2 warnings)"
  [[nodiscard]] QString title() const;

 Q_SIGNALS:
  void wanted(const desktop::Finding& finding);

 private:
  void addRow(const Finding& finding);
  std::vector<Finding> findings_;
};

}  // namespace desktop
