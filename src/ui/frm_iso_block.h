#pragma once

#include "model/project.h"
#include "pictures/curve_plot.h"
#include "timing/isolated_plan.h"
#include "ui/form.h"

namespace ui {

/// What the planner makes of one isolated block: the plan in numbers, why there is none, and the
/// response of the filter.
class frmIsoBlock final : public QWidget {
  Q_OBJECT
 public:
  explicit frmIsoBlock(QWidget* parent = nullptr);

  /// Plans the blocks of a project, and shows the plan of one (from 1).
  void showPlan(const model::Project& project, std::size_t number);
  [[nodiscard]] const timing::IsolatedPlan& plan() const { return plan_; }

 private:
  void addResults();
  void showResponse();
  [[nodiscard]] std::string orNoPlan(const std::string& words) const;

  timing::IsolatedPlan plan_;
  std::string problem_;
  Form* results_;
  QLabel* advice_;
  pictures::CurvePlot* response_;
};

}  // namespace ui
