#include "desktop/findings.h"

#include <algorithm>
#include <map>

#include "logscript/check.h"
#include "model/channel_plan.h"
#include "text/strings.h"
#include "verify/save_checks.h"

namespace desktop {
namespace {

using logscript::Severity;
using model::BlockKind;
using text::concat;

// Buttons of the main panel.
constexpr int hardware = 0, scan = 1, tables = 2, thermocouples = 3, filters = 8, can = 11,
              calculated = 12, ports = 13, flags = 14, excitation = 15;

int buttonOf(BlockKind kind) {
  static const std::map<BlockKind, int> buttons = {{BlockKind::thermocouple, thermocouples},
                                                   {BlockKind::voltage, 4},
                                                   {BlockKind::highVoltage, 5},
                                                   {BlockKind::isolated, 6},
                                                   {BlockKind::bridge, 7},
                                                   {BlockKind::filter, filters},
                                                   {BlockKind::pulse, 9},
                                                   {BlockKind::tcmux, 10}};
  return buttons.at(kind);
}

struct Clue {
  std::string words;  // in small letters
  int button;
};

/// Words that tell which window a message is about.
std::vector<Clue> makeClues() {
  std::vector<Clue> clues = {{"incorrect program timing", scan},
                             {"slow sequence not possible", scan},
                             {"timing problem", tables},
                             {"duplicate flags", hardware},
                             {"invalid power off trigger", hardware},
                             {"invalid burst trigger", scan},
                             {"invalid write if trigger", tables},
                             {"invalid triggered table", tables},
                             {"calcfield", calculated},
                             {"calculated field", calculated},
                             {"port group", ports},
                             {"excitation channel", excitation},
                             {"cao port", excitation},
                             {"can item", can},
                             {"canbus item", can},
                             {"filter slot", filters}};
  for (const BlockKind kind : model::allBlockKinds) {
    const model::BlockKindInfo& info = model::infoOf(kind);
    clues.push_back({concat(text::lower(info.name), " block"), buttonOf(kind)});
    clues.push_back({concat(text::lower(std::string(1, info.letter)), "blk"), buttonOf(kind)});
  }
  clues.insert(clues.end(), {{"fvblk", filters},
                             {"tcmux thermocouple block", buttonOf(BlockKind::tcmux)},
                             {"isolated/7128", buttonOf(BlockKind::isolated)},
                             {"hi volts", buttonOf(BlockKind::highVoltage)},
                             {"reference temperature", thermocouples},
                             {"modules of kind", hardware},
                             {"battery", hardware},
                             {"port ", ports},
                             {"flag ", flags},
                             {"table", tables}});
  return clues;
}

/// Line breaks as blanks, each run of blanks as one.
std::string inOneLine(std::string_view message) {
  std::string line;
  for (const char c : message) {
    const bool blank = c == '\r' || c == '\n' || c == ' ';
    if (!blank)
      line += c;
    else if (!line.empty() && line.back() != ' ')
      line += ' ';
  }
  return std::string(text::trimmed(line));
}

/// Names in quotes are the engineer's and tell nothing.
std::string withoutQuoted(std::string_view text) {
  std::string out;
  bool quoted = false;
  for (const char c : text) {
    if (c == '"') quoted = !quoted;
    if (!quoted) out += c;
  }
  return out;
}

Weight weightOf(ports::Icon icon) {
  return icon == ports::Icon::critical ? Weight::error : Weight::warning;
}

/// Hears what the checks say, and agrees to nothing.
class Listener final : public ports::MessageService, public ports::ErrorReporter {
 public:
  ports::Answer show(const ports::Message& message) override {
    const std::string line = inOneLine(concat(message.title, ": ", message.text));
    findings.push_back({weightOf(message.icon), line, message.text, 0, windowNamedIn(line)});
    return message.defaultButton;
  }
  void report(int, std::string_view description, std::string_view source) override {
    findings.push_back({Weight::error, inOneLine(concat(source, ": ", description)),
                        std::string(description), 0, -1});
  }
  std::vector<Finding> findings;
};

Finding warning(const std::string& text) {
  return {Weight::warning, inOneLine(text), text, 0, windowNamedIn(text)};
}

}  // namespace

/// What comes first in a message is what it is about.
int windowNamedIn(std::string_view text) {
  static const std::vector<Clue> clues = makeClues();
  const std::string words = text::lower(withoutQuoted(text));
  std::size_t first = std::string::npos;
  int button = -1;
  for (const Clue& clue : clues) {
    const std::size_t place = words.find(clue.words);
    if (place >= first) continue;
    first = place;
    button = clue.button;
  }
  return button;
}

std::vector<Finding> findingsOfChecks(const model::Project& project, unsigned warningMask) {
  model::Project copy = project;
  Listener listener;
  verify::checkedForSave(copy, {listener, listener, warningMask});
  return std::move(listener.findings);
}

std::vector<Finding> findingsOfChannels(const model::Project& project) {
  std::vector<Finding> findings;
  for (const std::string& problem : model::channelPlan(project).problems)
    findings.push_back(warning(problem));
  return findings;
}

std::vector<Finding> findingsOfProgram(const SAVEDLD::Program& program) {
  std::vector<Finding> findings;
  for (const std::string& note : program.notes) findings.push_back(warning(note));
  for (const logscript::Finding& each : logscript::check(program.text)) {
    const Severity severity = logscript::infoOf(each.code).severity;
    if (severity == Severity::hint) continue;  // on what only the generator can change
    findings.push_back({severity == Severity::error ? Weight::error : Weight::warning,
                        inOneLine(each.text), each.text, static_cast<int>(each.line), -1});
  }
  return findings;
}

Finding findingOfNote(std::string_view line) { return warning(std::string(line)); }

}  // namespace desktop
