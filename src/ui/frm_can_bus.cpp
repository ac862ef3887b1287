#include "ui/frm_can_bus.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "channels/can_list.h"
#include "channels/channel_cells.h"
#include "dbc/proposals.h"
#include "model/can_values.h"
#include "model/free_channels.h"
#include "model/names.h"
#include "model/stored_outputs.h"
#include "platform/disk_files.h"
#include "text/strings.h"
#include "ui/cell_columns.h"
#include "ui/frm_can_import.h"
#include "ui/identifier_fields.h"
#include "ui/processing_buttons.h"

namespace ui {
namespace {

using model::CanItem;

const std::vector<std::string> styles = {"Receive", "Transmit", "Transmit, receive"};
constexpr double most = 1e30;

/// Those of the item's direction, and none before one was chosen.
std::vector<Choice> messageTypes(const CanItem& item) {
  std::vector<Choice> choices;
  CanItem each = item;
  for (each.ItemMessageType = 0; each.ItemMessageType <= 14; ++each.ItemMessageType)
    if (hasTypeOfDirection(each) || each.ItemMessageType == item.ItemMessageType)
      choices.push_back(
          {std::string(can::messageTypeText(each.ItemMessageType)), each.ItemMessageType});
  return choices;
}

std::vector<Choice> baudRates() {
  can::cCanModule module;
  std::vector<Choice> choices;
  for (std::int16_t code = 0; code < module.NumBaudRates(); ++code)
    choices.push_back({module.BaudRateText(code), code});
  return choices;
}

/// "&H" and digits, of which X stands for any.
Complaint complaintAboutPattern(std::string_view text) {
  std::string_view digits = text;
  if (digits.size() >= 2 && text::equalsIgnoringCase(digits.substr(0, 2), "&H"))
    digits.remove_prefix(2);
  if (!digits.empty() && digits.size() <= 16 &&
      digits.find_first_not_of("0123456789ABCDEFabcdefXx") == std::string_view::npos)
    return std::nullopt;
  return text::concat("'", text, "' is no pattern; write &H and up to 16 hexadecimal digits or X");
}

QString linesOf(const std::vector<channels::LineText>& faults) {
  QStringList lines;
  for (const channels::LineText& fault : faults)
    lines += QString("line %1: %2").arg(fault.line).arg(qstring(fault.text));
  return lines.join("\r\n");
}

}  // namespace

frmCanBus::frmCanBus(const WindowPorts& ports, QWidget* parent)
    : ListWindow(ports, {"frmCanBus", "CAN Bus", "CAN items"}, parent) {
  onRefresh([this] { shared_ = model::sharedBits(working_.can); });
  build(items(), busForm(), detail(), itemButtons());
  resize(1260, 860);
}

/// Before the first item there is nothing to edit; what is typed then goes nowhere.
CanItem& frmCanBus::item() {
  static thread_local CanItem none;
  if (row() < working_.can.items.size()) return working_.can.items[row()];
  return none = {};
}

ListWindow::List frmCanBus::items() {
  const auto at = [this](std::size_t row) -> CanItem& { return working_.can.items[row]; };
  std::vector<SheetColumn> columns = {
      textColumn(
          "Name", "A name for the item.",
          [at](std::size_t row) -> std::string& { return at(row).Name; },
          channels::complaintAboutItemText),
      yesNoColumn("Enabled", "yes: the program has the item.",
                  [at](std::size_t row) -> bool& { return at(row).Enabled; }),
      {"Identifier", "The message on the bus.",
       [at](std::size_t row) {
         return model::onlySends(at(row)) ? at(row).TxDataId : at(row).DataId;
       }},
      {"Bits", "First bit and number of bits.",
       [at](std::size_t row) { return text::concat(at(row).StartBit, " + ", at(row).NumBits); }},
      {"Values", "Values of like form, one after another.",
       [at](std::size_t row) { return text::concat(at(row).NumVals); }},
      {"Check", "What a program can't do with the item.",
       [this, at](std::size_t row) {
         return model::complaintAboutItem(at(row), working_.can).value_or(sharedBits(row));
       }},
  };
  return {"&Items", "Choose the item to set up.", std::move(columns),
          [this] { return working_.can.items.size(); },
          "There is no CAN item: add one, load a message list or import a database."};
}

Form* frmCanBus::busForm() {
  auto* form = new Form(this);
  model::CanSetup& can = working_.can;
  form->check({"CAN bus &in use", "The program has the CAN items."},
              [&can]() -> bool& { return can.CanBusEnabled; });
  form->choice({"&Baud rate:", "The rate of the bus, with its bit timing."}, baudRates(),
               [&can]() -> std::int16_t& { return can.CanBaud; })
      .then([&can] {
        can::cCanModule module;
        module.SetMode(can.CanBaud, 1);
        can.CanQuanta = module.TimeQuanta();
        can.CanSeg1 = module.TSeg1();
        can.CanSeg2 = module.TSeg2();
      });
  form->readout({"Bit timing:", "Time quanta and segments of a bit."}, [&can] {
    return text::concat(can.CanQuanta, " quanta, segments ", can.CanSeg1, " and ", can.CanSeg2);
  });
  form->number({"Address:", "The address of the CANIF."}, Bounds{0, 127},
               [&can]() -> std::int16_t& { return can.CanAddress; });
  form->choice({"Identi&fiers:", "Standard identifiers have 11 bits, extended ones 29."},
               choicesOf({"11 bits", "29 bits"}),
               [&can]() -> std::int16_t& { return can.CanDataIDType; });
  form->check({"Enable &transmit", "The program may send messages."},
              [&can]() -> bool& { return can.CanEnableTransmit; })
      .closedWhen([this]() -> std::string {
        return model::isK700X(working_.configuration) ? "" : "The 7103 CPU sends no messages.";
      });
  form->check({"NaN for &old data", "Values that did not come anew read as not a number."},
              [&can]() -> bool& { return can.CanNaNOldData; });
  form->check({"Save the list b&y itself", "Done writes the message list beside the project."},
              [&can]() -> bool& { return can.CanAutoSaveLists; });
  add(*form);
  return form;
}

QWidget* frmCanBus::itemButtons() {
  auto* row = new QWidget(this);
  auto* layout = new QGridLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  int place = 0;
  const auto add = [&](const char* caption, const char* help, auto act) {
    auto* button = new QPushButton(caption, row);
    button->setAutoDefault(false);
    describe(*button, caption, help);
    connect(button, &QPushButton::clicked, this, act);
    layout->addWidget(button, place / 3, place % 3);
    ++place;
  };
  const QString lists = "Message lists (*.txt *.tsv);;All files (*)";
  add("&Add item", "Adds an item at the end.", [this] { addItem(); });
  add("&Remove item", "Takes the chosen item out.", [this] { removeItem(); });
  add("Import databas&e...", "Takes items out of a CAN database (DBC).", [this] {
    const QString path = QFileDialog::getOpenFileName(this, "Import CAN database", {},
                                                      "CAN databases (*.dbc);;All files (*)");
    if (!path.isEmpty()) importDatabase(path);
  });
  add("&Load list...", "Adds the items of a message list.", [this, lists] {
    const QString path = QFileDialog::getOpenFileName(this, "Load message list", {}, lists);
    if (!path.isEmpty()) loadList(path);
  });
  add("&Save list...", "Writes the items as a message list.", [this, lists] {
    const QString path = QFileDialog::getSaveFileName(this, "Save message list", {}, lists);
    if (!path.isEmpty()) saveList(path);
  });
  return row;
}

QWidget* frmCanBus::detail() {
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* top = new QHBoxLayout;
  QScrollArea* form = scrolledDown(itemForm());
  fitWidth(*form);
  top->addWidget(form, 1);
  bits_ = new pictures::FrameBits(side);
  describe(*bits_, "Bits of the frame",
           "The bits that the items of the chosen identifier take; click one to choose it.");
  connect(bits_, &pictures::FrameBits::itemClicked, this,
          [this](int shown) { chooseRow(itemsOfMessage().at(static_cast<std::size_t>(shown))); });
  onRefresh([this] { showBits(); });
  top->addWidget(bits_, 1);
  layout->addLayout(top, 2);
  values_.setColumns(valueColumns(), [this] {
    return row() < working_.can.items.size() ? static_cast<std::size_t>(item().NumVals)
                                             : std::size_t(0);
  });
  auto* view = new SheetView(values_, side);
  view->setObjectName("values");
  describe(*view, "Values of the item", "Names, units, scaling and tables of each value.");
  add(values_);
  view->resizeColumnsToContents();
  layout->addWidget(view, 1);
  auto* buttons = new ProcessingButtons(*this, [this] { return processingOfItem(row()); });
  onRefresh([buttons] { buttons->refresh(); });
  layout->addWidget(buttons);
  layout->addWidget(frameRow());
  return side;
}

Form* frmCanBus::itemForm() {
  auto* form = new Form(this);
  const auto answers = [this] { return item().DataStyle == 2; };
  form->choice({"Dire&ction:", "Whether the logger receives or sends the message."},
               choicesOf({"Receive", "Transmit", "Transmit, then receive"}),
               [this]() -> std::int16_t& { return item().DataStyle; })
      .then([this] { item().ItemMessageType = model::typeOfDirection(item()); });
  addIdentifiers(*form);
  const Field& type = form->choice(
      {"T&ype:", "Byte order and kind of the values."}, [this] { return messageTypes(item()); },
      [this]() -> std::int16_t& { return item().ItemMessageType; });
  auto* types = static_cast<QComboBox*>(type.widget);  // whose texts are longer than the form
  types->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  types->setMinimumContentsLength(20);
  form->number({"Start bit:", "The first bit of the first value, from 1."}, Bounds{1, 64},
               [this]() -> std::int16_t& { return item().StartBit; });
  form->number({"Number of bits:", "Bits of each value."}, Bounds{1, 64},
               [this]() -> std::int16_t& { return item().NumBits; });
  form->number({"&Values:", "Values of like form, one after another."},
               Bounds{1, static_cast<double>(model::maxCanValues)},
               [this]() -> std::int16_t& { return item().NumVals; })
      .then([this] { growValues(); })
      .settledBy([this](double wanted) {
        fitValues(item());
        return wanted;
      });
  form->number({"&Multiplier:", "Of every value without its own scaling."}, Bounds{-most, most},
               [this]() -> double& { return item().Mult; });
  form->number({"&Offset:", "Of every value without its own scaling."}, Bounds{-most, most},
               [this]() -> double& { return item().Offset; });
  form->text(
      {"&Units:", "Units of up to 12 characters."}, 12,
      [this]() -> std::string& { return item().Units; }, model::complaintAboutUnits);
  form->pick(
      {"Data type:", "FP2 takes 2 bytes a value, IEEE4 takes 4."},
      [] {
        return std::vector<std::string>{"FP2", "IEEE4"};
      },
      [this]() -> std::string& { return item().DataType; });
  form->check({"&Public", "The values can be seen while the program runs."},
              [this]() -> bool& { return item().Public; });
  form->text(
          {"Frame to send:", "Sixteen hexadecimal digits behind &H."}, 18,
          [this]() -> std::string& { return item().TxDataFrame; }, model::complaintAboutFrame)
      .shownWhen([this] { return isTransmit(); });
  form->number({"Time limit:", "How long an answer is waited for.", "mSec"}, Bounds{0, 2147483647},
               [this]() -> std::int32_t& { return item().RxTimeout; })
      .shownWhen(answers);
  form->text(
          {"Answer &matches:", "Sixteen hexadecimal digits behind &H; X is not compared."}, 18,
          [this]() -> std::string& { return item().RxDataMatch; }, complaintAboutPattern)
      .shownWhen(answers);
  form->text(
          {"Answer mas&k:",
           "Sixteen hexadecimal digits behind &H; a shorter text compares all bits."},
          18, [this]() -> std::string& { return item().RxDataMask; }, complaintAboutPattern)
      .shownWhen(answers);
  form->text(
      {"Description:", "For people; the program has no use for it."}, 80,
      [this]() -> std::string& { return item().Description; }, channels::complaintAboutItemText);
  form->rowStretch();
  add(*form);
  return form;
}

void frmCanBus::addIdentifiers(Form& form) {
  addIdentifier(form, {"Iden&tifier:", "A number, or &H and hexadecimal digits."},
                {"Fields:", "What an extended identifier says by the J1939 convention."},
                &CanItem::DataId, [this] { return !model::onlySends(item()); });
  addIdentifier(form, {"Identifier to send:", "A number, or &H and hexadecimal digits."},
                {"Fields to send:", "What an extended identifier says by the J1939 convention."},
                &CanItem::TxDataId, [this] { return isTransmit(); });
}

/// Identifiers go through the CAN settings, which give them their form and know their fields.
void frmCanBus::addIdentifier(Form& form, const FieldText& text, const FieldText& fieldsText,
                              std::string CanItem::*place, const std::function<bool()>& shown) {
  Field& field = form.text(
                         text, 12, [this, place]() -> std::string& { return item().*place; },
                         [this](std::string_view typed) {
                           return model::complaintAboutIdentifier(typed, working_.can);
                         })
                     .shownWhen(shown);
  auto* box = static_cast<QLineEdit*>(field.widget);
  connect(box, &QLineEdit::editingFinished, &form, [this, &form, &field, box, place] {
    if (!box->isModified() || field.complaint()) return;
    can::cCanConfig config;
    config.SetMode(working_.can.CanDataIDType);
    config.DataID(item().*place);
    item().*place = config.DataID();
    form.noteEdit(box->objectName());
  });
  auto* fields = new IdentifierFields(&form);
  Field& shownFields = form.custom(fieldsText, fields).shownWhen(shown);
  shownFields.show = [this, fields, place] {
    fields->show(item().*place, working_.can.CanDataIDType);
  };
  connect(fields, &IdentifierFields::edited, &form,
          [this, &form, fields, place](const QString& identifier) {
            item().*place = utf8(identifier);
            form.noteEdit(fields->objectName());
          });
}

/// As channels have it, with the item in place of the block.
SheetColumn frmCanBus::scalingColumn(const QString& title, const QString& help,
                                     std::string_view name) {
  constexpr model::BlockKind like = model::BlockKind::voltage;
  const channels::Column& as = *channels::columnNamed(name);
  SheetColumn column;
  column.title = title;
  column.help = help;
  column.text = [this, &as](std::size_t row) {
    return cellText(as, {like, 1, row + 1}, scalingOf(item()), item().values[row]);
  };
  column.store = [this, &as](std::size_t row, std::string_view cell) {
    return storeCell(as, like, cell, scalingOf(item()), item().values[row]);
  };
  if (as.field == channels::Field::ownScaling)
    column.offers = [] { return std::vector<std::string>{"no", "yes"}; };
  return column;
}

std::vector<SheetColumn> frmCanBus::valueColumns() {
  const auto at = [this](std::size_t row) -> model::Element& { return item().values[row]; };
  std::vector<SheetColumn> columns = {
      textColumn(
          "Alias", "A name of up to 16 letters, digits and _, beginning with a letter.",
          [at](std::size_t row) -> std::string& { return at(row).AliasName; },
          model::complaintAboutAlias),
      textColumn(
          "Units", "Units of up to 12 characters.",
          [at](std::size_t row) -> std::string& { return at(row).AliasUnits; },
          model::complaintAboutUnits),
      scalingColumn("Own scaling",
                    "yes: the value's own multiplier and offset count; no: those of the item.",
                    "own scaling"),
      scalingColumn("Multiplier", "What counts for the value; another one is its own scaling.",
                    "multiplier"),
      scalingColumn("Offset", "What counts for the value; another one is its own scaling.",
                    "offset"),
  };
  for (SheetColumn& each :
       tableColumns(working_, model::lastProcessingOf(model::StoredSource::canItem),
                    [at](std::size_t row) -> model::TableMasks& { return at(row).Table; }))
    columns.push_back(std::move(each));
  return columns;
}

/// While a number is typed it may be a small one for a moment: the values beyond it stay until the
/// box is left.
void frmCanBus::growValues() {
  const auto wanted = static_cast<std::size_t>(std::max<int>(item().NumVals, 0));
  if (item().values.size() < wanted) item().values.resize(wanted);
}

void frmCanBus::fitValues(CanItem& item) {
  item.values.resize(static_cast<std::size_t>(std::max<int>(item.NumVals, 0)));
}

/// "good", or the items that take the same bits.
std::string frmCanBus::sharedBits(std::size_t row) const {
  std::string others;
  for (const model::SharedBits& each : shared_)
    if (each.first == row || each.second == row)
      others += text::concat(others.empty() ? "" : ", ",
                             (each.first == row ? each.second : each.first) + 1);
  return others.empty() ? "good" : "takes bits that another item takes too: " + others;
}

/// The rows of the chosen item's message.
std::vector<std::size_t> frmCanBus::itemsOfMessage() {
  std::vector<std::size_t> rows;
  for (std::size_t i = 0; i < working_.can.items.size(); ++i)
    if (model::areOfOneMessage(working_.can.items[i], item(), working_.can)) rows.push_back(i);
  return rows;
}

void frmCanBus::showBits() {
  QList<pictures::FrameItem> shown;
  int selected = -1;
  for (const std::size_t i : itemsOfMessage()) {
    const CanItem& each = working_.can.items[i];
    if (i == row()) selected = static_cast<int>(shown.size());
    const std::vector<int> bits = model::bitsOf(each);
    shown.append({qstring(model::valueName(each, i, 0)), QList<int>(bits.begin(), bits.end())});
  }
  bits_->setItems(shown);
  bits_->setSelected(selected);
}

QWidget* frmCanBus::frameRow() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* box = new QLineEdit(row);
  box->setPlaceholderText("18FEF100#0102A0FFFFFFFFFF");
  describe(*box, "Try a frame", "Paste a frame to see the values that the items make of it.");
  auto* caption = new QLabel("Try a &frame:", row);
  caption->setBuddy(box);
  frameValues_ = new QLabel(row);
  frameValues_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  frameValues_->setWordWrap(true);
  const auto show = [this, box] { frameValues_->setText(valuesOf(box->text())); };
  connect(box, &QLineEdit::textChanged, this, show);
  onRefresh(show);
  layout->addWidget(caption);
  layout->addWidget(box, 1);
  layout->addWidget(frameValues_, 2);
  return row;
}

QString frmCanBus::valuesOf(const QString& frame) const {
  if (frame.trimmed().isEmpty()) return {};
  const can::FrameReading reading = can::frameFrom(utf8(frame));
  if (!reading.frame) return qstring(reading.complaint);
  QStringList values;
  for (const model::DecodedValue& each : model::decoded(working_, *reading.frame))
    values += each.number ? QString("%1 = %2 %3")
                                .arg(qstring(each.name))
                                .arg(*each.number)
                                .arg(qstring(each.units))
                          : QString("%1: %2").arg(qstring(each.name), qstring(each.remark));
  return values.isEmpty() ? "No item receives this frame." : values.join(",  ");
}

/// Items have no place in a logger without the interface.
bool frmCanBus::hasInterface() {
  const auto complaint = model::complaintAboutCan(working_);
  if (complaint) ports_.messages.show(*complaint);
  return !complaint;
}

void frmCanBus::addItem() {
  if (!hasInterface()) return;
  if (working_.can.items.size() >= model::maxCanItems)
    return tell(QString("There are %1 items, which is the most.").arg(model::maxCanItems));
  CanItem item;
  item.values.resize(1);
  std::vector<CanItem> items = working_.can.items;
  items.push_back(std::move(item));
  takeItems(std::move(items), "added item");
  chooseRow(working_.can.items.size() - 1);
}

void frmCanBus::removeItem() {
  if (row() >= working_.can.items.size()) return;
  std::vector<CanItem> items = working_.can.items;
  items.erase(items.begin() + static_cast<std::ptrdiff_t>(row()));
  takeItems(std::move(items), QString("removed item %1").arg(row() + 1));
}

void frmCanBus::takeItems(std::vector<CanItem> items, const QString& what) {
  working_.can.items = std::move(items);
  working_.can.CanCount = static_cast<std::int16_t>(working_.can.items.size());
  noteEdit(what);
}

std::string frmCanBus::read(const QString& path, bool& ok) {
  ok = false;
  try {
    std::string text = platform::DiskFiles().read(utf8(path));
    ok = true;
    return text;
  } catch (const ports::FileError& error) {
    ports_.messages.show({.title = "FILE", .text = error.what()});
    return {};
  }
}

void frmCanBus::loadList(const QString& path) {
  if (!hasInterface()) return;
  bool ok = false;
  const std::string text = read(path, ok);
  if (!ok) return;
  channels::CanList list = channels::canItemsFrom(text, working_.can);
  if (!list.faults.empty())
    ports_.messages.show({.title = "MESSAGE LIST", .text = utf8(linesOf(list.faults))});
  std::vector<CanItem> items = working_.can.items;
  for (CanItem& each : list.items) items.push_back(std::move(each));
  takeItems(std::move(items), "loaded list");
}

void frmCanBus::saveList(const QString& path) {
  try {
    platform::DiskFiles().replace(utf8(path), channels::canListText(working_.can.items), true);
  } catch (const ports::FileError& error) {
    ports_.messages.show({.title = "FILE", .text = error.what()});
  }
}

void frmCanBus::importDatabase(const QString& path) {
  if (!hasInterface()) return;
  bool ok = false;
  const std::string text = read(path, ok);
  if (!ok) return;
  auto* window = new frmCanImport(dbc::read(text), working_, this);
  window->setAttribute(Qt::WA_DeleteOnClose);
  connect(window, &frmCanImport::chosen, this, [this](const model::Project& with) {
    working_ = with;
    noteEdit("imported items");
  });
  window->open();
}

/// An item that the edits made impossible leads back to it. Other identifiers touch all of them.
bool frmCanBus::mayBeDone() {
  const model::CanSetup& before = ports_.session.project().can;
  const auto& filed = before.items;
  const bool sameLength = before.CanDataIDType == working_.can.CanDataIDType;
  for (std::size_t i = 0; i < working_.can.items.size(); ++i) {
    CanItem& each = working_.can.items[i];
    if (sameLength && i < filed.size() && filed[i] == each) continue;
    fitValues(each);
    if (!each.Enabled) continue;
    const auto complaint = model::complaintAboutItem(each, working_.can);
    if (!complaint) continue;
    ports_.messages.show(
        {.title = "CAN ITEM", .text = text::concat("Item ", i + 1, ": ", *complaint)});
    chooseRow(i);
    return false;
  }
  saveListByItself();
  return true;
}

/// A project that has no place yet has none for its list.
void frmCanBus::saveListByItself() {
  const QFileInfo project(qstring(ports_.session.CurrentFileName()));
  const auto& filed = ports_.session.project().can.items;
  if (!working_.can.CanAutoSaveLists || !project.isAbsolute() || working_.can.items == filed)
    return;
  saveList(project.path() + "/" + project.completeBaseName() + "_CAN.txt");
}

std::vector<std::string> frmCanBus::previewNames() const {
  return {text::concat("CBlk", row() + 1, "*"), "CANBUS"};
}

}  // namespace ui
