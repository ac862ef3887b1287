#pragma once

#include "command.h"

namespace kgen {

Action prepareCanImport(Parser& parser);
Action prepareCanDecode(Parser& parser);

}  // namespace kgen
