#include "model/names.h"

#include <algorithm>
#include <array>

#include "text/strings.h"

namespace model {
namespace {

constexpr std::string_view reservedWords[] = {"Abs",
                                              "Alias",
                                              "TCMUX",
                                              "And",
                                              "Atn",
                                              "Average",
                                              "AvgRun",
                                              "AvgSpa",
                                              "Battery",
                                              "BeginBurstTrigger",
                                              "BeginProg",
                                              "BiasComp",
                                              "BrFull",
                                              "BrFull6W",
                                              "BrHalf",
                                              "BrHalf3W",
                                              "BrHalf4W",
                                              "Calibrate",
                                              "Call",
                                              "CallTable",
                                              "Case",
                                              "Const",
                                              "Cos",
                                              "Covariance",
                                              "Vortal3",
                                              "Data",
                                              "DataEvent",
                                              "DataInterval",
                                              "DataTable",
                                              "Delay",
                                              "Dim",
                                              "Do",
                                              "QV40",
                                              "Else",
                                              "ElseIf",
                                              "EndBurstTrigger",
                                              "End",
                                              "EndProg",
                                              "EndSub",
                                              "EndTable",
                                              "Excite",
                                              "Exit",
                                              "Exp",
                                              "FFT",
                                              "FieldNames",
                                              "FileManage",
                                              "FillStop",
                                              "Fix",
                                              "FlashOut",
                                              "For",
                                              "Frac",
                                              "Histogram",
                                              "Histogram4D",
                                              "If",
                                              "Int",
                                              "Log",
                                              "Loop",
                                              "Maximum",
                                              "MaxSpa",
                                              "Minimum",
                                              "MinSpa",
                                              "Mod",
                                              "ModuleTemp",
                                              "Move",
                                              "Next",
                                              "Or",
                                              "PamOut",
                                              "PortSet",
                                              "PowerOff",
                                              "PRT",
                                              "Public",
                                              "PulseCount",
                                              "PulseCountReset",
                                              "Randomize",
                                              "Read",
                                              "ReadIO",
                                              "RealTime",
                                              "ResetTable",
                                              "Restore",
                                              "RMSSpa",
                                              "Rnd",
                                              "Sample",
                                              "Scan",
                                              "PeriphSpeed",
                                              "PeriphTrigger",
                                              "Select",
                                              "Sgn",
                                              "Sin",
                                              "SlowSequence",
                                              "Sqr",
                                              "StationName",
                                              "StdDev",
                                              "StdDevSpa",
                                              "Step",
                                              "StrainCalc",
                                              "Tan",
                                              "TCDiff",
                                              "TCSE",
                                              "Then",
                                              "Timer",
                                              "TimerIO",
                                              "To",
                                              "Totalize",
                                              "Units",
                                              "Until",
                                              "VoltDiff",
                                              "VoltSE",
                                              "WaitDigTrig",
                                              "Wend",
                                              "While",
                                              "WorstCase",
                                              "WriteIO",
                                              "Xor",
                                              "True",
                                              "False",
                                              "uSec",
                                              "mSec",
                                              "Sec",
                                              "Min",
                                              "Hr",
                                              "Day",
                                              "CardA",
                                              "CardB",
                                              "IEEE4",
                                              "FP2",
                                              "Long",
                                              "mV5000",
                                              "mV1000",
                                              "mV200",
                                              "mV200C",
                                              "mV50",
                                              "mV50C",
                                              "V50",
                                              "V10",
                                              "V2",
                                              "mV500",
                                              "TypeT",
                                              "TypeE",
                                              "TypeK",
                                              "TypeJ",
                                              "TypeB",
                                              "TypeR"};

/// Variables and procedures of every program, or of programs with the feature.
constexpr std::string_view fixedNames[] = {"MeasDisable",
                                           "Flag",
                                           "ScanFlg1x",
                                           "FlagMode",
                                           "BattVolt",
                                           "BattCurr",
                                           "I",
                                           "Count",
                                           "Count2",
                                           "TRef",
                                           "IsoTRef",
                                           "TCMUXGRef",
                                           "Port",
                                           "RunAvg",
                                           "PERIOD",
                                           "P_UNITS",
                                           "bStartTrigger",
                                           "bStopTrigger",
                                           "bWriteIfCall",
                                           "ISCNPSUB",
                                           "CalFileLoaded",
                                           "CalStartIdx",
                                           "FieldCalAvgs",
                                           "TwoPointMultOffs",
                                           "ZeroingCalib",
                                           "CalStrainZero",
                                           "Strain1_4Shunt",
                                           "Strain1_2Shunt",
                                           "StrainFullShunt",
                                           "CountSlow",
                                           "TripVolt",
                                           "CountAvg",
                                           "StopTime",
                                           "StartTime",
                                           "idx",
                                           "NumRxReads",
                                           "ByteTx",
                                           "ByteRx",
                                           "CANDelay",
                                           "CanAddress",
                                           "CanQuanta",
                                           "CanSeg1",
                                           "CanSeg2",
                                           "CanSwitchTx",
                                           "CanSwitchRx",
                                           "CanIfInfo",
                                           "CanIfSig",
                                           "CanIfVer",
                                           "CANChk",
                                           "Zero"};

/// Words of the language that programs use and that the list of reserved words does not have.
constexpr std::string_view furtherWords[] = {
    "As",          "Boolean", "CANBus",        "CardOut",       "EndIf",
    "ExitScan",    "FFTFilt", "FFTSample",     "FieldCal",      "FieldCalStrain",
    "FileMark",    "IIF",     "LevelCrossing", "LoadFieldCal",  "NextScan",
    "NextSubScan", "Not",     "RainFlow",      "SlotConfigure", "Sub",
    "SubScan",     "TypeN",   "TypeS",         "VoltFilt"};

/// Words that, with a number behind them, name something of a program; in lower case.
constexpr std::string_view numberedNames[] = {"interval", "units", "flagmode",
                                              "bcode",    "bgf",   "calcfield"};
/// Words that begin names of a program; in lower case.
constexpr std::string_view nameBeginnings[] = {"zero_",     "excite_",   "triggercall", "writportl",
                                               "writportu", "readportl", "readportu"};

template <std::size_t size>
std::string_view wordIn(const std::string_view (&words)[size], std::string_view name) {
  const auto* const found =
      std::find_if(std::begin(words), std::end(words), [name](std::string_view word) {
        return word.size() == name.size() && text::equalsIgnoringCase(word, name);
      });
  return found == std::end(words) ? std::string_view() : *found;
}

bool isNumbered(std::string_view name, std::string_view word) {
  return name.size() > word.size() && name.starts_with(word) &&
         std::all_of(name.begin() + static_cast<std::ptrdiff_t>(word.size()), name.end(),
                     text::isDigit);
}

/// "VREP1": a family's letter, a word, a number; "BRNG1_2" is the second range of a bridge.
bool isBlockConstant(std::string_view name) {
  static constexpr std::string_view words[] = {
      "rng",  "type",  "rep", "setl",    "int",      "mult",    "oset",    "conf",
      "opt",  "excit", "rev", "fsr",     "flen",     "tswin",   "spect",   "fref",
      "sbin", "ilo",   "ihi", "calmode", "knownvar", "calreps", "zeromode"};
  if (std::string_view("tvfbhipac").find(name.front()) == std::string_view::npos) return false;
  if (name.ends_with("_1") || name.ends_with("_2")) name.remove_suffix(2);
  return std::any_of(std::begin(words), std::end(words),
                     [&](std::string_view word) { return isNumbered(name.substr(1), word); });
}

/// "VBlk1", "MVBlk1", "LCVBlk1_2", "VBlk1Zero": anything with "Blk" and a digit near its front.
bool isBlockArray(std::string_view name) {
  const std::size_t at = name.find("blk");
  return at != std::string_view::npos && at >= 1 && at <= 3 && at + 3 < name.size() &&
         text::isDigit(name[at + 3]);
}

/// "Flag3Mark"
bool isMarkCounter(std::string_view name) {
  return name.starts_with("flag") && name.ends_with("mark") && name.size() == 9 &&
         text::isDigit(name[4]);
}

}  // namespace

bool isReservedWord(std::string_view name) { return !reservedWordFor(name).empty(); }

std::string_view reservedWordFor(std::string_view name) { return wordIn(reservedWords, name); }

bool isGeneratedName(std::string_view name) {
  if (name.empty()) return false;
  if (!wordIn(fixedNames, name).empty() || !wordIn(furtherWords, name).empty()) return true;
  const std::string lower = text::lower(name);
  const auto numbered = [&](std::string_view word) { return isNumbered(lower, word); };
  const auto begins = [&](std::string_view word) { return lower.starts_with(word); };
  return std::any_of(std::begin(numberedNames), std::end(numberedNames), numbered) ||
         std::any_of(std::begin(nameBeginnings), std::end(nameBeginnings), begins) ||
         isBlockConstant(lower) || isBlockArray(lower) || isMarkCounter(lower);
}

std::optional<std::string> complaintAboutAlias(std::string_view name) {
  constexpr std::size_t longest = 16;
  if (name.empty()) return std::nullopt;
  if (!text::isName(name) || name.size() > longest)
    return text::concat("'", name,
                        "' is no name; use a letter, then letters, digits and _, at most ", longest,
                        " in all");
  if (isReservedWord(name) || isGeneratedName(name))
    return text::concat("'", name, "' is a word of the program itself; choose another name");
  return std::nullopt;
}

std::optional<std::string> complaintAboutUnits(std::string_view units) {
  constexpr std::size_t longest = 12;
  const auto refused = [](char c) {
    return c <= ' ' || c == '\x7F' || std::string_view("\"'[]").find(c) != std::string_view::npos;
  };
  if (units.size() <= longest && std::none_of(units.begin(), units.end(), refused))
    return std::nullopt;
  return text::concat("'", units, "' are no units; use at most ", longest,
                      " characters without blanks, quotes and square brackets");
}

}  // namespace model
