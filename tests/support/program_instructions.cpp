#include "support/program_instructions.h"

#include <algorithm>
#include <string>

namespace support {
namespace {

constexpr unsigned program = body | scan;

constexpr InstructionRow rows[] = {
    {"voltdiff", "dcrccbccmm", scan, Role::measurement, 3, 2},
    {"voltse", "dcrccccmm", scan, Role::measurement, 3, 1},
    {"tcdiff", "dcrcctnbccmm", scan, Role::measurement, 3, 2},
    {"tcse", "dcrcctnccmm", scan, Role::measurement, 3, 1},
    {"brfull", "dcrccccccbbccmm", scan, Role::measurement, 3, 2},
    {"brhalf", "dcrccccccbbccmm", scan, Role::measurement, 3, 1},
    {"brhalf3w", "dcrccccccbbccmm", scan, Role::measurement, 3, 2},
    {"brfull6w", "dcrrccccccbbccmm", scan, Role::measurement, 4, 4},
    {"brhalf4w", "dcrrccccccbbccmm", scan, Role::measurement, 4, 4},
    {"straincalc", "dcmmcc*c"},
    {"straincalc", "dcmcc*c"},
    {"pulsecount", "dcccccmm", scan, Role::measurement, 2, 1},
    {"tcmux", "dcrcccccenbcccmm", scan, Role::measurement, 3, 2},
    {"voltfilt", "dcrccccmm", scan, Role::measurement, 3, 1},
    {"fftfilt", "dcrccccccccccccmm", scan, Role::measurement, 3, 1},
    {"moduletemp", "dccc"},
    {"prt", "dcncc"},
    {"excite", "cccn", scan, Role::excitation, 0},
    {"excite", "cccnc", scan, Role::excitation, 0},
    {"battery", "dc"},
    {"canbus", "dcccccccccmm", program},
    {"readio", "dccc", scan, Role::digital, 1},
    {"writeio", "cccn", scan, Role::digital, 0},
    {"portset", "ccn", scan, Role::digital, 0},
    {"avgrun", "dcnc"},
    {"delay", "cu", program},
    {"realtime", "d", program},
    {"poweroff", "*c*", program},
    {"calibrate", "", program},
    {"pulsecountreset", "", body},
    {"qv40", "*c", body},
    {"filemark", "T"},
    {"fieldcal", "*acddnann"},
    {"fieldcal", "*ancdncnn"},
    {"fieldcalstrain", "*acdcnannac"},
    {"fieldcalstrain", "*ancdncnnc"},
    {"slotconfigure", "*", top},
    {"datainterval", "cc*c", table},
    {"dataevent", "ceec", table},
    {"flashout", "c", table},
    {"cardout", "cc", table},
    {"pamout", "cccc", table},
    {"fillstop", "", table},
    {"fieldnames", "*", table},
    {"sample", "c*ze", table, Role::output},
    {"sample", "c*z", table, Role::output},
    {"average", "c*ze", table, Role::output},
    {"stddev", "c*ze", table, Role::output},
    {"maximum", "c*zeb", table, Role::output},
    {"minimum", "c*zeb", table, Role::output},
    {"histogram", "nzecccc", table, Role::output},
    {"rainflow", "nzecccccc", table, Role::output},
    {"levelcrossing", "azeccaacc", table, Role::output},
    {"fftsample", "nczb", table, Role::output},
};

struct FunctionRow {
  std::string_view name;
  int arguments;
};
constexpr FunctionRow functions[] = {
    {"iif", 3}, {"loadfieldcal", 1}, {"abs", 1}, {"sqr", 1}, {"sin", 1}, {"cos", 1}, {"tan", 1},
    {"atn", 1}, {"exp", 1},          {"log", 1}, {"int", 1}, {"fix", 1}, {"sgn", 1}, {"frac", 1},
};

struct WordRow {
  std::string_view word, kind;
};
constexpr WordRow words[] = {
    {"true", "bool"}, {"false", "bool"}, {"usec", "unit"}, {"msec", "unit"}, {"sec", "unit"},
    {"min", "unit"},  {"hr", "unit"},    {"day", "unit"},  {"fp2", "data"},  {"ieee4", "data"},
};

bool isNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool isRangeWord(std::string_view word) {
  if (word.starts_with("mv"))
    return isNumber(word.substr(2, word.size() - 2 - word.ends_with('c')));
  return word.starts_with('v') && isNumber(word.substr(1));
}

bool isThermocoupleType(std::string_view word) {
  return word.size() == 5 && word.starts_with("type") &&
         std::string_view("tekjbrsn").find(word[4]) != std::string_view::npos;
}

}  // namespace

std::vector<InstructionRow> instructionsNamed(std::string_view name) {
  std::vector<InstructionRow> found;
  std::copy_if(std::begin(rows), std::end(rows), std::back_inserter(found),
               [&](const InstructionRow& row) { return row.name == name; });
  return found;
}

int argumentsOfFunction(std::string_view name) {
  for (const FunctionRow& function : functions)
    if (function.name == name) return function.arguments;
  return -1;
}

std::string_view kindOfWord(std::string_view word) {
  for (const WordRow& row : words)
    if (row.word == word) return row.kind;
  if (isThermocoupleType(word)) return "type";
  return isRangeWord(word) ? "range" : "";
}

}  // namespace support
