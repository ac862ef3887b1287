#include "support/program_channels.h"

#include <cstdlib>

namespace support {
namespace {

/// What the variables of a letter are measured on.
struct Wiring {
  std::string_view module;
  int channels;  // of a module, single-ended
  char letter;
  char path;
  bool pairs;  // differential channels take two
};
constexpr Wiring wirings[] = {
    {"7121/22", 28, 't', 'a', true}, {"7121/22", 28, 'v', 'a', true},
    {"7121/22", 28, 'b', 'a', true}, {"7121/22", 28, 'a', 'a', true},
    {"7127", 16, 'h', 'a', true},    {"7128", 6, 'i', 'a', false},
    {"7125", 6, 'f', 'a', false},    {"7141/42", 16, 'p', 'd', false},
};

const Wiring* wiringOf(char letter) {
  for (const Wiring& wiring : wirings)
    if (wiring.letter == letter) return &wiring;
  return nullptr;
}

int whole(const std::vector<Value>& arguments, std::size_t index) {
  return static_cast<int>(arguments.at(index).number.value_or(0));
}

}  // namespace

void ChannelUse::readSlots(const std::string& comment) {
  for (std::size_t at = comment.find("Slot "); at != std::string::npos;
       at = comment.find("Slot ", at + 1)) {
    const std::size_t name = comment.find("= ", at);
    if (name == std::string::npos) return;
    const std::size_t end = comment.find(' ', name + 2);
    modules_[std::atoi(comment.c_str() + at + 5)] = comment.substr(name + 2, end - name - 2);
  }
}

void ChannelUse::checkSlotConfigure(const std::vector<std::string>& modules) {
  const bool configures = modules_.count(2) > 0 && modules_[2] == "7104";
  std::size_t next = 0;
  for (const auto& [slot, module] : modules_) {
    if (!configures || slot < 4 || module == "7151" || module == "None") continue;
    if (next >= modules.size() || !module.starts_with(modules[next++]))
      return scope_.fault("SlotConfigure does not list slot " + std::to_string(slot));
  }
  if (!configures && !modules.empty()) scope_.fault("a K700 has no SlotConfigure");
}

void ChannelUse::take(const InstructionRow& row, const std::vector<Value>& arguments) {
  if (row.role == Role::measurement) takeMeasurement(row, arguments);
  if (row.role == Role::digital) takeDigital(row, arguments);
  if (row.role == Role::excitation) takeOne(whole(arguments, 0), 'x', whole(arguments, 1));
}

void ChannelUse::takeMeasurement(const InstructionRow& row, const std::vector<Value>& arguments) {
  const std::string& variable = arguments[0].name;
  const Wiring* wiring = wiringOf(variable.empty() ? ' ' : variable.front());
  if (!wiring) return scope_.fault("'" + variable + "' belongs to no kind of module");
  int slot = whole(arguments, row.slot);
  const auto module = modules_.find(slot);
  if (module != modules_.end() && module->second != wiring->module)
    scope_.fault("slot " + std::to_string(slot) + " holds no " + std::string(wiring->module));
  const int width = wiring->pairs ? row.positions : 1;
  const bool differential = wiring->pairs && row.positions > 1 && row.name != "brhalf3w";
  const int first = (whole(arguments, row.slot + 1) - 1) * (differential ? 2 : 1);
  const int count = row.name == "tcmux" ? 1 : whole(arguments, 1);
  if (first < 0 || first >= wiring->channels) scope_.fault("the module has no such channel");
  for (int position = first; position < first + count * width; ++position)
    takeOne(slot + position / wiring->channels, wiring->path, position % wiring->channels);
  if (wiring->channels != 28 && first + count * width > wiring->channels)
    scope_.fault("the block is longer than its module");
  if (row.name == "tcmux") takeOne(whole(arguments, 5), 'd', whole(arguments, 7) - 1);
}

void ChannelUse::takeDigital(const InstructionRow& row, const std::vector<Value>& arguments) {
  const int slot = whole(arguments, row.slot);
  if (row.name == "portset") return takeOne(slot, 'd', whole(arguments, 1) - 1);
  const int half = whole(arguments, row.slot + 1);
  const int mask = whole(arguments, row.slot + 2);
  if (half < 1 || half > 2 || mask < 1 || mask > 255) scope_.fault("no such half or mask of ports");
  for (int port = 0; port < 8; ++port)
    if (((mask >> port) & 1) != 0) takeOne(slot, 'd', (half - 1) * 8 + port);
}

void ChannelUse::takeOne(int slot, char path, int channel) {
  if (slot < 4 || slot > 15) scope_.fault("no module of the user in slot " + std::to_string(slot));
  if (!channels_.insert({slot, path, channel}).second)
    scope_.fault("channel " + std::to_string(channel + 1) + " of slot " + std::to_string(slot) +
                 " is used twice");
}

}  // namespace support
