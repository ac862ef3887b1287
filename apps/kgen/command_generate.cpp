#include <algorithm>
#include <memory>

#include "answering_messages.h"
#include "command.h"
#include "companion/table_information.h"
#include "companion/wiring_diagram.h"
#include "control/checked_program.h"
#include "disk_files.h"
#include "failure.h"
#include "fault_lines.h"
#include "model/channel_plan.h"
#include "parser.h"
#include "project_files.h"
#include "terminal.h"
#include "text/strings.h"
#include "verify/save_checks.h"

namespace kgen {
namespace {

const std::vector<std::string> allDocuments = {"program", "tables", "wiring"};

struct GenerateOptions {
  std::string file, base, host, answer;
  std::vector<std::string> only = allDocuments;
  bool force = false;

  [[nodiscard]] bool wants(std::string_view what) const {
    return std::find(only.begin(), only.end(), what) != only.end();
  }
};

/// A document, whole in memory.
struct Document {
  std::string path, text;
};

void checkOptions(const GenerateOptions& options) {
  if (options.file == "-" && options.base.empty())
    throw Failure(wrongUsage, "standard input: the outputs have no name; give one with -o BASE");
  if (options.base == "-" && options.only.size() > 1)
    throw Failure(wrongUsage,
                  "-o -: standard output takes one document; add --only program, --only tables or "
                  "--only wiring");
}

std::string outputBase(const GenerateOptions& options, const std::string& path) {
  if (options.base == "-") return path == "-" ? "NoName" : baseOf(path);
  return options.base.empty() ? baseOf(path) : withoutProjectExtension(options.base);
}

void warn(const std::string& path, std::string_view text) {
  complain(text::concat(shownName(path), ": warning: ", text));
}

std::string programText(const OpenedProject& opened, const model::DocumentStamp& stamp,
                        const std::string& path) {
  try {
    control::CheckedProgram made = control::checkedProgram(opened.project, stamp, path);
    for (const std::string& note : made.program.notes) warn(opened.path, note);
    if (!made.fault.empty())
      throw Failure(ownFault, text::concat(shownName(opened.path), ": ", made.fault));
    if (!made.remark.empty()) warn(opened.path, made.remark);
    return std::move(made.program.text);
  } catch (const SAVEDLD::ProgramTooLong&) {
    throw Failure(findings,
                  text::concat(shownName(opened.path), ": the program would need more than ",
                               SAVEDLD::maxProgramLines,
                               " lines; remove names of channels, blocks or tables"));
  }
}

/// Every text is complete before the first file is touched.
std::vector<Document> documentsOf(const OpenedProject& opened, const GenerateOptions& options) {
  const std::string base = outputBase(options, opened.path);
  const model::DocumentStamp stamp = stampFor(base, isDunmore(options.host));
  std::vector<Document> documents;
  const std::string program =
      text::concat(base, model::programExtension(opened.project.configuration));
  if (options.wants("program")) documents.push_back({program, programText(opened, stamp, program)});
  if (options.wants("tables"))
    documents.push_back(
        {text::concat(base, ".TI7"), companion::tableInformation(opened.project, stamp)});
  if (options.wants("wiring"))
    documents.push_back({text::concat(base, ".WR7"), MAKEWIRE::wiringText(opened.project, stamp)});
  return documents;
}

/// The checks of the save command; what they say goes to standard error. An answer may change the
/// project. The upgrade that a save would make is no matter here: the project is not written.
void check(OpenedProject& opened, const GenerateOptions& options) {
  AnsweringMessages messages(options.answer);
  FaultLines faults;
  const bool doNotSave = verify::checkedForSave(opened.project, {messages, faults}).DoNotSave;
  if (!messages.messages().empty())
    complain(text::concat(shownName(opened.path), ": ", messages.listing()));
  if (doNotSave && !options.force)
    throw Failure(findings, text::concat(shownName(opened.path),
                                         ": nothing is written because of what the checks found; "
                                         "correct it, or write all the same with --force"));
}

int runGenerate(const GenerateOptions& options) {
  checkOptions(options);
  const auto opened = openProject(options.file, {.dunmoreHost = isDunmore(options.host)});
  for (const std::string& problem : model::channelPlan(opened->project).problems)
    warn(opened->path, problem);
  check(*opened, options);
  DiskFiles files;
  for (const Document& document : documentsOf(*opened, options)) {
    if (options.base == "-")
      writeOut(document.text);
    else
      files.replace(document.path, document.text, false);
  }
  return done;
}

}  // namespace

Action prepareGenerate(Parser& parser) {
  const auto options = std::make_shared<GenerateOptions>();
  parser.argument("FILE", "Project file, - for standard input", options->file);
  parser.option("-o,--output", "BASE",
                "Path of the outputs without extension, - for standard output; FILE's unless given",
                options->base);
  addHostOption(parser, options->host);
  addAnswerOption(parser, options->answer);
  parser.flag("--force", "Write although a check found a problem", options->force);
  parser.choices("--only", allDocuments,
                 "What to write; program, tables and wiring unless said otherwise", options->only);
  return [options] { return runGenerate(*options); };
}

}  // namespace kgen
