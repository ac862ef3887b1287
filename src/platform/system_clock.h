#pragma once

#include <stdexcept>

#include "ports/clock.h"

namespace platform {

/// SOURCE_DATE_EPOCH is set to something that is no time.
class ClockError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Local time, or the UTC time of SOURCE_DATE_EPOCH, so that outputs can be made again byte for
/// byte. Throws ClockError when that variable holds no number of seconds.
class SystemClock final : public ports::Clock {
 public:
  [[nodiscard]] ports::Moment now() const override;
};

}  // namespace platform
