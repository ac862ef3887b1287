#pragma once

#include <string>
#include <string_view>

#include "ports/clock.h"

namespace model {

/// The generator's own version, as every document carries it.
inline constexpr std::string_view generatorVersion = "6.0.0001";

/// What the documents of a project say about their making.
struct DocumentStamp {
  std::string baseName;  // file name without folder and extension
  ports::Moment now;
  bool dunmoreHost = false;  // made for the Dunmore real-time host
};

std::string dateText(const ports::Moment& moment);  // mm-dd-yyyy
std::string timeText(const ports::Moment& moment);  // hh:mm:ss

}  // namespace model
