#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace projectfile {

/// How the indexes of a key are written: none, "(1)", "(1,2)" ... "(1,2,3,4)", "(1, 2)",
/// "(1 Start)", "(1 Stop)".
enum class Form : std::uint8_t { none, one, two, three, four, spaced, start, stop };

struct Indexes {
  std::array<std::uint16_t, 4> at = {};
  std::size_t operator[](std::size_t i) const { return at[i]; }
};

struct KeyTail {
  Form form = Form::none;
  Indexes indexes;
};

/// Reads what follows the name of a key, up to "=". Returns the place of the "=", or nullptr when
/// the text is not in one of the forms, letter by letter: no blanks, signs or leading zeros.
const char* readKeyTail(const char* from, const char* end, KeyTail& tail);

}  // namespace projectfile
