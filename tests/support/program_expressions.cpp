#include "support/program_expressions.h"

#include <algorithm>
#include <numeric>

#include "support/program_instructions.h"

namespace support {
namespace {

constexpr std::string_view operators[] = {"+",  "-",  "*",  "/",   "^",  "=",   "<",  ">",
                                          "<=", ">=", "<>", "and", "or", "xor", "mod"};

bool isOperator(const Token& token) {
  return token.kind != TokenKind::text &&
         std::find(std::begin(operators), std::end(operators), token.text) != std::end(operators);
}

std::optional<double> result(const std::optional<double>& a, const std::string& sign,
                             const std::optional<double>& b) {
  if (!a || !b) return std::nullopt;
  if (sign == "+") return *a + *b;
  if (sign == "-") return *a - *b;
  return std::nullopt;
}

}  // namespace

std::size_t elementsOf(const Symbol& symbol) {
  return std::accumulate(symbol.dimensions.begin(), symbol.dimensions.end(), std::size_t{1},
                         std::multiplies<>());
}

Symbol* Scope::find(const std::string& name) {
  const auto found = symbols.find(name);
  return found == symbols.end() ? nullptr : &found->second;
}

std::string Scope::variableOf(const std::string& name) {
  const Symbol* symbol = find(name);
  return symbol && symbol->kind == SymbolKind::alias ? symbol->target : name;
}

Token ExpressionReader::take() {
  Token token = peek();
  if (!atEnd()) ++next_;
  return token;
}

bool ExpressionReader::takeIf(std::string_view text) {
  if (!at(text)) return false;
  take();
  return true;
}

void ExpressionReader::expect(std::string_view text) {
  if (takeIf(text)) return;
  scope_.fault("'" + std::string(text) + "' is missing before '" + peek().text + "'");
  skipLine();
}

Value ExpressionReader::expression() {
  Value value = operand();
  while (isOperator(peek())) {
    const std::string sign = take().text;
    const Value right = operand();
    Value combined;
    combined.number = result(value.number, sign, right.number);
    value = combined;
  }
  return value;
}

Value ExpressionReader::operand() {
  if (takeIf("not")) return operand();
  if (takeIf("-")) {
    Value negated;
    negated.number = result(0.0, "-", operand().number);
    return negated;
  }
  if (takeIf("(")) {
    Value inner = expression();
    expect(")");
    return inner;
  }
  const Token token = take();
  if (token.kind == TokenKind::name) return named(token.text);
  Value value;
  if (token.kind == TokenKind::number) value.number = token.number;
  if (token.kind == TokenKind::sign || token.kind == TokenKind::end)
    scope_.fault("a value is missing before '" + token.text + "'");
  return value;
}

Value ExpressionReader::named(const std::string& name) {
  if (const int count = argumentsOfFunction(name); count >= 0) {
    if (arguments().size() != static_cast<std::size_t>(count))
      scope_.fault("function " + name + " has another number of arguments");
    return {};
  }
  Value value;
  if (const Symbol* symbol = scope_.find(name)) {
    if (symbol->kind == SymbolKind::table) return tableColumn(name, *symbol);
    if (symbol->kind != SymbolKind::constant) {
      scope_.uses.emplace(scope_.variableOf(name), scope_.line);
      return variable(name, *symbol);
    }
    value.number = symbol->number;
    value.word = symbol->word;
  } else if (!kindOfWord(name).empty()) {
    value.word = name;
  } else {
    scope_.fault("'" + name + "' is not declared");
    if (at("(")) arguments();
  }
  return value;
}

Value ExpressionReader::variable(const std::string& name, const Symbol& symbol, bool rowAllowed) {
  Value value;
  value.symbol = &symbol;
  value.name = name;
  if (at("("))
    for (const Value& index : arguments()) value.indexes.push_back(index.number);
  else
    return value;
  value.whole = value.indexes.empty();
  if (!value.whole) checkIndexes(value, rowAllowed);
  if (takeIf("(")) {  // the part of an array that begins at an element: "X(1)()"
    expect(")");
    value.whole = true;
  }
  return value;
}

void ExpressionReader::checkIndexes(const Value& value, bool rowAllowed) {
  const auto& dimensions = value.symbol->dimensions;
  const std::size_t count = value.indexes.size();
  if (count > dimensions.size() || (count < dimensions.size() && !rowAllowed))
    return scope_.fault("'" + value.name + "' has another number of dimensions");
  for (std::size_t i = 0; i < count; ++i)
    if (value.indexes[i] &&
        (*value.indexes[i] < 1 || *value.indexes[i] > static_cast<double>(dimensions[i])))
      scope_.fault("an index of '" + value.name + "' is out of bounds");
}

Value ExpressionReader::tableColumn(const std::string& name, const Symbol& table) {
  if (!at(".")) return variable(name, table);
  take();
  const std::string column = take().text;
  const std::vector<Value> indexes = arguments();
  if (indexes.size() != 2) scope_.fault("a table column has two indexes");
  if (column == "record" || column == "tablesize") return {};
  const auto found = table.columns.find(column);
  if (found == table.columns.end())
    scope_.fault("table " + name + " has no column '" + column + "'");
  else if (!indexes.empty() && indexes[0].number &&
           *indexes[0].number > static_cast<double>(found->second))
    scope_.fault("column '" + column + "' has fewer values");
  return {};
}

std::vector<Value> ExpressionReader::arguments() {
  std::vector<Value> values;
  expect("(");
  if (takeIf(")") || atEnd()) return values;
  do {
    values.push_back(expression());
    // Inside a loop the variable stands for its highest value, so that bounds can be checked.
    const auto bound = scope_.loopBounds.find(values.back().name);
    if (bound != scope_.loopBounds.end()) values.back().number = bound->second;
  } while (takeIf(","));
  expect(")");
  return values;
}

Value ExpressionReader::reference(bool rowAllowed) {
  const Token token = take();
  const Symbol* symbol = scope_.find(token.text);
  if (!symbol || (symbol->kind != SymbolKind::variable && symbol->kind != SymbolKind::alias)) {
    scope_.fault("'" + token.text + "' is no variable");
    if (at("(")) arguments();
    return {};
  }
  return variable(token.text, *symbol, rowAllowed);
}

}  // namespace support
