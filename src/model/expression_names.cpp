#include "model/expression_names.h"

#include <algorithm>

#include "model/names.h"
#include "text/strings.h"

namespace model {
namespace {

using text::concat;

bool isNameSign(char c) { return text::isLetter(c) || text::isDigit(c) || c == '_'; }

/// Functions and operators that the list of reserved words does not have.
bool isWordOfLanguage(std::string_view name) {
  return isReservedWord(name) || text::equalsIgnoringCase(name, "Not") ||
         text::equalsIgnoringCase(name, "IIF");
}

class ExpressionReader {
 public:
  explicit ExpressionReader(std::string_view expression) : whole_(expression), rest_(expression) {}

  std::vector<NameInExpression> run() {
    while (!rest_.empty() && rest_.front() != '\'') {
      const char sign = rest_.front();
      if (text::isLetter(sign) || sign == '_')
        readName();
      else if (text::isDigit(sign))
        readNumber();
      else if (sign == '"')
        rest_.remove_prefix(std::min(rest_.find('"', 1), rest_.size() - 1) + 1);
      else if (sign == '&')  // a hexadecimal number
        rest_.remove_prefix(1), takeWhile(isNameSign);
      else
        rest_.remove_prefix(1);
    }
    return std::move(names_);
  }

 private:
  [[nodiscard]] std::size_t position() const { return whole_.size() - rest_.size(); }

  template <class Belongs>
  std::string_view takeWhile(Belongs belongs) {
    const auto end = std::find_if_not(rest_.begin(), rest_.end(), belongs);
    const std::string_view taken = rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
    rest_.remove_prefix(taken.size());
    return taken;
  }

  void readNumber() {
    takeWhile([](char c) { return text::isDigit(c) || c == '.'; });
    const bool exponent =
        !rest_.empty() && std::string_view("eEdD").find(rest_.front()) != std::string_view::npos;
    if (!exponent) return;
    rest_.remove_prefix(1);
    if (!rest_.empty() && (rest_.front() == '+' || rest_.front() == '-')) rest_.remove_prefix(1);
    takeWhile(text::isDigit);
  }

  void readName() {
    NameInExpression found;
    found.offset = position();
    found.name = takeWhile(isNameSign);
    found.stem = found.name.size();
    const bool hasMember = rest_.size() > 1 && rest_.front() == '.' && text::isLetter(rest_[1]);
    if (isWordOfLanguage(found.name) && !hasMember) return;  // its parentheses are read next
    if (hasMember) {
      rest_.remove_prefix(1);
      found.name += concat(".", takeWhile(isNameSign));
    }
    found.name += index();
    found.length = position() - found.offset;
    names_.push_back(std::move(found));
  }

  /// "(3)" or "(1,0)", taken from the expression; "()" for a computed index, which stays there to
  /// be read; "" when there is none.
  std::string index() {
    std::string_view behind = rest_;
    behind.remove_prefix(std::min(behind.find_first_not_of(" \t"), behind.size()));
    if (behind.empty() || behind.front() != '(') return "";
    const std::size_t end = behind.find(')');
    if (end == std::string_view::npos) return "()";
    std::string inside(behind.substr(1, end - 1));
    std::erase(inside, ' ');
    const bool plain = std::all_of(inside.begin(), inside.end(),
                                   [](char c) { return text::isDigit(c) || c == ','; });
    if (!plain) return "()";
    rest_ = behind.substr(end + 1);
    return concat("(", inside, ")");
  }

  std::string_view whole_, rest_;
  std::vector<NameInExpression> names_;
};

}  // namespace

std::vector<NameInExpression> namesIn(std::string_view expression) {
  return ExpressionReader(expression).run();
}

}  // namespace model
