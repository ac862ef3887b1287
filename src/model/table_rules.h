#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/project.h"
#include "ports/message_service.h"

/// What the output tables window refuses, asks and says.
namespace model {

inline constexpr std::size_t maxTableNameLength = 8;
inline constexpr std::string_view tableNameHelp = "Enter a table name up to 8 characters long.";

inline constexpr std::string_view calculatedTimeHelp =
    "Uncheck here to store date & time with each record (stores time in 12 bytes per record).";
inline constexpr std::string_view tableTimeHelp = "Press to display data tables time to fill.";
/// Where a table can be, with the code of TableLocation, and on which card.
inline constexpr std::array<std::pair<int, std::string_view>, 3> tableLocations = {
    {{3, "a PCMCIA device in the PAM module."},
     {2, "Flash (non-volatile) memory on the CPU."},
     {1, "S-Ram on the CPU."}}};
inline constexpr std::array<std::pair<int, std::string_view>, 3> tableCards = {
    {{1, "A."}, {2, "B."}, {0, "either one."}}};

/// Keys that the name box takes: letters, digits, "_" and Backspace.
bool isTableNameKey(char key);
/// A name as it may stand while it is typed: never a digit or "_" in front.
std::string typedTableName(std::string_view name);

/// The first two tables with the same name. Tables that are off count.
std::optional<ports::Message> complaintAboutDuplicateNames(const Project& project);
/// Names that give the same file when data are collected: one message for each table that is
/// like an earlier one.
std::vector<ports::Message> warningsAboutSimilarNames(const Project& project);

/// The interval text after Enter: a whole number within the limits of its unit, or a filter rate.
std::string clampedInterval(std::string_view interval, int unitCode);

/// Tables that use one flag for two purposes. Yes leaves them, No goes back.
std::optional<ports::Message> questionAboutTableFlags(const Project& project);
/// A flag 1 to 8 that the flags window controls already, and the lines that set it.
std::optional<ports::Message> informationAboutFlag(const Project& project, int flag);

/// The name that a table gets by itself: "VFilt3" or "FFilt3" at the rate of a filter, "Table3".
std::string givenTableName(std::string_view interval, std::size_t table);
/// The name for the table's interval in place of one that was given; any other name stays.
std::string proposedTableName(const OutputTable& settings, std::size_t table);

/// "The number of equivalent scans per second for Data01."
std::string equivalentScansLabel(const OutputTable& table);
/// "20 /Sec": how often a table keeps a record; "" when it has no interval.
std::string equivalentScansText(const Project& project, const OutputTable& table);
/// The time to fill of all tables that are on.
ports::Message tableTimeMessage(const Project& project);
/// A time that needs more memory than there is.
ports::Message complaintAboutTableTime();
/// Asked when the window is closed with edits.
ports::Message questionAboutTableEdits();

}  // namespace model
