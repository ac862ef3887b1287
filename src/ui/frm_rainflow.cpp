#include "ui/frm_rainflow.h"

#include "model/parameter_text.h"

namespace ui {
frmRainflow::frmRainflow(SetupWindow& owner, ProcessingTarget target)
    : ProcessingWindow(owner, std::move(target), code,
                       {"frmRainflow", "Rainflow Histogram", "rainflow", "histograms"}),
      picture_(new pictures::RainflowPicture(this)) {
  build(picture_);
}

std::vector<double> frmRainflow::numbers() {
  return model::sizedParameters(parameterText(), model::TableProcessing().RainHistoCode);
}

void frmRainflow::addParameters(Form& form) {
  addTable(form);
  addParameter(form, {"&Mean bins:", "Columns of the matrix: means of cycles."}, {1, 1000}, means);
  addParameter(form, {"&Amplitude bins:", "Rows of the matrix: amplitudes of cycles."}, {1, 1000},
               amplitudes);
  addParameter(form, {"&Low limit:", "The lowest mean that is counted."}, {-1e9, 1e9}, low);
  addParameter(form, {"Hi&gh limit:", "The highest mean that is counted."}, {-1e9, 1e9}, high);
  addParameter(form, {"Least am&plitude:", "Smaller cycles are not counted."}, {0, 1e9, 0.1},
               least);
  addFormOfResult(form, formOfResult);
}

void frmRainflow::showPicture() {
  const std::vector<double> now = numbers();
  picture_->setShape({static_cast<int>(now[means]), static_cast<int>(now[amplitudes]), now[low],
                      now[high], now[least]});
}

}  // namespace ui
