#include "ui/frm_excite.h"

#include <QLabel>
#include <QVBoxLayout>

#include "model/channel_plan.h"
#include "model/module_terminals.h"
#include "text/strings.h"
#include "ui/cell_columns.h"
#include "ui/condition_sheet.h"
#include "ui/listed_variables.h"

namespace ui {
namespace {

using model::ExcitationChannel;

const std::vector<std::string> modes = {"Static", "Dynamic"};

/// Outputs of the modules, and those that the project has beyond them.
std::size_t outputsOf(const model::Project& project) {
  const int modules = project.configuration.quantity(model::ModuleKindIndex::excitation7131);
  const int bridges = model::channelPlan(project).caoOfBridges;
  const int free = std::max(modules * model::analogOutputsOf7131 - bridges, 0);
  return std::max(static_cast<std::size_t>(free), project.excitation.channels.size());
}

}  // namespace

frmExcite::frmExcite(const WindowPorts& ports, QWidget* parent)
    : ListWindow(ports, {"frmExcite", "7131 Excitation Channels", "excitation"}, parent) {
  auto* options = new Form(this);
  options->check({"&Public", "The output values can be seen and set while the program runs."},
                 [this]() -> bool& { return working_.excitation.ExcitePublic; });
  options->readout({"Outputs:", "Analog outputs that the bridges leave."},
                   [this] { return text::concat(outputsOf(working_)); });
  add(*options);
  build(outputs(), options, conditions());
  resize(1120, 640);
}

/// A channel that is not in the project yet comes with the first edit of its row.
ExcitationChannel& frmExcite::at(std::size_t row) {
  if (row >= working_.excitation.channels.size()) working_.excitation.channels.resize(row + 1);
  return working_.excitation.channels[row];
}

ListWindow::List frmExcite::outputs() {
  const auto read = [this](std::size_t row) {
    const auto& channels = working_.excitation.channels;
    return row < channels.size() ? channels[row] : ExcitationChannel{};
  };
  const auto edit = [this, read](std::size_t row, const auto& store) -> Complaint {
    ExcitationChannel channel = read(row);
    if (Complaint complaint = store(channel)) return complaint;
    if (channel != read(row)) at(row) = channel;
    return std::nullopt;
  };
  const auto number = [read, edit](const char* title, const char* help,
                                   double ExcitationChannel::*member,
                                   const model::FieldBounds& bounds) {
    return SheetColumn{
        title, help, [read, member](std::size_t row) { return text::shortest(read(row).*member); },
        [edit, member, bounds](std::size_t row, std::string_view cell) {
          return edit(row, [&](ExcitationChannel& channel) {
            return storeNumber(cell, bounds.low, bounds.high, channel.*member);
          });
        }};
  };
  std::vector<SheetColumn> columns = {
      {"Slot : CAO", "The module and its output.",
       [this](std::size_t row) {
         const model::Place place =
             model::placeOfExcitation(working_, model::channelPlan(working_), row + 1);
         return text::concat(place.slot, " : ", place.channel);
       }},
      {"In use", "yes: the program drives the output.",
       [read](std::size_t row) { return yesNoText(read(row).Include); },
       [edit](std::size_t row, std::string_view cell) {
         return edit(row, [&](ExcitationChannel& to) { return storeYesNo(cell, to.Include); });
       },
       [] {
         return std::vector<std::string>{"no", "yes"};
       }},
      listColumn(
          "Mode", "Static: always state 1. Dynamic: as the conditions say.", modes,
          [read](std::size_t row) { return modes[read(row).DynamicStatic == 0 ? 0 : 1]; },
          [edit](std::size_t row, std::size_t index) {
            edit(row, [&](ExcitationChannel& channel) {
              channel.DynamicStatic = static_cast<std::int16_t>(index);
              return Complaint();
            });
          }),
      number("State 1 mV", "The output while state 1 holds.", &ExcitationChannel::State1,
             model::outputStateBounds),
      number("State 2 mV", "The output while state 2 holds.", &ExcitationChannel::State2,
             model::outputStateBounds),
      number("Delay uSec", "How long the output settles.", &ExcitationChannel::Delay,
             model::outputDelayBounds),
  };
  return {"&Analog outputs", "Choose the output to set up.", std::move(columns),
          [this] { return outputsOf(working_); },
          "There is no analog output: add a 7131 module in the hardware window."};
}

QWidget* frmExcite::conditions() {
  ConditionRows rows;
  rows.rows = 2;
  rows.at = [this](std::size_t state) -> model::Condition& {
    static thread_local ExcitationChannel none;
    if (row() < working_.excitation.channels.size())
      return working_.excitation.channels[row()].conditions[state];
    none = {};
    return none.conditions[state];
  };
  rows.name = [](std::size_t state) { return text::concat("State ", state + 1); };
  rows.ofState = true;
  auto* sheet = new ConditionSheet(std::move(rows), working_, listedTypes(ports_),
                                   "Conditions of the output", this);
  add(sheet->sheet());
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* caption = new QLabel(side);
  layout->addWidget(caption);
  layout->addWidget(sheet, 1);
  layout->addStretch();
  onRefresh([this, caption, sheet] {
    const auto& channels = working_.excitation.channels;
    const bool dynamic = row() < channels.size() && channels[row()].DynamicStatic == 1;
    caption->setText(dynamic ? "Conditions of the output"
                             : "A static output always has state 1: it has no conditions.");
    sheet->setVisible(dynamic);
  });
  return side;
}

std::vector<std::string> frmExcite::previewNames() const { return {"Excite", "Excite_*"}; }

}  // namespace ui
