#include <algorithm>
#include <memory>

#include "command.h"
#include "command_tree.h"
#include "failure.h"
#include "parser.h"
#include "terminal.h"
#include "text/strings.h"

namespace kgen {
namespace {

using Commands = std::vector<CommandDescription>;

std::string joined(const std::vector<std::string>& words, std::string_view between = " ") {
  std::string out;
  for (const std::string& word : words) {
    if (!out.empty()) out += between;
    out += word;
  }
  return out;
}

/// What can stand where a command expects its next word: commands below, options, fixed values.
std::string nextWords(const CommandDescription& command) {
  std::vector<std::string> words = command.commands;
  for (const OptionDescription& option : command.options) {
    const auto& more = option.argument ? option.choices : option.names;
    words.insert(words.end(), more.begin(), more.end());
  }
  return joined(words);
}

// bash and zsh read the same "case" statements.

std::string commandPattern(const Commands& commands) {
  std::vector<std::string> paths;
  for (const CommandDescription& command : commands)
    if (!command.path.empty()) paths.push_back(text::concat("\"", command.path, "\""));
  return joined(paths, "|");
}

std::string valueCases(const Commands& commands) {
  std::string out;
  for (const CommandDescription& command : commands)
    for (const OptionDescription& option : command.options)
      for (const std::string& name : option.names)
        if (!option.argument && !option.choices.empty())
          out += text::concat("    \"", command.path, " ", name, "\") choices=\"",
                              joined(option.choices), "\" ;;\n");
  return out;
}

std::string commandCases(const Commands& commands) {
  std::string out;
  for (const CommandDescription& command : commands)
    out += text::concat("    \"", command.path, "\") choices=\"", nextWords(command), "\" ;;\n");
  return out;
}

/// The part that finds the command and then its choices. `word` is the shell's name of a word of
/// the line, `first` the index of the first one after kgen and `current` the one to complete.
std::string findChoices(const Commands& commands, std::string_view word, std::string_view first,
                        std::string_view current) {
  return text::concat("  for ((i = ", first, "; i < ", current, "; i++)); do\n",
                      "    case \"${command:+$command }${", word, "[i]}\" in\n", "    ",
                      commandPattern(commands), ") command=\"${command:+$command }${", word,
                      "[i]}\" ;;\n", "    esac\n  done\n  case \"$command ${", word, "[", current,
                      "-1]}\" in\n", valueCases(commands), "  *) case \"$command\" in\n",
                      commandCases(commands), "    esac ;;\n  esac\n");
}

std::string bashScript(const Commands& commands) {
  return text::concat(
      "# bash completion of kgen. Use: source <(kgen completion bash)\n",
      "_kgen() {\n  local command=\"\" choices=\"\" i\n",
      findChoices(commands, "COMP_WORDS", "1", "COMP_CWORD"),
      "  COMPREPLY=($(compgen -W \"$choices\" -- \"${COMP_WORDS[COMP_CWORD]}\"))\n}\n",
      "complete -o default -F _kgen kgen\n");
}

std::string zshScript(const Commands& commands) {
  return text::concat(
      "#compdef kgen\n# zsh completion of kgen. Use: source <(kgen completion zsh)\n",
      "_kgen() {\n  local command=\"\" choices=\"\" i\n",
      findChoices(commands, "words", "2", "CURRENT"), "  compadd -- ${=choices}\n  _files\n}\n",
      "if [ \"$funcstack[1]\" = _kgen ]; then _kgen \"$@\"; else compdef _kgen kgen; fi\n");
}

std::string fishQuoted(std::string_view text) {
  std::string out = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') out += '\\';
    out += c;
  }
  return out += '\'';
}

/// When the lines of a command apply: every word of its path is on the line.
std::string fishCondition(const CommandDescription& command) {
  if (command.path.empty()) return "__fish_use_subcommand";
  std::string out = "__fish_seen_subcommand_from ";
  for (const char c : command.path) {
    if (c == ' ')
      out += "; and __fish_seen_subcommand_from ";
    else
      out += c;
  }
  if (command.commands.empty()) return out;
  return text::concat(out, "; and not __fish_seen_subcommand_from ", joined(command.commands));
}

std::string fishOption(const OptionDescription& option) {
  std::string out;
  for (const std::string& name : option.names)
    out += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  if (!option.value.empty()) out += " -r";
  if (!option.choices.empty()) out += text::concat(" -f -a ", fishQuoted(joined(option.choices)));
  return text::concat(out, " -d ", fishQuoted(option.help));
}

const CommandDescription& described(const Commands& commands, const std::string& path) {
  return *std::find_if(commands.begin(), commands.end(),
                       [&path](const CommandDescription& each) { return each.path == path; });
}

std::string fishScript(const Commands& commands) {
  std::string out = "# fish completion of kgen. Use: kgen completion fish | source\n";
  for (const CommandDescription& command : commands) {
    const std::string head =
        text::concat("complete -c kgen -n ", fishQuoted(fishCondition(command)));
    for (const std::string& name : command.commands) {
      const std::string path = command.path.empty() ? name : text::concat(command.path, " ", name);
      out += text::concat(head, " -f -a ", name, " -d ", fishQuoted(described(commands, path).help),
                          "\n");
    }
    for (const OptionDescription& option : command.options) {
      if (!option.argument)
        out += text::concat(head, fishOption(option), "\n");
      else if (!option.choices.empty())
        out += text::concat(head, " -f -a ", fishQuoted(joined(option.choices)), "\n");
    }
  }
  return out;
}

int runCompletion(const std::string& shell) {
  const Commands commands = describeCommands();
  writeOut(shell == "bash"  ? bashScript(commands)
           : shell == "zsh" ? zshScript(commands)
                            : fishScript(commands));
  return done;
}

}  // namespace

Action prepareCompletion(Parser& parser) {
  const auto shell = std::make_shared<std::string>();
  parser.argument("SHELL", {"bash", "zsh", "fish"}, "Shell that reads the script", *shell);
  return [shell] { return runCompletion(*shell); };
}

}  // namespace kgen
