#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace projectfile {

/// How the indexes of a key are written: none, "(1)", "(1,2)" ... "(1,2,3,4)", "(1, 2)",
/// "(1 Start)", "(1 Stop)".
enum class Form : std::uint8_t { none, one, two, three, four, spaced, start, stop };

struct Indexes {
  std::array<std::uint16_t, 4> at = {};
  std::size_t operator[](std::size_t i) const { return at[i]; }
};

/// Reads what follows the name of a key, up to "=". Most keys repeat all indexes but the last one
/// of the key before them; those need not be read again.
class KeyTailReader {
 public:
  /// Returns the place of the "=", or nullptr when the text is not in one of the forms letter by
  /// letter: no blanks, signs or leading zeros.
  const char* read(const char* from, const char* end) {
    if (const char* equals = readRepeated(from, end)) return equals;
    return readWhole(from, end);
  }

  [[nodiscard]] Form form() const { return form_; }
  [[nodiscard]] const Indexes& indexes() const { return indexes_; }

 private:
  const char* readRepeated(const char* from, const char* end);
  const char* readWhole(const char* from, const char* end);
  const char* readIndexes(const char* p, const char* end);
  const char* readWord(const char* p, const char* end);
  void remember(std::string_view repeated);

  Form form_ = Form::none;
  Indexes indexes_;
  std::array<char, 16> repeated_ = {};  // "(1,2," of the key before, up to its last index
  std::size_t repeatedSize_ = 0;
  std::size_t last_ = 0;  // index that comes after it
};

inline unsigned digitOf(char c) { return static_cast<unsigned char>(c) - unsigned{'0'}; }

/// A number as the writer puts it, so without leading zeros; nullptr for anything else.
inline const char* readIndex(const char* p, const char* end, std::uint16_t& index) {
  constexpr unsigned largestIndex = 9999;
  if (p == end) return nullptr;
  unsigned value = digitOf(*p++);
  if (value > 9) return nullptr;
  if (value > 0)
    for (; p != end && digitOf(*p) <= 9; ++p) {
      value = value * 10 + digitOf(*p);
      if (value > largestIndex) return nullptr;
    }
  index = static_cast<std::uint16_t>(value);
  return p;
}

inline const char* KeyTailReader::readRepeated(const char* from, const char* end) {
  if (repeatedSize_ == 0 || static_cast<std::size_t>(end - from) <= repeatedSize_) return nullptr;
  for (std::size_t i = 0; i < repeatedSize_; ++i)
    if (from[i] != repeated_[i]) return nullptr;
  std::uint16_t index = 0;
  const char* const p = readIndex(from + repeatedSize_, end, index);
  if (!p || end - p < 2 || p[0] != ')' || p[1] != '=') return nullptr;
  indexes_.at[last_] = index;
  return p + 1;
}

}  // namespace projectfile
