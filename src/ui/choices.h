#pragma once

#include "ui/form.h"

namespace ui {

/// "Flag 1" to the last one; before them what 0 stands for.
std::vector<Choice> flagChoices(std::string_view none);
/// "uSec" to the unit of a code.
std::vector<Choice> timeUnitChoices(int lastCode = 5);

}  // namespace ui
