#include <memory>

#include "answering_messages.h"
#include "command.h"
#include "failure.h"
#include "fault_lines.h"
#include "parser.h"
#include "project_files.h"
#include "terminal.h"
#include "text/json_writer.h"
#include "text/strings.h"
#include "verify/save_checks.h"

namespace kgen {
namespace {

struct CheckOptions {
  std::string file, answer, host;
  std::string format = "text";
};

using verify::SaveVerdict;

void writeJson(const SaveVerdict& verdict, const AnsweringMessages& messages) {
  text::JsonWriter json(writeOut);
  json.openObject();
  json.member("doNotSave", verdict.DoNotSave);
  json.member("needsUpgrade", verdict.NeedsUpgrade);
  json.key("messages");
  messages.writeJson(json);
  json.closeObject();
  json.finish();
}

void writeText(const SaveVerdict& verdict, const AnsweringMessages& messages) {
  writeOut(text::concat(messages.listing(), "do not save: ", verdict.DoNotSave ? "yes" : "no",
                        ", needs upgrade: ", verdict.NeedsUpgrade ? "yes" : "no", "\n"));
}

int runCheck(const CheckOptions& options) {
  const auto opened = openProject(options.file, {.dunmoreHost = isDunmore(options.host)});
  AnsweringMessages messages(options.answer);
  FaultLines faults;
  const SaveVerdict verdict = verify::checkedForSave(opened->project, {messages, faults});
  options.format == "json" ? writeJson(verdict, messages) : writeText(verdict, messages);
  if (faults.any()) return ownFault;
  return verdict.DoNotSave || verdict.NeedsUpgrade ? findings : done;
}

}  // namespace

Action prepareCheck(Parser& parser) {
  const auto options = std::make_shared<CheckOptions>();
  parser.argument("FILE", "Project file, - for standard input", options->file);
  addAnswerOption(parser, options->answer);
  addHostOption(parser, options->host);
  parser.choice("--format", {"text", "json"}, "Form of the answer; text unless said otherwise",
                options->format);
  return [options] { return runCheck(*options); };
}

}  // namespace kgen
