#include <CLI/CLI.hpp>
#include <memory>

#include "choices.h"
#include "command.h"
#include "failure.h"
#include "project_files.h"
#include "projectfile/project_listing.h"
#include "terminal.h"
#include "text/json_writer.h"

namespace kgen {
namespace {

struct ShowOptions {
  std::string file;
  std::string format = "text";
};

int runShow(const ShowOptions& options) {
  const OpenedProject opened = openProject(options.file);
  if (options.format == "json") {
    text::JsonWriter json(writeOut);
    projectfile::writeJson(opened.project, json);
    json.finish();
  } else {
    writeOut(projectfile::textListing(opened.project));
  }
  return done;
}

}  // namespace

Action prepareShow(CLI::App& parser) {
  const auto options = std::make_shared<ShowOptions>();
  parser.add_option("FILE", options->file, "Project file, - for standard input")->required();
  parser.add_option("--format", options->format, "Form of the answer; text unless said otherwise")
      ->check(oneOf({"text", "json"}))
      ->type_name("text|json");
  return [options] { return runShow(*options); };
}

}  // namespace kgen
