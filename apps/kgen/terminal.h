#pragma once

#include <string_view>

namespace kgen {

/// Writes every byte to standard output, or throws Failure.
void writeOut(std::string_view text);

/// One line to standard error.
void say(std::string_view line);

/// The line "kgen: " and a message.
void complain(std::string_view message);

}  // namespace kgen
