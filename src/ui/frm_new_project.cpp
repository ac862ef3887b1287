#include "ui/frm_new_project.h"

#include <QApplication>
#include <QFileDialog>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "channels/channel_cells.h"
#include "control/panel_texts.h"
#include "control/session.h"
#include "control/summary.h"
#include "model/names.h"
#include "model/quantity_rules.h"
#include "model/table_rules.h"
#include "model/time_units.h"
#include "platform/disk_files.h"
#include "text/strings.h"
#include "ui/cell_columns.h"

namespace ui {
namespace {

using control::PlannedTable;
using control::PlanStep;
using model::ModuleKindIndex;

constexpr auto firstKind = static_cast<std::size_t>(ModuleKindIndex::adaptor7151);
constexpr int lastPlanned = 6;  // level crossings need levels, which a plan does not have
constexpr double mostChannels = model::maxBlocks * model::maxElements;

std::vector<std::string> unitNames() {
  std::vector<std::string> names;
  for (int code = 0; code <= 5; ++code) names.push_back(KGEN_COMMON::TimeUnitName(code, false));
  return names;
}

std::vector<Choice> scanUnits() {
  std::vector<Choice> choices;
  for (const std::string& name : unitNames())
    if (choices.size() < 5) choices.push_back({name, static_cast<int>(choices.size())});
  return choices;
}

QString shownNote(const control::PlanNote& note, bool prevents) {
  return (prevents ? "NOT POSSIBLE: " : "Note: ") + qstring(note.text) + ".";
}

QPlainTextEdit* textBox(QWidget* parent, bool readOnly) {
  auto* box = new QPlainTextEdit(parent);
  box->setReadOnly(readOnly);
  box->setTabChangesFocus(true);
  box->setLineWrapMode(QPlainTextEdit::NoWrap);
  return box;
}

}  // namespace

frmNewProject::frmNewProject(const WindowPorts& ports, QWidget* parent)
    : AskingDialog(ports, parent), steps_(new QTabWidget(this)), hint_(new QLabel(this)) {
  setObjectName("frmNewProject");
  setWindowTitle("New Project from a List");
  const model::DefaultSettings& defaults = ports.session.settings().defaults;
  plan_.scan = defaults.DefaultScanInterval;
  plan_.scanUnits = defaults.DefaultScanIntervalUnits;
  plan_.tables.resize(1);
  steps_->setObjectName("steps");
  describe(*steps_, "Steps", "The steps of the plan; any of them can be gone back to.");
  addStep("&1 Logger", loggerStep());
  addStep("&2 Kinds", kindsStep());
  addStep("&3 Channels", listStep());
  addStep("&4 Tables", tablesStep());
  auto* contents = new QSplitter(Qt::Horizontal, this);
  contents->addWidget(steps_);
  contents->addWidget(summaryColumn());
  contents->setStretchFactor(0, 1);
  contents->setChildrenCollapsible(false);
  hint_->setWordWrap(true);
  hint_->setMinimumHeight(2 * fontMetrics().height());
  hint_->setAccessibleName("Help line");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(contents, 1);
  layout->addWidget(hint_);
  layout->addWidget(bottom());
  connect(qApp, &QApplication::focusChanged, this, [this] { tell(); });
  plan();
  begun_ = plan_;
  resize(1180, 700);
}

frmNewProject::~frmNewProject() {
  disconnect(qApp, nullptr, this, nullptr);
  for (Form* form : forms_) form->disarm();
}

/// A page with what is to be said of its step below it.
void frmNewProject::addStep(const QString& title, QWidget* content) {
  auto* page = new QWidget(steps_);
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(content, 1);
  auto* notes = new QLabel(page);
  notes->setWordWrap(true);
  notes->setTextInteractionFlags(Qt::TextSelectableByMouse);
  notes_.push_back(notes);
  layout->addWidget(notes);
  steps_->addTab(page, title);
}

Form* frmNewProject::newForm() {
  auto* form = new Form(steps_);
  forms_.push_back(form);
  connect(form, &Form::edited, this, &frmNewProject::plan);
  return form;
}

SheetView* frmNewProject::addSheet(SheetModel& sheet, const QString& name, const QString& help) {
  sheets_.push_back(&sheet);
  auto* view = new SheetView(sheet, steps_);
  view->setObjectName(withoutMnemonic(name));
  describe(*view, name, help);
  view->verticalHeader()->hide();
  view->resizeColumnsToContents();
  sheet.setKeeper([this] { return [this, kept = plan_] { plan_ = kept; }; });
  connect(&sheet, &SheetModel::edited, this, &frmNewProject::plan);
  connect(&sheet, &SheetModel::refused, this, &frmNewProject::tell);
  return view;
}

// ---- the steps

QWidget* frmNewProject::loggerStep() {
  auto* page = new QWidget(steps_);
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  Form* form = newForm();
  const bool legacy = ports_.session.UseLegacy;
  form->choice(
      {"&CPU:", "The 7104 also measures isolated and TCMUX channels and sends CAN frames."},
      legacy ? choicesOf({"7103"}, 1) : choicesOf({"7103", "7104"}, 1),
      [this]() -> std::int16_t& { return plan_.cpu; });
  form->number({"&Scan interval:", "How often all channels are measured."}, Bounds{0.001, 1e9, 1},
               [this]() -> double& { return plan_.scan; });
  form->choice({"Scan &unit:", "The unit of the scan interval; uSec counts tens of microseconds."},
               scanUnits(), [this]() -> std::int16_t& { return plan_.scanUnits; });
  modules_.setColumns(moduleColumns(), [] { return model::moduleKinds - firstKind; });
  layout->addWidget(form);
  layout->addWidget(addSheet(modules_, "Modules",
                             "Modules that the logger has already. What the channels need besides "
                             "comes by itself."),
                    1);
  return page;
}

std::vector<SheetColumn> frmNewProject::moduleColumns() {
  return {{"Module", "The kind of module.",
           [](std::size_t row) {
             return std::string(model::quantityName(static_cast<int>(firstKind + row)));
           }},
          numberColumn<std::int16_t>(
              "There already", "How many the logger has; 0 when the channels decide.", 0,
              static_cast<double>(model::maxUserModules),
              [this](std::size_t row) -> std::int16_t& { return plan_.modules[firstKind + row]; }),
          {"In the project", "How many the new project has.", [this](std::size_t row) {
             return text::concat(planned_.project.configuration.ModuleQty[firstKind + row]);
           }}};
}

QWidget* frmNewProject::kindsStep() {
  kinds_.setColumns(kindColumns(), [] { return model::blockKinds; });
  return addSheet(kinds_, "Kinds of channels",
                  "How many channels of each kind there are. The list of the next step can name "
                  "them; where it has more, it counts.");
}

std::vector<SheetColumn> frmNewProject::kindColumns() {
  const auto kindOf = [](std::size_t row) { return model::allBlockKinds[row]; };
  return {{"Kind", "The kind of measurement.",
           [kindOf](std::size_t row) { return std::string(model::infoOf(kindOf(row)).name); }},
          numberColumn<std::size_t>(
              "Channels", "How many channels, those of the list among them.", 0, mostChannels,
              [this](std::size_t row) -> std::size_t& { return plan_.channels[row]; }),
          {"In the list", "Channels of this kind in the list.",
           [this, kindOf](std::size_t row) {
             return text::concat(std::count_if(
                 plan_.list.begin(), plan_.list.end(),
                 [kind = kindOf(row)](const auto& channel) { return channel.kind == kind; }));
           }},
          {"Blocks", "Blocks of the new project.",
           [this, kindOf](std::size_t row) {
             return text::concat(model::blockCount(planned_.project, kindOf(row)));
           }},
          {"Module", "What measures them.", [kindOf](std::size_t row) {
             return std::string(moduleName(model::infoOf(kindOf(row)).module));
           }}};
}

QWidget* frmNewProject::listStep() {
  auto* page = new QWidget(steps_);
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* words = new QLabel(
      "One line a channel: kind, name, units, multiplier, offset (of bridges the gauge factor), "
      "with tabs or commas between them. The channel table that another project exports does too.",
      page);
  words->setWordWrap(true);
  listBox_ = textBox(page, false);
  listBox_->setPlaceholderText("voltage, Inlet, bar, 0.25, -10\nthermocouple, Oven1, Deg_C");
  listBox_->setObjectName("list");
  describe(*listBox_, "Channel list", "Paste the channels here, for example from a spreadsheet.");
  connect(listBox_, &QPlainTextEdit::textChanged, this, &frmNewProject::readList);
  faults_ = textBox(page, true);
  faults_->setObjectName("faults");
  describe(*faults_, "Lines that are left out", "What is wrong with lines of the list.");
  auto* load = new QPushButton("&Load File...", page);
  load->setAutoDefault(false);
  describe(*load, "Load File...", "Reads the list out of a file.");
  connect(load, &QPushButton::clicked, this, [this] {
    const QString path = QFileDialog::getOpenFileName(this, "LOAD CHANNEL LIST", {},
                                                      "Lists (*.csv *.tsv *.txt);;All files (*)");
    if (!path.isEmpty()) loadList(path);
  });
  layout->addWidget(words);
  layout->addWidget(listBox_, 3);
  layout->addWidget(load, 0, Qt::AlignLeft);
  layout->addWidget(faults_, 1);
  return page;
}

QWidget* frmNewProject::tablesStep() {
  auto* page = new QWidget(steps_);
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  Form* form = newForm();
  form->addNumber(
      {"&Output tables:", "How many tables store the channels; more can be set up later."},
      [] {
        return Bounds{0, static_cast<double>(model::maxTables), 1};
      },
      true, [this] { return static_cast<double>(plan_.tables.size()); },
      [this](double count) { plan_.tables.resize(static_cast<std::size_t>(count)); });
  tables_.setColumns(tableColumns(), [this] { return plan_.tables.size(); });
  layout->addWidget(form);
  SheetView* view = addSheet(tables_, "Tables", "What each table stores of every channel.");
  const int letter = view->fontMetrics().averageCharWidth();
  view->setColumnWidth(1, 14 * letter);
  view->setColumnWidth(4, 32 * letter);
  layout->addWidget(view, 1);
  return page;
}

std::vector<SheetColumn> frmNewProject::tableColumns() {
  const auto at = [this](std::size_t row) -> PlannedTable& { return plan_.tables[row]; };
  const std::vector<std::string> units = unitNames();
  SheetColumn stores = {"Stores",
                        "What the table stores of every channel; several are joined by +.",
                        [at](std::size_t row) { return channels::maskText(at(row).processings); },
                        [at](std::size_t row, std::string_view cell) {
                          return channels::storeMask(cell, at(row).processings, lastPlanned);
                        }};
  stores.offers = [] { return channels::processingsUpTo(lastPlanned); };
  stores.combined = true;
  return {
      {"Table", "The number of the table.", [](std::size_t row) { return text::concat(row + 1); }},
      textColumn(
          "Name", "Up to 8 letters, digits and _; empty for a name of its own.",
          [at](std::size_t row) -> std::string& { return at(row).name; },
          [](std::string_view name) -> Complaint {
            if (name.empty()) return std::nullopt;
            if (model::typedTableName(name) != name)
              return text::concat("'", name, "' is no table name: up to 8 letters, digits and _");
            return model::complaintAboutAlias(name);
          }),
      {"Interval", "A whole number of the unit.",
       [at](std::size_t row) { return at(row).interval; },
       [at](std::size_t row, std::string_view cell) -> Complaint {
         if (!text::isNumber(cell) || model::clampedInterval(cell, at(row).units) != cell)
           return text::concat("'", cell, "' is no interval; write a whole number");
         at(row).interval = cell;
         return std::nullopt;
       }},
      listColumn(
          "Unit", "The unit of the interval; uSec counts tens of microseconds.", units,
          [at, units](std::size_t row) {
            return units.at(static_cast<std::size_t>(at(row).units));
          },
          [at](std::size_t row, std::size_t index) {
            at(row).units = static_cast<std::int16_t>(index);
          }),
      std::move(stores),
      {"In the project", "The name and interval that the table gets.",
       [this](std::size_t row) {
         if (row >= model::maxTables) return std::string();
         const model::OutputTable& table = planned_.project.tables[row];
         return text::concat(table.TableName, ", ", table.OutInt, " ",
                             KGEN_COMMON::TimeUnitName(table.OutIntUnits, false));
       }},
  };
}

// ---- what comes of it

QWidget* frmNewProject::summaryColumn() {
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  summary_ = textBox(side, true);
  summary_->setObjectName("summary");
  summary_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  summary_->setMinimumWidth(summary_->fontMetrics().horizontalAdvance(QString(64, '0')) + 30);
  describe(*summary_, "What will be made", "The summary of the project that the plan gives.");
  auto* caption = new QLabel("&What will be made", side);
  caption->setBuddy(summary_);
  allNotes_ = new QLabel(side);
  allNotes_->setObjectName("notes");
  allNotes_->setWordWrap(true);
  allNotes_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout->addWidget(caption);
  layout->addWidget(allNotes_);
  layout->addWidget(summary_, 1);
  return side;
}

void frmNewProject::readList() {
  list_ = channels::plannedChannelsFrom(utf8(listBox_->toPlainText()));
  plan_.list = list_.channels;
  plan();
}

void frmNewProject::plan() {
  planned_ = control::projectFrom(plan_, ports_.session.settings().defaults);
  for (Form* form : forms_) form->refresh();
  for (SheetModel* sheet : sheets_) sheet->refresh();
  showNotes();
  tell();
}

QString frmNewProject::notesOf(PlanStep step) const {
  QStringList lines;
  for (const control::PlanNote& note : planned_.obstacles)
    if (note.step == step) lines += shownNote(note, true);
  for (const control::PlanNote& note : planned_.remarks)
    if (note.step == step) lines += shownNote(note, false);
  return lines.join("\n");
}

void frmNewProject::showNotes() {
  QStringList faults;
  for (const channels::LineText& fault : list_.faults)
    faults += QString("line %1: %2").arg(fault.line).arg(qstring(fault.text));
  faults_->setPlainText(faults.join("\n"));
  faults_->setVisible(!faults.isEmpty());
  for (std::size_t step = 0; step < notes_.size(); ++step) {
    const QString notes = notesOf(static_cast<PlanStep>(step));
    notes_[step]->setText(notes);
    notes_[step]->setVisible(!notes.isEmpty());
    const bool faulty = static_cast<PlanStep>(step) == PlanStep::list && !faults.isEmpty();
    const bool stops = notes.startsWith("NOT");
    steps_->setTabIcon(
        static_cast<int>(step),
        stops || faulty ? style()->standardIcon(QStyle::SP_MessageBoxWarning) : QIcon());
    steps_->setTabToolTip(static_cast<int>(step), notes);
  }
  allNotes_->setText(allNotes());
  allNotes_->setVisible(!allNotes_->text().isEmpty());
  summary_->setPlainText(summary());
}

/// All that is not as planned, what stands in the way first.
QString frmNewProject::allNotes() const {
  QStringList notes;
  for (const control::PlanNote& note : planned_.obstacles) notes += shownNote(note, true);
  for (const control::PlanNote& note : planned_.remarks) notes += shownNote(note, false);
  const std::size_t left = list_.faults.size();
  if (left > 0)
    notes += left == 1 ? QString("Note: 1 line of the list is left out.")
                       : QString("Note: %1 lines of the list are left out.").arg(left);
  return notes.join("\n");
}

QString frmNewProject::summary() const {
  const model::ChannelPlan channels = model::channelPlan(planned_.project);
  return qstring(control::summaryText(planned_.project, channels,
                                      timing::measurementTimes(planned_.project, channels),
                                      {.name = "New project"}));
}

/// What is refused, or the help of what has the focus.
void frmNewProject::tell(const QString& words) {
  if (!words.isEmpty()) return hint_->setText(words);
  for (const Form* form : forms_)
    if (const Field* field = form->firstComplaint())
      return hint_->setText(qstring(*field->complaint()));
  const QWidget* focused = focusWidget();
  hint_->setText(focused != nullptr ? focused->toolTip() : QString());
}

void frmNewProject::loadList(const QString& path) {
  try {
    listBox_->setPlainText(QString::fromUtf8(platform::DiskFiles().read(utf8(path))));
  } catch (const ports::FileError& error) {
    ports_.messages.show({.title = "FILE", .text = error.what()});
  }
}

QWidget* frmNewProject::bottom() {
  auto* row = new QWidget(this);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const char* caption, const QString& help, auto act) {
    auto* button = new QPushButton(caption, row);
    describe(*button, caption, help);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, act);
    layout->addWidget(button);
    return button;
  };
  add("&Help", qstring(control::panel::help::extendedHelp),
      [this] { ports_.desk.showHelp(objectName()); });
  layout->addStretch();
  add("&Back", "Goes to the step before.",
      [this] { steps_->setCurrentIndex(std::max(steps_->currentIndex() - 1, 0)); });
  add("&Next", "Goes to the next step.", [this] {
    steps_->setCurrentIndex(std::min(steps_->currentIndex() + 1, steps_->count() - 1));
  })->setDefault(true);
  layout->addSpacing(12);
  add("&Make Project", "Closes the open project and begins the planned one.", [this] { accept(); });
  add("Cancel", "Closes the window; no project is made.", [this] { reject(); });
  return row;
}

/// Lines that can't be read are left out only when a person agrees.
bool frmNewProject::mayLeaveOut() {
  if (list_.faults.empty()) return true;
  return ports_.messages.show(
             {.title = "CHANNEL LIST",
              .text = text::concat("Lines of the channel list that can't be read: ",
                                   list_.faults.size(), ".\r\nMake the project without them?"),
              .icon = ports::Icon::question,
              .buttons = ports::Buttons::yesNo,
              .defaultButton = ports::Answer::no}) == ports::Answer::yes;
}

bool frmNewProject::edited() const { return plan_ != begun_ || !listBox_->document()->isEmpty(); }

std::optional<ports::Message> frmNewProject::questionAboutEdits() const {
  auto question = AskingDialog::questionAboutEdits();
  question->text = "No project is made of this plan yet.  Make it before closing?";
  return question;
}

/// What stands in the way leads to its step.
void frmNewProject::accept() {
  if (!planned_.obstacles.empty()) {
    goTo(planned_.obstacles.front().step);
    return tell(qstring(planned_.obstacles.front().text));
  }
  if (!mayLeaveOut()) return goTo(PlanStep::list);
  control::Session& session = ports_.session;
  if (!session.AskToSaveAll()) return;
  model::Project made = planned_.project;
  QDialog::accept();
  session.CloseSession();
  session.edit(std::move(made), "new project");
}

}  // namespace ui
