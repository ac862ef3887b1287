#pragma once

#include <cstddef>
#include <string>

namespace text {

/// Room for a text of megabytes, on large pages where the system has them: first touches of small
/// pages take longer than writing what stands on them. Small sizes are reserved as usual.
void reserveLarge(std::string& out, std::size_t bytes);

}  // namespace text
