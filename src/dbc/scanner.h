#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace dbc {

/// Ends the reading of a statement.
struct BadStatement {
  std::size_t line;
  std::string text;
};

/// A statement of a database file and whether it runs on to a ";".
struct Keyword {
  std::string_view word;
  bool toSemicolon = true;
};
/// The keyword that a line begins with, blanks before it aside; nullptr for another line. A blank
/// may be missing behind it.
const Keyword* keywordAt(std::string_view line);

/// Walks over the text of a database whose lines end in LF.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  [[nodiscard]] bool atEnd() const { return at_ == text_.size(); }
  [[nodiscard]] std::size_t line() const { return line_; }
  [[nodiscard]] std::string_view restOfLine() const;
  void advance(std::size_t bytes);

  void skipBlanks();
  void skipBlanksAndLines();
  void skipLine();
  /// To the next statement: over a ";", or to a line that begins with a keyword.
  void skipStatement();

  /// The next sign of the line, blanks aside; '\n' at its end.
  char peek();
  /// The next sign, blanks and line ends aside; nothing is passed over.
  [[nodiscard]] char peekOverLines() const;
  bool take(char sign);
  void expect(char sign, std::string_view where);
  /// Up to a blank or one of the signs of the format; an empty one is no word.
  std::string word(std::string_view what);
  double number(std::string_view what);
  double whole(std::string_view what, double low, double high);
  /// A text in quotes. One that ends its statement goes to the quote before the ";", so that it can
  /// have quotes in it.
  std::string quoted(std::string_view what, bool endsStatement = false);
  /// "';' is missing": told by the caller, what was read is good.
  bool takeSemicolon();

  [[noreturn]] void fail(std::string text) const;

 private:
  [[nodiscard]] bool atKeywordLine(std::size_t position) const;
  [[nodiscard]] bool closesStatement(std::size_t quote) const;
  [[nodiscard]] std::string shownNext();

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
};

}  // namespace dbc
