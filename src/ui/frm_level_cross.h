#pragma once

#include "model/time_units.h"
#include "pictures/level_picture.h"
#include "ui/processing_window.h"

namespace ui {

/// Levels whose crossings a block or a CAN item counts, and the tests of a second variable. It has
/// one set of them, which all tables with level crossings share.
class frmLevelCross final : public ProcessingWindow {
  Q_OBJECT
 public:
  static constexpr int code = 7;
  static constexpr FieldText button = {"Level crossing...", model::processingTexts[code]};

  frmLevelCross(SetupWindow& owner, ProcessingTarget target);

 protected:
  void addParameters(Form& form) override;
  void showPicture() override;
  std::string& parameterText() override { return processing().LevelCode; }
  std::vector<double> numbers() override;
  bool mayBeDone() override;

 private:
  [[nodiscard]] model::TableProcessing& processing() { return target().levels(working_, table()); }
  void addLevels(Form& form);
  void addTests(Form& form);
  enum Place { levels, tests, hysteresis, formOfResult };
  QWidget* sheetOf(SheetModel& sheet, const SheetColumn& column, Place count);
  SheetColumn columnOf(const QString& title, const QString& help,
                       std::vector<double> model::TableProcessing::*values);
  void setLevels(double count);
  void setTests(double count);
  void chooseSecond();
  [[nodiscard]] bool hasSecond() { return !processing().LevelMeasName.empty(); }

  model::TableProcessing before_;
  SheetModel levels_, tests_;
  pictures::LevelPicture* picture_;
};

}  // namespace ui
