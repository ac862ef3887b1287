#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <type_traits>

#include "text/numbers.h"

/// Pieces of text: joining, case, padding, encodings.
namespace text {

inline void appendPiece(std::string& out, std::string_view piece) { out += piece; }
inline void appendPiece(std::string& out, char piece) { out += piece; }
template <std::integral T>
requires(!std::same_as<T, bool> && !std::same_as<T, char>) void appendPiece(std::string& out,
                                                                            T piece) {
  appendShortest(out, static_cast<std::int64_t>(piece));
}
inline void appendPiece(std::string& out, double piece) { appendShortest(out, piece); }

/// Room that a piece takes in a text, about.
inline std::size_t pieceSize(std::string_view piece) { return piece.size(); }
template <class T>
requires std::is_arithmetic_v<T> std::size_t pieceSize(T) { return 8; }

/// Texts and numbers (in their shortest form) one after another. A bool does not compile: say
/// which word it stands for.
template <class... Pieces>
std::string concat(const Pieces&... pieces) {
  static_assert((!std::is_same_v<Pieces, bool> && ...), "write the word that the bool stands for");
  std::string out;
  out.reserve((pieceSize(pieces) + ... + 0));
  (appendPiece(out, pieces), ...);
  return out;
}

std::string upper(std::string_view text);
std::string lower(std::string_view text);
bool equalsIgnoringCase(std::string_view a, std::string_view b);
bool containsIgnoringCase(std::string_view text, std::string_view part);

std::string_view trimmed(std::string_view text);

/// The text followed by blanks up to a width in characters; a longer text stays as it is.
std::string padded(std::string_view text, std::size_t width);

/// N signs, the title, N signs, where N = (width - length of title) / 2, halves to even.
std::string ruled(std::string_view title, std::size_t width, char left, char right);

bool isUtf8(std::string_view bytes);
/// UTF-8 stays as it is; anything else is taken as Windows-1252.
std::string asUtf8(std::string_view bytes);
/// Printable ASCII stays; every other character (not byte) becomes "?".
std::string asAscii(std::string_view utf8);

bool isLetter(char c);
bool isDigit(char c);
/// A name of the program language: a letter, then letters, digits and "_".
bool isName(std::string_view text);

}  // namespace text
