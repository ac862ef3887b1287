#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "logscript/words.h"

namespace logscript {

/// Letters fold to lower case; only the language's own alphabet has case.
constexpr char folded(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

/// Hash of a name, made as it is read: start with hashSeed, add each character.
constexpr std::uint32_t hashSeed = 2166136261U;
constexpr std::uint32_t hashed(std::uint32_t hash, char c) {
  return (hash ^ static_cast<unsigned char>(folded(c))) * 16777619U;
}

/// The names of one program, each with a number. Spellings are views: the text they came from has
/// to stay.
class Names {
 public:
  Names();

  NameId idOf(std::string_view spelling, std::uint32_t hash);
  NameId idOf(std::string_view spelling);

  /// As it was written first.
  [[nodiscard]] std::string_view spelling(NameId id) const { return spellings_[id].text; }
  [[nodiscard]] std::size_t size() const { return spellings_.size(); }
  [[nodiscard]] static WordKind kindOf(NameId id);

 private:
  struct Spelling {
    std::string_view text;
    std::uint32_t hash;
  };

  void grow();

  std::vector<Spelling> spellings_;
  std::vector<NameId> slots_;
};

/// Letters to insert, drop, replace or swap to get from one name to the other, in any case of
/// letters; at most the limit + 1.
std::size_t distanceBetween(std::string_view a, std::string_view b, std::size_t limit);

/// Misspellings of a name of this length that are still worth a question.
constexpr std::size_t tolerance(std::size_t length) { return length < 3 ? 0 : length < 6 ? 1 : 2; }

}  // namespace logscript
