#include "ui/frm_battery.h"

#include <QHeaderView>
#include <QVBoxLayout>

#include "channels/channel_cells.h"
#include "model/stored_outputs.h"
#include "ui/cell_columns.h"
#include "ui/config_panels.h"
#include "ui/processing_buttons.h"

namespace ui {
namespace {

WindowInfo infoOf(Battery battery) {
  const bool volts = battery == Battery::volts;
  return {volts ? "frmBatteryVolts" : "frmBatteryCurrent",
          volts ? "Main Battery Volts" : "Main Battery Current",
          volts ? "battery voltage" : "battery current", "frmConfig"};
}

}  // namespace

frmBattery::frmBattery(SetupWindow& owner, Battery battery)
    : SetupWindow(owner, infoOf(battery)), number_(static_cast<std::size_t>(battery)) {
  auto* contents = new QWidget(this);
  auto* layout = new QHBoxLayout(contents);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* form = new Form;
  addFields(*form);
  form->rowStretch();
  add(*form);
  layout->addWidget(form);
  layout->addWidget(tableSheet(), 1);
  setContents(contents);
  form->setFocus();
  resize(720, 420);
}

void frmBattery::addFields(Form& form) {
  addSwitch(form, working_, static_cast<model::PowerOption>(number_));
  form.pick(
      {"Data t&ype:", "FP2 takes 2 bytes a value, IEEE4 takes 4."},
      [] {
        return std::vector<std::string>{"FP2", "IEEE4"};
      },
      [this]() -> std::string& { return set().DataResolution; });
  form.check({"&Public", "The value can be seen while the program runs."},
             [this]() -> bool& { return set().Public; });
}

QWidget* frmBattery::tableSheet() {
  tables_.setColumns(columns(), [this] { return tablesOn().size(); });
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* view = new SheetView(tables_, side);
  view->setObjectName("tables");
  view->verticalHeader()->hide();
  auto* caption = new QLabel("&Tables that are on", side);
  caption->setBuddy(view);
  layout->addWidget(caption);
  layout->addWidget(view, 1);
  describe(*view, "Tables that are on", "What each output table stores of the battery.");
  add(tables_);
  auto* buttons = new ProcessingButtons(*this, processingOfBattery);
  onRefresh([buttons] { buttons->refresh(); });
  layout->addWidget(buttons);
  return side;
}

std::vector<SheetColumn> frmBattery::columns() {
  SheetColumn name = {"Table", "The name of the output table.", [this](std::size_t row) {
                        return working_.tables.at(tablesOn().at(row)).TableName;
                      }};
  const int last = model::lastProcessingOf(model::StoredSource::batteryVolts);
  SheetColumn stores = {
      "Stores", "What the table stores of the battery; several are joined by +.",
      [this](std::size_t row) { return channels::maskText(set().Table.at(tablesOn().at(row))); },
      [this, last](std::size_t row, std::string_view cell) {
        return channels::storeMask(cell, set().Table.at(tablesOn().at(row)), last);
      }};
  stores.offers = [last] { return channels::processingsUpTo(last); };
  stores.offerHelp = [this](std::size_t row, std::size_t code) {
    return processingHelp(working_, tablesOn().at(row))(row, code);
  };
  stores.combined = true;
  return {std::move(name), std::move(stores)};
}

std::vector<std::size_t> frmBattery::tablesOn() const {
  std::vector<std::size_t> on;
  for (std::size_t t = 0; t < working_.tables.size(); ++t)
    if (working_.tables[t].TableOn) on.push_back(t);
  return on;
}

std::vector<std::string> frmBattery::previewNames() const {
  return {number_ == 0 ? "BattVolt" : "BattCurr"};
}

}  // namespace ui
