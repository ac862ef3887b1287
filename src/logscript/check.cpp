#include "logscript/check.h"

#include <algorithm>

#include "logscript/arguments.h"
#include "logscript/channel_uses.h"
#include "logscript/data_reads.h"
#include "logscript/meaning.h"
#include "text/strings.h"

namespace logscript {
namespace {

using text::concat;
using Kind = StatementKind;

class Checker {
 public:
  explicit Checker(const Program& program)
      : program_(program),
        findings_(program.findings),
        meaning_(program, findings_),
        arguments_(program, meaning_),
        channels_(program, meaning_),
        data_(program, meaning_) {}

  std::vector<Finding> run() {
    if (!program_.givenUp) {
      meaning_.declareAll();
      for (index_ = 0; index_ < program_.statements.size(); ++index_) statement();
      channels_.tellOverlaps();
      data_.tellRest();
      if (!program_.findings.has(Code::syntax)) tellUnused();
    }
    return findings_.sorted(program_.lineStarts);
  }

 private:
  [[nodiscard]] std::span<const std::uint32_t> roots() const {
    return program_.expressions(current());
  }
  [[nodiscard]] const Statement& current() const { return program_.statements[index_]; }

  /// Blocks around the statement; those that have ended are left.
  void leaveBlocks() {
    while (!blocks_.empty() && program_.statements[blocks_.back()].end <= index_) {
      const Kind kind = program_.statements[blocks_.back()].kind;
      if (kind == Kind::ifThen || kind == Kind::select) --conditions_;
      if (kind == Kind::forLoop) meaning_.loops.pop_back();
      blocks_.pop_back();
    }
    for (Meaning::LoopRange& loop : meaning_.loops) loop.certain = true;
    if (conditions_ > 0) uncertainLoops();
  }

  /// A condition inside a loop may keep its variable from some values.
  void uncertainLoops() {
    std::size_t outside = 0;
    for (const std::uint32_t block : blocks_) {
      const Kind kind = program_.statements[block].kind;
      if (kind == Kind::forLoop) ++outside;
      if (kind != Kind::ifThen && kind != Kind::select) continue;
      for (std::size_t i = 0; i < outside; ++i) meaning_.loops[i].certain = false;
    }
  }

  void statement() {
    leaveBlocks();
    const bool declared = current().kind == Kind::constant || current().kind == Kind::variable;
    if (!declared) {
      if (current().kind == Kind::invoke && isInstruction(current().name))
        arguments_.tellUnknownTables(current());
      meaning_.evaluate(current());
      look();
    }
    if (current().end > index_ + 1) enter();
  }

  void enter() {
    blocks_.push_back(index_);
    if (current().kind == Kind::ifThen || current().kind == Kind::select) ++conditions_;
    if (current().kind == Kind::forLoop) meaning_.loops.push_back(loopRange());
  }

  [[nodiscard]] Meaning::LoopRange loopRange() const {
    Meaning::LoopRange range{current().name, std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::quiet_NaN()};
    if (current().count != 2) return range;
    const std::optional<long> first = meaning_.whole(roots()[0]), last = meaning_.whole(roots()[1]);
    if (!first || !last || *last < *first) return range;
    range.low = static_cast<double>(*first);
    range.high = static_cast<double>(*last);
    return range;
  }

  void look() {
    switch (current().kind) {
      case Kind::alias:
      case Kind::units:
        return naming();
      case Kind::data:
        return data_.data(current());
      case Kind::read:
        for (const std::uint32_t root : roots()) meaning_.requireElement(root);
        return data_.read(current(), blocks_);
      case Kind::dataTable:
        return block(Word::DataTable);
      case Kind::scan:
        return block(Word::Scan);
      case Kind::subScan:
        return block(Word::SubScan);
      case Kind::burst:
        return block(Word::BeginBurstTrigger);
      case Kind::close:
        return close();
      case Kind::forLoop:
        return loop();
      case Kind::call:
        return call();
      case Kind::callTable:
        return callTable();
      case Kind::assign:
        return assign();
      case Kind::invoke:
        return invoke();
      default:
        values();
    }
  }

  void values() {
    for (const std::uint32_t root : roots()) meaning_.requireValue(root);
  }

  void naming() {
    if (current().count == 0 || meaning_.fact(roots()[0]).broken) return;
    const Node& target = meaning_.node(roots()[0]);
    const bool ofAlias = target.name != noName && current().kind == Kind::alias &&
                         meaning_.symbol(target.name).kind == SymbolKind::alias;
    if (ofAlias || !meaning_.isWritable(roots()[0]))
      meaning_.tell(Code::wrongKind, target.offset,
                    concat(meaning_.shown(roots()[0]), ofAlias ? " is an alias" : " is no variable",
                           "; name a variable"));
  }

  void block(Word word) {
    if (!current().implied && !current().faulty)
      arguments_.check(std::span(&blockForm(word), 1), current());
  }

  void close() {
    if (program_.statements[current().parent].kind == Kind::burst)
      block(Word::EndBurstTrigger);
    else
      values();
  }

  void loop() {
    values();
    if (current().name == noName) return;
    Symbol& variable = meaning_.symbol(current().name);
    variable.used = true;
    if (variable.kind == SymbolKind::none && !variable.told) {
      variable.told = true;
      meaning_.tell(Code::undeclaredName, current().nameOffset,
                    concat(meaning_.quoted(current().name), " is not declared",
                           meaning_.guess(current().name, "; declare it with Dim")));
    } else if (variable.kind != SymbolKind::none &&
               (variable.kind != SymbolKind::variable || variable.dimensions > 0)) {
      meaning_.tell(Code::wrongKind, current().nameOffset,
                    concat(meaning_.quoted(current().name), " is ",
                           variable.dimensions > 0 ? "an array" : titleOf(variable.kind),
                           " and can't count a loop; use a variable without dimensions"));
    }
  }

  void assign() {
    if (current().count != 2) return;
    meaning_.requireElement(roots()[0]);
    meaning_.requireValue(roots()[1]);
  }

  void invoke() {
    if (isInstruction(current().name)) {
      if (arguments_.check(instructionForms(current().name), current()))
        channels_.add(current(), blocks_);
      return;
    }
    if (Names::kindOf(current().name) == WordKind::name &&
        meaning_.symbol(current().name).kind == SymbolKind::none &&
        (current().count > 0 || inTable()))
      return unknownInstruction();
    call();
  }

  [[nodiscard]] bool inTable() const {
    return !blocks_.empty() && program_.statements[blocks_.front()].kind == Kind::dataTable;
  }

  void unknownInstruction() {
    const std::string_view name = program_.spelling(current().name);
    std::string_view best;
    std::size_t least = tolerance(name.size()) + 1;
    for (const Instruction& instruction : allInstructions()) {
      const std::size_t distance = distanceBetween(name, instruction.name, least - 1);
      if (distance >= least) continue;
      least = distance;
      best = instruction.name;
    }
    meaning_.tell(Code::unknownInstruction, current().offset,
                  concat("'", name, "' is no instruction",
                         best.empty() ? std::string("; write one of the language")
                                      : concat("; did you mean ", best, "?")));
  }

  void call() {
    Symbol& symbol = meaning_.symbol(current().name);
    symbol.used = true;
    if (symbol.kind == SymbolKind::subroutine) return;
    if (symbol.kind != SymbolKind::none || Names::kindOf(current().name) != WordKind::name)
      return meaning_.tell(
          Code::wrongKind, current().nameOffset,
          concat(meaning_.quoted(current().name), " is ",
                 symbol.kind == SymbolKind::none ? titleOf(Names::kindOf(current().name))
                                                 : titleOf(symbol.kind),
                 " and can't be called; call a subroutine"));
    if (symbol.told || program_.impliedCode) return;
    symbol.told = true;
    meaning_.tell(Code::unknownSubroutine, current().nameOffset,
                  concat("there is no subroutine ", meaning_.quoted(current().name),
                         meaning_.guess(current().name, "; write it with Sub and End Sub")));
  }

  void callTable() {
    Symbol& symbol = meaning_.symbol(current().name);
    called_.push_back(current().name);
    if (symbol.kind == SymbolKind::table) return;
    if (symbol.kind != SymbolKind::none)
      return meaning_.tell(Code::wrongKind, current().nameOffset,
                           concat(meaning_.quoted(current().name), " is ", titleOf(symbol.kind),
                                  " and stores nothing; call a table"));
    if (symbol.told || program_.impliedTable) return;
    symbol.told = true;
    const NameId meant = meaning_.closest(current().name);
    if (meant != noName) called_.push_back(meant);
    meaning_.tell(Code::unknownTable, current().nameOffset,
                  concat("there is no table ", meaning_.quoted(current().name),
                         meant == noName ? "; declare it with DataTable"
                                         : concat("; did you mean ", meaning_.quoted(meant), "?")));
  }

  void tellUnused() {
    for (const NameId table : called_) meaning_.symbol(table).told = true;
    for (NameId id = 0; id < program_.names.size(); ++id) {
      const Symbol& symbol = meaning_.symbol(id);
      if (symbol.kind == SymbolKind::table && !symbol.told)
        meaning_.tell(Code::tableNotCalled, symbol.offset,
                      concat("no statement calls table ", meaning_.quoted(id),
                             ", so it stays empty; write CallTable ", program_.spelling(id)));
      if (symbol.used || symbol.dimensions == Symbol::unknownDimensions) continue;
      if (symbol.kind == SymbolKind::subroutine)
        meaning_.tell(
            Code::neverUsed, symbol.offset,
            concat("nothing calls subroutine ", meaning_.quoted(id), "; call it or remove it"));
      if (symbol.kind == SymbolKind::variable && !isPublic(symbol) && !usedByAlias(id))
        meaning_.tell(Code::neverUsed, symbol.offset,
                      concat("variable ", meaning_.quoted(id), " is never used; remove it"));
    }
  }

  /// Public variables are there to be seen and set from outside.
  [[nodiscard]] bool isPublic(const Symbol& variable) const {
    return program_.statements[variable.statement].isPublic;
  }

  [[nodiscard]] bool usedByAlias(NameId variable) {
    for (NameId alias = meaning_.symbol(variable).firstAlias; alias != noName;
         alias = meaning_.symbol(alias).nextAlias)
      if (meaning_.symbol(alias).used) return true;
    return false;
  }

  const Program& program_;
  Findings findings_;
  Meaning meaning_;
  Arguments arguments_;
  ChannelUses channels_;
  DataReads data_;
  std::uint32_t index_ = 0;
  std::vector<std::uint32_t> blocks_;
  std::size_t conditions_ = 0;
  std::vector<NameId> called_;
};

}  // namespace

std::vector<Finding> check(const Program& program) { return Checker(program).run(); }

std::vector<Finding> check(std::string_view text) { return check(parse(text)); }

bool hasErrors(const std::vector<Finding>& findings) {
  return std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
    return infoOf(finding.code).severity == Severity::error;
  });
}

}  // namespace logscript
