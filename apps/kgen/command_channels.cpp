#include <CLI/CLI.hpp>
#include <memory>

#include "channels/channel_csv.h"
#include "command.h"
#include "disk_files.h"
#include "failure.h"
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
  const OpenedProject opened = openProject(options.file);
  const std::string csv = channels::csvText(opened.project);
  if (options.csv == "-")
    writeOut(csv);
  else
    DiskFiles().replace(options.csv, csv);
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
  OpenedProject opened = openProject(options.file);
  const auto report = channels::importCsv(readAll(options.csv), opened.project);
  refuseFaults(options.csv, report);
  if (options.dryRun) {
    listChanges(options.csv, report);
  } else if (!report.changes.empty()) {
    DiskFiles files;
    const std::string base = withoutProjectExtension(opened.path);
    KGEN_GENFILE::save(files, base, opened.project, stampFor(base));
  }
  return done;
}

void addFile(CLI::App& parser, ChannelsOptions& options, const std::string& help) {
  parser.add_option("FILE", options.file, help)->required();
}

Action prepareExport(CLI::App& parser) {
  const auto options = std::make_shared<ChannelsOptions>();
  addFile(parser, *options, "Project file, - for standard input");
  parser.add_option("--csv", options->csv, "Where to write; standard output unless given")
      ->type_name("F");
  return [options] { return runExport(*options); };
}

Action prepareImport(CLI::App& parser) {
  const auto options = std::make_shared<ChannelsOptions>();
  addFile(parser, *options, "Project file, which is changed");
  parser.add_option("--csv", options->csv, "What to read, - for standard input")
      ->required()
      ->type_name("F");
  parser.add_flag("--dry-run", options->dryRun, "List the changes and write nothing");
  return [options] { return runImport(*options); };
}

constexpr Command channelsCommands[] = {
    {"export", "Write the channels of all blocks as CSV", prepareExport},
    {"import", "Take names, scaling and tables of channels from CSV", prepareImport},
};

}  // namespace

Action prepareChannels(CLI::App& parser) { return prepareAll(parser, channelsCommands); }

}  // namespace kgen
