#include "parser.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <utility>

#include "failure.h"

namespace kgen {
namespace {

std::string joined(const Parser::Words& words, char between) {
  std::string out;
  for (const std::string& word : words) {
    if (!out.empty()) out += between;
    out += word;
  }
  return out;
}

/// Accepts the words alone. The help shows them as the name of the value, once.
CLI::Validator oneOf(const Parser::Words& words) { return CLI::IsMember(words).description(""); }

}  // namespace

void Parser::argument(const std::string& name, const std::string& help, std::string& value) {
  app_.add_option(name, value, help)->required()->type_name("");
}

void Parser::argument(const std::string& name, const Words& choices, const std::string& help,
                      std::string& value) {
  app_.add_option(name, value, help)
      ->required()
      ->check(oneOf(choices))
      ->type_name(joined(choices, '|'));
}

void Parser::arguments(const std::string& name, const std::string& help, Words& values) {
  app_.add_option(name, values, help)->required()->type_name("");
}

void Parser::option(const std::string& names, const std::string& valueName, const std::string& help,
                    std::string& value) {
  app_.add_option(names, value, help)->type_name(valueName);
}

void Parser::requiredOption(const std::string& names, const std::string& valueName,
                            const std::string& help, std::string& value) {
  app_.add_option(names, value, help)->required()->type_name(valueName);
}

void Parser::repeated(const std::string& names, const std::string& valueName,
                      const std::string& help, Words& values) {
  app_.add_option(names, values, help)->allow_extra_args(false)->type_name(valueName);
}

void Parser::choice(const std::string& names, const Words& choices, const std::string& help,
                    std::string& value) {
  app_.add_option(names, value, help)->check(oneOf(choices))->type_name(joined(choices, '|'));
}

void Parser::choices(const std::string& names, const Words& choices, const std::string& help,
                     Words& values) {
  app_.add_option(names, values, help)
      ->delimiter(',')
      ->check(oneOf(choices))
      ->allow_extra_args(false)
      ->type_name(joined(choices, ','));
}

void Parser::flag(const std::string& names, const std::string& help, bool& value) {
  app_.add_flag(names, value, help);
}

Action Parser::commands(std::span<const Command> commands) {
  app_.require_subcommand(1);
  std::vector<std::pair<CLI::App*, Action>> prepared;
  for (const Command& command : commands) {
    CLI::App* part = app_.add_subcommand(std::string(command.name), std::string(command.help));
    Parser parser(*part);
    prepared.emplace_back(part, command.prepare(parser));
  }
  return [prepared] {
    const auto named = std::find_if(prepared.begin(), prepared.end(),
                                    [](const auto& each) { return each.first->parsed(); });
    return named == prepared.end() ? static_cast<int>(wrongUsage) : named->second();
  };
}

}  // namespace kgen
