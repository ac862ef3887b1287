#include "ui/frm_config.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "model/channel_plan.h"
#include "pictures/colours.h"
#include "text/strings.h"
#include "ui/config_panels.h"
#include "verify/lost_references.h"

namespace ui {
namespace {

using model::futureBox;
using model::LoggerConfiguration;
using model::ModuleKindIndex;
using model::Peripheral;
using text::concat;

constexpr int slotsShown = 3 + static_cast<int>(model::maxUserModules);
// Boxes that count no modules, beside the indexes of those that do.
constexpr int tcmuxBox = futureBox + 1, canifBox = futureBox + 2;

/// Where the mnemonic of a quantity box stands in its name.
constexpr std::array<std::size_t, 11> mnemonics = {0, 0, 0, 3, 8, 2, 2, 3, 3, 3, 0};

std::string withMnemonic(std::string_view name, std::size_t place) {
  return concat(name.substr(0, place), "&", name.substr(place));
}

std::string cpuCaption(const LoggerConfiguration& configuration) {
  return withMnemonic(cpuLabel(configuration), std::string_view("7103 C").size());
}

/// The description in the colour that its modules have in the strip.
void paintLike(QLabel& label, int kind) {
  QPalette colours = label.palette();
  const QColor fill = pictures::SlotStrip::colourOf(kind, colours);
  colours.setColor(QPalette::Window, fill);
  colours.setColor(QPalette::WindowText, pictures::inkOn(fill));
  label.setPalette(colours);
  label.setAutoFillBackground(true);
  label.setMargin(3);
}

}  // namespace

frmConfig::frmConfig(const WindowPorts& ports, QWidget* parent)
    : SetupWindow(ports, {"frmConfig", "Hardware Configuration", "hardware"}, parent) {
  auto* contents = new QWidget(this);
  auto* layout = new QVBoxLayout(contents);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* columns = new QHBoxLayout;
  columns->addWidget(moduleBoxes());
  columns->addWidget(otherBoxes());
  columns->addWidget(optionList(), 1);
  layout->addLayout(columns, 1);
  layout->addWidget(slotStrip());
  setContents(contents);
  boxes_.at(model::cpuBox)->setFocus();
  resize(1120, 680);
}

QWidget* frmConfig::moduleBoxes() {
  auto* form = new Form;
  Form& modules = form->group("Modules");
  addModules(modules, model::cpuBox);
  for (int box = static_cast<int>(ModuleKindIndex::adaptor7151); box <= futureBox; ++box)
    addModules(modules, box);
  addRemarks(modules);
  form->rowStretch();
  add(*form);
  return form;
}

void frmConfig::addModules(Form& form, int box) {
  const bool isCpu = box == model::cpuBox;
  const std::string caption =
      isCpu ? cpuCaption(configuration())
            : withMnemonic(model::quantityName(box), mnemonics.at(static_cast<std::size_t>(box)));
  Field& field = addBox(
      form, {caption, ""}, box, [this, box] { return countOf(box); },
      [this, box](int count) { return takeModules(box, count); });
  field.widget->setObjectName(isCpu ? "CPU" : qstring(model::quantityName(box)));
  field.helpedBy([this, box] { return model::quantityHelp(configuration(), box); });
  paintLike(*field.label, box);
  if (isCpu) {
    field.show = [this, show = field.show, label = field.label, box = field.widget] {
      show();
      label->setText(qstring(cpuCaption(configuration())));
      box->setAccessibleName(qstring(cpuLabel(configuration())));
    };
  }
  if (box == static_cast<int>(ModuleKindIndex::isolation7128))
    field.shownWhen([this, box] { return !isHidden(countOf(box)); });
}

/// A box whose keys are asked for: `takes` stores a count, or answers false.
Field& frmConfig::addBox(Form& form, const FieldText& text, int number, std::function<int()> count,
                         std::function<bool(int)> takes) {
  const bool isCpu = number == model::cpuBox;
  auto* box = new QuantityBox(
      isCpu ? QuantityBox::Digits::one : QuantityBox::Digits::any,
      [this, isCpu, number](char key) {
        return model::isQuantityKey(number, key) &&
               !(isCpu && key == '2' && ports_.session.UseLegacy);
      },
      &form);
  Field& field = form.custom(text, box);
  field.show = [box, count] { box->showCount(count()); };
  connect(box, &QuantityBox::wanted, this, [this, box, count, takes](int wanted) {
    if (wanted != count() && takes(wanted)) noteEdit(box->objectName());
  });
  boxes_[number] = box;
  return field;
}

void frmConfig::addRemarks(Form& form) {
  auto* total = new QLabel(&form);
  auto* remark = new QLabel(&form);
  total->setObjectName("total");
  remark->setObjectName("remark");
  remark->setWordWrap(true);
  form.row(total);
  form.row(remark);
  onRefresh([this, total, remark] {
    total->setText(qstring(model::totalLabel(userModules(configuration()) + futureModules_)));
    remark->setText(qstring(model::remarkOnAdaptor(configuration()).value_or("")));
    remark->setVisible(!remark->text().isEmpty());
  });
}

QWidget* frmConfig::otherBoxes() {
  auto* form = new Form;
  Form& peripherals = form->group("Peripherals");
  addPeripheral(peripherals, Peripheral::tcmux,
                "TCMU&X multiplexers:", &LoggerConfiguration::TCMUXQty);
  addPeripheral(peripherals, Peripheral::canif, "CA&NIF devices:", &LoggerConfiguration::CanBusQty);
  addChannels(form->group("Channels"));
  form->rowStretch();
  add(*form);
  return form;
}

void frmConfig::addPeripheral(Form& form, Peripheral peripheral, std::string_view caption,
                              std::int16_t LoggerConfiguration::*place) {
  const std::string help = model::peripheralHelp(peripheral);
  addBox(
      form, {caption, help}, peripheral == Peripheral::tcmux ? tcmuxBox : canifBox,
      [this, place] { return int(configuration().*place); },
      [this, place, peripheral](int count) {
        if (!takePeripheral(peripheral, count)) return false;
        configuration().*place = static_cast<std::int16_t>(count);
        return true;
      })
      .shownWhen([this, place] { return !isHidden(configuration().*place); });
}

void frmConfig::addChannels(Form& form) {
  form.check({"Bloc&ks share modules",
              "Off: every block begins on a module of its own. On: it goes on where the last one "
              "ended."},
             [this]() -> bool& { return configuration().AutoChan; })
      .closedWhen([this]() -> std::string {
        if (!configuration().AutoChan) return "";
        return model::complaintAboutOwnModules(working_).value_or("");
      });
  form.number(
      {"Reference inte&gration:",
       "How long the reference temperature of a 7121/22 is integrated; 0 stands for 40.", "uSec"},
      Bounds{0, 30000, 10}, [this]() -> std::int16_t& { return configuration().TcConfigOpts[2]; });
}

QWidget* frmConfig::optionList() {
  auto* frame = new QGroupBox("Options", this);
  auto* grid = new QGridLayout(frame);
  for (std::size_t i = 0; i < panels; ++i) addOption(*frame, i);
  grid->setColumnStretch(2, 1);
  auto* form = new Form;  // which keeps its rows in line with those beside it
  form->row(frame);
  form->rowStretch();
  return form;
}

/// A switch, the button of its panel, and in short what is set there.
void frmConfig::addOption(QWidget& parent, std::size_t number) {
  const ConfigPanel& panel = configPanel(number);
  auto* grid = static_cast<QGridLayout*>(parent.layout());
  const int row = static_cast<int>(number);
  if (number != cardPanel) {
    auto* box = new QCheckBox(&parent);
    describe(*box, qstring(panel.option), qstring(panel.optionHelp));
    box->setObjectName(qstring(panel.option));
    connect(box, &QCheckBox::clicked, this, [this, number, box](bool on) {
      configuration().MonitorPower.at(number) = on;
      noteEdit(box->objectName());
    });
    onRefresh([this, number, box] { box->setChecked(configuration().MonitorPower.at(number)); });
    grid->addWidget(box, row, 0);
  }
  auto* button = new QPushButton(qstring(panel.button), &parent);
  describe(*button, qstring(panel.button), qstring(panel.buttonHelp));
  button->setObjectName(withoutMnemonic(qstring(panel.button)));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [this, number] { openPanel(number); });
  grid->addWidget(button, row, 1);
  auto* summary = new QLabel(&parent);
  summary->setWordWrap(true);
  onRefresh([this, summary, &panel] { summary->setText(qstring(panel.summary(working_))); });
  grid->addWidget(summary, row, 2);
}

QWidget* frmConfig::slotStrip() {
  auto* frame = new QGroupBox("Slots", this);
  auto* layout = new QVBoxLayout(frame);
  auto* caption = new QLabel(qstring(model::stripCaption), frame);
  strip_ = new pictures::SlotStrip(frame);
  strip_->setObjectName("slots");
  describe(*strip_, "Slots", qstring(model::stripCaption));
  connect(strip_, &pictures::SlotStrip::slotClicked, this, [this](int slot) {
    const auto box = boxes_.find(model::moduleInSlot(configuration(), slot));
    if (box != boxes_.end()) box->second->setFocus();
  });
  layout->addWidget(caption);
  layout->addWidget(strip_);
  onRefresh([this] { showSlots(); });
  return frame;
}

/// Modules to come take the first empty slots.
void frmConfig::showSlots() {
  QList<pictures::Slot> modules;
  int future = futureModules_;
  for (int slot = 1; slot <= slotsShown; ++slot) {
    const int kind = model::moduleInSlot(configuration(), slot);
    if (kind < 0 && future-- > 0)
      modules.append({slot, qstring(model::quantityName(futureBox)), futureBox,
                      qstring(model::stripHelp(futureBox))});
    else
      modules.append({slot, qstring(model::moduleNameInSlot(configuration(), slot)), kind,
                      kind < 0 ? QString() : qstring(model::stripHelp(kind))});
  }
  strip_->setSlots(modules);
}

int frmConfig::countOf(int box) const {
  return box == futureBox ? futureModules_
                          : working_.configuration.ModuleQty.at(static_cast<std::size_t>(box));
}

/// What needs the 7104 is not there for a host that has none, unless the project holds it.
bool frmConfig::isHidden(int count) const {
  return ports_.session.UseLegacy && count == 0 && !isK700X(working_.configuration);
}

bool frmConfig::isTold(const std::optional<ports::Message>& message) {
  if (message) ports_.messages.show(*message);
  return message.has_value();
}

/// True also when there is nothing to ask.
bool frmConfig::isYes(const std::optional<ports::Message>& question) {
  return !question || ports_.messages.show(*question) == ports::Answer::yes;
}

bool frmConfig::takeModules(int box, int count) {
  if (box == model::cpuBox) {
    if (!mayHaveCpu(count)) return false;
  } else {
    if (isTold(model::complaintAboutTotal(configuration(), futureModules_, box, count)))
      return false;
    if (box != futureBox && !mayHaveModules(static_cast<ModuleKindIndex>(box), count)) return false;
  }
  if (box == futureBox)
    futureModules_ = count;
  else
    configuration().ModuleQty.at(static_cast<std::size_t>(box)) = static_cast<std::int16_t>(count);
  return true;
}

bool frmConfig::mayHaveCpu(int code) {
  return !isTold(model::complaintAboutCpu(code)) && isYes(model::questionAboutCpu(code)) &&
         mayWakeBlocks(code);
}

/// Another CPU may measure blocks for which modules were taken away while they slept.
bool frmConfig::mayWakeBlocks(int code) {
  const model::Project asleep = judged(configuration().ModuleQty[model::cpuBox]);
  const model::Project awake = judged(code);
  for (std::size_t k = 0; k < model::moduleKinds; ++k) {
    const auto kind = static_cast<ModuleKindIndex>(k);
    const int count = configuration().quantity(kind);
    if (model::warningAboutReduction(asleep, kind, count)) continue;  // was asked
    if (!isYes(model::warningAboutReduction(awake, kind, count))) return false;
  }
  return true;
}

/// What would be removed is told from the project as it is: its ports still belong to its modules.
model::Project frmConfig::judged(int cpu) const {
  model::Project project = ports_.session.project();
  project.configuration.AutoChan = working_.configuration.AutoChan;
  project.configuration.ModuleQty[model::cpuBox] = static_cast<std::int16_t>(cpu);
  return project;
}

bool frmConfig::mayHaveModules(ModuleKindIndex kind, int count) {
  isTold(model::warningAboutFilterPower(kind, count));
  if (count >= working_.configuration.quantity(kind)) return true;
  return isYes(
      model::warningAboutReduction(judged(configuration().ModuleQty[model::cpuBox]), kind, count));
}

bool frmConfig::takePeripheral(Peripheral peripheral, int count) {
  if (peripheral == Peripheral::tcmux) return !isTold(model::complaintAboutTcmux(working_, count));
  const Complaint complaint = model::complaintAboutCanif(count);
  if (complaint) tell(qstring(*complaint));
  return !complaint;
}

void frmConfig::openPanel(std::size_t number) { openInner(configPanel(number).make(*this)); }

bool frmConfig::mayBeDone() {
  const model::Project& before = ports_.session.project();
  const LoggerConfiguration& edited = working_.configuration;
  if (edited == before.configuration) return true;
  if (!isYes(model::questionAboutTcmuxBlocks(before, edited))) return false;
  isTold(model::warningAboutSpectra(before, edited));
  isTold(model::warningAboutBurstCard(before, edited));
  model::Project after = before;
  after.powerOut = working_.powerOut;
  model::applyConfiguration(after, edited);
  verify::LostReferences lost = verify::lostReferences(before, std::move(after));
  if (!isYes(verify::questionAboutLostReferences(lost.settings))) return false;
  working_ = std::move(lost.project);
  return true;
}

std::vector<std::string> frmConfig::previewNames() const {
  return {"SlotConfigure", "Battery", "PowerOff", "Calibrate"};
}

}  // namespace ui
