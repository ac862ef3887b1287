#include "control/settings.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "model/time_units.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace control {
namespace {

using text::concat;

constexpr std::int16_t longestUnitCode = model::unitcode::hours;  // of a scan
constexpr std::int16_t longestIntegrationCode = 2;
constexpr std::int32_t allWarnings = 63;
constexpr std::int32_t allVariableTypes = 127;
constexpr std::int32_t mostFlags = 8;

bool isColor(std::string_view text) {
  return text.size() == 6 && text.find_first_not_of("0123456789ABCDEFabcdef") == std::string::npos;
}

std::string filed(const std::string& value) { return value; }
std::string filed(bool value) { return value ? "-1" : "0"; }
template <class Number>
std::string filed(Number value) {
  return text::shortest(static_cast<double>(value));
}

bool fromText(std::string_view text, std::string& value) {
  value = text;
  return true;
}
bool fromText(std::string_view text, double& value) {
  value = text::readNumber(text);
  return text::isNumber(text);
}
bool fromText(std::string_view text, bool& value) {
  value = text::readNumber(text) != 0;
  return text::isNumber(text);
}
template <class Integer>
bool fromText(std::string_view text, Integer& value) {
  using Range = std::numeric_limits<Integer>;
  const double number = text::readNumber(text);
  value = static_cast<Integer>(text::integerWithin(number, Range::min(), Range::max()));
  return text::isNumber(text) && value == number;
}

template <class Number>
bool within(Number value, Number low, Number high) {
  return value >= low && value <= high;
}

/// Values that a file may hold and that nothing can be done with.
bool makesSense(std::string_view section, std::string_view key, const Settings& read) {
  const model::DefaultSettings& defaults = read.defaults;
  if (section == "Colors") {
    bool sensible = true;
    visitSettings(read, [&](std::string_view, std::string_view name, const auto& value) {
      if constexpr (std::is_same_v<decltype(value), const std::string&>)
        if (name == key) sensible = isColor(value);
    });
    return sensible;
  }
  if (key == "WarningMessageMask") return within(read.WarningMessageMask, 0, allWarnings);
  if (key == "UserVarListTypes") return within(read.UserVarListTypes, 0, allVariableTypes);
  if (key == "DefaultScanInterval") return within(defaults.DefaultScanInterval, 1e-9, 1e9);
  if (key == "DefaultScanIntervalUnits")
    return within<int>(defaults.DefaultScanIntervalUnits, 0, longestUnitCode);
  if (key == "DefaultNumFlags") return within(read.DefaultNumFlags, 1, mostFlags);
  if (key == "DefaultDataType") return within<int>(defaults.DefaultDataType, 0, 1);
  if (key == "DefaultInputType") return within<int>(defaults.DefaultInputType, 0, 1);
  if (key == "DefaultIntegrationCode")
    return within<int>(defaults.DefaultIntegrationCode, 0, longestIntegrationCode);
  return true;
}

}  // namespace

Settings readSettings(const ports::SettingsStore& store, std::string_view application,
                      std::vector<std::string>& complaints) {
  Settings settings;
  visitSettings(settings, [&](std::string_view section, std::string_view key, auto& value) {
    const std::optional<std::string> stored = store.read(application, section, key);
    if (!stored) return;
    const auto usual = value;
    if (fromText(*stored, value) && makesSense(section, key, settings)) return;
    value = usual;
    complaints.push_back(concat("settings, [", section, "] ", key, ": '", *stored,
                                "' makes no sense; ", filed(usual), " is used"));
  });
  return settings;
}

void writeSettings(ports::SettingsStore& store, std::string_view application,
                   const Settings& settings) {
  const Settings usual;
  visitSettings(settings, [&](std::string_view section, std::string_view key, const auto& value) {
    const std::optional<std::string> stored = store.read(application, section, key);
    const std::string text = filed(value);
    bool isUsual = false;
    visitSettings(usual, [&](std::string_view, std::string_view name, const auto& other) {
      if (name == key) isUsual = filed(other) == text;
    });
    if (stored ? *stored != text : !isUsual) store.write(application, section, key, text);
  });
}

}  // namespace control
