#include "generator/emitters.h"

namespace generator {
namespace {

using text::concat;

constexpr int slotsShown = 12;
constexpr std::size_t slotNameWidth = 9;
constexpr std::size_t configurationRule = 48;

std::string headerLine(std::string_view text) {
  return concat("'", std::string(20, ' '), text::asAscii(text));
}

std::string slotText(const model::LoggerConfiguration& configuration, int slot) {
  return concat(slot == 9 ? "Slot  " : "Slot ", slot, " = ",
                text::padded(moduleNameInSlot(configuration, slot), slotNameWidth));
}

}  // namespace

void emitHeader(ProgramText& out, const ProgramPlan& plan) {
  const model::LoggerConfiguration& configuration = plan.project.configuration;
  out.append("");
  out.append(headerLine(concat("   Program name: ", text::upper(plan.stamp.baseName),
                               programExtension(configuration))));
  out.append(headerLine(concat("     Written by: ", configuration.Operator)));
  out.append(headerLine(concat("    I.D. number: ", configuration.IDNumber)));
  out.append(headerLine(concat("   Date written: ", model::dateText(plan.stamp.now))));
  out.append(headerLine(concat("   Time written: ", model::timeText(plan.stamp.now))));
  out.append(headerLine(concat(" ", "KGENOCX", " Version: ", model::generatorVersion)));
  out.append("");
  out.append("' This program was generated using Tervane's KGENOCX");
  out.append("' Program Generator for the K700 Measurement & Control System.");
  out.append("");
}

void emitConfiguration(ProgramText& out, const ProgramPlan& plan) {
  const model::LoggerConfiguration& configuration = plan.project.configuration;
  out.line("'", std::string(10, ' '),
           text::ruled(" Logger CONFIGURATION ", configurationRule, '_', '_'));
  constexpr int rows = slotsShown / 3;
  for (int row = 1; row <= rows; ++row)
    out.line("'", std::string(10, ' '), slotText(configuration, row),
             slotText(configuration, row + rows), slotText(configuration, row + 2 * rows));
  out.append("");
}

void emitSlotConfigure(ProgramText& out, const ProgramPlan& plan) {
  using model::ModuleKindIndex;
  static constexpr std::pair<ModuleKindIndex, std::string_view> listed[] = {
      {ModuleKindIndex::analog7121, "7121"},  {ModuleKindIndex::excitation7131, "7131"},
      {ModuleKindIndex::counter7141, "7141"}, {ModuleKindIndex::highVoltage7127, "7127"},
      {ModuleKindIndex::filter7125, "7125"},  {ModuleKindIndex::isolation7128, "7128"}};
  out.sectionBanner(" SlotConfigure ");
  std::string list;
  for (const auto& [kind, name] : listed)
    for (int i = 0; i < plan.project.configuration.quantity(kind); ++i)
      list += concat(list.empty() ? "" : ",", name);
  if (!list.empty()) out.line("SlotConfigure(", list, ")");
}

std::string_view word(bool value) { return value ? "True" : "False"; }
std::string_view scope(bool isPublic) { return isPublic ? "Public " : "Dim "; }

std::string_view commentUnits(int unitCode) {
  static constexpr std::array<std::string_view, 6> units = {" uSecs", " mSecs", " Secs",
                                                            " Mins",  " Hours", " Days"};
  return unitCode >= 0 && unitCode < 6 ? units[static_cast<std::size_t>(unitCode)] : "";
}

}  // namespace generator
