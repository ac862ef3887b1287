#pragma once

#include "model/channel_plan.h"
#include "pictures/stacked_bars.h"
#include "timing/measurement_times.h"
#include "ui/setup_window.h"

namespace ui {

/// How often the program scans, and how scans are buffered and begun.
class frmExecInt final : public SetupWindow {
  Q_OBJECT
 public:
  frmExecInt(const WindowPorts& ports, QWidget* parent);

 protected:
  bool mayBeDone() override;
  [[nodiscard]] std::vector<std::string> previewNames() const override;

 private:
  [[nodiscard]] model::ScanSetup& scan() { return working_.scan; }
  [[nodiscard]] const model::ScanSetup& scan() const { return working_.scan; }
  [[nodiscard]] bool isBurst() const { return scan().ScanMode == 1; }

  void addInterval(Form& form);
  void addScanning(Form& form);
  void addBuffer(Form& form);
  void switchBuffer();
  void addBurst(Form& form);
  void addBurstCondition(Form& form);
  void addReadings(Form& form);
  QWidget* budget();
  QWidget* limitSheet();
  void compute();

  /// What is wrong with the scan as it stands; nothing when all is well.
  [[nodiscard]] Complaint complaint() const;
  [[nodiscard]] std::string isolatedText() const;

  model::ChannelPlan plan_;
  timing::MeasurementTimes times_;
  std::vector<timing::ScanLimit> limits_;
  SheetModel limitList_;
  pictures::StackedBars* bars_ = nullptr;
};

}  // namespace ui
