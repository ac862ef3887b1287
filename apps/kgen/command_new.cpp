#include <array>
#include <charconv>
#include <memory>

#include "command.h"
#include "disk_files.h"
#include "failure.h"
#include "parser.h"
#include "project_files.h"
#include "text/strings.h"

namespace kgen {
namespace {

using model::ModuleKindIndex;

struct NewOptions {
  std::string base;
  std::string cpu = "1";
  std::vector<std::string> modules;
  bool force = false;
};

struct ModuleName {
  std::string_view name;
  std::int16_t& (*quantity)(model::LoggerConfiguration&);
};

template <ModuleKindIndex kind>
std::int16_t& quantityOf(model::LoggerConfiguration& configuration) {
  return configuration.quantity(kind);
}
std::int16_t& multiplexers(model::LoggerConfiguration& c) { return c.TCMUXQty; }
std::int16_t& canInterfaces(model::LoggerConfiguration& c) { return c.CanBusQty; }

constexpr ModuleName moduleNames[] = {
    {"7151", quantityOf<ModuleKindIndex::adaptor7151>},
    {"7121/22", quantityOf<ModuleKindIndex::analog7121>},
    {"7121", quantityOf<ModuleKindIndex::analog7121>},
    {"7122", quantityOf<ModuleKindIndex::analog7121>},
    {"7131", quantityOf<ModuleKindIndex::excitation7131>},
    {"7141/42", quantityOf<ModuleKindIndex::counter7141>},
    {"7141", quantityOf<ModuleKindIndex::counter7141>},
    {"7142", quantityOf<ModuleKindIndex::counter7141>},
    {"7127", quantityOf<ModuleKindIndex::highVoltage7127>},
    {"7125", quantityOf<ModuleKindIndex::filter7125>},
    {"7128", quantityOf<ModuleKindIndex::isolation7128>},
    {"TCMUX", multiplexers},
    {"CANIF", canInterfaces},
};

[[noreturn]] void refuse(std::string_view module, std::string_view complaint) {
  throw Failure(wrongUsage, text::concat("--module ", module, ": ", complaint));
}

const ModuleName& moduleNamed(std::string_view name, std::string_view given) {
  for (const ModuleName& module : moduleNames)
    if (text::equalsIgnoringCase(module.name, name)) return module;
  refuse(given,
         "no such module; choose 7151, 7121/22, 7131, 7141/42, 7127, 7125, 7128, TCMUX or CANIF");
}

constexpr int largestQuantity = 99;

int quantityIn(std::string_view number, std::string_view given) {
  int quantity = -1;
  const char* end = number.data() + number.size();
  const auto [stop, error] = std::from_chars(number.data(), end, quantity);
  if (error != std::errc{} || stop != end || quantity < 0 || quantity > largestQuantity)
    refuse(given, "the quantity cannot be read; write NAME=N, for example 7121=2");
  return quantity;
}

void addModule(model::LoggerConfiguration& configuration, std::string_view given) {
  const std::size_t equals = std::min(given.find('='), given.size());
  const ModuleName& module = moduleNamed(given.substr(0, equals), given);
  const int quantity = quantityIn(given.substr(std::min(equals + 1, given.size())), given);
  std::int16_t& total = module.quantity(configuration);
  total = static_cast<std::int16_t>(std::min(total + quantity, largestQuantity));
}

void checkModules(const model::LoggerConfiguration& configuration) {
  if (model::userModules(configuration) > static_cast<int>(model::maxUserModules))
    throw Failure(wrongUsage, text::concat("new: Total module count is limited to ",
                                           model::maxUserModules, ". Ask for fewer modules"));
  if (configuration.CanBusQty > 1)
    throw Failure(wrongUsage, "new: a logger has at most one CANIF; ask for CANIF=1");
  if (configuration.TCMUXQty > 0 && configuration.quantity(ModuleKindIndex::excitation7131) == 0)
    throw Failure(wrongUsage, "new: TCMUX needs a 7131 module. Please Add 7131 Modules!");
}

model::Project newProject(const NewOptions& options) {
  model::Project project = KGEN_COMMON::newProject();
  project.configuration.quantity(ModuleKindIndex::cpu) =
      options.cpu == "2" ? std::int16_t{2} : std::int16_t{1};
  for (const std::string& module : options.modules) addModule(project.configuration, module);
  checkModules(project.configuration);
  model::fitLists(project);
  return project;
}

int runNew(const NewOptions& options) {
  const model::Project project = newProject(options);
  const std::string base = withoutProjectExtension(options.base);
  const std::string path = text::concat(base, ".GN7");
  DiskFiles files;
  if (files.exists(path) && !options.force)
    throw Failure(outputUnwritable,
                  text::concat(path, ": the file exists; choose another name or say --force"));
  saveProject(base, project, stampFor(base));
  return done;
}

}  // namespace

Action prepareNew(Parser& parser) {
  const auto options = std::make_shared<NewOptions>();
  parser.argument("BASE", "Path of the project; .GN7 is added", options->base);
  parser.choice("--cpu", {"1", "2"}, "CPU: 1 is the 7103 (K700), 2 the 7104 (K700X)", options->cpu);
  parser.repeated(
      "--module", "NAME=N",
      "Modules in the logger, for example 7121=2; NAME is 7151, 7121/22, 7131, 7141/42, "
      "7127, 7125, 7128, TCMUX or CANIF; may be repeated",
      options->modules);
  parser.flag("--force", "Replace a project of that name", options->force);
  return [options] { return runNew(*options); };
}

}  // namespace kgen
