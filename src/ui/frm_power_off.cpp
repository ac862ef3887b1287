#include "ui/frm_power_off.h"

#include <QCheckBox>
#include <QVBoxLayout>

#include "model/conditions.h"
#include "text/strings.h"
#include "ui/config_panels.h"
#include "ui/frm_battery_saver.h"
#include "ui/listed_variables.h"

namespace ui {
namespace {

using text::concat;

constexpr int comparisons = 4;  // of the operator codes, from 0
constexpr std::string_view offHelp = "The time the logger will turn off.";
constexpr std::string_view onHelp = "The first time the logger comes on.";
constexpr std::string_view remainOffHelp =
    "Check to leave the logger off until manually powered on.";

/// With the blank that the program has before them.
std::vector<Choice> powerOffComparisons() {
  std::vector<Choice> choices;
  choices.reserve(comparisons);
  for (int code = 0; code < comparisons; ++code)
    choices.push_back({std::string(model::operatorText(code)), code});
  return choices;
}

/// Months or days of the week; "---" while none is chosen.
std::vector<Choice> namedChoices(std::string_view (*textOf)(int), int last, int chosen) {
  std::vector<Choice> choices;
  if (chosen == 0) choices.push_back({"---", 0});
  for (int number = 1; number <= last; ++number)
    choices.push_back({std::string(text::trimmed(textOf(number))), number});
  return choices;
}

}  // namespace

frmPowerOff::frmPowerOff(SetupWindow& owner)
    : SetupWindow(owner, {"frmPowerOff", "Conditional Power Off", "power off", "frmConfig"}),
      before_(working_.configuration) {
  auto* contents = new QWidget(this);
  auto* columns = new QHBoxLayout(contents);
  columns->setContentsMargins(0, 0, 0, 0);
  auto* left = new Form;
  addSwitch(*left, working_, model::PowerOption::conditionalOff);
  addCondition(left->group("On a measurement"));
  addOnTime(left->group("On again"));
  left->rowStretch();
  auto* right = new Form;
  addOffTime(right->group("By time"));
  right->rowStretch();
  for (Form* each : {left, right}) {
    columns->addWidget(each, 1);
    add(*each);
  }
  setContents(contents);
  left->setFocus();
  resize(820, 640);
}

void frmPowerOff::addCondition(Form& form) {
  form.check({"&Measurement", "Check to control power off based on a measurement value."},
             [this]() -> bool& { return configuration().EnablePowerOff; });
  form.pick(
      {"&Variable:", "The measurement that is compared."},
      [this] { return listedVariables(ports_, working_); },
      [this]() -> std::string& { return configuration().PowerOffMeasVar; }, true);
  form.choice({"&Comparison:", "How it is compared."}, powerOffComparisons(),
              [this]() -> std::int16_t& { return configuration().PowerOffCompare; });
  constexpr double most = 1e30;
  form.number({"Va&lue:", "What the measurement is compared with."}, Bounds{-most, most},
              [this]() -> double& { return configuration().PowerOffValue; });
  form.check({"Re&main off", remainOffHelp},
             [this]() -> bool& { return configuration().RemainPOOff; });
  addDuration(form, {"&Off for:", "Off &unit:",
                     [this]() -> double& { return configuration().PowerOffPOTime; },
                     [this]() -> std::int16_t& { return configuration().PowerOnMins; },
                     [this] { return !configuration().RemainPOOff; }});
  form.readout({"", "How long the logger stays off."}, [this] {
    const model::LoggerConfiguration& c = configuration();
    return model::intervalSummary(c.RemainPOOff ? 0 : c.PowerOffPOTime, c.PowerOnMins);
  });
}

/// The duration and what follows it are those of the battery saver, too.
void frmPowerOff::addOffTime(Form& form) {
  form.check({"&Time", "Check to control power off based on time."},
             [this]() -> bool& { return configuration().EnableTime; });
  for (const model::InstantField& field : model::instantFields())
    addSwitchOf(form, addPart(form, field, true), field);
  form.readout({"Off at:", offHelp}, [this] { return model::offInstantText(configuration()); });
  form.check({"&Remain off by time", remainOffHelp},
             [this]() -> bool& { return configuration().RemainOff; });
  addDuration(form, {"Off &for by time:", "Un&it by time:",
                     [this]() -> double& { return configuration().PowerOffTime; },
                     [this]() -> std::int16_t& { return configuration().PowerOffMins; },
                     [this] { return !configuration().RemainOff; }});
  form.readout({"", "How long the logger stays off."}, [this] {
    const model::LoggerConfiguration& c = configuration();
    return model::intervalSummary(c.RemainOff ? 0 : c.PowerOffTime, c.PowerOffMins);
  });
}

void frmPowerOff::addOnTime(Form& form) {
  form.check({"&At a time", "Check to use time as part of the PowerOff instruction."},
             [this]() -> bool& { return configuration().EnableOnTime; })
      .then([this] { fillInstants(); });
  for (const model::InstantField& field : model::instantFields())
    if (field.on != nullptr)
      addPart(form, field, false).shownWhen([this] { return configuration().EnableOnTime; });
  form.readout({"On at:", onHelp}, [this] { return model::onInstantText(configuration()); });
}

Field& frmPowerOff::addPart(Form& form, const model::InstantField& field, bool off) {
  const auto place = [this, number = off ? field.off : field.on]() -> std::int16_t& {
    return configuration().*number;
  };
  const std::string caption = concat(off ? "Off " : "On ", text::lower(field.name), ":");
  const FieldText text = {caption, off ? offHelp : onHelp};
  const bool isMonth = field.off == &model::LoggerConfiguration::TimeOffMonth;
  const bool isWeekDay = field.off == &model::LoggerConfiguration::TimeOffWkDay;
  const auto bounds = [this, &field, off] {
    return off ? boundsOfOff(configuration(), field) : boundsOfOn(configuration(), field);
  };
  const auto named = [place, bounds, isMonth] {
    return namedChoices(isMonth ? model::monthText : model::weekDayText,
                        static_cast<int>(bounds().high), place());
  };
  Field& part =
      isMonth || isWeekDay ? form.choice(text, named, place) : form.number(text, bounds, place);
  return part.then([this] { fillInstants(); });
}

/// A box that makes the field take part in the time, in front of the field.
void frmPowerOff::addSwitchOf(Form& form, Field& part, const model::InstantField& field) {
  auto* box = new QCheckBox(qstring(field.name), &form);
  box->setObjectName(qstring(field.name));
  connect(box, &QCheckBox::clicked, this, [this, box, &field](bool on) {
    configuration().*field.shown = on;
    fillInstants();
    noteEdit(box->objectName());
  });
  part.shownWhen([this, &field] { return configuration().*field.shown; });
  part.show = [this, box, &field, show = part.show] {
    show();
    box->setChecked(configuration().*field.shown);
    describe(*box, qstring(field.name), qstring(model::showHelp(configuration(), field)));
  };
  form.lead(part, box);
}

void frmPowerOff::fillInstants() {
  model::fillInstants(configuration(), ports_.session.stamp().now);
}

bool frmPowerOff::mayBeDone() {
  if (configuration() != before_) model::renewPowerOffTexts(configuration());
  return true;
}

std::vector<std::string> frmPowerOff::previewNames() const {
  return {"PowerOff", "StopTime", "StartTime"};
}

}  // namespace ui
