#include "generator/name_book.h"

#include <algorithm>

#include "model/names.h"
#include "text/strings.h"

namespace generator {
namespace {

using text::concat;

bool isUnitsText(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return c > ' ' && c < 0x7F && c != '"' && c != '\'' && c != '[' && c != ']';
  });
}

}  // namespace

std::string NameBook::claim(std::string_view name, std::string_view where,
                            std::string_view instead) {
  if (name.empty()) return "";
  const bool usable =
      text::isName(name) && !model::isReservedWord(name) && !model::isGeneratedName(name);
  if (usable && taken_.insert(text::lower(name)).second) return std::string(name);
  notes_.push_back(concat(where, ": the name \"", name, "\" ",
                          usable ? "is used twice" : "is no name of the program language",
                          "; the program uses ", instead, " there"));
  return "";
}

std::string NameBook::freeName(const std::string& name) {
  std::string candidate = name;
  for (int n = 2; !taken_.insert(text::lower(candidate)).second; ++n)
    candidate = concat(name, "_", n);
  return candidate;
}

std::string NameBook::units(std::string_view text, std::string_view where) {
  if (isUnitsText(text)) return std::string(text);
  notes_.push_back(concat(where, ": the units \"", text,
                          "\" hold a character that a program can't carry and are left out"));
  return "";
}

std::vector<ProgramChannel> NameBook::channelsOf(const SourceBlock& block) {
  std::vector<ProgramChannel> channels(block.reps);
  for (std::size_t e = 0; e < std::min(block.reps, block.elements->size()); ++e) {
    const model::Element& element = (*block.elements)[e];
    if (element.AliasName.empty() && element.AliasUnits.empty()) continue;
    const std::string name = concat(block.values(), "(", e + 1, ")");
    channels[e].alias = claim(element.AliasName, name, name);
    channels[e].units = units(element.AliasUnits, name);
  }
  return channels;
}

}  // namespace generator
