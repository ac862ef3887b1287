#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The channels of a project as a table of text, for spreadsheets.
namespace channels {

struct CsvRow {
  std::size_t line = 0;  // of its first cell, from 1
  std::vector<std::string> cells;
  std::string complaint;  // not empty: the row is no CSV
};

/// The sign between the cells of a text: a tab when its first line has one, else a comma.
char separatorOf(std::string_view text);

/// Reads rows of separated cells, which may be quoted, one after another. Lines end in CR LF or LF;
/// a byte order mark and empty lines are passed over.
class CsvReader {
 public:
  explicit CsvReader(std::string_view text, char separator = ',');
  /// False at the end of the text.
  bool next(CsvRow& row);

 private:
  bool atLineEnd() const;
  void passLineEnd();
  std::string quotedCell(CsvRow& row);
  std::string plainCell();
  void readCells(CsvRow& row);

  std::string_view text_;
  char separator_;
  std::size_t position_ = 0;
  std::size_t line_ = 1;
};

/// One row of comma-separated cells with its CR LF; cells are quoted where they must be.
void appendCsvRow(std::string& out, const std::vector<std::string>& cells);

}  // namespace channels
