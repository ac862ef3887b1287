#include "control/checked_program.h"

#include <algorithm>
#include <vector>

#include "logscript/check.h"
#include "model/channel_plan.h"
#include "model/conditions.h"
#include "text/strings.h"

namespace control {
namespace {

using logscript::Finding;
using text::concat;

std::vector<Finding> errorsIn(std::string_view program) {
  std::vector<Finding> errors = logscript::check(program);
  std::erase_if(errors, [](const Finding& finding) {
    return logscript::infoOf(finding.code).severity != logscript::Severity::error;
  });
  return errors;
}

void neutralise(model::Condition& condition) {
  if (!conditionText(condition).empty()) condition.Expression = "True";
}

void neutralise(std::string& expression) {
  if (!expression.empty()) expression = "0";
}

void neutralise(std::array<model::TableProcessing, model::maxTables>& processing) {
  for (model::TableProcessing& table : processing) neutralise(table.LevelMeasName);
}

void neutraliseTables(model::Project& project) {
  for (model::OutputTable& table : project.tables)
    for (int c = 1; c <= static_cast<int>(model::maxConditions); ++c) {
      for (const int trigger : {0, 1}) neutralise(table.conditions.trigger(trigger, c));
      neutralise(table.conditions.writeIf(c));
    }
}

void neutraliseControls(model::Project& project) {
  for (model::PortGroup& group : project.ports.groups)
    for (model::Port& port : group.ports)
      for (model::Condition& condition : port.conditions) neutralise(condition);
  for (model::FlagControl& flag : project.flags)
    for (model::Condition& state : flag.states) neutralise(state);
  for (model::ExcitationChannel& channel : project.excitation.channels)
    for (model::Condition& state : channel.conditions) neutralise(state);
}

void neutralisePower(model::LoggerConfiguration& configuration) {
  neutralise(configuration.PowerOffMeasVar);
  for (model::StatusLine& line : configuration.Status) line = {"0", " = ", "0", "Flag(1) = True"};
}

/// The project with every text that goes into the program as the engineer typed it put out of
/// play. Whatever is wrong with the program of such a project is the program writer's doing.
model::Project withoutOwnTexts(model::Project project) {
  neutraliseTables(project);
  neutraliseControls(project);
  neutralisePower(project.configuration);
  if (!burstTriggerText(project.scan).empty()) project.scan.TrigExpression = "True";
  for (model::CalculatedField& field : project.calculated.fields) neutralise(field.CalcExpress);
  for (model::BlockSet& set : project.blockSets)
    for (model::MeasurementBlock& block : set.blocks) neutralise(block.processing);
  for (model::CanItem& item : project.can.items) neutralise(item.processing);
  return project;
}

bool isPlace(const Finding& finding) {
  return finding.code == logscript::Code::slotRange ||
         finding.code == logscript::Code::channelTwice;
}

/// "line 12: 'X' is not declared; ... (X = Y + 1), and 2 more".
std::string firstOf(const std::vector<Finding>& errors, std::string_view program) {
  const Finding& first = errors.front();
  const std::string more =
      errors.size() > 1 ? concat(", and ", errors.size() - 1, " more") : std::string();
  return concat("line ", first.line, ": ", first.text, " (",
                text::trimmed(logscript::sourceLine(first, program)), ")", more);
}

std::string faultText(const std::vector<Finding>& errors, std::string_view program,
                      std::string_view file) {
  return concat("the program made for ", file,
                " is faulty by a mistake of the generator: ", firstOf(errors, program),
                ". No program is written, an older one is kept; please report this together with "
                "the project file");
}

std::string remarkText(const std::vector<Finding>& errors, std::string_view program,
                       std::string_view file) {
  const bool places = std::all_of(errors.begin(), errors.end(), isPlace);
  return concat(places ? "what has no module makes a fault in "
                       : "a condition or an expression of the project makes a fault in ",
                file, ", ", firstOf(errors, program));
}

bool fitsLogger(const model::Project& project) {
  return model::channelPlan(project).problems.empty() &&
         userModules(project.configuration) <= static_cast<int>(model::maxUserModules);
}

/// Errors that are there with or without the engineer's texts. A project that does not fit its
/// logger has places that no logger has.
std::vector<Finding> writersErrors(const model::Project& project, std::string_view program) {
  std::vector<Finding> errors = errorsIn(program);
  if (!errors.empty() && !fitsLogger(project)) std::erase_if(errors, isPlace);
  return errors;
}

}  // namespace

CheckedProgram checkedProgram(const model::Project& project, const model::DocumentStamp& stamp,
                              std::string_view file, ProgramWriter write) {
  CheckedProgram result{write(project, stamp), "", ""};
  const std::vector<Finding> errors = errorsIn(result.program.text);
  if (errors.empty()) return result;
  const SAVEDLD::Program bare = write(withoutOwnTexts(project), stamp);
  const std::vector<Finding> ownErrors = writersErrors(project, bare.text);
  if (ownErrors.empty())
    result.remark = remarkText(errors, result.program.text, file);
  else
    result.fault = faultText(ownErrors, bare.text, file);
  return result;
}

}  // namespace control
