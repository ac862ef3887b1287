#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "projectfile/project_file.h"
#include "projectfile/project_listing.h"

/// Whatever the bytes are: reading ends, and what was read is written so that it reads the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  model::Project project;
  KGEN_COMMON::SetAllDefaults(project);
  const model::Project fresh = project;
  KGEN_GENFILE::LoadOptions options;
  options.listIgnored = true;
  const std::string_view content(reinterpret_cast<const char*>(data), size);
  if (KGEN_GENFILE::loadText(content, project, options).error) return 0;

  text::JsonWriter json([](std::string_view) {});
  projectfile::writeJson(project, json);
  json.finish();

  const std::string once = KGEN_GENFILE::fileText(project, {});
  model::Project again = fresh;
  const KGEN_GENFILE::LoadReport report = KGEN_GENFILE::loadText(once, again);
  if (report.error || report.ignoredLines > 0 || !report.notes.empty()) std::abort();
  if (KGEN_GENFILE::fileText(again, {}) != once) std::abort();
  return 0;
}
