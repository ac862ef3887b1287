#pragma once

#include <functional>
#include <span>
#include <string_view>

namespace kgen {

class Parser;

/// Runs a command whose options have been read; the answer is the exit code.
using Action = std::function<int()>;

/// One line of the command table.
struct Command {
  std::string_view name;
  std::string_view help;
  /// Adds the options to the command's parser. The action reads them when it runs.
  Action (*prepare)(Parser& parser);
};

/// Every command, in the order of the help.
std::span<const Command> allCommands();

/// Reads the arguments, runs the command, and turns whatever goes wrong into a message and an exit
/// code.
int runCommandLine(int argc, char** argv);

Action prepareNew(Parser& parser);
Action prepareShow(Parser& parser);
Action prepareSummary(Parser& parser);
Action prepareConvert(Parser& parser);
Action prepareCheck(Parser& parser);
Action prepareGenerate(Parser& parser);
Action prepareCompile(Parser& parser);
Action prepareExplain(Parser& parser);
Action prepareVerifyProgram(Parser& parser);
Action prepareSyntax(Parser& parser);
Action preparePlan(Parser& parser);
Action prepareCalc(Parser& parser);
Action prepareCan(Parser& parser);
Action prepareChannels(Parser& parser);
Action prepareCompletion(Parser& parser);
Action prepareMan(Parser& parser);

}  // namespace kgen
