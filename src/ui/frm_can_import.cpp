#include "ui/frm_can_import.h"

#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "text/strings.h"
#include "ui/cell_columns.h"
#include "ui/form.h"

namespace ui {
namespace {

std::string joined(const std::vector<std::string>& lines) {
  std::string out;
  for (const std::string& line : lines) out += text::concat(out.empty() ? "" : "; ", line);
  return out;
}

}  // namespace

frmCanImport::frmCanImport(dbc::Database database, const model::Project& project, QWidget* parent)
    : QDialog(parent),
      database_(std::move(database)),
      project_(project),
      proposals_(dbc::proposalsFor(database_, project)),
      count_(new QLabel(this)) {
  setObjectName("frmCanImport");
  setWindowTitle("Import CAN Database");
  sheet_.setColumns(columns(), [this] { return proposals_.list.size(); });
  auto* view = new SheetView(sheet_, this);
  view->setObjectName("signals");
  describe(*view, "Signals", "Write yes beside each signal to import.");
  view->resizeColumnsToContents();
  connect(&sheet_, &SheetModel::edited, this, &frmCanImport::showCount);
  connect(&sheet_, &SheetModel::refused, count_, &QLabel::setText);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(view, 3);
  if (!database_.faults.empty()) layout->addWidget(faults(), 1);
  layout->addWidget(count_);
  layout->addWidget(buttons());
  showCount();
  resize(1040, 640);
}

std::vector<SheetColumn> frmCanImport::columns() {
  const auto at = [this](std::size_t row) -> const dbc::Proposal& { return proposals_.list[row]; };
  const auto signalOf = [this, at](std::size_t row) -> const dbc::Signal& {
    return database_.messages[at(row).message].signals[at(row).signal];
  };
  return {
      {"Import", "yes: the signal becomes an item of the project.",
       [this](std::size_t row) { return yesNoText(chosen_.count(row) != 0); },
       [this](std::size_t row, std::string_view cell) { return choose(row, cell); },
       [] {
         return std::vector<std::string>{"no", "yes"};
       }},
      {"Message", "Of the database.",
       [this, at](std::size_t row) { return database_.messages[at(row).message].name; }},
      {"Signal", "Of the database.", [signalOf](std::size_t row) { return signalOf(row).name; }},
      {"Name", "In the project.", [at](std::size_t row) { return at(row).name; }},
      {"Identifier", "Of the message.", [at](std::size_t row) { return at(row).item.DataId; }},
      {"Bits", "First bit and number of bits, as the logger counts them.",
       [at](std::size_t row) {
         return text::concat(at(row).item.StartBit, " + ", at(row).item.NumBits);
       }},
      {"Units", "In the project.", [at](std::size_t row) { return at(row).item.Units; }},
      {"Remarks", "Why a signal can't be had, and what is not as in the database.",
       [at](std::size_t row) {
         return at(row).reason.empty() ? joined(at(row).notes) : at(row).reason;
       }},
  };
}

QWidget* frmCanImport::faults() {
  auto* list = new QPlainTextEdit(this);
  list->setReadOnly(true);
  list->setTabChangesFocus(true);
  list->setObjectName("faults");
  describe(*list, "Faults in the database", "Lines that could not be read, and why.");
  for (const dbc::Fault& fault : database_.faults)
    list->appendPlainText(QString("line %1: %2").arg(fault.line).arg(qstring(fault.text)));
  return list;
}

QWidget* frmCanImport::buttons() {
  auto* box = new QDialogButtonBox(this);
  const auto add = [&](const char* caption, const char* help, QDialogButtonBox::ButtonRole role) {
    QPushButton* button = box->addButton(caption, role);
    button->setAutoDefault(false);
    describe(*button, caption, help);
    return button;
  };
  connect(add("&All that fit", "Chooses every signal that can be had as it is.",
              QDialogButtonBox::ActionRole),
          &QPushButton::clicked, this, [this] { chooseReady(); });
  add("Cancel", "Imports nothing.", QDialogButtonBox::RejectRole);
  add("&Import", "Adds the chosen signals to the project.", QDialogButtonBox::AcceptRole);
  connect(box, &QDialogButtonBox::accepted, this, &frmCanImport::accept);
  connect(box, &QDialogButtonBox::rejected, this, &frmCanImport::reject);
  return box;
}

Complaint frmCanImport::choose(std::size_t row, std::string_view cell) {
  bool wanted = false;
  if (Complaint complaint = storeYesNo(cell, wanted)) return complaint;
  if (wanted && proposals_.list[row].fitness == dbc::Fitness::impossible)
    return proposals_.list[row].reason;
  if (wanted)
    chosen_.insert(row);
  else
    chosen_.erase(row);
  return std::nullopt;
}

void frmCanImport::chooseReady() {
  for (std::size_t i = 0; i < proposals_.list.size(); ++i)
    if (proposals_.list[i].fitness == dbc::Fitness::ready) chosen_.insert(i);
  sheet_.refresh();
  showCount();
}

void frmCanImport::showCount() {
  count_->setText(
      QString("%1 of %2 signals are chosen.").arg(chosen_.size()).arg(proposals_.list.size()));
}

/// What has no room is told, and the window stays.
void frmCanImport::accept() {
  std::vector<const dbc::Proposal*> list;
  for (const std::size_t place : chosen_) list.push_back(&proposals_.list[place]);
  model::Project with = project_;
  const std::vector<std::string> leftOut = dbc::addItems(with, proposals_, list);
  if (!leftOut.empty()) return count_->setText(qstring(joined(leftOut)));
  Q_EMIT chosen(with);
  QDialog::accept();
}

}  // namespace ui
