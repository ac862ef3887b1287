#pragma once

#include <array>
#include <map>
#include <span>
#include <vector>

#include "channels/channel_cells.h"
#include "model/block_rules.h"
#include "model/channel_plan.h"
#include "model/data_objects.h"
#include "model/stored_outputs.h"
#include "timing/measurement_times.h"
#include "ui/calculator_window.h"
#include "ui/processing_target.h"

namespace ui {

/// The setup window of one kind of measurement: its blocks as a list, the settings of the chosen
/// block, its channels as a sheet. A kind derives from it and names its fields in addFields().
class BlockWindow : public SetupWindow {
  Q_OBJECT
 public:
  void chooseBlock(std::size_t number);
  [[nodiscard]] std::size_t chosenBlock() const { return number_; }

 protected:
  BlockWindow(const WindowPorts& ports, WindowInfo info, model::BlockKind kind, QWidget* parent);
  /// Once, at the end of a kind's constructor.
  void build();

  /// The settings of a block, in the order of the screen.
  virtual void addFields(Form& form) = 0;
  /// Settings that all blocks share, above the list; nothing for most kinds.
  virtual void addSharedFields(Form& form);
  /// Readings below the list.
  virtual void addTotals(Form& form);
  /// Blocks of the list: those that the kind can have.
  [[nodiscard]] virtual std::size_t listedBlocks() const;
  /// Where a channel (from 1) of the chosen block is connected: "5 : 9".
  [[nodiscard]] virtual std::string placeOfChannel(std::size_t channel) const;
  /// Another block is shown.
  virtual void blockChosen() {}

  [[nodiscard]] model::BlockKind kind() const { return kind_; }
  [[nodiscard]] std::size_t number() const { return number_; }
  [[nodiscard]] model::MeasurementBlock& block() { return working_.block(kind_, number_); }
  [[nodiscard]] const model::ChannelPlan& plan() const { return plan_; }
  [[nodiscard]] const timing::MeasurementTimes& times() const { return times_; }

  /// What a number of the chosen block may be.
  [[nodiscard]] std::function<Bounds()> bounds(model::BlockField field) const;
  [[nodiscard]] bool detectsOpenSensors() const;

  // Fields that several kinds have.
  Field& addReps(Form& form);
  void addMeasType(Form& form);
  /// The first of the kind's ranges, or all.
  Field& addRange(Form& form, std::size_t offered = 100);
  static constexpr std::size_t thermocoupleRanges = 2;
  void addIntegration(Form& form, model::InputKind input);
  /// What becomes of an integration time that is entered in place of another one.
  [[nodiscard]] std::int32_t settledIntegration(model::InputKind input, std::int16_t code,
                                                std::int32_t before, std::int32_t entered) const;
  void addSettle(Form& form);
  /// The arrows of a time go the steps of the data object.
  using TimeStep = std::int32_t (model::cAnalogConfig::*)(int direction);
  void stepBy(const Field& time, model::InputKind input, TimeStep step) const;
  Field& addReversal(Form& form);
  Field& addOpenSensor(Form& form);
  Field& addThermocoupleType(Form& form);
  Field& addTypeList(Form& form, std::int16_t model::MeasurementBlock::*type);
  /// Sets multiplier, offset and units of temperatures.
  Field& addTemperatureScale(Form& form);
  void addScaling(Form& form);
  void addUnits(Form& form);
  void addZeroAndCalibration(Form& form);
  void addCalibration(Form& form);
  void addStorage(Form& form);
  /// Data type, Public and what each table stores of a reference temperature.
  void addReference(Form& form, model::StoredSource source,
                    model::ReferenceTemperature model::Project::*reference);
  /// A button that opens a calculator for the scaling of the block.
  template <class Calculator>
  void addCalculator(Form& form) {
    form.button(Calculator::button, [this] { openInner(new Calculator(*this, {kind_, number_})); });
  }

  bool mayBeDone() override;
  void keepMemory(int state) override { memories_[state] = kept_; }
  void recallMemory(int state) override { kept_ = memories_[state]; }
  [[nodiscard]] std::vector<std::string> previewNames() const override;
  /// Channels of the chosen block after a new number of repetitions.
  virtual void repsChanged();
  /// Fewer channels when a setting that was just edited leaves less room.
  void fitReps();
  /// Blocks were numbered anew: one came to a number, or went from it.
  void blockAdded(std::size_t number);
  void blockRemoved(std::size_t number);

 private:
  /// What the window remembers of a block.
  struct Kept {
    /// Channels that a lower number of repetitions hid, the next one last; they come back with a
    /// higher one.
    std::vector<model::Element> hidden;
    double multiplier = 1, offset = 0;  // when the window opened
  };
  void renumber(std::size_t number);
  QWidget* blockList();
  QWidget* channelSheet();
  QWidget* addProcessings(std::function<ProcessingTarget()> target);
  std::vector<SheetColumn> listColumns();
  std::vector<SheetColumn> channelColumns();
  bool takeTable(const std::string& text);
  void fitChannels();
  double settledReps(double wanted);
  [[nodiscard]] QString channelTitle(const channels::Column& column) const;
  [[nodiscard]] QString channelHelp(const channels::Column& column) const;

  model::BlockKind kind_;
  std::size_t number_ = 1;
  model::ChannelPlan plan_;
  timing::MeasurementTimes times_;
  SheetModel list_, channels_;
  SheetView* listView_ = nullptr;
  SheetView* channelView_ = nullptr;
  std::array<Kept, model::maxBlocks> kept_;
  std::map<int, std::array<Kept, model::maxBlocks>> memories_;  // kept_, by state of the window
};

}  // namespace ui
