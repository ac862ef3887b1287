#include "ui/config_panels.h"

#include <array>

#include "model/conditions.h"
#include "model/power_rules.h"
#include "text/strings.h"
#include "ui/frm_battery.h"
#include "ui/frm_battery_saver.h"
#include "ui/frm_calibration.h"
#include "ui/frm_card.h"
#include "ui/frm_power_off.h"
#include "ui/frm_status_monitor.h"

namespace ui {
namespace {

using model::Project;
using text::concat;

std::string tablesOf(const Project& project, std::size_t set) {
  std::string names;
  for (std::size_t t = 0; t < project.tables.size(); ++t) {
    if (!project.tables[t].TableOn || project.powerOut.sets[set].Table[t] == 0) continue;
    names += (names.empty() ? "in " : ", ") + project.tables[t].TableName;
  }
  return names.empty() ? "not stored" : names;
}

std::string powerOffSummary(const Project& project) {
  const bool onValue = !powerOffLine(project.configuration).empty();
  const bool onTime = !timePowerOffLine(project.configuration).empty();
  if (onValue && onTime) return "on a measurement and by time";
  if (onValue) return "on a measurement";
  return onTime ? "by time" : "nothing set";
}

std::string saverSummary(const Project& project) {
  return concat("below ", text::formatted(project.configuration.BattTripVolts, model::tripPattern),
                " V");
}

std::string monitorSummary(const Project& project) {
  const std::size_t lines = project.configuration.Status.size();
  return concat(lines, lines == 1 ? " line" : " lines");
}

std::string cardSummary(const Project& project) {
  const double mbytes = project.configuration.SizeCardA;
  return mbytes > 0 ? concat(mbytes, " Mbytes") : "no card";
}

template <class Panel>
SetupWindow* make(SetupWindow& owner) {
  return new Panel(owner);
}

constexpr std::array<ConfigPanel, 7> configPanels = {{
    {"Main battery voltage", "Check to measure the voltage of the main battery.",
     "Main Battery &Volts...", "Press to choose how the battery voltage is stored.",
     [](SetupWindow& owner) -> SetupWindow* { return new frmBattery(owner, Battery::volts); },
     [](const Project& project) { return tablesOf(project, 0); }},
    {"Main battery current", "Check to measure the current of the main battery.",
     "Main Battery C&urrent...", "Press to choose how the battery current is stored.",
     [](SetupWindow& owner) -> SetupWindow* { return new frmBattery(owner, Battery::current); },
     [](const Project& project) { return tablesOf(project, 1); }},
    {"Conditional power off", "Check to switch the logger off by measurement or time.",
     "Conditional Power &Off...", "Press to set what switches the logger off.", make<frmPowerOff>,
     powerOffSummary},
    {"Battery saver", "Check to switch the logger off while its battery is low.",
     "Battery &Saver...", "Press to set the trip level of the battery saver.",
     make<frmBatterySaver>, saverSummary},
    {"Self calibration", "Check to let the logger calibrate itself while it runs.",
     "S&elf Calibration", "Press to see when the logger calibrates itself.", make<frmCalibration>,
     [](const Project&) { return std::string("every 5 minutes"); }},
    {"Monitor status", "Check to set flags by the state of the logger.", "&Monitor Status...",
     "Press to set the lines of the status monitor.", make<frmStatusMonitor>, monitorSummary},
    {"", "", "Card &A Capacity", "Press to set the type and size of the memory card.",
     make<frmCard>, cardSummary},
}};

}  // namespace

const ConfigPanel& configPanel(std::size_t number) { return configPanels.at(number); }

Field& addSwitch(Form& form, model::Project& working, model::PowerOption option) {
  const auto number = static_cast<std::size_t>(option);
  const ConfigPanel& panel = configPanel(number);
  return form.check({panel.option, panel.optionHelp}, [&working, number]() -> bool& {
    return working.configuration.MonitorPower.at(number);
  });
}

}  // namespace ui
