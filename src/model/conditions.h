#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/project.h"

/// Conditions as text of the program language.
namespace model {

/// " <", " <=", " >", " >=", " =", " <>" for codes 0 to 5; "??" otherwise.
std::string_view operatorText(int code);

/// A condition counts when it has a variable and a known operator, or a free expression. A flag
/// counts when the logger has it.
bool isComplete(const Condition& condition);

/// "VBlk1(3) > 100"; flags read "Flag(3) = True"; "" for an incomplete condition.
std::string conditionText(const Condition& condition);

/// Start (0) or stop (1) expression of a table, conditions joined by their logic; "" without one.
std::string triggerText(const OutputTable& table, int trigger);
/// The same for a program in which the table has another name.
std::string triggerText(const OutputTable& table, int trigger, std::string_view name);
/// Write-if expression of a table, grouped as the table says; "" without one.
std::string writeIfText(const OutputTable& table);
/// The scan's burst trigger; "" when there is none.
std::string burstTriggerText(const ScanSetup& scan);

/// A condition on a flag 1 to 8: its value reads True or False.
bool testsFlag(const Condition& condition);

bool hasActiveTrigger(const OutputTable& table);
bool hasActiveWriteIf(const OutputTable& table);

/// True for a grouping of write-if conditions that can be used: empty, or the numbers 1 to
/// `conditions` joined by And, Or, Not and parentheses.
bool isWriteIfGrouping(std::string_view grouping, int conditions);

/// Why the grouping of a table's write-if conditions can't be used; nothing when it can.
std::optional<std::string> complaintAboutGrouping(const OutputTable& table);

/// Takes a write-if condition (from 1) out. Those behind it move up, and the grouping follows.
/// False when nothing is left of the grouping, or it could not be read: it is empty then.
bool removeWriteIf(OutputTable& table, int condition);

/// Renews the texts and the code that tell of the triggers in the project file.
void storeDataEvent(OutputTable& table);

/// Statement that switches the logger off on a measurement; "" when that is not enabled.
std::string powerOffLine(const LoggerConfiguration& configuration);
/// The same at a time of day or a date; "" when that is not enabled or no field takes part.
std::string timePowerOffLine(const LoggerConfiguration& configuration);
/// "PowerOff (0,10,Min)": what the battery saver does below its trip level.
std::string batterySaverStatement(const LoggerConfiguration& configuration);

/// Three program lines for each complete line of the status monitor.
std::vector<std::string> statusMonitorLines(const LoggerConfiguration& configuration);

/// Every expression of the project, for asking whether a variable is tested anywhere.
std::vector<std::string> allExpressions(const Project& project);

/// A condition line of a flag: code, and the comment that the program adds.
struct CommentedLine {
  std::string code, comment;
};
/// Lines that set flag 1 to 8; empty when the flag is not controlled.
std::vector<CommentedLine> flagLines(const Project& project, std::size_t flag);

}  // namespace model
