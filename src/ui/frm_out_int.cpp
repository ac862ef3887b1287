#include "ui/frm_out_int.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSplitter>
#include <QVBoxLayout>
#include <limits>

#include "channels/channel_cells.h"
#include "companion/table_information.h"
#include "model/conditions.h"
#include "model/table_rules.h"
#include "model/time_units.h"
#include "ui/choices.h"
#include "ui/frm_table_times.h"
#include "ui/frm_trigger.h"
#include "ui/frm_write_if.h"
#include "verify/check_context.h"
#include "verify/window_checks.h"

namespace ui {
namespace {

using text::concat;

template <class Texts>
std::vector<Choice> choicesFrom(const Texts& texts) {
  std::vector<Choice> choices;
  choices.reserve(std::size(texts));
  for (const auto& [code, text] : texts) choices.push_back({std::string(text), code});
  return choices;
}

/// Filter rates that the project has.
std::vector<std::string> filterRates(const model::Project& project) {
  std::vector<std::string> rates;
  if (model::voltFilterMicros(project) > 0) rates.emplace_back("VFilt");
  if (model::fftFilterMicros(project) > 0) rates.emplace_back("FFilt");
  return rates;
}

bool isFilterRate(std::string_view interval) {
  return model::isVoltFilterRate(interval) || model::isFftFilterRate(interval);
}

std::string onlyNameKeys(std::string_view typed) {
  std::string name;
  for (const char key : typed)
    if (model::isTableNameKey(key)) name += key;
  return model::typedTableName(name);
}

/// What the interval box takes: digits, or a rate out of its list.
std::string onlyIntervalKeys(std::string_view typed) {
  if (isFilterRate(typed)) return std::string(typed);
  std::string digits;
  for (const char key : typed)
    if (text::isDigit(key)) digits += key;
  return digits.substr(0, 10);
}

/// A typing rule that leaves what a file brought as it is.
TypingRule* typingRule(std::string (*rule)(std::string_view),
                       std::function<const std::string&()> value, QObject* parent) {
  return new TypingRule(
      [rule, value](const QString& typed) {
        const std::string given = utf8(typed);
        return given == value() ? typed : qstring(rule(given));
      },
      parent);
}

std::string triggerLine(const model::OutputTable& table) {
  if (table.DisableTrigger) return "The trigger is disabled.";
  if (!model::hasActiveTrigger(table)) return "No trigger: records are stored all the time.";
  const std::string start = model::triggerText(table, 0), stop = model::triggerText(table, 1);
  return concat("Starts: ", start.empty() ? "at once" : start,
                "\nStops: ", stop.empty() ? "never" : stop);
}

std::string writeIfLine(const model::OutputTable& table) {
  if (table.DisableWriteIf) return "The conditions are disabled.";
  const std::string conditions = model::writeIfText(table);
  return conditions.empty() ? "No conditions." : concat("A record if ", conditions);
}

}  // namespace

frmOutInt::frmOutInt(const WindowPorts& ports, QWidget* parent)
    : SetupWindow(ports,
                  {.name = "frmOutInt",
                   .title = "Output Tables",
                   .editName = "output tables",
                   .cancelHelp = control::panel::help::abandonTables},
                  parent) {
  auto* contents = new QWidget(this);
  auto* layout = new QVBoxLayout(contents);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(tabs());
  auto* left = new Form;
  addTable(left->group("Table"));
  addInterval(left->group("Interval"));
  addStorage(left->group("Storage"));
  left->rowStretch();
  auto* right = new Form;
  addConditions(right->group("Conditions"));
  addFlags(right->group("Flags"));
  addAllTables(right->group("All tables"));
  right->rowStretch();
  auto* columns = new QSplitter(Qt::Horizontal, contents);
  for (QWidget* each : {static_cast<QWidget*>(left), static_cast<QWidget*>(right), storedList()})
    columns->addWidget(scrolled(each));
  columns->setStretchFactor(2, 1);
  columns->setSizes({410, 250, 560});
  columns->setChildrenCollapsible(false);
  layout->addWidget(columns, 1);
  add(*left);
  add(*right);
  onRefresh([this] { showTabs(); });
  setContents(contents);
  tabs_->setFocus();
  resize(1240, 780);
}

QTabBar* frmOutInt::tabs() {
  tabs_ = new QTabBar(this);
  tabs_->setObjectName("tabTables");
  tabs_->setDrawBase(false);
  for (std::size_t n = 1; n <= model::maxTables; ++n) tabs_->addTab({});
  describe(*tabs_, "Tables", "Choose the table to set up. Those that are off are marked.");
  connect(tabs_, &QTabBar::currentChanged, this,
          [this](int index) { chooseTable(static_cast<std::size_t>(index) + 1); });
  return tabs_;
}

void frmOutInt::showTabs() {
  for (int i = 0; i < tabs_->count(); ++i) {
    const model::OutputTable& each = working_.tables[static_cast<std::size_t>(i)];
    const QString name = qstring(each.TableName).replace('&', "&&");
    tabs_->setTabText(i, QString("&%1 %2%3").arg(i + 1).arg(name, each.TableOn ? "" : " (off)"));
  }
}

void frmOutInt::chooseTable(std::size_t number) {
  if (number == number_) return;
  turnTo([this, number] {
    number_ = number;
    tabs_->setCurrentIndex(static_cast<int>(number) - 1);
  });
}

void frmOutInt::addTable(Form& form) {
  form.check({"&On", "The table is in the program. One that is off keeps its settings."},
             [this]() -> bool& { return table().TableOn; });
  addName(form);
  form.readout({"Off:", "What becomes of a table that is off."},
               [] {
                 return std::string(
                     "not in the program; the next save forgets\n"
                     "what it stores of battery volts and current.");
               })
      .shownWhen([this] { return !table().TableOn; });
}

void frmOutInt::addName(Form& form) {
  Field& field =
      form.text({"&Name:", model::tableNameHelp}, static_cast<int>(model::maxTableNameLength),
                [this]() -> std::string& { return table().TableName; });
  auto* box = static_cast<QLineEdit*>(field.widget);
  box->setValidator(typingRule(
      onlyNameKeys, [this]() -> const std::string& { return table().TableName; }, box));
  nameKeeper_ = keepWhenEmpty(field, &model::OutputTable::TableName);
}

EmptyKeeper* frmOutInt::keepWhenEmpty(const Field& field, std::string model::OutputTable::*member) {
  auto* keeper = new EmptyKeeper(
      *field.widget, [ this, member ]() -> auto& { return table().*member; });
  connect(keeper, &EmptyKeeper::restored, this,
          [this, box = field.widget] { noteEdit(box->objectName()); });
  return keeper;
}

void frmOutInt::addInterval(Form& form) {
  Field& sync =
      form.check({"A record each &scan", "Forces a new record for each scan of the program."},
                 [this]() -> bool& { return table().SyncTable; });
  sync.widget->setObjectName("chkContOut");
  addIntervalBox(form);
  form.choice({"&Units:", "The unit of the interval."}, timeUnitChoices(),
              [this]() -> std::int16_t& { return table().OutIntUnits; })
      .closedWhen([this]() -> std::string {
        return isFilterRate(table().OutInt) ? "The filter sets the rate." : "";
      })
      .shownWhen([this] { return !table().SyncTable; });
  form.readout({"That is:", "The time between two records."}, [this] { return intervalText(); });
  auto* scans = new QLabel(this);
  scans->setWordWrap(true);
  onRefresh([this, scans] {
    scans->setText(qstring(concat(model::equivalentScansLabel(table()), "\n",
                                  model::equivalentScansText(working_, table()))));
  });
  form.row(scans);
}

void frmOutInt::addIntervalBox(Form& form) {
  Field& field = form.pick(
                         {"&Interval:",
                          "A whole number, or the rate of a filter. Enter brings a number that "
                          "is too large down to the largest."},
                         [this] { return filterRates(working_); },
                         [this]() -> std::string& { return table().OutInt; }, true)
                     .then([this] { proposeName(); })
                     .shownWhen([this] { return !table().SyncTable; });
  intervalBox_ = field.widget;
  intervalKeeper_ = keepWhenEmpty(field, &model::OutputTable::OutInt);
  static_cast<QComboBox*>(field.widget)
      ->setValidator(typingRule(
          onlyIntervalKeys, [this]() -> const std::string& { return table().OutInt; },
          field.widget));
}

std::string frmOutInt::intervalText() const {
  const model::ShownInterval interval = model::shownInterval(working_, table());
  if (!(interval.micros > 0)) return "no interval: there is no such filter";
  return concat(text::formatted(interval.number, "#,##0.######"), " ",
                KGEN_COMMON::TimeUnitName(interval.unitCode, false),
                interval.synchronous ? ", each scan" : "");
}

/// Not while the box is empty, on the way to another interval.
void frmOutInt::proposeName() {
  if (table().OutInt.empty()) return;
  table().TableName = model::proposedTableName(table(), number_);
}

void frmOutInt::clampInterval() {
  intervalKeeper_->restore();
  table().OutInt = model::clampedInterval(table().OutInt, table().OutIntUnits);
  noteEdit("Interval:");
}

void frmOutInt::addStorage(Form& form) {
  addPlace(form);
  form.check({"&Auto size", "Takes as many records as the memory holds."},
             [this]() -> bool& { return table().AutoSize; });
  form.number({"&Records:", "Records that the table holds; a negative number takes all memory."},
              Bounds{-1, std::numeric_limits<std::int32_t>::max()},
              [this]() -> std::int32_t& { return table().Buffer; })
      .shownWhen([this] { return !table().AutoSize; });
  form.check(
      {"Fill and sto&p", "Stops storing when the table is full; else the oldest records go."},
      [this]() -> bool& { return table().FillStop; });
  form.check({"Co&mpressed time", model::calculatedTimeHelp},
             [this]() -> bool& { return table().CalcTime; });
}

void frmOutInt::addPlace(Form& form) {
  form.choice({"&Location:", "Where the records are kept."}, choicesFrom(model::tableLocations),
              [this]() -> std::int16_t& { return table().TableLocation; });
  form.choice({"PCMCIA &card:", "Which card of the PAM module keeps the records."},
              choicesFrom(model::tableCards), [this]() -> std::int16_t& { return table().PamCard; })
      .closedWhen([this]() -> std::string {
        return table().TableLocation == 3 ? "" : "The table is on no card.";
      });
}

void frmOutInt::addFlags(Form& form) {
  struct Use {
    FieldText text;
    std::int16_t model::OutputTable::*flag;
  };
  const Use uses[] = {{{"&Write flag:", "Records are stored only while this flag is high."},
                       &model::OutputTable::FlagTable},
                      {{"Mar&k flag:", "A file mark is set when this flag is high."},
                       &model::OutputTable::FlagMark},
                      {{"Full &flag:", "This flag is raised when the table is full."},
                       &model::OutputTable::FlagFull}};
  for (const Use& use : uses)
    form.choice(use.text, flagChoices("None"),
                [this, use]() -> std::int16_t& { return table().*use.flag; })
        .then([this, use] { tellOfFlag(table().*use.flag); });
}

void frmOutInt::tellOfFlag(int flag) {
  if (const auto information = model::informationAboutFlag(working_, flag))
    ports_.messages.show(*information);
}

void frmOutInt::addConditions(Form& form) {
  const auto line = [this, &form](std::function<std::string()> words) {
    auto* label = new QLabel(this);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    onRefresh([label, words = std::move(words)] { label->setText(qstring(words())); });
    form.row(label);
  };
  form.button({"Tri&gger...", "Press to set up what starts and stops the table."},
              [this] { openInner(new frmTrigger(*this, number_)); });
  line([this] { return triggerLine(table()); });
  form.button({"Writ&e if...", "Press to set up the conditions for a record."},
              [this] { openInner(new frmWriteIf(*this, number_)); });
  line([this] { return writeIfLine(table()); });
}

void frmOutInt::addAllTables(Form& form) {
  form.choice(
      {"&QV40 shows:", "The table whose variables the QV40 display shows."},
      [this] {
        std::vector<Choice> choices = choicesOf({"no table"});
        for (int n = 1; n <= static_cast<int>(model::maxTables); ++n)
          choices.push_back({working_.tables[static_cast<std::size_t>(n - 1)].TableName, n});
        return choices;
      },
      [this]() -> std::int16_t& { return working_.QV40; });
  form.button({"Ta&ble times", model::tableTimeHelp}, [this] { cmdTableTime_Click(); });
  form.button({"Table si&zes...", "Press to size tables by memory or by the time they hold."},
              [this] { openInner(new frmTableTimes(*this)); });
}

void frmOutInt::cmdTableTime_Click() {
  constexpr int unexpected = 1;
  try {
    ports_.messages.show(model::tableTimeMessage(working_));
  } catch (const std::exception& fault) {
    ports_.errors.report(unexpected, fault.what(), "frmOutInt.cmdTableTime_Click");
  }
}

QWidget* frmOutInt::storedList() {
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(6, 6, 6, 6);
  onRefresh([this] { findStored(); });
  list_.setColumns(storedColumns(), [this] { return stored_.size(); });
  auto* view = new SheetView(list_, side);
  view->setObjectName("stored");
  view->verticalHeader()->hide();
  describe(*view, "What the table stores",
           "What a record holds, in its order. It is chosen in the windows of the measurements.");
  auto* caption = new QLabel("&Values that the table stores", side);
  caption->setBuddy(view);
  auto* total = new QLabel(side);
  total->setWordWrap(true);
  onRefresh([this, total] { total->setText(qstring(recordText())); });
  layout->addWidget(caption);
  layout->addWidget(view, 1);
  layout->addWidget(total);
  add(list_);
  const int letter = fontMetrics().averageCharWidth();
  const int widths[] = {34, 28, 8};
  for (int i = 0; i < 3; ++i) view->setColumnWidth(i, widths[i] * letter);
  return side;
}

std::vector<SheetColumn> frmOutInt::storedColumns() {
  return {
      {"Source", "Where the values come from.",
       [this](std::size_t row) { return stored_[row].source; }},
      {"Stored", "What of them is stored.", [this](std::size_t row) { return stored_[row].what; }},
      {"Values", "Values in each record.",
       [this](std::size_t row) { return concat(stored_[row].values); }},
      {"Bytes", "Bytes in each record.",
       [this](std::size_t row) { return concat(stored_[row].bytes); }}};
}

void frmOutInt::findStored() {
  stored_.clear();
  const model::ChannelPlan plan = model::channelPlan(working_);
  for (const model::StoredGroup& group : model::storedGroups(working_, plan, number_))
    for (const model::StoredOutput& output : group.outputs) {
      const std::size_t values = output.count * output.valuesEach;
      const auto bytes = static_cast<std::size_t>(KGEN_COMMON::BytesPerValue(group.dataType));
      const std::string_view word =
          channels::processingWords()[static_cast<std::size_t>(output.code)];
      stored_.push_back(
          {std::string(text::trimmed(companion::titleOf(group))),
           output.element > 0 ? concat(word, " of channel ", output.element) : std::string(word),
           values, values * bytes});
    }
}

std::string frmOutInt::recordText() const {
  std::size_t stored = 0;
  for (const Stored& each : stored_) stored += each.bytes;
  model::cOutputTable record;
  record.setRecord(static_cast<std::int32_t>(stored), !table().CalcTime);
  const auto whole = static_cast<std::size_t>(record.RecordBytes());
  if (whole == stored) return concat("A record takes ", stored, " bytes.");
  return concat("A record takes ", whole, " bytes: ", stored, " of data and ", whole - stored,
                " of date and time.");
}

bool frmOutInt::mayBeDone() {
  if (const auto duplicate = model::complaintAboutDuplicateNames(working_)) {
    ports_.messages.show(*duplicate);
    return false;
  }
  const auto off = static_cast<unsigned>(ports_.session.settings().WarningMessageMask);
  if ((off & verify::similarNamesOff) == 0)
    for (const ports::Message& warning : model::warningsAboutSimilarNames(working_))
      ports_.messages.show(warning);
  const auto question = model::questionAboutTableFlags(working_);
  if (question && ports_.messages.show(*question) == ports::Answer::no) return false;
  return isRidOfStatistics();
}

/// Tables that keep a record each scan store samples.
bool frmOutInt::isRidOfStatistics() {
  if (working_.tables == ports_.session.project().tables) return true;
  bool problem = false;
  KGEN_COMMON::CheckScanRateTables(working_, {ports_.messages, ports_.errors}, problem);
  return !problem;
}

std::vector<std::string> frmOutInt::previewNames() const {
  const std::string& name = table().TableName;
  return {concat("TriggerCall", name, "{}"), concat(name, "{}"), concat("INTERVAL", number_),
          concat("UNITS", number_)};
}

/// Enter in the interval box settles the interval; elsewhere it is Done.
bool frmOutInt::eventFilter(QObject* watched, QEvent* event) {
  if (watched == intervalBox_ && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      clampInterval();
      return true;
    }
  }
  return SetupWindow::eventFilter(watched, event);
}

std::optional<ports::Message> frmOutInt::questionAboutEdits() const {
  return model::questionAboutTableEdits();
}

}  // namespace ui
