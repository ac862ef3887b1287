#pragma once

#include <string>

namespace ports {

enum class Icon { none, question, exclamation, critical };
enum class Buttons { ok, okCancel, yesNo, yesNoCancel };
enum class Answer { ok, cancel, yes, no };

/// One message to the user. Lines of the text are separated by CR LF.
struct Message {
  std::string title;
  std::string text;
  Icon icon = Icon::exclamation;
  Buttons buttons = Buttons::ok;
  Answer defaultButton = Answer::ok;  // one of the buttons
  bool beep = false;
  bool operator==(const Message&) const = default;
};

/// Shows messages and waits for the answers.
class MessageService {
 public:
  virtual ~MessageService() = default;
  virtual Answer show(const Message& message) = 0;
};

}  // namespace ports
