#include "workbench.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "projectfile/project_file.h"
#include "text/strings.h"

namespace apps_test {
namespace {

namespace fs = std::filesystem;
using model::BlockKind;

fs::path newFolder() {
  std::string name = fs::temp_directory_path() / "kgen-test-XXXXXX";
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  return name;
}

std::string contentOf(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

void addBlock(model::Project& project, BlockKind kind, std::int16_t channels) {
  model::BlockSet& set = project.set(kind);
  ++set.BlockCount;
  set.blocks[static_cast<std::size_t>(set.BlockCount - 1)].Reps = channels;
}

model::Project project7104(std::int16_t analogModules) {
  model::Project project;
  KGEN_COMMON::SetAllDefaults(project);
  project.configuration.quantity(model::ModuleKindIndex::cpu) = 2;
  project.configuration.quantity(model::ModuleKindIndex::analog7121) = analogModules;
  project.configuration.quantity(model::ModuleKindIndex::excitation7131) = 1;
  return project;
}

}  // namespace

Workbench::Workbench() : folder_(newFolder()), outputs_(newFolder()) {}

Workbench::~Workbench() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
  fs::remove_all(outputs_, ignored);
}

Outcome Workbench::shell(std::string_view line) const {
  const std::string whole =
      text::concat("cd ", folder_.string(), " && export KGEN=", KGEN_PROGRAM, " && { ", line,
                   "; } >", outputs_.string(), "/out 2>", outputs_.string(), "/err </dev/null");
  const int status = std::system(whole.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(outputs_ / "out"),
          contentOf(outputs_ / "err")};
}

Outcome Workbench::kgen(std::string_view arguments, std::string_view variables) const {
  return shell(text::concat("SOURCE_DATE_EPOCH=86400 ", variables, " $KGEN ", arguments));
}

void Workbench::write(std::string_view name, std::string_view content) const {
  std::ofstream out(path(name), std::ios::binary);
  out << content;
}

void Workbench::write(std::string_view name, const model::Project& project) const {
  write(name, KGEN_GENFILE::fileText(project, {"test", {}, false}));
}

std::string Workbench::read(std::string_view name) const { return contentOf(path(name)); }

model::Project Workbench::project(std::string_view name) const {
  model::Project project;
  KGEN_COMMON::SetAllDefaults(project);
  const auto report = KGEN_GENFILE::load(path(name).string(), project);
  if (report.error) throw std::runtime_error(*report.error);
  return project;
}

std::vector<std::string> Workbench::files() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder_))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

model::Project smallProject() {
  model::Project project = project7104(2);
  project.tables[0].TableOn = true;
  addBlock(project, BlockKind::thermocouple, 4);
  addBlock(project, BlockKind::voltage, 3);
  addBlock(project, BlockKind::bridge, 2);
  model::fitLists(project);
  return project;
}

model::Project endlessProject() {
  model::Project project = project7104(6);
  for (int i = 0; i < 7; ++i) addBlock(project, BlockKind::voltage, 525);
  model::fitLists(project);
  int number = 0;
  for (model::MeasurementBlock& block : project.set(BlockKind::voltage).blocks)
    for (model::Element& element : block.elements) element.AliasName = text::concat("Ch", ++number);
  return project;
}

}  // namespace apps_test
