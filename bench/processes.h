#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace bench {

struct Command {
  std::vector<std::string> words;
  std::string output = "/dev/null";    // of standard output
  std::vector<std::string> made = {};  // files that it makes: removed before each run
};

struct Run {
  double micros = 0;
  long peakBytes = 0;
};

/// Starts a command; throws when there is none.
pid_t start(const Command& command);

/// Runs a command to its end; throws when it fails.
Run runOnce(const Command& command);

/// Medians of two commands that take turns, so that both meet the same noise.
struct Medians {
  double ours = 0, peers = 0;
};
Medians compare(const Command& ours, const Command& peers, int rounds);

double median(std::vector<double> values);
double nowMicros();

}  // namespace bench
