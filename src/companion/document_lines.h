#pragma once

#include <span>
#include <string>
#include <string_view>

#include "model/document_stamp.h"
#include "model/logger_configuration.h"

/// What the documents beside the program have in common.
namespace companion {

inline constexpr std::size_t lineWidth = 82;

/// The four lines that every document begins with; the extension with its dot.
std::string documentHeader(const model::LoggerConfiguration& configuration,
                           const model::DocumentStamp& stamp, std::string_view extension);

/// Adds a line of cells, each at its column (from 0). A cell too long for its column is followed by
/// one blank and pushes the rest. Cut at a width; no blanks at the end.
void appendColumns(std::string& out, std::span<const std::string_view> cells,
                   std::span<const std::size_t> columns, std::size_t width = std::string::npos);

}  // namespace companion
