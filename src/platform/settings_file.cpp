#include "platform/settings_file.h"

#include <cstdlib>
#include <filesystem>

#include "platform/disk_files.h"
#include "text/strings.h"

namespace platform {
namespace {

namespace fs = std::filesystem;
using text::concat;

std::string environment(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

std::string home() {
  const std::string folder = environment("HOME");
  return folder.empty() ? "/" : folder;
}

/// The folder that a variable names, or its usual place below the home folder.
std::string userFolder(const char* variable, std::string_view usual) {
  const std::string named = environment(variable);
  return named.starts_with('/') ? named : concat(home(), "/", usual);
}

std::string settingsPath(std::string_view application) {
  std::string folder(application.empty() ? "kgen" : application);
  for (char& c : folder)
    if (c == '/' || c == '\\' || c == '\0') c = '_';
  return concat(userFolder("XDG_CONFIG_HOME", ".config"), "/", folder, "/settings.ini");
}

/// What a file says; without one, or with one that can't be read, nothing.
IniSections sectionsIn(const std::string& path, const Complain& complain) {
  const DiskFiles files;
  if (!files.exists(path)) return {};
  try {
    IniContent content = readIni(files.read(path));
    if (const std::size_t bad = content.badLines.size(); bad > 0)
      complain(concat(path, ":", content.badLines.front(),
                      ": no [section] and no key=value; ignored, like ", bad - 1, " more lines"));
    return std::move(content.sections);
  } catch (const ports::FileError& error) {
    complain(concat(error.what(), "; the usual values are used"));
    return {};
  }
}

std::optional<std::string> valueIn(const IniSections& sections, std::string_view section,
                                   std::string_view key) {
  const auto found = sections.find(section);
  if (found == sections.end()) return std::nullopt;
  const auto value = found->second.find(std::string(key));
  if (value == found->second.end()) return std::nullopt;
  return value->second;
}

/// A value stays one line.
std::string oneLine(std::string_view value) {
  std::string line(value);
  for (char& c : line)
    if (c == '\n' || c == '\r' || c == '\0') c = ' ';
  return line;
}

std::string machinePath() {
  std::string folders = environment("XDG_CONFIG_DIRS");
  if (folders.empty()) folders = "/etc/xdg";
  for (std::string_view rest = folders; !rest.empty();) {
    const std::size_t end = std::min(rest.find(':'), rest.size());
    std::string path = concat(rest.substr(0, end), "/kgen/machine.ini");
    if (DiskFiles().exists(path)) return path;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return {};
}

/// "XDG_DOCUMENTS_DIR="$HOME/Documents"" in user-dirs.dirs.
std::string namedDocuments() {
  const std::string path = concat(userFolder("XDG_CONFIG_HOME", ".config"), "/user-dirs.dirs");
  const DiskFiles files;
  if (!files.exists(path)) return {};
  constexpr std::string_view key = "XDG_DOCUMENTS_DIR=\"";
  const std::string content = files.read(path);
  const std::size_t begin = content.find(key);
  if (begin == std::string::npos) return {};
  const std::size_t from = begin + key.size();
  std::string folder = content.substr(from, content.find('"', from) - from);
  if (folder.starts_with("$HOME")) folder.replace(0, 5, home());
  return folder;
}

}  // namespace

IniSections& SettingsFile::sectionsOf(std::string_view application) const {
  const auto known = read_.find(application);
  if (known != read_.end()) return known->second;
  return read_[std::string(application)] = sectionsIn(settingsPath(application), complain_);
}

std::optional<std::string> SettingsFile::read(std::string_view application,
                                              std::string_view section,
                                              std::string_view key) const {
  return valueIn(sectionsOf(application), section, key);
}

void SettingsFile::write(std::string_view application, std::string_view section,
                         std::string_view key, std::string_view value) {
  IniSections& sections = sectionsOf(application);
  sections[std::string(section)][std::string(key)] = oneLine(value);
  const std::string path = settingsPath(application);
  DiskFiles files;
  files.createFolder(fs::path(path).parent_path().string());
  files.replace(path, iniText(sections), false);
}

MachineFile::MachineFile(const Complain& complain)
    : sections_(sectionsIn(machinePath(), complain)) {}

std::optional<std::string> MachineFile::read(std::string_view key, std::string_view value) const {
  return valueIn(sections_, key, value);
}

std::string MachineFile::programFolder() const {
  std::error_code ignored;
  return fs::read_symlink("/proc/self/exe", ignored).parent_path().string();
}

std::string MachineFile::applicationData() const {
  return concat(userFolder("XDG_DATA_HOME", ".local/share"), "/kgen");
}

std::string MachineFile::documents() const {
  for (const std::string& folder : {namedDocuments(), concat(home(), "/Documents")}) {
    std::error_code ignored;
    if (!folder.empty() && fs::is_directory(folder, ignored)) return folder;
  }
  return home();
}

}  // namespace platform
