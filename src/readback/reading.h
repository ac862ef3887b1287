#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "logscript/meaning.h"

namespace readback {

/// A statement as it is compared: constants are replaced by their values.
struct Item {
  logscript::StatementKind kind = logscript::StatementKind::invoke;
  std::string head;                    // "VoltDiff", "Call Zero"; of assignments "="
  std::vector<std::string> parts;      // arguments, values, sizes
  std::vector<std::uint32_t> offsets;  // of the parts, in the text
  std::uint32_t offset = 0;
};

/// In any case of letters; texts in quotes as they are.
bool samePart(std::string_view a, std::string_view b);
bool sameItem(const Item& a, const Item& b);
/// The item as a line of a program.
std::string shown(const Item& item);
/// "slot", "size", "value": what a part of an item is.
std::string partTitle(const Item& item, std::size_t part);

/// By name in lower case.
using Items = std::map<std::string, Item, std::less<>>;

/// What a program says, apart from how it is laid out.
struct Reading {
  Items constants, variables, aliases, units;
  std::vector<Item> data;                                        // each value an item
  std::vector<Item> order;                                       // slots, tables, subroutines
  std::map<std::string, std::vector<Item>, std::less<>> bodies;  // by the head of the order's item
};

/// Reads a program. Constants that are known have the values given, others their own.
Reading readingOf(const logscript::Program& program, const Items& known = {});

/// Name of the body that is the program itself.
inline constexpr std::string_view programBody = "BeginProg";

}  // namespace readback
