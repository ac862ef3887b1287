#pragma once

#include "model/time_units.h"
#include "pictures/rainflow_picture.h"
#include "ui/processing_window.h"

namespace ui {

/// The matrix of the rainflow histograms in the tables.
class frmRainflow final : public ProcessingWindow {
  Q_OBJECT
 public:
  static constexpr int code = 6;
  static constexpr FieldText button = {"Rainflow...", model::processingTexts[code]};

  frmRainflow(SetupWindow& owner, ProcessingTarget target);

 protected:
  void addParameters(Form& form) override;
  void showPicture() override;
  std::string& parameterText() override { return target().rainflow(working_, table()); }
  std::vector<double> numbers() override;

 private:
  enum Place { means, amplitudes, low, high, least, formOfResult };  // of the parameters

  pictures::RainflowPicture* picture_;
};

}  // namespace ui
