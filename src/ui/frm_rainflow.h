#pragma once

#include "pictures/rainflow_picture.h"
#include "ui/processing_window.h"

namespace ui {

/// The matrix of the rainflow histograms that a block has in its tables.
class frmRainflow final : public ProcessingWindow {
  Q_OBJECT
 public:
  static constexpr FieldText button = {
      "Rain&flow...", "Displays a window to set up parameters. A rainflow histogram is made"};
  static constexpr int code = 6;

  frmRainflow(SetupWindow& owner, const ScaledBlock& target);

 protected:
  void addParameters(Form& form) override;
  void showPicture() override;
  std::string& parameterText() override { return processing().RainHistoCode; }
  std::vector<double> numbers() override;

 private:
  pictures::RainflowPicture* picture_;
};

}  // namespace ui
