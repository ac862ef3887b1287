#include "channels/csv.h"

#include "text/strings.h"

namespace channels {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t mostCells = 64;  // of a row; a line of nothing but commas takes no memory

void appendCell(std::string& out, std::string_view cell) {
  if (cell.find_first_of(",\"\r\n") == std::string_view::npos) {
    out += cell;
    return;
  }
  out += '"';
  for (const char c : cell) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

}  // namespace

char separatorOf(std::string_view text) {
  const std::string_view first = text.substr(0, text.find('\n'));
  return first.find('\t') == std::string_view::npos ? ',' : '\t';
}

CsvReader::CsvReader(std::string_view text, char separator) : text_(text), separator_(separator) {
  if (text_.starts_with(byteOrderMark)) text_.remove_prefix(byteOrderMark.size());
}

bool CsvReader::atLineEnd() const {
  return position_ == text_.size() || text_[position_] == '\n' ||
         text_.substr(position_, 2) == "\r\n";
}

void CsvReader::passLineEnd() {
  if (position_ == text_.size()) return;
  position_ += text_[position_] == '\r' ? 2 : 1;
  ++line_;
}

std::string CsvReader::quotedCell(CsvRow& row) {
  std::string cell;
  for (++position_; position_ < text_.size(); ++position_) {
    const char c = text_[position_];
    if (c == '"' && text_.substr(position_, 2) != "\"\"") {
      ++position_;
      if (!atLineEnd() && text_[position_] != separator_)
        row.complaint =
            text::concat("text follows a closing quote; put a ",
                         separator_ == ',' ? "comma" : "tab", " after it or double the quote");
      return cell;
    }
    if (c == '"') ++position_;
    if (c == '\n') ++line_;
    cell += c;
  }
  row.complaint = "a quote is never closed; add the closing quote";
  return cell;
}

std::string CsvReader::plainCell() {
  const std::size_t start = position_;
  while (!atLineEnd() && text_[position_] != separator_) ++position_;
  return std::string(text_.substr(start, position_ - start));
}

void CsvReader::readCells(CsvRow& row) {
  for (bool more = true; more;) {
    const bool quoted = position_ < text_.size() && text_[position_] == '"';
    std::string cell = quoted ? quotedCell(row) : plainCell();
    if (!row.complaint.empty()) plainCell();
    if (row.cells.size() < mostCells) row.cells.push_back(std::move(cell));
    more = position_ < text_.size() && text_[position_] == separator_;
    if (more) ++position_;
  }
}

bool CsvReader::next(CsvRow& row) {
  while (position_ < text_.size() && atLineEnd()) passLineEnd();
  if (position_ == text_.size()) return false;
  row = CsvRow{line_, {}, {}};
  readCells(row);
  passLineEnd();
  return true;
}

void appendCsvRow(std::string& out, const std::vector<std::string>& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) out += ',';
    appendCell(out, cells[i]);
  }
  out += "\r\n";
}

}  // namespace channels
