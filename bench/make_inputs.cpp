#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>

#include "generator/program_writer.h"
#include "model/channel_plan.h"
#include "projectfile/project_file.h"
#include "text/strings.h"

/// Writes what the benchmarks read: big.GN7, usual.GN7, smallest.GN7 and usual.ui, a form for
/// which uic writes as many lines as the program of usual.GN7 has.
namespace {

using model::BlockKind;
using model::ModuleKindIndex;

model::Project emptyProject() {
  model::Project project;
  KGEN_COMMON::SetAllDefaults(project);
  project.configuration.quantity(ModuleKindIndex::cpu) = 2;
  return project;
}

void addBlocks(model::Project& project, BlockKind kind, std::int16_t blocks,
               std::int16_t channels) {
  project.set(kind).BlockCount = blocks;
  if (kind == BlockKind::filter) project.filterSlots[0].BlockCount = blocks;
  for (std::int16_t b = 0; b < blocks; ++b)
    project.set(kind).blocks[static_cast<std::size_t>(b)].Reps = channels;
}

/// Every element goes into tables; every nth one has a name and scaling of its own.
void dressElements(model::Project& project, int nth) {
  int number = 0;
  for (model::BlockSet& set : project.blockSets)
    for (model::MeasurementBlock& block : set.blocks)
      for (model::Element& element : block.elements) {
        ++number;
        element.Table[static_cast<std::size_t>(number) % model::maxTables] = 8;  // averages
        element.Table[0] |= 1;                                                   // samples
        if (number % nth != 0) continue;
        element.AliasName = text::concat("Channel", number);
        element.AliasUnits = "kN";
        element.AliasMult = 0.125 * number;
        element.AliasExcept = true;
      }
}

void switchTablesOn(model::Project& project, std::size_t tables) {
  for (std::size_t t = 0; t < tables; ++t) project.tables[t].TableOn = true;
}

model::Project bigProject() {
  model::Project project = emptyProject();
  for (const ModuleKindIndex kind : {ModuleKindIndex::analog7121, ModuleKindIndex::excitation7131,
                                     ModuleKindIndex::counter7141, ModuleKindIndex::highVoltage7127,
                                     ModuleKindIndex::filter7125, ModuleKindIndex::isolation7128})
    project.configuration.quantity(kind) = 2;
  for (const BlockKind kind : model::allBlockKinds)
    addBlocks(project, kind, static_cast<std::int16_t>(model::infoOf(kind).blockLimit),
              model::maxElements);
  model::fitLists(project);
  dressElements(project, 50);
  switchTablesOn(project, model::maxTables);
  return project;
}

model::Project usualProject() {
  model::Project project = emptyProject();
  project.configuration.quantity(ModuleKindIndex::analog7121) = 8;
  project.configuration.quantity(ModuleKindIndex::excitation7131) = 1;
  project.configuration.quantity(ModuleKindIndex::counter7141) = 2;
  project.configuration.quantity(ModuleKindIndex::highVoltage7127) = 1;
  project.configuration.TCMUXQty = 7;
  addBlocks(project, BlockKind::thermocouple, 7, 3);
  addBlocks(project, BlockKind::voltage, 7, 16);
  addBlocks(project, BlockKind::bridge, 7, 2);
  addBlocks(project, BlockKind::tcmux, 7, 16);
  addBlocks(project, BlockKind::pulse, 6, 5);
  addBlocks(project, BlockKind::highVoltage, 6, 1);
  for (auto& block : project.set(BlockKind::voltage).blocks) block.MeasType = "SE";
  for (auto& block : project.set(BlockKind::bridge).blocks) block.ExciteReps = 2;
  model::fitLists(project);
  dressElements(project, 1);
  switchTablesOn(project, 4);
  return project;
}

void write(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
  std::printf("%s: %ld lines, %zu bytes\n", path.c_str(),
              static_cast<long>(std::count(content.begin(), content.end(), '\n')), content.size());
}

void writeProject(const std::string& path, const model::Project& project) {
  write(path, KGEN_GENFILE::fileText(project, {"bench", {}, false}));
}

std::string formOf(int lines) {
  constexpr int linesOfFrame = 36;
  constexpr int linesOfWidget = 5;
  std::string out =
      "<ui version=\"4.0\"><class>Form</class><widget class=\"QWidget\" name=\"Form\">\n";
  for (int i = 0; i < (lines - linesOfFrame) / linesOfWidget; ++i)
    out += text::concat("<widget class=\"QLabel\" name=\"label", i,
                        "\"><property name=\"geometry\"><rect><x>10</x><y>", i,
                        "</y><width>80</width><height>20</height></rect></property>"
                        "<property name=\"text\"><string>Channel ",
                        i, "</string></property></widget>\n");
  return out + "</widget><resources/><connections/></ui>\n";
}

}  // namespace

int main(int argc, char** argv) {
  const std::string folder = argc > 1 ? argv[1] : ".";
  const model::Project usual = usualProject();
  for (const std::string& problem : model::channelPlan(usual).problems)
    std::printf("usual.GN7: %s\n", problem.c_str());
  writeProject(folder + "/big.GN7", bigProject());
  writeProject(folder + "/usual.GN7", usual);
  model::Project smallest;
  KGEN_COMMON::SetAllDefaults(smallest);
  writeProject(folder + "/smallest.GN7", smallest);
  const int lines = SAVEDLD::generate(usual, {"usual", {}, false}).lines;
  write(folder + "/usual.ui", formOf(lines));
  std::printf("program of usual.GN7: %d lines\n", lines);
}
