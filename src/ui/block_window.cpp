#include "ui/block_window.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QScrollArea>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "channels/channel_cells.h"
#include "channels/channel_csv.h"
#include "model/block_rules.h"
#include "model/names.h"
#include "text/strings.h"
#include "ui/cell_columns.h"
#include "ui/choices.h"
#include "ui/mask_box.h"
#include "ui/processing_buttons.h"
#include "verify/window_checks.h"

namespace ui {
namespace {

using model::BlockKind;
using model::MeasurementBlock;

constexpr int listWidth = 370;

std::vector<std::string> strings(std::span<const std::string_view> texts) {
  return {texts.begin(), texts.end()};
}

std::string placeText(const model::Place& place) {
  return place.slot == 0 ? std::string() : text::concat(place.slot, " : ", place.channel);
}

}  // namespace

BlockWindow::BlockWindow(const WindowPorts& ports, WindowInfo info, BlockKind kind, QWidget* parent)
    : SetupWindow(ports, std::move(info), parent), kind_(kind) {
  for (std::size_t n = 1; n <= model::maxBlocks; ++n) {
    const MeasurementBlock& each = working_.block(kind, n);
    kept_[n - 1] = {{}, each.DefaultMult, each.DefaultOffset};
  }
  memories_[0] = kept_;
}

void BlockWindow::build() {
  onRefresh([this] {
    number_ = std::min(number_, std::max<std::size_t>(listedBlocks(), 1));
    plan_ = model::channelPlan(working_);
    times_ = timing::measurementTimes(working_, plan_);
  });
  auto* contents = new QSplitter(Qt::Horizontal, this);
  QScrollArea* list = scrolledDown(blockList());
  contents->addWidget(list);
  auto* form = new Form;
  addFields(*form);
  form->rowStretch();
  QScrollArea* settings = scrolledDown(form);
  contents->addWidget(settings);
  contents->addWidget(channelSheet());
  contents->setStretchFactor(2, 1);
  contents->setChildrenCollapsible(false);
  add(*form);
  onRefresh([list, settings] {
    for (QScrollArea* each : {list, settings}) fitWidth(*each);
  });
  setContents(contents);
  listView_->selectRow(static_cast<int>(number_) - 1);
  listView_->resizeColumnsToContents();
  channelView_->resizeColumnsToContents();
  form->setFocus();
  resize(1240, 760);
}

QWidget* BlockWindow::blockList() {
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* shared = new Form(side);
  addSharedFields(*shared);
  layout->addWidget(shared);
  add(*shared);
  list_.setColumns(listColumns(), [this] { return listedBlocks(); });
  listView_ = new SheetView(list_, side);
  listView_->setSelectionBehavior(QAbstractItemView::SelectRows);
  listView_->setSelectionMode(QAbstractItemView::SingleSelection);
  listView_->verticalHeader()->hide();
  describe(*listView_, "Blocks", "Choose the block to set up.");
  connect(listView_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& row) {
            if (row.isValid()) chooseBlock(static_cast<std::size_t>(row.row()) + 1);
          });
  layout->addWidget(listView_, 1);
  add(list_);
  auto* totals = new Form(side);
  addTotals(*totals);
  layout->addWidget(totals);
  add(*totals);
  side->setMinimumWidth(listWidth);
  return side;
}

std::vector<SheetColumn> BlockWindow::listColumns() {
  const auto at = [this](std::size_t row) -> const MeasurementBlock& {
    return working_.block(kind_, row + 1);
  };
  const auto used = [this](std::size_t row) { return model::inUse(working_, kind_, row + 1); };
  return {
      {"Block", "The number of the block.", [](std::size_t row) { return text::concat(row + 1); }},
      {"Reps", "Channels of the block; 0 when it is not in use.",
       [at](std::size_t row) { return text::concat(at(row).Reps); }},
      {"Range", "The input range.",
       [at, used](std::size_t row) { return used(row) ? at(row).Range : std::string(); }},
      {"Slot : Channel", "Where its first channel is connected.",
       [this, used](std::size_t row) {
         return used(row) ? placeText(plan_.of(kind_, row + 1).first) : std::string();
       }},
      {"uSec", "The time that its measurements take by estimate.",
       [this, used](std::size_t row) {
         return used(row) ? text::formatted(times_.blocks[static_cast<std::size_t>(kind_)][row],
                                            "#,##0.#")
                          : std::string();
       }},
  };
}

QWidget* BlockWindow::channelSheet() {
  channels_.setColumns(channelColumns(), [this] { return block().elements.size(); });
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  channelView_ = new SheetView(channels_, side);
  channelView_->setObjectName("channels");
  auto* caption = new QLabel("C&hannels of the block", side);
  caption->setBuddy(channelView_);
  layout->addWidget(caption);
  layout->addWidget(channelView_, 1);
  describe(*channelView_, "Channels of the block",
           "Names, units, scaling and tables of each channel. Copy and paste as in a spreadsheet; "
           "Ctrl+D fills down.");
  channelView_->setPasteHandler([this](const QString& text) { return takeTable(utf8(text)); });
  add(channels_);
  layout->addWidget(addProcessings([this] { return processingOfBlock(kind_, number_); }));
  return side;
}

/// A channel table, as an export makes it, goes to all channels that it names.
bool BlockWindow::takeTable(const std::string& text) {
  if (!channels::isChannelTable(text)) return false;
  const auto faults = channels::importCsv(text, working_).faults;
  if (faults.empty())
    noteEdit("pasted channel table");
  else
    tell(QString("Nothing was pasted. Line %1: %2")
             .arg(faults.front().line)
             .arg(qstring(faults.front().text)));
  return true;
}

/// Buttons for the parameters of what tables store.
QWidget* BlockWindow::addProcessings(std::function<ProcessingTarget()> target) {
  auto* buttons = new ProcessingButtons(*this, std::move(target));
  onRefresh([buttons] { buttons->refresh(); });
  return buttons;
}

void BlockWindow::addReference(Form& form, model::StoredSource source,
                               model::ReferenceTemperature model::Project::*reference) {
  Form& frame = form.group("Reference temperature");
  addReferenceFields(
      frame, working_, source, [ this, reference ]() -> auto& { return working_.*reference; });
  frame.row(addProcessings([reference] { return processingOfReference(reference); }));
}

/// The columns of the channel table for a kind: of the tables, those that are on.
std::vector<SheetColumn> BlockWindow::channelColumns() {
  std::vector<SheetColumn> columns = {
      {"Slot : Ch", "Where the channel is connected.", [this](std::size_t row) {
         return model::inUse(working_, kind_, number_) ? placeOfChannel(row + 1) : std::string();
       }}};
  for (const channels::Column& each : channels::allColumns().subspan(channels::addressColumns)) {
    const bool isTable = each.field == channels::Field::table;
    if (isTable && !working_.tables[each.table].TableOn) continue;
    SheetColumn column;
    column.title = channelTitle(each);
    column.help = channelHelp(each);
    column.text = [this, each](std::size_t row) {
      return channels::cellText(each, {kind_, number_, row + 1}, scalingOf(block()),
                                block().elements[row]);
    };
    column.store = [this, each](std::size_t row, std::string_view cell) {
      return channels::storeCell(each, kind_, cell, scalingOf(block()), block().elements[row]);
    };
    if (isTable) {
      column.offers = [] { return strings(channels::processingWords()); };
      column.offerHelp = processingHelp(working_, each.table);
      column.combined = true;
    }
    if (each.field == channels::Field::ownScaling)
      column.offers = [] { return std::vector<std::string>{"no", "yes"}; };
    columns.push_back(std::move(column));
  }
  return columns;
}

std::string BlockWindow::placeOfChannel(std::size_t channel) const {
  return placeText(model::placeOfElement(working_, plan_, kind_, number_, channel));
}

QString BlockWindow::channelTitle(const channels::Column& column) const {
  switch (column.field) {
    case channels::Field::alias:
      return "Alias";
    case channels::Field::units:
      return "Units";
    case channels::Field::multiplier:
      return "Multiplier";
    case channels::Field::offset:
      return kind_ == BlockKind::bridge ? "Gauge factor" : "Offset";
    case channels::Field::ownScaling:
      return "Own scaling";
    case channels::Field::table:
      return qstring(working_.tables[column.table].TableName);
    default:
      return qstring(column.name);
  }
}

QString BlockWindow::channelHelp(const channels::Column& column) const {
  switch (column.field) {
    case channels::Field::alias:
      return "A name of up to 16 letters, digits and _, beginning with a letter.";
    case channels::Field::units:
      return "Units of up to 12 characters.";
    case channels::Field::ownScaling:
      return "yes: the channel's own multiplier and offset count; no: those of the block.";
    case channels::Field::table:
      return QString("What table %1 stores of the channel.")
          .arg(qstring(working_.tables[column.table].TableName));
    default:
      return "What counts for the channel; another number than the block's is its own scaling.";
  }
}

std::size_t BlockWindow::listedBlocks() const { return model::infoOf(kind_).blockLimit; }

void BlockWindow::chooseBlock(std::size_t number) {
  if (number == number_) return;
  turnTo([this, number] {
    number_ = number;
    blockChosen();
  });
  listView_->selectRow(static_cast<int>(number) - 1);
}

void BlockWindow::blockAdded(std::size_t number) {
  const auto place = kept_.begin() + static_cast<std::ptrdiff_t>(number - 1);
  std::rotate(place, kept_.end() - 1, kept_.end());
  *place = {{}, working_.block(kind_, number).DefaultMult, 0};
  renumber(number);
}

void BlockWindow::blockRemoved(std::size_t number) {
  std::rotate(kept_.begin() + static_cast<std::ptrdiff_t>(number - 1),
              kept_.begin() + static_cast<std::ptrdiff_t>(number), kept_.end());
  kept_.back() = {};
  renumber(std::min(number, std::max<std::size_t>(listedBlocks(), 1)));
}

void BlockWindow::renumber(std::size_t number) {
  number_ = number;
  noteEdit("blocks");
  blockChosen();
  showOther();
  listView_->selectRow(static_cast<int>(number) - 1);
}

void BlockWindow::addSharedFields(Form&) {}

void BlockWindow::addTotals(Form& form) {
  form.readout({"Scan:", "The time that all measurements of a scan take by estimate.", "uSec"},
               [this] { return text::formatted(times_.total, "#,##0.#"); });
  form.readout({"Free:", "Channels that the chosen block could have besides its own."}, [this] {
    const auto most = static_cast<int>(model::freeChannelsFor(working_, kind_, number_));
    const int free = std::max(most - block().Reps, 0);
    return text::concat(free, free == 1 ? " channel" : " channels");
  });
  auto* fits = new QLabel(&form);
  fits->setWordWrap(true);
  fits->setToolTip("What has no place on the modules of the logger.");
  form.row(fits);
  onRefresh([this, fits] {
    fits->setText(plan_.problems.empty() ? QString("Everything fits on the modules.")
                                         : qstring(plan_.problems.front()));
  });
}

Field& BlockWindow::addReps(Form& form) {
  return form
      .number({"&Reps:", "The number of channels of the block; 0 when it is not in use."},
              Bounds{0, static_cast<double>(model::maxElements)},
              [this]() -> std::int16_t& { return block().Reps; })
      .then([this] { fitChannels(); })
      .settledBy([this](double wanted) { return settledReps(wanted); });
}

double BlockWindow::settledReps(double wanted) {
  auto complaint = model::complaintAboutReps(working_, kind_, number_);
  if (!complaint) return wanted;
  if (auto missing = model::complaintAboutModules(working_, kind_)) complaint = missing;
  ports_.messages.show(*complaint);
  noteCorrection();
  return static_cast<double>(model::freeChannelsFor(working_, kind_, number_));
}

void BlockWindow::fitReps() {
  block().Reps = static_cast<std::int16_t>(settledReps(block().Reps));
  fitChannels();
}

void BlockWindow::fitChannels() {
  std::vector<model::Element>& shown = block().elements;
  std::vector<model::Element>& hidden = kept_[number_ - 1].hidden;
  const auto wanted = static_cast<std::size_t>(block().Reps);
  for (; shown.size() > wanted; shown.pop_back()) hidden.push_back(std::move(shown.back()));
  while (shown.size() < wanted && !hidden.empty()) {
    shown.push_back(std::move(hidden.back()));
    hidden.pop_back();
  }
  shown.resize(wanted, model::defaultElement(kind_));
  repsChanged();
}

/// The highest block in use counts the blocks.
void BlockWindow::repsChanged() {
  std::int16_t highest = 0;
  for (std::size_t n = 1; n <= model::maxBlocks; ++n)
    if (working_.block(kind_, n).Reps > 0) highest = static_cast<std::int16_t>(n);
  working_.set(kind_).BlockCount = highest;
}

void BlockWindow::addMeasType(Form& form) {
  form.pick(
          {"&Input:",
           "Differential channels measure between two terminals, single-ended ones "
           "between one and ground."},
          [] {
            return std::vector<std::string>{"Diff", "SE"};
          },
          [this]() -> std::string& { return block().MeasType; })
      .then([this] { fitReps(); });
}

Field& BlockWindow::addRange(Form& form, std::size_t offered) {
  std::vector<std::string> ranges = strings(model::rangesOf(kind_));
  ranges.resize(std::min(ranges.size(), offered));
  return form
      .pick(
          {"R&ange:", "The input range."}, [ranges] { return ranges; },
          [this]() -> std::string& { return block().Range; })
      .then([this] {
        block().RangeNo = model::rangeCode(kind_, block().Range);
        if (!detectsOpenSensors()) block().OpenSensDetect = false;
      });
}

/// The rules of integration times are those of the data object.
std::int32_t BlockWindow::settledIntegration(model::InputKind input, std::int16_t code,
                                             std::int32_t before, std::int32_t entered) const {
  model::cAnalogConfig analog;
  analog.setInput(input, kind_);
  analog.IntegCode(code);
  analog.IntegTime(before);
  analog.IntegTime(entered);
  return analog.IntegTime();
}

void BlockWindow::addIntegration(Form& form, model::InputKind input) {
  const auto settled = [this, input](std::int32_t micros) {
    return settledIntegration(input, block().IntegrationRange, block().Integration, micros);
  };
  form.choice({"I&ntegration:", "Rejects the noise of the power line, or takes the time below."},
              choicesOf({"50 Hz rejection", "60 Hz rejection", "Time below"}),
              [this]() -> std::int16_t& { return block().IntegrationRange; })
      .then([this, settled] { block().Integration = settled(block().Integration); });
  Field& time =
      form.number({"Integration &time:", "How long each measurement is integrated.", "uSec"},
                  bounds(model::BlockField::Integration),
                  [this]() -> std::int32_t& { return block().Integration; })
          .settledBy(
              [settled](double micros) { return settled(static_cast<std::int32_t>(micros)); })
          .closedWhen([this]() -> std::string {
            return block().IntegrationRange == 2 ? "" : "The line rejection sets the time.";
          });
  stepBy(time, input, &model::cAnalogConfig::IntegIncDec);
}

void BlockWindow::stepBy(const Field& time, model::InputKind input, TimeStep step) const {
  static_cast<NumberBox*>(time.widget)
      ->setStepRule([kind = kind_, input, step](double micros, int direction) {
        model::cAnalogConfig analog;
        analog.setInput(input, kind);
        analog.IntegTime(static_cast<std::int32_t>(micros));
        analog.SettleTime(static_cast<std::int32_t>(micros));
        return (analog.*step)(direction);
      });
}

std::function<Bounds()> BlockWindow::bounds(model::BlockField field) const {
  return [this, field] { return model::boundsIn(working_, kind_, number_, field); };
}

/// Isolated modules detect them on every range.
bool BlockWindow::detectsOpenSensors() const {
  if (kind_ == BlockKind::isolated) return true;
  const auto object = model::dataObjectOf(working_.block(kind_, number_), kind_,
                                          static_cast<std::int16_t>(number_));
  return object->Analog() != nullptr && object->Analog()->OpenSensIsValid();
}

void BlockWindow::addSettle(Form& form) {
  const Field& time =
      form.number({"&Settling time:", "How long the signal settles before it is measured.", "uSec"},
                  bounds(model::BlockField::SettleTime),
                  [this]() -> std::int32_t& { return block().SettleTime; });
  stepBy(time, model::InputKind::unset, &model::cAnalogConfig::SettleIncDec);
}

Field& BlockWindow::addReversal(Form& form) {
  return form
      .check(
          {"Re&verse inputs", "Measures twice with the inputs exchanged, which cancels offsets."},
          [this]() -> bool& { return block().ReverseMes; })
      .closedWhen([this]() -> std::string {
        return model::isDifferential(block()) ? "" : "Only differential inputs can be reversed.";
      });
}

Field& BlockWindow::addOpenSensor(Form& form) {
  return form
      .check({"&Open sensor detection", "Checks for an open sensor before each measurement."},
             [this]() -> bool& { return block().OpenSensDetect; })
      .closedWhen([this]() -> std::string {
        return detectsOpenSensors() ? "" : "Open sensors are detected on 50 and 200 mV.";
      });
}

Field& BlockWindow::addThermocoupleType(Form& form) {
  return addTypeList(form, &MeasurementBlock::TypeNo);
}

Field& BlockWindow::addTypeList(Form& form, std::int16_t MeasurementBlock::*type) {
  return form.choice({"T&ype:", "The thermocouple type."},
                     choicesOf({"T", "E", "K", "J", "B", "R", "S", "N"}),
                     [this, type]() -> std::int16_t& { return block().*type; });
}

/// The scale is not filed: it is what multiplier and offset say.
Field& BlockWindow::addTemperatureScale(Form& form) {
  auto* box = new QComboBox(this);
  model::cAnalogConfig names;
  for (std::int16_t scale = 0; scale < 4; ++scale) {
    names.TempScale(scale);
    box->addItem(qstring(names.TempScaleUnits()));
  }
  Field& field = form.custom({"Te&mperature scale:", "Sets multiplier, offset and units."}, box);
  field.show = [this, box] {
    const QSignalBlocker quiet(box);
    box->setCurrentIndex(box->findText(qstring(block().Units)));
  };
  connect(box, &QComboBox::activated, this, [this, &form, box](int scale) {
    const auto object = model::dataObjectOf(block(), kind_, static_cast<std::int16_t>(number_));
    // The scale it has already would not be a change.
    object->Analog()->TempScale(static_cast<std::int16_t>(scale == 0 ? 1 : 0));
    object->Analog()->TempScale(static_cast<std::int16_t>(scale));
    model::writeScaling(*object, block());
    block().Units = object->Analog()->TempScaleUnits();
    form.noteEdit(box->objectName());
  });
  return field;
}

void BlockWindow::addScaling(Form& form) {
  constexpr double most = 1e30;
  // The arrows go steps of the size that the number has.
  const auto steps = [](const Field& field) {
    static_cast<NumberBox*>(field.widget)->setStepRule([](double value, int direction) {
      model::cKGenData object;
      object.Multiplier(value);
      return text::readNumber(text::shortestSingle(object.MultIncDec(direction)));
    });
  };
  steps(form.number({"&Multiplier:", "Of every channel without its own scaling."},
                    Bounds{-most, most}, [this]() -> double& { return block().DefaultMult; }));
  steps(form.number({"O&ffset:", "Of every channel without its own scaling."}, Bounds{-most, most},
                    [this]() -> double& { return block().DefaultOffset; }));
}

void BlockWindow::addUnits(Form& form) {
  form.text(
      {"&Units:", "Units of every channel that names no others. Up to 12 characters."}, 12,
      [this]() -> std::string& { return block().Units; }, model::complaintAboutUnits);
}

void BlockWindow::addZeroAndCalibration(Form& form) {
  form.choice({"&Zero flag:", "While this flag is set, the present values become the zero."},
              flagChoices("None"), [this]() -> std::int16_t& { return block().ZeroFlag; });
  addCalibration(form);
}

void BlockWindow::addCalibration(Form& form) {
  form.check({"&Calibrate on site", "The real-time host can calibrate the channels in the field."},
             [this]() -> bool& { return block().CalOnSite; });
}

void BlockWindow::addStorage(Form& form) {
  form.pick(
      {"Data &type:", "FP2 takes 2 bytes a value, IEEE4 takes 4."},
      [] {
        return std::vector<std::string>{"FP2", "IEEE4"};
      },
      [this]() -> std::string& { return block().DataResolution; });
  form.check({"&Public", "The values can be seen and set while the program runs."},
             [this]() -> bool& { return block().Public; });
}

/// A default that changed asks about channels that differ from it; Yes goes back to them.
bool BlockWindow::mayBeDone() {
  const verify::CheckContext context{ports_.messages, ports_.errors};
  for (std::size_t n = 1; n <= model::maxBlocks; ++n) {
    const MeasurementBlock& each = working_.block(kind_, n);
    const Kept& before = kept_[n - 1];
    if (each.DefaultMult == before.multiplier && each.DefaultOffset == before.offset) continue;
    if (KGEN_COMMON::CheckDefaultScaling(each, context) != ports::Answer::yes) continue;
    chooseBlock(n);
    channelView_->setFocus();
    return false;
  }
  return true;
}

std::vector<std::string> BlockWindow::previewNames() const {
  return {model::arrayName(working_, kind_, number_) + "*"};
}

}  // namespace ui
