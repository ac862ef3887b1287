#include "ui/choices.h"

#include "model/limits.h"
#include "model/time_units.h"
#include "text/strings.h"

namespace ui {

std::vector<Choice> flagChoices(std::string_view none) {
  std::vector<Choice> choices = choicesOf({none});
  for (int flag = 1; flag <= static_cast<int>(model::maxFlags); ++flag)
    choices.push_back({text::concat("Flag ", flag), flag});
  return choices;
}

std::vector<Choice> timeUnitChoices(int lastCode) {
  std::vector<Choice> choices;
  for (int code = 0; code <= lastCode; ++code)
    choices.push_back({KGEN_COMMON::TimeUnitName(code, false), code});
  return choices;
}

}  // namespace ui
