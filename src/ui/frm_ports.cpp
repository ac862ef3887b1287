#include "ui/frm_ports.h"

#include <QLabel>
#include <QVBoxLayout>

#include "companion/wiring_diagram.h"
#include "text/strings.h"
#include "ui/cell_columns.h"
#include "ui/condition_sheet.h"
#include "ui/listed_variables.h"
#include "ui/mask_box.h"
#include "ui/processing_buttons.h"
#include "ui/sheet_delegate.h"

namespace ui {
namespace {

using model::Port;
using model::PortGroup;

const std::vector<std::string> polarities = {"High when true", "Low when true"};

std::string groupName(const model::PortGroupPlace& place) {
  const char* module = place.input ? "7141/42" : "7131";
  const char* ports = !place.input ? "1-8" : place.upper ? "9-16" : "1-8";
  return text::concat(module, " slot ", place.slot, ", ports ", ports);
}

/// Cells of ports that something else uses are grey and open no editor.
class TakenPorts final : public SheetDelegate {
 public:
  TakenPorts(std::function<bool(std::size_t port)> taken, QObject* parent)
      : SheetDelegate(parent), taken_(std::move(taken)) {}

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override {
    return isTaken(index) ? nullptr : SheetDelegate::createEditor(parent, option, index);
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    SheetDelegate::initStyleOption(option, index);
    if (isTaken(index)) option->state &= ~QStyle::State_Enabled;
  }

 private:
  [[nodiscard]] bool isTaken(const QModelIndex& index) const {
    return taken_(static_cast<std::size_t>(index.row()));
  }
  std::function<bool(std::size_t port)> taken_;
};

/// The project without ports: what else has its terminals.
model::Project withoutPorts(model::Project project) {
  project.ports = {};
  return project;
}

}  // namespace

frmPorts::frmPorts(const WindowPorts& ports, QWidget* parent)
    : ListWindow(ports, {"frmPorts", "Digital Ports", "ports"}, parent) {
  onRefresh([this] { plan(); });
  plan();
  auto* options = new Form(this);
  options->choice({"&Instructions:", "One instruction for each port, or one for each group."},
                  choicesOf({"One a port", "One a group"}),
                  [this]() -> std::int16_t& { return working_.ports.CodeType; });
  add(*options);
  build(groups(), options, detail());
  resize(1200, 740);
}

void frmPorts::plan() {
  places_ = model::channelPlan(working_).portGroups;
  const model::Project others = withoutPorts(working_);
  otherUses_.clear();
  for (const auto& slot : MAKEWIRE::wiringDiagram(others, model::channelPlan(others)).slots)
    for (const MAKEWIRE::WiringRow& row : slot.rows)
      if (row.used()) otherUses_[{slot.number, row.terminal}] = row.function;
}

PortGroup& frmPorts::group() {
  static thread_local PortGroup none;
  if (row() < working_.ports.groups.size()) return working_.ports.groups[row()];
  return none = {};
}

bool frmPorts::canRead() const { return row() < places_.size() && places_[row()].input; }

std::string frmPorts::otherUse(std::size_t port) const {
  if (row() >= places_.size()) return "no module";
  const model::PortGroupPlace& place = places_[row()];
  const std::size_t number = port + (place.upper ? 9 : 1);
  const auto found = otherUses_.find({place.slot, text::concat(place.input ? "D" : "C", number)});
  return found == otherUses_.end() ? std::string() : found->second;
}

ListWindow::List frmPorts::groups() {
  const auto included = [this](std::size_t row) {
    std::string list;
    for (std::size_t p = 0; p < model::portsPerGroup; ++p)
      if (working_.ports.groups[row].ports[p].Include)
        list += text::concat(list.empty() ? "" : ",", p + 1);
    return list;
  };
  std::vector<SheetColumn> columns = {
      {"Group", "Eight ports of a module.",
       [this](std::size_t row) {
         return row < places_.size() ? groupName(places_[row]) : std::string("no module");
       }},
      {"Direction", "Whether the program writes or reads the group.",
       [this](std::size_t row) {
         return std::string(working_.ports.groups[row].ReadMode ? "read" : "write");
       }},
      {"In use", "Ports of the group that the program uses.", included},
  };
  return {"&Groups", "Choose the group of ports to set up.", std::move(columns),
          [this] { return working_.ports.groups.size(); },
          "The logger has no ports: add a 7131 or 7141/42 module in the hardware window."};
}

QWidget* frmPorts::detail() {
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(groupForm());
  portSheet_.setColumns(portColumns(), [this] {
    return working_.ports.groups.empty() ? std::size_t(0) : model::portsPerGroup;
  });
  auto* view = new SheetView(portSheet_, side);
  view->setObjectName("ports");
  view->setItemDelegate(new TakenPorts(
      [this](std::size_t port) { return !group().ports[port].Include && !otherUse(port).empty(); },
      view));
  describe(*view, "Ports of the group", "Choose a port to see its conditions.");
  connect(view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& index) {
            if (!index.isValid() || static_cast<std::size_t>(index.row()) == port_) return;
            turnTo([this, &index] { port_ = static_cast<std::size_t>(index.row()); });
          });
  add(portSheet_);
  view->resizeColumnsToContents();
  layout->addWidget(view, 2);
  auto* caption = new QLabel(side);
  onRefresh([this, caption] {
    caption->setText(group().ReadMode ? "Ports that are read have no conditions."
                                      : QString("Conditions of port %1").arg(port_ + 1));
  });
  layout->addWidget(caption);
  layout->addWidget(conditions(), 1);
  return side;
}

Form* frmPorts::groupForm() {
  auto* form = new Form(this);
  form->check({"&Read the group", "The ports are inputs; otherwise they are outputs."},
              [this]() -> bool& { return group().ReadMode; })
      .closedWhen([this]() -> std::string {
        return canRead() ? "" : "Ports of a 7131 can only be written.";
      });
  form->check({"&Byte mode", "The eight ports make one number."},
              [this]() -> bool& { return group().ByteMode; });
  form->pick(
      {"Data &type:", "FP2 takes 2 bytes a value, IEEE4 takes 4."},
      [] {
        return std::vector<std::string>{"FP2", "IEEE4"};
      },
      [this]() -> std::string& { return group().DataResolution; });
  form->check({"P&ublic", "The values can be seen while the program runs."},
              [this]() -> bool& { return group().Public; });
  Form& tables = form->group("Stored by the tables");
  addMasks(tables, working_, model::lastProcessingOf(model::StoredSource::port),
           "the number that is read", [this]() -> model::TableMasks& { return group().Table; });
  auto* buttons = new ProcessingButtons(*this, [this] { return processingOfPorts(row()); });
  tables.row(buttons);
  onRefresh([this, buttons, &tables] {
    buttons->refresh();
    tables.parentWidget()->setVisible(group().ReadMode);
  });
  add(*form);
  return form;
}

/// A column for groups that are read, or for those that are written; it is empty for the others.
SheetColumn frmPorts::onlyOf(bool read, SheetColumn column) {
  column.text = [this, read, text = column.text](std::size_t row) {
    return group().ReadMode == read ? text(row) : std::string();
  };
  column.store = [this, read, store = column.store](std::size_t row,
                                                    std::string_view cell) -> Complaint {
    if (group().ReadMode == read) return store(row, cell);
    if (cell.empty()) return std::nullopt;
    return read ? "the group is written; only ports that are read have a mask"
                : "the group is read; only ports that are written have a polarity";
  };
  return column;
}

std::vector<SheetColumn> frmPorts::portColumns() {
  const auto at = [this](std::size_t row) -> Port& { return group().ports[row]; };
  SheetColumn include = yesNoColumn("In use", "yes: the program uses the port.",
                                    [at](std::size_t row) -> bool& { return at(row).Include; });
  include.store = [this, at](std::size_t row, std::string_view cell) -> Complaint {
    bool wanted = false;
    if (Complaint complaint = storeYesNo(cell, wanted)) return complaint;
    if (const std::string other = otherUse(row); wanted && !other.empty())
      return text::concat("the port is taken: ", other, "; choose another one");
    at(row).Include = wanted;
    return std::nullopt;
  };
  return {
      {"Port", "The port of the group.", [](std::size_t row) { return text::concat(row + 1); }},
      std::move(include),
      onlyOf(false, listColumn(
                        "Polarity", "The level of the port while its condition is met.", polarities,
                        [at](std::size_t row) { return polarities[at(row).Polarity == 0 ? 0 : 1]; },
                        [at](std::size_t row, std::size_t index) {
                          at(row).Polarity = static_cast<std::int16_t>(index);
                        })),
      onlyOf(true, numberColumn<std::int16_t>(
                       "Mask", "Weight of an input in the number that is read; 0: its own bit.", 0,
                       255, [at](std::size_t row) -> std::int16_t& { return at(row).BinaryMask; })),
      {"Taken by", "What else uses the terminal.",
       [this](std::size_t row) { return otherUse(row); }},
  };
}

QWidget* frmPorts::conditions() {
  ConditionRows rows;
  rows.rows = model::conditionsPerPort;
  rows.at = [this](std::size_t condition) -> model::Condition& {
    return group().ports[port_].conditions[condition];
  };
  rows.ofState = true;
  auto* sheet = new ConditionSheet(std::move(rows), working_, listedTypes(ports_),
                                   "Conditions of the port", this);
  add(sheet->sheet());
  onRefresh([this, sheet] { sheet->setVisible(!group().ReadMode); });
  return sheet;
}

std::vector<std::string> frmPorts::previewNames() const {
  return {"WritPort*", "ReadPort*", "PortSet", "WriteIO", "ReadIO", "Port(1)*"};
}

}  // namespace ui
