#include "verify/pick_variables.h"

#include <algorithm>

#include "model/channel_plan.h"
#include "model/conditions.h"
#include "model/stored_outputs.h"
#include "text/strings.h"
#include "verify/expression_variables.h"
#include "verify/message_lines.h"

namespace verify {
namespace {

using model::BlockKind;
using ports::Message;
using text::concat;
using Lines = std::vector<std::string>;

constexpr unsigned levelCrossingBit = 1U << 7;

constexpr std::array<std::string_view, model::blockKinds> kindNames = {
    "Thermocouple", "Voltage", "High Voltage", "Isolated", "Bridge", "Pulse", "Filter", "TCMUX"};

/// One message, unless there are no lines.
MissingVariables missing(std::string_view title, const Lines& lines, const std::string& text) {
  MissingVariables found{.count = lines.size(), .messages = {}};
  if (!lines.empty()) found.messages.push_back({.title = std::string(title), .text = text});
  return found;
}

MissingVariables missing(std::string_view title, const Lines& lines) {
  return missing(title, lines, listedLines(lines));
}

int triggerConditions(const model::OutputTable& table, int trigger) {
  const bool likeStart = trigger == 0 || table.TrigTabStop < 0;
  const int count = likeStart ? table.TrigTable : table.TrigTabStop;
  return std::clamp(count, 0, static_cast<int>(model::maxConditions));
}

/// The condition as the program has it, or at least its number.
std::string shownCondition(const model::Condition& condition, int number) {
  const std::string text = model::conditionText(condition);
  return text.empty() ? concat("condition ", number) : text;
}

/// Collects the lines of one kind of setting.
class LineFinder {
 public:
  LineFinder(const model::Project& project, const OfferedVariables& offered)
      : project_(project), offered_(offered) {}

  Lines calculatedFields() {
    for (std::size_t f = 0; f < project_.calculated.fields.size(); ++f) {
      const model::CalculatedField& field = project_.calculated.fields[f];
      const std::string name = field.CalcName.empty() ? concat("CalcField", f + 1) : field.CalcName;
      const bool isEmpty = text::trimmed(field.CalcExpress).empty();
      const auto variables =
          isEmpty ? offered_.missingName("") : offered_.missingIn(field.CalcExpress);
      for (const std::string& variable : variables)
        add(variable, " - used in expression ", field.CalcExpress, " (", name, ")");
    }
    return std::move(lines_);
  }

  Lines levelCrossings() {
    for (const BlockKind kind : model::allBlockKinds)
      for (std::size_t n = 1; n <= model::infoOf(kind).blockLimit; ++n)
        if (inUse(project_, kind, n) && !(kind == BlockKind::filter && isFft(project_, n))) {
          const model::MeasurementBlock& block = project_.block(kind, n);
          addLevelCrossings(kindNames[static_cast<std::size_t>(kind)], n, block.elements,
                            block.processing);
        }
    for (std::size_t k = 0; k < project_.can.items.size(); ++k) {
      const model::CanItem& item = project_.can.items[k];
      if (canItemInUse(project_, item))
        addLevelCrossings("CANBus", k + 1, item.values, item.processing);
    }
    return std::move(lines_);
  }

  Lines powerOff() {
    const model::LoggerConfiguration& configuration = project_.configuration;
    if (!configuration.EnablePowerOff) return {};
    for (const auto& name : offered_.missingName(text::trimmed(configuration.PowerOffMeasVar)))
      add("Variable ", name, " used in Power Off trigger is no longer available.");
    return std::move(lines_);
  }

  Lines burst() {
    const model::ScanSetup& scan = project_.scan;
    if (scan.ScanMode != 1 || scan.BurstTrigger == 0) return {};
    model::Condition condition;
    condition.MeasVar = scan.TriggerMeasVar;
    condition.Expression = scan.TrigExpression;
    for (const std::string& name : offered_.missingIn(condition))
      add("Variable ", name, " for Burst Trigger is no longer available.");
    return std::move(lines_);
  }

  Lines tableTriggers() {
    for (std::size_t t = 0; t < model::maxTables; ++t) {
      const model::OutputTable& table = project_.tables[t];
      if (!table.TableOn || table.DisableTrigger) continue;
      for (int trigger = 0; trigger < 2; ++trigger)
        for (int c = 1; c <= triggerConditions(table, trigger); ++c)
          for (const auto& name : offered_.missingIn(table.conditions.trigger(trigger, c)))
            add(trigger == 0 ? "START" : "STOP", " Trigger ( Table ", t + 1, ": ", name,
                " ) for table ", t + 1, " is no longer available.");
    }
    return std::move(lines_);
  }

  Lines stateConditions() {
    const model::ChannelPlan plan = channelPlan(project_);
    addPorts(plan);
    for (std::size_t f = 0; f < project_.flags.size(); ++f)
      if (project_.flags[f].FlagInclude)
        addStates(concat("Flag ", f + 1), project_.flags[f].states);
    for (std::size_t c = 0; c < project_.excitation.channels.size(); ++c) {
      const model::ExcitationChannel& channel = project_.excitation.channels[c];
      const model::Place place = placeOfExcitation(project_, plan, c + 1);
      if (channel.Include && channel.DynamicStatic == 1)
        addStates(concat("Slot ", place.slot, " CAO Port ", place.channel), channel.conditions);
    }
    return std::move(lines_);
  }

  Lines writeIfs() {
    for (std::size_t t = 0; t < model::maxTables; ++t) {
      const model::OutputTable& table = project_.tables[t];
      if (!table.TableOn || table.DisableWriteIf) continue;
      const int count = std::clamp<int>(table.WriteIf, 0, model::maxConditions);
      for (int c = 1; c <= count; ++c) {
        const model::Condition& condition = table.conditions.writeIf(c);
        for (const std::string& name : offered_.missingIn(condition))
          add("Variable ", name, ",  Table #", t + 1, " (", shownCondition(condition, c), ")");
      }
    }
    return std::move(lines_);
  }

 private:
  template <class... Pieces>
  void add(const Pieces&... pieces) {
    lines_.push_back(concat(pieces...));
  }

  static bool hasSecondDimension(const model::TableProcessing& processing) {
    return processing.NumDims > 1 || KGEN_COMMON::dimensionsIn(processing.LevelCode).second > 1 ||
           !processing.LevelMeasName.empty();
  }

  void addLevelCrossings(std::string_view kind, std::size_t number,
                         const std::vector<model::Element>& elements,
                         const std::array<model::TableProcessing, model::maxTables>& processing) {
    for (std::size_t t = 0; t < model::maxTables; ++t) {
      const bool stored = project_.tables[t].TableOn &&
                          std::any_of(elements.begin(), elements.end(), [t](const auto& element) {
                            return (element.Table[t] & levelCrossingBit) != 0;
                          });
      if (!stored || !hasSecondDimension(processing[t])) continue;
      for (const auto& name : offered_.missingName(processing[t].LevelMeasName))
        add("'", name, "', ", kind, " Block ", number, ", Table ", t + 1);
    }
  }

  void addPorts(const model::ChannelPlan& plan) {
    constexpr std::size_t ofUpperHalf = 8;
    const std::size_t count = std::min(plan.portGroups.size(), project_.ports.groups.size());
    for (std::size_t p = 0; p < count; ++p) {
      const model::PortGroup& group = project_.ports.groups[p];
      const model::PortGroupPlace& place = plan.portGroups[p];
      for (std::size_t n = 1; n <= model::portsPerGroup; ++n) {
        const model::Port& port = group.ports[n - 1];
        if (port.Include && !group.ReadMode)
          addStates(concat("Slot ", place.slot, " I/O Port ", n + (place.upper ? ofUpperHalf : 0)),
                    port.conditions);
      }
    }
  }

  /// Conditions that were never set up are no mistake here.
  template <class Conditions>
  void addStates(const std::string& source, const Conditions& conditions) {
    for (std::size_t s = 0; s < conditions.size(); ++s) {
      const model::Condition& condition = conditions[s];
      if (variableOf(condition).empty() && text::trimmed(condition.Expression).empty()) continue;
      const bool stops = conditions.size() == 2 && s == 1;
      for (const std::string& name : offered_.missingIn(condition))
        add(stops ? "STOP" : "START", " Trigger ( ", source, ": ", name, " ) for State ", s + 1,
            " is no longer available.");
    }
  }

  const model::Project& project_;
  const OfferedVariables& offered_;
  Lines lines_;
};

}  // namespace

MissingVariables missingInCalculatedFields(const model::Project& project,
                                           const OfferedVariables& offered) {
  const Lines lines = LineFinder(project, offered).calculatedFields();
  return missing(
      "INVALID CALCULATED FIELD", lines,
      joinedLines({"The variable(s) used in the following expressions are no longer available:",
                   listedLines(lines), "GO CHECK \"CALCULATED FIELDS\" NOW!"}));
}

MissingVariables missingInLevelCrossings(const model::Project& project,
                                         const OfferedVariables& offered) {
  const Lines lines = LineFinder(project, offered).levelCrossings();
  return missing("INVALID LEVEL CROSSING 2ND DIMENSION", lines,
                 joinedLines({"The following variables, configured as Level Crossing Histogram 2nd "
                              "dimension variables, ",
                              "are no longer available for use:", listedLines(lines)}));
}

MissingVariables missingInPowerOff(const model::Project& project, const OfferedVariables& offered) {
  return missing("INVALID POWER OFF TRIGGER", LineFinder(project, offered).powerOff());
}

MissingVariables missingInBurst(const model::Project& project, const OfferedVariables& offered) {
  return missing("INVALID BURST TRIGGER", LineFinder(project, offered).burst());
}

MissingVariables missingInTwoState(const model::Project& project, const OfferedVariables& offered) {
  MissingVariables found =
      missing(" INVALID TRIGGERED TABLE\"", LineFinder(project, offered).tableTriggers());
  MissingVariables states =
      missing("INVALID TRIGGER CONDITION", LineFinder(project, offered).stateConditions());
  found.count += states.count;
  for (Message& message : states.messages) found.messages.push_back(std::move(message));
  return found;
}

MissingVariables missingInWriteIf(const model::Project& project, const OfferedVariables& offered) {
  const Lines lines = LineFinder(project, offered).writeIfs();
  return missing("INVALID WRITE IF TRIGGER", lines,
                 joinedLines({"The following variables, used in conditional CallTable statements, "
                              "are no longer available:",
                              listedLines(lines)}));
}

}  // namespace verify

namespace KGEN_COMMON {
namespace {

using verify::CheckContext;
using verify::MissingVariables;
using verify::OfferedVariables;

using Finder = MissingVariables (*)(const model::Project&, const OfferedVariables&);

struct PickVarCheck {
  std::string_view procedure;
  Finder find;
};
constexpr PickVarCheck calcField = {"VerifyPickVar_CalcField", verify::missingInCalculatedFields};
constexpr PickVarCheck levelCross = {"VerifyPickVar_LevelCross", verify::missingInLevelCrossings};
constexpr PickVarCheck powerOff = {"VerifyPickVar_PowerOff", verify::missingInPowerOff};
constexpr PickVarCheck burst = {"VerifyPickVar_Burst", verify::missingInBurst};
constexpr PickVarCheck twoState = {"VerifyPickVar_TwoState", verify::missingInTwoState};
constexpr PickVarCheck writeIf = {"VerifyPickVar_WriteIf", verify::missingInWriteIf};

/// Shows what is missing unless it is only counted.
std::size_t run(const PickVarCheck& check, const model::Project& project,
                const OfferedVariables& offered, const CheckContext& context, bool shows = true) {
  std::size_t count = 0;
  ranWithoutFault(context, check.procedure, [&] {
    const MissingVariables found = check.find(project, offered);
    count = found.count;
    if (!shows) return;
    for (const ports::Message& message : found.messages) context.messages.show(message);
  });
  return count;
}

}  // namespace

std::size_t VerifyPickVars(const model::Project& project, const CheckContext& context,
                           verify::PickVarsMode mode) {
  const OfferedVariables offered(project);
  const bool shows = mode != verify::PickVarsMode::silent;
  std::size_t count = 0;
  for (const PickVarCheck& check : {calcField, levelCross, powerOff, burst, twoState, writeIf})
    count += run(check, project, offered, context, shows);
  return count;
}

void VerifyPickVar_CalcField(const model::Project& project, const OfferedVariables& offered,
                             const CheckContext& context) {
  run(calcField, project, offered, context);
}

void VerifyPickVar_LevelCross(const model::Project& project, const OfferedVariables& offered,
                              const CheckContext& context) {
  run(levelCross, project, offered, context);
}

void VerifyPickVar_PowerOff(const model::Project& project, const OfferedVariables& offered,
                            const CheckContext& context) {
  run(powerOff, project, offered, context);
}

void VerifyPickVar_Burst(const model::Project& project, const OfferedVariables& offered,
                         const CheckContext& context) {
  run(burst, project, offered, context);
}

void VerifyPickVar_TwoState(const model::Project& project, const OfferedVariables& offered,
                            const CheckContext& context) {
  run(twoState, project, offered, context);
}

void VerifyPickVar_WriteIf(const model::Project& project, const OfferedVariables& offered,
                           const CheckContext& context) {
  run(writeIf, project, offered, context);
}

}  // namespace KGEN_COMMON
