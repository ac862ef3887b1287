#include "control/trouble.h"

#include "text/strings.h"

namespace control {

void TroubleReporter::report(int number, std::string_view description, std::string_view source) {
  ports::Message message;
  message.title = "TROUBLE";
  message.icon = ports::Icon::critical;
  const bool inWindow = source.starts_with("frm");
  message.text =
      text::concat(inWindow ? text::concat("Error in ", source, "\r\n") : "", "Unexpected error ",
                   number, ", \"", description, "\" has occurred in ", source,
                   ".\r\n Press \"OK\" and the program will continue.");
  messages_.show(message);
}

}  // namespace control
