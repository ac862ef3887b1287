#include "companion/document_lines.h"

#include "text/strings.h"

namespace companion {
namespace {

using text::concat;

std::string headerLine(const std::string& left, const std::string& right) {
  constexpr std::size_t column = 55;
  std::string line = text::padded(left, column);
  if (left.size() > column) line += ' ';
  return concat(line, right, "\r\n");
}

}  // namespace

std::string documentHeader(const model::LoggerConfiguration& configuration,
                           const model::DocumentStamp& stamp, std::string_view extension) {
  return concat("\r\n",
                headerLine(concat("File name   : ", text::upper(stamp.baseName), extension),
                           concat("Date written: ", model::dateText(stamp.now))),
                headerLine(concat("Written by  : ", configuration.Operator),
                           concat("Time written: ", model::timeText(stamp.now))),
                headerLine(concat("I.D. number : ", configuration.IDNumber),
                           concat(" KGENOCX Vers: ", model::generatorVersion)));
}

void appendColumns(std::string& out, std::span<const std::string_view> cells,
                   std::span<const std::size_t> columns, std::size_t width) {
  const std::size_t begin = out.size();
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::size_t length = out.size() - begin;
    const bool pushed = length > 0 && length >= columns[i];
    out.append(pushed ? 1 : columns[i] - length, ' ');
    out += cells[i];
  }
  if (out.size() - begin > width) out.resize(begin + width);
  while (out.size() > begin && out.back() == ' ') out.pop_back();
  out += "\r\n";
}

}  // namespace companion
