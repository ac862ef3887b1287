#pragma once

#include <stdexcept>
#include <string>

namespace kgen {

enum ExitCode : int {
  done = 0,
  findings = 1,
  wrongUsage = 2,
  inputUnreadable = 3,
  outputUnwritable = 4,
  ownFault = 70
};

/// Ends the command. The text says where, what, and what to do.
class Failure : public std::runtime_error {
 public:
  Failure(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}
  [[nodiscard]] ExitCode code() const { return code_; }

 private:
  ExitCode code_;
};

}  // namespace kgen
