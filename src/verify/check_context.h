#pragma once

#include <exception>
#include <optional>
#include <string_view>

#include "ports/error_reporter.h"
#include "ports/message_service.h"
#include "text/strings.h"

namespace verify {

/// Bits of the user's WarningMessageMask: the checks and warnings that are switched off.
enum WarningMask : unsigned {
  timingCheckOff = 1,
  tableIntervalCheckOff = 2,
  floatingGroundOff = 4,
  similarNamesOff = 8,
  slowSequenceOff = 16,
  duplicateFlagsOff = 32
};

/// Through what the checks speak, and what the user does not want to hear.
struct CheckContext {
  ports::MessageService& messages;
  ports::ErrorReporter& errors;
  unsigned WarningMessageMask = 0;

  [[nodiscard]] bool isOff(WarningMask check) const { return (WarningMessageMask & check) != 0; }
};

/// Shows a message, if there is one, and returns the answer.
inline std::optional<ports::Answer> answerTo(const CheckContext& context,
                                             const std::optional<ports::Message>& message) {
  if (!message) return std::nullopt;
  return context.messages.show(*message);
}

/// Runs a check; a fault inside goes to the error reporter and gives false.
template <class Check>
bool ranWithoutFault(const CheckContext& context, std::string_view procedure, const Check& check) {
  constexpr int unexpected = 1;
  try {
    check();
    return true;
  } catch (const std::exception& fault) {
    context.errors.report(unexpected, fault.what(), text::concat("KGEN_COMMON.", procedure));
    return false;
  }
}

}  // namespace verify
