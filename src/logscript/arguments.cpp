#include "logscript/arguments.h"

#include "text/strings.h"

namespace logscript {
namespace {

using text::concat;

constexpr long slots = 15;
constexpr long singleEndedChannels = 28, differentialChannels = 14;

std::string_view adviceFor(Wanted wanted) {
  switch (wanted) {
    case Wanted::constant:
    case Wanted::slot:
    case Wanted::channel:
      return "write a number or a constant";
    case Wanted::destination:
      return "name a variable, an element, or an array with ()";
    case Wanted::array:
      return "name an array with ()";
    case Wanted::range:
      return "write a range such as mV50";
    case Wanted::thermocouple:
    case Wanted::thermocoupleOrZero:
      return "write a type such as TypeK";
    case Wanted::timeUnit:
    case Wanted::timeUnitOrZero:
      return "write a unit such as Sec";
    case Wanted::dataType:
      return "write FP2 or IEEE4";
    case Wanted::truth:
      return "write True, False or a variable";
    case Wanted::table:
      return "name a table";
    case Wanted::text:
      return "write a text in quotes";
    case Wanted::variable:
      return "name a variable";
    default:
      return "write a value, or an array with ()";
  }
}

std::string titles(const Instruction& form) {
  std::string list;
  for (const char letter : form.arguments)
    list += concat(list.empty() ? "" : ", ", argumentKind(letter).title);
  return list;
}

}  // namespace

const Instruction* formFor(std::span<const Instruction> forms, const Statement& statement) {
  for (const Instruction& form : forms)
    if (form.arguments == "*" || form.arguments.size() == statement.count) return &form;
  return nullptr;
}

void Arguments::tellUnknownTables(const Statement& statement) {
  const Instruction* form = formFor(instructionForms(statement.name), statement);
  if (form == nullptr || form->arguments != "T") return;
  const Node& table = program_.nodes[program_.expressions(statement)[0]];
  if (table.kind != NodeKind::name || Names::kindOf(table.name) != WordKind::name) return;
  Symbol& symbol = meaning_.symbol(table.name);
  if (symbol.kind != SymbolKind::none || symbol.told) return;
  symbol.told = true;
  if (!program_.impliedTable)
    meaning_.tell(Code::unknownTable, table.offset,
                  concat("there is no table ", meaning_.quoted(table.name),
                         meaning_.guess(table.name, "; declare it with DataTable")));
}

bool Arguments::check(std::span<const Instruction> forms, const Statement& statement) {
  const Instruction* form = formFor(forms, statement);
  if (form == nullptr) {
    tellCount(forms, statement);
    return false;
  }
  if (form->arguments == "*") return true;
  bool right = true;
  for (std::size_t n = 0; n < statement.count; ++n)
    right = checkOne(*form, statement, n) && checkRange(*form, statement, n) && right;
  return right && checkRepetitions(*form, statement) && checkLevels(*form, statement);
}

void Arguments::tellCount(std::span<const Instruction> forms, const Statement& statement) {
  std::string counts;
  for (const Instruction& form : forms)
    counts += concat(counts.empty() ? "" : " or ", form.arguments.size());
  const std::string list = titles(forms.front());
  meaning_.tell(Code::argumentCount, statement.offset,
                concat(forms.front().name, " takes ", counts, " arguments, not ", statement.count,
                       list.empty() ? "; write none" : concat("; write ", list)));
}

bool Arguments::checkOne(const Instruction& form, const Statement& statement, std::size_t n) {
  const std::uint32_t argument = program_.expressions(statement)[n];
  if (meaning_.fact(argument).broken) return false;
  const ArgumentKind& kind = argumentKind(form.arguments[n]);
  if (fits(kind.wanted, argument)) return true;
  if (meaning_.fact(argument).broken) return false;  // it has been told what it is
  meaning_.tell(Code::argumentKind, meaning_.node(argument).offset,
                concat("argument ", n + 1, " of ", form.name, ", the ", kind.title, ", can't be ",
                       meaning_.shown(argument), "; ", adviceFor(kind.wanted)));
  return false;
}

bool Arguments::isWord(std::uint32_t argument, WordKind kind) const {
  const NameId word = meaning_.word(argument);
  return word != noName && Names::kindOf(word) == kind;
}

/// A number known before the program runs; True and False are none.
bool Arguments::isWhole(std::uint32_t argument) const {
  return meaning_.fact(argument).constant && meaning_.word(argument) == noName &&
         meaning_.node(argument).kind != NodeKind::text;
}

bool Arguments::isZero(std::uint32_t argument) const {
  return isWhole(argument) && meaning_.fact(argument).value == 0;
}

bool Arguments::isTruth(std::uint32_t argument) const {
  if (isWord(argument, WordKind::boolean)) return true;
  if (!isWhole(argument)) return meaning_.word(argument) == noName;
  const double value = meaning_.fact(argument).value;
  return !(value < -1 || value > 1);
}

bool Arguments::isScale(std::uint32_t argument) const {
  const NodeKind kind = meaning_.node(argument).kind;
  return kind == NodeKind::wholeArray || kind == NodeKind::arrayFrom;
}

bool Arguments::fits(Wanted wanted, std::uint32_t argument) {
  const Node& node = meaning_.node(argument);
  switch (wanted) {
    case Wanted::constant:
    case Wanted::slot:
    case Wanted::channel:
      return isWhole(argument);
    case Wanted::value:
      return meaning_.requireValue(argument);
    case Wanted::truth:
      return isTruth(argument) && meaning_.requireValue(argument);
    case Wanted::destination:
      return meaning_.isWritable(argument);
    case Wanted::source:
      return meaning_.isWritable(argument) || meaning_.requireValue(argument);
    case Wanted::scale:
      return isScale(argument) || meaning_.requireValue(argument);
    case Wanted::array:
      return node.kind == NodeKind::wholeArray;
    case Wanted::range:
      return isWord(argument, WordKind::range);
    case Wanted::thermocouple:
      return isWord(argument, WordKind::thermocouple);
    case Wanted::thermocoupleOrZero:
      return isWord(argument, WordKind::thermocouple) || isZero(argument);
    case Wanted::timeUnit:
      return isWord(argument, WordKind::timeUnit);
    case Wanted::timeUnitOrZero:
      return isWord(argument, WordKind::timeUnit) || isZero(argument);
    case Wanted::dataType:
      return isWord(argument, WordKind::dataType);
    case Wanted::table:
      return node.kind == NodeKind::name && meaning_.symbol(node.name).kind == SymbolKind::table;
    case Wanted::text:
      return node.kind == NodeKind::text;
    case Wanted::variable:
      return meaning_.isWritable(argument);
    case Wanted::anything:
      break;
  }
  return true;
}

bool Arguments::checkRange(const Instruction& form, const Statement& statement, std::size_t n) {
  const ArgumentKind& kind = argumentKind(form.arguments[n]);
  if (kind.wanted != Wanted::slot && kind.wanted != Wanted::channel) return true;
  const std::uint32_t argument = program_.expressions(statement)[n];
  const std::optional<long> value = meaning_.whole(argument);
  const bool differential = form.inputs == Inputs::differential && kind.letter == 'c';
  const long most = kind.wanted == Wanted::slot ? slots
                    : differential              ? differentialChannels
                                                : singleEndedChannels;
  if (!value || (*value >= 1 && *value <= most)) return true;
  meaning_.tell(Code::slotRange, meaning_.node(argument).offset,
                concat("there is no ", differential ? "differential " : "", kind.title, " ", *value,
                       "; write 1 to ", most));
  return false;
}

/// The places that take or give the values of all repetitions have to have room for them.
bool Arguments::checkRepetitions(const Instruction& form, const Statement& statement) {
  const std::size_t at = form.arguments.find('n');
  for (std::size_t n = 0; at != std::string_view::npos && n < statement.count; ++n) {
    const std::uint32_t argument = program_.expressions(statement)[n];
    const Wanted kind = argumentKind(form.arguments[n]).wanted;
    const bool counted = kind == Wanted::destination || kind == Wanted::source ||
                         (kind == Wanted::scale && isScale(argument));
    if (counted && !checkRoom(form, statement, at, n)) return false;
  }
  return true;
}

/// Levels have to be as many as their number says.
bool Arguments::checkLevels(const Instruction& form, const Statement& statement) {
  for (const auto& [count, array] : {std::pair('l', 'L'), std::pair('j', 'J')}) {
    const std::size_t at = form.arguments.find(count);
    if (at != std::string_view::npos && !checkRoom(form, statement, at, form.arguments.find(array)))
      return false;
  }
  return true;
}

/// Argument `array` has as many values as argument `count` says, as far as that is known.
bool Arguments::checkRoom(const Instruction& form, const Statement& statement, std::size_t count,
                          std::size_t array) {
  const std::uint32_t argument = program_.expressions(statement)[array];
  const std::optional<long> wanted = meaning_.whole(program_.expressions(statement)[count]);
  const std::optional<long> room = meaning_.valuesFrom(argument);
  if (!wanted || !room || *room >= *wanted) return true;
  meaning_.tell(Code::indexRange, meaning_.node(argument).offset,
                concat(meaning_.shown(argument), " has ", *room, " values from there on and ",
                       form.name, " needs ", *wanted, "; correct its ",
                       argumentKind(form.arguments[count]).title, " or the declaration"));
  return false;
}

}  // namespace logscript
