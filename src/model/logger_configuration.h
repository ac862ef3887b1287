#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace model {

/// Index into ModuleQty. Kinds 0 to 2 sit in every logger and are not counted; the quantity of
/// the CPU is a code (1 = 7103, 2 = 7104).
enum class ModuleKindIndex {
  powerSupply7101 = 0,
  cpu = 1,
  converter7105 = 2,
  adaptor7151 = 3,
  analog7121 = 4,
  excitation7131 = 5,
  counter7141 = 6,
  highVoltage7127 = 7,
  filter7125 = 8,
  isolation7128 = 9,
};
constexpr std::size_t moduleKinds = 10;

/// The switches of MonitorPower, in the order of the file.
enum class PowerOption {
  batteryVolts = 0,
  batteryCurrent = 1,
  conditionalOff = 2,
  batterySaver = 3,
  selfCalibration = 4,
  statusMonitor = 5,
};

inline constexpr std::string_view unsetInstant = "---- --- -- --:--:--";

/// One line of the status monitor: field, operator text, value, assignment ("Flag(3) = True").
using StatusLine = std::array<std::string, 4>;

/// How the logger is built and powered. Fields are named like their keys in the project file.
struct LoggerConfiguration {
  std::string Version = "6.0";  // of the file's layout; kept as read
  std::string VersionLastSaved;
  std::string PCTime;  // last save, mm-dd-yyyy hh:mm:ss
  std::string Operator = "Name";
  std::string IDNumber = "Number";
  std::array<std::int16_t, moduleKinds> ModuleQty = {0, 1};  // by ModuleKindIndex
  std::int16_t TCMUXQty = 0;
  std::int16_t CanBusQty = 0;
  double SizeCardA = 0;  // Mbytes; 0: no card
  std::array<bool, 6> MonitorPower = {false, false, false, true, true, false};  // by PowerOption
  // Card type (0 flash ATA, 1 static RAM), unit shown for its size (0 Mbytes, 1 Gbytes),
  // integration time in us of the 7121 reference temperature (0 stands for 40).
  std::array<std::int16_t, 3> TcConfigOpts = {};

  bool RemainOff = false;
  bool RemainPOOff = false;
  std::string PowerOffMeasVar;
  std::int16_t PowerOffCompare = 2;  // operator code
  double PowerOffValue = 0;
  double PowerOffTime = 1;        // in the unit PowerOffMins
  double PowerOffPOTime = 1;      // in the unit PowerOnMins
  std::int16_t PowerOffMins = 4;  // time-unit codes 2 to 5
  std::int16_t PowerOnMins = 4;
  std::string PowerOffLine;
  bool AutoChan = true;  // off: every block begins on a module of its own
  bool DefaultBattVolt = true;
  double BattTripVolts = 11.5;
  bool LowBattRetry = true;
  double RetryInterval = 1;
  bool BattRetryMins = false;  // on: minutes, off: hours
  std::int16_t StatusMonCount = 0;
  std::int16_t StatusFlag = 0;
  bool StatTrueFalse = false;

  bool TimeOffYearShow = false, TimeOffMonthShow = false, TimeOffDayShow = false;
  bool TimeOffHourShow = false, TimeOffMinShow = false, TimeOffSecShow = false;
  bool TimeOffWkDayShow = false;
  std::int16_t TimeOffYear = 0, TimeOffMonth = 0, TimeOffDay = 0;
  std::int16_t TimeOffHour = 0, TimeOffMin = 0, TimeOffSec = 0;
  std::int16_t TimeOffWkDay = 0;  // 1 = Sunday
  std::int16_t TimeOnYear = 0, TimeOnMonth = 0, TimeOnDay = 0;
  std::int16_t TimeOnHour = 0, TimeOnMin = 0, TimeOnSec = 0;
  std::string PowerOffString{unsetInstant};
  std::string PowerOnString{unsetInstant};
  bool EnablePowerOff = false;
  bool EnableTime = false;
  bool EnableOnTime = false;
  bool TypeIII = false;
  std::vector<StatusLine> Status;  // StatusMonCount lines

  [[nodiscard]] std::int16_t& quantity(ModuleKindIndex kind) {
    return ModuleQty[static_cast<std::size_t>(kind)];
  }
  [[nodiscard]] int quantity(ModuleKindIndex kind) const {
    return ModuleQty[static_cast<std::size_t>(kind)];
  }
  [[nodiscard]] bool monitors(PowerOption option) const {
    return MonitorPower[static_cast<std::size_t>(option)];
  }
  bool operator==(const LoggerConfiguration&) const = default;
};

/// True for the K700X: the CPU code is 2 (7104).
bool isK700X(const LoggerConfiguration& configuration);

/// ".KX7" or ".KP7".
std::string_view programExtension(const LoggerConfiguration& configuration);

/// "7103 CPU (1=7103, 2=7104)" or "7104 CPU (1=7103, 2=7104)".
std::string cpuLabel(const LoggerConfiguration& configuration);

/// "7121/22": the name of a module kind in programs and messages; the CPU has two.
std::string_view moduleName(ModuleKindIndex kind);

/// Modules that the user chose: all kinds but the three fixed ones.
int userModules(const LoggerConfiguration& configuration);

}  // namespace model
