#include "command_tree.h"

#include <CLI/CLI.hpp>

#include "command.h"
#include "parser.h"

namespace kgen {
namespace {

/// The words of "json|text" or "program,tables"; a name in capitals is no list of words.
std::vector<std::string> choicesIn(const std::string& valueName) {
  std::vector<std::string> words;
  std::string word;
  for (const char c : valueName) {
    if (c != '|' && c != ',') {
      word += c;
      continue;
    }
    words.push_back(std::move(word));
    word.clear();
  }
  if (!words.empty()) words.push_back(std::move(word));
  return words;
}

std::vector<std::string> namesOf(const CLI::Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  if (names.empty()) names.push_back(option.get_name());
  return names;
}

OptionDescription describe(const CLI::Option& option) {
  OptionDescription description;
  description.names = namesOf(option);
  description.argument = option.get_positional();
  description.help = option.get_description();
  if (option.get_items_expected_max() == 0) return description;
  description.value = option.get_type_name();
  description.choices = choicesIn(description.value);
  return description;
}

void describeInto(std::vector<CommandDescription>& all, const CLI::App& app,
                  const std::string& path) {
  CommandDescription command{path, app.get_description(), {}, {}};
  for (const CLI::Option* option : app.get_options()) command.options.push_back(describe(*option));
  const auto below = app.get_subcommands([](const CLI::App*) { return true; });
  for (const CLI::App* sub : below) command.commands.push_back(sub->get_name());
  all.push_back(std::move(command));
  for (const CLI::App* sub : below)
    describeInto(all, *sub, path.empty() ? sub->get_name() : path + " " + sub->get_name());
}

}  // namespace

std::vector<CommandDescription> describeCommands() {
  CLI::App app;
  describeProgram(app);
  Parser(app).commands(allCommands());
  std::vector<CommandDescription> all;
  describeInto(all, app, "");
  return all;
}

}  // namespace kgen
