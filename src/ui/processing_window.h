#pragma once

#include <QVBoxLayout>

#include "ui/processing_target.h"
#include "ui/setup_window.h"

namespace ui {

/// The parameters of one processing (histogram, rainflow, level crossing), with a picture of what
/// it does and what it takes of a record. A processing derives from it and names
/// its fields in addParameters().
class ProcessingWindow : public SetupWindow {
  Q_OBJECT
 protected:
  ProcessingWindow(SetupWindow& owner, ProcessingTarget target, int code, WindowInfo info);
  /// Once, at the end of the constructor: the picture, which showPicture() keeps up to date.
  void build(QWidget* picture);

  virtual void addParameters(Form& form) = 0;
  virtual void showPicture() = 0;

  /// The parameters that the table has, or all of a target.
  virtual std::string& parameterText() = 0;
  [[nodiscard]] virtual std::vector<double> numbers() = 0;
  /// A field of one number of the text.
  Field& addParameter(Form& form, const FieldText& text, const Bounds& bounds, std::size_t place);
  void addFormOfResult(Form& form, std::size_t place);
  /// The table whose parameters are shown, of those that are on.
  void addTable(Form& form);

  [[nodiscard]] const ProcessingTarget& target() const { return target_; }
  /// The table (from 0) whose parameters are shown.
  [[nodiscard]] std::size_t table() const { return table_; }
  /// Channels that a table (from 0) stores with this processing.
  [[nodiscard]] std::size_t channelsIn(std::size_t table) const {
    return channelsStored(target_, working_, table, code_);
  }

 private:
  void addSizes(Form& form);
  [[nodiscard]] std::size_t valuesEach();
  void setNumber(std::size_t place, double number);

  ProcessingTarget target_;
  int code_;
  std::size_t table_ = 0;
};

}  // namespace ui
