#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace readback {

/// Pairs of equal places of two sequences, in order and as many as there can be.
using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;
Pairs commonSequence(std::size_t first, std::size_t second,
                     const std::function<bool(std::size_t, std::size_t)>& equal);

}  // namespace readback
