#include "terminal.h"

#include <unistd.h>

#include <cerrno>

#include "disk_files.h"
#include "failure.h"
#include "text/strings.h"

namespace kgen {

void writeOut(std::string_view text) {
  if (!platform::writeAll(STDOUT_FILENO, text))
    throw Failure(outputUnwritable,
                  platform::refusal("standard output", "cannot be written", errno));
}

void say(std::string_view line) { platform::writeAll(STDERR_FILENO, text::concat(line, "\n")); }

void complain(std::string_view message) { say(text::concat("kgen: ", message)); }

}  // namespace kgen
