#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "logscript/check.h"
#include "logscript/scan_times.h"

/// Whatever the bytes are: reading and checking end, and every finding is in the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const logscript::Program program = logscript::parse(text);
  for (const logscript::Finding& finding : logscript::check(program)) {
    if (finding.offset > size || finding.line == 0 || finding.column == 0) std::abort();
    if (logscript::report(finding, "fuzz", text).empty()) std::abort();
  }
  logscript::scanTimes(program);
  return 0;
}
