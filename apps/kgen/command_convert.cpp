#include <memory>

#include "command.h"
#include "disk_files.h"
#include "failure.h"
#include "parser.h"
#include "project_files.h"
#include "terminal.h"
#include "text/strings.h"

namespace kgen {
namespace {

struct ConvertOptions {
  std::string in, out, host;
  bool verbose = false;
  bool noSync = false;
};

void sayIgnored(const OpenedProject& opened) {
  const std::string name = shownName(opened.path);
  for (const KGEN_GENFILE::LineNote& line : opened.report.ignored)
    say(text::concat(name, ":", line.line, ": ignored: ", line.text));
  say(text::concat(name, ": ", opened.report.ignoredLines, " lines ignored"));
}

/// Standard output and devices take the text as it comes; anything else becomes a file with backup.
void writeProject(const std::string& out, const OpenedProject& opened, bool dunmore, bool flush) {
  DiskFiles files;
  const std::string base = withoutProjectExtension(out);
  if (out == "-")
    writeOut(KGEN_GENFILE::fileText(opened.project, stampFor(baseOf(opened.path), dunmore)));
  else if (isDevice(out))
    files.write(out, KGEN_GENFILE::fileText(opened.project, stampFor(base, dunmore)), false);
  else
    saveProject(base, opened.project, stampFor(base, dunmore), flush);
}

int runConvert(const ConvertOptions& options) {
  const bool dunmore = isDunmore(options.host);
  const auto opened = openProject(options.in, {dunmore, options.verbose});
  if (options.verbose) sayIgnored(*opened);
  writeProject(options.out, *opened, dunmore, !options.noSync);
  return done;
}

}  // namespace

Action prepareConvert(Parser& parser) {
  const auto options = std::make_shared<ConvertOptions>();
  parser.argument("IN", "Project file, - for standard input", options->in);
  parser.argument("OUT", "New project file, with or without .GN7; - for standard output",
                  options->out);
  addHostOption(parser, options->host);
  parser.flag("-v,--verbose", "List the lines that no known key took", options->verbose);
  parser.flag("--no-sync", "Do not wait until the file is on the disk", options->noSync);
  return [options] { return runConvert(*options); };
}

}  // namespace kgen
