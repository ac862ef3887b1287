#include <memory>

#include "command.h"
#include "failure.h"
#include "parser.h"
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
  const auto opened = openProject(options.file);
  if (options.format == "json") {
    text::JsonWriter json(writeOut);
    projectfile::writeJson(opened->project, json);
    json.finish();
  } else {
    writeOut(projectfile::textListing(opened->project));
  }
  return done;
}

}  // namespace

Action prepareShow(Parser& parser) {
  const auto options = std::make_shared<ShowOptions>();
  parser.argument("FILE", "Project file, - for standard input", options->file);
  parser.choice("--format", {"text", "json"}, "Form of the answer; text unless said otherwise",
                options->format);
  return [options] { return runShow(*options); };
}

}  // namespace kgen
