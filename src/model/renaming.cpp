#include "model/renaming.h"

#include <algorithm>
#include <span>
#include <unordered_map>
#include <unordered_set>

#include "model/expression_names.h"
#include "text/strings.h"

namespace model {
namespace {

using text::concat;

// ---- names that are given

// Each visitor is called with what the place is called without a name of its own, and that name;
// the project may be const.

template <class Elements, class Visitor>
void visitElements(const std::string& array, Elements& elements, const Visitor& visit) {
  for (std::size_t e = 0; e < elements.size(); ++e)
    visit(concat(array, "(", e + 1, ")"), elements[e].AliasName);
}

/// Spectra have no names.
template <class AnyProject, class Visitor>
void visitBlock(AnyProject& project, BlockKind kind, std::size_t number, const Visitor& visit) {
  if (kind == BlockKind::filter && isFft(project, number)) return;
  visitElements(arrayName(project, kind, number), project.block(kind, number).elements, visit);
}

template <class AnyProject, class Visitor>
void visitItem(AnyProject& project, std::size_t index, const Visitor& visit) {
  visitElements(concat("CBlk", index + 1), project.can.items[index].values, visit);
}

template <class AnyProject, class Visitor>
void visitField(AnyProject& project, std::size_t index, const Visitor& visit) {
  visit(concat("CalcField", index + 1), project.calculated.fields[index].CalcName);
}

template <class AnyProject, class Visitor>
void visitNames(AnyProject& project, const Visitor& visit) {
  for (const BlockKind kind : allBlockKinds)
    for (std::size_t n = 1; n <= blockCount(project, kind); ++n)
      visitBlock(project, kind, n, visit);
  for (std::size_t k = 0; k < project.can.items.size(); ++k) visitItem(project, k, visit);
  for (std::size_t f = 0; f < project.calculated.fields.size(); ++f) visitField(project, f, visit);
  for (auto& table : project.tables) visit(std::string(), table.TableName);
}

/// Collects what places are called.
template <class Collection>
auto into(Collection& names) {
  return [&names](const std::string& place, const std::string& own) {
    names.insert(names.end(), own.empty() ? place : own);
  };
}

using Texts = std::vector<std::string>;

Texts namesOfItem(const Project& project, std::size_t index) {
  Texts names;
  visitItem(project, index, into(names));
  return names;
}

Texts namesOfField(const Project& project, std::size_t index) {
  Texts names;
  visitField(project, index, into(names));
  return names;
}

// ---- names that changed

/// Compares the names of two states.
class Comparison {
 public:
  Comparison(const Project& before, const Project& after) : before_(before), after_(after) {
    visitNames(before, into(textsBefore_));
    visitNames(after, into(textsAfter_));
  }

  std::vector<NewName> run() {
    for (const BlockKind kind : allBlockKinds) compareBlocks(kind);
    compareLists(before_.can.items, after_.can.items, namesOfItem);
    compareLists(before_.calculated.fields, after_.calculated.fields, namesOfField);
    for (std::size_t t = 0; t < maxTables; ++t)
      compare({before_.tables[t].TableName}, {after_.tables[t].TableName}, false);
    return std::move(found_);
  }

 private:
  /// Only filter blocks change their numbers: when a slot before theirs gets another count.
  void compareBlocks(BlockKind kind) {
    const auto blocks = [kind](const Project& project) {
      return std::span(project.set(kind).blocks).first(blockCount(project, kind));
    };
    const auto names = [kind](const Project& project, std::size_t index) {
      Texts texts;
      visitBlock(project, kind, index + 1, into(texts));
      return texts;
    };
    if (kind == BlockKind::filter) return compareLists(blocks(before_), blocks(after_), names);
    const std::size_t count = std::min(blockCount(before_, kind), blockCount(after_, kind));
    for (std::size_t i = 0; i < count; ++i) compare(names(before_, i), names(after_, i), false);
  }

  /// Of lists whose lengths differ, what is equal at their ends belongs together.
  template <class List, class NamesOf>
  void compareLists(const List& before, const List& after, NamesOf namesOf) {
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t head = before.size() == after.size() ? shorter : 0;
    while (head < shorter && before[head] == after[head]) ++head;
    for (std::size_t i = 0; i < head; ++i) compare(namesOf(before_, i), namesOf(after_, i), false);
    for (std::size_t tail = 1; tail <= shorter - head; ++tail) {
      const std::size_t b = before.size() - tail, a = after.size() - tail;
      if (!(before[b] == after[a])) break;
      compare(namesOf(before_, b), namesOf(after_, a), true);
    }
  }

  void compare(const Texts& before, const Texts& after, bool moved) {
    for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
      const std::string& old = before[i];
      const std::string& now = after[i];
      if (old == now || old.empty() || now.empty()) continue;
      if (!moved && (textsAfter_.contains(old) || textsBefore_.contains(now))) continue;
      found_.push_back({old, now});
    }
  }

  const Project& before_;
  const Project& after_;
  std::unordered_set<std::string> textsBefore_, textsAfter_;
  std::vector<NewName> found_;
};

// ---- references

/// Puts new names into texts.
class Rewriter {
 public:
  explicit Rewriter(const std::vector<NewName>& names) {
    for (const NewName& name : names) newNames_[text::lower(name.before)] = name.after;
  }

  void rewrite(std::string& expression) const {
    std::vector<NameInExpression> found = namesIn(expression);
    for (auto name = found.rbegin(); name != found.rend(); ++name)  // the last first: places stay
      rewriteOne(expression, *name);
  }

  void rewrite(Condition& condition) const {
    rewrite(condition.Varb);
    rewrite(condition.Expression);
    const std::string* now = newName(concat(condition.MeasVar, "(", condition.VarIdx, ")"));
    if (condition.VarIdx <= 0 || now == nullptr) return rewrite(condition.MeasVar);
    condition.MeasVar = *now;
    condition.VarIdx = 0;
  }

 private:
  [[nodiscard]] const std::string* newName(std::string_view name) const {
    const auto found = newNames_.find(text::lower(name));
    return found == newNames_.end() ? nullptr : &found->second;
  }

  void rewriteOne(std::string& expression, const NameInExpression& found) const {
    if (const std::string* whole = newName(found.name)) {
      expression.replace(found.offset, found.length, *whole);
      return;
    }
    const std::string* stem = newName(std::string_view(found.name).substr(0, found.stem));
    const bool takesAnIndex = stem != nullptr && stem->find('(') == std::string::npos;
    if (takesAnIndex) expression.replace(found.offset, found.stem, *stem);
  }

  std::unordered_map<std::string, std::string> newNames_;
};

template <class Visitor>
void visitTables(Project& project, const Visitor& visit) {
  for (OutputTable& table : project.tables) {
    for (int c = 1; c <= static_cast<int>(maxConditions); ++c) {
      for (const int trigger : {0, 1}) visit(table.conditions.trigger(trigger, c));
      visit(table.conditions.writeIf(c));
    }
    visit(table.DataEventStart);
    visit(table.DataEventStop);
  }
}

template <class Visitor>
void visitControls(Project& project, const Visitor& visit) {
  for (PortGroup& group : project.ports.groups)
    for (Port& port : group.ports)
      for (Condition& condition : port.conditions) visit(condition);
  for (FlagControl& flag : project.flags)
    for (Condition& state : flag.states) visit(state);
  for (ExcitationChannel& channel : project.excitation.channels)
    for (Condition& condition : channel.conditions) visit(condition);
}

template <class Visitor>
void visitPowerAndScan(Project& project, const Visitor& visit) {
  visit(project.configuration.PowerOffMeasVar);
  visit(project.configuration.PowerOffLine);
  for (StatusLine& line : project.configuration.Status) {
    visit(line[0]);
    visit(line[2]);
  }
  visit(project.scan.TriggerMeasVar);
  visit(project.scan.TrigExpression);
}

template <class Visitor>
void visitLevelCrossings(Project& project, const Visitor& visit) {
  for (BlockSet& set : project.blockSets)
    for (MeasurementBlock& block : set.blocks)
      for (TableProcessing& table : block.processing) visit(table.LevelMeasName);
  for (CanItem& item : project.can.items)
    for (TableProcessing& table : item.processing) visit(table.LevelMeasName);
}

/// Every condition and text of a project that refers to variables by name.
template <class Visitor>
void visitReferences(Project& project, const Visitor& visit) {
  visitTables(project, visit);
  visitControls(project, visit);
  visitPowerAndScan(project, visit);
  visitLevelCrossings(project, visit);
  for (CalculatedField& field : project.calculated.fields) visit(field.CalcExpress);
}

}  // namespace

std::vector<NewName> newNames(const Project& before, const Project& after) {
  return Comparison(before, after).run();
}

Project withNewNames(const Project& before, Project after) {
  const std::vector<NewName> names = newNames(before, after);
  if (names.empty()) return after;
  const Rewriter rewriter(names);
  visitReferences(after, [&rewriter](auto& reference) { rewriter.rewrite(reference); });
  return after;
}

Project renamed(const Project& project, std::string_view oldName, std::string_view newName) {
  Project after = project;
  visitNames(after, [&](const std::string& place, std::string& own) {
    const std::string& name = own.empty() ? place : own;
    if (name.empty() || !text::equalsIgnoringCase(name, oldName)) return;
    own = text::equalsIgnoringCase(newName, place) ? std::string_view() : newName;
  });
  return withNewNames(project, std::move(after));
}

std::string withNewNames(std::string_view expression, const std::vector<NewName>& names) {
  std::string text(expression);
  Rewriter(names).rewrite(text);
  return text;
}

}  // namespace model
