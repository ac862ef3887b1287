#include "channels/channel_cells.h"

#include <algorithm>
#include <array>

#include "channels/cells.h"
#include "model/names.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace channels {
namespace {

using model::BlockKind;
using model::Element;
using model::Scaling;

constexpr Column columns[] = {
    {"kind", Field::kind},       {"block", Field::block},
    {"element", Field::element}, {"alias", Field::alias},
    {"units", Field::units},     {"multiplier", Field::multiplier},
    {"offset", Field::offset},   {"own scaling", Field::ownScaling},
    {"table1", Field::table, 0}, {"table2", Field::table, 1},
    {"table3", Field::table, 2}, {"table4", Field::table, 3},
    {"table5", Field::table, 4}, {"table6", Field::table, 5},
    {"table7", Field::table, 6}, {"table8", Field::table, 7},
};

/// Words of the processing codes 0 to 7.
constexpr std::array<std::string_view, 8> processings = {
    "sample",    "maximum",  "minimum",       "average", "standard deviation",
    "histogram", "rainflow", "level crossing"};

using Complaint = std::optional<std::string>;

Complaint complaintOf(std::string_view cell, std::string_view text) {
  return text::concat("'", cell, "' ", text);
}

/// What counts for a channel becomes its own.
void takeUp(const Scaling& shared, Element& element) {
  const Scaling own = scalingOf(element, shared);
  element.AliasMult = own.multiplier;
  element.AliasOffset = own.offset;
  element.AliasGFactor = own.gaugeFactor;
  element.AliasExcept = true;
}

/// What does not count is nowhere to be seen, and not kept.
void giveUp(BlockKind kind, Element& element) {
  const Element usual = model::defaultElement(kind);
  element.AliasMult = usual.AliasMult;
  element.AliasOffset = usual.AliasOffset;
  element.AliasGFactor = usual.AliasGFactor;
  element.AliasExcept = false;
}

Complaint storeOwnScaling(std::string_view cell, BlockKind kind, const Scaling& shared,
                          Element& element) {
  bool own = false;
  if (Complaint complaint = storeYesNo(cell, own)) return complaint;
  if (own)
    takeUp(shared, element);
  else
    giveUp(kind, element);
  return {};
}

/// Scaling that is not what counts already is meant to count.
Complaint storeScaling(Field field, BlockKind kind, std::string_view cell, const Scaling& shared,
                       Element& element) {
  double number = 0;
  if (Complaint complaint = storeNumber(cell, number)) return complaint;
  Element own = element;
  takeUp(shared, own);
  double& value = field == Field::multiplier  ? own.AliasMult
                  : kind == BlockKind::bridge ? own.AliasGFactor
                                              : own.AliasOffset;
  if (text::shortest(number) == text::shortest(value)) return {};
  value = number;
  element = std::move(own);
  return {};
}

Complaint storeText(std::string_view cell, const Complaint& complaint, std::string& text) {
  if (!complaint) text = cell;
  return complaint;
}

}  // namespace

std::span<const Column> allColumns() { return columns; }
std::span<const std::string_view> processingWords() { return processings; }

std::vector<std::string> processingsUpTo(int last) {
  return {processings.begin(), processings.begin() + last + 1};
}

std::string maskText(std::uint8_t mask) {
  std::string out;
  for (std::size_t code = 0; code < processings.size(); ++code) {
    if ((mask >> code & 1U) == 0) continue;
    if (!out.empty()) out += '+';
    out += processings[code];
  }
  return out;
}

Complaint storeMask(std::string_view cell, std::uint8_t& mask) {
  unsigned bits = 0;
  for (std::string_view rest = cell; !rest.empty();) {
    const std::size_t plus = std::min(rest.find('+'), rest.size());
    const std::string_view word = text::trimmed(rest.substr(0, plus));
    rest.remove_prefix(std::min(plus + 1, rest.size()));
    const auto found = std::find_if(
        processings.begin(), processings.end(),
        [word](std::string_view each) { return text::equalsIgnoringCase(each, word); });
    if (found == processings.end())
      return complaintOf(word,
                         "is no processing; join with + what is wanted of sample, maximum, "
                         "minimum, average, standard deviation, histogram, rainflow, level "
                         "crossing");
    bits |= 1U << static_cast<unsigned>(found - processings.begin());
  }
  mask = static_cast<std::uint8_t>(bits);
  return {};
}

Complaint storeMask(std::string_view cell, std::uint8_t& mask, int last) {
  std::uint8_t wanted = 0;
  if (Complaint complaint = storeMask(cell, wanted)) return complaint;
  const unsigned added = wanted & ~static_cast<unsigned>(mask);
  for (auto code = static_cast<std::size_t>(last) + 1; code < processings.size(); ++code)
    if ((added >> code & 1U) != 0)
      return text::concat("no table stores ", processings[code], " of it; choose another one");
  mask = wanted;
  return {};
}

const Column* columnNamed(std::string_view name) {
  const auto* found = std::find_if(std::begin(columns), std::end(columns), [name](const Column& c) {
    return text::equalsIgnoringCase(c.name, name);
  });
  return found == std::end(columns) ? nullptr : found;
}

std::string cellText(const Column& column, const ChannelAddress& channel, const Scaling& shared,
                     const Element& element) {
  switch (column.field) {
    case Field::kind:
      return std::string(model::infoOf(channel.kind).name);
    case Field::block:
      return text::concat(channel.block);
    case Field::element:
      return text::concat(channel.number);
    case Field::alias:
      return element.AliasName;
    case Field::units:
      return element.AliasUnits;
    case Field::multiplier:
      return text::shortest(scalingOf(element, shared).multiplier);
    case Field::offset:
      return text::shortest(channel.kind == BlockKind::bridge
                                ? scalingOf(element, shared).gaugeFactor
                                : scalingOf(element, shared).offset);
    case Field::ownScaling:
      return element.AliasExcept ? "yes" : "no";
    case Field::table:
      return maskText(element.Table[column.table]);
  }
  return {};
}

Complaint storeCell(const Column& column, BlockKind kind, std::string_view cell,
                    const Scaling& shared, Element& element) {
  switch (column.field) {
    case Field::alias:
      return storeText(cell, model::complaintAboutAlias(cell), element.AliasName);
    case Field::units:
      return storeText(cell, model::complaintAboutUnits(cell), element.AliasUnits);
    case Field::multiplier:
    case Field::offset:
      return storeScaling(column.field, kind, cell, shared, element);
    case Field::ownScaling:
      return storeOwnScaling(cell, kind, shared, element);
    case Field::table:
      return storeMask(cell, element.Table[column.table]);
    default:
      return {};
  }
}

}  // namespace channels
