#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace model {

/// A variable in an expression of the program language.
struct NameInExpression {
  std::size_t offset = 0;  // in the expression
  std::size_t length = 0;  // with its index or member
  std::size_t stem = 0;  // of that, the name alone: "VBlk1" of "VBlk1(3)", "Data" of "Data.Record"
  std::string
      name;  // "Press", "VBlk1(3)", "Data.Record(1,0)"; "VBlk1()" when the index is computed
};

/// The variables that an expression names, as they come. Functions, numbers, quoted texts and
/// comments are passed over; of a computed index the names follow.
std::vector<NameInExpression> namesIn(std::string_view expression);

}  // namespace model
