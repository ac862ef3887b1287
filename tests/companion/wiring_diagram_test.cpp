#include "companion/wiring_diagram.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "projectfile/project_file.h"
#include "support/demo_project.h"
#include "support/examples.h"
#include "support/random_project.h"
#include "text/strings.h"

namespace {

using MAKEWIRE::WiringDiagram;
using MAKEWIRE::WiringRow;
using model::BlockKind;
using model::ModuleKindIndex;
using text::concat;

WiringDiagram diagramOf(const model::Project& project) {
  return MAKEWIRE::wiringDiagram(project, model::channelPlan(project));
}

TEST(Wiring, OfTheExamplesIsAsBefore) {
  const int examples = support::forExamples(KGEN_EXAMPLES_DIR, [](const std::string& name,
                                                                  const model::Project& project) {
    SCOPED_TRACE(name);
    const std::string wiring = MAKEWIRE::wiringText(project, {name, {2026, 7, 4, 13, 5, 9}, false});
    EXPECT_TRUE(wiring == support::wholeFile(concat(KGEN_GOLDEN_DIR, "/wiring/", name, ".WR7")))
        << wiring;
  });
  EXPECT_GE(examples, 10);
}

/// Where a block's element has to be found, and as what.
std::string expectedRow(const model::Project& project, const model::ChannelPlan& plan,
                        BlockKind kind, std::size_t number, std::size_t element) {
  const model::MeasurementBlock& block = project.block(kind, number);
  const model::Place place = placeOfElement(project, plan, kind, number, element);
  const std::string slot = concat(place.slot, " ");
  const std::string_view bridge = model::bridgeInstruction(block.Style);
  const bool singleEnded = kind == BlockKind::bridge ? bridge == "BrHalf" || bridge == "BrHalf3W"
                                                     : !isDifferential(block);
  switch (kind) {
    case BlockKind::pulse:
      return concat(slot, "D", place.channel);
    case BlockKind::isolated:
    case BlockKind::filter:
      return concat(slot, "H", place.channel);
    default:
      break;
  }
  if (!singleEnded) return concat(slot, "H", place.channel);
  return concat(slot, place.channel % 2 == 1 ? "H" : "L", (place.channel + 1) / 2);
}

/// Rows, by the channel of a block that they carry.
std::map<std::string, std::vector<WiringRow>> rowsByChannel(const WiringDiagram& diagram) {
  std::map<std::string, std::vector<WiringRow>> rows;
  const auto add = [&](const std::vector<WiringRow>& some) {
    for (const WiringRow& row : some)
      if (row.block.ends_with(")") && row.block.find("Blk") != std::string::npos)
        rows[row.block].push_back(row);
  };
  for (const auto& slot : diagram.slots) add(slot.rows);
  for (const auto& device : diagram.devices) add(device.rows);
  return rows;
}

/// Terminals that one channel of a block takes.
std::size_t terminalsOf(BlockKind kind, const model::MeasurementBlock& block) {
  if (kind == BlockKind::pulse || kind == BlockKind::tcmux) return 1;
  if (kind != BlockKind::bridge)
    return isDifferential(block) || kind == BlockKind::isolated || kind == BlockKind::filter ? 2
                                                                                             : 1;
  const std::string_view name = model::bridgeInstruction(block.Style);
  if (name == "BrHalf") return 1;
  return name == "BrHalf3W" || name == "BrFull" ? 2 : 4;
}

void expectEveryChannel(const model::Project& project) {
  const model::ChannelPlan plan = model::channelPlan(project);
  const WiringDiagram diagram = MAKEWIRE::wiringDiagram(project, plan);
  EXPECT_TRUE(diagram.unplaced.empty()) << diagram.unplaced.front().function;
  auto rows = rowsByChannel(diagram);
  for (const BlockKind kind : model::allBlockKinds)
    for (std::size_t n = 1; n <= model::infoOf(kind).blockLimit; ++n) {
      if (!inUse(project, kind, n)) continue;
      const model::MeasurementBlock& block = project.block(kind, n);
      const std::string tag = kind == BlockKind::filter
                                  ? concat(isFft(project, n) ? "FFBlk" : "FVBlk", n)
                                  : concat(model::infoOf(kind).letter, "Blk", n);
      for (std::size_t e = 1; e <= static_cast<std::size_t>(block.Reps); ++e) {
        const auto found = rows.extract(concat(tag, "(", e, ")"));
        ASSERT_FALSE(found.empty()) << tag << " " << e;
        const WiringRow& first = found.mapped().front();
        EXPECT_EQ(found.mapped().size(), terminalsOf(kind, block)) << first.block;
        EXPECT_EQ(first.alias, block.elements[e - 1].AliasName);
        if (kind == BlockKind::tcmux) continue;
        EXPECT_EQ(concat(first.slot, " ", first.terminal), expectedRow(project, plan, kind, n, e))
            << first.block;
      }
    }
  for (const auto& [name, rest] : rows) EXPECT_TRUE(name.starts_with("CBlk")) << name;
}

void expectOneFunctionEach(const WiringDiagram& diagram) {
  for (const auto& slot : diagram.slots) {
    std::set<std::string> seen;
    for (const WiringRow& row : slot.rows)
      EXPECT_TRUE(seen.insert(row.terminal).second)
          << "slot " << slot.number << " " << row.terminal << " " << row.function;
  }
}

TEST(Wiring, HasEveryChannelOnceWhereTheChannelPlanPutsIt) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const model::Project project = support::randomProject(
        random, {.k700x = seed % 3 != 0, .fullness = static_cast<int>(seed % 5) * 25});
    expectEveryChannel(project);
    if (model::channelPlan(project).problems.empty()) expectOneFunctionEach(diagramOf(project));
    if (HasFailure()) return;
  }
}

/// The row of a terminal as "function|block".
std::string at(const WiringDiagram& diagram, int slot, std::string_view terminal) {
  std::string found;
  for (const auto& each : diagram.slots)
    for (const WiringRow& row : each.rows)
      if (each.number == slot && row.terminal == terminal)
        found += concat(found.empty() ? "" : "; ", row.function, "|", row.block);
  return found;
}

TEST(Wiring, NamesExcitationsOutputsAndPorts) {
  model::Project project =
      support::projectWith(2, {ModuleKindIndex::analog7121, ModuleKindIndex::excitation7131,
                               ModuleKindIndex::counter7141, ModuleKindIndex::filter7125});
  model::MeasurementBlock& sixWire = support::addBlock(project, BlockKind::bridge, 1, 3);
  sixWire.Style = 1;
  sixWire.ExciteReps = 2;
  model::MeasurementBlock& threeWire = support::addBlock(project, BlockKind::bridge, 2, 2);
  threeWire.Style = 3;
  threeWire.CheckCAO = true;
  support::addBlock(project, BlockKind::pulse, 1, 2).Meas = "LoLev";
  project.filterSlots[0].BlockCount = 1;
  support::addBlock(project, BlockKind::filter, 1, 2).Excite = 4;
  project.ports.groups.resize(3);
  project.ports.groups[0].ports[7].Include = true;
  project.ports.groups[1].ports[1].Include = true;  // a pulse input as well
  project.ports.groups[2].ReadMode = true;
  project.ports.groups[2].ports[7].Include = true;
  project.excitation.channels.resize(1);
  model::ExcitationChannel& output = project.excitation.channels[0];
  output.Include = true;
  output.DynamicStatic = 1;
  output.State1 = 100;
  output.State2 = -5;
  const WiringDiagram diagram = diagramOf(project);
  const struct {
    int slot;
    const char *terminal, *row;
  } rows[] = {
      {4, "H1", "Diff 1 + EX1 slot 5|BBlk1(1)"},
      {4, "L2", "Diff 2 - EX1 slot 5|BBlk1(1)"},
      {4, "H5", "Diff 5 + EX2 slot 5|BBlk1(3)"},
      {4, "H7", "SE 13 CAO1 slot 5|BBlk2(1)"},
      {4, "L8", "SE 16 CAO2 slot 5|BBlk2(2)"},
      {5, "EX1", "Excite (1-2) 5000 mV|BBlk1"},
      {5, "EX2", "Excite (3) 5000 mV|BBlk1"},
      {5, "EX3", "|"},
      {5, "CAO2", "Excite (2) 5000 mV|BBlk2"},
      {5, "CAO3", "Output 100/-5 mV|CAO(1)"},
      {5, "C8", "Port 8 output|Ports(1)"},
      {6, "D1", "Pulse 1 LoLev|PBlk1(1)"},
      {6, "D2", "Pulse 2 LoLev|PBlk1(2); Port 2 output|Ports(2)"},
      {6, "D16", "Port 16 input|Ports(3)"},
      {7, "EX2", "Excite 10mA|FVBlk1"},
      {7, "L2", "Filt 2 -|FVBlk1(2)"},
      {7, "EX3", "|"},
  };
  for (const auto& [slot, terminal, row] : rows)
    EXPECT_EQ(at(diagram, slot, terminal), row) << slot << terminal;
}

TEST(Wiring, ListsWhatHasNoModule) {
  model::Project project = support::projectWith(2, {ModuleKindIndex::analog7121});
  support::addBlock(project, BlockKind::thermocouple, 1, 16);
  support::addBlock(project, BlockKind::highVoltage, 1, 1);
  project.ports.groups.resize(1);
  project.ports.groups[0].ports[0].Include = true;
  const WiringDiagram diagram = diagramOf(project);
  std::vector<std::string> blocks;
  for (const WiringRow& row : diagram.unplaced) blocks.push_back(row.block);
  EXPECT_EQ(blocks, (std::vector<std::string>{"TBlk1(15)", "TBlk1(15)", "TBlk1(16)", "TBlk1(16)",
                                              "HBlk1(1)", "HBlk1(1)", "Ports(1)"}));
}

TEST(Wiring, KeepsABlankBetweenColumnsThatOverflow) {
  model::Project project = support::demoProject();
  project.block(BlockKind::thermocouple, 1).elements[0].AliasName = "SixteenLettersAA";
  project.block(BlockKind::thermocouple, 1).elements[1].AliasName = "ManyMoreThanSixteenLetters";
  const std::string wiring = MAKEWIRE::wiringText(project, support::demoStamp());
  EXPECT_NE(wiring.find("\r\nH1          Diff 1 +                 TBlk1(1)     SixteenLettersAA "
                        "Deg_F\r\n"),
            std::string::npos)
      << wiring;
  EXPECT_NE(wiring.find(" ManyMoreThanSixteenLetters Deg_F\r\n"), std::string::npos);
}

}  // namespace
