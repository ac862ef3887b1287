#include "ui/processing_window.h"

#include <QSplitter>

#include "model/parameter_text.h"
#include "model/stored_outputs.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace ui {

ProcessingWindow::ProcessingWindow(SetupWindow& owner, ProcessingTarget target, int code,
                                   WindowInfo info)
    : SetupWindow(owner, std::move(info)), target_(std::move(target)), code_(code) {
  while (table_ + 1 < model::maxTables && channelsIn(table_) == 0) ++table_;
  if (channelsIn(table_) > 0) return;
  for (table_ = 0; table_ + 1 < model::maxTables && !working_.tables[table_].TableOn;) ++table_;
}

void ProcessingWindow::build(QWidget* picture) {
  auto* form = new Form;
  addParameters(*form);
  if (!target_.shared.empty()) {
    auto* shared = new QLabel(qstring(target_.shared), form);
    shared->setWordWrap(true);
    form->row(shared);
  }
  addSizes(form->group("Record"));
  form->rowStretch();
  auto* contents = new QSplitter(Qt::Horizontal, this);
  contents->addWidget(form);
  contents->addWidget(picture);
  contents->setStretchFactor(1, 1);
  contents->setChildrenCollapsible(false);
  add(*form);
  onRefresh([this] { showPicture(); });
  setContents(contents);
  form->setFocus();
  resize(900, 480);
}

void ProcessingWindow::addTable(Form& form) {
  std::vector<Choice> tables;
  for (std::size_t t = 0; t < model::maxTables; ++t)
    if (working_.tables[t].TableOn)
      tables.push_back({working_.tables[t].TableName, static_cast<int>(t)});
  form.choice({"&Table:", "Each table has parameters of its own."}, std::move(tables),
              [this]() -> std::size_t& { return table_; })
      .then([this] { showOther(); });
}

void ProcessingWindow::setNumber(std::size_t place, double number) {
  std::vector<double> all = numbers();
  all.at(place) = number;
  parameterText() = model::parameterText(all);
}

Field& ProcessingWindow::addParameter(Form& form, const FieldText& text, const Bounds& bounds,
                                      std::size_t place) {
  const bool whole = bounds.step >= 1 && bounds.low >= 0;
  return form.addNumber(
      text, [bounds] { return bounds; }, whole, [this, place] { return numbers().at(place); },
      [this, place](double number) { setNumber(place, number); });
}

void ProcessingWindow::addFormOfResult(Form& form, std::size_t place) {
  form.addChoice(
      {"&Form:", "What each value of the result is."},
      [] {
        return choicesOf({"Counts", "Fractions of all"});
      },
      [this, place] { return static_cast<int>(numbers().at(place)); },
      [this, place](int choice) { setNumber(place, choice); });
}

std::size_t ProcessingWindow::valuesEach() {
  const std::string& text = parameterText();  // of the processing, whichever it is
  return KGEN_COMMON::ValuesPerOutput(true, code_, text, text, text);
}

void ProcessingWindow::addSizes(Form& form) {
  form.readout({"Values:", "That a record stores of each channel."},
               [this] { return text::concat(valuesEach(), " of each channel"); });
  form.readout({"Stored of:", "Channels that the table stores this way."}, [this] {
    const std::size_t channels = channelsIn(table_);
    return text::concat(channels, channels == 1 ? " channel" : " channels");
  });
  form.readout({"Record:", "All data bytes of a record of the table."}, [this] {
    std::int32_t bytes = 0;
    KGEN_COMMON::BytesPerRecord(working_, table_ + 1, bytes);
    return text::concat(text::formatted(bytes, "#,##0"), " bytes in ",
                        working_.tables[table_].TableName);
  });
}

}  // namespace ui
