#include "support/program_reader.h"

#include <algorithm>
#include <set>

#include "support/program_channels.h"
#include "support/program_expressions.h"
#include "support/program_instructions.h"

namespace support {
namespace {

/// A statement that stays open until its closing word.
struct Block {
  std::string kind;
  int line = 0;
};

struct ParentRow {
  std::string_view kind, parents;  // "": the program's top
};
constexpr ParentRow parentRows[] = {
    {"datatable", "top"},
    {"sub", "top"},
    {"beginprog", "top"},
    {"scan", "sub beginprog do"},
    {"subscan", "scan"},
    {"beginbursttrigger", "scan"},
    {"do", "beginprog scan do"},
    {"for", "sub beginprog scan subscan do for if"},
    {"if", "sub beginprog scan subscan do for if beginbursttrigger"},
};

Place placeIn(std::string_view kind) {
  if (kind == "datatable") return table;
  if (kind == "sub") return sub;
  return kind == "beginprog" ? body : scan;
}

using Counts = std::vector<std::pair<std::string, std::size_t>>;

void count(Counts& counts, const std::string& name, std::size_t values) {
  if (counts.empty() || counts.back().first != name) counts.emplace_back(name, 0);
  counts.back().second += values;
}

/// Declarations of the whole program: names may be used above the line that declares them, but
/// constants of dimensions may not.
class Declarations {
 public:
  explicit Declarations(Scope& scope) : scope_(scope) {}

  void readLine(const std::string& code) {
    ExpressionReader reader(scope_, tokensOf(code));
    const std::string word = reader.take().text;
    if (word == "const") constant(reader);
    if (word == "dim" || word == "public") variables(reader);
    if (word == "alias") alias(reader);
    if (word == "datatable" && reader.takeIf("(")) add(reader.take(), {SymbolKind::table});
    if (word == "sub") add(reader.take(), {SymbolKind::subroutine});
  }

 private:
  void add(const Token& name, const Symbol& symbol) {
    if (name.kind != TokenKind::name)
      scope_.fault("a name is missing");
    else if (!kindOfWord(name.text).empty() || !instructionsNamed(name.text).empty())
      scope_.fault("'" + name.text + "' is a word of the language");
    else if (!scope_.symbols.emplace(name.text, symbol).second)
      scope_.fault("'" + name.text + "' is declared twice");
    if (symbol.kind == SymbolKind::table && name.text.size() > 8)
      scope_.fault("the table name is too long");
  }

  void constant(ExpressionReader& reader) {
    const Token name = reader.take();
    reader.expect("=");
    const Value value = reader.expression();
    Symbol symbol{SymbolKind::constant};
    symbol.number = value.number;
    symbol.word = value.word;
    if (!symbol.number && symbol.word.empty()) scope_.fault("the constant has no value");
    add(name, symbol);
    if (!reader.atEnd()) scope_.fault("'" + reader.peek().text + "' is not expected here");
  }

  void variables(ExpressionReader& reader) {
    do variable(reader);
    while (reader.takeIf(","));
    if (reader.takeIf("as")) reader.expect("boolean");
    if (!reader.atEnd()) scope_.fault("'" + reader.peek().text + "' is not expected here");
  }

  void variable(ExpressionReader& reader) {
    const Token name = reader.take();
    Symbol symbol{SymbolKind::variable};
    if (reader.at("("))
      for (const Value& size : reader.arguments()) {
        if (!size.number || *size.number < 1) scope_.fault("'" + name.text + "' has no size");
        symbol.dimensions.push_back(
            static_cast<std::size_t>(std::max(size.number.value_or(1), 1.0)));
      }
    add(name, symbol);
  }

  void alias(ExpressionReader& reader) {
    Symbol symbol{SymbolKind::alias};
    symbol.target = reader.peek().text;
    while (!reader.atEnd() && !reader.at("=")) reader.take();
    reader.expect("=");
    add(reader.take(), symbol);
  }

  Scope& scope_;
};

class Reader {
 public:
  explicit Reader(ProgramReading& result) : result_(result), scope_{{}, {}, result.faults} {}

  void run(const std::vector<ProgramLine>& lines) {
    Declarations declarations(scope_);
    eachLine(lines, [&](const ProgramLine& line) { declarations.readLine(line.code); });
    eachLine(lines, [&](const ProgramLine& line) { readLine(line); });
    finish();
  }

 private:
  template <class F>
  void eachLine(const std::vector<ProgramLine>& lines, F f) {
    scope_.line = 0;
    for (const ProgramLine& line : lines) {
      ++scope_.line;
      f(line);
    }
  }

  void readLine(const ProgramLine& line) {
    if (line.code.empty()) return channels_.readSlots(line.comment);
    ExpressionReader reader(scope_, tokensOf(line.code));
    statement(reader);
    while (reader.takeIf(":")) statement(reader);
    if (!reader.atEnd()) scope_.fault("'" + reader.peek().text + "' is not expected here");
  }

  void statement(ExpressionReader& reader) {
    if (reader.peek().kind != TokenKind::name) return scope_.fault("no statement begins like this");
    const std::string word = reader.peek().text;
    if (isOnce(word) && !seenOnce_.insert(word).second)
      scope_.fault("'" + word + "' a second time");
    if (const Symbol* symbol = scope_.find(word)) {
      if (symbol->kind != SymbolKind::subroutine) return assignment(reader);
      reader.take();
      return call(word, SymbolKind::subroutine);
    }
    reader.take();
    for (const Handler& handler : handlers)
      if (handler.word == word) {
        if ((handler.places & place()) == 0) scope_.fault("'" + word + "' can't stand here");
        return (this->*handler.read)(reader);
      }
    instruction(word, reader);
  }

  static bool isOnce(const std::string& word) {
    static const std::set<std::string> words = {"slotconfigure",   "beginprog",    "qv40",
                                                "pulsecountreset", "slowsequence", "endprog"};
    return words.count(word) > 0;
  }

  // Blocks.

  [[nodiscard]] bool within(std::string_view kind) const {
    return std::any_of(blocks_.begin(), blocks_.end(),
                       [&](const Block& block) { return block.kind == kind; });
  }

  [[nodiscard]] Place place() const {
    for (auto block = blocks_.rbegin(); block != blocks_.rend(); ++block)
      if (block->kind != "if" && block->kind != "for" && block->kind != "do")
        return placeIn(block->kind);
    return top;
  }

  void open(const std::string& kind) {
    const std::string parent = " " + (blocks_.empty() ? "top" : blocks_.back().kind) + " ";
    for (const ParentRow& row : parentRows)
      if (row.kind == kind &&
          (" " + std::string(row.parents) + " ").find(parent) == std::string::npos)
        scope_.fault("'" + kind + "' can't stand here");
    blocks_.push_back({kind, scope_.line});
  }

  void close(const std::string& kind) {
    if (blocks_.empty() || blocks_.back().kind != kind)
      return scope_.fault("this closes a '" + kind + "' that is not open");
    blocks_.pop_back();
  }

  void dataTable(ExpressionReader& reader) {
    reader.expect("(");
    const std::string name = reader.take().text;
    reader.expect(",");
    reader.expression();
    reader.expect(",");
    if (!reader.expression().number) scope_.fault("the table size is no number");
    reader.expect(")");
    open("datatable");
    result_.tables.push_back({name});
    tableLines_.clear();
  }
  void endTable(ExpressionReader&) { close("datatable"); }
  void beginSub(ExpressionReader& reader) {
    reader.take();
    open("sub");
  }
  void beginProgram(ExpressionReader&) { open("beginprog"); }
  void endProgram(ExpressionReader&) { close("beginprog"); }
  void slowSequence(ExpressionReader&) {
    if (blocks_.empty() || blocks_.back().kind != "beginprog")
      scope_.fault("a block is still open");
  }

  void end(ExpressionReader& reader) { close(reader.take().text); }
  void endIf(ExpressionReader&) { close("if"); }

  void next(ExpressionReader& reader) {
    const std::string name = reader.take().text;
    if (name == "scan") return close("scan");
    close("for");
    if (openLoops_.erase(name) == 0) scope_.fault("no loop counts '" + name + "'");
    scope_.loopBounds.erase(name);
  }

  void scanLoop(ExpressionReader& reader) {
    checkArguments("ccuc", "cucc", reader.arguments());
    open("scan");
  }
  void nextScan(ExpressionReader&) { close("scan"); }
  void subScan(ExpressionReader& reader) {
    checkArguments("c*n", "c*n", reader.arguments());
    open("subscan");
  }
  void nextSubScan(ExpressionReader&) { close("subscan"); }
  void beginBurst(ExpressionReader& reader) {
    if (reader.arguments().size() != 1) scope_.fault("a burst trigger has one condition");
    open("beginbursttrigger");
  }
  void endBurst(ExpressionReader& reader) {
    checkArguments("cc", "cc", reader.arguments());
    close("beginbursttrigger");
  }

  void doLoop(ExpressionReader& reader) {
    if (reader.takeIf("until")) reader.expression();
    open("do");
  }
  void loop(ExpressionReader&) { close("do"); }

  void forLoop(ExpressionReader& reader) {
    const Value variable = reader.reference();
    reader.expect("=");
    reader.expression();
    reader.expect("to");
    const Value bound = reader.expression();
    open("for");
    scope_.set(variable.name);
    openLoops_.insert(variable.name);
    if (bound.number) scope_.loopBounds[variable.name] = *bound.number;
  }

  void ifStatement(ExpressionReader& reader) {
    condition(reader);
    if (reader.atEnd()) return open("if");
    blocks_.push_back({"if", scope_.line});
    statement(reader);
    blocks_.pop_back();
  }
  void elseIf(ExpressionReader& reader) {
    condition(reader);
    if (blocks_.empty() || blocks_.back().kind != "if") scope_.fault("no 'If' is open");
  }
  void condition(ExpressionReader& reader) {
    reader.expression();
    reader.expect("then");
  }

  // Declarations, which have been read before: only what they refer to.

  void variables(ExpressionReader& reader) {
    lastVariable_ = reader.peek().text;
    reader.skipLine();
  }
  void constant(ExpressionReader& reader) { reader.skipLine(); }
  void alias(ExpressionReader& reader) {
    const Value target = reader.reference(true);
    if (target.indexes.empty()) scope_.fault("an alias names one element");
    reader.expect("=");
    reader.take();
  }
  void units(ExpressionReader& reader) {
    std::string key = reader.peek().text;
    for (const auto& index : reader.reference(true).indexes)
      key += "," + std::to_string(index.value_or(0));
    if (!units_.insert(key).second) scope_.fault("'" + key + "' has units already");
    reader.expect("=");
    if (reader.atEnd()) scope_.fault("the units are missing");
    reader.skipLine();
  }

  // Values of Data lines and the variables that read them.

  void data(ExpressionReader& reader) {
    do {
      if (!reader.expression().number) scope_.fault("a value is no number");
      count(data_, lastVariable_, 1);
    } while (reader.takeIf(","));
  }
  void read(ExpressionReader& reader) {
    const Value target = reader.reference();
    const auto bound = scope_.loopBounds.find("i");
    scope_.set(target.name);
    count(read_, target.name,
          static_cast<std::size_t>(bound == scope_.loopBounds.end() ? 1 : bound->second));
  }

  void assignment(ExpressionReader& reader) {
    if ((place() & (top | table)) != 0) scope_.fault("an assignment can't stand here");
    const Value target = reader.reference();
    if (target.symbol && target.indexes.empty() && !target.symbol->dimensions.empty())
      scope_.fault("'" + target.name + "' is an array");
    scope_.set(target.name);
    reader.expect("=");
    const Value value = reader.expression();
    if (value.whole) scope_.fault("'" + value.name + "' is an array");
    if (!within("sub") && !target.indexes.empty() && target.indexes[0])
      assigned_[target.name].insert(static_cast<int>(*target.indexes[0]));
  }

  // Calls.

  void call(const std::string& name, SymbolKind kind) {
    const Symbol* symbol = scope_.find(name);
    if (!symbol || symbol->kind != kind) return scope_.fault("there is no '" + name + "' to call");
    ++calls_[name];
    if (kind == SymbolKind::subroutine) lastCalled_ = name;
    if (kind == SymbolKind::table) checkTableCall(name);
  }
  void callSub(ExpressionReader& reader) { call(reader.take().text, SymbolKind::subroutine); }
  void callTable(ExpressionReader& reader) { call(reader.take().text, SymbolKind::table); }

  void checkTableCall(const std::string& name) {
    const std::string trigger = "triggercall" + name;
    if (scope_.find(trigger) && lastCalled_ != trigger)
      scope_.fault("the triggers of '" + name + "' are not set before its call");
    for (const auto& [source, dimensions] : crossings_[name])
      for (int element = 1; element <= dimensions; ++element)
        if (assigned_[source].count(element) == 0)
          scope_.fault("'" + source + "' is not filled before the table call");
  }

  // Instructions.

  void instruction(const std::string& name, ExpressionReader& reader) {
    const auto rows = instructionsNamed(name);
    if (rows.empty()) {
      reader.skipLine();
      return scope_.fault("'" + name + "' is no instruction");
    }
    if ((rows[0].places & place()) == 0) {
      reader.skipLine();
      return scope_.fault("'" + name + "' can't stand here");
    }
    if (name == "slotconfigure" || name == "fieldnames") return ownArguments(name, reader);
    if (name == "filemark") return fileMark(reader);
    const std::vector<Value> values = reader.at("(") ? reader.arguments() : std::vector<Value>{};
    for (const InstructionRow& row : rows)
      if (row.arguments.size() == values.size() && accepts(rows, row, values))
        return use(row, values);
    scope_.fault("'" + name +
                 "' has another number of arguments: " + std::to_string(values.size()));
  }

  /// Of several rows with the same number of arguments the one that takes them all, or the last.
  static bool accepts(const std::vector<InstructionRow>& rows, const InstructionRow& row,
                      const std::vector<Value>& values) {
    const bool more = std::any_of(rows.begin(), rows.end(), [&](const InstructionRow& other) {
      return other.arguments != row.arguments && other.arguments.size() == values.size();
    });
    if (!more || row.arguments == rows.back().arguments) return true;
    for (std::size_t i = 0; i < values.size(); ++i)
      if (!isKind(row.arguments[i], values[i])) return false;
    return true;
  }

  void ownArguments(const std::string& name, ExpressionReader& reader) {
    reader.expect("(");
    do {
      const Token token = reader.take();
      if (name == "fieldnames" && token.kind == TokenKind::text && !result_.tables.empty())
        addColumns(lowerCase(token.text.substr(1, token.text.size() - 2)), 1000);
      else
        slotModules_.push_back(token.text);
    } while (reader.takeIf(","));
    reader.expect(")");
  }
  void fileMark(ExpressionReader& reader) {
    reader.expect("(");
    const Symbol* symbol = scope_.find(reader.take().text);
    if (!symbol || symbol->kind != SymbolKind::table) scope_.fault("no such table");
    reader.expect(")");
  }

  void use(const InstructionRow& row, const std::vector<Value>& values) {
    checkArguments(row.arguments, row.arguments, values);
    for (std::size_t i = 0; i < values.size(); ++i)
      if (row.arguments[i] == 'd') scope_.set(values[i].name);
    if (place() == table) checkRepeated(row, values);
    if (row.role == Role::output) return output(row, values);
    if (row.role == Role::measurement) checkLengths(row, values);
    if (!within("sub") && row.role != Role::plain) channels_.take(row, values);
  }

  /// Checks each argument against its letter; a line may have the one or the other form.
  void checkArguments(std::string_view form, std::string_view other,
                      const std::vector<Value>& values) {
    if (values.size() != form.size()) return scope_.fault("another number of arguments");
    for (std::size_t i = 0; i < values.size(); ++i)
      if (!isKind(form[i], values[i]) && !isKind(other[i], values[i]))
        scope_.fault("argument " + std::to_string(i + 1) + " is of another kind");
  }

  static bool isKind(char letter, const Value& value) {
    const bool bare =
        value.symbol && !value.symbol->dimensions.empty() && value.indexes.empty() && !value.whole;
    const std::string_view word = kindOfWord(value.word);
    switch (letter) {
      case 'd':
        return value.symbol && !bare;
      case 'a':
        return value.symbol && value.whole;
      case 'c':
        return value.number.has_value() || (value.symbol && !bare && !value.whole);
      case 'n':
        return word.empty() && !bare && !value.whole;
      case 'm':
        return word.empty() && !bare;
      case 'e':
        return !bare && !value.whole;
      case 'r':
        return word == "range";
      case 't':
        return word == "type";
      case 'u':
        return word == "unit";
      case 'z':
        return word == "data";
      case 'b':
        return word == "bool";
      default:
        return true;
    }
  }

  /// Whole arrays are as long as the instruction needs, and scaling arrays are filled before.
  void checkLengths(const InstructionRow& row, const std::vector<Value>& values) {
    const auto needed = static_cast<std::size_t>(values[1].number.value_or(1));
    for (std::size_t i = 0; i < values.size(); ++i) {
      const Value& value = values[i];
      if (!value.symbol || row.arguments[i] == 'c') continue;
      const bool element = !value.indexes.empty() && value.indexes[0].has_value();
      const std::size_t first = element ? static_cast<std::size_t>(*value.indexes[0]) - 1 : 0;
      if (value.whole && first + needed > elementsOf(*value.symbol))
        scope_.fault("'" + value.name + "' is shorter than the measurement");
      if (value.whole && i > 0 && !within("sub") &&
          assigned_[value.name].count(static_cast<int>(elementsOf(*value.symbol))) == 0)
        scope_.fault("'" + value.name + "' is not filled to its end");
      if (i == 0 && !value.whole && first + needed > elementsOf(*value.symbol) &&
          value.symbol->kind == SymbolKind::variable)
        scope_.fault("'" + value.name + "' has no room for the measurement");
    }
  }

  // Outputs of a data table.

  void checkRepeated(const InstructionRow& row, const std::vector<Value>& values) {
    std::string key(row.name);
    if (row.role == Role::output)
      for (const Value& value : {values[0], values[1]}) {
        key += " " + value.name;
        for (const auto& index : value.indexes) key += std::to_string(index.value_or(0)) + ",";
      }
    if (!tableLines_.insert(key).second) scope_.fault("the table has this line already");
  }

  void output(const InstructionRow& row, const std::vector<Value>& values) {
    const std::size_t typeAt = row.arguments.find('z');
    const Value& source = values[row.arguments[0] == 'c' ? 1 : 0];
    const std::size_t stored = storedValues(row, values);
    TableRecord& record = result_.tables.back();
    record.values += stored;
    record.bytes += stored * (values[typeAt].word == "fp2" ? 2 : 4);
    if (row.name == "levelcrossing") checkCrossing(record.name, values);
    if (row.arguments[0] != 'c') return;
    const std::size_t available = source.symbol && source.whole ? elementsOf(*source.symbol) : 1;
    if (available != stored) scope_.fault("'" + source.name + "' has another number of values");
    addColumns(source.name, stored);
  }

  static std::size_t storedValues(const InstructionRow& row, const std::vector<Value>& values) {
    const auto number = [&](std::size_t i) {
      return static_cast<std::size_t>(std::max(values[i].number.value_or(0), 0.0));
    };
    if (row.name == "histogram") return number(3);
    if (row.name == "rainflow" || row.name == "levelcrossing") return number(3) * number(4);
    return number(row.name == "fftsample" ? 1 : 0);
  }

  void checkCrossing(const std::string& name, const std::vector<Value>& values) {
    crossings_[name][values[0].name] = values[4].number.value_or(1) > 1 ? 2 : 1;
    for (const std::size_t i : {5U, 6U})
      if (values[i].symbol && values[i - 2].number &&
          elementsOf(*values[i].symbol) != static_cast<std::size_t>(*values[i - 2].number))
        scope_.fault("'" + values[i].name + "' has another number of levels");
  }

  void addColumns(const std::string& source, std::size_t values) {
    Symbol* symbol = scope_.find(result_.tables.back().name);
    for (const char* suffix : {"", "_max", "_min", "_avg", "_std"})
      if (symbol) symbol->columns[source + suffix] = values;
  }

  // What only the whole program shows.

  void finish() {
    for (const Block& block : blocks_)
      result_.faults.push_back({block.line, "'" + block.kind + "' is not closed"});
    for (const char* word : {"beginprog", "qv40", "slowsequence", "endprog"})
      if (seenOnce_.count(word) == 0) scope_.fault("there is no '" + std::string(word) + "'");
    for (const auto& [name, symbol] : scope_.symbols) checkCalls(name, symbol.kind);
    for (const auto& [name, line] : scope_.uses)
      if (scope_.settings.count(name) == 0 && !mayStayUnset(name))
        result_.faults.push_back({line, "'" + name + "' never gets a value"});
    channels_.checkSlotConfigure(slotModules_);
    if (data_ != read_) scope_.fault("the program reads its Data values in another order");
    for (const auto& [name, values] : data_)
      if (const Symbol* symbol = scope_.find(name); symbol && elementsOf(*symbol) != values)
        scope_.fault("'" + name + "' does not get all its values");
  }

  void checkCalls(const std::string& name, SymbolKind kind) {
    if (kind != SymbolKind::table && kind != SymbolKind::subroutine) return;
    const int calls = calls_[name];
    const bool several = name == "zero" || name == "zero_1ft";
    if (calls == 0) scope_.fault("'" + name + "' is never called");
    if (calls > 1 && !several) scope_.fault("'" + name + "' is called more than once");
  }

  /// Flags and calibration controls are set from outside; a strain block that is never zeroed has
  /// a zero of 0, and tables are disabled only by filter subscans.
  static bool mayStayUnset(const std::string& name) {
    return name.starts_with("flag") || name == "measdisable" ||
           name.find("zeromv") != std::string::npos || name.find("calmode") != std::string::npos ||
           name.find("zeromode") != std::string::npos || name.find("knownvar") != std::string::npos;
  }

  struct Handler {
    std::string_view word;
    void (Reader::*read)(ExpressionReader&);
    unsigned places;
  };
  static const std::vector<Handler> handlers;

  ProgramReading& result_;
  Scope scope_;
  ChannelUse channels_{scope_};
  std::vector<Block> blocks_;
  std::set<std::string> openLoops_;
  std::set<std::string> seenOnce_;
  std::set<std::string> tableLines_;
  std::vector<std::string> slotModules_;  // as SlotConfigure lists them
  std::set<std::string> units_;
  std::string lastVariable_;
  std::string lastCalled_;
  Counts data_, read_;
  std::map<std::string, std::set<int>> assigned_;                // elements of variables
  std::map<std::string, std::map<std::string, int>> crossings_;  // by table: sources, dimensions
  std::map<std::string, int> calls_;
};

constexpr unsigned anywhere = top | table | sub | body | scan;
constexpr unsigned statements = sub | body | scan;

const std::vector<Reader::Handler> Reader::handlers = {
    {"const", &Reader::constant, top | body},
    {"dim", &Reader::variables, top | body},
    {"public", &Reader::variables, top | body},
    {"alias", &Reader::alias, top},
    {"units", &Reader::units, top},
    {"data", &Reader::data, top},
    {"read", &Reader::read, body},
    {"datatable", &Reader::dataTable, anywhere},
    {"endtable", &Reader::endTable, table},
    {"sub", &Reader::beginSub, anywhere},
    {"beginprog", &Reader::beginProgram, anywhere},
    {"endprog", &Reader::endProgram, anywhere},
    {"slowsequence", &Reader::slowSequence, body},
    {"if", &Reader::ifStatement, statements},
    {"elseif", &Reader::elseIf, statements},
    {"endif", &Reader::endIf, statements},
    {"end", &Reader::end, statements},
    {"for", &Reader::forLoop, statements},
    {"next", &Reader::next, statements},
    {"do", &Reader::doLoop, statements},
    {"loop", &Reader::loop, statements},
    {"scan", &Reader::scanLoop, statements},
    {"nextscan", &Reader::nextScan, scan},
    {"exitscan", &Reader::constant, scan},
    {"subscan", &Reader::subScan, scan},
    {"nextsubscan", &Reader::nextSubScan, scan},
    {"beginbursttrigger", &Reader::beginBurst, scan},
    {"endbursttrigger", &Reader::endBurst, scan},
    {"call", &Reader::callSub, scan},
    {"calltable", &Reader::callTable, body | scan},
};

}  // namespace

ProgramReading readProgram(std::string_view text) {
  ProgramReading reading;
  const std::vector<ProgramLine> lines = programLines(text, reading.faults);
  checkLayout(lines, reading.faults);
  Reader(reading).run(lines);
  return reading;
}

std::string faultList(std::string_view text, const std::vector<Fault>& faults) {
  std::vector<Fault> ignored;
  const std::vector<ProgramLine> lines = programLines(text, ignored);
  std::string list;
  for (const Fault& fault : faults) {
    list += std::to_string(fault.line) + ": " + fault.text;
    if (fault.line >= 1 && static_cast<std::size_t>(fault.line) <= lines.size())
      list += ": " + lines[static_cast<std::size_t>(fault.line) - 1].code;
    list += "\n";
  }
  return list;
}

}  // namespace support
