#include <memory>

#include "command.h"
#include "disk_files.h"
#include "failure.h"
#include "finding_lines.h"
#include "parser.h"
#include "project_files.h"
#include "readback/verification.h"
#include "terminal.h"
#include "text/json_writer.h"
#include "text/strings.h"

namespace kgen {
namespace {

struct VerifyOptions {
  std::string project, program, host;
  std::string format = "text";
};

void writeJson(text::JsonWriter& json, const readback::Difference& difference) {
  json.openObject();
  json.member("line", static_cast<std::int64_t>(difference.line));
  json.member("column", static_cast<std::int64_t>(difference.column));
  json.member("text", text::asUtf8(difference.text));
  json.member("is", text::asUtf8(difference.is));
  json.member("expected", text::asUtf8(difference.expected));
  json.member("section", difference.setting.section);
  json.member("key", difference.setting.key);
  json.member("owner", difference.setting.owner);
  json.closeObject();
}

void writeJson(const readback::Verification& result, std::string_view program) {
  text::JsonWriter json(writeOut);
  json.openObject();
  json.member("equal", result.equal());
  json.key("errors");
  json.openArray();
  for (const logscript::Finding& error : result.errors) writeFinding(json, error, program);
  json.closeArray();
  json.key("differences");
  json.openArray();
  for (const readback::Difference& difference : result.differences) writeJson(json, difference);
  json.closeArray();
  json.closeObject();
  json.finish();
}

void writeText(const readback::Verification& result, std::string_view name,
               std::string_view program) {
  for (const logscript::Finding& error : result.errors)
    writeOut(logscript::report(error, name, program));
  for (const readback::Difference& difference : result.differences)
    writeOut(readback::report(difference, name));
  writeOut(result.equal() ? text::concat(name, ": says what the project says\n")
                          : text::concat(name, ": ", counted(result.errors.size(), "error"), ", ",
                                         counted(result.differences.size(), "difference"), "\n"));
}

int runVerify(const VerifyOptions& options) {
  if (options.project == "-" && options.program == "-")
    throw Failure(wrongUsage, "standard input is either the project or the program; name a file");
  const bool dunmore = isDunmore(options.host);
  const auto opened = openProject(options.project, {.dunmoreHost = dunmore});
  const std::string program = readAll(options.program);
  const readback::Verification result = readback::verifyProgram(program, opened->project, dunmore);
  if (options.format == "json")
    writeJson(result, program);
  else
    writeText(result, shownName(options.program), program);
  return result.equal() ? done : findings;
}

}  // namespace

Action prepareVerifyProgram(Parser& parser) {
  const auto options = std::make_shared<VerifyOptions>();
  parser.argument("PROJECT", "Project file, - for standard input", options->project);
  parser.argument("PROGRAM", "Logger program, - for standard input", options->program);
  addHostOption(parser, options->host);
  parser.choice("--format", {"text", "json"}, "Form of the answer; text unless said otherwise",
                options->format);
  return [options] { return runVerify(*options); };
}

}  // namespace kgen
