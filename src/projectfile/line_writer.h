#pragma once

#include <algorithm>
#include <array>
#include <cstring>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "model/measurement_block.h"
#include "projectfile/project_writer.h"
#include "projectfile/row.h"
#include "text/large_text.h"

namespace projectfile {

/// The index part of a key: "(1)", "(1,2)", "(1,2,3)" or "(1,2,3,4)". Composed once for all rows
/// that share it.
std::string indexText(std::initializer_list<std::size_t> indexes, std::string_view between = ",");

/// A text of at most 32 characters. It is copied whole, whatever of it counts: a copy whose size is
/// fixed takes no call.
class Stamp {
 public:
  static constexpr std::size_t most = 32;

  explicit Stamp(std::string_view text) : size_(std::min(text.size(), most)) {
    std::copy_n(text.begin(), size_, text_.begin());
  }
  /// The new end; the bytes behind it, up to 32 from `at`, are of no account.
  char* put(char* at) const {
    std::memcpy(at, text_.data(), most);
    return at + size_;
  }

 private:
  std::array<char, most> text_ = {};
  std::size_t size_;
};

/// Puts sections and "key=value" lines one after another.
class LineWriter {
 public:
  explicit LineWriter(const LineStyle& style) : style_(style), lineEnd_(style.lineEnd) {}

  void header(std::string_view section);
  void emptyLine() { endLine(); }

  template <class Owner>
  void line(const Row<Owner>& row, const Owner& owner, std::string_view index = "",
            std::string_view prefix = "") {
    key(prefix, row.key, index);
    value(peek(row, owner));
  }
  template <class Rows, class Owner>
  void lines(const Rows& rows, const Owner& owner, std::string_view index = "",
             std::string_view prefix = "") {
    for (const auto& row : rows) line<Owner>(row, owner, index, prefix);
  }
  /// One line an element: what it stores in a table (from 1). There are hundreds of thousands of
  /// these and of the next.
  void maskLines(std::string_view name, std::size_t block, std::size_t table,
                 std::span<const model::Element> elements);
  /// What else is filed of the elements of a block or CAN item (from 1).
  void elementLines(std::span<const Row<model::Element>> rows, std::size_t first,
                    std::span<const model::Element> elements);

  void reserve(std::size_t bytes) { text::reserveLarge(out_, bytes); }
  std::string take();

 private:
  void key(std::string_view prefix, std::string_view name, std::string_view index);
  void value(const ValueRef& value);
  void number(std::int64_t value);
  void number(double value);
  void plainText(std::string_view text);
  void put(std::string_view text);
  /// Where so many bytes can be written; keep() tells where they end.
  char* room(std::size_t bytes) {
    if (bytes > piece_.size() - used_) drain();
    return piece_.data() + used_;
  }
  void keep(const char* end) { used_ = static_cast<std::size_t>(end - piece_.data()); }
  void endLine() { keep(lineEnd_.put(room(Stamp::most))); }
  void drain();

  LineStyle style_;
  Stamp lineEnd_;
  std::string out_;
  std::array<char, 16UL * 1024> piece_;  // the end of the text, which stays in the nearest caches
  std::size_t used_ = 0;
  double lastFraction_ = 0;  // many channels share a scaling, and its text is dear
  std::string lastFractionText_ = " 0";
};

}  // namespace projectfile
