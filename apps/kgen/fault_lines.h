#pragma once

#include "ports/error_reporter.h"

namespace kgen {

/// Says faults that a procedure went on after on standard error.
class FaultLines final : public ports::ErrorReporter {
 public:
  void report(int number, std::string_view description, std::string_view source) override;
  [[nodiscard]] bool any() const { return any_; }

 private:
  bool any_ = false;
};

}  // namespace kgen
