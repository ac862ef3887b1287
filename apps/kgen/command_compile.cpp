#include <algorithm>
#include <memory>
#include <vector>

#include "command.h"
#include "disk_files.h"
#include "failure.h"
#include "finding_lines.h"
#include "finding_pages.h"
#include "logscript/check.h"
#include "parser.h"
#include "project_files.h"
#include "terminal.h"
#include "text/json_writer.h"
#include "text/strings.h"

namespace kgen {
namespace {

using logscript::Finding;
using logscript::Severity;
using text::concat;

struct CompileOptions {
  Parser::Words files;
  std::string format = "text";
};

struct Compiled {
  std::string name, text;
  std::size_t lines = 0;
  std::vector<Finding> findings;

  [[nodiscard]] std::size_t count(Severity severity) const {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [severity](const Finding& finding) {
          return logscript::infoOf(finding.code).severity == severity;
        }));
  }
};

Compiled compiled(const std::string& file) {
  Compiled result{shownName(file), readAll(file), 0, {}};
  const logscript::Program program = logscript::parse(result.text);
  result.lines = program.lines();
  result.findings = logscript::check(program);
  // Errors come first: the first line that is read says what has to be changed.
  std::stable_sort(result.findings.begin(), result.findings.end(),
                   [](const Finding& a, const Finding& b) {
                     return logscript::infoOf(a.code).severity < logscript::infoOf(b.code).severity;
                   });
  return result;
}

void writeText(const Compiled& program) {
  std::string out;
  for (const Finding& finding : program.findings)
    out += logscript::report(finding, program.name, program.text);
  out += concat(program.name, ": ", counted(program.lines, "line"), ", ",
                counted(program.count(Severity::error), "error"), ", ",
                counted(program.count(Severity::warning), "warning"), ", ",
                counted(program.count(Severity::hint), "hint"), "\n");
  writeOut(out);
}

void writeJson(text::JsonWriter& json, const Compiled& program) {
  json.openObject();
  json.member("file", text::asUtf8(program.name));
  json.member("lines", static_cast<std::int64_t>(program.lines));
  json.member("errors", static_cast<std::int64_t>(program.count(Severity::error)));
  json.member("warnings", static_cast<std::int64_t>(program.count(Severity::warning)));
  json.member("hints", static_cast<std::int64_t>(program.count(Severity::hint)));
  json.key("findings");
  json.openArray();
  for (const Finding& finding : program.findings) writeFinding(json, finding, program.text);
  json.closeArray();
  json.closeObject();
}

/// Every file that can be read is compiled; one that can't is said and decides the exit code.
template <class Show>
int compileAll(const Parser::Words& files, Show show) {
  int code = done;
  for (const std::string& file : files) {
    try {
      const Compiled program = compiled(file);
      show(program);
      if (logscript::hasErrors(program.findings)) code = std::max<int>(code, findings);
    } catch (const Failure& failure) {
      if (failure.code() != inputUnreadable) throw;
      complain(failure.what());
      code = inputUnreadable;
    }
  }
  return code;
}

int runCompile(const CompileOptions& options) {
  if (options.format != "json")
    return compileAll(options.files, [](const Compiled& program) { writeText(program); });
  text::JsonWriter json(writeOut);
  json.openObject();
  json.key("files");
  json.openArray();
  const int code =
      compileAll(options.files, [&](const Compiled& program) { writeJson(json, program); });
  json.closeArray();
  json.closeObject();
  json.finish();
  return code;
}

int runExplain(const std::string& code) {
  for (const FindingPage& page : findingPages()) {
    if (!text::equalsIgnoringCase(page.code, code)) continue;
    writeOut(page.text);
    return done;
  }
  std::string known;
  for (const logscript::CodeInfo& info : logscript::allCodes())
    known += concat(known.empty() ? "" : ", ", info.name);
  throw Failure(wrongUsage, concat("explain: '", code, "' is no code; there are ", known));
}

}  // namespace

Action prepareCompile(Parser& parser) {
  const auto options = std::make_shared<CompileOptions>();
  parser.arguments("PROGRAM", "Logger programs, - for standard input", options->files);
  parser.choice("--format", {"text", "json"}, "Form of the answer; text unless said otherwise",
                options->format);
  return [options] { return runCompile(*options); };
}

Action prepareExplain(Parser& parser) {
  const auto code = std::make_shared<std::string>();
  parser.argument("CODE", "Code of a finding, such as undeclared-name", *code);
  return [code] { return runExplain(*code); };
}

}  // namespace kgen
