#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What lists have in common: cells that are stored, or say what is wrong with them and what to do,
/// and what is told of their lines.
namespace channels {

std::optional<std::string> storeNumber(std::string_view cell, double& value);
/// "yes" or "no"; true, false, on, off, 1 and 0 are taken too.
std::optional<std::string> storeYesNo(std::string_view cell, bool& value);

/// Something about one line of a list, counted from 1.
struct LineText {
  std::size_t line = 0;
  std::string text;
  bool operator==(const LineText&) const = default;
};
constexpr std::size_t mostFaults = 1000;
/// The last one that is kept says that there are more.
void addFault(std::vector<LineText>& faults, std::size_t line, std::string text);

}  // namespace channels
