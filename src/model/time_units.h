#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/project.h"

namespace model {

/// Codes of time units that are meant by name.
namespace unitcode {
inline constexpr std::int16_t seconds = 2, minutes = 3, hours = 4;
}

/// "uSec" .. "Day" as the program language writes them ("Hr" for hours); "" for another code.
std::string_view unitKeyword(int code);

/// A value in units of a code in microseconds. Code 0 counts tens of microseconds; 0 for an
/// unknown code.
double microsFrom(double value, int unitCode);

/// The main scan interval in microseconds.
double scanMicros(const Project& project);

/// The number that is true beside its unit's name: code 0 counts tens of microseconds.
double trueNumber(double value, int unitCode);

bool isVoltFilterRate(std::string_view interval);
bool isFftFilterRate(std::string_view interval);

/// Subscan of a voltage filter slot: interval in whole microseconds and measurements a scan.
struct FilterSubscan {
  std::int64_t intervalMicros = 0;
  std::int64_t count = 0;
  bool operator==(const FilterSubscan&) const = default;
};
FilterSubscan filterSubscan(const Project& project, const FilterSlot& slot);

/// Microseconds between the records of tables at the rate of the first voltage filter slot
/// (first FFT slot) in use; 0 when there is none.
double voltFilterMicros(const Project& project);
double fftFilterMicros(const Project& project);

/// A number's interval text as a whole number, 0 counting as 1.
std::int64_t intervalNumber(std::string_view interval);

/// Microseconds between the records of a table: those of the scan when it keeps one each scan.
double recordMicros(const Project& project, const OutputTable& table);

/// The interval of a table as program and table information state it.
struct ShownInterval {
  bool synchronous = false;
  double number = 0;  // true beside the unit
  int unitCode = 0;
  double micros = 0;
};
ShownInterval shownInterval(const Project& project, const OutputTable& table);

/// Whole days, hours and minutes, and the seconds that remain.
struct Duration {
  std::int64_t days = 0, hours = 0, minutes = 0;
  double seconds = 0;
};
Duration durationFrom(double seconds);

/// Seconds until the buffer of a table is full.
double secondsToFill(const Project& project, const OutputTable& table);

/// A negative record count takes all memory, like automatic size.
bool isAutoSized(const OutputTable& table);

}  // namespace model

namespace model {

/// What each processing stores, by its code; the last three have parameters.
inline constexpr std::array<std::string_view, 8> processingTexts = {
    "The last value scanned will be stored",
    "The largest value scanned will be stored",
    "The smallest value scanned will be stored",
    "The mean of all values scanned will be stored",
    "The standard deviation of all values scanned will be stored",
    "Displays a window to set up parameters. A histogram is made",
    "Displays a window to set up parameters. A rainflow histogram is made",
    "Displays a window to set up parameters. A level crossing histogram is made"};

}  // namespace model

namespace KGEN_COMMON {

/// "microsecond" or "uSec" and so on; "" for a code outside 0 to 5.
std::string TimeUnitName(int code, bool longName);

/// A table's output interval in microseconds: 0 counts as 1, "VFilt" and "FFilt" follow the filter.
double OutputIntervalMicros(const model::Project& project, const model::OutputTable& table);

/// "Table 1 Time To Fill:" and its line for every table that is on.
std::string timeToFillText(const model::Project& project);

/// The description of a processing code followed by " each time table NAME outputs a record.";
/// table 1 to 8, another one throws std::out_of_range.
std::string ProcessingDescription(const model::Project& project, int code, std::size_t table);

}  // namespace KGEN_COMMON
