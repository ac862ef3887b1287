#pragma once

#include "pictures/histogram_picture.h"
#include "ui/processing_window.h"

namespace ui {

/// Bins of the histograms that a block has in its tables.
class frmHistogram final : public ProcessingWindow {
  Q_OBJECT
 public:
  static constexpr FieldText button = {
      "Hi&stogram...", "Displays a window to set up parameters. A histogram is made"};
  static constexpr int code = 5;

  frmHistogram(SetupWindow& owner, const ScaledBlock& target);

 protected:
  void addParameters(Form& form) override;
  void showPicture() override;
  std::string& parameterText() override { return processing().HistogramCode; }
  std::vector<double> numbers() override;

 private:
  pictures::HistogramPicture* picture_;
};

}  // namespace ui
