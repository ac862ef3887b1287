#include "support/demo_project.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace support {

using model::BlockKind;
using model::ModuleKindIndex;

model::DocumentStamp demoStamp() { return {"DEMO", {2026, 7, 4, 13, 5, 9}, false}; }

model::Project projectWith(int cpu, std::initializer_list<ModuleKindIndex> modules) {
  model::Project project;
  KGEN_COMMON::SetAllDefaults(project);
  project.configuration.quantity(ModuleKindIndex::cpu) = static_cast<std::int16_t>(cpu);
  for (const ModuleKindIndex kind : modules) ++project.configuration.quantity(kind);
  fitLists(project);
  return project;
}

model::MeasurementBlock& addBlock(model::Project& project, BlockKind kind, std::size_t number,
                                  int channels) {
  model::MeasurementBlock& block = project.block(kind, number);
  block.Reps = static_cast<std::int16_t>(channels);
  project.set(kind).BlockCount = static_cast<std::int16_t>(number);
  fitLists(project);
  return block;
}

model::Project demoProject() {
  constexpr std::uint8_t sample = 1;
  constexpr std::uint8_t maximumAndAverage = 2 + 8;
  model::Project project =
      projectWith(2, {ModuleKindIndex::adaptor7151, ModuleKindIndex::analog7121,
                      ModuleKindIndex::excitation7131, ModuleKindIndex::isolation7128});
  model::MeasurementBlock& temperatures = addBlock(project, BlockKind::thermocouple, 1, 2);
  temperatures.Public = true;
  temperatures.elements[0].AliasName = "Inlet";
  temperatures.elements[0].AliasUnits = "Deg_F";
  for (model::Element& element : temperatures.elements) element.Table[0] = maximumAndAverage;

  model::MeasurementBlock& pressures = addBlock(project, BlockKind::voltage, 1, 2);
  pressures.Public = true;
  pressures.MeasType = "SE";
  pressures.Range = "500 mV";
  pressures.ZeroFlag = 3;
  pressures.elements[0].AliasName = "Press";
  pressures.elements[0].AliasUnits = "psi";
  pressures.elements[0].AliasExcept = true;
  pressures.elements[0].AliasMult = 0.1;
  for (model::Element& element : pressures.elements) element.Table[0] = sample;

  addBlock(project, BlockKind::isolated, 1, 1);
  project.tables[0].TableOn = true;
  project.tables[0].OutInt = "10";
  project.tables[0].OutIntUnits = 2;
  return project;
}

std::string wholeFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot open " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace support
