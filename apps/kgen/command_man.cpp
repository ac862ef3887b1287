#include "command.h"
#include "command_tree.h"
#include "failure.h"
#include "model/document_stamp.h"
#include "terminal.h"
#include "text/strings.h"

namespace kgen {
namespace {

/// Text of a manual page: "-" and "\" are signs of its language, and so is a "." or "'" that
/// begins a line.
std::string escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (out.empty() && (c == '.' || c == '\'')) out += "\\&";
    if (c == '-' || c == '\\') out += '\\';
    out += c == '\\' ? 'e' : c;
  }
  return out;
}

std::string usageOf(const CommandDescription& command) {
  std::string out = text::concat("kgen ", command.path);
  for (const OptionDescription& option : command.options) {
    if (option.argument) out += text::concat(" ", option.names.front());
  }
  return out + (command.commands.empty() ? " [OPTION]..." : " COMMAND");
}

std::string optionHead(const OptionDescription& option) {
  std::string out;
  for (const std::string& name : option.names) out += text::concat(out.empty() ? "" : ", ", name);
  return option.argument || option.value.empty() ? out : text::concat(out, " ", option.value);
}

void appendOptions(std::string& out, const CommandDescription& command) {
  for (const OptionDescription& option : command.options)
    out += text::concat(".TP\n.B ", escaped(optionHead(option)), "\n", escaped(option.help), "\n");
}

constexpr std::string_view closingSections =
    ".SH FILES\n"
    ".TP\n.B BASE.GN7\nThe project. While it is saved, the last one is kept as BASE._EN.\n"
    ".TP\n.B BASE.KP7, BASE.KX7\nThe program for a logger with the 7103 or the 7104 CPU.\n"
    ".TP\n.B BASE.TI7\nWhat the tables of the program hold.\n"
    ".SH ENVIRONMENT\n"
    ".TP\n.B SOURCE_DATE_EPOCH\nSeconds since 1970, taken as the time (UTC) of all outputs.\n"
    ".SH EXIT STATUS\n"
    ".TP\n.B 0\ndone\n"
    ".TP\n.B 1\nfindings: the project cannot become a program\n"
    ".TP\n.B 2\nwrong usage\n"
    ".TP\n.B 3\nthe input can't be read\n"
    ".TP\n.B 4\nthe output can't be written\n"
    ".TP\n.B 70\na fault of kgen itself\n";

int runMan() {
  std::string out = text::concat(".TH KGEN 1 \"\" \"kgen ", model::generatorVersion, "\"\n");
  out += ".SH NAME\nkgen \\- program generator for K700 data loggers\n";
  out += ".SH SYNOPSIS\n.B kgen\nCOMMAND [OPTION]...\n.SH DESCRIPTION\n";
  out +=
      "Data goes to standard output, messages to standard error. Where a file is asked for, \\-\n"
      "is standard input or output.\n.SH COMMANDS\n";
  for (const CommandDescription& command : describeCommands()) {
    const std::string head = command.path.empty() ? "kgen" : usageOf(command);
    out += text::concat(".SS ", escaped(head), "\n", escaped(command.help), ".\n");
    appendOptions(out, command);
  }
  writeOut(out += closingSections);
  return done;
}

}  // namespace

Action prepareMan(Parser&) { return runMan; }

}  // namespace kgen
