#include "logscript/instructions.h"

#include <algorithm>
#include <array>

namespace logscript {
namespace {

constexpr ArgumentKind kinds[] = {
    {'d', Wanted::destination, "destination"},
    {'n', Wanted::constant, "repetitions"},
    {'r', Wanted::range, "range"},
    {'s', Wanted::slot, "slot"},
    {'c', Wanted::channel, "channel"},
    {'x', Wanted::channel, "excitation channel"},
    {'b', Wanted::truth, "switch"},
    {'v', Wanted::value, "value"},
    {'k', Wanted::constant, "number"},
    {'S', Wanted::constant, "settling time"},
    {'I', Wanted::constant, "integration time"},
    {'e', Wanted::constant, "excitation"},
    {'m', Wanted::scale, "multiplier"},
    {'o', Wanted::scale, "offset"},
    {'t', Wanted::thermocouple, "thermocouple type"},
    {'U', Wanted::thermocoupleOrZero, "thermocouple type"},
    {'R', Wanted::value, "reference temperature"},
    {'u', Wanted::timeUnit, "time unit"},
    {'w', Wanted::timeUnitOrZero, "time unit"},
    {'f', Wanted::dataType, "data type"},
    {'y', Wanted::source, "source"},
    {'a', Wanted::array, "array"},
    {'q', Wanted::truth, "disable"},
    {'T', Wanted::table, "table"},
    {'g', Wanted::text, "names"},
    {'z', Wanted::variable, "variable"},
    {'F', Wanted::constant, "kind of calibration"},
    {'l', Wanted::constant, "number of levels"},
    {'L', Wanted::array, "levels"},
    {'j', Wanted::constant, "number of second levels"},
    {'J', Wanted::array, "second levels"},
    {'*', Wanted::anything, "anything"},
};

using enum Inputs;

constexpr Instruction rows[] = {
    // Measurements.
    {"VoltDiff", "dnrscbSImo", inScan, differential, 2},
    {"VoltSE", "dnrscSImo", inScan, singleEnded, 1},
    {"TCDiff", "dnrsctRbSImo", inScan, differential, 2},
    {"TCSE", "dnrsctRSImo", inScan, singleEnded, 1},
    {"BrFull", "dnrscsxkebbSImo", inScan, differential, 2},
    {"BrFull6W", "dnrrscsxkebbSImo", inScan, differential, 4},
    {"BrHalf", "dnrscsxkebbSImo", inScan, singleEnded, 1},
    {"BrHalf3W", "dnrscsxkebbSImo", inScan, singleEnded, 2},
    {"BrHalf4W", "dnrrscsxkebbSImo", inScan, differential, 4},
    {"TCMUX", "dnrscskkURbkSImo", inScan, differential, 2},
    {"PulseCount", "dnsckkmo", inScan, pulse, 1},
    {"VoltFilt", "dnrsckkmo", inScan, filter, 1},
    {"FFTFilt", "dnrsckkkkkkkkkkmo", inScan, filter, 1},
    {"ModuleTemp", "dnsI", inScan},
    {"PanelTemp", "dI", inScan},
    {"Battery", "dk", inScan},
    {"CANBus", "dvvvvkkkknmo"},
    {"ReadIO", "dskk", inScan},
    {"TimerIO", "*", inScan},
    // Outputs of the logger.
    {"Excite", "sxkv", inScan},
    {"Excite", "sxkvk", inScan},
    {"WriteIO", "skkv", inScan},
    {"PortSet", "skv", inScan},
    {"PowerOff", "ykw"},
    // Work on values.
    {"StrainCalc", "dnyykkmk"},
    {"StrainCalc", "dnykkmk"},
    {"PRT", "dnymo"},
    {"AvgRun", "dnyk"},
    {"FieldCal", "Fdvyyvyvv"},
    {"FieldCalStrain", "Fdvyvvyvvyv"},
    {"FieldCalStrain", "Fdvvyvyvvv"},
    {"AvgSpa", "*"},
    {"BiasComp", "*"},
    {"Covariance", "*", anyCode | inTable},
    {"MaxSpa", "*"},
    {"MinSpa", "*"},
    {"Move", "*"},
    {"RMSSpa", "*"},
    {"StdDevSpa", "*"},
    // Running the program.
    {"Calibrate", ""},
    {"Delay", "ku"},
    {"FileManage", "*"},
    {"FileMark", "T"},
    {"PeriphSpeed", "*", anywhere},
    {"PeriphTrigger", "*", anywhere},
    {"PulseCountReset", ""},
    {"QV40", "zk"},
    {"Randomize", "*"},
    {"RealTime", "d"},
    {"ResetTable", "T"},
    {"Restore", ""},
    {"SlotConfigure", "*", declarations},
    {"StationName", "*", anywhere},
    {"Timer", "*"},
    {"Vortal3", "*"},
    {"WaitDigTrig", "*"},
    // Data tables.
    {"DataInterval", "kkwk", inTable},
    {"DataEvent", "kvvk", inTable},
    {"FlashOut", "k", inTable},
    {"CardOut", "kk", inTable},
    {"PamOut", "skkk", inTable},
    {"FillStop", "", inTable},
    {"FieldNames", "g", inTable},
    {"Sample", "nyfq", inTable},
    {"Sample", "nyf", inTable},
    {"Average", "nyfq", inTable},
    {"StdDev", "nyfq", inTable},
    {"Totalize", "nyfq", inTable},
    {"Maximum", "nyfqb", inTable},
    {"Minimum", "nyfqb", inTable},
    {"Histogram", "yfqkkkk", inTable},
    {"Histogram4D", "*", inTable},
    {"RainFlow", "yfqkkkkkk", inTable},
    {"LevelCrossing", "yfqljLJkk", inTable},
    {"FFT", "*", inTable},
    {"FFTSample", "ykfq", inTable},
    {"WorstCase", "*", inTable},
};

constexpr Instruction blockRows[] = {
    {"Scan", "kukk"},
    {"SubScan", "kwk", inScan},
    {"DataTable", "vk", declarations},
    {"BeginBurstTrigger", "v", inScan},
    {"EndBurstTrigger", "kk", inScan},
};

constexpr std::size_t countNames() {
  std::size_t count = 0;
  for (std::size_t i = 0; i < std::size(rows); ++i)
    if (i == 0 || rows[i].name != rows[i - 1].name) ++count;
  return count;
}
constexpr std::size_t nameCount = countNames();

/// Index of the first form of each name, and one past the last form.
constexpr auto firstForms = [] {
  std::array<std::size_t, nameCount + 1> first = {};
  std::size_t count = 0;
  for (std::size_t i = 0; i < std::size(rows); ++i)
    if (i == 0 || rows[i].name != rows[i - 1].name) first[count++] = i;
  first[nameCount] = std::size(rows);
  return first;
}();

}  // namespace

const ArgumentKind& argumentKind(char letter) {
  return *std::find_if(std::begin(kinds), std::end(kinds) - 1,
                       [letter](const ArgumentKind& kind) { return kind.letter == letter; });
}

std::span<const Instruction> allInstructions() { return rows; }

std::size_t instructionNameCount() { return nameCount; }

bool isInstruction(NameId id) { return id >= wordCount() && id < wordCount() + nameCount; }

std::span<const Instruction> instructionForms(NameId id) {
  const std::size_t n = id - wordCount();
  return std::span(rows).subspan(firstForms[n], firstForms[n + 1] - firstForms[n]);
}

const Instruction& blockForm(Word word) {
  switch (word) {
    case Word::Scan:
      return blockRows[0];
    case Word::SubScan:
      return blockRows[1];
    case Word::DataTable:
      return blockRows[2];
    case Word::BeginBurstTrigger:
      return blockRows[3];
    default:
      return blockRows[4];
  }
}

}  // namespace logscript
