#include "ui/frm_flags.h"

#include <QVBoxLayout>
#include <algorithm>

#include "model/conditions.h"
#include "text/strings.h"
#include "ui/cell_columns.h"
#include "ui/condition_sheet.h"
#include "ui/listed_variables.h"

namespace ui {

frmFlags::frmFlags(const WindowPorts& ports, QWidget* parent)
    : ListWindow(ports, {"frmFlags", "Program Flags", "flags"}, parent) {
  auto* options = new Form(this);
  options->check(
      {"Show &all eight flags", "Shows also the flags beyond the number in the options."},
      [this]() -> bool& { return all_; });
  add(*options);
  build(flagList(), options, conditions());
  chooseFirstInUse();
  resize(1080, 640);
}

void frmFlags::chooseFirstInUse() {
  const auto& flags = working_.flags;
  const auto first = std::find_if(flags.begin(), flags.end(),
                                  [](const model::FlagControl& flag) { return flag.FlagInclude; });
  if (first != flags.end()) chooseRow(static_cast<std::size_t>(first - flags.begin()));
}

/// As many as the options say, and every one that is in use.
std::size_t frmFlags::rowsShown() const {
  std::size_t rows =
      all_ ? model::maxFlags
           : static_cast<std::size_t>(std::clamp(ports_.session.settings().DefaultNumFlags, 1,
                                                 static_cast<std::int32_t>(model::maxFlags)));
  for (std::size_t f = rows; f < model::maxFlags; ++f)
    if (working_.flags[f].FlagInclude) rows = f + 1;
  return rows;
}

ListWindow::List frmFlags::flagList() {
  const auto at = [this](std::size_t row) -> model::FlagControl& { return working_.flags[row]; };
  std::vector<SheetColumn> columns = {
      {"Flag", "The flag.", [](std::size_t row) { return text::concat("Flag(", row + 1, ")"); }},
      yesNoColumn("Controlled", "yes: conditions set the flag.",
                  [at](std::size_t row) -> bool& { return at(row).FlagInclude; }),
      {"State 1 sets",
       "What the flag becomes when the first condition is met; the second one sets "
       "the opposite.",
       [at](std::size_t row) { return std::string(at(row).FlagOn ? "True" : "False"); },
       [at](std::size_t row, std::string_view cell) { return storeYesNo(cell, at(row).FlagOn); },
       [] {
         return std::vector<std::string>{"True", "False"};
       }},
      {"State 1", "The first condition.",
       [at](std::size_t row) { return model::conditionText(at(row).states[0]); }},
      {"State 2", "The second condition.",
       [at](std::size_t row) { return model::conditionText(at(row).states[1]); }},
  };
  return {"&Flags", "Choose the flag to set up.", std::move(columns),
          [this] { return rowsShown(); }};
}

QWidget* frmFlags::conditions() {
  ConditionRows rows;
  rows.rows = 2;
  rows.at = [this](std::size_t state) -> model::Condition& {
    return working_.flags[row()].states[state];
  };
  rows.name = [](std::size_t state) { return text::concat("State ", state + 1); };
  rows.ofState = true;
  auto* sheet = new ConditionSheet(std::move(rows), working_, listedTypes(ports_),
                                   "Conditions of the flag", this);
  add(sheet->sheet());
  return sheet;
}

std::vector<std::string> frmFlags::previewNames() const {
  return {text::concat("Flag(", row() + 1, ")")};
}

}  // namespace ui
