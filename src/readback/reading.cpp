#include "readback/reading.h"

#include <algorithm>
#include <cmath>

#include "logscript/arguments.h"
#include "text/strings.h"

namespace readback {
namespace {

using logscript::NameId;
using logscript::Names;
using logscript::Node;
using logscript::NodeKind;
using logscript::Operator;
using logscript::Statement;
using logscript::SymbolKind;
using logscript::WordKind;
using text::concat;
using Kind = logscript::StatementKind;

constexpr int atom = 100;

/// An expression with its constants worked out.
struct Value {
  std::string text;
  double number = std::nan("");
  int binding = atom;  // of its last operator: the higher, the closer
};

Value numeric(double number) { return {text::shortest(number), number}; }

struct Sign {
  std::string_view text;
  int binding;
};

const Sign& signOf(Operator op) {
  static constexpr Sign signs[] = {
      {"", atom},   {" + ", 5},  {" - ", 5},   {" * ", 8},  {" / ", 8},  {" \\ ", 7}, {" Mod ", 6},
      {" ^ ", 10},  {" = ", 4},  {" <> ", 4},  {" < ", 4},  {" <= ", 4}, {" > ", 4},  {" >= ", 4},
      {" And ", 2}, {" Or ", 1}, {" Xor ", 1}, {"Not ", 3}, {"-", 9}};
  return signs[static_cast<std::size_t>(op)];
}

/// Expressions of one program as text in one spelling. Operands come before what they belong to,
/// so that no depth of nesting matters.
class Expressions {
 public:
  Expressions(const logscript::Program& program, const Items& known)
      : program_(program),
        known_(known),
        meaning_(program, ignored_),
        values_(program.nodes.size()) {
    meaning_.declareAll();
    for (std::uint32_t i = 0; i < program.nodes.size(); ++i) values_[i] = valueOf(program.nodes[i]);
  }

  /// The text of an expression; once.
  std::string take(std::uint32_t index) { return std::move(values_[index].text); }

  [[nodiscard]] std::string_view spelling(NameId name) const {
    return name == logscript::noName ? std::string_view() : program_.spelling(name);
  }

 private:
  Value valueOf(const Node& node) {
    switch (node.kind) {
      case NodeKind::number:
        return numeric(node.number);
      case NodeKind::text:
        return {concat("\"", program_.text.substr(node.first, node.count), "\"")};
      case NodeKind::name:
        return named(node.name);
      case NodeKind::index:
        return {concat(spelling(node.name), "(", list(node), ")")};
      case NodeKind::wholeArray:
        return {concat(spelling(node.name), "()")};
      case NodeKind::arrayFrom:
        return {concat(spelling(node.name), "(", list(node), ")()")};
      case NodeKind::field:
        return {concat(spelling(node.name), ".", spelling(node.field), "(", list(node), ")")};
      case NodeKind::unary:
        return unary(node);
      case NodeKind::binary:
        return binary(node);
    }
    return {};
  }

  Value named(NameId name) {
    const logscript::Symbol& symbol = meaning_.symbol(name);
    if (Names::kindOf(name) != WordKind::name || symbol.kind != SymbolKind::constant)
      return {std::string(spelling(name))};
    const auto known = known_.find(text::lower(spelling(name)));
    if (known != known_.end() && known->second.parts.size() == 1)
      return fromText(known->second.parts.front());
    if (symbol.word != logscript::noName) return {std::string(spelling(symbol.word))};
    return std::isnan(symbol.value) ? Value{std::string(spelling(name))} : numeric(symbol.value);
  }

  static Value fromText(const std::string& text) {
    return {text, text::isNumber(text) ? text::readNumber(text) : std::nan("")};
  }

  std::string list(const Node& node) {
    std::string out;
    for (const std::uint32_t argument : program_.arguments(node))
      out += concat(out.empty() ? "" : ",", values_[argument].text);
    return out;
  }

  static void parenthesise(Value& value, bool needed) {
    if (needed) value.text = concat("(", value.text, ")");
  }

  Value unary(const Node& node) {
    Value operand = std::move(values_[node.first]);
    if (node.op == Operator::minus && !std::isnan(operand.number)) return numeric(-operand.number);
    const Sign& sign = signOf(node.op);
    parenthesise(operand, operand.binding < sign.binding);
    return {concat(sign.text, operand.text), std::nan(""), sign.binding};
  }

  Value binary(const Node& node) {
    Value a = std::move(values_[node.first]), b = std::move(values_[node.count]);
    if (!std::isnan(a.number) && !std::isnan(b.number)) {
      if (node.op == Operator::add) return numeric(a.number + b.number);
      if (node.op == Operator::subtract) return numeric(a.number - b.number);
      if (node.op == Operator::multiply) return numeric(a.number * b.number);
    }
    const Sign& sign = signOf(node.op);
    parenthesise(a, a.binding < sign.binding);
    parenthesise(b, b.binding <= sign.binding);
    a.text.append(sign.text).append(b.text);
    return {std::move(a.text), std::nan(""), sign.binding};
  }

  const logscript::Program& program_;
  const Items& known_;
  logscript::Findings ignored_;
  logscript::Meaning meaning_;
  std::vector<Value> values_;
};

class Reader {
 public:
  Reader(const logscript::Program& program, const Items& known)
      : program_(program), expressions_(program, known) {}

  Reading run() {
    for (std::uint32_t i = 0; i < program_.statements.size(); ++i) take(program_.statements[i], i);
    return std::move(reading_);
  }

 private:
  void take(const Statement& statement, std::uint32_t index) {
    if (statement.implied) return;
    Item item = itemOf(statement);
    switch (statement.kind) {
      case Kind::constant:
        return keep(reading_.constants, item);
      case Kind::variable:
        return keepVariable(statement, std::move(item));
      case Kind::alias:
        return keep(reading_.aliases, item);
      case Kind::units:
        return keepUnits(std::move(item));
      case Kind::data:
        return keepData(item);
      case Kind::dataTable:
      case Kind::sub:
        reading_.bodies.try_emplace(text::lower(item.head));
        return reading_.order.push_back(std::move(item));
      case Kind::beginProg:
        return;
      default:
        placeFor(statement, index).push_back(std::move(item));
    }
  }

  static void keep(Items& items, const Item& item) {
    items.try_emplace(text::lower(item.head), item);
  }

  void keepVariable(const Statement& statement, Item item) {
    item.parts.push_back(
        concat(statement.isPublic ? "Public" : "Dim", statement.isBoolean ? " As Boolean" : ""));
    item.offsets.push_back(statement.nameOffset);
    keep(reading_.variables, item);
  }

  void keepUnits(Item item) {
    if (item.parts.size() != 2) return;
    item.head = item.parts.front();
    item.parts.erase(item.parts.begin());
    item.offsets.erase(item.offsets.begin());
    keep(reading_.units, item);
  }

  void keepData(const Item& item) {
    for (std::size_t i = 0; i < item.parts.size(); ++i)
      reading_.data.push_back(
          {item.kind, item.head, {item.parts[i]}, {item.offsets[i]}, item.offsets[i]});
  }

  /// The list of the table, subroutine or program around a statement.
  std::vector<Item>& placeFor(const Statement& statement, std::uint32_t index) {
    const Statement* outer = &statement;
    for (std::uint32_t at = index; outer->parent != at; outer = &program_.statements[at])
      at = outer->parent;
    if (outer->kind == Kind::dataTable || outer->kind == Kind::sub)
      return reading_.bodies[text::lower(headOf(*outer))];
    if (outer->kind == Kind::beginProg) return reading_.bodies[text::lower(programBody)];
    return reading_.order;
  }

  Item itemOf(const Statement& statement) {
    Item item;
    item.kind = statement.kind;
    item.head = headOf(statement);
    item.offset = statement.offset;
    for (const std::uint32_t root : program_.expressions(statement)) {
      item.parts.push_back(expressions_.take(root));
      item.offsets.push_back(program_.nodes[root].offset);
    }
    return item;
  }

  [[nodiscard]] std::string headOf(const Statement& statement) const {
    const std::string_view name = expressions_.spelling(statement.name);
    switch (statement.kind) {
      case Kind::invoke:
        if (logscript::isInstruction(statement.name))
          return std::string(logscript::instructionForms(statement.name).front().name);
        return concat("Call ", name);
      case Kind::call:
        return concat("Call ", name);
      case Kind::callTable:
        return concat("CallTable ", name);
      case Kind::dataTable:
        return concat("DataTable ", name);
      case Kind::sub:
        return concat("Sub ", name);
      case Kind::forLoop:
        return concat("For ", name);
      case Kind::close:
        return concat("end of ", wordOf(program_.statements[statement.parent].kind));
      case Kind::constant:
      case Kind::variable:
      case Kind::alias:
        return std::string(name);
      default:
        return std::string(wordOf(statement.kind));
    }
  }

  const logscript::Program& program_;
  Expressions expressions_;
  Reading reading_;
};

const logscript::Instruction* formOf(const Item& item) {
  for (const logscript::Word word :
       {logscript::Word::Scan, logscript::Word::SubScan, logscript::Word::BeginBurstTrigger})
    if (item.head == logscript::blockForm(word).name) return &logscript::blockForm(word);
  if (item.kind == Kind::dataTable) return &logscript::blockForm(logscript::Word::DataTable);
  for (const logscript::Instruction& form : logscript::allInstructions())
    if (item.head == form.name && form.arguments.size() == item.parts.size()) return &form;
  return nullptr;
}

}  // namespace

bool samePart(std::string_view a, std::string_view b) {
  return a.starts_with('"') ? a == b : text::equalsIgnoringCase(a, b);
}

bool sameItem(const Item& a, const Item& b) {
  return text::equalsIgnoringCase(a.head, b.head) &&
         std::equal(a.parts.begin(), a.parts.end(), b.parts.begin(), b.parts.end(), samePart);
}

std::string shown(const Item& item) {
  if (item.kind == Kind::assign && item.parts.size() == 2)
    return concat(item.parts[0], " = ", item.parts[1]);
  std::string parts;
  for (const std::string& part : item.parts) parts += concat(parts.empty() ? "" : ",", part);
  if (item.kind == Kind::invoke && item.head.find(' ') == std::string::npos)
    return concat(item.head, "(", parts, ")");
  return parts.empty() ? item.head : concat(item.head, " ", parts);
}

std::string partTitle(const Item& item, std::size_t part) {
  switch (item.kind) {
    case Kind::assign:
      return part == 0 ? "the variable" : concat("the value of ", item.parts[0]);
    case Kind::variable:
      return concat(part + 1 < item.parts.size() ? "a size of " : "the declaration of ", item.head);
    case Kind::constant:
      return concat("the constant ", item.head);
    case Kind::alias:
      return concat("the place of ", item.head);
    case Kind::units:
      return concat("the unit of ", item.head);
    case Kind::ifThen:
    case Kind::elseIf:
      return concat("the condition of ", item.head);
    default:
      break;
  }
  const logscript::Instruction* form = formOf(item);
  if (form == nullptr || part >= form->arguments.size())
    return concat("part ", part + 1, " of ", item.head);
  return concat("the ", logscript::argumentKind(form->arguments[part]).title, " (argument ",
                part + 1, ") of ", item.head);
}

Reading readingOf(const logscript::Program& program, const Items& known) {
  return Reader(program, known).run();
}

}  // namespace readback
