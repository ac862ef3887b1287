#pragma once

namespace ports {

/// Local date and time, whole seconds. Month and day count from 1.
struct Moment {
  int year = 2000, month = 1, day = 1, hour = 0, minute = 0, second = 0;
  bool operator==(const Moment&) const = default;
};

class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual Moment now() const = 0;
};

}  // namespace ports
