#include "model/power_rules.h"

#include <algorithm>
#include <cmath>

#include "model/conditions.h"
#include "model/limits.h"
#include "text/strings.h"

namespace model {
namespace {

using text::concat;
using Complaint = std::optional<std::string>;
using Configuration = LoggerConfiguration;

constexpr std::array<std::string_view, 4> durationUnits = {"seconds", "minutes", "hours", "days"};
constexpr std::array<std::string_view, 12> months = {
    " Jan", " Feb", " Mar", " Apr", " May", " Jun", " Jul", " Aug", " Sep", " Oct", " Nov", " Dec"};
constexpr std::array<std::string_view, 7> weekDays = {" Sun", " Mon", " Tue", " Wed",
                                                      " Thu", " Fri", " Sat"};
constexpr std::array<std::string_view, 5> comparisons = {" >", " >=", " <", " <=", " <>"};

constexpr InstantField fields[] = {
    {"Year", &Configuration::TimeOffYearShow, &Configuration::TimeOffYear,
     &Configuration::TimeOnYear},
    {"Month", &Configuration::TimeOffMonthShow, &Configuration::TimeOffMonth,
     &Configuration::TimeOnMonth},
    {"Day", &Configuration::TimeOffDayShow, &Configuration::TimeOffDay, &Configuration::TimeOnDay},
    {"Hour", &Configuration::TimeOffHourShow, &Configuration::TimeOffHour,
     &Configuration::TimeOnHour},
    {"Minute", &Configuration::TimeOffMinShow, &Configuration::TimeOffMin,
     &Configuration::TimeOnMin},
    {"Second", &Configuration::TimeOffSecShow, &Configuration::TimeOffSec,
     &Configuration::TimeOnSec},
    {"Week Day", &Configuration::TimeOffWkDayShow, &Configuration::TimeOffWkDay, nullptr},
};
constexpr std::size_t year = 0, month = 1, day = 2, hour = 3, minute = 4, second = 5, weekDay = 6;

template <std::size_t N>
std::string_view textOf(const std::array<std::string_view, N>& texts, int number) {
  return number >= 1 && number <= static_cast<int>(N) ? texts[static_cast<std::size_t>(number) - 1]
                                                      : std::string_view();
}

bool isLeapYear(int number) { return number % 4 == 0 && (number % 100 != 0 || number % 400 == 0); }

/// A month that is not given has as many days as any; so has a February of any year.
int daysIn(int monthNumber, int yearNumber) {
  constexpr std::array<int, 12> days = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (monthNumber < 1 || monthNumber > 12) return 31;
  if (monthNumber == 2 && yearNumber > 0 && !isLeapYear(yearNumber)) return 28;
  return days[static_cast<std::size_t>(monthNumber) - 1];
}

/// Bounds of the fields that have the same ones always.
FieldBounds plainBounds(std::size_t field) {
  static constexpr FieldBounds bounds[] = {{2000, 2099}, {1, 12}, {1, 31}, {0, 23},
                                           {0, 59},      {0, 59}, {1, 7}};
  return bounds[field];
}

std::size_t indexOf(const InstantField& field) {
  return static_cast<std::size_t>(&field - std::begin(fields));
}

/// Number of a field, or nothing where the time leaves it open.
using Part = std::optional<int>;
using Parts = std::array<Part, std::size(fields)>;

Parts offParts(const Configuration& configuration) {
  Parts parts;
  for (std::size_t i = 0; i < parts.size(); ++i)
    if (configuration.*fields[i].shown) parts[i] = configuration.*fields[i].off;
  return parts;
}

/// A date of zeros is none.
Parts onParts(const Configuration& configuration) {
  Parts parts;
  if (!configuration.EnableOnTime) return parts;
  for (std::size_t i = 0; i < weekDay; ++i) {
    const int number = configuration.*fields[i].on;
    if (number >= plainBounds(i).low) parts[i] = number;
  }
  return parts;
}

std::string digits(const Part& part, std::size_t width) {
  if (!part) return std::string(width, '-');
  const std::string number = concat(*part);
  return std::string(width - std::min(width, number.size()), '0') + number;
}

std::string instantText(const Parts& parts) {
  const std::string_view monthWord = parts[month] ? textOf(months, *parts[month]) : "";
  return concat(digits(parts[year], 4), monthWord.empty() ? " ---" : monthWord, " ",
                digits(parts[day], 2), parts[weekDay] ? textOf(weekDays, *parts[weekDay]) : "", " ",
                digits(parts[hour], 2), ":", digits(parts[minute], 2), ":",
                digits(parts[second], 2));
}

// ---- status monitor

std::string& cellOf(StatusLine& line, StatusColumn column) {
  return line[static_cast<std::size_t>(column)];
}

bool isBlank(const StatusLine& line) {
  return std::all_of(line.begin(), line.end(),
                     [](const std::string& cell) { return text::trimmed(cell).empty(); });
}

void endWithLastText(Configuration& configuration) {
  auto& lines = configuration.Status;
  while (!lines.empty() && isBlank(lines.back())) lines.pop_back();
  configuration.StatusMonCount = static_cast<std::int16_t>(lines.size());
}

/// A quote or a comment would take the rest of the program line with it.
Complaint complaintAboutOperand(std::string_view cell) {
  if (cell.find_first_of("'\"\r\n") == std::string_view::npos) return std::nullopt;
  return concat("'", cell, "' can't stand in a condition; leave out quotes");
}

/// The comparison as the list has it; blanks do not count.
std::optional<std::string_view> comparisonIn(std::string_view cell) {
  for (const std::string_view each : comparisons)
    if (text::trimmed(cell) == text::trimmed(each)) return each;
  return std::nullopt;
}

/// The assignment in the words of the program; "flag(3)=true" stands for one.
std::optional<std::string> assignmentIn(std::string_view cell) {
  const auto plain = [](std::string_view text) {
    std::string out = text::lower(text);
    out.erase(std::remove(out.begin(), out.end(), ' '), out.end());
    return out;
  };
  for (std::string& each : statusAssignments())
    if (plain(cell) == plain(each)) return std::move(each);
  return std::nullopt;
}

struct CheckedCell {
  Complaint complaint;
  std::string text;
};

CheckedCell checkedCell(StatusColumn column, std::string_view cell) {
  const std::string_view typed = text::trimmed(cell);
  if (typed.empty()) return {};
  if (column == StatusColumn::comparison) {
    if (const auto known = comparisonIn(typed)) return {{}, std::string(*known)};
    return {concat("'", typed, "' is no comparison; choose one of >, >=, <, <=, <>"), {}};
  }
  if (column == StatusColumn::assignment) {
    if (auto known = assignmentIn(typed)) return {{}, std::move(*known)};
    return {concat("'", typed, "' sets no flag; choose an entry such as Flag(3) = True"), {}};
  }
  return {complaintAboutOperand(typed), std::string(typed)};
}

}  // namespace

double settledTripVolts(double volts) {
  return std::clamp(std::round(volts * 10) / 10, tripBounds.low, tripBounds.high);
}

std::string durationUnit(int unitCode) {
  return std::string(textOf(durationUnits, unitCode - firstDurationUnit + 1));
}

std::string durationHelp(int unitCode) {
  return concat("Enter a power off duration of from 0 to 999 ", durationUnit(unitCode), ".");
}

std::string retryHelp(bool inMinutes) {
  return concat("Enter a retry interval of from 0 to 99 ", inMinutes ? "minutes." : "hours.");
}

std::string intervalSummary(double value, int unitCode) {
  if (!(value > 0)) return "Interval = None";
  std::string unit = durationUnit(unitCode);
  if (!unit.empty()) unit.front() = text::upper(unit.substr(0, 1)).front();
  return concat("Interval = ", value, " ", unit);
}

std::span<const InstantField> instantFields() { return fields; }

FieldBounds boundsOfOff(const Configuration& configuration, const InstantField& field) {
  FieldBounds bounds = plainBounds(indexOf(field));
  const Parts parts = offParts(configuration);
  if (indexOf(field) == day)
    bounds.high = daysIn(parts[month].value_or(0), parts[year].value_or(0));
  return bounds;
}

FieldBounds boundsOfOn(const Configuration& configuration, const InstantField& field) {
  FieldBounds bounds = plainBounds(indexOf(field));
  if (indexOf(field) == day)
    bounds.high = daysIn(configuration.TimeOnMonth, configuration.TimeOnYear);
  return bounds;
}

void fillInstants(Configuration& configuration, const ports::Moment& today) {
  const int starts[] = {today.year, today.month, today.day, 0, 0, 0, 1};
  const auto fill = [&starts](std::int16_t& number, std::size_t field, const FieldBounds& bounds) {
    if (number < bounds.low) number = static_cast<std::int16_t>(starts[field]);
    number = static_cast<std::int16_t>(std::clamp<double>(number, bounds.low, bounds.high));
  };
  for (std::size_t i = 0; i < std::size(fields); ++i) {
    const InstantField& field = fields[i];
    if (configuration.*field.shown)
      fill(configuration.*field.off, i, boundsOfOff(configuration, field));
    if (configuration.EnableOnTime && field.on != nullptr)
      fill(configuration.*field.on, i, boundsOfOn(configuration, field));
  }
}

std::string_view monthText(int number) { return textOf(months, number); }
std::string_view weekDayText(int number) { return textOf(weekDays, number); }

std::string showHelp(const Configuration& configuration, const InstantField& field) {
  return concat("Press to turn ", configuration.*field.shown ? "off" : "on", " ", field.name, ".");
}

std::string offInstantText(const Configuration& configuration) {
  return instantText(offParts(configuration));
}

std::string onInstantText(const Configuration& configuration) {
  return instantText(onParts(configuration));
}

void renewPowerOffTexts(Configuration& configuration) {
  configuration.PowerOffLine = powerOffLine(configuration);
  configuration.PowerOffString = offInstantText(configuration);
  configuration.PowerOnString = onInstantText(configuration);
}

std::span<const std::string_view> statusComparisons() { return comparisons; }

std::string statusAssignment(int flag, bool value) {
  return concat("Flag(", flag, ") = ", value ? "True" : "False");
}

std::vector<std::string> statusAssignments() {
  std::vector<std::string> all;
  for (int flag = 1; flag <= static_cast<int>(maxFlags); ++flag)
    for (const bool value : {true, false}) all.push_back(statusAssignment(flag, value));
  return all;
}

std::string statusCell(const Configuration& configuration, std::size_t row, StatusColumn column) {
  if (row >= configuration.Status.size()) return {};
  return configuration.Status[row][static_cast<std::size_t>(column)];
}

Complaint storeStatusCell(Configuration& configuration, std::size_t row, StatusColumn column,
                          std::string_view cell) {
  CheckedCell checked = checkedCell(column, cell);
  if (checked.complaint) return std::move(checked.complaint);
  auto& lines = configuration.Status;
  if (row >= lines.size()) lines.resize(row + 1);
  cellOf(lines[row], column) = std::move(checked.text);
  endWithLastText(configuration);
  return std::nullopt;
}

Complaint addStatusLine(Configuration& configuration, const StatusLine& line) {
  if (configuration.Status.size() >= maxStatusLines)
    return concat("The monitor has its ", maxStatusLines, " lines; remove one first.");
  StatusLine checked;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (text::trimmed(line[i]).empty())
      return "A line needs a field, a comparison, a value and a flag.";
    CheckedCell cell = checkedCell(static_cast<StatusColumn>(i), line[i]);
    if (cell.complaint) return concat(*cell.complaint, ".");
    checked[i] = std::move(cell.text);
  }
  configuration.Status.push_back(std::move(checked));
  endWithLastText(configuration);
  return std::nullopt;
}

void removeStatusLine(Configuration& configuration, std::size_t row) {
  auto& lines = configuration.Status;
  if (row < lines.size()) lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(row));
  endWithLastText(configuration);
}

Complaint remarkOnStatus(const Configuration& configuration) {
  for (std::size_t row = 0; row < configuration.Status.size(); ++row) {
    const StatusLine& line = configuration.Status[row];
    const bool whole = std::none_of(line.begin(), line.end(), [](const std::string& cell) {
      return text::trimmed(cell).empty();
    });
    if (!whole && !isBlank(line))
      return concat("Line ", row + 1,
                    " is not whole: it needs a field, a comparison, a value and a flag.");
  }
  return std::nullopt;
}

}  // namespace model
