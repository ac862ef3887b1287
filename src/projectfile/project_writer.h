#pragma once

#include <string>
#include <string_view>

#include "model/project.h"

namespace projectfile {

/// How a line looks: the file as the reader wants it, or a listing for people.
struct LineStyle {
  std::string_view equals;
  bool blankBeforeNumbers;  // in front of numbers that are not negative
  std::string_view lineEnd;
};
inline constexpr LineStyle fileStyle = {"=", true, "\r\n"};
inline constexpr LineStyle listingStyle = {" = ", false, "\n"};

/// When and by what the project was saved.
struct SaveMarks {
  std::string VersionLastSaved, PCTime;
};

/// The version as it is filed: at least 1.5, since the quantities are filed in today's order and a
/// lower version would have them moved by the next load.
std::string filedVersion(const model::LoggerConfiguration& configuration);

/// All sections of the project in the current layout.
std::string sectionsText(const model::Project& project, const SaveMarks& marks,
                         const LineStyle& style);

}  // namespace projectfile
