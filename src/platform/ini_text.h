#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Sections of "key=value" lines.
using IniSections = std::map<std::string, std::map<std::string, std::string>, std::less<>>;

struct IniContent {
  IniSections sections;
  std::vector<std::size_t> badLines;  // numbers, from 1, of lines that say nothing
};

/// Empty lines and lines that begin with ";" or "#" are comments. No text is too odd to be read.
IniContent readIni(std::string_view text);
std::string iniText(const IniSections& sections);

}  // namespace platform
