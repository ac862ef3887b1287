#pragma once

#include <string>

#include "model/project.h"
#include "text/json_writer.h"

namespace projectfile {

/// The whole project as one JSON object, nested, with the keys of the file without their indexes.
/// Totals that the file states are worked out anew.
void writeJson(const model::Project& project, text::JsonWriter& json);

/// The sections of the file for people to read: "Key = value" lines.
std::string textListing(const model::Project& project);

}  // namespace projectfile
