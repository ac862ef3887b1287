#include <memory>

#include "channels/channel_csv.h"
#include "command.h"
#include "disk_files.h"
#include "failure.h"
#include "parser.h"
#include "project_files.h"
#include "terminal.h"
#include "text/strings.h"

namespace kgen {
namespace {

struct ChannelsOptions {
  std::string file;
  std::string csv = "-";
  bool dryRun = false;
};

int runExport(const ChannelsOptions& options) {
  const auto opened = openProject(options.file);
  const std::string csv = channels::csvText(opened->project);
  if (options.csv == "-")
    writeOut(csv);
  else
    DiskFiles().replace(options.csv, csv, false);
  return done;
}

void refuseFaults(const std::string& csv, const channels::ImportReport& report) {
  for (const channels::LineText& fault : report.faults)
    complain(text::concat(shownName(csv), ":", fault.line, ": ", fault.text));
  if (!report.faults.empty())
    throw Failure(inputUnreadable, text::concat(shownName(csv), ": faults: ", report.faults.size(),
                                                "; nothing was changed, mend the lines"));
}

void listChanges(const std::string& csv, const channels::ImportReport& report) {
  std::string lines;
  for (const channels::LineText& change : report.changes)
    lines += text::concat(shownName(csv), ":", change.line, ": ", change.text, "\n");
  writeOut(lines);
}

int runImport(const ChannelsOptions& options) {
  if (options.file == "-")
    throw Failure(wrongUsage, "channels import: the project must be a file; name it");
  const auto opened = openProject(options.file);
  const auto report = channels::importCsv(readAll(options.csv), opened->project);
  refuseFaults(options.csv, report);
  if (options.dryRun) {
    listChanges(options.csv, report);
  } else if (!report.changes.empty()) {
    DiskFiles files;
    const std::string base = withoutProjectExtension(opened->path);
    saveProject(base, opened->project, stampFor(base));
  }
  return done;
}

Action prepareExport(Parser& parser) {
  const auto options = std::make_shared<ChannelsOptions>();
  parser.argument("FILE", "Project file, - for standard input", options->file);
  parser.option("--csv", "F", "Where to write; standard output unless given", options->csv);
  return [options] { return runExport(*options); };
}

Action prepareImport(Parser& parser) {
  const auto options = std::make_shared<ChannelsOptions>();
  parser.argument("FILE", "Project file, which is changed", options->file);
  parser.requiredOption("--csv", "F", "What to read, - for standard input", options->csv);
  parser.flag("--dry-run", "List the changes and write nothing", options->dryRun);
  return [options] { return runImport(*options); };
}

constexpr Command channelsCommands[] = {
    {"export", "Write the channels of all blocks as CSV", prepareExport},
    {"import", "Take names, scaling and tables of channels from CSV", prepareImport},
};

}  // namespace

Action prepareChannels(Parser& parser) { return parser.commands(channelsCommands); }

}  // namespace kgen
