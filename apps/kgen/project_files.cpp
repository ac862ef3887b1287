#include "project_files.h"

#include "disk_files.h"
#include "failure.h"
#include "parser.h"
#include "platform/system_clock.h"
#include "terminal.h"
#include "text/strings.h"

namespace kgen {
namespace {

std::string openedPath(const std::string& path) {
  const bool complete = path == "-" || fileNameOf(path).find('.') != std::string_view::npos;
  return complete ? path : text::concat(path, ".GN7");
}

void sayNotes(const std::string& path, const std::vector<KGEN_GENFILE::LineNote>& notes) {
  for (const KGEN_GENFILE::LineNote& note : notes)
    say(text::concat(shownName(path), ":", note.line, ": ", note.text));
}

/// A backup beside a project that is missing or cut short: its last save did not end.
void refuseHalfSaved(const std::string& path) {
  const std::string backup = KGEN_GENFILE::backupOf(withoutProjectExtension(path));
  const DiskFiles files;
  if (path == "-" || !files.exists(backup)) return;
  const bool missing = !files.exists(path);
  if (!missing && !KGEN_GENFILE::isCutShort(readAll(path))) return;
  throw Failure(inputUnreadable,
                text::concat(path, missing ? ": is missing" : ": is cut short",
                             ", because its last save did not end; open the version before it, ",
                             backup, ", or rename that to ", path));
}

}  // namespace

std::unique_ptr<OpenedProject> openProject(const std::string& path,
                                           const KGEN_GENFILE::LoadOptions& options) {
  auto opened = std::make_unique<OpenedProject>();
  opened->path = openedPath(path);
  refuseHalfSaved(opened->path);
  opened->report = KGEN_GENFILE::loadInPlace(opened->path, opened->project, options);
  if (opened->report.error) throw Failure(inputUnreadable, *opened->report.error);
  sayNotes(opened->path, opened->report.notes);
  return opened;
}

void saveProject(const std::string& base, const model::Project& project,
                 const model::DocumentStamp& stamp, bool flush) {
  DiskFiles files;
  const std::string target = platform::linkTarget(text::concat(base, ".GN7"));
  const std::string remark =
      KGEN_GENFILE::save(files, withoutProjectExtension(target), project, stamp, flush);
  if (!remark.empty()) complain(remark);
}

std::string shownName(const std::string& path) { return path == "-" ? "standard input" : path; }

std::string_view fileNameOf(std::string_view path) {
  return path.substr(path.find_last_of('/') + 1);  // npos + 1 is 0: the whole path
}

std::string baseOf(std::string_view path) {
  const std::string_view name = fileNameOf(path);
  const std::size_t dot = name.find('.');
  if (dot == std::string_view::npos) return std::string(path);
  return std::string(path.substr(0, path.size() - name.size() + dot));
}

std::string withoutProjectExtension(std::string_view path) {
  constexpr std::size_t length = 4;
  const std::string_view tail = path.size() > length ? path.substr(path.size() - length) : "";
  const bool known =
      text::equalsIgnoringCase(tail, ".GN7") || text::equalsIgnoringCase(tail, ".GEN");
  return std::string(known ? path.substr(0, path.size() - length) : path);
}

model::DocumentStamp stampFor(std::string_view base, bool dunmoreHost) {
  return {std::string(fileNameOf(base)), platform::SystemClock().now(), dunmoreHost};
}

void addHostOption(Parser& parser, std::string& host) {
  parser.option("--host", "NAME", "Program that the project is made for; Dunmore needs the K700X",
                host);
}

bool isDunmore(const std::string& host) { return text::equalsIgnoringCase(host, "Dunmore"); }

}  // namespace kgen
