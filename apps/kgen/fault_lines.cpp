#include "fault_lines.h"

#include "terminal.h"
#include "text/strings.h"

namespace kgen {

void FaultLines::report(int number, std::string_view description, std::string_view source) {
  any_ = true;
  complain(text::concat("unexpected error ", number, ", \"", description, "\" has occurred in ",
                        source));
}

}  // namespace kgen
