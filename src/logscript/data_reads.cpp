#include "logscript/data_reads.h"

#include <algorithm>

#include "logscript/instructions.h"
#include "text/strings.h"

namespace logscript {

using text::concat;

void DataReads::data(const Statement& statement) {
  for (const std::uint32_t value : program_.expressions(statement)) {
    const Fact& fact = meaning_.fact(value);
    values_.push_back(meaning_.node(value).offset);
    if (!fact.constant && !fact.broken)
      meaning_.tell(Code::wrongKind, meaning_.node(value).offset,
                    concat(meaning_.shown(value),
                           " is known only when the program runs, and Data "
                           "holds constants; write a number"));
  }
}

long DataReads::timesOf(const Statement& loop) {
  const auto bounds = program_.expressions(loop);
  if (bounds.size() != 2) return -1;
  const std::optional<long> first = meaning_.whole(bounds[0]), last = meaning_.whole(bounds[1]);
  if (!first || !last) return -1;
  return std::clamp(*last - *first + 1, 0L, 1'000'000L);
}

void DataReads::read(const Statement& statement, std::span<const std::uint32_t> blocks) {
  long times = 1;
  for (const std::uint32_t block : blocks) {
    const StatementKind kind = program_.statements[block].kind;
    if (kind == StatementKind::beginProg) continue;
    const long of = kind == StatementKind::forLoop ? timesOf(program_.statements[block]) : -1;
    if (of < 0) uncertain_ = true;
    times = std::min(times * std::max(of, 0L), 1'000'000L);
  }
  readings_.push_back({statement.offset, times});
}

void DataReads::tellRest() {
  for (const Statement& statement : program_.statements)
    if (statement.kind == StatementKind::invoke && isInstruction(statement.name) &&
        text::equalsIgnoringCase(program_.spelling(statement.name), "Restore"))
      uncertain_ = true;
  if (uncertain_) return;
  std::size_t taken = 0;
  for (const Reading& reading : readings_) {
    taken += static_cast<std::size_t>(reading.count);
    if (taken > values_.size())
      return meaning_.tell(
          Code::dataRead, reading.offset,
          concat("this Read and those before it take ", taken, " values and Data holds ",
                 values_.size(), "; add values to Data or read fewer"));
  }
  if (taken < values_.size())
    meaning_.tell(Code::dataRead, values_[taken],
                  concat("Data holds ", values_.size(), " values and Read takes ", taken,
                         "; from here on they are not read; remove them or read them"));
}

}  // namespace logscript
