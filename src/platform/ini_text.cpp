#include "platform/ini_text.h"

#include <algorithm>

#include "text/strings.h"

namespace platform {
namespace {

bool isComment(std::string_view line) {
  return line.empty() || line.front() == ';' || line.front() == '#';
}

bool isHeader(std::string_view line) {
  return line.size() > 2 && line[0] == '[' && line.back() == ']';
}

class IniReader {
 public:
  void take(std::string_view line) {
    ++number_;
    if (line.ends_with('\r')) line.remove_suffix(1);
    line = text::trimmed(line);
    const std::size_t equals = line.find('=');
    if (isComment(line)) return;
    if (isHeader(line))
      section_ = line.substr(1, line.size() - 2);
    else if (equals == std::string_view::npos || equals == 0 || section_.empty())
      content.badLines.push_back(number_);
    else
      store(text::trimmed(line.substr(0, equals)), text::trimmed(line.substr(equals + 1)));
  }

  IniContent content;

 private:
  void store(std::string_view key, std::string_view value) {
    content.sections[section_][std::string(key)] = text::asUtf8(value);
  }

  std::string section_;
  std::size_t number_ = 0;
};

}  // namespace

IniContent readIni(std::string_view text) {
  IniReader reader;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    reader.take(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return std::move(reader.content);
}

std::string iniText(const IniSections& sections) {
  std::string out;
  for (const auto& [name, values] : sections) {
    out += text::concat(out.empty() ? "" : "\n", "[", name, "]\n");
    for (const auto& [key, value] : values) out += text::concat(key, "=", value, "\n");
  }
  return out;
}

}  // namespace platform
