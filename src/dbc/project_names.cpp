#include "dbc/project_names.h"

#include <algorithm>
#include <array>

#include "model/names.h"
#include "text/strings.h"

namespace dbc {
namespace {

using text::concat;

/// Of names that are words of the program or begin with a digit; no such word begins so.
constexpr std::string_view prefix = "Sig_";
constexpr std::size_t longestName = 16;
constexpr std::size_t longestUnits = 12;
constexpr std::size_t longestText = 120;

struct Replacement {
  std::string_view sign, text;
};

/// In UTF-8.
constexpr std::array<Replacement, 14> replacements = {{{"\xC2\xB0"
                                                        "C",
                                                        "Deg_C"},
                                                       {"\xC2\xB0"
                                                        "F",
                                                        "Deg_F"},
                                                       {"\xC2\xB0", "Deg"},
                                                       {"\xC2\xBA", "Deg"},
                                                       {"\xC2\xB5", "u"},
                                                       {"\xCE\xBC", "u"},
                                                       {"\xCE\xA9", "Ohm"},
                                                       {"\xE2\x84\xA6", "Ohm"},
                                                       {"\xC2\xB2", "2"},
                                                       {"\xC2\xB3", "3"},
                                                       {"\xC2\xB7", "*"},
                                                       {"[", "("},
                                                       {"]", ")"},
                                                       {"\t", " "}}};

std::string withPlainSigns(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    const auto* const found =
        std::find_if(replacements.begin(), replacements.end(),
                     [text](const Replacement& r) { return text.starts_with(r.sign); });
    if (found == replacements.end()) {
      out += text.front();
      text.remove_prefix(1);
    } else {
      out += found->text;
      text.remove_prefix(found->sign.size());
    }
  }
  return text::asAscii(out);
}

bool isNameSign(char c) { return text::isLetter(c) || text::isDigit(c) || c == '_'; }

/// Letters, digits and "_", a letter in front.
std::string stemOf(std::string_view wanted) {
  std::string stem = text::asAscii(wanted);
  std::replace_if(
      stem.begin(), stem.end(), [](char c) { return !isNameSign(c); }, '_');
  stem.erase(0, stem.find_first_not_of('_'));
  if (stem.empty() || text::isDigit(stem.front())) stem.insert(0, prefix);
  return stem;
}

}  // namespace

ProjectNames::ProjectNames(const model::Project& project) {
  for (const model::BlockSet& set : project.blockSets)
    for (const model::MeasurementBlock& block : set.blocks)
      for (const model::Element& element : block.elements) take(element.AliasName);
  for (const model::CanItem& item : project.can.items)
    for (const model::Element& value : item.values) take(value.AliasName);
  for (const model::CalculatedField& field : project.calculated.fields) take(field.CalcName);
  for (const model::OutputTable& table : project.tables) take(table.TableName);
}

void ProjectNames::take(std::string_view name) { taken_.insert(text::lower(name)); }

bool ProjectNames::isFree(const std::string& name) const {
  return !model::complaintAboutAlias(name) && !taken_.contains(text::lower(name));
}

std::string ProjectNames::nameFor(std::string_view wanted) {
  std::string stem = stemOf(wanted);
  const auto isWord = [](std::string_view word) {
    return model::isReservedWord(word) || model::isGeneratedName(word);
  };
  if (isWord(std::string_view(stem).substr(0, longestName))) stem.insert(0, prefix);
  std::string name = stem.substr(0, longestName);
  std::size_t& number = numbers_[text::lower(name)];
  for (; !isFree(name); ++number) {
    const std::string tail = concat("_", number + 2);
    name = stem.substr(0, longestName - tail.size()) + tail;
    if (isWord(name)) stem.insert(0, prefix);
  }
  take(name);
  return name;
}

std::string unitsFor(std::string_view units) {
  std::string plain = withPlainSigns(text::trimmed(units));
  std::erase_if(plain, [](char c) { return c == '"' || c == '\''; });
  std::replace_if(
      plain.begin(), plain.end(), [](char c) { return c <= ' ' || c == '\x7F'; }, '_');
  plain.resize(std::min(plain.size(), longestUnits));
  return plain;
}

std::string textFor(std::string_view text) {
  std::string plain = withPlainSigns(text);
  std::replace_if(
      plain.begin(), plain.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  plain.resize(std::min(plain.size(), longestText));
  return std::string(text::trimmed(plain));
}

}  // namespace dbc
