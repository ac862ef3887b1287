#pragma once

#include <span>
#include <string>
#include <vector>

#include "command.h"

namespace CLI {
class App;
}

namespace kgen {

/// What a command can be given. Only this class, the command line and the command tree see the
/// library that reads the arguments: it takes long to compile.
class Parser {
 public:
  explicit Parser(CLI::App& app) : app_(app) {}

  using Words = std::vector<std::string>;

  void argument(const std::string& name, const std::string& help, std::string& value);
  void argument(const std::string& name, const Words& choices, const std::string& help,
                std::string& value);
  /// One or more.
  void arguments(const std::string& name, const std::string& help, Words& values);

  /// Options: their names ("-o,--output"), what stands for the value in the help, the help.
  void option(const std::string& names, const std::string& valueName, const std::string& help,
              std::string& value);
  void requiredOption(const std::string& names, const std::string& valueName,
                      const std::string& help, std::string& value);
  void repeated(const std::string& names, const std::string& valueName, const std::string& help,
                Words& values);
  /// One of the choices.
  void choice(const std::string& names, const Words& choices, const std::string& help,
              std::string& value);
  /// Some of the choices with commas between them.
  void choices(const std::string& names, const Words& choices, const std::string& help,
               Words& values);
  void flag(const std::string& names, const std::string& help, bool& value);

  /// Commands below this one; the action runs the one that was named.
  Action commands(std::span<const Command> commands);

 private:
  CLI::App& app_;
};

}  // namespace kgen
