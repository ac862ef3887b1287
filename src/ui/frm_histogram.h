#pragma once

#include "model/time_units.h"
#include "pictures/histogram_picture.h"
#include "ui/processing_window.h"

namespace ui {

/// Bins of the histograms in the tables.
class frmHistogram final : public ProcessingWindow {
  Q_OBJECT
 public:
  static constexpr int code = 5;
  static constexpr FieldText button = {"Histogram...", model::processingTexts[code]};

  frmHistogram(SetupWindow& owner, ProcessingTarget target);

 protected:
  void addParameters(Form& form) override;
  void showPicture() override;
  std::string& parameterText() override { return target().histogram(working_, table()); }
  std::vector<double> numbers() override;

 private:
  enum Place { bins, low, high, formOfResult };  // of the parameters

  pictures::HistogramPicture* picture_;
};

}  // namespace ui
