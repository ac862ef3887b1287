#pragma once

#include "ports/error_reporter.h"
#include "ports/message_service.h"

namespace control {

/// Numbers of faults, as users of the program know them.
enum FaultNumber : int {
  invalidCall = 5,
  overflow = 6,
  fileNotFound = 53,
  permissionDenied = 70,
};

/// The one box that tells of unexpected faults, "TROUBLE"; the program goes on.
class TroubleReporter final : public ports::ErrorReporter {
 public:
  explicit TroubleReporter(ports::MessageService& messages) : messages_(messages) {}
  void report(int number, std::string_view description, std::string_view source) override;

 private:
  ports::MessageService& messages_;
};

}  // namespace control
