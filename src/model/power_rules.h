#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/block_rules.h"
#include "model/project.h"
#include "ports/clock.h"

/// What the panels of battery, power off, card and status monitor say and take.
namespace model {

inline constexpr FieldBounds offDurationBounds = {0, 999, 1};
inline constexpr FieldBounds retryBounds = {0, 99, 1};
inline constexpr FieldBounds tripBounds = {10.5, 14, 0.1};  // volts
inline constexpr std::string_view tripPattern = "#0.0";
inline constexpr std::string_view tripHelp = "Enter a trip voltage from 10.5 to 14.0.";
/// A trip level as it is kept: tenths, within the bounds.
double settledTripVolts(double volts);

/// "hours": units of off durations, time-unit codes 2 to 5; "" for another code.
std::string durationUnit(int unitCode);
inline constexpr int firstDurationUnit = 2, lastDurationUnit = 5;
/// "Enter a power off duration of from 0 to 999 hours."
std::string durationHelp(int unitCode);
/// "Enter a retry interval of from 0 to 99 hours."
std::string retryHelp(bool inMinutes);
/// "Interval = 2 Hours", "Interval = None"
std::string intervalSummary(double value, int unitCode);

/// One field of the time to switch off and, but for the week day, of the time to come on again.
struct InstantField {
  std::string_view name;  // "Year"
  bool LoggerConfiguration::*shown;
  std::int16_t LoggerConfiguration::*off;
  std::int16_t LoggerConfiguration::*on;  // nullptr: there is none
};
std::span<const InstantField> instantFields();
/// What the field may be; a day ends with its month.
FieldBounds boundsOfOff(const LoggerConfiguration& configuration, const InstantField& field);
FieldBounds boundsOfOn(const LoggerConfiguration& configuration, const InstantField& field);
/// Fields that take part and are none yet become today's date or their least value, and days end
/// with their months.
void fillInstants(LoggerConfiguration& configuration, const ports::Moment& today);
/// " Jan" for 1, " Sun" for 1; "" for another number.
std::string_view monthText(int month);
std::string_view weekDayText(int weekDay);
/// "Press to turn on Year."
std::string showHelp(const LoggerConfiguration& configuration, const InstantField& field);

/// The two times as they are shown: "---- Jan 05 --:30:--".
std::string offInstantText(const LoggerConfiguration& configuration);
std::string onInstantText(const LoggerConfiguration& configuration);
/// The texts that follow from the power-off settings: the statement and both times.
void renewPowerOffTexts(LoggerConfiguration& configuration);

/// The comparisons of the status monitor, in the order of its list.
std::span<const std::string_view> statusComparisons();
/// "Flag(3) = True"
std::string statusAssignment(int flag, bool value);
/// All assignments that a line can have.
std::vector<std::string> statusAssignments();

/// Columns of a status line.
enum class StatusColumn { field, comparison, value, assignment };
/// A cell of the monitor, rows from 0; "" below its lines.
std::string statusCell(const LoggerConfiguration& configuration, std::size_t row,
                       StatusColumn column);
/// Stores a cell or says what is wrong with it. The monitor ends with its last line that has a
/// text.
std::optional<std::string> storeStatusCell(LoggerConfiguration& configuration, std::size_t row,
                                           StatusColumn column, std::string_view cell);
/// Adds a line below the last one, or says why that can't be.
std::optional<std::string> addStatusLine(LoggerConfiguration& configuration,
                                         const StatusLine& line);
void removeStatusLine(LoggerConfiguration& configuration, std::size_t row);
/// The first line that the program leaves out because a part of it is missing.
std::optional<std::string> remarkOnStatus(const LoggerConfiguration& configuration);

}  // namespace model
