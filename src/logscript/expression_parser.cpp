#include "logscript/expression_parser.h"

#include "text/strings.h"

namespace logscript {
namespace {

using text::concat;

constexpr int maxDepth = 100;
constexpr int negationBinding = 3, comparison = 4, additive = 5, multiplicative = 6, power = 8;

struct Binary {
  Operator op = Operator::none;
  int binding = -1;
};

Binary binaryOfSymbol(char symbol) {
  switch (symbol) {
    case '+':
      return {Operator::add, additive};
    case '-':
      return {Operator::subtract, additive};
    case '*':
      return {Operator::multiply, multiplicative};
    case '/':
      return {Operator::divide, multiplicative};
    case '\\':
      return {Operator::wholeDivide, multiplicative};
    case '^':
      return {Operator::power, power};
    case '=':
      return {Operator::equal, comparison};
    case '<':
      return {Operator::less, comparison};
    case '>':
      return {Operator::greater, comparison};
    case Sign::lessOrEqual:
      return {Operator::lessOrEqual, comparison};
    case Sign::greaterOrEqual:
      return {Operator::greaterOrEqual, comparison};
    case Sign::notEqual:
      return {Operator::notEqual, comparison};
    default:
      return {};
  }
}

Binary binaryOf(const Token& token) {
  if (token.kind == TokenKind::symbol) return binaryOfSymbol(token.symbol);
  if (token.kind != TokenKind::name) return {};
  if (token.name == idOf(Word::And)) return {Operator::conjunction, 2};
  if (token.name == idOf(Word::Or)) return {Operator::disjunction, 1};
  if (token.name == idOf(Word::Xor)) return {Operator::exclusive, 1};
  if (token.name == idOf(Word::Mod)) return {Operator::modulo, multiplicative};
  return {};
}

Node nodeAt(const Token& token, NodeKind kind) {
  Node node;
  node.kind = kind;
  node.offset = token.offset;
  node.name = token.name;
  node.number = token.number;
  return node;
}

}  // namespace

ExpressionParser::ExpressionParser(std::string_view text)
    : lexer_(text, program_.names, program_.lineStarts) {
  program_.text = text;
  program_.nodes.reserve(text.size() / 12 + 16);
  program_.lists.reserve(text.size() / 16 + 16);
  program_.statements.reserve(text.size() / 40 + 16);
}

bool ExpressionParser::take(char symbol) {
  if (!atSymbol(symbol)) return false;
  advance();
  return true;
}

void ExpressionParser::expect(char symbol, std::string_view where) {
  if (!take(symbol))
    fail(token_, concat("'", symbol, "' is missing before ", shown(token_), " in ", where,
                        "; write it there"));
}

bool ExpressionParser::atEndOfStatement() const {
  return at(TokenKind::endOfLine) || at(TokenKind::endOfText) || atSymbol(':');
}

std::string ExpressionParser::shown(const Token& token) const {
  if (token.kind == TokenKind::endOfLine || token.kind == TokenKind::endOfText)
    return "the end of the line";
  const std::string_view written = program_.text.substr(token.offset, token.end - token.offset);
  return concat("'", text::asUtf8(written.substr(0, 40)), "'");
}

void ExpressionParser::fail(const Token& at, std::string text) {
  program_.findings.add(Code::syntax, at.offset, std::move(text));
  throw LineFault{};
}

std::uint32_t ExpressionParser::add(const Node& node) {
  program_.nodes.push_back(node);
  return static_cast<std::uint32_t>(program_.nodes.size() - 1);
}

std::uint32_t ExpressionParser::expression(int leastBinding) {
  if (++depth_ > maxDepth) {
    program_.findings.add(Code::tooDeep, token_.offset,
                          concat("the expression is nested more than ", maxDepth,
                                 " levels deep; work out parts of it in variables"));
    throw LineFault{};
  }
  std::uint32_t left = primary();
  for (Binary next = binaryOf(token_); next.binding > leastBinding; next = binaryOf(token_)) {
    Node node = nodeAt(token_, NodeKind::binary);
    node.op = next.op;
    node.offset = program_.nodes[left].offset;
    advance();
    node.first = left;
    node.count = expression(next.binding);
    left = add(node);
  }
  --depth_;
  return left;
}

std::uint32_t ExpressionParser::primary() {
  const Token token = token_;
  if (atSymbol('-')) return unary(Operator::minus, power - 1);
  if (atSymbol('+')) return unary(Operator::none, power - 1);
  if (atWord(Word::Not)) return unary(Operator::negation, negationBinding);
  if (atSymbol('(')) return parenthesised();
  if (at(TokenKind::name) && !(token.name < keywordCount)) {
    advance();
    return reference(token);
  }
  Node node = nodeAt(token, at(TokenKind::text) ? NodeKind::text : NodeKind::number);
  if (!at(TokenKind::number) && !at(TokenKind::text))
    fail(token, concat("a value is missing before ", shown(token), "; write it there"));
  node.first = token.offset + 1;
  node.count = token.end - token.offset - 2;
  advance();
  return add(node);
}

std::uint32_t ExpressionParser::unary(Operator op, int binding) {
  Node node = nodeAt(token_, NodeKind::unary);
  node.op = op;
  advance();
  node.first = expression(binding);
  return add(node);
}

std::uint32_t ExpressionParser::parenthesised() {
  advance();
  const std::uint32_t inner = expression();
  expect(')', "the expression");
  return inner;
}

void ExpressionParser::argumentList() {
  do scratch_.push_back(expression());
  while (take(','));
  expect(')', "the list");
}

void ExpressionParser::takeArguments(Node& node) {
  const std::size_t base = scratch_.size();
  argumentList();
  node.first = static_cast<std::uint32_t>(program_.lists.size());
  node.count = static_cast<std::uint32_t>(scratch_.size() - base);
  program_.lists.insert(program_.lists.end(), scratch_.begin() + static_cast<std::ptrdiff_t>(base),
                        scratch_.end());
  scratch_.resize(base);
}

void ExpressionParser::takeField(Node& node) {
  node.kind = NodeKind::field;
  if (!at(TokenKind::name))
    fail(token_, concat("the name of a field is missing before ", shown(token_),
                        "; write Table.Field(1,0)"));
  node.field = token_.name;
  advance();
  if (take('(')) takeArguments(node);
}

std::uint32_t ExpressionParser::reference(const Token& name) {
  Node node = nodeAt(name, NodeKind::name);
  if (take('.')) {
    takeField(node);
  } else if (take('(')) {
    node.kind = NodeKind::wholeArray;
    if (take(')')) return add(node);
    node.kind = NodeKind::index;
    takeArguments(node);
    if (take('(')) {
      node.kind = NodeKind::arrayFrom;
      expect(')', "an array from an element on");
    }
  }
  return add(node);
}

}  // namespace logscript
