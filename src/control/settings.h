#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/project.h"
#include "ports/settings_store.h"

namespace control {

/// The colours of panel and summary, "RRGGBB" each.
struct SelectedColors {
  std::string FormBackground = "D4D0C8";
  std::string PanelBackground = "D4D0C8";
  std::string PanelText = "000000";
  std::string SummaryBackground = "FFFFFF";
  std::string SummaryText = "000000";
  std::string SummaryHighlight = "0000FF";
  bool operator==(const SelectedColors&) const = default;
};

/// What the user chose, with what holds until then.
struct Settings {
  SelectedColors colors;
  std::string GenPath = R"(C:\Arvela\DLDFILES)";  // folder of projects and programs
  std::string LogCompPath;                        // pre-compiler; empty: where the machine has it
  std::int32_t CurrentOptionsPage = 0;
  std::int32_t CurrentOptionsTop = 0;
  std::int32_t CurrentOptionsLeft = 0;
  std::int32_t WarningMessageMask = 0;
  std::int32_t UserVarListTypes = 127;
  std::int32_t DefaultNumFlags = 8;  // rows that the flags window shows at first
  model::DefaultSettings defaults;
  bool operator==(const Settings&) const = default;
};

/// Every setting with its section and key, in the order of the options window.
template <class AnySettings, class Visitor>
void visitSettings(AnySettings& settings, Visitor&& setting) {
  setting("Colors", "Form Background", settings.colors.FormBackground);
  setting("Colors", "Panel Background", settings.colors.PanelBackground);
  setting("Colors", "Panel Text", settings.colors.PanelText);
  setting("Colors", "Summary Background", settings.colors.SummaryBackground);
  setting("Colors", "Summary Text", settings.colors.SummaryText);
  setting("Colors", "Summary Highlight", settings.colors.SummaryHighlight);
  setting("Settings", "GenPath", settings.GenPath);
  setting("Settings", "LogCompPath", settings.LogCompPath);
  setting("Settings", "CurrentOptionsPage", settings.CurrentOptionsPage);
  setting("Settings", "CurrentOptionsTop", settings.CurrentOptionsTop);
  setting("Settings", "CurrentOptionsLeft", settings.CurrentOptionsLeft);
  setting("Settings", "WarningMessageMask", settings.WarningMessageMask);
  setting("Settings", "UserVarListTypes", settings.UserVarListTypes);
  setting("Settings", "DefaultScanInterval", settings.defaults.DefaultScanInterval);
  setting("Settings", "DefaultScanIntervalUnits", settings.defaults.DefaultScanIntervalUnits);
  setting("Settings", "DefaultNumFlags", settings.DefaultNumFlags);
  setting("Settings", "DefaultDataType", settings.defaults.DefaultDataType);
  setting("Settings", "DefaultIntegrationCode", settings.defaults.DefaultIntegrationCode);
  setting("Settings", "DefaultInputType", settings.defaults.DefaultInputType);
  setting("Settings", "DefaultTableAutoSize", settings.defaults.DefaultTableAutoSize);
  setting("Settings", "DefaultTableNumRecs", settings.defaults.DefaultTableNumRecs);
}

/// Settings that are missing, or that make no sense, have their usual values; each of the latter
/// adds a line to the complaints.
Settings readSettings(const ports::SettingsStore& store, std::string_view application,
                      std::vector<std::string>& complaints);

/// Writes what differs from what is stored. Throws ports::FileError.
void writeSettings(ports::SettingsStore& store, std::string_view application,
                   const Settings& settings);

}  // namespace control
