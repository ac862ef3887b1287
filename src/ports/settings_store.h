#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ports {

/// What the user chose, kept for each user and application. A value that is not there, or that
/// can't be read, is std::nullopt.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  [[nodiscard]] virtual std::optional<std::string> read(std::string_view application,
                                                        std::string_view section,
                                                        std::string_view key) const = 0;
  /// Throws FileError when the machine refuses.
  virtual void write(std::string_view application, std::string_view section, std::string_view key,
                     std::string_view value) = 0;
};

}  // namespace ports
