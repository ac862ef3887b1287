#include "model/quantity_rules.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "model/channel_plan.h"
#include "model/module_terminals.h"
#include "text/strings.h"

namespace model {
namespace {

using ports::Answer;
using ports::Buttons;
using ports::Message;
using text::concat;

constexpr std::string_view lineBreak = "\r\n";
constexpr double mbytesPerGbyte = 1024;

Message refusal(std::string_view title, std::string text) {
  return {.title = std::string(title), .text = std::move(text)};
}

Message yesOrNo(std::string_view title, std::string text) {
  return {.title = std::string(title),
          .text = std::move(text),
          .buttons = Buttons::yesNo,
          .defaultButton = Answer::no};
}

int divisionUp(int value, int divisor) { return (value + divisor - 1) / divisor; }

// ---- channels

/// Seven multiplexers share a clock line and an excitation.
int multiplexerGroups(int multiplexers) { return (multiplexers + 6) / 7; }
int controlLinesOf(int multiplexers) { return multiplexers + multiplexerGroups(multiplexers); }

bool hasIncludedPort(const PortGroup& group) {
  return std::any_of(group.ports.begin(), group.ports.end(),
                     [](const Port& port) { return port.Include; });
}

/// Groups of 7131 modules come first, then two of each 7141/42.
int excitationGroups(const Project& project) {
  return std::max(project.configuration.quantity(ModuleKindIndex::excitation7131), 0);
}

int excitationModulesNeeded(const Project& project, const ChannelPlan& plan) {
  const int own = excitationGroups(project);
  const int control = controlLinesOf7131 * own - plan.free.control;
  int outputs = 0;
  int groups = 0;
  for (std::size_t n = 0; n < project.excitation.channels.size(); ++n)
    if (project.excitation.channels[n].Include) outputs = static_cast<int>(n) + 1;
  for (std::size_t p = 0; p < project.ports.groups.size() && static_cast<int>(p) < own; ++p)
    if (hasIncludedPort(project.ports.groups[p])) groups = static_cast<int>(p) + 1;
  return std::max({divisionUp(plan.totals.TotExcitChans, excitationsOf7131),
                   divisionUp(control, controlLinesOf7131),
                   divisionUp(plan.caoOfBridges + outputs, analogOutputsOf7131), groups});
}

int portModulesNeeded(const Project& project) {
  const auto first = static_cast<std::size_t>(excitationGroups(project));
  int needed = 0;
  for (std::size_t p = first; p < project.ports.groups.size(); ++p)
    if (hasIncludedPort(project.ports.groups[p])) needed = static_cast<int>((p - first) / 2) + 1;
  return needed;
}

/// Modules up to the last one that holds a block of a kind.
int blockModulesNeeded(const Project& project, const ChannelPlan& plan, BlockKind kind) {
  const int first = firstSlot(project.configuration, infoOf(kind).module);
  int needed = 0;
  for (std::size_t n = 1; n <= infoOf(kind).blockLimit; ++n)
    if (inUse(project, kind, n)) needed = std::max(needed, plan.of(kind, n).first.slot - first + 1);
  return needed;
}

// ---- removing

std::size_t highestInUse(const Project& project, BlockKind kind) {
  for (std::size_t n = infoOf(kind).blockLimit; n > 0; --n)
    if (inUse(project, kind, n)) return n;
  return 0;
}

void lowerBlockCount(Project& project, BlockKind kind, std::size_t highest) {
  if (kind != BlockKind::filter) {
    project.set(kind).BlockCount = static_cast<std::int16_t>(highest);
    return;
  }
  for (auto slot = project.filterSlots.rbegin(); slot != project.filterSlots.rend(); ++slot)
    while (slot->BlockCount > 0 && blockCount(project, kind) > highest) --slot->BlockCount;
}

void removeBlock(Project& project, BlockKind kind, std::size_t number) {
  MeasurementBlock& block = project.block(kind, number);
  block.Reps = 0;
  block.elements.clear();
  lowerBlockCount(project, kind, highestInUse(project, kind));
}

/// Removes blocks, highest number first, until the modules suffice or the kind has none.
void removeUntilFits(Project& project, BlockKind kind, ModuleKindIndex module) {
  while (modulesNeeded(project, module) > project.configuration.quantity(module)) {
    const std::size_t number = highestInUse(project, kind);
    if (number == 0) return;
    removeBlock(project, kind, number);
  }
}

bool hasFewer(const LoggerConfiguration& now, const LoggerConfiguration& before,
              ModuleKindIndex kind) {
  return now.quantity(kind) < before.quantity(kind);
}

/// Blocks that had no room before stay, unless their modules are fewer now.
void removeBlocks(Project& project, const LoggerConfiguration& before) {
  using enum BlockKind;
  const auto removeFor = [&](ModuleKindIndex module, std::initializer_list<BlockKind> kinds) {
    if (!hasFewer(project.configuration, before, module)) return;
    for (const BlockKind kind : kinds) removeUntilFits(project, kind, module);
  };
  removeFor(ModuleKindIndex::analog7121, {tcmux, bridge, voltage, thermocouple});
  removeFor(ModuleKindIndex::excitation7131, {tcmux, bridge});
  for (const BlockKind kind : {pulse, highVoltage, filter, isolated})
    removeFor(infoOf(kind).module, {kind});
}

using PortGroups = std::vector<PortGroup>;

PortGroups cutFirst(PortGroups& groups, int count) {
  const auto size = static_cast<std::size_t>(std::max(count, 0));
  const auto end = groups.begin() + static_cast<std::ptrdiff_t>(std::min(size, groups.size()));
  PortGroups first(groups.begin(), end);
  groups.erase(groups.begin(), end);
  return first;
}

/// Modules that come take groups that had none.
void fitTo(int count, PortGroups& groups, PortGroups& homeless) {
  const auto size = static_cast<std::size_t>(std::max(count, 0));
  if (size > groups.size())
    for (const PortGroup& each : cutFirst(homeless, static_cast<int>(size - groups.size())))
      groups.push_back(each);
  groups.resize(size);
}

/// Port groups keep to their modules when modules before them come or go.
void movePortGroups(Project& project, const LoggerConfiguration& before) {
  const auto& now = project.configuration;
  PortGroups homeless = std::exchange(project.ports.groups, {}), none;
  PortGroups own = cutFirst(homeless, before.quantity(ModuleKindIndex::excitation7131));
  const int counterGroups = 2 * before.quantity(ModuleKindIndex::counter7141);
  PortGroups counters = cutFirst(homeless, counterGroups);
  fitTo(now.quantity(ModuleKindIndex::excitation7131), own, counterGroups > 0 ? none : homeless);
  fitTo(2 * now.quantity(ModuleKindIndex::counter7141), counters, homeless);
  for (const PortGroups& part : {own, counters, homeless})
    project.ports.groups.insert(project.ports.groups.end(), part.begin(), part.end());
  project.ports.groups.resize(std::min(project.ports.groups.size(), maxPortGroups));
}

void removeOutputs(Project& project) {
  const int modules = excitationGroups(project);
  const int outputs = analogOutputsOf7131 * modules - channelPlan(project).caoOfBridges;
  auto& channels = project.excitation.channels;
  for (std::size_t n = 0; n < channels.size(); ++n)
    if (static_cast<int>(n) >= outputs) channels[n].Include = false;
}

/// True when there are none: the 7103 measures none, which keeps those of the project.
bool multiplexersFit(const Project& project) {
  const ChannelPlan plan = channelPlan(project);
  return plan.multiplexers == 0 ||
         (project.configuration.TCMUXQty >= plan.multiplexers && plan.free.differential >= 0 &&
          plan.free.excitation >= 0 && plan.free.control >= 0);
}

bool lostCard(const LoggerConfiguration& before, const LoggerConfiguration& now) {
  return before.SizeCardA > 0 && !(now.SizeCardA > 0);
}

bool hasStaticRamCard(const LoggerConfiguration& configuration) {
  return configuration.SizeCardA > 0 && configuration.TcConfigOpts[0] == 1;
}

/// The 7104 buffers bursts by itself.
bool burstLosesCpu(const Project& project, const LoggerConfiguration& edited) {
  return project.scan.ScanMode == 1 && isK700X(project.configuration) && !allowsBurst(edited);
}

bool burstLosesCard(const Project& project, const LoggerConfiguration& edited) {
  return project.scan.ScanMode == 1 && hasStaticRamCard(project.configuration) &&
         !hasStaticRamCard(edited);
}

// ---- texts

struct ReductionText {
  ModuleKindIndex kind;
  std::string_view text;
};

constexpr std::array<ReductionText, 6> reductionTexts = {{
    {ModuleKindIndex::analog7121,
     "Reducing the number of 7121/22 modules will\r\n"
     "cause measurements made with this module type\r\n"
     "(voltages, thermocouples, TCMUX) to be removed\r\n"
     "when you save changes upon exiting this screen."},
    {ModuleKindIndex::excitation7131,
     "Reducing the number of 7131 modules will cause all bridge\r\n"
     "measurements, digital ports and CAO outputs, and TCMUX blocks\r\n"
     "to be removed when you save changes upon exiting this screen."},
    {ModuleKindIndex::counter7141,
     "Reducing the number of 7141/42 modules will cause all pulse\r\n"
     "count measurements and Port setups for the affected slots to\r\n"
     "be removed when you save changes upon exiting this screen."},
    {ModuleKindIndex::highVoltage7127,
     "Reducing the number of 7127 modules will cause all high voltage\r\n"
     "measurements to be removed when you save changes upon exiting this screen."},
    {ModuleKindIndex::filter7125,
     "Reducing the number of 7125 modules will cause all\r\n"
     "filtered measurements for the affected slots to be\r\n"
     "removed when you save changes upon exiting this screen."},
    {ModuleKindIndex::isolation7128,
     "Reducing the number of 7128 modules will cause all\r\n"
     "isolated measurements for the affected slots to be\r\n"
     "removed when you save changes upon exiting this screen."},
}};

constexpr std::array<std::string_view, 11> boxTexts = {"",
                                                       "",
                                                       "",
                                                       "7151 PCMCIA Adaptor",
                                                       "7121/7122 Analog Input",
                                                       "7131 Exitation",
                                                       "7141/7142 Counter, Timer, I/O",
                                                       "7127 High Voltage",
                                                       "7125 Filtered Analog Input",
                                                       "7128 Isolation/High Common Mode",
                                                       "Future"};

constexpr std::array<std::string_view, 11> stripTexts = {"7101 Power Supply module",
                                                         "7103 CPU module",
                                                         "7105 A/D module",
                                                         "7151 PCMCIA Adaptor modules",
                                                         "7121/7122 Analog Input modules",
                                                         "7131 Exitation modules",
                                                         "7141/7142 Counter, Timer, I/O modules",
                                                         "7127 High Voltage modules",
                                                         "7125 Filters modules",
                                                         "7128 Isolation/High Common Mode modules",
                                                         "Future modules"};

std::string_view textAt(const std::array<std::string_view, 11>& texts, int index) {
  return index >= 0 && index < static_cast<int>(texts.size())
             ? texts[static_cast<std::size_t>(index)]
             : "";
}

}  // namespace

bool isQuantityKey(int box, char key) {
  return box == cpuBox ? key == '1' || key == '2' : text::isDigit(key);
}

std::optional<Message> complaintAboutCpu(int code) {
  if (code == 1 || code == 2) return std::nullopt;
  return refusal("WARNING", "Invalid CPU code.");
}

std::optional<Message> questionAboutCpu(int code) {
  if (code != 1) return std::nullopt;
  return yesOrNo("MEASUREMENTS DISABLED",
                 "Use of the M7103 CPU will disable all TCMUX measurements, M7128/Isolated\r\n"
                 " measurements, and CANIF Tx/Rx measurements. Continue?");
}

std::optional<Message> complaintAboutTotal(const LoggerConfiguration& configuration,
                                           int futureModules, int box, int count) {
  constexpr auto limit = static_cast<int>(maxUserModules);
  if (box == cpuBox) return std::nullopt;
  int total = count + (box == futureBox ? 0 : futureModules);
  for (auto kind = static_cast<int>(ModuleKindIndex::adaptor7151); kind < futureBox; ++kind)
    if (kind != box) total += configuration.ModuleQty[static_cast<std::size_t>(kind)];
  if (total <= limit) return std::nullopt;
  Message message = refusal("TOO MANY", concat("Total module count is limited to ", limit, "."));
  message.beep = true;
  return message;
}

std::optional<Message> warningAboutFilterPower(ModuleKindIndex kind, int count) {
  constexpr int mostOnOneSupply = 3;
  if (kind != ModuleKindIndex::filter7125 || count <= mostOnOneSupply) return std::nullopt;
  return refusal("WARNING",
                 "A special power supply is required when the number of 7125 modules is greater "
                 "than 3.\r\nPlease call the Tervane Industrial Group for details.");
}

int modulesNeeded(const Project& project, ModuleKindIndex kind) {
  const ChannelPlan plan = channelPlan(project);
  switch (kind) {
    case ModuleKindIndex::analog7121:
      return divisionUp(plan.totals.TotAnalogChans, pairsOf7121);
    case ModuleKindIndex::excitation7131:
      return excitationModulesNeeded(project, plan);
    case ModuleKindIndex::counter7141:
      return std::max(portModulesNeeded(project),
                      blockModulesNeeded(project, plan, BlockKind::pulse));
    case ModuleKindIndex::highVoltage7127:
      return blockModulesNeeded(project, plan, BlockKind::highVoltage);
    case ModuleKindIndex::filter7125:
      return blockModulesNeeded(project, plan, BlockKind::filter);
    case ModuleKindIndex::isolation7128:
      return blockModulesNeeded(project, plan, BlockKind::isolated);
    default:
      return 0;
  }
}

std::optional<Message> warningAboutReduction(const Project& project, ModuleKindIndex kind,
                                             int count) {
  if (count >= project.configuration.quantity(kind) || count >= modulesNeeded(project, kind))
    return std::nullopt;
  const auto found = std::find_if(reductionTexts.begin(), reductionTexts.end(),
                                  [kind](const ReductionText& row) { return row.kind == kind; });
  if (found == reductionTexts.end()) return std::nullopt;
  return yesOrNo("WARNING", concat(found->text, lineBreak, "ARE YOU SURE YOU WANT TO PROCEED?"));
}

std::optional<std::string> remarkOnAdaptor(const LoggerConfiguration& configuration) {
  if (configuration.quantity(ModuleKindIndex::adaptor7151) == 0 || configuration.SizeCardA > 0)
    return std::nullopt;
  return "The 7151 has no card yet: set the capacity of card A.";
}

std::optional<std::string> complaintAboutOwnModules(const Project& project) {
  Project apart = project;
  apart.configuration.AutoChan = false;
  for (const ReductionText& row : reductionTexts) {
    const int have = project.configuration.quantity(row.kind);
    const int needed = modulesNeeded(apart, row.kind);
    if (needed > have && modulesNeeded(project, row.kind) <= have)
      return concat("With a module for each block ", needed, " modules ", moduleName(row.kind),
                    " are needed; there are ", have, ".");
  }
  return std::nullopt;
}

std::optional<std::string> complaintAboutCanif(int count) {
  if (count <= 1) return std::nullopt;
  return "The logger takes one CANIF: enter 0 or 1.";
}

std::optional<Message> complaintAboutTcmux(const Project& project, int count) {
  if (count <= 0) return std::nullopt;
  if (excitationGroups(project) == 0) return refusal("NO 7131 MODULES", "Please Add 7131 Modules!");
  const ChannelPlan plan = channelPlan(project);
  const int placed = plan.multiplexers;
  if (controlLinesOf(count) > plan.free.control + controlLinesOf(placed))
    return refusal("NOT ENOUGH DIGITAL CONTROL CHANNELS",
                   "Please Add More 7131 Modules or Remove Some Port measurements.");
  if (2 * count > plan.free.differential + 2 * placed)
    return refusal("NOT ENOUGH DIFFERENTIAL CHANNELS",
                   "Please Add More 7121/7122 Modules, or Remove Some Measurements.");
  if (multiplexerGroups(count) > plan.free.excitation + multiplexerGroups(placed))
    return refusal("NOT ENOUGH EXCITATION CHANNELS",
                   "Please Add More 7131 Modules or Remove Some Measurements.");
  return std::nullopt;
}

/// Multiplexers that did not fit before are asked about when something is taken away from them.
std::optional<Message> questionAboutTcmuxBlocks(const Project& project,
                                                const LoggerConfiguration& edited) {
  Project before = project, after = project;
  before.configuration.ModuleQty[cpuBox] = edited.ModuleQty[cpuBox];
  after.configuration = edited;
  const bool loses = multiplexersFit(before) || edited.TCMUXQty < project.configuration.TCMUXQty ||
                     hasFewer(edited, project.configuration, ModuleKindIndex::analog7121) ||
                     hasFewer(edited, project.configuration, ModuleKindIndex::excitation7131);
  if (!loses || multiplexersFit(after)) return std::nullopt;
  return yesOrNo("Delete TCMUX?",
                 "Warning:\r\nIf you proceed with this change, all TCMUX blocks will be deleted. "
                 "Continue?");
}

std::optional<Message> warningAboutSpectra(const Project& project,
                                           const LoggerConfiguration& edited) {
  if (isK700X(edited)) return std::nullopt;
  const auto hasSpectra = [&](std::size_t n) {
    return inUse(project, BlockKind::filter, n) && isFft(project, n) &&
           project.filterSlots[filterSlotOf(project, n) - 1].FFTType == 1;
  };
  for (std::size_t n = 1; n <= maxBlocks; ++n)
    if (hasSpectra(n))
      return refusal(
          "CHANGE 7125 MEASUREMENT",
          "FFT Spectra are not supported in the 7103 CPU.\r\n"
          "Your 7125 Filter Module FFT spectra measurements will be changed to be Individual "
          "Samples.Please open the FFT/Filter screen to confirm that the scan interval and new "
          "table settings will meet your needs.");
  return std::nullopt;
}

bool allowsBurst(const LoggerConfiguration& configuration) {
  return isK700X(configuration) || hasStaticRamCard(configuration);
}

std::optional<Message> warningAboutBurstCard(const Project& project,
                                             const LoggerConfiguration& edited) {
  if (burstLosesCpu(project, edited))
    return refusal("BURST PROBLEM",
                   "The 7103 CPU needs a S-Ram card for bursts.\r\n"
                   "Scan is being changed from Burst to Continuous.");
  if (!burstLosesCard(project, edited)) return std::nullopt;
  return refusal("BURST PROBLEM",
                 "S-Ram card has been removed.\r\n"
                 "Scan is being changed from Burst to Continuous.");
}

std::optional<double> cardSizeMbytes(std::string_view text, bool inGbytes) {
  constexpr double mostMbytes = 2048;
  const std::string_view number = text::trimmed(text);
  const std::size_t point = number.find('.');
  const std::size_t decimals = point == std::string_view::npos ? 0 : number.size() - point - 1;
  const bool plain = number.find_first_not_of("0123456789.") == std::string_view::npos;
  if (!plain || !text::isNumber(number) || decimals > (inGbytes ? 3U : 0U)) return std::nullopt;
  const double mbytes = text::readNumber(number) * (inGbytes ? mbytesPerGbyte : 1);
  return mbytes <= mostMbytes ? std::optional(mbytes) : std::nullopt;
}

std::string cardSizeHelp(bool inGbytes) {
  return inGbytes ? "Enter a value from 0 to 2" : "Enter a value from 0 to 2048";
}

std::string cardSizeText(double mbytes, bool inGbytes) {
  return text::shortest(inGbytes ? mbytes / mbytesPerGbyte : mbytes);
}

std::optional<Message> questionAboutCard(double oldMbytes, double newMbytes) {
  if (!(oldMbytes > 0) || newMbytes > 0) return std::nullopt;
  return yesOrNo("WARNING", "All Table Ouputs Will be On RAM, Continue?");
}

void applyConfiguration(Project& project, LoggerConfiguration edited) {
  const bool burstEnds = burstLosesCard(project, edited) || burstLosesCpu(project, edited);
  const bool tcmuxGoes = questionAboutTcmuxBlocks(project, edited).has_value();
  const bool spectraGo = warningAboutSpectra(project, edited).has_value() ||
                         (isK700X(project.configuration) && !isK700X(edited));
  const LoggerConfiguration before = std::exchange(project.configuration, std::move(edited));
  if (burstEnds) project.scan.ScanMode = 0;
  if (lostCard(before, project.configuration))
    for (OutputTable& table : project.tables)
      if (table.TableLocation == 3) table.TableLocation = 1;
  movePortGroups(project, before);
  if (spectraGo)
    for (FilterSlot& slot : project.filterSlots) slot.FFTType = 0;
  while (tcmuxGoes && highestInUse(project, BlockKind::tcmux) > 0)
    removeBlock(project, BlockKind::tcmux, highestInUse(project, BlockKind::tcmux));
  if (hasFewer(project.configuration, before, ModuleKindIndex::excitation7131))
    removeOutputs(project);
  removeBlocks(project, before);
  fitLists(project);
}

std::string totalLabel(int userModules) {
  return concat("TOTAL (3 fixed + ", userModules, " user selected)");
}

std::string_view quantityName(int box) { return textAt(boxTexts, box); }

std::string quantityHelp(const LoggerConfiguration& configuration, int box) {
  if (box == cpuBox) return cpuLabel(configuration);
  return concat("Enter the number of ", quantityName(box), " modules installed in the Logger.");
}

std::string peripheralHelp(Peripheral peripheral) {
  return concat("Enter the number of ",
                peripheral == Peripheral::tcmux ? "TCMUX Multiplexers" : "CANIF devices",
                " connected to the logger.");
}

std::string stripHelp(int kind) {
  return concat("Indicates the slot number(s) where ", textAt(stripTexts, kind),
                " should be installed in the Logger.");
}

}  // namespace model
