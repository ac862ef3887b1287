#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ports {

/// Values and places that hold for the whole machine, or that the system gives the user.
class MachineRegistry {
 public:
  virtual ~MachineRegistry() = default;
  /// The value under a key such as "SOFTWARE\Tervane"; std::nullopt when nobody set it.
  [[nodiscard]] virtual std::optional<std::string> read(std::string_view key,
                                                        std::string_view value) const = 0;
  /// The folder of the running program and those that are installed with it.
  [[nodiscard]] virtual std::string programFolder() const = 0;
  /// The folder for files that programs keep for the user.
  [[nodiscard]] virtual std::string applicationData() const = 0;
  /// The folder in which the user keeps documents.
  [[nodiscard]] virtual std::string documents() const = 0;
};

}  // namespace ports
