#pragma once

#include <string>
#include <string_view>

#include "logscript/finding.h"
#include "text/json_writer.h"

namespace kgen {

/// "1 error", "2 errors"
std::string counted(std::size_t count, std::string_view what);

/// A finding of a program as a JSON object.
void writeFinding(text::JsonWriter& json, const logscript::Finding& finding,
                  std::string_view program);

}  // namespace kgen
