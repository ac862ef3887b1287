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

std::string columnLine(std::span<const std::string_view> cells,
                       std::span<const std::size_t> columns, std::size_t width) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (!line.empty()) line += ' ';
    line = text::padded(line, columns[i]);
    line += cells[i];
  }
  if (line.size() > width) line.resize(width);
  while (!line.empty() && line.back() == ' ') line.pop_back();
  return line;
}

}  // namespace companion
