#include "verify/message_lines.h"

#include "text/numbers.h"
#include "text/strings.h"

namespace verify {
namespace {

void appendLine(std::string& out, std::string_view line, bool first) {
  if (!first) out += "\r\n";
  out += line;
}

}  // namespace

std::string joinedLines(std::initializer_list<std::string_view> lines) {
  std::string out;
  for (const std::string_view& line : lines) appendLine(out, line, &line == lines.begin());
  return out;
}

std::string listedLines(const std::vector<std::string>& lines) {
  std::string out;
  for (std::size_t i = 0; i < lines.size(); ++i) appendLine(out, lines[i], i == 0);
  return out;
}

std::string groupedNumber(double micros) { return text::formatted(micros, "#,##0"); }

}  // namespace verify
