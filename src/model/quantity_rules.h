#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "model/project.h"
#include "ports/message_service.h"

/// What the configuration window refuses, asks and says about quantities. A function that finds
/// nothing to say answers with nothing.
namespace model {

/// Quantity boxes carry the index of their module kind, and one more for modules to come, which
/// count in the total and are stored nowhere.
constexpr int cpuBox = static_cast<int>(ModuleKindIndex::cpu);
constexpr int futureBox = 10;

enum class Peripheral { tcmux, canif };

/// Keys that a quantity box takes: digits; in the CPU box only the two codes.
bool isQuantityKey(int box, char key);

/// A CPU code other than 1 and 2.
std::optional<ports::Message> complaintAboutCpu(int code);
/// The 7103 CPU lacks some measurements. Yes takes the code, No keeps the old one.
std::optional<ports::Message> questionAboutCpu(int code);

/// More modules than the logger has slots for.
std::optional<ports::Message> complaintAboutTotal(const LoggerConfiguration& configuration,
                                                  int futureModules, int box, int count);
/// So many filter modules need another power supply.
std::optional<ports::Message> warningAboutFilterPower(ModuleKindIndex kind, int count);

/// Modules of a kind that the measurements, ports and outputs of a project take.
int modulesNeeded(const Project& project, ModuleKindIndex kind);
/// Fewer modules than that. Yes goes on: what does not fit is removed on Done.
std::optional<ports::Message> warningAboutReduction(const Project& project, ModuleKindIndex kind,
                                                    int count);

/// A card adaptor without a card.
std::optional<std::string> remarkOnAdaptor(const LoggerConfiguration& configuration);

/// Blocks that need a module of their own each and have too few.
std::optional<std::string> complaintAboutOwnModules(const Project& project);

/// More interfaces than the logger takes.
std::optional<std::string> complaintAboutCanif(int count);

/// More multiplexers than the modules can connect.
std::optional<ports::Message> complaintAboutTcmux(const Project& project, int count);

/// Asked on Done, in this order, before applyConfiguration.
std::optional<ports::Message> questionAboutTcmuxBlocks(const Project& project,
                                                       const LoggerConfiguration& edited);
std::optional<ports::Message> warningAboutSpectra(const Project& project,
                                                  const LoggerConfiguration& edited);
/// A scan can be buffered in bursts: on a 7104, or with a static RAM card.
bool allowsBurst(const LoggerConfiguration& configuration);
std::optional<ports::Message> warningAboutBurstCard(const Project& project,
                                                    const LoggerConfiguration& edited);

/// Mbytes of a card size as typed, in Mbytes (0 to 2048) or Gbytes (0 to 2, three decimals);
/// nothing for a text that is no such size.
std::optional<double> cardSizeMbytes(std::string_view text, bool inGbytes);
std::string cardSizeHelp(bool inGbytes);
/// A size in Mbytes as it is shown in its unit.
std::string cardSizeText(double mbytes, bool inGbytes);
/// Taking the card away moves the tables to the logger's memory.
std::optional<ports::Message> questionAboutCard(double oldMbytes, double newMbytes);

/// Puts an edited configuration into the project and removes what no longer fits where modules are
/// fewer than before: blocks from the highest number down, ports and outputs. What only the 7104
/// can measure stays for its return; FFT spectra become samples.
void applyConfiguration(Project& project, LoggerConfiguration edited);

std::string totalLabel(int userModules);
/// "7121/7122 Analog Input": what a quantity box counts.
std::string_view quantityName(int box);
std::string quantityHelp(const LoggerConfiguration& configuration, int box);
std::string peripheralHelp(Peripheral peripheral);
inline constexpr std::string_view stripCaption =
    "Module colors match description colors to indicate where modules should be installed.";
/// Help of one kind in the slot strip, by kind index; futureBox for modules to come.
std::string stripHelp(int kind);

}  // namespace model
