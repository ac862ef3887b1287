#pragma once

#include <array>
#include <string>
#include <vector>

#include "model/project.h"

namespace model {

/// A place in the logger: slot 1 to 15 and a channel of that slot, both counted from 1.
struct Place {
  int slot = 0;
  int channel = 0;
  bool operator==(const Place&) const = default;
};

/// Where a TCMUX multiplexer is wired.
struct MultiplexerPlace {
  int number = 0;            // over all blocks, from 1
  std::size_t firstElement;  // of its block, from 1
  int channels = 16;         // scanned: 8 or 16
  Place common;              // differential channel of the common line
  Place reference;           // single-ended channel of the reference
  Place excitation;          // of the reference
  int controlSlot = 0;
  int clockLine = 0;
  int resetLine = 0;
};

struct BlockPlace {
  Place first;        // of the first channel; differential or single-ended as measured
  Place excitation;   // bridges: switched channel 1 to 8, or 8 + analog output with CheckCAO
  int reference = 0;  // index into TRef() or IsoTRef(); 0: none
  std::vector<MultiplexerPlace> multiplexers;
};

/// A port group in the order of the project file: a 7131, or half a 7141/42.
struct PortGroupPlace {
  int slot = 0;
  bool upper = false;  // ports 9 to 16
  bool input = false;  // the module can read
};

/// Channels in use, as the project file states them.
struct ChannelTotals {
  int TotAnalogChans = 0;
  int TotExcitChans = 0;
  int TotCAOChans = 0;
  int TotHVChans = 0;
  int TotIsoChans = 0;
  int TotFiltChans = 0;
  std::array<int, blockKinds> SEChannelCount = {};  // by BlockKind
  int ExciteSwitched = 0;                           // of bridges
  int ExciteCAO = 0;
};

struct FreeChannels {
  int differential = 0;
  int excitation = 0;
  int cao = 0;
  int control = 0;
  int counters = 0;
};

/// Slot and channel of everything in a project. Computed from the project, never stored; a block
/// that does not fit gets the place it would have with more modules, and a line in `problems`.
struct ChannelPlan {
  std::array<std::array<BlockPlace, maxBlocks>, blockKinds> blocks;
  std::vector<PortGroupPlace> portGroups;
  int caoOfBridges = 0;      // analog outputs taken before those of the excitation window
  int multiplexers = 0;      // in use
  std::vector<int> tcSlots;  // 7121/22 slots that carry thermocouples, ascending
  std::vector<int> isoTcSlots;
  ChannelTotals totals;
  FreeChannels free;
  std::vector<std::string> problems;

  [[nodiscard]] const BlockPlace& of(BlockKind kind, std::size_t number) const {
    return blocks[static_cast<std::size_t>(kind)].at(number - 1);
  }
};

ChannelPlan channelPlan(const Project& project);

/// First slot of a module kind: slots fill in ascending kind, the user's modules from slot 4.
int firstSlot(const LoggerConfiguration& configuration, ModuleKindIndex kind);
/// Module kind in a slot 1 to 15; -1 for an empty slot.
int moduleInSlot(const LoggerConfiguration& configuration, int slot);
/// What stands on the module in a slot: "7104"; "None" for an empty slot.
std::string_view moduleNameInSlot(const LoggerConfiguration& configuration, int slot);

/// Channel of one element (from 1) of a block in use, modules of the kind being filled in turn.
Place placeOfElement(const Project& project, const ChannelPlan& plan, BlockKind kind,
                     std::size_t number, std::size_t element);

/// The excitation channel that feeds an element (from 1) of a bridge block: switched 1 to 8, or 8 +
/// analog output.
Place placeOfBridgeExcitation(const Project& project, const ChannelPlan& plan, std::size_t number,
                              std::size_t element);

/// Analog output of an excitation-window channel (from 1).
Place placeOfExcitation(const Project& project, const ChannelPlan& plan, std::size_t channel);

}  // namespace model
