#pragma once

#include "ports/process_runner.h"

namespace platform {

/// Programs of this machine. Their input is empty and their output goes nowhere; what they write
/// to files counts. A program that has to be killed takes its children with it.
class Processes final : public ports::ProcessRunner {
 public:
  ports::ProcessEnd run(const std::string& program, const std::vector<std::string>& arguments,
                        std::chrono::milliseconds limit) override;
};

}  // namespace platform
