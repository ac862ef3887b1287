#include <memory>

#include "command.h"
#include "failure.h"
#include "logscript/editor_syntax.h"
#include "parser.h"
#include "terminal.h"

namespace kgen {
namespace {

int runSyntax(std::string_view name) {
  for (const logscript::Editor& editor : logscript::editors())
    if (editor.name == name) writeOut(editor.syntax());
  return done;
}

}  // namespace

Action prepareSyntax(Parser& parser) {
  const auto editor = std::make_shared<std::string>();
  Parser::Words names;
  for (const logscript::Editor& each : logscript::editors()) names.emplace_back(each.name);
  parser.argument("EDITOR", names, "Whose definition of the program language to print", *editor);
  return [editor] { return runSyntax(*editor); };
}

}  // namespace kgen
