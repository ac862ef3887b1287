#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace control {

/// The lines of a program whose code has one of the names, as they stand and in their order, each
/// below the line that opens the block it is in; an If comes with its ElseIf, Else and End If. A
/// name counts as a whole word in any case of letters: "Press", "Flag(3)"; "VBlk1*" stands for all
/// words that begin so, but not for "VBlk10". "Event{}" shows all of a block whose first line has
/// the name.
std::string excerpt(std::string_view program, const std::vector<std::string>& names);

}  // namespace control
