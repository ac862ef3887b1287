#include "verify/lost_references.h"

#include <algorithm>

#include "model/conditions.h"
#include "model/parameter_text.h"
#include "text/strings.h"
#include "verify/message_lines.h"
#include "verify/offered_variables.h"

namespace verify {
namespace {

using model::Condition;
using text::concat;

/// Takes calculated fields out, until none is left that uses another one that went.
class FieldRemover {
 public:
  FieldRemover(const OfferedVariables& before, model::Project& project,
               std::vector<std::string>& settings)
      : before_(before), project_(project), settings_(settings) {}

  void run() {
    while (removeSome()) {
    }
    auto& calculated = project_.calculated;
    calculated.CalcFieldCount = static_cast<std::int16_t>(calculated.fields.size());
  }

 private:
  bool removeSome() {
    const OfferedVariables offered(project_);
    const std::size_t count = std::erase_if(project_.calculated.fields, [&](const auto& field) {
      const bool lost =
          offered.missingIn(field.CalcExpress).size() > before_.missingIn(field.CalcExpress).size();
      if (lost)
        settings_.push_back(concat("Calculated field ", field.CalcName, ": ", field.CalcExpress));
      return lost;
    });
    return count > 0;
  }

  const OfferedVariables& before_;
  model::Project& project_;
  std::vector<std::string>& settings_;
};

/// Takes the other settings out.
class Remover {
 public:
  Remover(const OfferedVariables& before, model::Project& project,
          std::vector<std::string>& settings)
      : before_(before), after_(project), project_(project), settings_(settings) {}

  void run() {
    for (std::size_t t = 0; t < model::maxTables; ++t) {
      takeTriggers(t);
      takeWriteIfs(t);
    }
    takePorts();
    takeStates();
    takeLevelCrossings();
    takePowerOff();
    takeStatusLines();
    takeBurstTrigger();
  }

 private:
  template <class Reference>
  [[nodiscard]] bool isLost(const Reference& reference) const {
    return after_.missingIn(reference).size() > before_.missingIn(reference).size();
  }
  [[nodiscard]] bool isLostName(std::string_view name) const {
    name = text::trimmed(name);
    return !name.empty() && before_.has(name) && !after_.has(name);
  }

  template <class... Pieces>
  void note(const Pieces&... pieces) {
    settings_.push_back(concat(pieces...));
  }

  void takeTriggers(std::size_t t) {
    model::OutputTable& table = project_.tables[t];
    bool changed = false;
    for (int trigger = 0; trigger < 2; ++trigger) {
      std::int16_t& count = trigger == 0 ? table.TrigTable : table.TrigTabStop;
      for (int c = std::min<int>(count, model::maxConditions); c >= 1; --c) {
        if (!isLost(table.conditions.trigger(trigger, c))) continue;
        note("Table ", t + 1, trigger == 0 ? ", start: " : ", stop: ",
             conditionText(table.conditions.trigger(trigger, c)));
        removeTrigger(table.conditions, trigger, c);
        --count;
        changed = true;
      }
    }
    if (changed) model::storeDataEvent(table);
  }

  /// Those behind it move up.
  static void removeTrigger(model::cOutputTable& conditions, int trigger, int c) {
    constexpr int last = model::maxConditions;
    for (; c < last; ++c) {
      conditions.trigger(trigger, c) = conditions.trigger(trigger, c + 1);
      conditions.logic(trigger, c) = conditions.logic(trigger, c + 1);
    }
    conditions.trigger(trigger, last) = {};
    conditions.logic(trigger, last) = "And";
  }

  void takeWriteIfs(std::size_t t) {
    model::OutputTable& table = project_.tables[t];
    for (int c = std::min<int>(table.WriteIf, model::maxConditions); c >= 1; --c) {
      if (!isLost(table.conditions.writeIf(c))) continue;
      note("Table ", t + 1, ", write if: ", conditionText(table.conditions.writeIf(c)));
      model::removeWriteIf(table, c);
    }
  }

  void takeCondition(Condition& condition, const std::string& place) {
    if (!isLost(condition)) return;
    note(place, ": ", conditionText(condition));
    condition = {};
  }

  void takePorts() {
    for (std::size_t p = 0; p < project_.ports.groups.size(); ++p)
      for (std::size_t n = 0; n < model::portsPerGroup; ++n)
        for (Condition& each : project_.ports.groups[p].ports[n].conditions)
          takeCondition(each, concat("Port ", n + 1, " of group ", p + 1));
  }

  void takeStates() {
    for (std::size_t f = 0; f < project_.flags.size(); ++f)
      for (std::size_t s = 0; s < 2; ++s)
        takeCondition(project_.flags[f].states[s], concat("Flag ", f + 1, ", state ", s + 1));
    for (std::size_t c = 0; c < project_.excitation.channels.size(); ++c) {
      model::ExcitationChannel& channel = project_.excitation.channels[c];
      for (std::size_t s = 0; s < 2 && channel.Include; ++s)
        takeCondition(channel.conditions[s], concat("Output ", c + 1, ", state ", s + 1));
    }
  }

  /// The crossings are counted by level alone then.
  void takeSecond(model::TableProcessing& processing, const std::string& place) {
    if (!isLostName(processing.LevelMeasName)) return;
    note(place, ", second variable of level crossings: ", processing.LevelMeasName);
    processing.LevelMeasName.clear();
    processing.LevelMeas = 0;
    processing.NumDims = 1;
    processing.LevNumTests = 0;
    processing.LevelVarTwo.clear();
    std::vector<double> numbers =
        model::sizedParameters(processing.LevelCode, model::TableProcessing().LevelCode);
    numbers[1] = 1;
    processing.LevelCode = model::parameterText(numbers);
  }

  void takeLevelCrossings() {
    for (const model::BlockKind kind : model::allBlockKinds)
      for (std::size_t n = 1; n <= model::blockCount(project_, kind); ++n)
        for (model::TableProcessing& each : project_.block(kind, n).processing)
          takeSecond(each, concat(model::infoOf(kind).name, " block ", n));
    for (std::size_t k = 0; k < project_.can.items.size(); ++k)
      for (model::TableProcessing& each : project_.can.items[k].processing)
        takeSecond(each, concat("CAN item ", k + 1));
  }

  void takePowerOff() {
    model::LoggerConfiguration& configuration = project_.configuration;
    if (!isLostName(configuration.PowerOffMeasVar)) return;
    note("Power off on ", configuration.PowerOffMeasVar);
    configuration.PowerOffMeasVar.clear();
    configuration.EnablePowerOff = false;
    configuration.PowerOffLine = powerOffLine(configuration);
  }

  void takeStatusLines() {
    model::LoggerConfiguration& configuration = project_.configuration;
    std::erase_if(configuration.Status, [this](const model::StatusLine& line) {
      const bool lost = isLostName(line[0]) || isLostName(line[2]);
      if (lost) note("Status monitor: ", line[0], line[1], line[2]);
      return lost;
    });
    configuration.StatusMonCount = static_cast<std::int16_t>(configuration.Status.size());
  }

  void takeBurstTrigger() {
    constexpr std::int16_t onCondition = 1;
    model::ScanSetup& scan = project_.scan;
    Condition condition;
    condition.MeasVar = scan.TriggerMeasVar;
    condition.Expression = scan.TrigExpression;
    if (scan.BurstTrigger != onCondition || !isLost(condition)) return;
    note("Burst trigger: ", burstTriggerText(scan));
    scan.BurstTrigger = 0;
    scan.TriggerMeasVar.clear();
    scan.TrigExpression.clear();
  }

  const OfferedVariables& before_;
  OfferedVariables after_;
  model::Project& project_;
  std::vector<std::string>& settings_;
};

}  // namespace

LostReferences lostReferences(const model::Project& before, model::Project after) {
  LostReferences lost{{}, std::move(after)};
  const OfferedVariables offered(before);
  FieldRemover(offered, lost.project, lost.settings).run();
  Remover(offered, lost.project, lost.settings).run();
  return lost;
}

std::optional<ports::Message> questionAboutLostReferences(
    const std::vector<std::string>& settings) {
  if (settings.empty()) return std::nullopt;
  return ports::Message{
      .title = "WARNING",
      .text = joinedLines({("The following settings use measurements that are removed, and will be "
                            "removed with them:"),
                           "", listedLines(settings), "", "ARE YOU SURE YOU WANT TO PROCEED?"}),
      .buttons = ports::Buttons::yesNo,
      .defaultButton = ports::Answer::no};
}

}  // namespace verify
