#pragma once

#include <string_view>

namespace ports {

/// Hears of faults inside a procedure, which then goes on. The source is "module.procedure".
class ErrorReporter {
 public:
  virtual ~ErrorReporter() = default;
  virtual void report(int number, std::string_view description, std::string_view source) = 0;
};

}  // namespace ports
