#include "logscript/meaning.h"

#include <algorithm>
#include <cmath>

#include "logscript/instructions.h"
#include "text/strings.h"

namespace logscript {
namespace {

using text::concat;
using Kind = StatementKind;

constexpr long flags = 8;

bool isValueWord(WordKind kind) {
  return kind >= WordKind::boolean && kind <= WordKind::thermocouple;
}

/// Digits tell one block from another: names that differ in them are no misspellings, unless one
/// has none.
bool sameDigits(std::string_view a, std::string_view b) {
  const auto hasNone = [](std::string_view name) {
    return std::none_of(name.begin(), name.end(), text::isDigit);
  };
  if (hasNone(a) || hasNone(b)) return true;
  std::size_t i = 0, j = 0;
  for (;;) {
    while (i < a.size() && !text::isDigit(a[i])) ++i;
    while (j < b.size() && !text::isDigit(b[j])) ++j;
    if (i == a.size() || j == b.size()) return i == a.size() && j == b.size();
    if (a[i++] != b[j++]) return false;
  }
}

}  // namespace

std::string_view titleOf(SymbolKind kind) {
  switch (kind) {
    case SymbolKind::constant:
      return "a constant";
    case SymbolKind::variable:
      return "a variable";
    case SymbolKind::alias:
      return "an alias";
    case SymbolKind::table:
      return "a table";
    case SymbolKind::subroutine:
      return "a subroutine";
    case SymbolKind::none:
      break;
  }
  return "not declared";
}

std::string_view titleOf(WordKind kind) {
  switch (kind) {
    case WordKind::instruction:
      return "an instruction";
    case WordKind::function:
      return "a function";
    case WordKind::boolean:
      return "a truth value";
    case WordKind::timeUnit:
      return "a time unit";
    case WordKind::dataType:
      return "a data type";
    case WordKind::range:
      return "a range";
    case WordKind::thermocouple:
      return "a thermocouple type";
    default:
      return "a word of the language";
  }
}

Meaning::Meaning(const Program& program, Findings& findings)
    : program_(program),
      findings_(findings),
      symbols_(program.names.size()),
      facts_(program.nodes.size()) {
  for (NameId id = 0; id < program.names.size(); ++id)
    if (program.spelling(id).size() == 4 && text::equalsIgnoringCase(program.spelling(id), "Flag"))
      flag_ = id;
}

void Meaning::tell(Code code, std::uint32_t offset, std::string text) {
  findings_.add(code, offset, std::move(text));
}

std::string Meaning::quoted(NameId name) const { return concat("'", program_.spelling(name), "'"); }

std::string Meaning::shown(std::uint32_t index) const {
  const Node& node = program_.nodes[index];
  switch (node.kind) {
    case NodeKind::name:
      return quoted(node.name);
    case NodeKind::index:
      return concat("'", program_.spelling(node.name), "(...)'");
    case NodeKind::wholeArray:
    case NodeKind::arrayFrom:
      return concat("'", program_.spelling(node.name), "()'");
    case NodeKind::number:
      return text::shortest(node.number);
    case NodeKind::text:
      return "a text";
    default:
      return "the expression";
  }
}

// Declarations.

void Meaning::declareAll() {
  declaring_ = true;
  for (const Statement& statement : program_.statements) {
    if (statement.implied) continue;
    switch (statement.kind) {
      case Kind::constant:
        declareConstant(statement);
        break;
      case Kind::variable:
        declareVariable(statement);
        break;
      case Kind::alias:
        declareAlias(statement);
        break;
      case Kind::dataTable:
        declare(statement, SymbolKind::table);
        break;
      case Kind::sub:
        declare(statement, SymbolKind::subroutine);
        break;
      default:
        break;
    }
  }
  declaring_ = false;
}

void Meaning::declare(const Statement& statement, SymbolKind kind) {
  if (statement.name == noName) return;
  Symbol& symbol = symbols_[statement.name];
  if (const WordKind word = Names::kindOf(statement.name); word != WordKind::name) {
    symbol.told = true;
    return tell(Code::reservedName, statement.nameOffset,
                concat(quoted(statement.name), " is ", titleOf(word),
                       " of the language; choose another name"));
  }
  if (symbol.kind != SymbolKind::none) return declaredTwice(statement);
  symbol.kind = kind;
  symbol.offset = statement.nameOffset;
  symbol.statement = static_cast<std::uint32_t>(&statement - program_.statements.data());
}

/// Which of the two is meant stays open, so no use of the name is wrong.
void Meaning::declaredTwice(const Statement& statement) {
  Symbol& symbol = symbols_[statement.name];
  tell(Code::declaredTwice, statement.nameOffset,
       concat(quoted(statement.name), " is already ", titleOf(symbol.kind), " of line ",
              program_.line(symbol.offset), "; remove or rename one of them"));
  if (symbol.kind == SymbolKind::table || symbol.kind == SymbolKind::subroutine) return;
  symbol.kind = SymbolKind::variable;
  symbol.dimensions = Symbol::unknownDimensions;
}

void Meaning::declareAlias(const Statement& statement) {
  declare(statement, SymbolKind::alias);
  Symbol& alias = symbols_[statement.name];
  if (alias.kind != SymbolKind::alias || alias.offset != statement.nameOffset) return;
  if (statement.count != 1) return;
  const NameId variable = node(program_.expressions(statement)[0]).name;
  if (variable == noName || symbols_[variable].kind != SymbolKind::variable) return;
  alias.nextAlias = symbols_[variable].firstAlias;
  symbols_[variable].firstAlias = statement.name;
}

void Meaning::declareConstant(const Statement& statement) {
  evaluate(statement);
  declare(statement, SymbolKind::constant);
  Symbol& symbol = symbols_[statement.name];
  if (statement.count != 1 || symbol.offset != statement.nameOffset) return;
  const std::uint32_t value = program_.expressions(statement)[0];
  symbol.value = facts_[value].value;
  symbol.word = word(value);
  if (!facts_[value].constant && !facts_[value].broken)
    wrongKind(value, concat(shown(value), " is known only when the program runs, and ",
                            quoted(statement.name), " is a constant; declare it with Dim"));
}

void Meaning::declareVariable(const Statement& statement) {
  evaluate(statement);
  declare(statement, SymbolKind::variable);
  Symbol& symbol = symbols_[statement.name];
  if (symbol.offset != statement.nameOffset || symbol.kind != SymbolKind::variable) return;
  symbol.dimensions = statement.faulty ? Symbol::unknownDimensions
                                       : static_cast<std::uint8_t>(std::min(statement.count, 200U));
  std::size_t i = 0;
  for (const std::uint32_t size : program_.expressions(statement)) {
    if (!facts_[size].constant && !facts_[size].broken)
      wrongKind(size, concat(shown(size), " is known only when the program runs; the size of ",
                             quoted(statement.name), " has to be a constant"));
    const std::optional<long> length = whole(size);
    if (length && *length < 1)
      tell(Code::indexRange, node(size).offset,
           concat(quoted(statement.name), " has ", *length, " elements; give it 1 or more"));
    if (i < symbol.sizes.size() && length)
      symbol.sizes[i] = static_cast<std::int32_t>(std::clamp(*length, 1L, 1'000'000'000L));
    ++i;
  }
}

// Expressions. Operands come before what they belong to.

void Meaning::evaluate(const Statement& statement) {
  marking_ = statement.kind != Kind::alias && statement.kind != Kind::units;
  for (std::uint32_t i = statement.firstNode; i < statement.endNode; ++i) work(i);
  marking_ = true;
}

void Meaning::work(std::uint32_t index) {
  Fact& fact = facts_[index];
  switch (node(index).kind) {
    case NodeKind::number:
      fact.value = node(index).number;
      fact.constant = true;
      return;
    case NodeKind::text:
      fact.constant = true;
      return;
    case NodeKind::name:
      return workName(index);
    case NodeKind::index:
      return workIndexed(index);
    case NodeKind::wholeArray:
    case NodeKind::arrayFrom:
      return workArray(index);
    case NodeKind::field:
      return workField(index);
    case NodeKind::unary:
      return workUnary(index);
    case NodeKind::binary:
      return workBinary(index);
  }
}

void Meaning::workName(std::uint32_t index) {
  const NameId name = node(index).name;
  const WordKind kind = Names::kindOf(name);
  Fact& fact = facts_[index];
  if (kind == WordKind::name) return workSymbol(index);
  if (symbols_[name].told) {
    fact.broken = true;
    return;
  }
  if (isValueWord(kind)) {
    fact.constant = true;
    if (kind == WordKind::boolean) fact.value = folded(program_.spelling(name)[0]) == 't' ? -1 : 0;
  } else if (kind != WordKind::function || wordRow(name).arguments > 0) {
    wrongKind(index,
              concat(quoted(name), " is ", titleOf(kind), ", and a value belongs here; write one"));
  }
}

void Meaning::workSymbol(std::uint32_t index) {
  Symbol& symbol = symbols_[node(index).name];
  if (symbol.kind == SymbolKind::none) return undeclared(index);
  if (marking_) symbol.used = true;
  if (symbol.kind != SymbolKind::constant) return;
  facts_[index].constant = true;
  facts_[index].value = symbol.value;
}

void Meaning::workIndexed(std::uint32_t index) {
  const NameId name = node(index).name;
  for (const std::uint32_t argument : program_.arguments(node(index)))
    if (!requireValue(argument)) facts_[index].broken = true;
  if (Names::kindOf(name) == WordKind::function) return workFunction(index);
  workArray(index);
}

void Meaning::workFunction(std::uint32_t index) {
  const WordRow& function = wordRow(node(index).name);
  if (node(index).count == function.arguments) return;
  facts_[index].broken = true;
  tell(Code::argumentCount, node(index).offset,
       concat(function.word, " takes ", int{function.arguments}, " arguments, not ",
              node(index).count, "; correct its list"));
}

/// "X(1)", "X()" or "X(1)()".
void Meaning::workArray(std::uint32_t index) {
  const Node& array = node(index);
  const WordKind word = Names::kindOf(array.name);
  facts_[index].broken = symbols_[array.name].told;
  if (facts_[index].broken) return;
  if (word != WordKind::name)
    return wrongKind(index, concat(quoted(array.name), " is ", titleOf(word),
                                   ", no array; a value belongs here"));
  Symbol& symbol = symbols_[array.name];
  if (symbol.kind == SymbolKind::none) return undeclared(index);
  if (marking_) symbol.used = true;
  if (symbol.kind != SymbolKind::variable)
    return wrongKind(index, concat(quoted(array.name), " is ", titleOf(symbol.kind), " (line ",
                                   program_.line(symbol.offset),
                                   ") and has no elements; write it without parentheses"));
  if (symbol.dimensions == Symbol::unknownDimensions) return;
  checkIndexes(index, symbol);
}

void Meaning::checkIndexes(std::uint32_t index, const Symbol& symbol) {
  const Node& array = node(index);
  const bool partly = !marking_ && array.count < symbol.dimensions;  // a name for a whole row
  if (symbol.dimensions == 0 ||
      (array.kind != NodeKind::wholeArray && !partly && array.count != symbol.dimensions)) {
    facts_[index].broken = true;
    return tell(Code::indexCount, array.offset,
                concat(quoted(array.name), " has ", int{symbol.dimensions}, " dimensions (line ",
                       program_.line(symbol.offset), ") and ",
                       array.kind == NodeKind::wholeArray ? std::string("none is an array")
                                                          : concat(array.count, " indexes here"),
                       "; correct one of the two"));
  }
  std::size_t i = 0;
  for (const std::uint32_t argument : program_.arguments(array)) {
    if (i < symbol.sizes.size()) checkIndex(array, argument, symbol.sizes[i]);
    ++i;
  }
}

void Meaning::checkIndex(const Node& array, std::uint32_t argument, long size) {
  const Fact& fact = facts_[argument];
  double low = fact.value, high = fact.value;
  if (const LoopRange* range = rangeOf(argument)) {
    low = range->low;
    high = range->high;
  }
  if (std::isnan(low)) return;
  const bool isFlag = array.name == flag_;
  const long most = isFlag ? flags : size;
  if (low >= 1 && (most < 0 || high <= static_cast<double>(most))) return;
  const double wrong = low < 1 ? low : high;
  if (isFlag)
    return tell(Code::flagNumber, node(argument).offset,
                concat("there is no flag ", wrong, "; flags are 1 to ", flags));
  tell(Code::indexRange, node(argument).offset,
       concat("index ", wrong, " is outside ", quoted(array.name),
              most < 0 ? std::string() : concat(", which has 1 to ", most), "; correct the index",
              " or the declaration"));
}

const Meaning::LoopRange* Meaning::rangeOf(std::uint32_t index) const {
  if (node(index).kind != NodeKind::name) return nullptr;
  for (auto loop = loops.rbegin(); loop != loops.rend(); ++loop)
    if (loop->variable == node(index).name) return loop->certain ? &*loop : nullptr;
  return nullptr;
}

void Meaning::workField(std::uint32_t index) {
  const Node& field = node(index);
  Symbol& table = symbols_[field.name];
  for (const std::uint32_t argument : program_.arguments(field)) requireValue(argument);
  facts_[index].broken = true;  // until it is known to be right
  if (Names::kindOf(field.name) != WordKind::name || (table.kind == SymbolKind::none)) {
    if (table.told || program_.impliedTable) return;
    table.told = true;
    return tell(Code::unknownTable, field.offset,
                concat("there is no table ", quoted(field.name),
                       guess(field.name, "; declare it with DataTable")));
  }
  if (table.kind != SymbolKind::table)
    return tell(Code::wrongKind, field.offset,
                concat(quoted(field.name), " is ", titleOf(table.kind), " (line ",
                       program_.line(table.offset), ") and only a table has fields; name a table"));
  if (field.count != 2)
    return tell(
        Code::argumentCount, field.offset,
        concat("a field has 2 numbers, not ", field.count, "; write ",
               program_.spelling(field.name), ".", program_.spelling(field.field), "(1,1)"));
  if (!hasField(table, program_.spelling(field.field)))
    return tell(Code::unknownField, field.offset,
                concat("table ", quoted(field.name), " has no field ", quoted(field.field),
                       "; name a value that an instruction of the table stores"));
  facts_[index].broken = false;
}

bool Meaning::hasField(const Symbol& table, std::string_view field) const {
  for (const std::string_view own : {"Record", "TableSize"})
    if (text::equalsIgnoringCase(field, own)) return true;
  const Statement& block = program_.statements[table.statement];
  if (block.faulty) return true;
  for (std::uint32_t i = table.statement + 1; i < block.end; ++i)
    if (isFieldOf(program_.statements[i], field)) return true;
  return false;
}

/// A value is stored under the name of its source, or what FieldNames says, and a suffix.
bool Meaning::isFieldOf(const Statement& output, std::string_view field) const {
  if (output.kind != Kind::invoke) return false;
  for (const std::uint32_t argument : program_.expressions(output)) {
    const Node& part = node(argument);
    if (part.kind == NodeKind::text &&
        text::containsIgnoringCase(program_.text.substr(part.first, part.count), field))
      return true;
    if (part.name != noName && namesField(part.name, field)) return true;
  }
  return false;
}

bool Meaning::namesField(NameId source, std::string_view field) const {
  const auto fits = [&](std::string_view name) {
    return text::equalsIgnoringCase(field.substr(0, name.size()), name) &&
           (field.size() == name.size() || field[name.size()] == '_');
  };
  if (fits(program_.spelling(source))) return true;
  for (NameId alias = symbols_[source].firstAlias; alias != noName;
       alias = symbols_[alias].nextAlias)
    if (fits(program_.spelling(alias))) return true;
  return false;
}

void Meaning::workUnary(std::uint32_t index) {
  const Node& unary = node(index);
  Fact& fact = facts_[index];
  fact.broken = !requireValue(unary.first);
  const Fact& operand = facts_[unary.first];
  fact.constant = operand.constant;
  fact.value = unary.op == Operator::minus      ? -operand.value
               : unary.op == Operator::negation ? (operand.value == 0 ? -1.0 : 0.0)
                                                : operand.value;
  if (std::isnan(operand.value)) fact.value = operand.value;
}

void Meaning::workBinary(std::uint32_t index) {
  const Node& binary = node(index);
  Fact& fact = facts_[index];
  const bool left = requireValue(binary.first), right = requireValue(binary.count);
  fact.broken = !left || !right;
  const Fact &a = facts_[binary.first], &b = facts_[binary.count];
  fact.constant = a.constant && b.constant;
  const bool divides = binary.op == Operator::divide || binary.op == Operator::wholeDivide ||
                       binary.op == Operator::modulo;
  if (divides && b.constant && b.value == 0) {
    fact.broken = true;
    return tell(
        Code::zeroDivisor, node(binary.count).offset,
        concat("the divisor ", shown(binary.count), " is always 0; divide by something else"));
  }
  if (fact.constant) fact.value = result(binary.op, a.value, b.value);
}

double Meaning::result(Operator op, double a, double b) const {
  const auto truth = [](bool is) { return is ? -1.0 : 0.0; };
  if (std::isnan(a) || std::isnan(b)) return std::numeric_limits<double>::quiet_NaN();
  switch (op) {
    case Operator::add:
      return a + b;
    case Operator::subtract:
      return a - b;
    case Operator::multiply:
      return a * b;
    case Operator::divide:
      return a / b;
    case Operator::wholeDivide:
      return std::trunc(a / b);
    case Operator::modulo:
      return std::fmod(a, b);
    case Operator::power:
      return std::pow(a, b);
    case Operator::equal:
      return truth(a == b);
    case Operator::notEqual:
      return truth(a != b);
    case Operator::less:
      return truth(a < b);
    case Operator::lessOrEqual:
      return truth(a <= b);
    case Operator::greater:
      return truth(a > b);
    case Operator::greaterOrEqual:
      return truth(a >= b);
    default:
      return std::numeric_limits<double>::quiet_NaN();
  }
}

// Questions.

std::optional<long> Meaning::whole(std::uint32_t index) const {
  const Fact& fact = facts_[index];
  if (!fact.constant || !(std::fabs(fact.value) < 1e9)) return {};
  return std::lround(fact.value);
}

NameId Meaning::word(std::uint32_t index) const {
  if (node(index).kind != NodeKind::name) return noName;
  const NameId name = node(index).name;
  if (isValueWord(Names::kindOf(name))) return name;
  return symbols_[name].kind == SymbolKind::constant ? symbols_[name].word : noName;
}

std::optional<long> Meaning::valuesFrom(std::uint32_t index) const {
  const Node& place = node(index);
  if (place.name == noName || facts_[index].broken) return {};
  const Symbol& symbol = symbols_[place.name];
  if (symbol.kind == SymbolKind::alias) {
    const Statement& alias = program_.statements[symbol.statement];
    if (alias.count != 1) return {};
    const std::uint32_t target = program_.expressions(alias)[0];
    const bool direct =
        node(target).name != noName && symbols_[node(target).name].kind == SymbolKind::variable;
    return direct ? valuesFrom(target) : std::nullopt;
  }
  if (symbol.kind != SymbolKind::variable || symbol.dimensions > 3) return {};
  if (symbol.dimensions == 0) return 1;
  if (symbol.sizes[0] < 0 || place.kind == NodeKind::name) return {};
  if (place.kind == NodeKind::wholeArray) return symbol.sizes[0];
  const std::optional<long> first =
      place.count == 1 ? whole(program_.arguments(place)[0]) : std::nullopt;
  if (!first) return {};
  return symbol.sizes[0] - *first + 1;
}

// Demands.

void Meaning::wrongKind(std::uint32_t index, std::string text) {
  facts_[index].broken = true;
  tell(Code::wrongKind, node(index).offset, std::move(text));
}

bool Meaning::requireValue(std::uint32_t index) {
  const Node& value = node(index);
  if (facts_[index].broken) return false;
  if (value.kind == NodeKind::text) {
    wrongKind(index, "a text stands where a value belongs; write a number or a variable");
    return false;
  }
  if (value.kind == NodeKind::wholeArray || value.kind == NodeKind::arrayFrom) {
    wrongKind(index, concat(shown(index), " is a whole array; name one element, such as ",
                            program_.spelling(value.name), "(1)"));
    return false;
  }
  if (value.kind != NodeKind::name) return true;
  if (const NameId which = word(index);
      which != noName && Names::kindOf(which) != WordKind::boolean) {
    wrongKind(index, concat(shown(index), " is ", titleOf(Names::kindOf(which)),
                            ", and a value belongs here; write one"));
    return false;
  }
  const Symbol& symbol = symbols_[value.name];
  const bool array = symbol.kind == SymbolKind::variable && symbol.dimensions > 0 &&
                     symbol.dimensions != Symbol::unknownDimensions;
  if (!array && symbol.kind != SymbolKind::table && symbol.kind != SymbolKind::subroutine)
    return true;
  wrongKind(index, concat(shown(index), " is ", array ? "an array" : titleOf(symbol.kind),
                          " (line ", program_.line(symbol.offset), "), and a value belongs here; ",
                          array ? "name one element" : "write one"));
  return false;
}

bool Meaning::isWritable(std::uint32_t index) const {
  const Node& target = node(index);
  if (target.name == noName || target.kind == NodeKind::field) return false;
  const Symbol& symbol = symbols_[target.name];
  return symbol.kind == SymbolKind::alias || symbol.kind == SymbolKind::variable;
}

void Meaning::requireElement(std::uint32_t index) {
  if (facts_[index].broken) return;
  if (!isWritable(index)) {
    const Node& target = node(index);
    const SymbolKind kind = target.name == noName ? SymbolKind::none : symbols_[target.name].kind;
    return wrongKind(index, concat(shown(index),
                                   kind == SymbolKind::none ? std::string()
                                                            : concat(" is ", titleOf(kind), " and"),
                                   " can't be given a value; name a variable or an element"));
  }
  requireValue(index);
}

// Misspellings.

void Meaning::undeclared(std::uint32_t index) {
  facts_[index].broken = true;
  Symbol& symbol = symbols_[node(index).name];
  if (symbol.told) return;
  symbol.told = true;
  const std::string_view advice =
      declaring_ ? "; declare it above this line" : "; declare it with Dim, Public or Const";
  tell(Code::undeclaredName, node(index).offset,
       concat(quoted(node(index).name), " is not declared", guess(node(index).name, advice)));
}

NameId Meaning::closest(NameId name) {
  const std::string_view spelling = program_.spelling(name);
  NameId best = noName;
  std::size_t least = tolerance(spelling.size()) + 1;
  for (NameId id = keywordCount; id < symbols_.size() && least > 1; ++id) {
    if (symbols_[id].kind == SymbolKind::none && !isValueWord(Names::kindOf(id)) &&
        Names::kindOf(id) != WordKind::function)
      continue;
    const std::size_t distance = distanceBetween(spelling, program_.spelling(id), least - 1);
    if (distance >= least || !sameDigits(spelling, program_.spelling(id))) continue;
    least = distance;
    best = id;
  }
  if (best != noName) symbols_[best].used = true;
  return best;
}

std::string Meaning::guess(NameId name, std::string_view advice) {
  const NameId meant = closest(name);
  return meant == noName ? std::string(advice) : concat("; did you mean ", quoted(meant), "?");
}

}  // namespace logscript
