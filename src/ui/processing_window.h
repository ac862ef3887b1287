#pragma once

#include <QVBoxLayout>

#include "ui/calculator_window.h"

namespace ui {

/// The parameters of one processing (histogram, rainflow, level crossing) of a block, with a
/// picture of what it does and what it takes of a record. A processing derives from it and names
/// its fields in addParameters().
class ProcessingWindow : public SetupWindow {
  Q_OBJECT
 protected:
  ProcessingWindow(SetupWindow& owner, const ScaledBlock& target, int code, WindowInfo info);
  /// Once, at the end of the constructor: the picture, which showPicture() keeps up to date.
  void build(QWidget* picture);

  virtual void addParameters(Form& form) = 0;
  virtual void showPicture() = 0;

  /// The parameters that the table has, or all of a block.
  virtual std::string& parameterText() = 0;
  [[nodiscard]] virtual std::vector<double> numbers() = 0;
  /// A field of one number of the text.
  Field& addParameter(Form& form, const FieldText& text, const Bounds& bounds, std::size_t place);
  void addFormOfResult(Form& form, std::size_t place);
  /// The table whose parameters are shown, of those that are on.
  void addTable(Form& form);

  [[nodiscard]] model::MeasurementBlock& block() {
    return working_.block(target_.kind, target_.number);
  }
  [[nodiscard]] model::TableProcessing& processing() { return block().processing[table_]; }
  /// Channels of the block that a table (from 0) stores with this processing.
  [[nodiscard]] std::size_t channelsIn(std::size_t table) const;

 private:
  void addSizes(Form& form);
  void setNumber(std::size_t place, double number);

  ScaledBlock target_;
  int code_;
  std::size_t table_ = 0;
};

}  // namespace ui
