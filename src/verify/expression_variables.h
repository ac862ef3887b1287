#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/project.h"

namespace verify {

/// The variables in an expression of the program language, each once, as they come: "Press",
/// "VBlk1(3)", "Data.Record(1,0)"; "VBlk1()" when the index is computed.
std::vector<std::string> variablesIn(std::string_view expression);

/// The flags among them: bit n - 1 for Flag(n), in any case of letters.
unsigned flagsIn(std::string_view expression);

/// "VBlk1(3)": the variable of a condition with its element; "" when it has none.
std::string variableOf(const model::Condition& condition);

}  // namespace verify
