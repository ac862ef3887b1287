#pragma once

#include <string>
#include <string_view>

#include "ui/setup_window.h"

namespace ui {

/// A panel that the configuration window opens.
struct ConfigPanel {
  std::string_view option, optionHelp;  // its switch; the card has none
  std::string_view button, buttonHelp;
  SetupWindow* (*make)(SetupWindow& owner);
  std::string (*summary)(const model::Project& project);
};

/// By PowerOption, then the card.
const ConfigPanel& configPanel(std::size_t number);

/// The switch of an option, first of the fields of its panel.
Field& addSwitch(Form& form, model::Project& working, model::PowerOption option);

}  // namespace ui
