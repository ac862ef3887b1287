#include "platform/system_clock.h"

#include <charconv>
#include <cstdlib>
#include <ctime>
#include <string_view>

#include "text/strings.h"

namespace platform {
namespace {

ports::Moment momentOf(const std::tm& parts) {
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
          parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

constexpr std::time_t endOfYear9999 = 253402300799;

std::time_t secondsIn(std::string_view epoch) {
  std::time_t seconds = 0;
  const char* end = epoch.data() + epoch.size();
  const auto [stop, error] = std::from_chars(epoch.data(), end, seconds);
  if (error != std::errc{} || stop != end || seconds < 0 || seconds > endOfYear9999)
    throw ClockError(
        text::concat("SOURCE_DATE_EPOCH: '", epoch, "' is no time; give whole seconds since 1970"));
  return seconds;
}

}  // namespace

ports::Moment SystemClock::now() const {
  std::tm parts{};
  if (const char* epoch = std::getenv("SOURCE_DATE_EPOCH")) {
    const std::time_t seconds = secondsIn(epoch);
    ::gmtime_r(&seconds, &parts);
  } else {
    const std::time_t seconds = std::time(nullptr);
    ::localtime_r(&seconds, &parts);
  }
  return momentOf(parts);
}

}  // namespace platform
