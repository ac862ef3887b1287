#include "ui/frm_calc_fields.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "control/field_expression.h"
#include "model/block_rules.h"
#include "model/names.h"
#include "model/renaming.h"
#include "model/stored_outputs.h"
#include "text/strings.h"
#include "ui/cell_columns.h"
#include "ui/list_window.h"
#include "ui/listed_variables.h"

namespace ui {
namespace {

using model::CalculatedField;

const std::vector<std::string> types = {"Expression", "Running average"};
constexpr int expressionColumn = 3;
constexpr int lettersOfVariable = 20;
constexpr std::int16_t usualSamples = 10;  // of a running average

/// The expression with what is wrong in it marked: "Press1 + >>Pres2<<".
std::string marked(std::string_view expression, const logscript::ExpressionFault& fault) {
  return text::concat(expression.substr(0, fault.offset), ">>",
                      expression.substr(fault.offset, fault.length), "<<",
                      expression.substr(std::min(expression.size(), fault.offset + fault.length)));
}

}  // namespace

frmCalcFields::frmCalcFields(const WindowPorts& ports, QWidget* parent)
    : SetupWindow(ports, {"frmCalcFields", "Calculated Fields", "calculated fields"}, parent),
      view_(new SheetView(sheet_, this)),
      variables_(new QComboBox(this)) {
  sheet_.setColumns(columns(), [this] { return working_.calculated.fields.size(); });
  view_->setObjectName("fields");
  describe(*view_, "Calculated fields",
           "One row a field: its name, units and expression, and the tables that store it.");
  onRefresh([this] { nameAnew(); });
  add(sheet_);
  auto* contents = new QWidget(this);
  auto* layout = new QVBoxLayout(contents);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(view_, 1);
  layout->addWidget(buttons());
  setContents(contents);
  view_->resizeColumnsToContents();
  view_->setColumnWidth(expressionColumn, 320);
  view_->setColumnWidth(expressionColumn + 1, 300);
  view_->setCurrentIndex(sheet_.index(0, 0));
  resize(1240, 620);
}

std::vector<SheetColumn> frmCalcFields::columns() {
  std::vector<SheetColumn> columns = {
      textColumn(
          "Name", "A name of up to 16 letters, digits and _, beginning with a letter.",
          [this](std::size_t row) -> std::string& { return at(row).CalcName; },
          model::complaintAboutAlias),
      textColumn(
          "Units", "Units of up to 12 characters.",
          [this](std::size_t row) -> std::string& { return at(row).CalcUnits; },
          model::complaintAboutUnits),
      listColumn(
          "Type", "An expression, or the running average of a variable.", types,
          [this](std::size_t row) { return types[control::isRunningAverage(at(row)) ? 1 : 0]; },
          [this](std::size_t row, std::size_t index) { setType(at(row), index); }),
      textColumn("Expression",
                 "Variables joined by + - * / ^ and parentheses, and functions such as Sqr(X).",
                 [this](std::size_t row) -> std::string& { return at(row).CalcExpress; }),
      {"Check", "What is wrong with the expression, and where.",
       [this](std::size_t row) { return stateOf(row); }},
      samplesColumn(),
      listColumn(
          "Data type", "FP2 takes 2 bytes a value, IEEE4 takes 4.", {"FP2", "IEEE4"},
          [this](std::size_t row) { return at(row).DataResolution; },
          [this](std::size_t row, std::size_t index) {
            at(row).DataResolution = index == 0 ? "FP2" : "IEEE4";
          }),
      yesNoColumn("Public", "yes: the value can be seen while the program runs.",
                  [this](std::size_t row) -> bool& { return at(row).Public; }),
  };
  for (SheetColumn& each :
       tableColumns(working_, model::lastProcessingOf(model::StoredSource::calculatedField),
                    [this](std::size_t row) -> model::TableMasks& { return at(row).CalcField; }))
    columns.push_back(std::move(each));
  return columns;
}

/// Expressions have no use for a number of samples: any that stands there may stay.
SheetColumn frmCalcFields::samplesColumn() {
  SheetColumn column = numberColumn<std::int16_t>(
      "Samples", "Values that a running average takes: 2 to 1000.", 0,
      model::averagedSamplesBounds.high,
      [this](std::size_t row) -> std::int16_t& { return at(row).CalcAvg; });
  column.store = [this, store = column.store](std::size_t row, std::string_view cell) -> Complaint {
    const CalculatedField before = at(row);
    if (Complaint complaint = store(row, cell)) return complaint;
    Complaint complaint = control::complaintAboutSamples(at(row));
    if (complaint) at(row) = before;
    return complaint;
  };
  return column;
}

/// A running average has a number of samples from the start.
void frmCalcFields::setType(CalculatedField& field, std::size_t type) {
  field.CalcType = static_cast<std::int16_t>(type);
  if (control::complaintAboutSamples(field)) field.CalcAvg = usualSamples;
}

std::string frmCalcFields::stateOf(std::size_t row) const {
  return complaintAbout(row, "  ").value_or("good");
}

/// Expressions follow a name that was changed in the same visit, as they do on Done.
Complaint frmCalcFields::complaintAbout(std::size_t row, std::string_view between) const {
  if (row >= named_.calculated.fields.size()) return std::nullopt;  // shown anew in a moment
  const CalculatedField& field = named_.calculated.fields[row];
  if (const auto fault = control::faultIn(field, named_))
    return text::concat(fault->text, between, marked(field.CalcExpress, *fault));
  return control::complaintAboutSamples(field);
}

void frmCalcFields::nameAnew() { named_ = model::withNewNames(ports_.session.project(), working_); }

void frmCalcFields::offerVariables() {
  QStringList names;
  for (const std::string& name : listedVariables(ports_, working_)) names += qstring(name);
  if (names == offered_) return;
  const QString chosen = variables_->currentText();
  variables_->clear();
  variables_->addItems(names);
  variables_->setCurrentIndex(std::max(0, static_cast<int>(names.indexOf(chosen))));
  offered_ = names;
}

QWidget* frmCalcFields::buttons() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const char* caption, const char* help, auto act) {
    auto* button = new QPushButton(caption, row);
    button->setAutoDefault(false);
    describe(*button, caption, help);
    connect(button, &QPushButton::clicked, this, act);
    layout->addWidget(button);
  };
  add("&Add field", "Adds a field at the end.", [this] { addField(); });
  add("&Remove field", "Takes the chosen field out.", [this] { removeField(); });
  layout->addStretch(1);
  variables_->setObjectName("variables");
  // It would measure each of its names, of which there may be thousands.
  variables_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  variables_->setMinimumContentsLength(lettersOfVariable);
  describe(*variables_, "Variables", "Variables that expressions can use.");
  onRefresh([this] { offerVariables(); });
  layout->addWidget(variables_);
  add("&Insert variable", "Adds the variable to the expression of the chosen field.",
      [this] { insertVariable(); });
  return row;
}

void frmCalcFields::addField() {
  std::vector<CalculatedField>& fields = working_.calculated.fields;
  if (fields.size() >= model::maxCalculatedFields)
    return tell(QString("There are %1 fields, which is the most.").arg(fields.size()));
  fields.emplace_back();
  working_.calculated.CalcFieldCount = static_cast<std::int16_t>(fields.size());
  noteEdit("added field");
  view_->setCurrentIndex(sheet_.index(sheet_.rowCount() - 1, 0));
  view_->setFocus();
}

void frmCalcFields::removeField() {
  std::vector<CalculatedField>& fields = working_.calculated.fields;
  const int row = view_->currentIndex().row();
  if (row < 0 || static_cast<std::size_t>(row) >= fields.size()) return;
  fields.erase(fields.begin() + row);
  working_.calculated.CalcFieldCount = static_cast<std::int16_t>(fields.size());
  noteEdit(QString("removed field %1").arg(row + 1));
}

void frmCalcFields::insertVariable() {
  const int row = view_->currentIndex().row();
  if (row < 0 || static_cast<std::size_t>(row) >= working_.calculated.fields.size())
    return tell("Choose a field first, or add one.");
  std::string& expression = at(static_cast<std::size_t>(row)).CalcExpress;
  expression += utf8(variables_->currentText());
  noteEdit(QString("variable %1").arg(expression.size()));
}

/// A field whose expression is wrong leads back to it.
bool frmCalcFields::mayBeDone() {
  nameAnew();
  for (std::size_t row = 0; row < working_.calculated.fields.size(); ++row) {
    const CalculatedField& field = working_.calculated.fields[row];
    const auto& filed = ports_.session.project().calculated.fields;
    if (row < filed.size() && filed[row] == field) continue;  // as it came from the file
    const Complaint complaint = complaintAbout(row, "\r\n");
    if (!complaint) continue;
    ports_.messages.show(
        {.title = "CALCULATED FIELD",
         .text = text::concat("Field ", row + 1, " ", field.CalcName, ": ", *complaint)});
    view_->setCurrentIndex(sheet_.index(static_cast<int>(row), expressionColumn));
    return false;
  }
  return true;
}

std::vector<std::string> frmCalcFields::previewNames() const {
  std::vector<std::string> names = {"RunAvg*"};
  for (const CalculatedField& field : working_.calculated.fields)
    if (!field.CalcName.empty()) names.push_back(field.CalcName);
  return names;
}

}  // namespace ui
