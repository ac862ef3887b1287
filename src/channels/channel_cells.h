#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/project.h"

/// The columns of the channel table: each cell to text and back.
namespace channels {

enum class Field { kind, block, element, alias, units, multiplier, offset, ownScaling, table };

struct Column {
  std::string_view name;
  Field field;
  std::size_t table = 0;  // from 0
};

/// Every column, those that address a channel first.
std::span<const Column> allColumns();
constexpr std::size_t addressColumns = 3;

/// Nothing for an unknown name; the case of letters does not count.
const Column* columnNamed(std::string_view name);

/// Where a channel is; block and number count from 1.
struct ChannelAddress {
  model::BlockKind kind = model::BlockKind::thermocouple;
  std::size_t block = 0;
  std::size_t number = 0;
};

/// A cell of a channel; of its scaling what counts, be it the channel's own or the shared one.
std::string cellText(const Column& column, const ChannelAddress& address,
                     const model::Scaling& shared, const model::Element& element);

/// Words of the processing codes 0 to 7.
std::span<const std::string_view> processingWords();
std::vector<std::string> processingsUpTo(int last);
/// A mask of processings as a cell: words joined by "+".
std::string maskText(std::uint8_t mask);
/// Stores such a cell, or says what is wrong with it.
std::optional<std::string> storeMask(std::string_view cell, std::uint8_t& mask);
/// The same where only processings up to a code are stored; those beyond that the mask has already
/// may stay.
std::optional<std::string> storeMask(std::string_view cell, std::uint8_t& mask, int last);

/// Stores a cell. A text that the column does not take is answered with what is wrong and what to
/// do, and the channel keeps its value. A number that is not the shared one gives the channel its
/// own scaling, the rest of which begins as what counted; scaling that is given up is not kept.
std::optional<std::string> storeCell(const Column& column, model::BlockKind kind,
                                     std::string_view cell, const model::Scaling& shared,
                                     model::Element& element);

}  // namespace channels
