#include "verify/expression_variables.h"

#include <algorithm>

#include "model/names.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace verify {
namespace {

using text::concat;

bool isNameSign(char c) { return text::isLetter(c) || text::isDigit(c) || c == '_'; }

/// Functions and operators that the list of reserved words does not have.
bool isWordOfLanguage(std::string_view name) {
  return model::isReservedWord(name) || text::equalsIgnoringCase(name, "Not") ||
         text::equalsIgnoringCase(name, "IIF");
}

class ExpressionReader {
 public:
  explicit ExpressionReader(std::string_view expression) : rest_(expression) {}

  std::vector<std::string> run() {
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
    return std::move(variables_);
  }

 private:
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
    std::string name(takeWhile(isNameSign));
    const bool hasMember = rest_.size() > 1 && rest_.front() == '.' && text::isLetter(rest_[1]);
    if (isWordOfLanguage(name) && !hasMember) return;  // what its parentheses hold is read next
    if (hasMember) {
      rest_.remove_prefix(1);
      name += concat(".", takeWhile(isNameSign));
    }
    name += index();
    if (std::find(variables_.begin(), variables_.end(), name) == variables_.end())
      variables_.push_back(std::move(name));
  }

  /// "(3)" or "(1,0)", taken from the expression; "()" for a computed index, which stays there to
  /// be read; "" when there is none.
  std::string index() {
    const std::string_view behind = text::trimmed(rest_);
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

  std::string_view rest_;
  std::vector<std::string> variables_;
};

}  // namespace

std::vector<std::string> variablesIn(std::string_view expression) {
  return ExpressionReader(expression).run();
}

unsigned flagsIn(std::string_view expression) {
  constexpr std::string_view word = "Flag(";
  unsigned flags = 0;
  for (const std::string& variable : variablesIn(expression)) {
    if (!text::equalsIgnoringCase(variable.substr(0, word.size()), word)) continue;
    const auto flag = text::integerWithin(text::readNumber(variable.substr(word.size())), 0, 100);
    if (flag >= 1 && flag <= static_cast<std::int64_t>(model::maxFlags)) flags |= 1U << (flag - 1);
  }
  return flags;
}

std::string variableOf(const model::Condition& condition) {
  const std::string_view name = text::trimmed(condition.MeasVar);
  const bool indexed =
      condition.VarIdx > 0 && !name.empty() && name.find('(') == std::string_view::npos;
  return indexed ? concat(name, "(", condition.VarIdx, ")") : std::string(name);
}

}  // namespace verify
