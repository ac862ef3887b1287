#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "model/measurement_block.h"
#include "projectfile/project_writer.h"
#include "projectfile/row.h"

namespace projectfile {

/// The index part of a key: "(1)", "(1,2)", "(1,2,3)" or "(1,2,3,4)". Composed once for all rows
/// that share it.
std::string indexText(std::initializer_list<std::size_t> indexes, std::string_view between = ",");

/// Puts sections and "key=value" lines one after another.
class LineWriter {
 public:
  explicit LineWriter(const LineStyle& style) : style_(style) {}

  void header(std::string_view section);
  void emptyLine() { out_ += style_.lineEnd; }

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
  /// Writes a text in place of the value that a row would give.
  void textLine(std::string_view name, std::string_view index, std::string_view text);
  /// One line an element: what it stores in a table (from 1). There are hundreds of thousands.
  void maskLines(std::string_view name, std::size_t block, std::size_t table,
                 const std::vector<model::Element>& elements);

  void reserve(std::size_t bytes) { out_.reserve(bytes); }
  std::string take() { return std::move(out_); }

 private:
  void key(std::string_view prefix, std::string_view name, std::string_view index);
  void value(const ValueRef& value);
  void number(std::int64_t value);
  void number(double value);
  void plainText(std::string_view text);

  LineStyle style_;
  std::string out_;
  double lastFraction_ = 0;  // many channels share a scaling, and its text is dear
  std::string lastFractionText_ = " 0";
};

}  // namespace projectfile
