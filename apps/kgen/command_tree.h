#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace kgen {

struct OptionDescription {
  std::vector<std::string> names;  // "-o", "--output"; of an argument its name: "FILE"
  bool argument = false;           // stands without a name of its own
  std::string value;               // "BASE"; "" for a flag
  std::vector<std::string> choices;
  std::string help;
};

/// A command as completion scripts and the manual page describe it.
struct CommandDescription {
  std::string path;  // "channels import"; "" for kgen itself
  std::string help;
  std::vector<OptionDescription> options;
  std::vector<std::string> commands;  // names of the commands below
};

/// Sets name, help and version of the program itself.
void describeProgram(CLI::App& app);

/// Every command of the program in the order of the help, kgen itself first.
std::vector<CommandDescription> describeCommands();

}  // namespace kgen
