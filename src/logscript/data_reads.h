#pragma once

#include <span>
#include <vector>

#include "logscript/meaning.h"

namespace logscript {

/// Counts the values of Data statements against what Read statements take. Nothing is said when it
/// depends on the run of the program how often a Read is executed.
class DataReads {
 public:
  DataReads(const Program& program, Meaning& meaning) : program_(program), meaning_(meaning) {}

  void data(const Statement& statement);
  void read(const Statement& statement, std::span<const std::uint32_t> blocks);
  void tellRest();

 private:
  [[nodiscard]] long timesOf(const Statement& loop);

  struct Reading {
    std::uint32_t offset;
    long count;
  };

  const Program& program_;
  Meaning& meaning_;
  std::vector<std::uint32_t> values_;  // offsets
  std::vector<Reading> readings_;
  bool uncertain_ = false;
};

}  // namespace logscript
