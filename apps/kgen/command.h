#pragma once

#include <functional>
#include <span>
#include <string_view>

namespace CLI {
class App;
}

namespace kgen {

/// Runs a command whose options have been read; the answer is the exit code.
using Action = std::function<int()>;

/// One line of the command table.
struct Command {
  std::string_view name;
  std::string_view help;
  /// Adds the options to the command's parser. The action reads them when it runs.
  Action (*prepare)(CLI::App& parser);
};

/// Every command, in the order of the help.
std::span<const Command> allCommands();

/// Adds commands below a parser; the action runs the one that was named.
Action prepareAll(CLI::App& parser, std::span<const Command> commands);

/// Fills a parser with the whole command tree.
void buildWholeTree(CLI::App& parser);

/// Reads the arguments, runs the command, and turns whatever goes wrong into a message and an exit
/// code.
int runCommandLine(int argc, char** argv);

Action prepareNew(CLI::App& parser);
Action prepareShow(CLI::App& parser);
Action prepareConvert(CLI::App& parser);
Action prepareGenerate(CLI::App& parser);
Action prepareCan(CLI::App& parser);
Action prepareChannels(CLI::App& parser);
Action prepareCompletion(CLI::App& parser);
Action prepareMan(CLI::App& parser);

}  // namespace kgen
