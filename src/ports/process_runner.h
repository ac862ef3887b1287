#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace ports {

/// How another program ended.
struct ProcessEnd {
  enum class How { exited, notStarted, crashed, tookTooLong };
  How how = How::exited;
  int code = 0;        // exit code, or the number of the signal that crashed it
  std::string reason;  // why it was not started
};

class ProcessRunner {
 public:
  virtual ~ProcessRunner() = default;
  /// Runs a program to its end; one that takes longer than the limit is killed.
  virtual ProcessEnd run(const std::string& program, const std::vector<std::string>& arguments,
                         std::chrono::milliseconds limit) = 0;
};

}  // namespace ports
