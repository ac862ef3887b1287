#pragma once

namespace platform {

/// Lays the heap of a short-lived process on large pages, where the system has them: the first
/// touches of small ones take longer than most of what such a process does. To be called first;
/// without large pages all stays as it is.
void useLargePages();

}  // namespace platform
