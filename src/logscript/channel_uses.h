#pragma once

#include <span>
#include <vector>

#include "logscript/instructions.h"
#include "logscript/meaning.h"

namespace logscript {

/// Which inputs the measurements of each scan take up. A differential channel takes two
/// single-ended ones, and a block that is longer than its module goes on in the next slot.
class ChannelUses {
 public:
  ChannelUses(const Program& program, Meaning& meaning) : program_(program), meaning_(meaning) {}

  /// An instruction whose arguments are right, and the blocks it stands in.
  void add(const Statement& statement, std::span<const std::uint32_t> blocks);
  /// Tells of inputs that are measured twice in a scan.
  void tellOverlaps();

 private:
  struct Use {
    std::uint32_t scan;
    int group;  // analog, pulse, filter: different modules
    long first, count;
    std::uint32_t offset;
  };

  const Program& program_;
  Meaning& meaning_;
  std::vector<Use> uses_;
};

}  // namespace logscript
