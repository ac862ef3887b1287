#include "ui/frm_options.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "control/panel_texts.h"
#include "model/pick_list.h"
#include "model/time_units.h"
#include "ui/choices.h"
#include "ui/colour_button.h"
#include "verify/check_context.h"

namespace ui {
namespace {

constexpr int longestPath = 4096;
constexpr int pathWidth = 320;

/// A switch for one bit of a mask.
struct Bit {
  unsigned bit;
  FieldText text;
};
constexpr Bit warningBits[] = {
    {verify::timingCheckOff,
     {"&Measurements that take longer than the scan", "Checked when a project is saved."}},
    {verify::tableIntervalCheckOff,
     {"&Table intervals that are no whole number of scans", "Checked when a project is saved."}},
    {verify::floatingGroundOff,
     {"Differential measurements without a &ground",
      "Signals that are not referenced to ground need a wire to it."}},
    {verify::similarNamesOff,
     {"Table &names that begin alike", "Files of collected data are named by their beginning."}},
    {verify::slowSequenceOff,
     {"Scans too long for &battery saver and self calibration",
      "Above 30 seconds the logger has no time for them."}},
    {verify::duplicateFlagsOff,
     {"&Flags of the status monitor that are used elsewhere", "Checked when a project is saved."}},
};
constexpr Bit variableBits[] = {
    {model::channelVariables, {"&Channels", "Lists offer measured channels."}},
    {model::loggerVariables,
     {"&Battery and reference temperatures", "Lists offer what the logger measures of itself."}},
    {model::flagVariables, {"&Flags", "Lists offer Flag(1) to Flag(8)."}},
    {model::portVariables, {"&Ports", "Lists offer ports that are read."}},
    {model::canVariables, {"C&AN values", "Lists offer values of CAN items."}},
    {model::calculatedVariables, {"Ca&lculated fields", "Lists offer calculated fields."}},
    {model::tableVariables, {"&Tables", "Lists offer what the output tables tell of themselves."}},
};

Complaint complaintAboutFolder(std::string_view path) {
  if (QFileInfo(qstring(path)).isDir()) return std::nullopt;
  return "There is no such folder; type another one or choose it.";
}

Complaint complaintAboutProgram(std::string_view path) {
  if (path.empty() || QFileInfo(qstring(path)).isFile()) return std::nullopt;
  return "There is no such file; leave the box empty to use the pre-compiler of this machine.";
}

}  // namespace

frmOptions::frmOptions(const WindowPorts& ports, QWidget* parent)
    : AskingDialog(ports, parent),
      working_(ports.session.settings()),
      pages_(new QTabWidget(this)),
      hint_(new QLabel(this)) {
  setObjectName("frmOptions");
  setWindowTitle("Options");
  describe(*pages_, "Pages", "Choose what to set.");
  readBits();
  addFolders();
  addColours();
  addDefaults();
  addWarnings();
  addVariables();
  hint_->setWordWrap(true);
  hint_->setMinimumHeight(2 * fontMetrics().height());
  hint_->setAccessibleName("Help line");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(pages_, 1);
  layout->addWidget(hint_);
  layout->addWidget(bottom());
  connect(qApp, &QApplication::focusChanged, this, &frmOptions::tell);
  refresh();
  begun_ = working_;
  restorePlace();
}

frmOptions::~frmOptions() {
  disconnect(qApp, nullptr, this, nullptr);  // the focus moves on while its boxes go
  for (Form* form : forms_) form->disarm();
}

Form& frmOptions::addPage(const QString& caption, std::string_view words) {
  auto* form = new Form(this);
  auto* introduction = new QLabel(qstring(words), form);
  introduction->setWordWrap(true);
  form->row(introduction);
  connect(form, &Form::edited, this, &frmOptions::refresh);
  pages_->addTab(form, caption);
  forms_.push_back(form);
  return *form;
}

void frmOptions::addFolders() {
  Form& form = addPage("Folders", "Where projects and programs are kept, and what checks them.");
  form.text(
          {"&Projects and programs:", "The folder that is offered for projects."}, longestPath,
          [this]() -> std::string& { return working_.GenPath; }, complaintAboutFolder)
      .widget->setMinimumWidth(pathWidth);
  form.readout({"In use:", "The folder that is offered now."},
               [this] { return ports_.session.GenFilePath; });
  form.button({"Choose the &folder...", "Press to look for the folder."},
              [this] { chooseFolder(); });
  Field& compiler = form.text(
      {"P&re-compiler:", "The program that compiles before a save. Empty: that of this machine."},
      longestPath, [this]() -> std::string& { return working_.LogCompPath; },
      complaintAboutProgram);
  if (auto* box = qobject_cast<QLineEdit*>(compiler.widget))
    box->setPlaceholderText("as this machine has it");
  form.button({"Choose the pr&ogram...", "Press to look for the pre-compiler."},
              [this] { choosePreCompiler(); });
  form.rowStretch();
}

void frmOptions::addColours() {
  Form& form = addPage("Colours", "Colours of the main panel and its summary.");
  using Colors = control::SelectedColors;
  addColour(form, {"&Form background:", "Behind everything on the panel."},
            &Colors::FormBackground);
  addColour(form, {"&Button background:", "Of the buttons of the panel."},
            &Colors::PanelBackground);
  addColour(form, {"B&utton text:", "Of the buttons of the panel."}, &Colors::PanelText);
  addColour(form, {"&Summary background:", "Of the summary."}, &Colors::SummaryBackground);
  addColour(form, {"Summary &text:", "Of the summary."}, &Colors::SummaryText);
  addColour(form, {"Summary &heads:", "Of the first lines of groups in the summary."},
            &Colors::SummaryHighlight);
  form.button({"All as the s&ystem", "Press to use the colours of the system, light or dark."},
              [this] {
                working_.colors = {};
                refresh();
              });
  form.rowStretch();
}

void frmOptions::addColour(Form& form, const FieldText& text,
                           std::string control::SelectedColors::*place) {
  auto* button = new ColourButton(qstring(control::SelectedColors{}.*place), &form);
  Field& field = form.custom(text, button);
  field.show = [this, button, place] { button->setColour(qstring(working_.colors.*place)); };
  connect(button, &ColourButton::chosen, this, [this, place](const QString& colour) {
    working_.colors.*place = utf8(colour);
    refresh();
  });
}

void frmOptions::addDefaults() {
  Form& form = addPage("Defaults", "What new projects begin with. Open projects keep theirs.");
  model::DefaultSettings& defaults = working_.defaults;
  form.number({"Scan &interval:", "Of the main scan; uSec counts tens of microseconds."},
              Bounds{0.001, 1e9, 1},
              [&defaults]() -> double& { return defaults.DefaultScanInterval; });
  form.choice({"Scan &unit:", "The unit of the scan interval."},
              timeUnitChoices(model::unitcode::hours),
              [&defaults]() -> std::int16_t& { return defaults.DefaultScanIntervalUnits; });
  form.number({"F&lags shown:", "Rows that the flags window shows at first."}, Bounds{1, 8, 1},
              [this]() -> std::int32_t& { return working_.DefaultNumFlags; });
  form.choice({"&Data type:", "How values are stored."},
              choicesOf({"As each kind has it", "IEEE4 for all"}),
              [&defaults]() -> std::int16_t& { return defaults.DefaultDataType; });
  form.choice({"I&ntegration:", "Of analog measurements."},
              choicesOf({"50 Hz rejection", "60 Hz rejection", "By time"}),
              [&defaults]() -> std::int16_t& { return defaults.DefaultIntegrationCode; });
  form.choice({"In&puts:", "Of 7121/22 and 7127 modules."},
              choicesOf({"Differential", "Single-ended"}),
              [&defaults]() -> std::int16_t& { return defaults.DefaultInputType; });
  form.check({"Tables si&ze themselves", "Tables share the memory instead of a number of records."},
             [&defaults]() -> bool& { return defaults.DefaultTableAutoSize; });
  form.number({"&Records of a table:", "As many as a table keeps."}, Bounds{1, 2147483647, 100},
              [&defaults]() -> std::int32_t& { return defaults.DefaultTableNumRecs; })
      .closedWhen([&defaults]() -> std::string {
        return defaults.DefaultTableAutoSize ? "Tables size themselves." : "";
      });
  form.rowStretch();
}

void frmOptions::addWarnings() {
  Form& form = addPage("Warnings", "What the generator checks and warns of.");
  for (std::size_t i = 0; i < warnings; ++i)
    form.check(warningBits[i].text, [this, i]() -> bool& { return warns_.at(i); });
  form.rowStretch();
}

void frmOptions::addVariables() {
  Form& form =
      addPage("Variables", "Which variables the lists of conditions and expressions offer.");
  for (std::size_t i = 0; i < variableTypes; ++i)
    form.check(variableBits[i].text, [this, i]() -> bool& { return lists_.at(i); });
  form.rowStretch();
}

/// The mask of warnings says what is off, that of variables what is on.
void frmOptions::readBits() {
  const auto warnMask = static_cast<unsigned>(working_.WarningMessageMask);
  const auto listMask = static_cast<unsigned>(working_.UserVarListTypes);
  for (std::size_t i = 0; i < warnings; ++i) warns_.at(i) = (warnMask & warningBits[i].bit) == 0;
  for (std::size_t i = 0; i < variableTypes; ++i)
    lists_.at(i) = (listMask & variableBits[i].bit) != 0;
}

void frmOptions::storeBits() {
  unsigned warnMask = 0, listMask = 0;
  for (std::size_t i = 0; i < warnings; ++i)
    if (!warns_.at(i)) warnMask |= warningBits[i].bit;
  for (std::size_t i = 0; i < variableTypes; ++i)
    if (lists_.at(i)) listMask |= variableBits[i].bit;
  working_.WarningMessageMask = static_cast<std::int32_t>(warnMask);
  working_.UserVarListTypes = static_cast<std::int32_t>(listMask);
}

QWidget* frmOptions::bottom() {
  auto* box = new QDialogButtonBox(this);
  namespace help = control::panel::help;
  const auto add = [&](const char* caption, std::string_view words,
                       QDialogButtonBox::ButtonRole role, auto act) {
    QPushButton* button = box->addButton(caption, role);
    describe(*button, caption, qstring(words));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, act);
    return button;
  };
  add("Help", help::extendedHelp, QDialogButtonBox::HelpRole,
      [this] { ports_.desk.showHelp(objectName()); });
  add("Print", help::printWindow, QDialogButtonBox::ActionRole,
      [this] { ports_.desk.printWindow(*this); });
  add("Cancel", help::abandon, QDialogButtonBox::RejectRole, [this] { reject(); });
  add("Done", help::done, QDialogButtonBox::AcceptRole, [this] { accept(); })->setDefault(true);
  return box;
}

void frmOptions::refresh() {
  storeBits();
  for (Form* form : forms_) form->refresh();
  tell();
}

bool frmOptions::edited() const { return working_ != begun_; }

/// What is wrong, or else the help of what has the focus.
void frmOptions::tell() {
  for (const Form* form : forms_)
    if (const Field* field = form->firstComplaint())
      return hint_->setText(qstring(*field->complaint()));
  const QWidget* focused = focusWidget();
  hint_->setText(focused != nullptr ? focused->toolTip() : QString());
}

void frmOptions::accept() {
  for (std::size_t page = 0; page < forms_.size(); ++page) {
    const Field* field = forms_[page]->firstComplaint();
    if (field == nullptr) continue;
    pages_->setCurrentIndex(static_cast<int>(page));
    field->widget->setFocus();
    return hint_->setText(qstring(*field->complaint()));
  }
  QDialog::accept();
}

/// Page and place are kept however the window ends.
void frmOptions::done(int result) {
  control::Settings settings = result == Accepted ? working_ : ports_.session.settings();
  rememberPlace(settings);
  ports_.session.changeSettings(settings);
  QDialog::done(result);
}

void frmOptions::restorePlace() {
  pages_->setCurrentIndex(std::clamp(working_.CurrentOptionsPage, 0, pages_->count() - 1));
  const QPoint place(working_.CurrentOptionsLeft, working_.CurrentOptionsTop);
  // A place on a screen that is gone does not count, nor the one of a user who never moved it.
  if (!place.isNull() && QApplication::screenAt(place) != nullptr) move(place);
}

void frmOptions::rememberPlace(control::Settings& settings) const {
  settings.CurrentOptionsPage = pages_->currentIndex();
  settings.CurrentOptionsLeft = pos().x();
  settings.CurrentOptionsTop = pos().y();
}

void frmOptions::chooseFolder() {
  const QString chosen =
      QFileDialog::getExistingDirectory(this, "CHOOSE FOLDER", qstring(ports_.session.GenFilePath));
  if (chosen.isEmpty()) return;
  forms_.front()->forgetRefused();
  working_.GenPath = utf8(chosen);
  refresh();
}

void frmOptions::choosePreCompiler() {
  const QString chosen = QFileDialog::getOpenFileName(this, "CHOOSE PRE-COMPILER");
  if (chosen.isEmpty()) return;
  forms_.front()->forgetRefused();
  working_.LogCompPath = utf8(chosen);
  refresh();
}

}  // namespace ui
