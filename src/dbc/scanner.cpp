#include "dbc/scanner.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "text/numbers.h"
#include "text/strings.h"

namespace dbc {
namespace {

using text::concat;

constexpr std::string_view blanks = " \t";
constexpr std::string_view wordEnds = " \t\n:;,|@()[]\"";

constexpr Keyword keywords[] = {
    {"VERSION", false},
    {"NS_", false},
    {"BS_", false},
    {"BU_", false},
    {"BO_", false},
    {"SG_", false},
    {"NS_DESC_"},
    {"CM_"},
    {"BA_DEF_"},
    {"BA_"},
    {"VAL_"},
    {"CAT_DEF_"},
    {"CAT_"},
    {"FILTER"},
    {"BA_DEF_DEF_"},
    {"EV_DATA_"},
    {"ENVVAR_DATA_"},
    {"SGTYPE_"},
    {"SGTYPE_VAL_"},
    {"BA_DEF_SGTYPE_"},
    {"BA_SGTYPE_"},
    {"SIG_TYPE_REF_"},
    {"VAL_TABLE_"},
    {"SIG_GROUP_"},
    {"SIG_VALTYPE_"},
    {"SIGTYPE_VALTYPE_"},
    {"BO_TX_BU_"},
    {"BA_DEF_REL_"},
    {"BA_REL_"},
    {"BA_DEF_DEF_REL_"},
    {"BU_SG_REL_"},
    {"BU_EV_REL_"},
    {"BU_BO_REL_"},
    {"SG_MUL_VAL_"},
    {"EV_"},
};

std::string_view withoutBlanks(std::string_view line) {
  return line.substr(std::min(line.find_first_not_of(blanks), line.size()));
}

const Keyword* keywordNamed(std::string_view word) {
  const auto* const found = std::find_if(std::begin(keywords), std::end(keywords),
                                         [word](const Keyword& k) { return k.word == word; });
  return found == std::end(keywords) ? nullptr : found;
}

/// "BO_123" and "SG_Speed :" are common.
const Keyword* joinedKeyword(std::string_view word) {
  if (word.starts_with("BO_") && word.size() > 3 && text::isDigit(word[3]))
    return keywordNamed("BO_");
  if (word.starts_with("SG_") && word.size() > 3 && word.back() != '_') return keywordNamed("SG_");
  return nullptr;
}

}  // namespace

const Keyword* keywordAt(std::string_view line) {
  line = withoutBlanks(line.substr(0, line.find('\n')));
  const std::string_view word = line.substr(0, line.find_first_of(wordEnds));
  if (const Keyword* known = keywordNamed(word)) return known;
  return joinedKeyword(word);
}

std::string_view Scanner::restOfLine() const {
  return text_.substr(at_, text_.find('\n', at_) - at_);
}

void Scanner::advance(std::size_t bytes) {
  const std::size_t end = std::min(at_ + bytes, text_.size());
  line_ +=
      static_cast<std::size_t>(std::count(text_.begin() + static_cast<std::ptrdiff_t>(at_),
                                          text_.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
  at_ = end;
}

void Scanner::skipBlanks() { at_ = std::min(text_.find_first_not_of(blanks, at_), text_.size()); }

void Scanner::skipBlanksAndLines() {
  advance(std::min(text_.find_first_not_of(" \t\n", at_), text_.size()) - at_);
}

void Scanner::skipLine() { advance(restOfLine().size() + 1); }

void Scanner::skipStatement() {
  bool quoted = false;
  while (!atEnd()) {
    const char sign = text_[at_];
    if (sign == '"') quoted = !quoted;
    if (sign == '\\' && quoted && at_ + 1 < text_.size() && text_[at_ + 1] == '"') advance(1);
    advance(1);
    if (sign == ';' && !quoted) return;
    if (sign == '\n' && atKeywordLine(at_)) return;
  }
}

char Scanner::peek() {
  skipBlanks();
  return atEnd() ? '\n' : text_[at_];
}

char Scanner::peekOverLines() const {
  const std::size_t next = text_.find_first_not_of(" \t\n", at_);
  return next == std::string_view::npos ? '\n' : text_[next];
}

bool Scanner::take(char sign) {
  if (peek() != sign) return false;
  advance(1);
  return true;
}

void Scanner::expect(char sign, std::string_view where) {
  if (take(sign)) return;
  fail(concat("'", sign, "' is missing before ", shownNext(), " ", where));
}

std::string Scanner::word(std::string_view what) {
  skipBlanks();
  const std::size_t end = std::min(text_.find_first_of(wordEnds, at_), text_.size());
  if (end == at_) fail(concat(what, " is missing before ", shownNext()));
  std::string word(text_.substr(at_, end - at_));
  at_ = end;
  return text::asUtf8(word);
}

double Scanner::number(std::string_view what) {
  take('+');
  skipBlanks();
  double value = 0;
  const char* const begin = text_.data() + at_;
  const auto [end, error] = std::from_chars(begin, text_.data() + text_.size(), value);
  if (error == std::errc::invalid_argument || !std::isfinite(value))
    fail(concat(what, " is missing before ", shownNext()));
  if (error == std::errc::result_out_of_range) fail(concat(what, " is too large or too small"));
  at_ += static_cast<std::size_t>(end - begin);
  return value;
}

double Scanner::whole(std::string_view what, double low, double high) {
  const double value = number(what);
  if (value != std::floor(value) || value < low || value > high)
    fail(concat(what, " is ", value, ", which is no whole number from ", low, " to ", high));
  return value;
}

bool Scanner::closesStatement(std::size_t quote) const {
  const std::size_t next = text_.find_first_not_of(" \t\n", quote + 1);
  return next == std::string_view::npos || text_[next] == ';';
}

std::string Scanner::quoted(std::string_view what, bool endsStatement) {
  if (!take('"')) fail(concat(what, " in quotes is missing before ", shownNext()));
  const std::size_t begin = at_, beginLine = line_;
  std::string value;
  while (!atEnd()) {
    const char sign = text_[at_];
    const bool escaped = sign == '\\' && at_ + 1 < text_.size() && text_[at_ + 1] == '"' &&
                         !(endsStatement && closesStatement(at_ + 1));
    if (escaped) advance(1);
    if (sign == '"' && (!endsStatement || closesStatement(at_))) {
      advance(1);
      return text::asUtf8(value);
    }
    if (sign == '\n' && atKeywordLine(at_ + 1)) break;
    value += text_[at_];
    advance(1);
  }
  const std::size_t lastSign = value.find_last_not_of(" \t\n");
  if (endsStatement && lastSign != std::string::npos && value[lastSign] == '"')
    return text::asUtf8(value.substr(0, lastSign));  // only the ";" is missing
  at_ = begin;
  line_ = beginLine;
  fail(concat("the quote that closes ", what, " is missing"));
}

bool Scanner::takeSemicolon() {
  if (peekOverLines() != ';') return false;
  skipBlanksAndLines();
  return take(';');
}

void Scanner::fail(std::string text) const { throw BadStatement{line_, std::move(text)}; }

bool Scanner::atKeywordLine(std::size_t position) const {
  return position < text_.size() && keywordAt(text_.substr(position)) != nullptr;
}

std::string Scanner::shownNext() {
  skipBlanks();
  const std::string_view rest = text::trimmed(restOfLine());
  if (rest.empty()) return "the end of the line";
  constexpr std::size_t mostShown = 20;
  return concat("'", text::asUtf8(rest.substr(0, mostShown)), "'");
}

}  // namespace dbc
