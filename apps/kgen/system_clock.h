#pragma once

#include "ports/clock.h"

namespace kgen {

/// Local time, or the UTC time of SOURCE_DATE_EPOCH, so that outputs can be made again byte for
/// byte. Throws Failure when that variable holds no number of seconds.
class SystemClock final : public ports::Clock {
 public:
  [[nodiscard]] ports::Moment now() const override;
};

}  // namespace kgen
