#pragma once

#include <string>
#include <vector>

#include "ports/error_reporter.h"
#include "ports/message_service.h"

namespace timing_test {

/// Keeps what it is told.
class Recorder : public ports::MessageService, public ports::ErrorReporter {
 public:
  ports::Answer show(const ports::Message& message) override {
    messages.push_back(message);
    return message.defaultButton;
  }
  void report(int, std::string_view description, std::string_view source) override {
    faults.push_back(std::string(source) + ": " + std::string(description));
  }

  std::vector<ports::Message> messages;
  std::vector<std::string> faults;
};

}  // namespace timing_test
