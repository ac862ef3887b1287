#include "support/program_lines.h"

#include <algorithm>

#include "text/strings.h"

namespace support {

Lines linesOf(std::string_view program) {
  Lines lines(1);
  for (const char c : program) {
    if (c == '\n')
      lines.emplace_back();
    else
      lines.back().push_back(c);
  }
  return lines;
}

std::string joined(const Lines& lines) {
  std::string program;
  for (const std::string& line : lines) program += line + "\n";
  return program;
}

std::string codeOf(const std::string& line) {
  std::string code(text::trimmed(line.substr(0, line.find_first_of("'\r"))));
  return code;
}

bool startsWithAny(std::string_view code, std::initializer_list<std::string_view> starts) {
  return std::any_of(starts.begin(), starts.end(),
                     [&](std::string_view start) { return code.starts_with(start); });
}

bool isNamePart(char c) { return text::isLetter(c) || text::isDigit(c) || c == '_'; }

bool isCall(const std::string& code) {
  return code.find('(') != std::string::npos && code.ends_with(')') &&
         code.find(" = ") == std::string::npos &&
         !startsWithAny(code, {"Dim", "Public", "Alias", "If", "SlotConfigure"});
}

std::vector<std::size_t> commas(const std::string& code) {
  std::vector<std::size_t> found;
  int depth = 0;
  for (std::size_t i = 0; i < code.size(); ++i) {
    depth += code[i] == '(' ? 1 : code[i] == ')' ? -1 : 0;
    if (code[i] == ',' && depth == 1) found.push_back(i);
  }
  return found;
}

}  // namespace support
