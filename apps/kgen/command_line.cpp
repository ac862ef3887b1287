#include <CLI/CLI.hpp>
#include <algorithm>
#include <new>
#include <vector>

#include "command.h"
#include "command_tree.h"
#include "failure.h"
#include "model/document_stamp.h"
#include "parser.h"
#include "platform/system_clock.h"
#include "ports/file_store.h"
#include "terminal.h"
#include "text/strings.h"

namespace kgen {
namespace {

constexpr Command commandTable[] = {
    {"new", "Write a project of defaults", prepareNew},
    {"show", "Show the whole project", prepareShow},
    {"summary", "The summary of the main panel", prepareSummary},
    {"convert", "Load a project and write it in the current layout", prepareConvert},
    {"check", "Check a project as before it is saved", prepareCheck},
    {"generate", "Write the logger program and its table information", prepareGenerate},
    {"compile", "Check logger programs as the logger's compiler does", prepareCompile},
    {"explain", "Explain a finding of compile", prepareExplain},
    {"verify-program", "Compare a logger program with the project it is of", prepareVerifyProgram},
    {"syntax", "Print the program language's colours for an editor", prepareSyntax},
    {"plan", "Plan the filter of an isolated block, as JSON", preparePlan},
    {"calc", "Scaling calculators", prepareCalc},
    {"can", "Work out CAN identifiers and bit timing", prepareCan},
    {"channels", "Element lists of all blocks as CSV and back", prepareChannels},
    {"completion", "Print the completion script of a shell", prepareCompletion},
    {"man", "Print the manual page", prepareMan},
};

/// The parser is filled for the named command alone: building the whole tree takes longer than
/// most commands.
std::span<const Command> commandsFor(std::string_view word) {
  const auto* found = std::find_if(std::begin(commandTable), std::end(commandTable),
                                   [word](const Command& c) { return c.name == word; });
  if (found == std::end(commandTable)) return commandTable;
  return {found, 1};
}

/// Set when the commands are there: they would take it over.
void addFooter(CLI::App& parser) {
  parser.footer(
      "'kgen COMMAND --help' lists the options of a command. Where a file is asked for, - is\n"
      "standard input or output. Exit codes: 0 done, 1 findings, 2 wrong usage, 3 input can't\n"
      "be read, 4 output can't be written, 70 a fault of kgen.");
}

/// The command that was named last: "channels import"; "" for kgen itself.
const CLI::App& innermost(const CLI::App& parser, std::string& path) {
  const auto named = parser.get_subcommands();
  if (named.empty()) return parser;
  path += text::concat(path.empty() ? "" : " ", named.front()->get_name());
  return innermost(*named.front(), path);
}

std::string wordsFor(const CLI::App& command, const CLI::ParseError& error) {
  const std::vector<std::string> others = command.remaining();
  if (dynamic_cast<const CLI::RequiredError*>(&error) == nullptr || others.empty() ||
      command.get_require_subcommand_min() == 0)
    return error.what();
  return text::concat("'", others.front(), "' is no command");
}

int usageFault(const CLI::App& parser, const CLI::ParseError& error) {
  std::string path;
  const CLI::App& command = innermost(parser, path);
  complain(text::concat(path, path.empty() ? "" : ": ", wordsFor(command, error), "; 'kgen ", path,
                        path.empty() ? "" : " ", "--help' shows the usage"));
  return wrongUsage;
}

int parseAndRun(CLI::App& parser, const Action& action, int argc, char** argv) {
  try {
    parser.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    writeOut(parser.help());
    return done;
  } catch (const CLI::CallForVersion& version) {
    writeOut(text::concat(version.what(), "\n"));
    return done;
  } catch (const CLI::ParseError& error) {
    return usageFault(parser, error);
  }
  return action();
}

int parseAndRun(int argc, char** argv) {
  CLI::App app;
  describeProgram(app);
  const Action action = Parser(app).commands(commandsFor(argc > 1 ? argv[1] : ""));
  addFooter(app);
  return parseAndRun(app, action, argc, argv);
}

int complainAndFail(std::string_view message, ExitCode code) {
  complain(message);
  return code;
}

}  // namespace

std::span<const Command> allCommands() { return commandTable; }

void describeProgram(CLI::App& app) {
  app.name("kgen");
  app.description("Program generator for K700 data loggers");
  app.set_version_flag("--version", text::concat("kgen ", model::generatorVersion),
                       "Print the version and exit");
}

int runCommandLine(int argc, char** argv) {
  try {
    return parseAndRun(argc, argv);
  } catch (const Failure& failure) {
    return complainAndFail(failure.what(), failure.code());
  } catch (const platform::ClockError& error) {
    return complainAndFail(error.what(), wrongUsage);
  } catch (const ports::FileError& error) {
    return complainAndFail(error.what(), outputUnwritable);
  } catch (const std::bad_alloc&) {
    return complainAndFail(
        "there is not enough memory for this; close other programs, or lift the limit (ulimit -v)",
        inputUnreadable);
  } catch (const std::exception& error) {
    return complainAndFail(
        text::concat("fault in kgen itself: ", error.what(), "; please report it"), ownFault);
  }
}

}  // namespace kgen
