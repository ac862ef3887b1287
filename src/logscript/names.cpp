#include "logscript/names.h"

#include <algorithm>

#include "logscript/instructions.h"
#include "text/strings.h"

namespace logscript {
namespace {

std::uint32_t hashOf(std::string_view spelling) {
  std::uint32_t hash = hashSeed;
  for (const char c : spelling) hash = hashed(hash, c);
  return hash;
}

}  // namespace

Names::Names() : slots_(4096, noName) {
  spellings_.reserve(1024);
  for (std::size_t i = 0; i < wordCount(); ++i) idOf(wordRow(i).word);
  for (const Instruction& instruction : allInstructions()) idOf(instruction.name);
}

NameId Names::idOf(std::string_view spelling) { return idOf(spelling, hashOf(spelling)); }

NameId Names::idOf(std::string_view spelling, std::uint32_t hash) {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  for (; slots_[slot] != noName; slot = (slot + 1) & mask) {
    const Spelling& known = spellings_[slots_[slot]];
    if (known.hash == hash && text::equalsIgnoringCase(known.text, spelling)) return slots_[slot];
  }
  const auto id = static_cast<NameId>(spellings_.size());
  slots_[slot] = id;
  spellings_.push_back({spelling, hash});
  if (spellings_.size() * 2 > slots_.size()) grow();
  return id;
}

void Names::grow() {
  slots_.assign(slots_.size() * 4, noName);
  const std::size_t mask = slots_.size() - 1;
  for (NameId id = 0; id < spellings_.size(); ++id) {
    std::size_t slot = spellings_[id].hash & mask;
    while (slots_[slot] != noName) slot = (slot + 1) & mask;
    slots_[slot] = id;
  }
}

WordKind Names::kindOf(NameId id) {
  if (id < wordCount()) return wordRow(id).kind;
  return isInstruction(id) ? WordKind::instruction : WordKind::name;
}

std::size_t distanceBetween(std::string_view a, std::string_view b, std::size_t limit) {
  const std::size_t longer = std::max(a.size(), b.size());
  if (longer - std::min(a.size(), b.size()) > limit || longer > 64) return limit + 1;
  std::size_t rows[3][65];
  for (std::size_t j = 0; j <= b.size(); ++j) rows[0][j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    const auto& before = rows[(i - 1) % 3];
    auto& row = rows[i % 3];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool same = folded(a[i - 1]) == folded(b[j - 1]);
      row[j] = std::min({before[j] + 1, row[j - 1] + 1, before[j - 1] + (same ? 0U : 1U)});
      if (i > 1 && j > 1 && folded(a[i - 1]) == folded(b[j - 2]) &&
          folded(a[i - 2]) == folded(b[j - 1]))
        row[j] = std::min(row[j], rows[(i - 2) % 3][j - 2] + 1);
    }
  }
  return std::min(rows[a.size() % 3][b.size()], limit + 1);
}

}  // namespace logscript
