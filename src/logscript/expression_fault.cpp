#include "logscript/expression_fault.h"

#include <algorithm>

#include "logscript/expression_parser.h"
#include "text/strings.h"

namespace logscript {
namespace {

using text::concat;

std::string argumentsText(int count) {
  return count == 1 ? "1 argument" : concat(count, " arguments");
}

std::string digitsOf(std::string_view name) {
  std::string digits;
  std::copy_if(name.begin(), name.end(), std::back_inserter(digits), text::isDigit);
  return digits;
}

class FormReader : private ExpressionParser {
 public:
  using ExpressionParser::ExpressionParser;

  std::optional<ExpressionFault> run() {
    try {
      advance();
      const std::uint32_t root = readAll();
      for (const Node& node : program_.nodes) checkNode(node);
      requireValue(program_.nodes[root]);
    } catch (const LineFault&) {
      if (!fault_) takeSyntaxFault();
    }
    return fault_;
  }

 private:
  std::uint32_t readAll() {
    if (at(TokenKind::endOfText)) refuse(0, 0, "the expression is empty; write one");
    const std::uint32_t root = expression();
    if (!at(TokenKind::endOfText)) tellRest();
    return root;
  }

  [[noreturn]] void tellRest() {
    const std::size_t length = token_.end - token_.offset;
    if (at(TokenKind::endOfLine))
      refuse(token_.offset, length, "an expression is one line; remove the line break");
    const std::string advice =
        atSymbol(')')   ? " closes nothing; remove it or write '(' where it belongs"
        : atSymbol(',') ? " stands only between the arguments of a function; remove it"
                        : " follows a value; write an operator between them";
    refuse(token_.offset, length, concat(shown(token_), advice));
  }

  /// The parser stopped at the present token.
  void takeSyntaxFault() {
    const std::vector<Finding> findings = program_.findings.sorted(program_.lineStarts);
    const Finding& first = findings.front();
    const bool here = first.offset == token_.offset && !atEndOfStatement();
    const std::size_t length = here ? token_.end - token_.offset : 0;
    fault_ = ExpressionFault{std::min<std::size_t>(first.offset, program_.text.size()), length,
                             first.text};
  }

  [[noreturn]] void refuse(std::size_t offset, std::size_t length, std::string text) {
    fault_ = ExpressionFault{offset, length, std::move(text)};
    throw LineFault{};
  }

  [[noreturn]] void refuse(const Node& node, std::string_view text) {
    const std::string_view name = program_.spelling(node.name);
    refuse(node.offset, name.size(), concat("'", name, "'", text));
  }

  void checkNode(const Node& node) {
    if (node.kind == NodeKind::index) {
      if (Names::kindOf(node.name) == WordKind::function) checkCount(node);
      for (const std::uint32_t argument : program_.arguments(node))
        requireValue(program_.nodes[argument]);
    }
    if (node.kind == NodeKind::unary) requireValue(program_.nodes[node.first]);
    if (node.kind != NodeKind::binary) return;
    requireValue(program_.nodes[node.first]);
    requireValue(program_.nodes[node.count]);
  }

  void checkCount(const Node& node) {
    const WordRow& function = wordRow(node.name);
    if (node.count == function.arguments) return;
    refuse(node, concat(" takes ", argumentsText(function.arguments), ", not ", node.count));
  }

  void requireValue(const Node& node) {
    switch (node.kind) {
      case NodeKind::text:
        refuse(node.offset, node.count + 2, "a text is no number; write a value");
      case NodeKind::wholeArray:
      case NodeKind::arrayFrom:
        refuse(node, " is a whole array; write the index of one element, like (1)");
      case NodeKind::name:
        return requireValueWord(node);
      case NodeKind::index:
        if (!isOneOf(Names::kindOf(node.name), {WordKind::name, WordKind::function}))
          refuse(node, " is a word of the language and no function; choose another");
        return;
      default:
        return;
    }
  }

  void requireValueWord(const Node& node) {
    const WordKind kind = Names::kindOf(node.name);
    if (isOneOf(kind, {WordKind::name, WordKind::boolean})) return;
    if (kind != WordKind::function) refuse(node, " is a word of the language and has no value");
    const WordRow& function = wordRow(node.name);
    if (function.arguments > 0)
      refuse(node, concat(" is a function; write ", argumentsText(function.arguments),
                          " in parentheses behind it"));
  }

  static bool isOneOf(WordKind kind, std::initializer_list<WordKind> kinds) {
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
  }

  std::optional<ExpressionFault> fault_;
};

}  // namespace

std::optional<ExpressionFault> faultInForm(std::string_view expression) {
  return FormReader(expression).run();
}

std::vector<std::string_view> functionNames() {
  std::vector<std::string_view> names;
  for (std::size_t i = 0; i < wordCount(); ++i)
    if (wordRow(i).kind == WordKind::function) names.push_back(wordRow(i).word);
  return names;
}

std::string_view closestName(std::string_view name, const std::vector<std::string_view>& names) {
  std::string_view best;
  std::size_t least = tolerance(name.size()) + 1;
  for (const std::string_view each : names) {
    const std::size_t distance = distanceBetween(name, each, least);
    if (distance >= least || digitsOf(each) != digitsOf(name)) continue;
    least = distance;
    best = each;
  }
  return best;
}

}  // namespace logscript
