#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/ini_text.h"
#include "ports/machine_registry.h"
#include "ports/settings_store.h"

namespace platform {

/// Hears one line for each file that can't be read as it should.
using Complain = std::function<void(const std::string& line)>;

/// A file a user and application: $XDG_CONFIG_HOME/APPLICATION/settings.ini. One that is missing
/// or can't be read counts as empty; it is read once and written whole.
class SettingsFile final : public ports::SettingsStore {
 public:
  explicit SettingsFile(Complain complain) : complain_(std::move(complain)) {}
  [[nodiscard]] std::optional<std::string> read(std::string_view application,
                                                std::string_view section,
                                                std::string_view key) const override;
  void write(std::string_view application, std::string_view section, std::string_view key,
             std::string_view value) override;

 private:
  IniSections& sectionsOf(std::string_view application) const;

  Complain complain_;
  mutable std::map<std::string, IniSections, std::less<>> read_;  // by application
};

/// The system-wide file kgen/machine.ini in the first folder of $XDG_CONFIG_DIRS that has it. Its
/// sections are keys such as [SOFTWARE\Tervane].
class MachineFile final : public ports::MachineRegistry {
 public:
  explicit MachineFile(const Complain& complain);
  [[nodiscard]] std::optional<std::string> read(std::string_view key,
                                                std::string_view value) const override;
  [[nodiscard]] std::string programFolder() const override;
  [[nodiscard]] std::string applicationData() const override;  // $XDG_DATA_HOME/kgen
  [[nodiscard]] std::string documents() const override;        // as the user's folders say

 private:
  IniSections sections_;
};

}  // namespace platform
