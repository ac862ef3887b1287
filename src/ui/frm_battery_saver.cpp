#include "ui/frm_battery_saver.h"

#include <QVBoxLayout>

#include "model/power_rules.h"
#include "model/time_units.h"
#include "ui/config_panels.h"

namespace ui {
namespace {

std::vector<Choice> durationUnits() {
  std::vector<Choice> choices;
  for (int code = model::firstDurationUnit; code <= model::lastDurationUnit; ++code)
    choices.push_back({model::durationUnit(code), code});
  return choices;
}

}  // namespace

void addDuration(Form& form, const DurationPlace& place) {
  form.number({place.caption, ""}, model::offDurationBounds, place.value)
      .helpedBy([unit = place.unit] { return model::durationHelp(unit()); })
      .shownWhen(place.shown);
  form.choice({place.unitCaption, "What the power off duration counts."}, durationUnits(),
              place.unit)
      .shownWhen(place.shown);
}

frmBatterySaver::frmBatterySaver(SetupWindow& owner)
    : SetupWindow(owner, {"frmBatterySaver", "Battery Saver", "battery saver", "frmConfig"}),
      staysOff_(!working_.configuration.LowBattRetry) {
  auto* form = new Form;
  addSwitch(*form, working_, model::PowerOption::batterySaver);
  addTrip(form->group("Trip level"));
  Form& low = form->group("While the battery is low");
  addRetry(low);
  addStayingOff(low);
  low.readout({"", "How long the logger stays off."}, [this] { return interval(); });
  form->rowStretch();
  onRefresh([this] { staysOff_ = !configuration().LowBattRetry; });
  add(*form);
  setContents(form);
  form->setFocus();
  resize(760, 500);
}

void frmBatterySaver::addTrip(Form& form) {
  form.check({"De&fault level", "Check to set the power off trip level to 11.5 volts."},
             [this]() -> bool& { return configuration().DefaultBattVolt; })
      .then([this] {
        if (configuration().DefaultBattVolt)
          configuration().BattTripVolts = model::LoggerConfiguration{}.BattTripVolts;
      });
  constexpr Bounds anyLevel = {0, 1000, model::tripBounds.step};  // settled when it is left
  Field& trip = form.number({"&Trip level:", model::tripHelp, "volts"}, anyLevel,
                            [this]() -> double& { return configuration().BattTripVolts; })
                    .settledBy(model::settledTripVolts)
                    .closedWhen([this]() -> std::string {
                      return configuration().DefaultBattVolt ? "The default level counts." : "";
                    });
  static_cast<NumberBox*>(trip.widget)->setPattern(model::tripPattern);
}

void frmBatterySaver::addRetry(Form& form) {
  const auto retries = [this] { return !staysOff_; };
  form.check({"&Leave the logger off",
              "Check to leave the logger off once the trip level is reached."},
             [this]() -> bool& { return staysOff_; })
      .then([this] { configuration().LowBattRetry = !staysOff_; });
  form.number({"&Retry after:", ""}, model::retryBounds,
              [this]() -> double& { return configuration().RetryInterval; })
      .helpedBy([this] { return model::retryHelp(configuration().BattRetryMins); })
      .shownWhen(retries);
  form.choice({"Retry &unit:", "What the retry interval counts."}, choicesOf({"hours", "minutes"}),
              [this]() -> bool& { return configuration().BattRetryMins; })
      .shownWhen(retries);
}

void frmBatterySaver::addStayingOff(Form& form) {
  form.check({"Until manually powered &on",
              "Check to leave the logger off until manually powered on."},
             [this]() -> bool& { return configuration().RemainOff; })
      .shownWhen([this] { return staysOff_; });
  addDuration(form, {"Off &for:", "Off un&it:",
                     [this]() -> double& { return configuration().PowerOffTime; },
                     [this]() -> std::int16_t& { return configuration().PowerOffMins; },
                     [this] { return staysOff_ && !configuration().RemainOff; }});
}

std::string frmBatterySaver::interval() const {
  const model::LoggerConfiguration& c = working_.configuration;
  if (c.LowBattRetry)
    return model::intervalSummary(
        c.RetryInterval, c.BattRetryMins ? model::unitcode::minutes : model::unitcode::hours);
  return model::intervalSummary(c.RemainOff ? 0 : c.PowerOffTime, c.PowerOffMins);
}

std::vector<std::string> frmBatterySaver::previewNames() const { return {"TripVolt", "CountAvg"}; }

}  // namespace ui
