#pragma once

#include <cstddef>

namespace platform {

/// Lays the heap of the process, up to some megabytes of it, on large pages, where the system has
/// them: the first touches of small ones take longer than most of what a command does, and than
/// half the start of a window. To be called first; without large pages all stays as it is.
void useLargePages(std::size_t megabytes);

}  // namespace platform
