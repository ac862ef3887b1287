#pragma once

#include <cstddef>

namespace platform {

/// Megabytes of heap that lie on large pages: of a command, and of a window with the biggest
/// project.
constexpr std::size_t heapOfCommand = 32, heapOfWindow = 256;

/// Lays the heap of the process, up to some megabytes of it, on large pages, where the system has
/// them: the first touches of small ones take longer than most of what a command does, and than
/// half the start of a window. To be called first; without large pages all stays as it is.
void useLargePages(std::size_t megabytes);

}  // namespace platform
