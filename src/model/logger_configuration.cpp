#include "model/logger_configuration.h"

namespace model {

bool isK700X(const LoggerConfiguration& configuration) {
  return configuration.quantity(ModuleKindIndex::cpu) == 2;
}

std::string_view programExtension(const LoggerConfiguration& configuration) {
  return isK700X(configuration) ? ".KX7" : ".KP7";
}

std::string cpuLabel(const LoggerConfiguration& configuration) {
  return isK700X(configuration) ? "7104 CPU (1=7103, 2=7104)" : "7103 CPU (1=7103, 2=7104)";
}

std::string_view moduleName(ModuleKindIndex kind) {
  static constexpr std::array<std::string_view, moduleKinds> names = {
      "7101", "7103", "7105", "7151", "7121/22", "7131", "7141/42", "7127", "7125", "7128"};
  return names[static_cast<std::size_t>(kind)];
}

int userModules(const LoggerConfiguration& configuration) {
  int total = 0;
  for (auto kind = static_cast<std::size_t>(ModuleKindIndex::adaptor7151); kind < moduleKinds;
       ++kind)
    total += configuration.ModuleQty[kind];
  return total;
}

}  // namespace model
