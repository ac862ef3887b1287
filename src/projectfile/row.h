#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <variant>

/// The parts that reader, writer and listings of the project file share.
namespace projectfile {

/// Where a value of the project lives, with its type.
using ValueRef = std::variant<std::monostate, bool*, std::int16_t*, std::int32_t*, double*,
                              std::string*, std::uint8_t*>;

/// What a count may be; a file's value outside is clamped with a note.
struct Limits {
  std::int32_t low = std::numeric_limits<std::int32_t>::min();
  std::int32_t high = std::numeric_limits<std::int32_t>::max();
};

/// One key of the file and the value in its owner that it stands for.
template <class Owner>
struct Row {
  std::string_view key;
  ValueRef (*at)(Owner&) = nullptr;
  Limits limits = {};
  bool isTime = false;  // us; a text ending in "mSecs" is in ms
};

template <class Owner, class T>
Owner ownerOf(T Owner::*);

template <auto Member>
using OwnerOf = decltype(ownerOf(Member));

template <auto Member>
constexpr Row<OwnerOf<Member>> row(std::string_view key, Limits limits = {}, bool isTime = false) {
  return {key, [](OwnerOf<Member>& owner) -> ValueRef { return &(owner.*Member); }, limits, isTime};
}

/// A row whose owner is the value itself: an element of an array.
template <class T>
constexpr Row<T> valueRow(std::string_view key, Limits limits = {}) {
  return {key, [](T& value) -> ValueRef { return &value; }, limits};
}

/// The row's value for reading only. Rows serve reading and writing alike, so they hand out plain
/// pointers; nobody writes through what comes from here.
template <class Owner>
ValueRef peek(const Row<Owner>& row, const Owner& owner) {
  return row.at(const_cast<Owner&>(owner));
}

}  // namespace projectfile
