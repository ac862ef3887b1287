#include "readback/sequence.h"

#include <algorithm>
#include <cstdint>

namespace readback {
namespace {

constexpr std::size_t largestTable = 16'000'000;

using Equal = std::function<bool(std::size_t, std::size_t)>;

/// Longest common part of the places from..first and from..second by the usual table. Sequences
/// that are too long for it have nothing in common.
void addMiddle(Pairs& pairs, std::size_t from, std::size_t first, std::size_t second,
               const Equal& equal) {
  const std::size_t rows = first - from, columns = second - from;
  if (rows == 0 || columns == 0 || rows > largestTable / columns) return;
  std::vector<std::uint16_t> length((rows + 1) * (columns + 1));
  const auto at = [&](std::size_t i, std::size_t j) -> std::uint16_t& {
    return length[i * (columns + 1) + j];
  };
  for (std::size_t i = rows; i-- > 0;)
    for (std::size_t j = columns; j-- > 0;)
      at(i, j) = equal(from + i, from + j) ? static_cast<std::uint16_t>(at(i + 1, j + 1) + 1)
                                           : std::max(at(i + 1, j), at(i, j + 1));
  for (std::size_t i = 0, j = 0; i < rows && j < columns;) {
    if (at(i, j) == at(i + 1, j + 1) + 1 && equal(from + i, from + j)) {
      pairs.emplace_back(from + i++, from + j++);
    } else {
      at(i + 1, j) >= at(i, j + 1) ? ++i : ++j;
    }
  }
}

}  // namespace

Pairs commonSequence(std::size_t first, std::size_t second, const Equal& equal) {
  Pairs pairs;
  std::size_t start = 0;
  while (start < std::min(first, second) && equal(start, start)) {
    pairs.emplace_back(start, start);
    ++start;
  }
  std::size_t end = 0;
  while (start + end < std::min(first, second) && equal(first - end - 1, second - end - 1)) ++end;
  addMiddle(pairs, start, first - end, second - end, equal);
  for (; end > 0; --end) pairs.emplace_back(first - end, second - end);
  return pairs;
}

}  // namespace readback
