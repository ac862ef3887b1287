#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "model/channel_plan.h"
#include "model/document_stamp.h"
#include "model/project.h"

/// Which wire goes where: a table for texts and pictures, and the wiring file.
namespace MAKEWIRE {

/// One terminal with what is connected to it. A terminal that is asked to do two things, which the
/// channel plan reports as a problem, has a row for each.
struct WiringRow {
  int slot = 0;               // 0: of a multiplexer, of the CAN interface, or of no module
  std::string terminal = {};  // "H1", "L1", "EX3", "CAO2", "C8", "D16", "COM+", "IN4"
  std::string function = {};  // "Diff 1 +"; "" for an unused terminal
  std::string block = {};     // "TBlk1(3)"
  std::string alias = {};
  std::string units = {};
  bool operator==(const WiringRow&) const = default;

  [[nodiscard]] bool used() const { return !function.empty(); }
};

/// A module in its slot with all its terminals. Modules without terminals have no rows.
struct WiringSlot {
  int number = 0;      // 1 to 15
  std::string module;  // "7121/22 Analog Input"
  std::vector<WiringRow> rows = {};
  std::vector<std::string> notes = {};
};

/// What is connected to the modules from outside: a multiplexer, the CAN interface.
struct WiringDevice {
  std::string name;  // "TCMUX 2", "CANIF"
  std::vector<WiringRow> rows = {};
};

struct WiringDiagram {
  std::vector<WiringSlot> slots;
  std::vector<WiringDevice> devices;
  std::vector<WiringRow> unplaced;  // for lack of a module; terminal "-"
};

WiringDiagram wiringDiagram(const model::Project& project, const model::ChannelPlan& plan);

/// The text of the wiring file (.WR7); lines end in CR LF.
std::string wiringText(const model::Project& project, const model::DocumentStamp& stamp);

}  // namespace MAKEWIRE
