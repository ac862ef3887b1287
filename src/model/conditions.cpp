#include "model/conditions.h"

#include <algorithm>
#include <array>
#include <optional>

#include "model/time_units.h"
#include "text/strings.h"

namespace model {
namespace {

using text::concat;

constexpr int equalsCode = 4;
constexpr int differsCode = 5;

/// The flag that a variable text with an index names: 0 when it names no flag, -1 for a flag
/// that the logger does not have.
int flagNamed(std::string_view variable, int index) {
  constexpr std::string_view word = "Flag";
  if (!text::equalsIgnoringCase(variable.substr(0, word.size()), word)) return 0;
  const std::string_view rest = text::trimmed(variable.substr(word.size()));
  if (!rest.empty() && rest.front() != '(') return 0;
  const std::int64_t number =
      rest.empty() ? index : text::integerWithin(text::readNumber(rest.substr(1)), -1, 100);
  return number >= 1 && number <= static_cast<std::int64_t>(maxFlags) ? static_cast<int>(number)
                                                                      : -1;
}

int flagOf(const Condition& condition) {
  return flagNamed(text::trimmed(condition.MeasVar), condition.VarIdx);
}

std::string variableText(const Condition& condition) {
  const std::string_view name = text::trimmed(condition.MeasVar);
  const bool indexed = condition.VarIdx > 0 && name.find('(') == std::string_view::npos;
  return indexed ? concat(name, "(", condition.VarIdx, ")") : std::string(name);
}

std::string_view wordOf(bool flag) { return flag ? "True" : "False"; }

/// A comment would take the rest of the program line with it.
std::string_view withoutComment(std::string_view expression) {
  return text::trimmed(expression.substr(0, expression.find('\'')));
}

/// The condition's text with its value written as given.
std::string conditionWith(const Condition& condition, const std::string& value) {
  if (!isComplete(condition)) return {};
  const std::string_view expression = withoutComment(condition.Expression);
  if (!expression.empty()) return std::string(expression);
  const std::string compared = concat(variableText(condition), operatorText(condition.Compare));
  const std::string_view other = text::trimmed(condition.Varb);
  if (!other.empty()) return concat(compared, " ", other);
  const bool isOrIsNot = condition.Compare == equalsCode || condition.Compare == differsCode;
  if (testsFlag(condition) && isOrIsNot) return concat(compared, " ", wordOf(condition.Value != 0));
  return concat(compared, " ", value);
}

/// Conditions of tables hold their values in single precision.
std::string tableConditionText(const Condition& condition) {
  return conditionWith(condition, text::shortestSingle(condition.Value));
}

int conditionCount(int count) { return std::clamp(count, 0, static_cast<int>(maxConditions)); }

int triggerCount(const OutputTable& table, int trigger) {
  const bool likeStart = trigger == 0 || table.TrigTabStop < 0;
  return conditionCount(likeStart ? table.TrigTable : table.TrigTabStop);
}

std::string joinedTrigger(const OutputTable& table, int trigger) {
  std::string out;
  std::string logic;
  for (int c = 1; c <= triggerCount(table, trigger); ++c) {
    const std::string condition = tableConditionText(table.conditions.trigger(trigger, c));
    if (condition.empty()) continue;
    if (!out.empty()) out += concat(" ", logic, " ");
    out += condition;
    const std::string& next = table.conditions.TriggerLogic(trigger, c);
    logic = text::equalsIgnoringCase(text::trimmed(next), "Or") ? "Or" : "And";
  }
  return out;
}

bool mixesLogic(std::string_view expression) {
  return text::containsIgnoringCase(expression, " Or ") ||
         text::containsIgnoringCase(expression, " And ");
}

std::string inParentheses(std::string_view expression) { return concat("(", expression, ")"); }

/// "Flag(3)=True" gets a blank before its "="; "<=" and ">=" stay.
std::string spacedFlagExpression(std::string expression) {
  if (!text::equalsIgnoringCase(std::string_view(expression).substr(0, 5), "Flag("))
    return expression;
  std::string out;
  for (const char c : expression) {
    const char before = out.empty() ? ' ' : out.back();
    if (c == '=' && before != ' ' && before != '<' && before != '>') out += ' ';
    out += c;
  }
  return out;
}

std::vector<std::string> writeIfConditions(const OutputTable& table) {
  std::vector<std::string> texts;
  for (int c = 1; c <= conditionCount(table.WriteIf); ++c)
    texts.push_back(spacedFlagExpression(tableConditionText(table.conditions.writeIf(c))));
  return texts;
}

std::string joinedByAnd(const std::vector<std::string>& conditions) {
  std::string out;
  for (const std::string& condition : conditions) {
    if (condition.empty()) continue;
    if (!out.empty()) out += " And ";
    out += condition;
  }
  return out;
}

/// Reads a grouping such as "1 And (2 Or 3)" and puts the conditions in place of their numbers.
class Grouping {
 public:
  /// One condition may be left out, with what joins it to the others.
  Grouping(std::string_view grouping, const std::vector<std::string>& conditions,
           std::size_t leftOut = 0)
      : rest_(grouping), conditions_(conditions), leftOut_(leftOut) {}

  /// Nothing when the grouping is no expression or uses a condition that is not there.
  std::optional<std::string> run() {
    Part all;
    if (!expression(0, all) || !text::trimmed(rest_).empty()) return std::nullopt;
    return std::move(all.text);
  }

 private:
  static constexpr int maxDepth = 50;

  struct Part {
    std::string text;
    std::string_view joint;  // before it
    bool shrank = false;     // to one operand, which needs no parentheses
  };

  bool expression(int depth, Part& out) {
    std::vector<Part> parts;
    do {
      Part& part = parts.emplace_back();
      if (parts.size() > 1) part.joint = joint_;
      if (depth > maxDepth || !operand(depth, part)) return false;
    } while (takeJoint());
    const std::size_t before = parts.size();
    dropLeftOut(parts);
    out.shrank = parts.size() == 1 && before > 1;
    for (std::size_t i = 0; i < parts.size(); ++i)
      out.text += concat(i == 0 ? "" : parts[i].joint, parts[i].text);
    return true;
  }

  bool takeJoint() {
    joint_ = takeWord("And") ? " And " : takeWord("Or") ? " Or " : "";
    return !joint_.empty();
  }

  /// Of the two joints beside an operand that goes, Or stays: And ties closer.
  static void dropLeftOut(std::vector<Part>& parts) {
    for (std::size_t i = parts.size(); i-- > 0;) {
      if (!parts[i].text.empty()) continue;
      if (i + 1 < parts.size() && parts[i].joint == " Or ") parts[i + 1].joint = " Or ";
      parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(i));
    }
  }

  bool operand(int depth, Part& out) {
    std::string nots;
    while (takeWord("Not")) nots += "Not ";
    if (!take('(')) {
      if (!condition(out.text)) return false;
    } else {
      if (!expression(depth + 1, out) || !take(')')) return false;
      if (!out.text.empty() && !out.shrank) out.text = inParentheses(out.text);
    }
    if (!out.text.empty()) out.text.insert(0, nots);
    return true;
  }

  bool condition(std::string& out) {
    rest_ = text::trimmed(rest_);
    std::size_t number = 0;
    while (!rest_.empty() && text::isDigit(rest_.front()) && number <= maxConditions) {
      number = number * 10 + static_cast<std::size_t>(rest_.front() - '0');
      rest_.remove_prefix(1);
    }
    if (number < 1 || number > conditions_.size() || conditions_[number - 1].empty()) return false;
    if (number == leftOut_) return true;
    const std::string& text = conditions_[number - 1];
    out = mixesLogic(text) ? inParentheses(text) : text;
    return true;
  }

  bool take(char sign) {
    rest_ = text::trimmed(rest_);
    if (rest_.empty() || rest_.front() != sign) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool takeWord(std::string_view word) {
    rest_ = text::trimmed(rest_);
    if (!text::equalsIgnoringCase(rest_.substr(0, word.size()), word)) return false;
    if (rest_.size() > word.size() && text::isLetter(rest_[word.size()])) return false;
    rest_.remove_prefix(word.size());
    return true;
  }

  std::string_view rest_;
  const std::vector<std::string>& conditions_;
  std::size_t leftOut_;
  std::string_view joint_;  // that was read last
};

/// "PowerOff (0,10,Min)". An on-time takes the place of the first argument.
std::string powerOffStatement(bool onTime, bool remainOff, double duration, int unitCode) {
  const std::string_view first = onTime ? "StartTime()" : "0";
  const std::string_view unit = unitKeyword(unitCode);
  if (remainOff || !(duration > 0) || unit.empty()) return concat("PowerOff (", first, ",0,0)");
  return concat("PowerOff (", first, ",", duration, ",", unit, ")");
}

std::string offTimeTest(const LoggerConfiguration& c) {
  struct Field {
    int index;  // into StopTime()
    bool shown;
    int value;
  };
  const std::array<Field, 7> fields = {{{1, c.TimeOffYearShow, c.TimeOffYear},
                                        {2, c.TimeOffMonthShow, c.TimeOffMonth},
                                        {3, c.TimeOffDayShow, c.TimeOffDay},
                                        {4, c.TimeOffHourShow, c.TimeOffHour},
                                        {5, c.TimeOffMinShow, c.TimeOffMin},
                                        {6, c.TimeOffSecShow, c.TimeOffSec},
                                        {8, c.TimeOffWkDayShow, c.TimeOffWkDay}}};
  std::string out;
  for (const Field& field : fields) {
    if (!field.shown) continue;
    if (!out.empty()) out += " And ";
    out += concat("StopTime(", field.index, ") = ", field.value);
  }
  return out;
}

void addIfAny(std::vector<std::string>& list, std::string text) {
  if (!text.empty()) list.push_back(std::move(text));
}

void addTableExpressions(std::vector<std::string>& list, const Project& project) {
  for (const OutputTable& table : project.tables) {
    if (!table.TableOn) continue;
    addIfAny(list, triggerText(table, 0));
    addIfAny(list, triggerText(table, 1));
    addIfAny(list, writeIfText(table));
  }
}

void addPortExpressions(std::vector<std::string>& list, const Project& project) {
  for (const PortGroup& group : project.ports.groups)
    for (const Port& port : group.ports) {
      if (!port.Include || group.ReadMode) continue;
      for (const Condition& condition : port.conditions) addIfAny(list, conditionText(condition));
    }
}

void addStateExpressions(std::vector<std::string>& list, const Project& project) {
  for (const FlagControl& flag : project.flags)
    if (flag.FlagInclude)
      for (const Condition& state : flag.states) addIfAny(list, conditionText(state));
  for (const ExcitationChannel& channel : project.excitation.channels)
    if (channel.Include && channel.DynamicStatic == 1)
      for (const Condition& state : channel.conditions) addIfAny(list, conditionText(state));
}

void addLevelVariables(std::vector<std::string>& list,
                       const std::array<TableProcessing, maxTables>& processing) {
  for (const TableProcessing& table : processing) addIfAny(list, table.LevelMeasName);
}

void addMeasurementExpressions(std::vector<std::string>& list, const Project& project) {
  for (const CalculatedField& field : project.calculated.fields) addIfAny(list, field.CalcExpress);
  for (const BlockKind kind : allBlockKinds)
    for (std::size_t n = 1; n <= infoOf(kind).blockLimit; ++n)
      if (inUse(project, kind, n)) addLevelVariables(list, project.block(kind, n).processing);
  for (const CanItem& item : project.can.items)
    if (canItemInUse(project, item)) addLevelVariables(list, item.processing);
}

}  // namespace

std::string_view operatorText(int code) {
  static constexpr std::array<std::string_view, 6> texts = {" <", " <=", " >", " >=", " =", " <>"};
  return code >= 0 && code < static_cast<int>(texts.size()) ? texts[static_cast<std::size_t>(code)]
                                                            : "??";
}

bool testsFlag(const Condition& condition) { return flagOf(condition) > 0; }

bool isComplete(const Condition& condition) {
  if (!withoutComment(condition.Expression).empty()) return true;
  const bool known = condition.Compare >= 0 && condition.Compare <= differsCode;
  return known && !text::trimmed(condition.MeasVar).empty() && flagOf(condition) >= 0;
}

std::string conditionText(const Condition& condition) {
  return conditionWith(condition, text::shortest(condition.Value));
}

std::string triggerText(const OutputTable& table, int trigger) {
  return triggerText(table, trigger, table.TableName);
}

std::string triggerText(const OutputTable& table, int trigger, std::string_view name) {
  if (table.DisableTrigger) return {};
  std::string joined = joinedTrigger(table, trigger);
  if (joined.empty() || trigger != 0 || !table.SingleTrigger) return joined;
  const bool alternatives = text::containsIgnoringCase(joined, " Or ");
  return concat(alternatives ? inParentheses(joined) : joined, " And ", name, ".Record(1,0) < 1");
}

std::string writeIfText(const OutputTable& table) {
  if (table.DisableWriteIf) return {};
  const std::vector<std::string> conditions = writeIfConditions(table);
  if (const auto grouped = Grouping(table.GroupWriteIf, conditions).run()) return *grouped;
  return joinedByAnd(conditions);
}

std::string burstTriggerText(const ScanSetup& scan) {
  constexpr int onCondition = 1;
  constexpr int onFlag = 2;
  if (scan.BurstTrigger != onCondition && scan.BurstTrigger != onFlag) return {};
  Condition condition;
  condition.MeasVar = scan.TriggerMeasVar;
  condition.Compare = scan.TriggerCompare;
  condition.Value = scan.TriggerValue;
  condition.Expression = scan.TrigExpression;
  const bool comparesFlag = scan.TriggerCompare == equalsCode || scan.TriggerCompare == differsCode;
  if (scan.BurstTrigger == onFlag && !comparesFlag) {  // a flag alone: while it is high
    condition.Compare = equalsCode;
    condition.Value = -1;
  }
  return conditionText(condition);
}

bool hasActiveTrigger(const OutputTable& table) {
  return !triggerText(table, 0).empty() || !triggerText(table, 1).empty();
}

bool hasActiveWriteIf(const OutputTable& table) { return !writeIfText(table).empty(); }

bool isWriteIfGrouping(std::string_view grouping, int conditions) {
  if (text::trimmed(grouping).empty()) return true;
  const std::vector<std::string> texts(static_cast<std::size_t>(conditionCount(conditions)), "x");
  return Grouping(grouping, texts).run().has_value();
}

std::optional<std::string> complaintAboutGrouping(const OutputTable& table) {
  const int count = conditionCount(table.WriteIf);
  if (!isWriteIfGrouping(table.GroupWriteIf, count))
    return concat("'", table.GroupWriteIf, "' is no grouping of ", count,
                  " conditions: join their numbers by And, Or, Not and parentheses, as in "
                  "1 And (2 Or 3).");
  const std::vector<std::string> conditions = writeIfConditions(table);
  if (text::trimmed(table.GroupWriteIf).empty() || Grouping(table.GroupWriteIf, conditions).run())
    return std::nullopt;
  return concat("'", table.GroupWriteIf,
                "' names a condition that is not complete: choose its variable, or leave it out.");
}

bool removeWriteIf(OutputTable& table, int condition) {
  const int last = conditionCount(table.WriteIf);
  std::vector<std::string> numbers;  // that the others have then
  for (int c = 1; c <= last; ++c) numbers.push_back(concat(c > condition ? c - 1 : c));
  for (int c = condition; c < last; ++c)
    table.conditions.writeIf(c) = table.conditions.writeIf(c + 1);
  table.conditions.writeIf(last) = {};
  table.WriteIf = static_cast<std::int16_t>(last - 1);
  if (text::trimmed(table.GroupWriteIf).empty()) return true;
  table.GroupWriteIf =
      Grouping(table.GroupWriteIf, numbers, static_cast<std::size_t>(condition)).run().value_or("");
  return !table.GroupWriteIf.empty();
}

void storeDataEvent(OutputTable& table) {
  enum Code { none, betweenStartAndStop, withRecordsAround };
  const bool triggered = hasActiveTrigger(table);
  const bool around = table.PreTriggerScans > 0 || table.AftTriggerScans > 0;
  const auto textOf = [&](int trigger, std::string_view idle) {
    std::string expression = triggerText(table, trigger);
    return expression.empty() ? std::string(idle) : expression;
  };
  table.DataEventStart = triggered ? textOf(0, "True") : "";
  table.DataEventStop = triggered ? textOf(1, "False") : "";
  table.DataEventCode = static_cast<std::int16_t>(!triggered ? none
                                                  : around   ? withRecordsAround
                                                             : betweenStartAndStop);
}

std::string powerOffLine(const LoggerConfiguration& c) {
  const std::string_view variable = text::trimmed(c.PowerOffMeasVar);
  const bool known = c.PowerOffCompare >= 0 && c.PowerOffCompare <= differsCode;
  if (!c.EnablePowerOff || variable.empty() || !known) return {};
  return concat("If ", variable, operatorText(c.PowerOffCompare), c.PowerOffValue, " Then ",
                powerOffStatement(c.EnableOnTime, c.RemainPOOff, c.PowerOffPOTime, c.PowerOnMins));
}

std::string timePowerOffLine(const LoggerConfiguration& c) {
  const std::string test = offTimeTest(c);
  if (!c.EnableTime || test.empty()) return {};
  const bool remainOff = c.EnableOnTime || c.RemainOff;  // the on-time says when it comes back
  return concat("If ", test, " Then ",
                powerOffStatement(c.EnableOnTime, remainOff, c.PowerOffTime, c.PowerOffMins));
}

std::string batterySaverStatement(const LoggerConfiguration& c) {
  if (c.LowBattRetry)
    return powerOffStatement(false, false, c.RetryInterval,
                             c.BattRetryMins ? unitcode::minutes : unitcode::hours);
  return powerOffStatement(false, c.RemainOff, c.PowerOffTime, c.PowerOffMins);
}

std::vector<std::string> statusMonitorLines(const LoggerConfiguration& configuration) {
  std::vector<std::string> lines;
  const auto count = static_cast<std::size_t>(std::max<int>(configuration.StatusMonCount, 0));
  for (std::size_t i = 0; i < std::min(count, configuration.Status.size()); ++i) {
    const auto& [field, comparison, value, assignment] = configuration.Status[i];
    if (text::trimmed(field).empty() || flagNamed(text::trimmed(assignment), 0) < 1) continue;
    lines.push_back(concat(" If ", field, comparison, value, " Then"));
    lines.push_back(concat("       ", text::trimmed(assignment)));
    lines.emplace_back("  End If");
  }
  return lines;
}

std::vector<std::string> allExpressions(const Project& project) {
  std::vector<std::string> list;
  addTableExpressions(list, project);
  if (project.scan.ScanMode == 1) addIfAny(list, burstTriggerText(project.scan));
  addIfAny(list, powerOffLine(project.configuration));
  if (project.configuration.monitors(PowerOption::statusMonitor))
    for (std::string& line : statusMonitorLines(project.configuration))
      list.push_back(std::move(line));
  addPortExpressions(list, project);
  addStateExpressions(list, project);
  addMeasurementExpressions(list, project);
  return list;
}

std::vector<CommentedLine> flagLines(const Project& project, std::size_t flag) {
  const FlagControl& control = project.flags.at(flag - 1);
  if (!control.FlagInclude) return {};
  std::vector<CommentedLine> lines;
  for (std::size_t state = 0; state < control.states.size(); ++state) {
    const std::string condition = conditionText(control.states[state]);
    if (condition.empty()) continue;
    const bool value = state == 0 ? control.FlagOn : !control.FlagOn;
    if (lines.empty())
      lines.push_back({concat("If ", condition, " Then"), "'Test measurement"});
    else
      lines.push_back({concat("ElseIf ", condition, " Then"), "'Other condition"});
    lines.push_back({concat("Flag(", flag, ") = ", wordOf(value)),
                     concat("'Flag(", flag, ") if test condition is true")});
  }
  if (!lines.empty()) lines.push_back({"End If", "'End of If"});
  return lines;
}

}  // namespace model
