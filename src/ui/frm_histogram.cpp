#include "ui/frm_histogram.h"

#include "model/parameter_text.h"

namespace ui {
frmHistogram::frmHistogram(SetupWindow& owner, ProcessingTarget target)
    : ProcessingWindow(owner, std::move(target), code,
                       {"frmHistogram", "Histogram", "histogram", "histograms"}),
      picture_(new pictures::HistogramPicture(this)) {
  build(picture_);
}

std::vector<double> frmHistogram::numbers() {
  return model::parameters(parameterText(), model::TableProcessing().HistogramCode);
}

void frmHistogram::addParameters(Form& form) {
  addTable(form);
  addParameter(form, {"&Bins:", "Ranges of values that are counted."}, {1, 1000}, bins);
  addParameter(form, {"&Low limit:", "Where the lowest bin begins."}, {-1e9, 1e9}, low);
  addParameter(form, {"Hi&gh limit:", "Where the highest bin ends."}, {-1e9, 1e9}, high);
  addFormOfResult(form, formOfResult);
}

void frmHistogram::showPicture() {
  const std::vector<double> now = numbers();
  picture_->setBins(static_cast<int>(now[bins]), now[low], now[high]);
}

}  // namespace ui
